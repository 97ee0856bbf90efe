#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

using TStateHandle = std::shared_ptr<TRequirementState>;

class TVersion final : public IVersion {
public:
    explicit TVersion(wire::Version version)
        : FVersion(std::move(version)) {}

    std::int32_t Get_MajorVersion() override {
        const TCall call("IVersion.Get_MajorVersion");
        return FVersion.major();
    }

    std::int32_t Get_MinorVersion() override {
        const TCall call("IVersion.Get_MinorVersion");
        return FVersion.minor();
    }

private:
    const wire::Version FVersion;
};

class TDescription final : public IRequirementDescription {
public:
    TDescription(TSessionHandle session, TStateHandle state)
        : FSession(std::move(session))
        , FState(std::move(state)) {}

    void Set_Text(const std::u16string& html) override {
        const TCall call("IRequirementDescription.Set_Text");
        FState->Changes.set_description(FSession->Images().ToStored(Utf8(html)));
    }

    std::u16string Get_Text() override {
        const TCall call("IRequirementDescription.Get_Text");
        const auto& changes = FState->Changes;
        return Wide(FSession->Images().ToShown(
            changes.has_description() ? changes.description()
                                      : TImageCache::WithoutNew(FState->Snapshot->description())));
    }

private:
    const TSessionHandle FSession;
    const TStateHandle FState;
};

class TRequirement final : public TLockableObject<IRequirement> {
public:
    TRequirement(const TSessionHandle& session, TStateHandle state)
        : TLockableObject(session, state->Id(), "requirement", ECache::Requirements)
        , FState(std::move(state)) {}

    TRequirement(const TSessionHandle& session, wire::RequirementSummary summary)
        : TLockableObject(session, summary.id(), "requirement", ECache::Requirements)
        , FSummary(std::move(summary)) {}

    using TLockableObject::save;

    Handle<IStCollection> Get_AttributeValues() override;
    Handle<IBaseline> Get_Baseline() override;
    Handle<IRequirementDescription> Get_Description() override;
    Handle<IDiscussion> Get_Discussion() override;
    void Set_DocumentReferences(const Handle<IStCollection>& references) override;
    Handle<IStCollection> Get_DocumentReferences() override;
    Handle<IHistory> Get_History() override;
    std::int32_t Get_IDNumber() override;
    void Set_Owner(const Handle<IUser>& owner) override;
    Handle<IUser> Get_Owner() override;
    Handle<IUDAListValue> Get_Priority() override;
    Handle<IProject> Get_Project() override;
    Handle<IRequirementType> Get_RequirementType() override;
    void Set_ResponsibleUsers(const Handle<IStCollection>& assignments) override;
    Handle<IStCollection> Get_ResponsibleUsers() override;
    Handle<IUDAListValue> Get_Status() override;
    Handle<IStCollection> Get_TracesFrom() override;
    Handle<IStCollection> Get_TracesTo() override;
    void Set_Validation(const std::u16string& procedure) override;
    std::u16string Get_Validation() override;
    Handle<IVersion> Get_Version() override;
    void save(const std::u16string& comment) override;

protected:
    std::string ReadName() override;
    void WriteName(const std::string& name) override { State().Changes.set_name(name); }
    // The server removes from the current baseline alone; what another baseline holds
    // stays, so a removal asked for there would hit what the caller does not see.
    void Remove() override {
        const auto project = FSession->FindProjectOfBaseline(BaselineId());
        if (project && project->current_baseline_id() != BaselineId())
            RaiseFailure("ReadOnlyBaselineException: The requirement \"" + ReadName() +
                         "\" stands in a frozen baseline and cannot be removed there.");
        FSession->RemoveRequirement(Number());
    }
    void Save() override { SaveWith(std::string()); }
    void Lock() override { FSession->Lock(Shared()); }
    void Unlock() override { FSession->Unlock(Number()); }

private:
    // What another object told of the requirement is kept until more is asked for.
    const TStateHandle& Shared();
    TRequirementState& State() { return *Shared(); }
    const wire::Requirement& Read() { return *State().Snapshot; }
    std::shared_ptr<const wire::RequirementType> Type();
    std::int32_t BaselineId() { return FState ? FState->Snapshot->baseline_id() : FSummary.baseline_id(); }
    Handle<IStCollection> Traces(bool away);
    void SaveWith(const std::string& comment);

    TStateHandle FState; // empty while the summary is enough
    const wire::RequirementSummary FSummary;
};

const TStateHandle& TRequirement::Shared() {
    if (!FState) FState = FSession->RequirementIn(FSummary.id(), FSummary.baseline_id());
    return FState;
}

std::shared_ptr<const wire::RequirementType> TRequirement::Type() {
    return FSession->RequirementType(Read().requirement_type_id(), Read().requirement_type_revision());
}

std::string TRequirement::ReadName() {
    if (!FState) return FSummary.name();
    return FState->Changes.has_name() ? FState->Changes.name() : FState->Snapshot->name();
}

Handle<IStCollection> TRequirement::Get_AttributeValues() {
    const TCall call("IRequirement.Get_AttributeValues");
    const auto type = Type();
    std::vector<Variant> values;
    for (const wire::CustomTab& tab : type->custom_tabs())
        for (const wire::Attribute& attribute : tab.attributes())
            values.emplace_back(MakeAttributeValue(
                FSession, std::shared_ptr<const wire::Attribute>(type, &attribute), Shared()));
    return MakeCollection(std::move(values));
}

Handle<IBaseline> TRequirement::Get_Baseline() {
    const TCall call("IRequirement.Get_Baseline");
    return MakeBaseline(FSession, BaselineId());
}

Handle<IRequirementDescription> TRequirement::Get_Description() {
    const TCall call("IRequirement.Get_Description");
    return std::make_shared<TDescription>(FSession, Shared());
}

Handle<IDiscussion> TRequirement::Get_Discussion() {
    const TCall call("IRequirement.Get_Discussion");
    return MakeDiscussion(FSession, Number());
}

void TRequirement::Set_DocumentReferences(const Handle<IStCollection>& references) {
    const TCall call("IRequirement.Set_DocumentReferences");
    std::vector<std::shared_ptr<wire::DocumentReference>> written;
    for (const Variant& reference : ElementsOf(references))
        written.push_back(DataOf<wire::DocumentReference>(reference.AsDispatch()));
    State().References = std::move(written);
    State().Changes.mutable_references();
}

Handle<IStCollection> TRequirement::Get_DocumentReferences() {
    const TCall call("IRequirement.Get_DocumentReferences");
    auto& references = State().References;
    if (!references) {
        references.emplace();
        for (const wire::DocumentReference& reference : Read().references())
            references->push_back(std::make_shared<wire::DocumentReference>(reference));
    }
    std::vector<Variant> elements;
    for (const auto& reference : *references)
        elements.emplace_back(MakeReference(reference));
    return MakeCollection(std::move(elements));
}

Handle<IHistory> TRequirement::Get_History() {
    const TCall call("IRequirement.Get_History");
    return MakeHistory(FSession, Number(), BaselineId());
}

std::int32_t TRequirement::Get_IDNumber() {
    const TCall call("IRequirement.Get_IDNumber");
    if (FState && FState->IsNew)
        RaiseFailure("IllegalStateException: The requirement has not been saved yet.");
    return Number();
}

void TRequirement::Set_Owner(const Handle<IUser>& owner) {
    const TCall call("IRequirement.Set_Owner");
    State().Changes.set_owner_id(owner ? NumberOf(owner) : 0);
}

Handle<IUser> TRequirement::Get_Owner() {
    const TCall call("IRequirement.Get_Owner");
    const auto& changes = State().Changes;
    const std::int32_t owner = changes.has_owner_id() ? changes.owner_id() : Read().owner_id();
    return owner == 0 ? nullptr : MakeUser(FSession, owner);
}

Handle<IUDAListValue> TRequirement::Get_Priority() {
    const TCall call("IRequirement.Get_Priority");
    const auto type = Type();
    return MakeListValue(FSession, {type, &type->priority()}, Shared());
}

Handle<IProject> TRequirement::Get_Project() {
    const TCall call("IRequirement.Get_Project");
    const std::int32_t id = FState ? Read().project_id() : FSummary.project_id();
    if (const auto project = FSession->FindProject(id)) return MakeProject(FSession, project);
    // A trace can lead into a project that the user does not see.
    auto named = std::make_shared<wire::Project>();
    named->set_id(id);
    named->set_name(FSummary.project_name());
    return MakeProject(FSession, named);
}

Handle<IRequirementType> TRequirement::Get_RequirementType() {
    const TCall call("IRequirement.Get_RequirementType");
    if (FState) return MakeRequirementType(FSession, SummaryOf(*Type()));
    wire::RequirementTypeSummary summary;
    summary.set_id(FSummary.requirement_type_id());
    summary.set_name(FSummary.requirement_type_name());
    summary.set_tag(FSummary.requirement_type_tag());
    return MakeRequirementType(FSession, summary);
}

void TRequirement::Set_ResponsibleUsers(const Handle<IStCollection>& assignments) {
    const TCall call("IRequirement.Set_ResponsibleUsers");
    std::vector<std::shared_ptr<wire::Assignment>> written;
    for (const Variant& assignment : ElementsOf(assignments))
        written.push_back(DataOf<wire::Assignment>(assignment.AsDispatch()));
    State().Assignments = std::move(written);
    State().Changes.mutable_responsible_users();
}

Handle<IStCollection> TRequirement::Get_ResponsibleUsers() {
    const TCall call("IRequirement.Get_ResponsibleUsers");
    auto& assignments = State().Assignments;
    if (!assignments) {
        assignments.emplace();
        for (const wire::Assignment& assignment : Read().responsible_users())
            assignments->push_back(std::make_shared<wire::Assignment>(assignment));
    }
    std::vector<Variant> elements;
    for (const auto& assignment : *assignments)
        elements.emplace_back(MakeAssignment(FSession, assignment));
    return MakeCollection(std::move(elements));
}

Handle<IUDAListValue> TRequirement::Get_Status() {
    const TCall call("IRequirement.Get_Status");
    const auto type = Type();
    return MakeListValue(FSession, {type, &type->status()}, Shared());
}

Handle<IStCollection> TRequirement::Get_TracesFrom() {
    const TCall call("IRequirement.Get_TracesFrom");
    return Traces(false);
}

Handle<IStCollection> TRequirement::Get_TracesTo() {
    const TCall call("IRequirement.Get_TracesTo");
    return Traces(true);
}

Handle<IStCollection> TRequirement::Traces(bool away) {
    std::vector<Variant> elements;
    for (wire::Trace& trace : FSession->TracesOf(Number(), BaselineId(), away))
        elements.emplace_back(MakeTrace(FSession, std::move(trace)));
    return MakeCollection(std::move(elements));
}

void TRequirement::Set_Validation(const std::u16string& procedure) {
    const TCall call("IRequirement.Set_Validation");
    State().Changes.set_validation(Utf8(procedure));
}

std::u16string TRequirement::Get_Validation() {
    const TCall call("IRequirement.Get_Validation");
    const auto& changes = State().Changes;
    return Wide(changes.has_validation() ? changes.validation() : Read().validation());
}

Handle<IVersion> TRequirement::Get_Version() {
    const TCall call("IRequirement.Get_Version");
    return MakeVersion(Read().version());
}

void TRequirement::save(const std::u16string& comment) {
    const TCall call("IRequirement.save");
    SaveWith(Utf8(comment));
}

void TRequirement::SaveWith(const std::string& comment) {
    FSession->Save(State(), comment);
}

} // namespace

Handle<IRequirement> MakeRequirement(const TSessionHandle& session,
                                     std::shared_ptr<TRequirementState> state) {
    return std::make_shared<TRequirement>(session, std::move(state));
}

Handle<IRequirement> MakeRequirement(const TSessionHandle& session, const wire::RequirementSummary& summary) {
    return std::make_shared<TRequirement>(session, summary);
}

Handle<IVersion> MakeVersion(const wire::Version& version) {
    return std::make_shared<TVersion>(version);
}

} // namespace Sdk
