// Requirement types with their custom tabs and attributes, and how an attribute's
// value lies in three columns.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <map>
#include <optional>

namespace Backend {

// A value as the columns integer_value, real_value and text_value hold it.
struct ValueColumns {
    std::optional<std::int64_t> Integer;
    std::optional<double> Real;
    std::optional<std::string> Text;
};

ValueColumns ToColumns(const Value& value);
// From three columns, the first of them given. All null: the empty value.
Value FromColumns(AttributeKind kind, const Rows& rows, int firstColumn);

class TypeTable {
public:
    explicit TypeTable(Database& database)
        : FDatabase(database) {}

    // Without tabs and attributes.
    void Add(const RequirementType& type);
    // After the type's other tabs.
    void AddTab(ObjectId typeId, const CustomTab& tab);
    // After the tab's other attributes; tabId is 0 for status and priority.
    void AddAttribute(ObjectId typeId, ObjectId tabId, const Attribute& attribute);

    std::optional<RequirementType> Read(ObjectId typeId);
    std::int64_t RevisionOf(ObjectId typeId);                   // 0: no such type
    ObjectId Find(ObjectId projectId, const std::string& name); // 0: there is none
    ObjectId TypeOfTab(ObjectId tabId);                         // 0: no such tab

private:
    std::map<ObjectId, std::vector<ListEntry>> ReadEntries(ObjectId typeId);
    void ReadAttributes(RequirementType& type);
    void Changed(ObjectId typeId);

    Database& FDatabase;
};

} // namespace Backend
