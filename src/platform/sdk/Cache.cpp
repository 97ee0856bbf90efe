#include "platform/sdk/Cache.h"

#include <algorithm>

namespace Sdk {

namespace {

template<class List> auto* FindById(List& list, std::int32_t id) {
    const auto found =
        std::find_if(list.begin(), list.end(), [id](const auto& entry) { return entry.id() == id; });
    return found == list.end() ? nullptr : &*found;
}

template<class List> auto* FindValueIn(List& list, std::int32_t attributeId) {
    const auto found = std::find_if(list.begin(), list.end(), [attributeId](const auto& value) {
        return value.attribute_id() == attributeId;
    });
    return found == list.end() ? nullptr : &*found;
}

} // namespace

TDirectory::TDirectory(wire::Directory data)
    : FData(std::move(data)) {
    for (const wire::User& user : FData.users())
        FUsers[user.id()] = &user;
    for (const wire::Group& group : FData.groups())
        FGroups[group.id()] = &group;
}

const wire::User* TDirectory::FindUser(std::int32_t id) const {
    const auto found = FUsers.find(id);
    return found == FUsers.end() ? nullptr : found->second;
}

const wire::Group* TDirectory::FindGroup(std::int32_t id) const {
    const auto found = FGroups.find(id);
    return found == FGroups.end() ? nullptr : found->second;
}

const wire::Project* TProjects::Find(std::int32_t id) const {
    return FindById(FData.projects(), id);
}

const wire::Project* TProjects::FindByBaseline(std::int32_t baselineId) const {
    for (const wire::Project& project : FData.projects())
        if (FindBaseline(project, baselineId)) return &project;
    return nullptr;
}

const wire::Baseline* FindBaseline(const wire::Project& project, std::int32_t id) {
    return FindById(project.baselines(), id);
}

wire::SaveRequirementRequest TRequirementState::WrittenChanges() const {
    wire::SaveRequirementRequest changes = Changes;
    if (changes.has_references())
        for (const auto& reference : *References)
            *changes.mutable_references()->add_references() = *reference;
    if (changes.has_responsible_users())
        for (const auto& assignment : *Assignments)
            *changes.mutable_responsible_users()->add_assignments() = *assignment;
    return changes;
}

void TRequirementState::TakeSaved(const wire::SaveRequirementRequest& saved,
                                  const wire::SaveRequirementReply& reply) {
    auto now = std::make_shared<wire::Requirement>(*Snapshot);
    *now->mutable_version() = reply.version();
    if (saved.has_name()) now->set_name(saved.name());
    if (saved.has_description())
        now->set_description(reply.has_description() ? reply.description() : saved.description());
    if (saved.has_validation()) now->set_validation(saved.validation());
    if (saved.has_owner_id()) now->set_owner_id(saved.owner_id());
    if (saved.has_references()) *now->mutable_references() = saved.references().references();
    if (saved.has_responsible_users())
        *now->mutable_responsible_users() = saved.responsible_users().assignments();
    for (const wire::AttributeValue& value : saved.values()) {
        for (auto* fixed : {now->mutable_status(), now->mutable_priority()})
            if (fixed->attribute_id() == value.attribute_id()) *fixed = value;
        if (auto* other = FindValueIn(*now->mutable_values(), value.attribute_id())) *other = value;
    }
    Snapshot = std::move(now);
    Stamp = reply.stamp();
    Changes.Clear();
}

const wire::AttributeValue* TRequirementState::FindValue(std::int32_t attributeId) const {
    if (const auto* written = FindValueIn(Changes.values(), attributeId)) return written;
    if (const auto* read = FindValueIn(Snapshot->values(), attributeId)) return read;
    for (const auto* fixed : {&Snapshot->status(), &Snapshot->priority()})
        if (fixed->attribute_id() == attributeId) return fixed;
    return nullptr;
}

wire::AttributeValue& TRequirementState::ValueToChange(std::int32_t attributeId) {
    if (auto* written = FindValueIn(*Changes.mutable_values(), attributeId)) return *written;
    const wire::AttributeValue* read = FindValue(attributeId);
    wire::AttributeValue& value = *Changes.add_values();
    if (read) value = *read;
    value.set_attribute_id(attributeId);
    return value;
}

} // namespace Sdk
