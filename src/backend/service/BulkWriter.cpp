#include "backend/service/BulkWriter.h"

#include "backend/rules/Editing.h"
#include "backend/rules/Images.h"
#include "backend/rules/Passwords.h"
#include "backend/rules/Rules.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace Backend {

namespace {

constexpr int NumberBlock = 1000;

} // namespace

struct BulkWriter::State {
    State(const std::string& path, Hashing hashing)
        : Target(path, NumberBlock)
        , Writing(Target.Db, Transaction::Kind::Write)
        , Rules(Target)
        , Secrets(hashing == Hashing::Secure ? PasswordHashing::Secure : PasswordHashing::QuickForTests) {}

    // Where the next child of a node goes; child counts are written at the end.
    struct Branch {
        TreePlace Place;
        std::int64_t LastOrderKey = 0;
        int Children = 0;
        bool Grown = false;
    };

    Branch& BranchAt(ObjectId baselineId, ObjectId nodeId) {
        const auto found = Branches.find(nodeId);
        if (found != Branches.end()) return found->second;
        const std::optional<TreePlace> place = Target.Trees.Find(baselineId, nodeId);
        if (!place) throw RuleViolation("There is no parent " + std::to_string(nodeId) + " in the project.");
        Branch branch{*place, Target.Trees.LastOrderKey(baselineId, nodeId), place->ChildCount, false};
        return Branches.emplace(nodeId, branch).first->second;
    }

    ObjectId CurrentBaseline(ObjectId projectId) {
        ObjectId& baseline = Baselines[projectId];
        if (baseline == 0) baseline = Target.Projects.CurrentBaseline(projectId);
        if (baseline == 0) throw RuleViolation("There is no project " + std::to_string(projectId) + ".");
        return baseline;
    }

    TreePlace PlaceOf(ObjectId requirementId) {
        const ObjectId project = Target.Requirements.ProjectOf(requirementId);
        const std::optional<TreePlace> place =
            project ? Target.Trees.Find(CurrentBaseline(project), requirementId) : std::nullopt;
        if (!place) throw RuleViolation("There is no requirement " + std::to_string(requirementId) + ".");
        return *place;
    }

    ObjectId WriteTrace(const TraceEnd& from, const TraceEnd& to, bool suspect) {
        if (Target.Traces.Find(from, to)) throw RuleViolation("There is such a trace already.");
        const ObjectId id = Target.Numbers.Next();
        Target.Traces.Add({id, from, to, suspect});
        return id;
    }

    void WriteChildCounts() {
        for (auto& [id, branch] : Branches)
            if (std::exchange(branch.Grown, false))
                Target.Trees.SetChildCount(branch.Place.BaselineId, id, branch.Children);
    }

    Connection Target;
    Transaction Writing;
    Editing Rules;
    Passwords Secrets;
    std::map<ObjectId, ObjectId> Baselines; // by project
    std::unordered_map<ObjectId, Branch> Branches;
    std::int64_t Written = 0;
    std::int64_t Every = 0;
    std::function<void(std::int64_t)> Progress;
};

BulkWriter::BulkWriter(const std::string& path, Hashing hashing)
    : FState(std::make_unique<State>(path, hashing)) {}
BulkWriter::~BulkWriter() = default;

void BulkWriter::LimitPages(int pages) {
    FState->Target.Db.LimitPages(pages);
}

void BulkWriter::OnProgress(std::int64_t every, std::function<void(std::int64_t)> handler) {
    FState->Every = every;
    FState->Progress = std::move(handler);
}

ObjectId BulkWriter::AddUser(const NewUser& user) {
    AccountTable& accounts = FState->Target.Accounts;
    CheckName("The user name", user.UserName, 64);
    CheckText("The user's name", user.Name, MaxName);
    if (user.Password.empty()) throw RuleViolation("The user " + user.UserName + " has no password.");
    if (accounts.Find(user.UserName)) throw RuleViolation("There is a user " + user.UserName + " already.");
    const ObjectId id = FState->Target.Numbers.Next();
    accounts.AddUser({id, user.UserName, user.Name.empty() ? user.UserName : user.Name, user.Disabled,
                      user.MustChangePassword, user.Administrator},
                     FState->Secrets.Hash(user.Password));
    return id;
}

ObjectId BulkWriter::AddGroup(const std::string& name, const std::vector<ObjectId>& members) {
    AccountTable& accounts = FState->Target.Accounts;
    CheckName("The group's name", name);
    if (accounts.FindGroup(name)) throw RuleViolation("There is a group " + name + " already.");
    for (ObjectId member : members)
        if (!accounts.UserExists(member))
            throw RuleViolation("There is no user " + std::to_string(member) + " for the group " + name +
                                ".");
    Group group{FState->Target.Numbers.Next(), name, members};
    std::ranges::sort(group.Members);
    const auto repeated = std::ranges::unique(group.Members);
    group.Members.erase(repeated.begin(), repeated.end());
    accounts.AddGroup(group);
    return group.Id;
}

ObjectId BulkWriter::AddProject(const NewProject& project) {
    Connection& target = FState->Target;
    CheckName("The project's name", project.Name);
    CheckText("The project's description", project.Description, MaxTextLength);
    CheckName("The baseline's name", project.BaselineName);
    if (target.Projects.Find(project.Name))
        throw RuleViolation("There is a project " + project.Name + " already.");
    for (ObjectId group : project.Groups)
        if (target.Accounts.NameOfGroup(group).empty())
            throw RuleViolation("There is no group " + std::to_string(group) + " for the project.");
    Project made;
    made.Id = target.Numbers.Next();
    made.Name = project.Name;
    made.Description = project.Description;
    made.GroupIds = project.Groups;
    target.Projects.Add(made);
    Baseline current;
    current.Id = target.Numbers.Next();
    current.ProjectId = made.Id;
    current.Name = project.BaselineName;
    target.Projects.AddBaseline(current);
    return made.Id;
}

void BulkWriter::Grant(ObjectId projectId, ObjectId userOrGroupId, Role role) {
    Connection& target = FState->Target;
    FState->CurrentBaseline(projectId);
    if (target.Accounts.UserExists(userOrGroupId))
        target.Projects.GrantUser(projectId, userOrGroupId, role);
    else if (!target.Accounts.NameOfGroup(userOrGroupId).empty())
        target.Projects.GrantGroup(projectId, userOrGroupId, role);
    else
        throw RuleViolation("There is no user or group " + std::to_string(userOrGroupId) + ".");
}

ObjectId BulkWriter::AddRequirementType(ObjectId projectId, const NewRequirementType& type) {
    Connection& target = FState->Target;
    CheckName("The requirement type's name", type.Name);
    CheckName("The requirement type's tag", type.Tag, 16);
    CheckText("The requirement type's description", type.Description, MaxTextLength);
    const ObjectId baseline = FState->CurrentBaseline(projectId);
    if (target.Types.Find(projectId, type.Name))
        throw RuleViolation("There is a requirement type " + type.Name + " already.");
    const auto list = [&](const char* name, AttributeRole role, const std::vector<std::string>& entries) {
        Attribute attribute;
        attribute.Id = target.Numbers.Next();
        attribute.Name = name;
        attribute.Kind = AttributeKind::List;
        attribute.Role = role;
        attribute.Entries.assign(entries.begin(), entries.end());
        if (!entries.empty()) attribute.Default = Selection{{0}};
        CheckAttribute(attribute);
        return attribute;
    };
    RequirementType made;
    made.Id = target.Numbers.Next();
    made.ProjectId = projectId;
    made.Name = type.Name;
    made.Tag = type.Tag;
    made.Description = type.Description;
    made.Status = list("Status", AttributeRole::Status, type.StatusEntries);
    made.Priority = list("Priority", AttributeRole::Priority, type.PriorityEntries);
    target.Types.Add(made);
    target.Types.AddAttribute(made.Id, 0, made.Status);
    target.Types.AddAttribute(made.Id, 0, made.Priority);
    target.Trees.InsertType(baseline, made.Id);
    return made.Id;
}

ObjectId BulkWriter::AddCustomTab(ObjectId typeId, const std::string& name, const std::string& icon) {
    CheckName("The custom tab's name", name);
    CheckIcon("The custom tab's picture", icon);
    FState->Rules.Type(typeId);
    const ObjectId id = FState->Target.Numbers.Next();
    FState->Target.Types.AddTab(typeId, {id, name, icon, {}});
    FState->Rules.ForgetTypes();
    return id;
}

ObjectId BulkWriter::AddAttribute(ObjectId tabId, const Attribute& attribute) {
    CheckAttribute(attribute);
    const ObjectId typeId = FState->Target.Types.TypeOfTab(tabId);
    if (typeId == 0) throw RuleViolation("There is no custom tab " + std::to_string(tabId) + ".");
    Attribute made = attribute;
    made.Id = FState->Target.Numbers.Next();
    made.Role = AttributeRole::Custom;
    FState->Target.Types.AddAttribute(typeId, tabId, made);
    FState->Rules.ForgetTypes();
    return made.Id;
}

ObjectId BulkWriter::AddRequirement(const NewRequirement& requirement, const Revision& revision) {
    State& state = *FState;
    const ObjectId parentId = requirement.ParentId ? requirement.ParentId : requirement.TypeId;
    State::Branch& parent = state.BranchAt(state.CurrentBaseline(requirement.ProjectId), parentId);
    const ObjectId typeId = parent.Place.TypeId;
    const ObjectId id = state.Target.Numbers.Next();
    const std::int64_t versionId = state.Rules.MakeRequirement(id, typeId, requirement, revision);
    const TreePlace place{parent.Place.BaselineId, parentId, 0, id, typeId, versionId, 0};
    parent.LastOrderKey = state.Target.Trees.AppendAfter(parent.LastOrderKey, place);
    ++parent.Children;
    parent.Grown = true;
    state.Branches.emplace(id, State::Branch{place, 0, 0, false});
    ++state.Written;
    if (state.Every > 0 && state.Written % state.Every == 0) state.Progress(state.Written);
    return id;
}

bool BulkWriter::AddRevision(ObjectId requirementId, const RequirementChange& change,
                             const Revision& revision) {
    return FState->Rules.Save(FState->PlaceOf(requirementId), change, revision) != 0;
}

ObjectId BulkWriter::AddMessage(const NewMessage& message) {
    Connection& target = FState->Target;
    CheckText("The subject", message.Subject, MaxRequirementName);
    CheckText("The message", message.Body, MaxTextLength);
    FState->PlaceOf(message.RequirementId);
    if (!target.Accounts.UserExists(message.AuthorId))
        throw RuleViolation("There is no user " + std::to_string(message.AuthorId) +
                            " to write the message.");
    if (message.ParentId) {
        const auto parent = target.Discussions.Find(message.ParentId, message.AuthorId);
        if (!parent || parent->RequirementId != message.RequirementId)
            throw RuleViolation("There is no message " + std::to_string(message.ParentId) + " to answer.");
    }
    const ObjectId id = target.Numbers.Next();
    target.Discussions.Add({id,
                            message.RequirementId,
                            message.ParentId,
                            message.Subject,
                            message.Body,
                            message.AuthorId,
                            {},
                            message.Date,
                            false});
    return id;
}

void BulkWriter::MarkRead(ObjectId userId, ObjectId messageId) {
    Connection& target = FState->Target;
    const auto message = target.Discussions.Find(messageId, userId);
    if (!message || !target.Accounts.UserExists(userId))
        throw RuleViolation("There is no message " + std::to_string(messageId) +
                            " to read, or no such user.");
    target.Discussions.MarkRead(messageId, message->RequirementId, userId, true);
}

void BulkWriter::SetInterest(ObjectId userId, ObjectId requirementId, bool interested) {
    FState->PlaceOf(requirementId);
    if (!FState->Target.Accounts.UserExists(userId))
        throw RuleViolation("There is no user " + std::to_string(userId) + ".");
    FState->Target.Discussions.SetInterest(userId, requirementId, interested);
}

ObjectId BulkWriter::AddIntegration(const Integration& integration) {
    TraceTable& traces = FState->Target.Traces;
    CheckName("The integration's name", integration.Name, MaxRequirementName);
    CheckText("The integration's library name", integration.LibraryName, MaxRequirementName);
    CheckIcon("The integration's picture", integration.Icon);
    if (traces.FindIntegration(integration.Name))
        throw RuleViolation("There is an integration " + integration.Name + " already.");
    Integration made = integration;
    made.Id = FState->Target.Numbers.Next();
    traces.SaveIntegration(made);
    return made.Id;
}

ObjectId BulkWriter::AddTrace(ObjectId fromRequirementId, ObjectId toRequirementId, bool suspect) {
    FState->PlaceOf(fromRequirementId);
    FState->PlaceOf(toRequirementId);
    if (fromRequirementId == toRequirementId)
        throw RuleViolation("A requirement cannot be traced to itself.");
    return FState->WriteTrace({fromRequirementId, 0}, {toRequirementId, 0}, suspect);
}

ObjectId BulkWriter::AddExternalTrace(ObjectId requirementId, bool away, const ExternalObject& object,
                                      bool suspect) {
    Connection& target = FState->Target;
    FState->PlaceOf(requirementId);
    CheckName("The object's key", object.Key, 4096);
    CheckText("The object's name", object.Name, MaxRequirementName);
    CheckText("The object's location", object.Location, 4096);
    const auto integration = target.Traces.FindIntegration(object.IntegrationName);
    if (!integration) throw RuleViolation("There is no integration " + object.IntegrationName + ".");
    ObjectId objectNumber = target.Traces.FindObject(integration->Id, object.Key);
    if (objectNumber == 0) {
        ExternalObject made = object;
        made.Id = objectNumber = target.Numbers.Next();
        made.IntegrationId = integration->Id;
        target.Traces.AddObject(made);
    }
    const TraceEnd near{requirementId, 0}, far{0, objectNumber};
    return FState->WriteTrace(away ? near : far, away ? far : near, suspect);
}

ObjectId BulkWriter::AddGlossary(ObjectId projectId, const Glossary& glossary) {
    FState->CurrentBaseline(projectId);
    CheckName("The glossary's name", glossary.Name);
    for (int colour : {glossary.Red, glossary.Green, glossary.Blue})
        if (colour < 0 || colour > 255)
            throw RuleViolation("The colour of the glossary " + glossary.Name + " is not within 0 to 255.");
    Glossary made = glossary;
    made.Id = FState->Target.Numbers.Next();
    for (GlossaryTerm& term : made.Terms) {
        CheckName("The term", term.Name);
        CheckText("The definition of " + term.Name, term.Definition, MaxTextLength);
        term.Id = FState->Target.Numbers.Next();
    }
    FState->Target.Glossaries.Add(projectId, made);
    return made.Id;
}

std::string BulkWriter::AddImage(std::string_view bytes) {
    return KeepImage(FState->Target, bytes);
}

ObjectId BulkWriter::FreezeBaseline(ObjectId projectId, const std::string& name,
                                    const std::string& description, Instant date) {
    Connection& target = FState->Target;
    CheckName("The baseline's name", name);
    CheckText("The baseline's description", description, MaxTextLength);
    const ObjectId current = FState->CurrentBaseline(projectId);
    FState->WriteChildCounts();
    const ObjectId id = target.Numbers.Next();
    target.Projects.AddBaseline({id, projectId, name, description, BaselineType::General, date, {}});
    target.Trees.Copy(current, id);
    return id;
}

void BulkWriter::DeleteBaseline(ObjectId baselineId) {
    const std::optional<Baseline> baseline = FState->Target.Projects.FindBaseline(baselineId);
    if (!baseline || baseline->Type == BaselineType::Current)
        throw RuleViolation("There is no frozen baseline " + std::to_string(baselineId) + ".");
    FState->Target.Projects.SetBaselineType(baselineId, BaselineType::Deleted);
}

ObjectId BulkWriter::FindUser(const std::string& userName) {
    const auto found = FState->Target.Accounts.Find(userName);
    return found ? found->Account.Id : 0;
}

ObjectId BulkWriter::FindAdministrator() {
    ObjectId first = 0;
    for (const User& user : FState->Target.Accounts.ReadDirectory().Users)
        if (user.Administrator && (first == 0 || user.Id < first)) first = user.Id;
    return first;
}

ObjectId BulkWriter::FindGroup(const std::string& name) {
    return FState->Target.Accounts.FindGroup(name);
}
ObjectId BulkWriter::FindProject(const std::string& name) {
    return FState->Target.Projects.Find(name);
}

ObjectId BulkWriter::FindRequirementType(ObjectId projectId, const std::string& name) {
    return FState->Target.Types.Find(projectId, name);
}

std::map<std::string, ObjectId> BulkWriter::Attributes(ObjectId typeId) {
    std::map<std::string, ObjectId> attributes;
    for (const CustomTab& tab : FState->Rules.Type(typeId).Tabs)
        for (const Attribute& attribute : tab.Attributes)
            attributes.emplace(attribute.Name, attribute.Id);
    return attributes;
}

std::vector<std::pair<std::string, ObjectId>> BulkWriter::FindByText(ObjectId projectId,
                                                                     ObjectId attributeId) {
    return FState->Target.Requirements.FindByText(FState->CurrentBaseline(projectId), attributeId);
}

std::string BulkWriter::LockedBy(ObjectId requirementId, Instant now) {
    const auto lock = FState->Target.Requirements.FindLock(requirementId, now);
    return lock ? lock->UserName : std::string();
}

void BulkWriter::Commit() {
    FState->WriteChildCounts();
    FState->Writing.Commit();
}

} // namespace Backend
