#include "platform/sdk/objects/Make.h"

#include <algorithm>

namespace Sdk {

namespace {

class TIntegration final : public TMutableObject<IIntegration> {
public:
    TIntegration(const TSessionHandle& session, wire::Integration integration)
        : TMutableObject(session, integration.id(), "integration", ECache::None)
        , FIntegration(std::move(integration)) {}

    void Set_Icon(const Handle<IStCollection>& pixels) override {
        const TCall call("IIntegration.Set_Icon");
        std::string bytes;
        for (const Variant& byte : ElementsOf(pixels))
            bytes.push_back(static_cast<char>(byte.AsInteger()));
        FIntegration.set_icon(std::move(bytes));
    }

    void Set_Name2(const std::u16string& name) override {
        const TCall call("IIntegration.Set_Name2");
        FIntegration.set_library_name(Utf8(name));
    }

    std::u16string Get_Name2() override {
        const TCall call("IIntegration.Get_Name2");
        return Wide(FIntegration.library_name());
    }

protected:
    std::string ReadName() override { return FIntegration.name(); }
    void WriteName(const std::string& name) override { FIntegration.set_name(name); }
    void Save() override { FIntegration.set_id(FSession->SaveIntegration(FIntegration)); }

private:
    wire::Integration FIntegration;
};

class TIntegrationObject final : public TObject<IIntegrationObject> {
public:
    TIntegrationObject(const TSessionHandle& session, wire::IntegrationObject object)
        : TObject(session, object.id(), "integration object", ECache::None)
        , FObject(std::move(object)) {}

    // Always 0: icon handles of the windowing system do not travel between machines.
    std::int32_t Get_Icon() override {
        const TCall call("IIntegrationObject.Get_Icon");
        return 0;
    }

    Handle<IIntegration> Get_Integration() override {
        const TCall call("IIntegrationObject.Get_Integration");
        const auto reply = FSession->Integrations();
        for (const wire::Integration& integration : reply->integrations())
            if (integration.id() == FObject.integration_id()) return MakeIntegration(FSession, integration);
        return nullptr;
    }

    std::u16string Get_ExternalKey() override {
        const TCall call("IIntegrationObject.Get_ExternalKey");
        return Wide(FObject.external_key());
    }

    std::u16string Get_IntegrationName() override {
        const TCall call("IIntegrationObject.Get_IntegrationName");
        return Wide(FObject.integration_name());
    }

    std::u16string Get_Location() override {
        const TCall call("IIntegrationObject.Get_Location");
        return Wide(FObject.location());
    }

protected:
    std::string ReadName() override { return FObject.name(); }

private:
    const wire::IntegrationObject FObject;
};

class TTrace final : public TLockableObject<ITrace> {
public:
    TTrace(const TSessionHandle& session, wire::Trace trace)
        : TLockableObject(session, trace.id(), "trace", ECache::Requirements)
        , FTrace(std::move(trace)) {}

    Handle<IQuoraneObject> Get_FromObject() override {
        const TCall call("ITrace.Get_FromObject");
        return End(FTrace.from());
    }

    void Set_Suspect(WordBool suspect) override {
        const TCall call("ITrace.Set_Suspect");
        FTrace.set_suspect(suspect != WordFalse);
    }

    WordBool Get_Suspect() override {
        const TCall call("ITrace.Get_Suspect");
        return ToWordBool(FTrace.suspect());
    }

    Handle<IQuoraneObject> Get_ToObject() override {
        const TCall call("ITrace.Get_ToObject");
        return End(FTrace.to());
    }

protected:
    std::string ReadName() override { return EndName(FTrace.from()) + " - " + EndName(FTrace.to()); }
    void Remove() override { FSession->RemoveTrace(Number()); }
    void Save() override { FSession->SaveTrace(FTrace); }
    // The one thing to change is written in one step, so the server has no lock for it.
    void Lock() override { FLocked = true; }
    void Unlock() override { FLocked = false; }
    bool IsLocked() override { return FLocked; }

private:
    static const std::string& EndName(const wire::TraceEnd& end) {
        return end.has_external() ? end.external().name() : end.requirement().name();
    }

    Handle<IQuoraneObject> End(const wire::TraceEnd& end) const {
        if (end.has_external()) return std::make_shared<TIntegrationObject>(FSession, end.external());
        return MakeRequirement(FSession, end.requirement());
    }

    wire::Trace FTrace;
    bool FLocked = false;
};

class TTraceManager final : public TManager<ITraceManager> {
public:
    explicit TTraceManager(const TSessionHandle& session)
        : TManager(session, ECache::Requirements) {}

    void remove(const Handle<ITrace>& trace) override {
        const TCall call("ITraceManager.remove");
        FSession->RemoveTrace(NumberOf(trace));
    }
};

class TIntegrationManager final : public TManager<IIntegrationManager> {
public:
    explicit TIntegrationManager(const TSessionHandle& session)
        : TManager(session, ECache::None) {}

    Handle<IDispatch> createTrace(const Handle<IRequirement>& requirement, WordBool toExternal,
                                  const std::u16string& integrationName,
                                  const std::u16string& externalKey) override {
        const TCall call("IIntegrationManager.createTrace");
        wire::CreateTraceRequest request;
        request.set_requirement_id(NumberOf(requirement));
        request.set_away(toExternal != WordFalse);
        request.mutable_external()->set_integration_name(Utf8(integrationName));
        request.mutable_external()->set_external_key(Utf8(externalKey));
        return MakeTrace(FSession, FSession->CreateTrace(request));
    }

    Handle<IStCollection> Get_Integrations() override {
        const TCall call("IIntegrationManager.Get_Integrations");
        const auto reply = FSession->ReadIntegrations();
        std::vector<Variant> integrations;
        for (const wire::Integration& integration : reply->integrations())
            integrations.emplace_back(MakeIntegration(FSession, integration));
        return MakeCollection(std::move(integrations));
    }
};

} // namespace

Handle<ITrace> MakeTrace(const TSessionHandle& session, wire::Trace trace) {
    return std::make_shared<TTrace>(session, std::move(trace));
}

Handle<ITraceManager> MakeTraceManager(const TSessionHandle& session) {
    return std::make_shared<TTraceManager>(session);
}

Handle<IIntegrationManager> MakeIntegrationManager(const TSessionHandle& session) {
    return std::make_shared<TIntegrationManager>(session);
}

Handle<IIntegration> MakeIntegration(const TSessionHandle& session, wire::Integration integration) {
    return std::make_shared<TIntegration>(session, std::move(integration));
}

} // namespace Sdk
