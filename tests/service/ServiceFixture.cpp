#include "ServiceFixture.h"

using namespace Backend;

Client::Client(std::shared_ptr<grpc::Channel> channel)
    : FStub(wire::RequirementsService::NewStub(std::move(channel))) {}

std::string RefusalOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const Refused& refused) {
        return refused.what();
    }
    return {};
}

void Client::Prepare(grpc::ClientContext& context) const {
    context.AddMetadata("quorane-token-bin", FToken);
    context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(60));
}

void Client::Login(const std::string& user, const std::string& password) {
    wire::LoginRequest request;
    request.set_user(user);
    request.set_password(password);
    request.set_client("test 1.0");
    FToken = Call(&Stub::Login, request).token();
}

wire::Requirement Client::Read(int id, int baseline) {
    wire::GetRequirementRequest request;
    if (baseline) {
        request.mutable_exact()->set_id(id);
        request.mutable_exact()->set_baseline_id(baseline);
    } else {
        request.set_latest_id(id);
    }
    return Call(&Stub::GetRequirement, request).requirement();
}

std::vector<wire::Node> Client::Children(int baseline, int node) {
    wire::GetChildrenRequest request;
    request.set_baseline_id(baseline);
    request.set_node_id(node);
    std::vector<wire::Node> nodes;
    for (const wire::NodeBatch& batch : Stream(&Stub::GetChildren, request))
        for (int row = 0; row < batch.ids_size(); ++row) {
            wire::Node& child = nodes.emplace_back();
            child.set_id(batch.ids(row));
            child.set_name(batch.names(row));
            child.set_child_count(batch.child_counts(row));
            child.set_has_unread_messages(batch.has_unread_messages(row));
            child.set_user_is_interested(batch.user_is_interested(row));
            child.set_serial_number(batch.serial_prefix() + std::to_string(child.id()));
            child.set_hierarchical_number(batch.hierarchical_prefix() +
                                          std::to_string(batch.first_position() + row));
        }
    return nodes;
}

std::vector<wire::Node> Client::Branch(int baseline, int node) {
    std::vector<wire::Node> nodes;
    for (const wire::Node& child : Children(baseline, node)) {
        nodes.push_back(child);
        const std::vector<wire::Node> below = Branch(baseline, child.id());
        nodes.insert(nodes.end(), below.begin(), below.end());
    }
    return nodes;
}

std::vector<std::string> Client::ChildNames(int baseline, int node) {
    std::vector<std::string> names;
    for (const wire::Node& child : Children(baseline, node))
        names.push_back(child.name());
    return names;
}

std::vector<wire::Node> Client::Path(int baseline, int id) {
    wire::FindNodeRequest request;
    request.set_baseline_id(baseline);
    request.set_id_number(id);
    const auto reply = Call(&Stub::FindNode, request);
    return {reply.path().begin(), reply.path().end()};
}

void Client::Lock(int id) {
    wire::LockRequest request;
    request.set_id(id);
    Call(&Stub::Lock, request);
}

void Client::Unlock(int id) {
    wire::UnlockRequest request;
    request.set_id(id);
    Call(&Stub::Unlock, request);
}

wire::SaveRequirementReply Client::Save(wire::SaveRequirementRequest request) {
    return Call(&Stub::SaveRequirement, request);
}

void Client::Rename(int id, const std::string& name) {
    wire::SaveRequirementRequest request;
    request.set_id(id);
    request.set_name(name);
    Lock(id);
    Save(request);
    Unlock(id);
}

void Client::Move(int baseline, int parent, int child, int position) {
    wire::MoveChildRequest request;
    request.set_baseline_id(baseline);
    request.set_parent_id(parent);
    request.set_child_id(child);
    request.set_position(position);
    Call(&Stub::MoveChild, request);
}

void Client::AddChild(int baseline, int parent, int child) {
    wire::AddChildRequest request;
    request.set_baseline_id(baseline);
    request.set_parent_id(parent);
    request.set_child_id(child);
    Call(&Stub::AddChild, request);
}

int Client::Remove(int id) {
    wire::RemoveRequirementRequest request;
    request.set_id(id);
    return Call(&Stub::RemoveRequirement, request).removed_count();
}

int Client::Create(int project, int type, int parent, const std::string& name, int position) {
    wire::CreateRequirementRequest request;
    request.set_project_id(project);
    request.set_name(name);
    request.set_position(position);
    if (parent)
        request.set_parent_requirement_id(parent);
    else
        request.set_requirement_type_id(type);
    return Call(&Stub::CreateRequirement, request).id();
}

std::vector<wire::HistoryRevision> Client::History(int id, int baseline) {
    wire::GetHistoryRequest request;
    request.mutable_requirement()->set_id(id);
    request.mutable_requirement()->set_baseline_id(baseline);
    return Stream(&Stub::GetHistory, request);
}

wire::ListTracesReply Client::Traces(int id) {
    wire::ListTracesRequest request;
    request.mutable_requirement()->set_id(id);
    return Call(&Stub::ListTraces, request);
}

ServiceFixture::ServiceFixture(Transport transport)
    : FTransport(transport) {
    ServerOptions options;
    options.DatabasePath = FFolder.File("quorane.db");
    options.QuickHashesForTests = true;
    options.Clock = [this] { return FNow.load(); };
    Build(options.DatabasePath);
    FServer = std::make_unique<EmbeddedServer>(options);
    if (FTransport == Transport::Loopback) FPort = FServer->ListenOnLoopback();
    FServer->Start();
    const auto projects = LoggedOn("ann").Call(&Stub::ListProjects, wire::ListProjectsRequest());
    FCurrent = projects.projects(0).current_baseline_id();
}

std::shared_ptr<grpc::Channel> ServiceFixture::Channel() {
    if (FTransport == Transport::InProcess) return FServer->Channel();
    grpc::ChannelArguments arguments;
    arguments.SetMaxReceiveMessageSize(MaxMessageBytes);
    return grpc::CreateCustomChannel("127.0.0.1:" + std::to_string(FPort), grpc::InsecureChannelCredentials(),
                                     arguments);
}

Client ServiceFixture::LoggedOn(const std::string& user) {
    Client client(Channel());
    client.Login(user);
    return client;
}

void ServiceFixture::Build(const std::string& path) {
    BulkWriter writer(path, BulkWriter::Hashing::QuickForTests);
    const std::pair<const char*, const char*> people[] = {{"ann", "Ann Miller"},  {"ben", "Ben Ortega"},
                                                          {"ron", "Ron Reader"},  {"dora", "Dora Gone"},
                                                          {"mia", "Mia Newcome"}, {"zoe", "Zoe Elsewhere"}};
    for (const auto& [user, name] : people) {
        const std::string userName = user;
        FUsers[userName] =
            writer.AddUser({userName, name, "Password1", userName == "dora", userName == "mia", false});
    }
    FGroup = writer.AddGroup("Developers", {FUsers["ann"], FUsers["ben"]});
    FTeam = writer.AddGroup("Testers", {FUsers["ron"]});
    FProject = writer.AddProject({"Heating", "Controls a heating.", "Current", {FGroup, FTeam}});
    writer.Grant(FProject, FGroup, Role::Editor);
    writer.Grant(FProject, FUsers["ron"], Role::Reader);
    FSrs = writer.AddRequirementType(FProject, {"Software", "SRS", "What the software does."});
    FTst = writer.AddRequirementType(FProject, {"Test", "TST", "How it is tested."});
    AddAttributes(writer);
    AddRequirements(writer);
    writer.AddIntegration({0, "Files", "Files", ""});
    FFrozen = writer.FreezeBaseline(FProject, "Release 1", "", 1000);
    FDeleted = writer.FreezeBaseline(FProject, "Trial", "", 2000);
    writer.DeleteBaseline(FDeleted);
    writer.Commit();
}

void ServiceFixture::AddAttributes(BulkWriter& writer) {
    const ObjectId tab = writer.AddCustomTab(FSrs, "Planning", "");
    const auto add = [&](const char* name, AttributeKind kind, auto change) {
        Attribute attribute;
        attribute.Name = name;
        attribute.Kind = kind;
        change(attribute);
        FAttributes[name] = writer.AddAttribute(tab, attribute);
    };
    add("Safety", AttributeKind::Boolean, [](Attribute&) {});
    add("Due", AttributeKind::Date, [](Attribute&) {});
    add("Weight", AttributeKind::Float, [](Attribute& a) { a.MinFloat = 0, a.MaxFloat = 10; });
    add("Count", AttributeKind::Integer,
        [](Attribute& a) { a.MinInteger = 1, a.MaxInteger = 9, a.Default = 3; });
    add("Effort", AttributeKind::Duration, [](Attribute& a) { a.UnitName = "days"; });
    add("Note", AttributeKind::Text, [](Attribute& a) { a.MaxLength = 10; });
    add("Source", AttributeKind::List, [](Attribute& a) {
        a.Entries = {"Customer", "Law"}, a.Default = Selection{{0}};
    });
    add("Reviewers", AttributeKind::List, [&](Attribute& a) {
        a.Entries = {UserEntry{FUsers["ann"]}, UserEntry{FUsers["ben"]}, GroupEntry{FTeam}};
        a.MaxSelections = 2;
    });
}

void ServiceFixture::AddRequirements(BulkWriter& writer) {
    const auto add = [&](const char* name, int parent) {
        NewRequirement requirement;
        requirement.ProjectId = FProject;
        requirement.TypeId = FSrs;
        requirement.ParentId = parent;
        requirement.Name = name;
        requirement.Description = "<p>About " + std::string(name) + "</p>";
        FIds[name] = writer.AddRequirement(requirement, {FUsers["ann"], 1000, "first"});
    };
    add("One", 0);
    add("Two", 0);
    add("Three", 0);
    for (const char* child : {"One.A", "One.B", "One.C"})
        add(child, FIds["One"]);
    writer.AddTrace(FIds["One"], FIds["Two"], false);
}

void Advance(ServiceFixture& fixture, int seconds) {
    fixture.FNow += Instant{seconds} * 1'000'000;
}
