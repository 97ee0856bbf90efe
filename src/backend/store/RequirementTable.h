// Requirements: their versions with everything that belongs to one, their history,
// and the locks on them. A written version never changes.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <optional>

namespace Backend {

struct RequirementVersion {
    std::int64_t Id = 0;
    ObjectId RequirementId = 0;
    Version Number;
    ObjectId TypeId = 0;
    std::string Name;
    ObjectId OwnerId = 0;
    std::int64_t TextId = 0;
    Instant Changed = 0;
    ObjectId ChangedBy = 0;
    std::string Comment;
};

struct RequirementText {
    std::string Description; // HTML
    std::string Validation;
};

struct RequirementLock {
    std::int64_t SessionId = 0;
    ObjectId UserId = 0;
    std::string UserName; // for display
    Instant Expires = 0;
};

class RequirementTable {
public:
    explicit RequirementTable(Database& database)
        : FDatabase(database) {}

    void Add(ObjectId requirementId, ObjectId projectId);
    ObjectId ProjectOf(ObjectId requirementId); // 0: no such requirement

    // ---- versions

    std::int64_t AddText(const RequirementText& text);
    // Gives its key; the one in the argument is not looked at.
    std::int64_t AddVersion(const RequirementVersion& version);
    void AddValues(std::int64_t versionId, const std::vector<AttributeValue>& values);
    void AddReferences(std::int64_t versionId, const std::vector<DocumentReference>& references);
    void AddAssignments(std::int64_t versionId, const std::vector<Assignment>& assignments);

    // Requirements of a baseline by their own value of a text attribute.
    std::vector<std::pair<std::string, ObjectId>> FindByText(ObjectId baselineId, ObjectId attributeId);

    std::optional<RequirementVersion> ReadVersion(std::int64_t versionId);
    RequirementText ReadText(std::int64_t textId);
    // One for each attribute of the type, status and priority first; those without
    // a value of their own hold the default.
    std::vector<AttributeValue> ReadValues(std::int64_t versionId, ObjectId typeId);
    std::vector<DocumentReference> ReadReferences(std::int64_t versionId);
    // One for each group of the project.
    std::vector<Assignment> ReadAssignments(std::int64_t versionId, ObjectId projectId);

    // ---- history

    void AddChanges(std::int64_t versionId, const std::vector<HistoryChange>& changes);
    // Of the versions up to the given one, the newest first, without their changes.
    std::vector<std::int64_t> VersionsUpTo(std::int64_t versionId);
    HistoryRevision ReadRevision(std::int64_t versionId);

    // ---- locks

    std::optional<RequirementLock> FindLock(ObjectId requirementId, Instant now);
    // Replaces whatever lock there is.
    void SetLock(ObjectId requirementId, const RequirementLock& lock);
    void RemoveLock(ObjectId requirementId);
    // Those of a session that still live.
    std::vector<ObjectId> LocksOf(std::int64_t sessionId, Instant now);
    void ExtendLocksOf(std::int64_t sessionId, Instant now, Instant expires);
    // The first living lock of somebody else on one of the requirements.
    std::optional<std::pair<ObjectId, RequirementLock>> ForeignLock(const std::vector<ObjectId>& requirements,
                                                                    std::int64_t sessionId, Instant now);

private:
    Database& FDatabase;
};

} // namespace Backend
