#include "backend/store/TypeTable.h"

#include <algorithm>
#include <charconv>

namespace Backend {

namespace {

std::string JoinIndices(const std::vector<int>& indices) {
    std::string text;
    for (int index : indices) {
        if (!text.empty()) text += ',';
        text += std::to_string(index);
    }
    return text;
}

std::vector<int> SplitIndices(std::string_view text) {
    std::vector<int> indices;
    const char* end = text.data() + text.size();
    for (const char* at = text.data(); at < end; ++at) {
        int index = 0;
        at = std::from_chars(at, end, index).ptr;
        indices.push_back(index);
    }
    return indices;
}

} // namespace

ValueColumns ToColumns(const Value& value) {
    ValueColumns columns;
    if (const bool* flag = std::get_if<bool>(&value))
        columns.Integer = *flag ? 1 : 0;
    else if (const std::int32_t* number = std::get_if<std::int32_t>(&value))
        columns.Integer = *number;
    else if (const float* real = std::get_if<float>(&value))
        columns.Real = *real;
    else if (const Date* date = std::get_if<Date>(&value))
        columns.Real = date->Days;
    else if (const std::string* text = std::get_if<std::string>(&value))
        columns.Text = *text;
    else if (const Selection* selection = std::get_if<Selection>(&value))
        columns.Text = JoinIndices(selection->Indices);
    return columns;
}

Value FromColumns(AttributeKind kind, const Rows& rows, int firstColumn) {
    const int integer = firstColumn, real = firstColumn + 1, text = firstColumn + 2;
    if (rows.IsNull(integer) && rows.IsNull(real) && rows.IsNull(text)) return std::monostate();
    switch (kind) {
    case AttributeKind::Boolean:
        return rows.Bool(integer);
    case AttributeKind::Integer:
    case AttributeKind::Duration:
        return static_cast<std::int32_t>(rows.Int64(integer));
    case AttributeKind::Float:
        return static_cast<float>(rows.Real(real));
    case AttributeKind::Date:
        return Date{rows.Real(real)};
    case AttributeKind::Text:
        return rows.Text(text);
    case AttributeKind::List:
        return Selection{SplitIndices(rows.View(text))};
    }
    return std::monostate();
}

void TypeTable::Add(const RequirementType& type) {
    FDatabase.Run("insert into requirement_type (id, project_id, name, tag, description) "
                  "values ($1, $2, $3, $4, $5)",
                  type.Id, type.ProjectId, type.Name, type.Tag, type.Description);
}

void TypeTable::AddTab(ObjectId typeId, const CustomTab& tab) {
    FDatabase.Run("insert into custom_tab (id, type_id, position, name, icon) "
                  "values ($1, $2, (select count(*) from custom_tab where type_id = $2), $3, $4)",
                  tab.Id, typeId, tab.Name, Bytes{tab.Icon});
    Changed(typeId);
}

void TypeTable::AddAttribute(ObjectId typeId, ObjectId tabId, const Attribute& attribute) {
    const bool real = attribute.Kind == AttributeKind::Float;
    const ValueColumns columns = ToColumns(attribute.Default);
    FDatabase.Run("insert into attribute (id, type_id, tab_id, role, position, name, kind, max_length, "
                  "min_integer, max_integer, min_real, max_real, unit_name, max_selections, integer_value, "
                  "real_value, text_value) values ($1, $2, $3, $4, "
                  "(select count(*) from attribute where type_id = $2 and tab_id is $3), $5, $6, $7, $8, $9, "
                  "$10, $11, $12, $13, $14, $15, $16)",
                  attribute.Id, typeId, tabId ? std::optional(tabId) : std::nullopt,
                  static_cast<int>(attribute.Role), attribute.Name, static_cast<int>(attribute.Kind),
                  attribute.MaxLength, attribute.MinInteger, attribute.MaxInteger,
                  real ? double{attribute.MinFloat} : attribute.MinDate.Days,
                  real ? double{attribute.MaxFloat} : attribute.MaxDate.Days, attribute.UnitName,
                  attribute.MaxSelections, columns.Integer, columns.Real, columns.Text);
    int position = 0;
    for (const ListEntry& entry : attribute.Entries) {
        const auto* text = std::get_if<std::string>(&entry);
        const auto* number = std::get_if<std::int32_t>(&entry);
        const auto* user = std::get_if<UserEntry>(&entry);
        const auto* group = std::get_if<GroupEntry>(&entry);
        FDatabase.Run(
            "insert into attribute_entry (attribute_id, position, text_entry, number_entry, user_id, "
            "group_id) values ($1, $2, $3, $4, $5, $6)",
            attribute.Id, position++, text ? std::optional(*text) : std::nullopt,
            number ? std::optional(*number) : std::nullopt, user ? std::optional(user->Id) : std::nullopt,
            group ? std::optional(group->Id) : std::nullopt);
    }
    Changed(typeId);
}

void TypeTable::Changed(ObjectId typeId) {
    FDatabase.Run("update requirement_type set revision = revision + 1 where id = $1", typeId);
}

std::optional<RequirementType> TypeTable::Read(ObjectId typeId) {
    RequirementType type;
    {
        Rows rows = FDatabase.Query("select id, project_id, name, tag, description, revision "
                                    "from requirement_type where id = $1",
                                    typeId);
        if (!rows.Next()) return std::nullopt;
        type.Id = rows.Int(0);
        type.ProjectId = rows.Int(1);
        type.Name = rows.Text(2);
        type.Tag = rows.Text(3);
        type.Description = rows.Text(4);
        type.Revision = rows.Int64(5);
    }
    Rows tabs =
        FDatabase.Query("select id, name, icon from custom_tab where type_id = $1 order by position", typeId);
    while (tabs.Next())
        type.Tabs.push_back({tabs.Int(0), tabs.Text(1), tabs.Text(2), {}});
    ReadAttributes(type);
    return type;
}

std::map<ObjectId, std::vector<ListEntry>> TypeTable::ReadEntries(ObjectId typeId) {
    std::map<ObjectId, std::vector<ListEntry>> entries;
    Rows rows = FDatabase.Query("select e.attribute_id, e.text_entry, e.number_entry, e.user_id, e.group_id "
                                "from attribute a join attribute_entry e on e.attribute_id = a.id "
                                "where a.type_id = $1 order by e.attribute_id, e.position",
                                typeId);
    while (rows.Next()) {
        ListEntry entry = rows.Text(1);
        if (!rows.IsNull(2))
            entry = static_cast<std::int32_t>(rows.Int64(2));
        else if (!rows.IsNull(3))
            entry = UserEntry{rows.Int(3)};
        else if (!rows.IsNull(4))
            entry = GroupEntry{rows.Int(4)};
        entries[rows.Int(0)].push_back(std::move(entry));
    }
    return entries;
}

void TypeTable::ReadAttributes(RequirementType& type) {
    auto entries = ReadEntries(type.Id);
    Rows rows = FDatabase.Query("select id, tab_id, role, name, kind, max_length, min_integer, max_integer, "
                                "min_real, max_real, unit_name, "
                                "max_selections, integer_value, real_value, text_value from attribute where "
                                "type_id = $1 order by position",
                                type.Id);
    while (rows.Next()) {
        Attribute attribute;
        attribute.Id = rows.Int(0);
        attribute.Role = static_cast<AttributeRole>(rows.Int(2));
        attribute.Name = rows.Text(3);
        attribute.Kind = static_cast<AttributeKind>(rows.Int(4));
        attribute.MaxLength = rows.Int(5);
        attribute.MinInteger = static_cast<std::int32_t>(rows.Int64(6));
        attribute.MaxInteger = static_cast<std::int32_t>(rows.Int64(7));
        if (attribute.Kind == AttributeKind::Float) {
            attribute.MinFloat = static_cast<float>(rows.Real(8));
            attribute.MaxFloat = static_cast<float>(rows.Real(9));
        } else {
            attribute.MinDate = {rows.Real(8)};
            attribute.MaxDate = {rows.Real(9)};
        }
        attribute.UnitName = rows.Text(10);
        attribute.MaxSelections = rows.Int(11);
        attribute.Default = FromColumns(attribute.Kind, rows, 12);
        attribute.Entries = std::move(entries[attribute.Id]);
        if (attribute.Role == AttributeRole::Status)
            type.Status = std::move(attribute);
        else if (attribute.Role == AttributeRole::Priority)
            type.Priority = std::move(attribute);
        else
            std::ranges::find(type.Tabs, rows.Int(1), &CustomTab::Id)
                ->Attributes.push_back(std::move(attribute));
    }
}

std::int64_t TypeTable::RevisionOf(ObjectId typeId) {
    Rows rows = FDatabase.Query("select revision from requirement_type where id = $1", typeId);
    return rows.Next() ? rows.Int64(0) : 0;
}

ObjectId TypeTable::Find(ObjectId projectId, const std::string& name) {
    Rows rows = FDatabase.Query("select id from requirement_type where project_id = $1 and name = $2",
                                projectId, name);
    return rows.Next() ? rows.Int(0) : 0;
}

ObjectId TypeTable::TypeOfTab(ObjectId tabId) {
    Rows rows = FDatabase.Query("select type_id from custom_tab where id = $1", tabId);
    return rows.Next() ? rows.Int(0) : 0;
}

} // namespace Backend
