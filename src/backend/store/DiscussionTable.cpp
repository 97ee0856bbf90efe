#include "backend/store/DiscussionTable.h"

namespace Backend {

namespace {

// Columns: id, requirement_id, parent_id, subject, body, author_id, name, date, read.
Message ToMessage(const Rows& rows) {
    return {rows.Int(0), rows.Int(1),  rows.Int(2),   rows.Text(3), rows.Text(4),
            rows.Int(5), rows.Text(6), rows.Int64(7), rows.Bool(8)};
}

} // namespace

void DiscussionTable::Add(const Message& message) {
    FDatabase.Run("insert into message (id, requirement_id, parent_id, subject, body, author_id, date) "
                  "values ($1, $2, nullif($3, 0), $4, $5, $6, $7)",
                  message.Id, message.RequirementId, message.ParentId, message.Subject, message.Body,
                  message.AuthorId, message.Date);
    FDatabase.Run("update requirement set message_count = message_count + 1 where id = $1",
                  message.RequirementId);
    MarkRead(message.Id, message.RequirementId, message.AuthorId, true);
}

std::optional<Message> DiscussionTable::Find(ObjectId messageId, ObjectId userId) {
    Rows rows = FDatabase.Query(
        "select m.id, m.requirement_id, m.parent_id, m.subject, m.body, m.author_id, u.name, m.date, "
        "exists (select 1 from message_read d where d.user_id = $2 and d.message_id = m.id) "
        "from message m join user_account u on u.id = m.author_id where m.id = $1",
        messageId, userId);
    return rows.Next() ? std::optional(ToMessage(rows)) : std::nullopt;
}

std::vector<Message> DiscussionTable::ReadAll(ObjectId requirementId, ObjectId userId) {
    std::vector<Message> messages;
    Rows rows = FDatabase.Query(
        "select m.id, m.requirement_id, m.parent_id, m.subject, m.body, m.author_id, u.name, m.date, "
        "exists (select 1 from message_read d where d.user_id = $2 and d.message_id = m.id) "
        "from message m join user_account u on u.id = m.author_id where m.requirement_id = $1 order by m.id",
        requirementId, userId);
    while (rows.Next())
        messages.push_back(ToMessage(rows));
    return messages;
}

void DiscussionTable::MarkRead(ObjectId messageId, ObjectId requirementId, ObjectId userId, bool read) {
    const int changed = read
                            ? FDatabase.Run("insert into message_read (user_id, message_id) values ($1, $2) "
                                            "on conflict (user_id, message_id) do nothing",
                                            userId, messageId)
                            : FDatabase.Run("delete from message_read where user_id = $1 and message_id = $2",
                                            userId, messageId);
    if (changed == 0) return;
    FDatabase.Run("insert into read_count (user_id, requirement_id, read_messages) values ($1, $2, 1) "
                  "on conflict (user_id, requirement_id) do update set read_messages = read_messages + $3",
                  userId, requirementId, read ? 1 : -1);
}

void DiscussionTable::SetInterest(ObjectId userId, ObjectId requirementId, bool interested) {
    if (interested)
        FDatabase.Run("insert into interest (user_id, requirement_id) values ($1, $2) "
                      "on conflict (user_id, requirement_id) do nothing",
                      userId, requirementId);
    else
        FDatabase.Run("delete from interest where user_id = $1 and requirement_id = $2", userId,
                      requirementId);
}

} // namespace Backend
