#include "backend/store/TraceTable.h"

namespace Backend {

namespace {

// Columns: id, from_requirement, from_object, to_requirement, to_object, suspect.
Trace ToTrace(const Rows& rows) {
    return {rows.Int(0), {rows.Int(1), rows.Int(2)}, {rows.Int(3), rows.Int(4)}, rows.Bool(5)};
}

std::vector<Trace> ToTraces(Rows rows) {
    std::vector<Trace> traces;
    while (rows.Next())
        traces.push_back(ToTrace(rows));
    return traces;
}

Integration ToIntegration(const Rows& rows) {
    return {rows.Int(0), rows.Text(1), rows.Text(2), rows.Text(3)};
}

ObjectId NumberOf(const TraceEnd& end) {
    return end.RequirementId ? end.RequirementId : end.ObjectNumber;
}

} // namespace

std::vector<Integration> TraceTable::Integrations() {
    std::vector<Integration> integrations;
    Rows rows = FDatabase.Query("select id, name, library_name, icon from integration order by id");
    while (rows.Next())
        integrations.push_back(ToIntegration(rows));
    return integrations;
}

std::optional<Integration> TraceTable::FindIntegration(const std::string& name) {
    Rows rows = FDatabase.Query("select id, name, library_name, icon from integration where name = $1", name);
    return rows.Next() ? std::optional(ToIntegration(rows)) : std::nullopt;
}

void TraceTable::SaveIntegration(const Integration& integration) {
    FDatabase.Run(
        "insert into integration (id, name, library_name, icon) values ($1, $2, $3, $4) "
        "on conflict (id) do update set name = excluded.name, library_name = excluded.library_name, "
        "icon = excluded.icon",
        integration.Id, integration.Name, integration.LibraryName, Bytes{integration.Icon});
}

ObjectId TraceTable::FindObject(ObjectId integrationId, const std::string& key) {
    Rows rows = FDatabase.Query(
        "select id from external_object where integration_id = $1 and external_key = $2", integrationId, key);
    return rows.Next() ? rows.Int(0) : 0;
}

void TraceTable::AddObject(const ExternalObject& object) {
    FDatabase.Run("insert into external_object (id, integration_id, external_key, name, location, icon) "
                  "values ($1, $2, $3, $4, $5, $6)",
                  object.Id, object.IntegrationId, object.Key, object.Name, object.Location,
                  Bytes{object.Icon});
}

std::optional<ExternalObject> TraceTable::ReadObject(ObjectId objectNumber) {
    Rows rows =
        FDatabase.Query("select o.id, o.integration_id, i.name, o.external_key, o.name, o.location, o.icon "
                        "from external_object o join integration i on i.id = o.integration_id "
                        "where o.id = $1",
                        objectNumber);
    if (!rows.Next()) return std::nullopt;
    return ExternalObject{rows.Int(0),  rows.Int(1),  rows.Text(2), rows.Text(3),
                          rows.Text(4), rows.Text(5), rows.Text(6)};
}

void TraceTable::Add(const Trace& trace) {
    FDatabase.Run("insert into trace (id, from_requirement, from_object, to_requirement, to_object, suspect) "
                  "values ($1, nullif($2, 0), nullif($3, 0), nullif($4, 0), nullif($5, 0), $6)",
                  trace.Id, trace.From.RequirementId, trace.From.ObjectNumber, trace.To.RequirementId,
                  trace.To.ObjectNumber, trace.Suspect);
}

ObjectId TraceTable::Find(const TraceEnd& from, const TraceEnd& to) {
    Rows rows = FDatabase.Query("select id from trace where coalesce(from_requirement, from_object) = $1 "
                                "and coalesce(to_requirement, to_object) = $2",
                                NumberOf(from), NumberOf(to));
    return rows.Next() ? rows.Int(0) : 0;
}

std::optional<Trace> TraceTable::Read(ObjectId traceId) {
    Rows rows =
        FDatabase.Query("select id, from_requirement, from_object, to_requirement, to_object, suspect "
                        "from trace where id = $1",
                        traceId);
    return rows.Next() ? std::optional(ToTrace(rows)) : std::nullopt;
}

std::vector<Trace> TraceTable::EndingAt(ObjectId requirementId) {
    return ToTraces(
        FDatabase.Query("select id, from_requirement, from_object, to_requirement, to_object, suspect "
                        "from trace where to_requirement = $1 order by id",
                        requirementId));
}

std::vector<Trace> TraceTable::StartingAt(ObjectId requirementId) {
    return ToTraces(
        FDatabase.Query("select id, from_requirement, from_object, to_requirement, to_object, suspect "
                        "from trace where from_requirement = $1 order by id",
                        requirementId));
}

void TraceTable::SetSuspect(ObjectId traceId, bool suspect) {
    FDatabase.Run("update trace set suspect = $2 where id = $1", traceId, suspect);
}

void TraceTable::MarkSuspect(ObjectId requirementId) {
    FDatabase.Run("update trace set suspect = 1 where from_requirement = $1", requirementId);
    FDatabase.Run("update trace set suspect = 1 where to_requirement = $1", requirementId);
}

void TraceTable::Remove(ObjectId traceId) {
    FDatabase.Run("delete from trace where id = $1", traceId);
}

void TraceTable::RemoveAllOf(ObjectId requirementId) {
    FDatabase.Run("delete from trace where from_requirement = $1", requirementId);
    FDatabase.Run("delete from trace where to_requirement = $1", requirementId);
}

} // namespace Backend
