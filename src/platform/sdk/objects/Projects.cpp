#include "platform/sdk/objects/Make.h"

#include <algorithm>

namespace Sdk {

namespace {

class TProject final : public TLockableObject<IProject> {
public:
    TProject(const TSessionHandle& session, std::shared_ptr<const wire::Project> project)
        : TLockableObject(session, project->id(), "project", ECache::Projects)
        , FProject(std::move(project)) {}

    Handle<IStCollection> Get_Baselines() override {
        const TCall call("IProject.Get_Baselines");
        std::vector<Variant> baselines;
        for (const wire::Baseline& baseline : FProject->baselines())
            baselines.emplace_back(MakeBaseline(FSession, FProject, baseline));
        return MakeCollection(std::move(baselines));
    }

    Handle<IBaseline> Get_CurrentBaseline() override {
        const TCall call("IProject.Get_CurrentBaseline");
        const wire::Baseline* baseline = FindBaseline(*FProject, FProject->current_baseline_id());
        if (!baseline)
            RaiseFailure("ObjectNotFoundException: The project " + FProject->name() +
                         " has no current baseline.");
        return MakeBaseline(FSession, FProject, *baseline);
    }

    std::u16string Get_Description() override {
        const TCall call("IProject.Get_Description");
        return Wide(FProject->description());
    }

    Handle<IStCollection> Get_Glossaries() override {
        const TCall call("IProject.Get_Glossaries");
        TGlossaries& known = FSession->Glossaries(FProject->id());
        if (auto list = known.List.lock()) return list;
        std::vector<Variant> glossaries;
        for (const wire::Glossary& glossary : known.Reply->glossaries())
            glossaries.emplace_back(
                MakeGlossary(FSession, std::shared_ptr<const wire::Glossary>(known.Reply, &glossary)));
        auto list = MakeCollection(std::move(glossaries));
        known.List = list;
        return list;
    }

protected:
    std::string ReadName() override { return FProject->name(); }

private:
    const std::shared_ptr<const wire::Project> FProject;
};

template<class Interface> class TBaseline final : public TLockableObject<Interface> {
public:
    TBaseline(const TSessionHandle& session, std::shared_ptr<const wire::Project> project,
              const wire::Baseline& baseline)
        : TLockableObject<Interface>(session, baseline.id(), "baseline", ECache::Projects)
        , FProject(std::move(project))
        , FBaseline(baseline) {}

    Handle<IRequirementTree> Get_RequirementTree() override {
        const TCall call("IBaseline.Get_RequirementTree");
        return MakeTree(this->FSession, FBaseline.id());
    }

    Handle<IStCollection> Get_RequirementTypes() override {
        const TCall call("IBaseline.Get_RequirementTypes");
        std::vector<Variant> types;
        const auto& ids = FBaseline.requirement_type_ids();
        for (const wire::RequirementTypeSummary& type : FProject->requirement_types())
            if (std::find(ids.begin(), ids.end(), type.id()) != ids.end())
                types.emplace_back(MakeRequirementType(this->FSession, type));
        return MakeCollection(std::move(types));
    }

    std::int32_t Get_TYPE_CURRENT() override {
        const TCall call("IBaseline.Get_TYPE_CURRENT");
        return wire::BASELINE_TYPE_CURRENT;
    }

    std::int32_t Get_TYPE_DELETED() override {
        const TCall call("IBaseline.Get_TYPE_DELETED");
        return wire::BASELINE_TYPE_DELETED;
    }

    std::int32_t Get_Type() override {
        const TCall call("IBaseline.Get_Type");
        return FBaseline.type();
    }

protected:
    std::string ReadName() override { return FBaseline.name(); }

private:
    const std::shared_ptr<const wire::Project> FProject; // keeps FBaseline
    const wire::Baseline& FBaseline;
};

} // namespace

Handle<IProject> MakeProject(const TSessionHandle& session, std::shared_ptr<const wire::Project> project) {
    return std::make_shared<TProject>(session, std::move(project));
}

Handle<IBaseline> MakeBaseline(const TSessionHandle& session, std::int32_t id) {
    const auto project = session->FindProjectOfBaseline(id);
    if (!project)
        RaiseFailure("ObjectNotFoundException: No project that you may see has the baseline " +
                     std::to_string(id) + ".");
    return MakeBaseline(session, project, *FindBaseline(*project, id));
}

Handle<IBaseline> MakeBaseline(const TSessionHandle& session, std::shared_ptr<const wire::Project> project,
                               const wire::Baseline& baseline) {
    if (baseline.type() == wire::BASELINE_TYPE_DELETED)
        return std::make_shared<TBaseline<IDeletedBaseline>>(session, std::move(project), baseline);
    return std::make_shared<TBaseline<IBaseline>>(session, std::move(project), baseline);
}

} // namespace Sdk
