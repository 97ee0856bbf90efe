#include "server/UQuoraneSession.h"

#include <filesystem>

#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "server/UResourceStrings.h"
#include "server/tlb/StatusCodes.h"

using namespace Quorane_TLB;

std::unique_ptr<TQuoraneSession> QuoraneSession;

namespace {

struct TTranslation {
    const char* ServerException;
    const char* Message;
};

// In the order in which the message is searched; the first hit wins.
constexpr TTranslation LoginTranslations[] = {
    {"UserMustChangePasswordException", SUserMustChangePassword},
    {"RemoteServerException", SHostNotFound},
    {"InvalidLoginException", SInvalidLogin},
    {"AccountDisabledException", SAccountDisabled},
};

// Returns when nobody has better words for the failure.
void RaiseTranslated(const std::string& message) {
    for (const TTranslation& translation : LoginTranslations)
        if (message.find(translation.ServerException) != std::string::npos)
            throw Exception(translation.Message);
}

void DeleteIfThere(const std::string& file) {
    if (SystemServices().FileExists(file)) SystemServices().DeleteFile(file);
}

} // namespace

TQuoraneSession::TQuoraneSession()
    : FDescriptionFileName(SystemServices().UniqueTempFileName() + ".html") {}

TQuoraneSession::~TQuoraneSession() {
    Logout();
    try {
        DeleteIfThere(FDescriptionFileName);
    } catch (...) {
        // Nobody is left who could be told.
    }
}

void TQuoraneSession::Login(const std::string& host, const std::string& user, const std::string& password) {
    FServer = CoQuoraneServerFactory::Create()->Create1(Wide(host));
    try {
        const Variant session = CallByName(FServer, "login", {Wide(user), Wide(password)});
        FSession = Cast<ISession>(session.AsDispatch());
        FServerVersion = Utf8(FServer->Get_ServerVersion());
    } catch (const std::exception& failure) {
        RaiseTranslated(failure.what());
        throw;
    }
    FHost = host;
    FUser = user;
    FPassword = password;
    FLoggedIn = true;
}

void TQuoraneSession::Logout() {
    try {
        const Handle<ISession> session = GetQuoraneSession();
        if (!session) return;
        session->logout();
    } catch (...) {
        // The server may be gone; the object is logged out all the same.
    }
    FLoggedIn = false;
    FGlossaryTerms.Clear();
    FSession.reset();
    FServerVersion.clear();
}

void TQuoraneSession::Relogin() {
    Login(FHost, FUser, FPassword);
}

void TQuoraneSession::RefreshSession() {
    Logout();
    Login(FHost, FUser, FPassword);
}

Handle<ISession> TQuoraneSession::GetQuoraneSession() {
    if (FLoggedIn && !FSession) Relogin();
    return FSession;
}

Handle<ISession> TQuoraneSession::Session() {
    Handle<ISession> session = GetQuoraneSession();
    if (!session) throw EOleSysError(SNotLoggedOn, StatusPointer);
    return session;
}

std::string TQuoraneSession::EnvironmentDescription() {
    const Handle<IStInitializer> initializer = CoInitializer::Create();
    const std::string library = SystemServices().TypeLibraryPath(GuidToString(LIBID_Quorane));
    const std::string sdkVersion = Utf8(Require(initializer->Get_VersionInformation())->Get_Version());
    const std::string firstLine =
        SSDKVersion + sdkVersion + " (" + SystemServices().FileVersion(library) + ")";
    const Handle<IStJavaConfiguration> java = Require(initializer->Get_JavaConfiguration());
    return firstLine + "\r\n" + SJavaVersion + Utf8(Require(java->Get_RunningJavaVM())->Get_Version());
}

std::string TQuoraneSession::TallyworksExecutable() {
    const std::string client =
        SystemServices().ReadMachineSetting("SOFTWARE\\Vantrel\\Quorane", "Quorane_EXE");
    return (std::filesystem::path(client).parent_path() / "Quorane Tallyworks Pluggin.EXE").string();
}

TQuoraneSession& CurrentSession() {
    if (!QuoraneSession) throw EOleSysError(SNotLoggedOn, StatusPointer);
    return *QuoraneSession;
}

void FinalizeQuoraneSession() {
    QuoraneSession.reset();
}
