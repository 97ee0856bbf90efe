#include "backend/store/AccountTable.h"

#include <map>

namespace Backend {

ObjectId NumberSequence::Next() {
    if (FLeft == 0) {
        Rows rows = FDatabase.Query(
            "update counter set value = value + $1 where name = 'number' returning value", FBlock);
        rows.Next();
        FNext = rows.Int(0) - FBlock + 1;
        FLeft = FBlock;
        rows.Next();
    }
    --FLeft;
    return FNext++;
}

void AccountTable::AddUser(const User& user, const std::string& passwordHash) {
    FDatabase.Run("insert into user_account (id, user_name, name, password_hash, disabled, "
                  "must_change_password, administrator) values ($1, $2, $3, $4, $5, $6, $7)",
                  user.Id, user.UserName, user.Name, passwordHash, user.Disabled, user.MustChangePassword,
                  user.Administrator);
    DirectoryChanged();
}

void AccountTable::AddGroup(const Group& group) {
    FDatabase.Run("insert into user_group (id, name) values ($1, $2)", group.Id, group.Name);
    for (ObjectId member : group.Members)
        FDatabase.Run("insert into group_member (group_id, user_id) values ($1, $2)", group.Id, member);
    DirectoryChanged();
}

std::optional<AccountTable::Credentials> AccountTable::Find(const std::string& userName) {
    Rows rows = FDatabase.Query("select id, user_name, name, disabled, must_change_password, administrator, "
                                "password_hash from user_account where user_name = $1",
                                userName);
    if (!rows.Next()) return std::nullopt;
    Credentials found;
    found.Account = {rows.Int(0), rows.Text(1), rows.Text(2), rows.Bool(3), rows.Bool(4), rows.Bool(5)};
    found.PasswordHash = rows.Text(6);
    return found;
}

ObjectId AccountTable::FindGroup(const std::string& name) {
    Rows rows = FDatabase.Query("select id from user_group where name = $1", name);
    return rows.Next() ? rows.Int(0) : 0;
}

std::string AccountTable::NameOf(ObjectId userId) {
    Rows rows = FDatabase.Query("select name from user_account where id = $1", userId);
    return rows.Next() ? rows.Text(0) : std::string();
}

std::string AccountTable::NameOfGroup(ObjectId groupId) {
    Rows rows = FDatabase.Query("select name from user_group where id = $1", groupId);
    return rows.Next() ? rows.Text(0) : std::string();
}

bool AccountTable::UserExists(ObjectId userId) {
    return FDatabase.Query("select 1 from user_account where id = $1", userId).Next();
}

bool AccountTable::IsMember(ObjectId groupId, ObjectId userId) {
    return FDatabase.Query("select 1 from group_member where group_id = $1 and user_id = $2", groupId, userId)
        .Next();
}

void AccountTable::SetPassword(ObjectId userId, const std::string& passwordHash) {
    FDatabase.Run("update user_account set password_hash = $2, must_change_password = 0 where id = $1",
                  userId, passwordHash);
}

std::int64_t AccountTable::DirectoryRevision() {
    Rows rows = FDatabase.Query("select value from counter where name = 'directory'");
    rows.Next();
    return rows.Int64(0);
}

void AccountTable::DirectoryChanged() {
    FDatabase.Run("update counter set value = value + 1 where name = 'directory'");
}

Directory AccountTable::ReadDirectory() {
    Directory directory;
    directory.Revision = DirectoryRevision();
    Rows users = FDatabase.Query("select id, user_name, name, disabled, must_change_password, administrator "
                                 "from user_account order by name, id");
    while (users.Next())
        directory.Users.push_back(
            {users.Int(0), users.Text(1), users.Text(2), users.Bool(3), users.Bool(4), users.Bool(5)});
    std::map<ObjectId, std::vector<ObjectId>> members;
    Rows rows = FDatabase.Query("select m.group_id, m.user_id from group_member m "
                                "join user_account u on u.id = m.user_id order by u.name, u.id");
    while (rows.Next())
        members[rows.Int(0)].push_back(rows.Int(1));
    Rows groups = FDatabase.Query("select id, name from user_group order by name, id");
    while (groups.Next())
        directory.Groups.push_back({groups.Int(0), groups.Text(1), members[groups.Int(0)]});
    return directory;
}

void AccountTable::AddSession(std::string_view tokenHash, ObjectId userId, const std::string& client,
                              Instant now, Instant expires) {
    FDatabase.Run("insert into session (token_hash, user_id, client, created, expires) "
                  "values ($1, $2, $3, $4, $5)",
                  Bytes{tokenHash}, userId, client, now, expires);
}

std::optional<AccountTable::Session> AccountTable::FindSession(std::string_view tokenHash) {
    Rows rows = FDatabase.Query("select s.id, s.user_id, s.expires, u.disabled, u.administrator "
                                "from session s join user_account u on u.id = s.user_id "
                                "where s.token_hash = $1",
                                Bytes{tokenHash});
    if (!rows.Next()) return std::nullopt;
    return Session{rows.Int64(0), rows.Int(1), rows.Int64(2), rows.Bool(3), rows.Bool(4)};
}

void AccountTable::ExtendSession(std::int64_t sessionId, Instant expires) {
    FDatabase.Run("update session set expires = $2 where id = $1", sessionId, expires);
}

void AccountTable::RemoveSession(std::int64_t sessionId) {
    FDatabase.Run("delete from session where id = $1", sessionId);
}

void AccountTable::RemoveSessionsOf(ObjectId userId) {
    FDatabase.Run("delete from session where user_id = $1", userId);
}

void AccountTable::RemoveExpiredSessions(Instant now) {
    FDatabase.Run("delete from session where expires <= $1", now);
}

} // namespace Backend
