// Who is logged on: logons, tokens, and the leases of sessions and of the locks that
// they hold.
#pragma once

#include "backend/rules/Connection.h"
#include "backend/rules/Passwords.h"

#include <functional>
#include <map>
#include <string>

namespace Backend {

struct SessionSettings {
    int LeaseSeconds;
    int SessionSeconds;
    std::function<Instant()> Clock;
};

struct Caller {
    std::int64_t SessionId = 0;
    ObjectId UserId = 0;
    bool Administrator = false;
    Instant Expires = 0;
};

// Makes each further logon wait after a few failed ones for the same name, whether
// there is such a user or not. Nobody else's logon is touched.
class LogonBrake {
public:
    // Counts an attempt as failed until Forget. Raises Refusal (InvalidLogin)
    // without counting it when it comes too soon.
    void Begin(const std::string& userName, Instant now);
    void Forget(const std::string& userName);

private:
    struct Failures {
        int Count = 0;
        Instant Last = 0;
    };

    std::mutex FGuard;
    std::map<std::string, Failures> FNames;
};

class Sessions {
public:
    Sessions(ConnectionPool& pool, PasswordHashing hashing, SessionSettings settings);

    Instant Now() const { return FSettings.Clock(); }
    const SessionSettings& Settings() const { return FSettings; }
    // When a lock that is taken or renewed now ends.
    Instant LeaseEnd() const { return Now() + Instant{FSettings.LeaseSeconds} * 1'000'000; }

    struct Logon {
        std::string Token;
        ObjectId UserId = 0;
    };
    // Raises Refusal: InvalidLoginException for an unknown user and a wrong password
    // alike, AccountDisabledException, UserMustChangePasswordException.
    Logon Login(const std::string& userName, const std::string& password, const std::string& client);
    // Ends the user's sessions. Raises Refusal.
    void ChangePassword(const std::string& userName, const std::string& oldPassword,
                        const std::string& newPassword);

    // Raises Refusal for a token that is unknown or whose session ended.
    Caller Authenticate(Connection& connection, std::string_view token);
    // Keeps the session alive; it writes only when a good part of its time is gone.
    void Extend(const Caller& caller);
    void Logout(std::string_view token);

private:
    AccountTable::Credentials CheckPassword(const std::string& userName, const std::string& password);

    ConnectionPool& FPool;
    Passwords FPasswords;
    SessionSettings FSettings;
    LogonBrake FBrake;
};

} // namespace Backend
