// Users with their credentials, groups, and sessions. The numbers of new objects are
// the caller's to draw.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <optional>

namespace Backend {

// Gives object numbers out of the one sequence of a database. Numbers drawn in a
// transaction that fails are given again. Several at once are reserved in blocks,
// so that a bulk insertion does not write the counter for each.
class NumberSequence {
public:
    explicit NumberSequence(Database& database, int block = 1)
        : FDatabase(database)
        , FBlock(block) {}

    // To be called inside a write transaction. Raises StoreError when the numbers
    // are used up.
    ObjectId Next();

private:
    Database& FDatabase;
    int FBlock;
    ObjectId FNext = 0;
    int FLeft = 0;
};

class AccountTable {
public:
    explicit AccountTable(Database& database)
        : FDatabase(database) {}

    struct Credentials {
        User Account;
        std::string PasswordHash;
    };

    void AddUser(const User& user, const std::string& passwordHash);
    void AddGroup(const Group& group);
    std::optional<Credentials> Find(const std::string& userName);
    ObjectId FindGroup(const std::string& name); // 0: there is none
    std::string NameOf(ObjectId userId);         // empty: there is none
    std::string NameOfGroup(ObjectId groupId);   // empty: there is none
    bool UserExists(ObjectId userId);
    bool IsMember(ObjectId groupId, ObjectId userId);
    // Also ends the duty to change it.
    void SetPassword(ObjectId userId, const std::string& passwordHash);

    std::int64_t DirectoryRevision();
    Directory ReadDirectory();

    struct Session {
        std::int64_t Id = 0;
        ObjectId UserId = 0;
        Instant Expires = 0;
        bool Disabled = false;
        bool Administrator = false;
    };

    void AddSession(std::string_view tokenHash, ObjectId userId, const std::string& client, Instant now,
                    Instant expires);
    std::optional<Session> FindSession(std::string_view tokenHash);
    void ExtendSession(std::int64_t sessionId, Instant expires);
    // Its locks go with it.
    void RemoveSession(std::int64_t sessionId);
    void RemoveSessionsOf(ObjectId userId);
    void RemoveExpiredSessions(Instant now);

private:
    void DirectoryChanged();

    Database& FDatabase;
};

} // namespace Backend
