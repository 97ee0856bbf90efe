#include "backend/service/Wire.h"

#include "backend/rules/Refusal.h"

namespace Backend {

namespace {

void ToWire(const Baseline& baseline, wire::Baseline& message) {
    message.set_id(baseline.Id);
    message.set_name(baseline.Name);
    message.set_description(baseline.Description);
    message.set_type(static_cast<wire::BaselineType>(baseline.Type));
    message.set_created(baseline.Created);
    for (ObjectId typeId : baseline.TypeIds)
        message.add_requirement_type_ids(typeId);
}

void ToWire(const ListEntry& entry, wire::ListEntry& message) {
    if (const auto* text = std::get_if<std::string>(&entry))
        message.set_text(*text);
    else if (const auto* number = std::get_if<std::int32_t>(&entry))
        message.set_number(*number);
    else if (const auto* user = std::get_if<UserEntry>(&entry))
        message.set_user_id(user->Id);
    else if (const auto* group = std::get_if<GroupEntry>(&entry))
        message.set_group_id(group->Id);
}

void ToWire(const Attribute& attribute, wire::Attribute& message) {
    message.set_id(attribute.Id);
    message.set_name(attribute.Name);
    message.set_kind(static_cast<wire::AttributeKind>(attribute.Kind));
    Backend::ToWire(AttributeValue{attribute.Id, attribute.Default}, *message.mutable_default_value());
    message.set_max_length(attribute.MaxLength);
    message.set_min_integer(attribute.MinInteger);
    message.set_max_integer(attribute.MaxInteger);
    message.set_min_float(attribute.MinFloat);
    message.set_max_float(attribute.MaxFloat);
    message.set_min_date(attribute.MinDate.Days);
    message.set_max_date(attribute.MaxDate.Days);
    message.set_unit_name(attribute.UnitName);
    for (const ListEntry& entry : attribute.Entries)
        ToWire(entry, *message.add_entries());
    message.set_max_selections(attribute.MaxSelections);
}

// The kinds that an attribute's value and a value in the history have in common.
template<class TValue, class TMessage> void PlainToWire(const TValue& value, TMessage& message) {
    if (const auto* text = std::get_if<std::string>(&value))
        message.set_text(*text);
    else if (const auto* number = std::get_if<std::int32_t>(&value))
        message.set_integer(*number);
    else if (const auto* real = std::get_if<float>(&value))
        message.set_real(*real);
    else if (const auto* flag = std::get_if<bool>(&value))
        message.set_flag(*flag);
    else if (const auto* date = std::get_if<Date>(&value))
        message.set_date(date->Days);
}

DocumentReference FromWire(const wire::DocumentReference& message) {
    switch (message.kind_case()) {
    case wire::DocumentReference::kFile:
        return {ReferenceKind::File, message.file().path(), message.file().description(), message.is_key()};
    case wire::DocumentReference::kWeb:
        return {ReferenceKind::Web, message.web().url(), {}, message.is_key()};
    case wire::DocumentReference::kText:
        return {ReferenceKind::Text, message.text().text(), {}, message.is_key()};
    case wire::DocumentReference::KIND_NOT_SET:
        break;
    }
    throw RuleViolation("A reference is neither a file nor an address nor a text.");
}

} // namespace

void ToWire(const Directory& directory, wire::Directory& message) {
    message.set_revision(directory.Revision);
    for (const User& user : directory.Users) {
        wire::User& to = *message.add_users();
        to.set_id(user.Id);
        to.set_user_name(user.UserName);
        to.set_name(user.Name);
        to.set_disabled(user.Disabled);
    }
    for (const Group& group : directory.Groups) {
        wire::Group& to = *message.add_groups();
        to.set_id(group.Id);
        to.set_name(group.Name);
        for (ObjectId member : group.Members)
            to.add_user_ids(member);
    }
}

void ToWire(const Project& project, wire::Project& message) {
    message.set_id(project.Id);
    message.set_name(project.Name);
    message.set_description(project.Description);
    message.set_current_baseline_id(project.CurrentBaselineId);
    for (const Baseline& baseline : project.Baselines)
        ToWire(baseline, *message.add_baselines());
    for (const TypeSummary& type : project.Types) {
        wire::RequirementTypeSummary& to = *message.add_requirement_types();
        to.set_id(type.Id);
        to.set_name(type.Name);
        to.set_tag(type.Tag);
        to.set_description(type.Description);
        to.set_revision(type.Revision);
    }
    for (ObjectId groupId : project.GroupIds)
        message.add_group_ids(groupId);
}

void ToWire(const RequirementType& type, wire::RequirementType& message) {
    message.set_id(type.Id);
    message.set_name(type.Name);
    message.set_tag(type.Tag);
    message.set_description(type.Description);
    message.set_revision(type.Revision);
    message.set_project_id(type.ProjectId);
    ToWire(type.Status, *message.mutable_status());
    ToWire(type.Priority, *message.mutable_priority());
    for (const CustomTab& tab : type.Tabs) {
        wire::CustomTab& to = *message.add_custom_tabs();
        to.set_id(tab.Id);
        to.set_name(tab.Name);
        to.set_icon(tab.Icon);
        for (const Attribute& attribute : tab.Attributes)
            ToWire(attribute, *to.add_attributes());
    }
}

void ToWire(const AttributeValue& value, wire::AttributeValue& message) {
    message.set_attribute_id(value.AttributeId);
    if (const auto* selection = std::get_if<Selection>(&value.Content))
        message.mutable_selected()->mutable_indices()->Add(selection->Indices.begin(),
                                                           selection->Indices.end());
    else
        PlainToWire(value.Content, message);
}

void ToWire(const Version& version, wire::Version& message) {
    message.set_major(version.Major);
    message.set_minor(version.Minor);
}

void ToWire(const TreeNode& node, wire::Node& message) {
    message.set_id(node.Id);
    message.set_kind(node.IsRequirement() ? wire::NODE_KIND_REQUIREMENT : wire::NODE_KIND_REQUIREMENT_TYPE);
    message.set_parent_id(node.ParentId);
    message.set_requirement_type_id(node.TypeId);
    message.set_name(node.Name);
    message.set_child_count(node.ChildCount);
    if (!node.IsRequirement()) return;
    message.set_hierarchical_number(node.Number);
    message.set_serial_number(SerialNumber(node.TypeTag, node.Id));
    message.set_has_unread_messages(node.Unread);
    message.set_user_is_interested(node.Interested);
}

void ToWire(const DocumentReference& reference, wire::DocumentReference& message) {
    message.set_is_key(reference.IsKey);
    switch (reference.Kind) {
    case ReferenceKind::File:
        message.mutable_file()->set_path(reference.Target);
        message.mutable_file()->set_description(reference.Description);
        break;
    case ReferenceKind::Web:
        message.mutable_web()->set_url(reference.Target);
        break;
    case ReferenceKind::Text:
        message.mutable_text()->set_text(reference.Target);
        break;
    }
}

void ToWire(const Assignment& assignment, wire::Assignment& message) {
    message.set_group_id(assignment.GroupId);
    for (ObjectId userId : assignment.UserIds)
        message.add_user_ids(userId);
}

void ToWire(const HistoryRevision& revision, wire::HistoryRevision& message) {
    ToWire(revision.Number, *message.mutable_version());
    message.set_date(revision.Date);
    message.set_user_id(revision.UserId);
    message.set_user_name(revision.UserName);
    message.set_comment(revision.Comment);
    for (const HistoryChange& change : revision.Changes) {
        wire::HistoryChange& to = *message.add_changes();
        to.set_attribute_name(change.AttributeName);
        PlainToWire(change.Old, *to.mutable_old_value());
        PlainToWire(change.New, *to.mutable_new_value());
    }
}

void ToWire(const Glossary& glossary, wire::Glossary& message) {
    message.set_id(glossary.Id);
    message.set_name(glossary.Name);
    message.set_red(glossary.Red);
    message.set_green(glossary.Green);
    message.set_blue(glossary.Blue);
    for (const GlossaryTerm& term : glossary.Terms) {
        wire::GlossaryTerm& to = *message.add_terms();
        to.set_id(term.Id);
        to.set_name(term.Name);
        to.set_definition(term.Definition);
    }
}

void ToWire(const Integration& integration, wire::Integration& message) {
    message.set_id(integration.Id);
    message.set_name(integration.Name);
    message.set_library_name(integration.LibraryName);
    message.set_icon(integration.Icon);
}

void ToWire(const ExternalObject& object, wire::IntegrationObject& message) {
    message.set_id(object.Id);
    message.set_name(object.Name);
    message.set_integration_id(object.IntegrationId);
    message.set_integration_name(object.IntegrationName);
    message.set_external_key(object.Key);
    message.set_location(object.Location);
    message.set_icon(object.Icon);
}

AttributeValue FromWire(const wire::AttributeValue& message) {
    AttributeValue value;
    value.AttributeId = message.attribute_id();
    switch (message.value_case()) {
    case wire::AttributeValue::kText:
        value.Content = message.text();
        break;
    case wire::AttributeValue::kInteger:
        value.Content = message.integer();
        break;
    case wire::AttributeValue::kReal:
        value.Content = message.real();
        break;
    case wire::AttributeValue::kFlag:
        value.Content = message.flag();
        break;
    case wire::AttributeValue::kDate:
        value.Content = Date{message.date()};
        break;
    case wire::AttributeValue::kSelected:
        value.Content = Selection{{message.selected().indices().begin(), message.selected().indices().end()}};
        break;
    case wire::AttributeValue::VALUE_NOT_SET:
        break;
    }
    return value;
}

RequirementChange FromWire(const wire::SaveRequirementRequest& message) {
    RequirementChange change;
    if (message.has_name()) change.Name = message.name();
    if (message.has_description()) change.Description = message.description();
    if (message.has_validation()) change.Validation = message.validation();
    if (message.has_owner_id()) change.OwnerId = message.owner_id();
    for (const wire::AttributeValue& value : message.values())
        change.Values.push_back(FromWire(value));
    if (message.has_references()) {
        change.References.emplace();
        for (const wire::DocumentReference& reference : message.references().references())
            change.References->push_back(FromWire(reference));
    }
    if (message.has_responsible_users()) {
        change.Responsible.emplace();
        for (const wire::Assignment& assignment : message.responsible_users().assignments())
            change.Responsible->push_back(
                {assignment.group_id(), {assignment.user_ids().begin(), assignment.user_ids().end()}});
    }
    return change;
}

std::string SerialNumber(const std::string& tag, ObjectId requirementId) {
    return tag + std::to_string(requirementId);
}

} // namespace Backend
