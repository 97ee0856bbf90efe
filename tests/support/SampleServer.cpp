#include "support/SampleServer.h"

#include <chrono>
#include <filesystem>

#include "backend/exchange/SampleDatabase.h"
#include "platform/sdk/ClassObjects.h"

namespace {

// Built once for each process, then copied.
const std::string& Template() {
    static const TTempFolder folder;
    static const std::string path = [] {
        std::string file = folder.File("sample.db");
        Exchange::BuildSampleDatabase(
            {file, QUORANE_SAMPLES_DIR, {}, Backend::BulkWriter::Hashing::QuickForTests});
        return file;
    }();
    return path;
}

Backend::Instant Now() {
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

} // namespace

TSampleServer::TSampleServer(const std::string& database)
    : FDatabase(database) {
    if (FDatabase.empty()) {
        FDatabase = FFolder.File("quorane.db");
        std::filesystem::copy_file(Template(), FDatabase);
    }
    Backend::ServerOptions options;
    options.DatabasePath = FDatabase;
    options.QuickHashesForTests = true;
    options.Clock = [this] { return Now() + FOffset; };
    FServer = std::make_unique<Backend::EmbeddedServer>(options);
    FServer->Start();
    Quorane_TLB::SetClassObjectProvider(Classes());
}

TSampleServer::~TSampleServer() {
    Quorane_TLB::SetClassObjectProvider({});
}

Quorane_TLB::TClassObjectProvider TSampleServer::Classes() {
    return Sdk::MakeClassObjectProvider([this](const std::string& host) -> std::shared_ptr<grpc::Channel> {
        return host == "local" && FServer->Running() ? FServer->Channel() : nullptr;
    });
}

Quorane_TLB::Handle<Quorane_TLB::ISession> TSampleServer::LogOn(const std::string& user) {
    using namespace Quorane_TLB;
    const auto server = CoQuoraneServerFactory::Create()->Create1(u"local");
    return Cast<ISession>(
        CallByName(server, "login", {Variant(Wide(user)), Variant(Wide(SamplePassword(user)))}).AsDispatch());
}
