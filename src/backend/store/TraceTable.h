// Traces between requirements, and between requirements and the objects of other
// tools, with the integrations that those objects belong to.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <optional>

namespace Backend {

// Exactly one of the two is set.
struct TraceEnd {
    ObjectId RequirementId = 0;
    ObjectId ObjectNumber = 0;
};

struct Trace {
    ObjectId Id = 0;
    TraceEnd From, To;
    bool Suspect = false;
};

class TraceTable {
public:
    explicit TraceTable(Database& database)
        : FDatabase(database) {}

    std::vector<Integration> Integrations();
    std::optional<Integration> FindIntegration(const std::string& name);
    // Replaces the one of the same number.
    void SaveIntegration(const Integration& integration);

    ObjectId FindObject(ObjectId integrationId, const std::string& key); // 0: there is none
    void AddObject(const ExternalObject& object);
    std::optional<ExternalObject> ReadObject(ObjectId objectNumber);

    void Add(const Trace& trace);
    ObjectId Find(const TraceEnd& from, const TraceEnd& to); // 0: there is none
    std::optional<Trace> Read(ObjectId traceId);
    std::vector<Trace> EndingAt(ObjectId requirementId);
    std::vector<Trace> StartingAt(ObjectId requirementId);
    void SetSuspect(ObjectId traceId, bool suspect);
    // All that start or end at it.
    void MarkSuspect(ObjectId requirementId);
    void Remove(ObjectId traceId);
    void RemoveAllOf(ObjectId requirementId);

private:
    Database& FDatabase;
};

} // namespace Backend
