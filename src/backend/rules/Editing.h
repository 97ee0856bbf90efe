// The rules on making and changing requirements, for a client's commands and for the
// bulk writer alike: every change is a new version with its history, traces of what
// changed become suspect, values are within their bounds. Locks and rights are the
// caller's business, and so is the transaction.
#pragma once

#include "backend/rules/Changes.h"
#include "backend/rules/Connection.h"

#include <map>

namespace Backend {

class Editing {
public:
    explicit Editing(Connection& connection)
        : FConnection(connection) {}

    // Version 1.0 with one history revision without changes; it stands in no tree
    // yet. Gives the key of the version. Raises RuleViolation.
    std::int64_t MakeRequirement(ObjectId requirementId, ObjectId typeId, const NewRequirement& requirement,
                                 const Revision& revision);

    // Writes the next version of the requirement at that place of a current baseline
    // and puts it there. Gives its key, or 0 when nothing really changes. Raises
    // RuleViolation.
    std::int64_t Save(const TreePlace& place, const RequirementChange& change, const Revision& revision);

    // Makes a requirement and what is below it the last child of another node of
    // the same baseline. Under another type, values that it lacks are lost. Raises
    // RuleViolation for a cycle, and for a parent that is not below a type.
    void Reparent(const TreePlace& place, const TreePlace& newParent, const Revision& revision);

    // Takes a branch out of the current baseline; versions and history stay. Gives
    // the number of requirements.
    int Remove(const TreePlace& place);

    // Read once; ForgetTypes when types were changed meanwhile. Raises
    // RuleViolation when there is none of that number.
    const RequirementType& Type(ObjectId typeId);
    void ForgetTypes() { FTypes.clear(); }

private:
    struct Draft;

    Draft ReadDraft(const TreePlace& place);
    void Apply(Draft& draft, const RequirementChange& change);
    void ApplyTexts(Draft& draft, const RequirementChange& change);
    void ApplyValue(Draft& draft, const Attribute& attribute, Value value);
    void ApplyOwner(Draft& draft, ObjectId ownerId);
    void ApplyReferences(Draft& draft, const std::vector<DocumentReference>& references);
    void ApplyAssignments(Draft& draft, const std::vector<Assignment>& assignments);
    void Retype(Draft& draft, const RequirementType& type);
    std::int64_t Write(Draft& draft, const TreePlace& place, const Revision& revision);
    void CheckAssignments(ObjectId projectId, const std::vector<Assignment>& assignments);
    void CheckOwner(ObjectId ownerId);
    HistoryValue Readable(const Attribute& attribute, const Value& value);
    std::string Readable(const std::vector<Assignment>& assignments);
    std::string NameOfGroup(ObjectId groupId);

    Connection& FConnection;
    std::map<ObjectId, RequirementType> FTypes;
};

} // namespace Backend
