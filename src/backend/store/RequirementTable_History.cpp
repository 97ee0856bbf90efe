#include "backend/store/RequirementTable.h"

namespace Backend {

namespace {

enum HistoryKind {
    None = 0,
    TextValue = 1,
    IntegerValue = 2,
    FloatValue = 3,
    BooleanValue = 4,
    DateValue = 5
};

// What stands in the value column beside the kind; dates and floats are reals.
using Column = std::variant<std::nullopt_t, std::string, std::int64_t, double>;

std::pair<HistoryKind, Column> Encode(const HistoryValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return {TextValue, *text};
    if (const auto* number = std::get_if<std::int32_t>(&value)) return {IntegerValue, std::int64_t{*number}};
    if (const auto* real = std::get_if<float>(&value)) return {FloatValue, double{*real}};
    if (const auto* flag = std::get_if<bool>(&value)) return {BooleanValue, std::int64_t{*flag}};
    if (const auto* date = std::get_if<Date>(&value)) return {DateValue, date->Days};
    return {None, std::nullopt};
}

HistoryValue Decode(const Rows& rows, int kindColumn) {
    const int value = kindColumn + 1;
    switch (static_cast<HistoryKind>(rows.Int(kindColumn))) {
    case TextValue:
        return rows.Text(value);
    case IntegerValue:
        return static_cast<std::int32_t>(rows.Int64(value));
    case FloatValue:
        return static_cast<float>(rows.Real(value));
    case BooleanValue:
        return rows.Bool(value);
    case DateValue:
        return Date{rows.Real(value)};
    case None:
        break;
    }
    return std::monostate();
}

} // namespace

void RequirementTable::AddChanges(std::int64_t versionId, const std::vector<HistoryChange>& changes) {
    int position = 0;
    for (const HistoryChange& change : changes) {
        const auto [oldKind, oldColumn] = Encode(change.Old);
        const auto [newKind, newColumn] = Encode(change.New);
        std::visit(
            [&, oldType = oldKind, newType = newKind](const auto& oldValue, const auto& newValue) {
                FDatabase.Run("insert into history_change (version_id, position, attribute_name, old_kind, "
                              "old_value, new_kind, new_value) values ($1, $2, $3, $4, $5, $6, $7)",
                              versionId, position++, change.AttributeName, static_cast<int>(oldType),
                              oldValue, static_cast<int>(newType), newValue);
            },
            oldColumn, newColumn);
    }
}

std::vector<std::int64_t> RequirementTable::VersionsUpTo(std::int64_t versionId) {
    std::vector<std::int64_t> versions;
    Rows rows = FDatabase.Query("select o.id from requirement_version v join requirement_version o "
                                "on o.requirement_id = v.requirement_id "
                                "and (o.major < v.major or (o.major = v.major and o.minor <= v.minor)) "
                                "where v.id = $1 order by o.major desc, o.minor desc",
                                versionId);
    while (rows.Next())
        versions.push_back(rows.Int64(0));
    return versions;
}

HistoryRevision RequirementTable::ReadRevision(std::int64_t versionId) {
    HistoryRevision revision;
    {
        Rows rows = FDatabase.Query("select v.major, v.minor, v.changed, v.changed_by, u.name, v.comment "
                                    "from requirement_version v join user_account u on u.id = v.changed_by "
                                    "where v.id = $1",
                                    versionId);
        rows.Next();
        revision.Number = {rows.Int(0), rows.Int(1)};
        revision.Date = rows.Int64(2);
        revision.UserId = rows.Int(3);
        revision.UserName = rows.Text(4);
        revision.Comment = rows.Text(5);
    }
    Rows rows = FDatabase.Query("select attribute_name, old_kind, old_value, new_kind, new_value "
                                "from history_change where version_id = $1 order by position",
                                versionId);
    while (rows.Next())
        revision.Changes.push_back({rows.Text(0), Decode(rows, 1), Decode(rows, 3)});
    return revision;
}

} // namespace Backend
