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

void TRequirementState::TakeSaved(const wire::SaveRequirementReply& reply) {
    auto saved = std::make_shared<wire::Requirement>(*Snapshot);
    *saved->mutable_version() = reply.version();
    if (Changes.has_name()) saved->set_name(Changes.name());
    if (Changes.has_description()) saved->set_description(Changes.description());
    if (Changes.has_validation()) saved->set_validation(Changes.validation());
    if (Changes.has_owner_id()) saved->set_owner_id(Changes.owner_id());
    if (Changes.has_references()) *saved->mutable_references() = Changes.references().references();
    if (Changes.has_responsible_users())
        *saved->mutable_responsible_users() = Changes.responsible_users().assignments();
    for (const wire::AttributeValue& value : Changes.values()) {
        for (auto* fixed : {saved->mutable_status(), saved->mutable_priority()})
            if (fixed->attribute_id() == value.attribute_id()) *fixed = value;
        if (auto* other = FindValueIn(*saved->mutable_values(), value.attribute_id())) *other = value;
    }
    Snapshot = std::move(saved);
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
