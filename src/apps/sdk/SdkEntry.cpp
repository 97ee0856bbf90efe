// The entry of the SDK's library: composes the objects with the servers that they can
// reach. "local" is the server inside this process, on the user's own database.
#include "backend/service/DatabaseLocation.h"
#include "backend/service/EmbeddedServer.h"
#include "backend/store/Database.h"
#include "contracts/FileVersion.h"
#include "platform/sdk/ClassObjects.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/SdkCalls.h"

#include <cstdlib>
#include <memory>

#define QUORANE_FILE_VERSION_OF(numbers) QUORANE_FILE_VERSION(numbers)
QUORANE_FILE_VERSION_OF(QUORANE_VERSION_NUMBERS)

namespace {

Backend::EmbeddedServer& LocalServer() {
    static Backend::EmbeddedServer server([] {
        Backend::ServerOptions options;
        options.DatabasePath = Backend::DefaultDatabasePath();
        return options;
    }());
    return server;
}

std::shared_ptr<grpc::Channel> ChannelTo(const std::string& host) {
    // Nothing goes to another machine in the clear, and this SDK holds no keys.
    if (host != "local") return nullptr;
    try {
        LocalServer().Start();
        return LocalServer().Channel();
    } catch (const Backend::StoreError& error) {
        Sdk::RaiseFailure(error.what());
    }
}

// Written while the library is loaded, when the user asks for it in the environment.
std::unique_ptr<Sdk::TCallTrace> OpenTrace() {
    const char* file = std::getenv("QUORANE_SDK_TRACE");
    return file && *file ? std::make_unique<Sdk::TCallTrace>(file) : nullptr;
}

} // namespace

// Found by its name, which server/tlb/ClassObjects.h tells.
extern "C" [[gnu::visibility("default")]] void
QuoraneClassObject(const Quorane_TLB::Guid& classId, const std::string& machine,
                   Quorane_TLB::Handle<Quorane_TLB::IDispatch>& object) {
    static const auto trace = OpenTrace();
    static const auto provider = Sdk::MakeClassObjectProvider(ChannelTo);
    object = provider(classId, machine);
}
