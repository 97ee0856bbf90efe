// What the client has read and what it has written since, as plain data. Objects of
// the binding are thin views on it, so that all handles on one object agree.
#pragma once

#include "quorane.pb.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Sdk {

namespace wire = ::quorane::wire;

// Users and groups as of one revision. Pointers into it live as long as it does.
class TDirectory {
public:
    explicit TDirectory(wire::Directory data);

    const wire::Directory& Data() const { return FData; }
    // Both give an empty pointer for a number that nobody has.
    const wire::User* FindUser(std::int32_t id) const;
    const wire::Group* FindGroup(std::int32_t id) const;

private:
    const wire::Directory FData;
    std::unordered_map<std::int32_t, const wire::User*> FUsers;
    std::unordered_map<std::int32_t, const wire::Group*> FGroups;
};

class TProjects {
public:
    explicit TProjects(wire::ListProjectsReply data)
        : FData(std::move(data)) {}

    const wire::ListProjectsReply& Data() const { return FData; }
    const wire::Project* Find(std::int32_t id) const;
    const wire::Project* FindByBaseline(std::int32_t baselineId) const;

private:
    const wire::ListProjectsReply FData;
};

const wire::Baseline* FindBaseline(const wire::Project& project, std::int32_t id);

// The requirement as one read brought it, and the values written to it since, which
// the server learns with the save. All handles of one read share it.
struct TRequirementState {
    std::shared_ptr<const wire::Requirement> Snapshot;
    std::string Stamp;
    wire::SaveRequirementRequest Changes;
    // Made by this client and not saved yet.
    bool IsNew = false;
    // References and assignments are objects that the caller changes in place, so
    // they are made once from the snapshot.
    std::optional<std::vector<std::shared_ptr<wire::DocumentReference>>> References;
    std::optional<std::vector<std::shared_ptr<wire::Assignment>>> Assignments;

    std::int32_t Id() const { return Snapshot->id(); }
    bool IsChanged() const { return Changes.ByteSizeLong() > 0; }
    // The changes with the lists as their objects stand now.
    wire::SaveRequirementRequest WrittenChanges() const;
    // What a save made lasting: it is read from now on and sent no more.
    void TakeSaved(const wire::SaveRequirementRequest& saved, const wire::SaveRequirementReply& reply);
    // The value as written, else as read; empty when the requirement has none for
    // that attribute.
    const wire::AttributeValue* FindValue(std::int32_t attributeId) const;
    wire::AttributeValue& ValueToChange(std::int32_t attributeId);
};

// All messages of one requirement; positions in the list stay valid.
struct TDiscussionData {
    std::int32_t RequirementId = 0;
    std::vector<wire::DiscussionMessage> Messages;
};

} // namespace Sdk
