#include "backend/service/Sessions.h"

#include "backend/rules/Refusal.h"
#include "backend/rules/Rules.h"

#include <algorithm>

namespace Backend {

namespace {

constexpr Instant Second = 1'000'000;
constexpr int FreeAttempts = 3;
constexpr int LongestWaitSeconds = 60;
constexpr std::size_t MaxNames = 10'000;
constexpr std::size_t MinPasswordLength = 8;
constexpr std::size_t MaxPasswordLength = 1000;

Refusal InvalidLogin(const std::string& sentence) {
    return Refusal(Refusal::Reason::NotLoggedOn, "InvalidLoginException", sentence);
}

Refusal EndedSession() {
    // The class name and the error code by which clients know a lost connection.
    return Refusal(Refusal::Reason::NotLoggedOn, "RemoteServerException",
                   "Quorane.SERVER_ERROR: The session has ended; log on again.");
}

} // namespace

void LogonBrake::Begin(const std::string& userName, Instant now) {
    const std::lock_guard guard(FGuard);
    Failures& failures = FNames[userName];
    if (failures.Count >= FreeAttempts) {
        const int wait = 1 << std::min(failures.Count - FreeAttempts, 6);
        const Instant free = failures.Last + std::min(wait, LongestWaitSeconds) * Second;
        if (now < free)
            throw InvalidLogin("Too many failed logons; try again in " +
                               std::to_string((free - now + Second - 1) / Second) + " seconds.");
    }
    ++failures.Count;
    failures.Last = now;
    if (FNames.size() > MaxNames)
        FNames.erase(
            std::ranges::min_element(FNames, {}, [](const auto& entry) { return entry.second.Last; }));
}

void LogonBrake::Forget(const std::string& userName) {
    const std::lock_guard guard(FGuard);
    FNames.erase(userName);
}

Sessions::Sessions(ConnectionPool& pool, PasswordHashing hashing, SessionSettings settings)
    : FPool(pool)
    , FPasswords(hashing)
    , FSettings(std::move(settings)) {}

AccountTable::Credentials Sessions::CheckPassword(const std::string& userName, const std::string& password) {
    FBrake.Begin(userName, Now());
    std::optional<AccountTable::Credentials> found;
    if (IsPlainUtf8(userName)) found = FPool.Read()->Accounts.Find(userName);
    bool right = false;
    // The hash is computed outside of any transaction.
    if (found && password.size() <= MaxPasswordLength)
        right = FPasswords.Matches(found->PasswordHash, password);
    else
        FPasswords.MatchNothing(password);
    if (!right) throw InvalidLogin("The user name or the password is wrong.");
    FBrake.Forget(userName);
    if (found->Account.Disabled)
        throw Refusal(Refusal::Reason::Denied, "AccountDisabledException",
                      "The account " + userName + " is disabled.");
    return *found;
}

Sessions::Logon Sessions::Login(const std::string& userName, const std::string& password,
                                const std::string& client) {
    CheckText("The name of the client", client, MaxRequirementName);
    const AccountTable::Credentials credentials = CheckPassword(userName, password);
    if (credentials.Account.MustChangePassword)
        throw Refusal(Refusal::Reason::Denied, "UserMustChangePasswordException",
                      "The user " + userName + " must change the password.");
    const Logon logon{NewToken(), credentials.Account.Id};
    const Instant now = Now();
    ConnectionPool::Lease connection = FPool.Write();
    connection->Accounts.RemoveExpiredSessions(now);
    connection->Accounts.AddSession(TokenHash(logon.Token), logon.UserId, client, now,
                                    now + FSettings.SessionSeconds * Second);
    connection.Commit();
    return logon;
}

void Sessions::ChangePassword(const std::string& userName, const std::string& oldPassword,
                              const std::string& newPassword) {
    const AccountTable::Credentials credentials = CheckPassword(userName, oldPassword);
    if (!IsPlainUtf8(newPassword) || newPassword.size() < MinPasswordLength ||
        newPassword.size() > MaxPasswordLength)
        throw RuleViolation("A password has at least " + std::to_string(MinPasswordLength) + " characters.");
    if (newPassword == oldPassword) throw RuleViolation("The new password is the old one.");
    const std::string hash = FPasswords.Hash(newPassword);
    ConnectionPool::Lease connection = FPool.Write();
    connection->Accounts.SetPassword(credentials.Account.Id, hash);
    connection->Accounts.RemoveSessionsOf(credentials.Account.Id);
    connection.Commit();
}

Caller Sessions::Authenticate(Connection& connection, std::string_view token) {
    const auto session = connection.Accounts.FindSession(TokenHash(token));
    if (!session || session->Expires <= Now() || session->Disabled) throw EndedSession();
    return {session->Id, session->UserId, session->Administrator, session->Expires};
}

void Sessions::Extend(const Caller& caller) {
    const Instant now = Now();
    const Instant whole = FSettings.SessionSeconds * Second;
    if (caller.Expires - now > whole - whole / 8) return;
    ConnectionPool::Lease connection = FPool.Write();
    connection->Accounts.ExtendSession(caller.SessionId, now + whole);
    connection.Commit();
}

void Sessions::Logout(std::string_view token) {
    ConnectionPool::Lease connection = FPool.Write();
    const Caller caller = Authenticate(*connection, token);
    connection->Accounts.RemoveSession(caller.SessionId);
    connection.Commit();
}

} // namespace Backend
