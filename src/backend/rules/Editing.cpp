#include "backend/rules/Editing.h"

#include "backend/rules/Markup.h"
#include "backend/rules/Rules.h"

#include <algorithm>

namespace Backend {

namespace {

const Attribute* FindAttribute(const RequirementType& type, ObjectId attributeId) {
    if (type.Status.Id == attributeId) return &type.Status;
    if (type.Priority.Id == attributeId) return &type.Priority;
    for (const CustomTab& tab : type.Tabs)
        for (const Attribute& attribute : tab.Attributes)
            if (attribute.Id == attributeId) return &attribute;
    return nullptr;
}

const Attribute& GetAttribute(const RequirementType& type, ObjectId attributeId) {
    if (const Attribute* attribute = FindAttribute(type, attributeId)) return *attribute;
    throw RuleViolation("The requirement type \"" + type.Name + "\" has no attribute " +
                        std::to_string(attributeId) + ".");
}

Value Chosen(int index) {
    return index < 0 ? Value(Selection()) : Value(Selection{{index}});
}

bool HaveKey(const std::vector<DocumentReference>& references) {
    return std::ranges::any_of(references, &DocumentReference::IsKey);
}

} // namespace

const RequirementType& Editing::Type(ObjectId typeId) {
    const auto found = FTypes.find(typeId);
    if (found != FTypes.end()) return found->second;
    std::optional<RequirementType> type = FConnection.Types.Read(typeId);
    if (!type) throw RuleViolation("There is no requirement type " + std::to_string(typeId) + ".");
    return FTypes.emplace(typeId, std::move(*type)).first->second;
}

void Editing::CheckOwner(ObjectId ownerId) {
    if (ownerId != 0 && !FConnection.Accounts.UserExists(ownerId))
        throw RuleViolation("There is no user " + std::to_string(ownerId) + " to own the requirement.");
}

void Editing::CheckAssignments(ObjectId projectId, const std::vector<Assignment>& assignments) {
    for (const Assignment& assignment : assignments) {
        if (!FConnection.Projects.HasGroup(projectId, assignment.GroupId))
            throw RuleViolation("The group " + std::to_string(assignment.GroupId) +
                                " does not belong to the project.");
        for (ObjectId userId : assignment.UserIds)
            if (!FConnection.Accounts.IsMember(assignment.GroupId, userId))
                throw RuleViolation("The user " + std::to_string(userId) + " is no member of the group " +
                                    NameOfGroup(assignment.GroupId) + ".");
    }
}

std::int64_t Editing::MakeRequirement(ObjectId requirementId, ObjectId typeId,
                                      const NewRequirement& requirement, const Revision& revision) {
    const RequirementType& type = Type(typeId);
    CheckName("The requirement's name", requirement.Name, MaxRequirementName);
    const std::string description = CleanDescription(requirement.Description);
    CheckText("The validation", requirement.Validation, MaxTextLength);
    CheckReferences(requirement.References);
    CheckOwner(requirement.OwnerId);
    CheckAssignments(type.ProjectId, requirement.Responsible);
    std::vector<AttributeValue> values = requirement.Values;
    values.push_back({type.Status.Id, Chosen(requirement.StatusIndex)});
    values.push_back({type.Priority.Id, Chosen(requirement.PriorityIndex)});
    for (AttributeValue& value : values) {
        const Attribute& attribute = GetAttribute(type, value.AttributeId);
        CheckValue(attribute, value.Content);
        value.Content = Normalized(attribute, std::move(value.Content));
    }
    std::erase_if(values, [&](const AttributeValue& value) {
        const Attribute& attribute = *FindAttribute(type, value.AttributeId);
        return value.Content == Normalized(attribute, attribute.Default);
    });

    RequirementTable& table = FConnection.Requirements;
    table.Add(requirementId, type.ProjectId);
    RequirementVersion version;
    version.RequirementId = requirementId;
    version.TypeId = typeId;
    version.Name = requirement.Name;
    version.OwnerId = requirement.OwnerId;
    version.TextId = table.AddText({description, requirement.Validation});
    version.Changed = revision.Date;
    version.ChangedBy = revision.UserId;
    version.Comment = revision.Comment;
    const std::int64_t versionId = table.AddVersion(version);
    table.AddValues(versionId, values);
    table.AddReferences(versionId, requirement.References);
    table.AddAssignments(versionId, requirement.Responsible);
    return versionId;
}

// The next version while it is being made, with the changes that lead to it.
struct Editing::Draft {
    ObjectId ProjectId = 0;
    const RequirementType* Type = nullptr;
    RequirementVersion Version;
    RequirementText Text;
    bool NewText = false;
    std::vector<AttributeValue> Values; // one for each attribute of the type
    std::vector<DocumentReference> References;
    std::vector<Assignment> Responsible;
    std::vector<HistoryChange> Changes;

    void Note(const std::string& attribute, HistoryValue before, HistoryValue after) {
        Changes.push_back({attribute, std::move(before), std::move(after)});
    }
};

Editing::Draft Editing::ReadDraft(const TreePlace& place) {
    RequirementTable& table = FConnection.Requirements;
    Draft draft;
    draft.Version = table.ReadVersion(place.VersionId).value();
    draft.Type = &Type(draft.Version.TypeId);
    draft.ProjectId = draft.Type->ProjectId;
    draft.Text = table.ReadText(draft.Version.TextId);
    draft.Values = table.ReadValues(place.VersionId, draft.Version.TypeId);
    draft.References = table.ReadReferences(place.VersionId);
    draft.Responsible = table.ReadAssignments(place.VersionId, draft.ProjectId);
    for (AttributeValue& value : draft.Values)
        value.Content = Normalized(GetAttribute(*draft.Type, value.AttributeId), std::move(value.Content));
    return draft;
}

std::int64_t Editing::Save(const TreePlace& place, const RequirementChange& change,
                           const Revision& revision) {
    Draft draft = ReadDraft(place);
    Apply(draft, change);
    if (draft.Changes.empty()) return 0;
    return Write(draft, place, revision);
}

void Editing::Apply(Draft& draft, const RequirementChange& change) {
    ApplyTexts(draft, change);
    if (change.OwnerId && *change.OwnerId != draft.Version.OwnerId) ApplyOwner(draft, *change.OwnerId);
    if (change.StatusIndex) ApplyValue(draft, draft.Type->Status, Chosen(*change.StatusIndex));
    if (change.PriorityIndex) ApplyValue(draft, draft.Type->Priority, Chosen(*change.PriorityIndex));
    for (const AttributeValue& value : change.Values)
        ApplyValue(draft, GetAttribute(*draft.Type, value.AttributeId), value.Content);
    if (change.References && *change.References != draft.References)
        ApplyReferences(draft, *change.References);
    if (change.Responsible) ApplyAssignments(draft, *change.Responsible);
}

void Editing::ApplyTexts(Draft& draft, const RequirementChange& change) {
    if (change.Name && *change.Name != draft.Version.Name) {
        CheckName("The requirement's name", *change.Name, MaxRequirementName);
        draft.Note("Name", draft.Version.Name, *change.Name);
        draft.Version.Name = *change.Name;
    }
    // Under a key reference a client shows, and may send back, the reference's text in
    // place of the description, which stays what it was. Once the key is taken away it
    // shows the description again, and what is typed then comes with the same save.
    const bool staysKeyed =
        HaveKey(draft.References) && HaveKey(change.References.value_or(draft.References));
    if (change.Description && !staysKeyed) {
        const std::string description = CleanDescription(*change.Description);
        if (!SameMarkup(description, draft.Text.Description)) {
            draft.Note("Description", draft.Text.Description, description);
            draft.Text.Description = description;
            draft.NewText = true;
        }
    }
    if (change.Validation && *change.Validation != draft.Text.Validation) {
        CheckText("The validation", *change.Validation, MaxTextLength);
        draft.Note("Validation", draft.Text.Validation, *change.Validation);
        draft.Text.Validation = *change.Validation;
        draft.NewText = true;
    }
}

void Editing::ApplyOwner(Draft& draft, ObjectId ownerId) {
    CheckOwner(ownerId);
    const auto readable = [&](ObjectId id) {
        return id ? HistoryValue(FConnection.Accounts.NameOf(id)) : HistoryValue();
    };
    draft.Note("Owner", readable(draft.Version.OwnerId), readable(ownerId));
    draft.Version.OwnerId = ownerId;
}

void Editing::ApplyValue(Draft& draft, const Attribute& attribute, Value value) {
    CheckValue(attribute, value);
    value = Normalized(attribute, std::move(value));
    const auto held = std::ranges::find(draft.Values, attribute.Id, &AttributeValue::AttributeId);
    if (held->Content == value) return;
    draft.Note(attribute.Name, Readable(attribute, held->Content), Readable(attribute, value));
    held->Content = std::move(value);
}

void Editing::ApplyReferences(Draft& draft, const std::vector<DocumentReference>& references) {
    CheckReferences(references);
    const auto readable = [](const std::vector<DocumentReference>& list) {
        std::string text;
        for (const DocumentReference& reference : list)
            text += (text.empty() ? "" : "; ") + reference.Target;
        return text;
    };
    draft.Note("References", readable(draft.References), readable(references));
    draft.References = references;
}

void Editing::ApplyAssignments(Draft& draft, const std::vector<Assignment>& assignments) {
    CheckAssignments(draft.ProjectId, assignments);
    std::vector<Assignment> next = draft.Responsible;
    for (const Assignment& assignment : assignments) {
        auto& users = std::ranges::find(next, assignment.GroupId, &Assignment::GroupId)->UserIds;
        users = assignment.UserIds;
        std::ranges::sort(users);
        const auto repeated = std::ranges::unique(users);
        users.erase(repeated.begin(), repeated.end());
    }
    if (next == draft.Responsible) return;
    draft.Note("Responsibilities", Readable(draft.Responsible), Readable(next));
    draft.Responsible = std::move(next);
}

std::int64_t Editing::Write(Draft& draft, const TreePlace& place, const Revision& revision) {
    RequirementTable& table = FConnection.Requirements;
    if (draft.NewText) draft.Version.TextId = table.AddText(draft.Text);
    ++draft.Version.Number.Minor;
    draft.Version.Changed = revision.Date;
    draft.Version.ChangedBy = revision.UserId;
    draft.Version.Comment = revision.Comment;
    const std::int64_t versionId = table.AddVersion(draft.Version);
    std::erase_if(draft.Values, [&](const AttributeValue& value) {
        const Attribute& attribute = GetAttribute(*draft.Type, value.AttributeId);
        return value.Content == Normalized(attribute, attribute.Default);
    });
    table.AddValues(versionId, draft.Values);
    table.AddReferences(versionId, draft.References);
    table.AddAssignments(versionId, draft.Responsible);
    table.AddChanges(versionId, draft.Changes);
    FConnection.Trees.SetVersion(place.BaselineId, place.NodeId, draft.Version.TypeId, versionId);
    FConnection.Traces.MarkSuspect(place.NodeId);
    return versionId;
}

void Editing::Reparent(const TreePlace& place, const TreePlace& newParent, const Revision& revision) {
    TreeTable& trees = FConnection.Trees;
    if (place.VersionId == 0) throw RuleViolation("A requirement type cannot be moved.");
    if (newParent.NodeId == place.NodeId ||
        trees.IsBelow(newParent.BaselineId, newParent.NodeId, place.NodeId))
        throw RuleViolation("A requirement cannot be moved below itself.");
    trees.Reparent(place, newParent.NodeId);
    if (newParent.TypeId == place.TypeId) return;
    for (ObjectId id : trees.Branch(place.BaselineId, place.NodeId)) {
        const TreePlace moved = trees.Find(place.BaselineId, id).value();
        Draft draft = ReadDraft(moved);
        Retype(draft, Type(newParent.TypeId));
        Write(draft, moved, revision);
    }
}

void Editing::Retype(Draft& draft, const RequirementType& type) {
    std::vector<AttributeValue> kept;
    const auto keep = [&](const Attribute& target) {
        for (const AttributeValue& value : draft.Values) {
            const Attribute& source = GetAttribute(*draft.Type, value.AttributeId);
            if (source.Role != target.Role || source.Kind != target.Kind || source.Name != target.Name)
                continue;
            try {
                CheckValue(target, value.Content);
                kept.push_back({target.Id, value.Content});
                return;
            } catch (const RuleViolation&) {
                // What the new type does not allow is lost like what it lacks.
            }
        }
        kept.push_back({target.Id, Normalized(target, target.Default)});
    };
    keep(type.Status);
    keep(type.Priority);
    for (const CustomTab& tab : type.Tabs)
        for (const Attribute& attribute : tab.Attributes)
            keep(attribute);
    draft.Note("Requirement Type", draft.Type->Name, type.Name);
    draft.Values = std::move(kept);
    draft.Type = &type;
    draft.Version.TypeId = type.Id;
}

int Editing::Remove(const TreePlace& place) {
    if (place.VersionId == 0) throw RuleViolation("A requirement type cannot be removed.");
    const std::vector<ObjectId> branch = FConnection.Trees.Branch(place.BaselineId, place.NodeId);
    FConnection.Trees.RemoveBranch(place, branch);
    for (ObjectId id : branch) {
        FConnection.Traces.RemoveAllOf(id);
        FConnection.Requirements.RemoveLock(id);
    }
    return static_cast<int>(branch.size());
}

std::string Editing::NameOfGroup(ObjectId groupId) {
    return FConnection.Accounts.NameOfGroup(groupId);
}

std::string Editing::Readable(const std::vector<Assignment>& assignments) {
    std::string text;
    for (const Assignment& assignment : assignments) {
        if (assignment.UserIds.empty()) continue;
        text += (text.empty() ? "" : "; ") + NameOfGroup(assignment.GroupId) + ": ";
        for (std::size_t i = 0; i < assignment.UserIds.size(); ++i)
            text += (i ? ", " : "") + FConnection.Accounts.NameOf(assignment.UserIds[i]);
    }
    return text;
}

HistoryValue Editing::Readable(const Attribute& attribute, const Value& value) {
    const auto entry = [&](int index) -> std::string {
        // The type may have lost the entry since it was chosen.
        if (index >= static_cast<int>(attribute.Entries.size())) return "entry " + std::to_string(index + 1);
        const ListEntry& held = attribute.Entries[static_cast<std::size_t>(index)];
        if (const auto* text = std::get_if<std::string>(&held)) return *text;
        if (const auto* number = std::get_if<std::int32_t>(&held)) return std::to_string(*number);
        if (const auto* user = std::get_if<UserEntry>(&held)) return FConnection.Accounts.NameOf(user->Id);
        return NameOfGroup(std::get<GroupEntry>(held).Id);
    };
    if (const auto* selection = std::get_if<Selection>(&value)) {
        std::string text;
        for (int index : selection->Indices)
            text += (text.empty() ? "" : ", ") + entry(index);
        return text;
    }
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto* real = std::get_if<float>(&value)) return *real;
    if (const auto* flag = std::get_if<bool>(&value)) return *flag;
    if (const auto* date = std::get_if<Date>(&value)) return *date;
    return std::monostate();
}

} // namespace Backend
