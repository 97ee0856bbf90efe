// Messages about requirements, what each user has read of them, and who is
// interested in a requirement.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <optional>

namespace Backend {

struct Message {
    ObjectId Id = 0;
    ObjectId RequirementId = 0;
    ObjectId ParentId = 0; // the message that it answers
    std::string Subject;
    std::string Body;
    ObjectId AuthorId = 0;
    std::string AuthorName;
    Instant Date = 0;
    bool Read = false; // by the user who asks
};

class DiscussionTable {
public:
    explicit DiscussionTable(Database& database)
        : FDatabase(database) {}

    // Read by its author from the start.
    void Add(const Message& message);
    std::optional<Message> Find(ObjectId messageId, ObjectId userId);
    // Oldest first.
    std::vector<Message> ReadAll(ObjectId requirementId, ObjectId userId);
    void MarkRead(ObjectId messageId, ObjectId requirementId, ObjectId userId, bool read);
    void SetInterest(ObjectId userId, ObjectId requirementId, bool interested);

private:
    Database& FDatabase;
};

} // namespace Backend
