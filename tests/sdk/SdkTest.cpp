#include "sdk/SdkTest.h"

#include "server/tlb/ClassObjects.h"

#include <grpcpp/grpcpp.h>

namespace {

using namespace Backend;

Attribute TextAttribute(const std::string& name) {
    Attribute attribute;
    attribute.Name = name;
    attribute.Kind = AttributeKind::Text;
    attribute.Default = std::string("none");
    return attribute;
}

Attribute ListAttribute(const std::string& name, int maxSelections) {
    Attribute attribute;
    attribute.Name = name;
    attribute.Kind = AttributeKind::List;
    attribute.Default = Selection{};
    attribute.Entries = {std::string("red"), std::string("green"), std::string("blue")};
    attribute.MaxSelections = maxSelections;
    return attribute;
}

Attribute PlainAttribute(const std::string& name, AttributeKind kind, Value value) {
    Attribute attribute;
    attribute.Name = name;
    attribute.Kind = kind;
    attribute.Default = std::move(value);
    if (kind == AttributeKind::Duration) attribute.UnitName = "h";
    return attribute;
}

NewRequirement Requirement(const TSample& sample, int type, int parent, const std::string& name) {
    NewRequirement requirement;
    requirement.ProjectId = sample.Project;
    requirement.TypeId = parent == 0 ? type : 0;
    requirement.ParentId = parent;
    requirement.Name = name;
    requirement.Description = "<p>" + name + "</p>";
    requirement.OwnerId = sample.Ann;
    return requirement;
}

void AddAccounts(BulkWriter& writer, TSample& sample) {
    sample.Ann = writer.AddUser({.UserName = "ann", .Name = "Ann Lee", .Password = "secret"});
    sample.Ben = writer.AddUser({.UserName = "ben", .Name = "Ben Ortega", .Password = "secret"});
    writer.AddUser({.UserName = "dora", .Name = "", .Password = "secret", .Disabled = true});
    writer.AddUser({.UserName = "mia", .Name = "", .Password = "secret", .MustChangePassword = true});
    sample.Group = writer.AddGroup("Engineers", {sample.Ann, sample.Ben});
    sample.Project =
        writer.AddProject({.Name = "Heating", .Description = "A controller", .Groups = {sample.Group}});
    writer.Grant(sample.Project, sample.Group, Role::Manager);
}

void AddTypes(BulkWriter& writer, TSample& sample) {
    sample.Software = writer.AddRequirementType(
        sample.Project, {.Name = "Software", .Tag = "SRS", .Description = "What it does"});
    sample.Usage =
        writer.AddRequirementType(sample.Project, {.Name = "Usage", .Tag = "UC", .Description = ""});
    const int tab = writer.AddCustomTab(sample.Software, "Planning", std::string(768, '\x7f'));
    writer.AddAttribute(tab, PlainAttribute("Safe", AttributeKind::Boolean, false));
    writer.AddAttribute(tab, PlainAttribute("Due", AttributeKind::Date, {}));
    writer.AddAttribute(tab, PlainAttribute("Cost", AttributeKind::Float, 0.5F));
    writer.AddAttribute(tab, PlainAttribute("Size", AttributeKind::Integer, std::int32_t{3}));
    writer.AddAttribute(tab, PlainAttribute("Effort", AttributeKind::Duration, std::int32_t{8}));
    writer.AddAttribute(tab, ListAttribute("Color", 1));
    writer.AddAttribute(tab, ListAttribute("Colors", 3));
    writer.AddAttribute(tab, TextAttribute("Note"));
}

void AddRequirements(BulkWriter& writer, TSample& sample) {
    const Revision revision{.UserId = sample.Ann, .Date = 1'700'000'000'000'000, .Comment = "first"};
    const auto add = [&](int type, int parent, const std::string& name) {
        return writer.AddRequirement(Requirement(sample, type, parent, name), revision);
    };
    sample.Start = add(sample.Software, 0, "Start");
    sample.Stop = add(sample.Software, 0, "Stop");
    sample.Warm = add(0, sample.Start, "Warm");
    sample.Cold = add(0, sample.Start, "Cold");
    NewRequirement deep = Requirement(sample, 0, sample.Cold, "Deep");
    const std::string image = writer.AddImage(TinyPicture());
    deep.Description = "<p><img src_original=\"" + image + "\" src=\"" + image + "\" /></p>";
    sample.Deep = writer.AddRequirement(deep, revision);
    sample.Evening = add(sample.Usage, 0, "Evening");
    sample.FrozenBaseline = writer.FreezeBaseline(sample.Project, "Release 1", "", revision.Date);
    writer.DeleteBaseline(writer.FreezeBaseline(sample.Project, "Dropped", "", revision.Date));
    writer.AddGlossary(
        sample.Project,
        {.Id = 0, .Name = "Terms", .Red = 1, .Green = 2, .Blue = 3, .Terms = {{0, "burner", "A burner"}}});
    RequirementChange change;
    change.Name = "Start quickly";
    writer.AddRevision(sample.Start, change, revision);
}

} // namespace

TSdkTest::TSdkTest() {
    setenv("XDG_CACHE_HOME", FFolder.File("cache").c_str(), 1);
    Fill();
    FOptions.DatabasePath = FFolder.File("server.db");
    FOptions.QuickHashesForTests = true;
    Restart();
    SetClassObjectProvider(
        Sdk::MakeClassObjectProvider([this](const std::string& host) { return Channel(host); }));
}

TSdkTest::~TSdkTest() {
    SetClassObjectProvider({});
}

void TSdkTest::Fill() {
    BulkWriter writer(FFolder.File("server.db"), BulkWriter::Hashing::QuickForTests);
    AddAccounts(writer, FSample);
    AddTypes(writer, FSample);
    AddRequirements(writer, FSample);
    writer.Commit();
}

void TSdkTest::Restart() {
    FServer = std::make_unique<EmbeddedServer>(FOptions);
    FServer->Start();
}

std::shared_ptr<grpc::Channel> TSdkTest::Channel(const std::string& host) {
    if (host == "local" && FServer->Running()) return FServer->Channel();
    if (host != "port" || FPort == 0) return nullptr;
    grpc::ChannelArguments arguments;
    // A new channel tries again at once, however often the old one has failed.
    arguments.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    return grpc::CreateCustomChannel("127.0.0.1:" + std::to_string(FPort), grpc::InsecureChannelCredentials(),
                                     arguments);
}

Handle<IQuoraneServer> TSdkTest::Server(const std::u16string& host) {
    return CoQuoraneServerFactory::Create()->Create1(host);
}

Handle<ISession> TSdkTest::LogOn(const std::u16string& user) {
    return Server()->login(user, u"secret");
}

Handle<IProject> TSdkTest::Project(const Handle<ISession>& session) {
    return Item<IProject>(session->Get_Projects(), 0);
}

Handle<IBaseline> TSdkTest::Baseline(const Handle<ISession>& session, const std::u16string& name) {
    const auto baselines = Project(session)->Get_Baselines();
    for (int i = 0; i < baselines->Get_Count(); ++i)
        if (const auto baseline = Item<IBaseline>(baselines, i); baseline->Get_Name() == name)
            return baseline;
    return nullptr;
}

Handle<IRequirementTreeNode> TSdkTest::Root(const Handle<ISession>& session) {
    return Project(session)->Get_CurrentBaseline()->Get_RequirementTree()->Get_Root();
}

Handle<IRequirementTreeNode> TSdkTest::Node(const Handle<ISession>& session, int id) {
    return Root(session)->findByIDNumber(id);
}

std::int32_t NumberOf(const Handle<IQuoraneObjectID>& id) {
    return id->Get_IDNumber();
}

std::vector<std::u16string> Names(const Handle<IStCollection>& objects) {
    std::vector<std::u16string> names;
    for (int i = 0; i < objects->Get_Count(); ++i) {
        const auto object = objects->Get_Item(Variant(std::int32_t{i})).AsDispatch();
        if (const auto node = Query<ITreeNode>(object))
            names.push_back(node->Get_Name());
        else
            names.push_back(Cast<IQuoraneObject>(object)->Get_Name());
    }
    return names;
}

std::string FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const EOleSysError& failure) {
        return failure.what();
    }
    return {};
}
