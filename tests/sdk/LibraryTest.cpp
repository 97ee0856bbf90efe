// The library as a client loads it, on a data folder of the test's own.
#include "contracts/Exceptions.h"
#include "server/Quorane_TLB.h"
#include "server/tlb/ClassObjects.h"
#include "support/TempFolder.h"

#include <cstdlib>

#include <dlfcn.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Quorane_TLB;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class TLibrary : public ::testing::Test {
protected:
    // The library looks at its environment once, so all cases of a process share it.
    TLibrary()
        : FFolder(SharedFolder()) {
        std::filesystem::remove(FFolder.Path() / "quorane.db");
        setenv("QUORANE_DATA_DIR", FFolder.Path().c_str(), 1);
        setenv("QUORANE_SDK_TRACE", FFolder.File("trace.txt").c_str(), 1);
        const std::string library = std::string(std::getenv("QUORANE_BUILD_DIR")) + "/bin/libquorane-sdk.so";
        void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!handle) throw std::runtime_error(dlerror());
        const auto entry = reinterpret_cast<TSdkEntry>(dlsym(handle, SdkEntryName));
        SetClassObjectProvider([entry](const Guid& classId, const std::string& machine) {
            Handle<IDispatch> object;
            entry(classId, machine, object);
            return object;
        });
    }

    ~TLibrary() override { SetClassObjectProvider({}); }

    static std::string LogonFailure(const std::u16string& host) {
        const auto server = CoQuoraneServerFactory::Create()->Create1(host);
        try {
            server->login(u"ann", u"secret");
        } catch (const EOleSysError& failure) {
            return failure.what();
        }
        return {};
    }

    static const TTempFolder& SharedFolder() {
        static const TTempFolder folder;
        return folder;
    }

    const TTempFolder& FFolder;
};

} // namespace

TEST_F(TLibrary, TellsItsVersionAndWhatRunsBehindItWithoutAServer) {
    const auto initializer = CoInitializer::Create();
    EXPECT_THAT(Utf8(initializer->Get_VersionInformation()->Get_Version()),
                ::testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_THAT(Utf8(initializer->Get_JavaConfiguration()->Get_RunningJavaVM()->Get_Version()),
                HasSubstr("gRPC"));
    EXPECT_FALSE(std::filesystem::exists(FFolder.Path() / "quorane.db"))
        << "no database is made before somebody logs on";
}

TEST_F(TLibrary, AnUnusableDatabaseIsToldInItsOwnWords) {
    WriteFile(FFolder.Path() / "quorane.db", std::string(8192, 'x'));
    const std::string text = LogonFailure(u"local");
    EXPECT_THAT(text, HasSubstr("quorane.db"));
    EXPECT_THAT(text, Not(HasSubstr("RemoteServerException")));
    EXPECT_EQ(ReadFile(FFolder.Path() / "quorane.db"), std::string(8192, 'x')) << "and is left as it was";
}

TEST_F(TLibrary, NothingIsSentToAnotherMachine) {
    EXPECT_THAT(LogonFailure(u"127.0.0.1:1"), HasSubstr("RemoteServerException"));
}

TEST_F(TLibrary, WritesATraceWhenTheUserAsksForOne) {
    LogonFailure(u"elsewhere.example");
    const std::string trace = ReadFile(FFolder.Path() / "trace.txt");
    EXPECT_THAT(trace, HasSubstr("failed IQuoraneServer.login"));
    EXPECT_THAT(trace, Not(HasSubstr("secret")));
}
