// The server's data as plain values, free of SQL and of the wire format: what the
// tables hold, what the rules judge, what is translated for a client.
//
// All texts are UTF-8. Every object's number comes from one sequence for the whole
// database, so numbers of different kinds never collide; 0 means "none".
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Backend {

using ObjectId = std::int32_t;

// Microseconds since 1970 in UTC.
using Instant = std::int64_t;

struct Version {
    int Major = 1;
    int Minor = 0;

    bool operator==(const Version&) const = default;
};

// ---- users

struct User {
    ObjectId Id = 0;
    std::string UserName; // logon name
    std::string Name;     // for display
    bool Disabled = false;
    bool MustChangePassword = false;
    bool Administrator = false; // has every right in every project
};

struct Group {
    ObjectId Id = 0;
    std::string Name;
    std::vector<ObjectId> Members;
};

struct Directory {
    std::int64_t Revision = 0; // grows with every change of users and groups
    std::vector<User> Users;
    std::vector<Group> Groups;
};

// What a user or a group may do in a project. Readers see the project only.
enum class Role { Reader = 1, Discusser = 2, Editor = 3, Manager = 4 };

// ---- projects

enum class BaselineType { Current = 1, General = 2, Deleted = 3 };

struct Baseline {
    ObjectId Id = 0;
    ObjectId ProjectId = 0;
    std::string Name;
    std::string Description;
    BaselineType Type = BaselineType::Current;
    Instant Created = 0;
    std::vector<ObjectId> TypeIds;
};

struct TypeSummary {
    ObjectId Id = 0;
    std::string Name;
    std::string Tag;
    std::string Description;
    std::int64_t Revision = 0;
};

struct Project {
    ObjectId Id = 0;
    std::string Name;
    std::string Description;
    ObjectId CurrentBaselineId = 0;
    std::vector<Baseline> Baselines;
    std::vector<TypeSummary> Types;
    std::vector<ObjectId> GroupIds;
};

// ---- attributes

enum class AttributeKind { Boolean = 1, Date, Float, Integer, Duration, List, Text };

// A calendar date without a zone: days since 30 December 1899, the time of day as
// the fraction.
struct Date {
    double Days = 0;

    bool operator==(const Date&) const = default;
};

// The zero-based positions of the chosen entries of a list, ascending.
struct Selection {
    std::vector<int> Indices;

    bool operator==(const Selection&) const = default;
};

// monostate is the empty value. Durations are integers, in the attribute's unit.
using Value = std::variant<std::monostate, bool, std::int32_t, float, Date, std::string, Selection>;

struct UserEntry {
    ObjectId Id = 0;
};
struct GroupEntry {
    ObjectId Id = 0;
};
using ListEntry = std::variant<std::string, std::int32_t, UserEntry, GroupEntry>;

// Status and priority are list attributes that every requirement type has beside
// those on its custom tabs.
enum class AttributeRole { Custom = 0, Status = 1, Priority = 2 };

struct Attribute {
    ObjectId Id = 0;
    std::string Name;
    AttributeKind Kind = AttributeKind::Text;
    AttributeRole Role = AttributeRole::Custom;
    Value Default;                                                  // what a new requirement holds
    int MaxLength = 255;                                            // text: in characters
    std::int32_t MinInteger = -2147483647, MaxInteger = 2147483647; // integer, duration
    float MinFloat = -3.4e38F, MaxFloat = 3.4e38F;
    Date MinDate{2.0}, MaxDate{73050.0}; // 1900 to 2099
    std::string UnitName;                // duration
    std::vector<ListEntry> Entries;      // list
    int MaxSelections = 1;               // list
};

struct CustomTab {
    ObjectId Id = 0;
    std::string Name;
    std::string Icon; // empty, or 768 bytes: 16 x 16 pixels of red, green, blue
    std::vector<Attribute> Attributes;
};

struct RequirementType {
    ObjectId Id = 0;
    ObjectId ProjectId = 0;
    std::string Name;
    std::string Tag; // short, like "SRS"
    std::string Description;
    std::int64_t Revision = 0; // grows with every change of the type
    Attribute Status;
    Attribute Priority;
    std::vector<CustomTab> Tabs;
};

// ---- requirements

struct AttributeValue {
    ObjectId AttributeId = 0;
    Value Content;
};

enum class ReferenceKind { File = 1, Web = 2, Text = 3 };

struct DocumentReference {
    ReferenceKind Kind = ReferenceKind::Text;
    std::string Target;      // path, address or text
    std::string Description; // files only
    bool IsKey = false;      // its text stands for the requirement's description

    bool operator==(const DocumentReference&) const = default;
};

struct Assignment {
    ObjectId GroupId = 0;
    std::vector<ObjectId> UserIds;

    bool operator==(const Assignment&) const = default;
};

// ---- history

using HistoryValue = std::variant<std::monostate, std::string, std::int32_t, float, bool, Date>;

struct HistoryChange {
    std::string AttributeName;
    HistoryValue Old, New;
};

struct HistoryRevision {
    Version Number;
    Instant Date = 0;
    ObjectId UserId = 0;
    std::string UserName;
    std::string Comment;
    std::vector<HistoryChange> Changes;
};

// ---- glossaries and integrations

struct GlossaryTerm {
    ObjectId Id = 0;
    std::string Name;
    std::string Definition;
};

struct Glossary {
    ObjectId Id = 0;
    std::string Name;
    int Red = 0, Green = 0, Blue = 0; // 0 to 255
    std::vector<GlossaryTerm> Terms;
};

struct Integration {
    ObjectId Id = 0;
    std::string Name; // by which traces name it
    std::string LibraryName;
    std::string Icon; // empty, or 768 bytes as a custom tab's
};

// An object of another tool, or a source file.
struct ExternalObject {
    ObjectId Id = 0;
    ObjectId IntegrationId = 0;
    std::string IntegrationName;
    std::string Key; // a source file's path
    std::string Name;
    std::string Location;
    std::string Icon;
};

} // namespace Backend
