#include "backend/store/RequirementTable.h"

#include "backend/store/TypeTable.h"

namespace Backend {

namespace {

std::optional<ObjectId> OrNull(ObjectId id) {
    return id ? std::optional(id) : std::nullopt;
}

} // namespace

void RequirementTable::Add(ObjectId requirementId, ObjectId projectId) {
    FDatabase.Run("insert into requirement (id, project_id) values ($1, $2)", requirementId, projectId);
}

ObjectId RequirementTable::ProjectOf(ObjectId requirementId) {
    Rows rows = FDatabase.Query("select project_id from requirement where id = $1", requirementId);
    return rows.Next() ? rows.Int(0) : 0;
}

std::int64_t RequirementTable::AddText(const RequirementText& text) {
    FDatabase.Run("insert into requirement_text (description, validation) values ($1, $2)", text.Description,
                  text.Validation);
    return FDatabase.LastKey();
}

std::int64_t RequirementTable::AddVersion(const RequirementVersion& version) {
    FDatabase.Run("insert into requirement_version (requirement_id, major, minor, type_id, name, owner_id, "
                  "text_id, changed, changed_by, comment) values ($1, $2, $3, $4, $5, $6, $7, $8, $9, $10)",
                  version.RequirementId, version.Number.Major, version.Number.Minor, version.TypeId,
                  version.Name, OrNull(version.OwnerId), version.TextId, version.Changed, version.ChangedBy,
                  version.Comment);
    return FDatabase.LastKey();
}

void RequirementTable::AddValues(std::int64_t versionId, const std::vector<AttributeValue>& values) {
    for (const AttributeValue& value : values) {
        const ValueColumns columns = ToColumns(value.Content);
        FDatabase.Run("insert into attribute_value (version_id, attribute_id, integer_value, real_value, "
                      "text_value) values ($1, $2, $3, $4, $5)",
                      versionId, value.AttributeId, columns.Integer, columns.Real, columns.Text);
    }
}

void RequirementTable::AddReferences(std::int64_t versionId,
                                     const std::vector<DocumentReference>& references) {
    int position = 0;
    for (const DocumentReference& reference : references)
        FDatabase.Run(
            "insert into document_reference (version_id, position, kind, target, description, is_key) "
            "values ($1, $2, $3, $4, $5, $6)",
            versionId, position++, static_cast<int>(reference.Kind), reference.Target, reference.Description,
            reference.IsKey);
}

void RequirementTable::AddAssignments(std::int64_t versionId, const std::vector<Assignment>& assignments) {
    for (const Assignment& assignment : assignments)
        for (ObjectId userId : assignment.UserIds)
            FDatabase.Run("insert into responsibility (version_id, group_id, user_id) values ($1, $2, $3)",
                          versionId, assignment.GroupId, userId);
}

std::optional<RequirementVersion> RequirementTable::ReadVersion(std::int64_t versionId) {
    Rows rows =
        FDatabase.Query("select requirement_id, major, minor, type_id, name, owner_id, text_id, changed, "
                        "changed_by, comment from requirement_version where id = $1",
                        versionId);
    if (!rows.Next()) return std::nullopt;
    RequirementVersion version;
    version.Id = versionId;
    version.RequirementId = rows.Int(0);
    version.Number = {rows.Int(1), rows.Int(2)};
    version.TypeId = rows.Int(3);
    version.Name = rows.Text(4);
    version.OwnerId = rows.Int(5);
    version.TextId = rows.Int64(6);
    version.Changed = rows.Int64(7);
    version.ChangedBy = rows.Int(8);
    version.Comment = rows.Text(9);
    return version;
}

RequirementText RequirementTable::ReadText(std::int64_t textId) {
    Rows rows = FDatabase.Query("select description, validation from requirement_text where id = $1", textId);
    rows.Next();
    return {rows.Text(0), rows.Text(1)};
}

std::vector<AttributeValue> RequirementTable::ReadValues(std::int64_t versionId, ObjectId typeId) {
    std::vector<AttributeValue> values;
    Rows rows = FDatabase.Query(
        "select a.id, a.kind, v.attribute_id is not null, v.integer_value, v.real_value, v.text_value, "
        "a.integer_value, a.real_value, a.text_value from attribute a left join custom_tab t on t.id = "
        "a.tab_id "
        "left join attribute_value v on v.version_id = $1 and v.attribute_id = a.id where a.type_id = $2 "
        "order by case a.role when 0 then 3 else a.role end, t.position, a.position",
        versionId, typeId);
    while (rows.Next()) {
        const auto kind = static_cast<AttributeKind>(rows.Int(1));
        values.push_back({rows.Int(0), FromColumns(kind, rows, rows.Bool(2) ? 3 : 6)});
    }
    return values;
}

std::vector<std::pair<std::string, ObjectId>> RequirementTable::FindByText(ObjectId baselineId,
                                                                           ObjectId attributeId) {
    std::vector<std::pair<std::string, ObjectId>> found;
    Rows rows =
        FDatabase.Query("select v.text_value, n.node_id from tree_node n join attribute_value v on "
                        "v.version_id = n.version_id where n.baseline_id = $1 and v.attribute_id = $2",
                        baselineId, attributeId);
    while (rows.Next())
        found.emplace_back(rows.Text(0), rows.Int(1));
    return found;
}

std::vector<DocumentReference> RequirementTable::ReadReferences(std::int64_t versionId) {
    std::vector<DocumentReference> references;
    Rows rows = FDatabase.Query("select kind, target, description, is_key from document_reference "
                                "where version_id = $1 order by position",
                                versionId);
    while (rows.Next())
        references.push_back(
            {static_cast<ReferenceKind>(rows.Int(0)), rows.Text(1), rows.Text(2), rows.Bool(3)});
    return references;
}

std::vector<Assignment> RequirementTable::ReadAssignments(std::int64_t versionId, ObjectId projectId) {
    std::vector<Assignment> assignments;
    Rows rows =
        FDatabase.Query("select g.group_id, r.user_id from project_group g left join responsibility r "
                        "on r.version_id = $1 and r.group_id = g.group_id "
                        "where g.project_id = $2 order by g.position, r.user_id",
                        versionId, projectId);
    while (rows.Next()) {
        if (assignments.empty() || assignments.back().GroupId != rows.Int(0))
            assignments.push_back({rows.Int(0), {}});
        if (!rows.IsNull(1)) assignments.back().UserIds.push_back(rows.Int(1));
    }
    return assignments;
}

std::optional<RequirementLock> RequirementTable::FindLock(ObjectId requirementId, Instant now) {
    Rows rows = FDatabase.Query("select l.session_id, l.user_id, u.name, l.expires from requirement_lock l "
                                "join user_account u on u.id = l.user_id "
                                "where l.requirement_id = $1 and l.expires > $2",
                                requirementId, now);
    if (!rows.Next()) return std::nullopt;
    return RequirementLock{rows.Int64(0), rows.Int(1), rows.Text(2), rows.Int64(3)};
}

void RequirementTable::SetLock(ObjectId requirementId, const RequirementLock& lock) {
    FDatabase.Run("insert into requirement_lock (requirement_id, session_id, user_id, expires) "
                  "values ($1, $2, $3, $4) on conflict (requirement_id) do update set "
                  "session_id = excluded.session_id, user_id = excluded.user_id, expires = excluded.expires",
                  requirementId, lock.SessionId, lock.UserId, lock.Expires);
}

void RequirementTable::RemoveLock(ObjectId requirementId) {
    FDatabase.Run("delete from requirement_lock where requirement_id = $1", requirementId);
}

std::vector<ObjectId> RequirementTable::LocksOf(std::int64_t sessionId, Instant now) {
    std::vector<ObjectId> locked;
    Rows rows = FDatabase.Query("select requirement_id from requirement_lock where session_id = $1 "
                                "and expires > $2",
                                sessionId, now);
    while (rows.Next())
        locked.push_back(rows.Int(0));
    return locked;
}

void RequirementTable::ExtendLocksOf(std::int64_t sessionId, Instant now, Instant expires) {
    FDatabase.Run("update requirement_lock set expires = $3 where session_id = $1 and expires > $2",
                  sessionId, now, expires);
}

std::optional<std::pair<ObjectId, RequirementLock>>
RequirementTable::ForeignLock(const std::vector<ObjectId>& requirements, std::int64_t sessionId,
                              Instant now) {
    for (ObjectId id : requirements)
        if (std::optional<RequirementLock> lock = FindLock(id, now); lock && lock->SessionId != sessionId)
            return std::pair(id, *lock);
    return std::nullopt;
}

} // namespace Backend
