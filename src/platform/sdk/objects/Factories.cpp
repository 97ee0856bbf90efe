// The factories, and the table of classes that a client can start.
#include "platform/sdk/ClassObjects.h"
#include "platform/sdk/objects/Make.h"

#include <map>

namespace Sdk {

namespace {

class TServerFactory final : public IQuoraneServerFactory {
public:
    explicit TServerFactory(TChannelFactory channels)
        : FChannels(std::move(channels)) {}

    Handle<IQuoraneServer> Create1(const std::u16string& host) override {
        const TCall call("IQuoraneServerFactory.Create1");
        return MakeServer(Utf8(host), FChannels);
    }

private:
    const TChannelFactory FChannels;
};

class TCollectionFactory final : public IStCollectionFactory {
public:
    Handle<IStCollection> Create1() override {
        const TCall call("IStCollectionFactory.Create1");
        return MakeOwnCollection();
    }

    Handle<IStCollection> CreateByIStCollection(const Handle<IStCollection>& source) override {
        const TCall call("IStCollectionFactory.CreateByIStCollection");
        return MakeOwnCollection(ElementsOf(source));
    }
};

class TRequirementFactory final : public IRequirementFactory {
public:
    Handle<IRequirement> Create2(const std::u16string& name, const Handle<IRequirement>& parent,
                                 std::int32_t position, const Handle<ISession>& session) override {
        const TCall call("IRequirementFactory.Create2");
        const Handle<IBaseline> baseline = Require(parent)->Get_Baseline();
        if (baseline->Get_Type() != baseline->Get_TYPE_CURRENT())
            RaiseFailure("ReadOnlyBaselineException: Nothing can be created in the frozen baseline \"" +
                         Utf8(baseline->Get_Name()) + "\".");
        wire::CreateRequirementRequest request;
        request.set_name(Utf8(name));
        request.set_parent_requirement_id(NumberOf(parent));
        request.set_position(position);
        return Create(request, DataOf<TSession>(session));
    }

    Handle<IRequirement> Create1(const std::u16string& name, const Handle<IProject>& project,
                                 const Handle<IRequirementType>& type, std::int32_t position,
                                 const Handle<ISession>& session) override {
        const TCall call("IRequirementFactory.Create1");
        wire::CreateRequirementRequest request;
        request.set_name(Utf8(name));
        request.set_project_id(NumberOf(project));
        request.set_requirement_type_id(NumberOf(type));
        request.set_position(position);
        return Create(request, DataOf<TSession>(session));
    }

private:
    static Handle<IRequirement> Create(const wire::CreateRequirementRequest& request,
                                       const TSessionHandle& session) {
        return MakeRequirement(session, session->CreateRequirement(request));
    }
};

class TIntegrationFactory final : public IIntegrationFactory {
public:
    Handle<IIntegration> Create1(const std::u16string& identity, const Handle<ISession>& session) override {
        const TCall call("IIntegrationFactory.Create1");
        wire::Integration integration;
        integration.set_name(Utf8(identity));
        return MakeIntegration(DataOf<TSession>(session), std::move(integration));
    }

    Handle<IIntegration> Create11() override {
        const TCall call("IIntegrationFactory.Create11");
        RaiseUnsupported("An integration without a session cannot be made by this client.");
    }
};

std::shared_ptr<wire::DocumentReference> NewReference(WordBool isKey) {
    auto reference = std::make_shared<wire::DocumentReference>();
    reference->set_is_key(isKey != WordFalse);
    return reference;
}

class TFileReferenceFactory final : public IFileReferenceFactory {
public:
    Handle<IFileReference> Create1(const std::u16string& path) override {
        const TCall call("IFileReferenceFactory.Create1");
        return Create(path, {}, WordFalse);
    }

    Handle<IFileReference> Create2(const std::u16string& path, const std::u16string& description,
                                   WordBool key) override {
        const TCall call("IFileReferenceFactory.Create2");
        return Create(path, description, key);
    }

    Handle<IFileReference> Create11(const std::u16string& path, const std::u16string& description) override {
        const TCall call("IFileReferenceFactory.Create11");
        return Create(path, description, WordFalse);
    }

private:
    static Handle<IFileReference> Create(const std::u16string& path, const std::u16string& description,
                                         WordBool key) {
        const auto reference = NewReference(key);
        reference->mutable_file()->set_path(Utf8(path));
        reference->mutable_file()->set_description(Utf8(description));
        return Query<IFileReference>(MakeReference(reference));
    }
};

class TTextReferenceFactory final : public ITextReferenceFactory {
public:
    Handle<ITextReference> Create1(const std::u16string& content) override {
        const TCall call("ITextReferenceFactory.Create1");
        return Create(content, WordFalse);
    }

    Handle<ITextReference> Create11(const std::u16string& content, WordBool key) override {
        const TCall call("ITextReferenceFactory.Create11");
        return Create(content, key);
    }

private:
    static Handle<ITextReference> Create(const std::u16string& content, WordBool key) {
        const auto reference = NewReference(key);
        reference->mutable_text()->set_text(Utf8(content));
        return Query<ITextReference>(MakeReference(reference));
    }
};

class TWebReferenceFactory final : public IWebReferenceFactory {
public:
    Handle<IWebReference> Create1(const std::u16string& address) override {
        const TCall call("IWebReferenceFactory.Create1");
        return Create(address, WordFalse);
    }

    Handle<IWebReference> Create11(const std::u16string& address, WordBool key) override {
        const TCall call("IWebReferenceFactory.Create11");
        return Create(address, key);
    }

private:
    static Handle<IWebReference> Create(const std::u16string& address, WordBool key) {
        const auto reference = NewReference(key);
        reference->mutable_web()->set_url(Utf8(address));
        return Query<IWebReference>(MakeReference(reference));
    }
};

class THtmlHelperFactory final : public IHTMLHelperFactory {
public:
    Handle<IHTMLHelper> Create1() override {
        const TCall call("IHTMLHelperFactory.Create1");
        return MakeHtmlHelper();
    }
};

class TRequirementIDFactory final : public IRequirementIDFactory {
public:
    Handle<IRequirementID> Create1(std::int32_t idNumber) override {
        const TCall call("IRequirementIDFactory.Create1");
        return std::make_shared<TRequirementIdentity>(idNumber, 0);
    }

    // A baseline holds one version of a requirement, so the version says nothing more.
    Handle<IRequirementID> Create11(std::int32_t idNumber, std::int32_t baselineNumber, std::int32_t,
                                    std::int32_t) override {
        const TCall call("IRequirementIDFactory.Create11");
        return std::make_shared<TRequirementIdentity>(idNumber, baselineNumber);
    }
};

class TRequirementTypeIDFactory final : public IRequirementTypeIDFactory {
public:
    Handle<IRequirementTypeID> Create1(std::int32_t idNumber) override {
        const TCall call("IRequirementTypeIDFactory.Create1");
        return MakeIdentity<IRequirementTypeID>(idNumber);
    }

    Handle<IRequirementTypeID> Create11(std::int32_t idNumber, std::int32_t) override {
        const TCall call("IRequirementTypeIDFactory.Create11");
        return MakeIdentity<IRequirementTypeID>(idNumber);
    }
};

using TMaker = Handle<IDispatch> (*)(const TChannelFactory& channels);

template<class Object> Handle<IDispatch> Make(const TChannelFactory&) {
    return std::make_shared<Object>();
}

const std::map<Guid, TMaker>& Makers() {
    static const std::map<Guid, TMaker> makers = {
        {CLASS_QuoraneServerFactory,
         [](const TChannelFactory& channels) -> Handle<IDispatch> {
             return std::make_shared<TServerFactory>(channels);
         }},
        {CLASS_Initializer, [](const TChannelFactory&) -> Handle<IDispatch> { return MakeInitializer(); }},
        {CLASS_Collection, [](const TChannelFactory&) -> Handle<IDispatch> { return MakeOwnCollection(); }},
        {CLASS_CollectionFactory, Make<TCollectionFactory>},
        {CLASS_RequirementFactory, Make<TRequirementFactory>},
        {CLASS_IntegrationFactory, Make<TIntegrationFactory>},
        {CLASS_FileReferenceFactory, Make<TFileReferenceFactory>},
        {CLASS_TextReferenceFactory, Make<TTextReferenceFactory>},
        {CLASS_WebReferenceFactory, Make<TWebReferenceFactory>},
        {CLASS_HTMLHelperFactory, Make<THtmlHelperFactory>},
        {CLASS_HTMLHelper, [](const TChannelFactory&) -> Handle<IDispatch> { return MakeHtmlHelper(); }},
        {CLASS_HTMLHelperStatics,
         [](const TChannelFactory&) -> Handle<IDispatch> { return MakeHtmlHelperStatics(); }},
        {CLASS_RequirementIDFactory, Make<TRequirementIDFactory>},
        {CLASS_RequirementTypeIDFactory, Make<TRequirementTypeIDFactory>},
    };
    return makers;
}

} // namespace

Quorane_TLB::TClassObjectProvider MakeClassObjectProvider(TChannelFactory channels) {
    return [channels = std::move(channels)](const Guid& classId,
                                            const std::string& machine) -> Handle<IDispatch> {
        if (!machine.empty())
            RaiseFailure("The machine \"" + machine + "\" offers no objects of this client.",
                         CodeServerUnavailable);
        const auto maker = Makers().find(classId);
        return maker == Makers().end() ? nullptr : maker->second(channels);
    };
}

} // namespace Sdk
