// The server and the session on it.
#include "platform/sdk/Connection.h"
#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

class TSessionObject final : public ISession, public TDataHolder<TSession> {
public:
    using TDataHolder::TDataHolder;

    void logout() override {
        const TCall call("ISession.logout");
        HeldData()->LogOut();
    }

    Handle<IQuoraneObject> get(const Handle<IQuoraneObjectID>& id) override {
        const TCall call("ISession.get");
        if (const auto object = Find(id)) return object;
        RaiseFailure("ObjectNotFoundException: The server has no such object with the number " +
                     std::to_string(NumberOf(id)) + ".");
    }

    Handle<IRequirement> getLatestRequirement(std::int32_t idNumber) override {
        const TCall call("ISession.getLatestRequirement");
        return MakeRequirement(HeldData(), HeldData()->LatestRequirement(idNumber));
    }

    Handle<IStCollection> Get_Groups() override {
        const TCall call("ISession.Get_Groups");
        const auto directory = HeldData()->Directory();
        std::vector<Variant> groups;
        for (const wire::Group& group : directory->Data().groups())
            groups.emplace_back(MakeGroup(HeldData(), std::shared_ptr<const wire::Group>(directory, &group)));
        return MakeCollection(std::move(groups));
    }

    Handle<IImageManager> Get_ImageManager() override {
        const TCall call("ISession.Get_ImageManager");
        return MakeImageManager(HeldData());
    }

    Handle<IIntegrationManager> Get_IntegrationManager() override {
        const TCall call("ISession.Get_IntegrationManager");
        return MakeIntegrationManager(HeldData());
    }

    Handle<IStCollection> Get_Projects() override {
        const TCall call("ISession.Get_Projects");
        const auto projects = HeldData()->ReadProjects();
        std::vector<Variant> elements;
        for (const wire::Project& project : projects->Data().projects())
            elements.emplace_back(
                MakeProject(HeldData(), std::shared_ptr<const wire::Project>(projects, &project)));
        return MakeCollection(std::move(elements));
    }

    Handle<ITraceManager> Get_TraceManager() override {
        const TCall call("ISession.Get_TraceManager");
        return MakeTraceManager(HeldData());
    }

    Handle<IStCollection> Get_Users() override {
        const TCall call("ISession.Get_Users");
        const auto directory = HeldData()->Directory();
        std::vector<Variant> users;
        for (const wire::User& user : directory->Data().users())
            users.emplace_back(MakeUser(HeldData(), std::shared_ptr<const wire::User>(directory, &user)));
        return MakeCollection(std::move(users));
    }

private:
    // The kind of the identity says what is looked for.
    Handle<IQuoraneObject> Find(const Handle<IQuoraneObjectID>& id) {
        const TSessionHandle& session = HeldData();
        const std::int32_t number = NumberOf(id);
        if (const auto* exact = dynamic_cast<const TRequirementIdentity*>(id.get()))
            return MakeRequirement(session, exact->BaselineId() == 0
                                                ? session->LatestRequirement(number)
                                                : session->RequirementIn(number, exact->BaselineId()));
        if (Query<IRequirementTypeID>(id)) return FindType(number);
        if (Query<IUserID>(id)) return MakeUser(session, number);
        if (Query<IGroupID>(id)) return MakeGroup(session, number);
        if (Query<IBaselineID>(id)) return MakeBaseline(session, number);
        if (Query<IProjectID>(id))
            if (const auto project = session->FindProject(number)) return MakeProject(session, project);
        return nullptr;
    }

    Handle<IRequirementType> FindType(std::int32_t number) {
        return MakeRequirementType(HeldData(), SummaryOf(*HeldData()->RequirementType(number, 0)));
    }
};

class TServer final : public IQuoraneServer {
public:
    TServer(std::string host, TChannelFactory channels)
        : FHost(std::move(host))
        , FChannels(std::move(channels)) {}

    // Known from the latest logon.
    std::u16string Get_ServerVersion() override {
        const TCall call("IQuoraneServer.Get_ServerVersion");
        if (FVersion.empty())
            RaiseFailure("IllegalStateException: The server tells its version to who has logged on.");
        return Wide(FVersion);
    }

    Handle<ISession> login(const std::u16string& user, const std::u16string& password) override {
        const TCall call("IQuoraneServer.login");
        const auto connection = std::make_shared<TConnection>(FHost, FChannels);
        const auto session = TSession::LogOn(connection, Utf8(user), Utf8(password));
        FVersion = session->ServerVersion();
        return std::make_shared<TSessionObject>(session);
    }

private:
    const std::string FHost;
    const TChannelFactory FChannels;
    std::string FVersion;
};

} // namespace

Handle<IQuoraneServer> MakeServer(const std::string& host, const TChannelFactory& channels) {
    return std::make_shared<TServer>(host, channels);
}

} // namespace Sdk
