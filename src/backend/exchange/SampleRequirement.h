// One requirement of a sample project: what it was in its first version, and each
// change on its way to what its text tells.
#pragma once

#include "backend/exchange/SampleText.h"
#include "backend/service/BulkWriter.h"

#include <string>
#include <utility>
#include <vector>

namespace Exchange {

// What the requirements of one type have in common.
struct SampleType {
    Backend::ObjectId Id = 0;
    std::vector<std::string> Statuses; // the rejected one last, when there is one
    bool HasRejected = false;
    std::vector<std::string> Priorities;
    std::vector<std::string> Comments; // on reaching the status of the same position
    std::string Owner;
    std::map<std::string, SampleAttribute> Attributes;
};

struct SampleStep {
    Backend::Revision Revision;
    Backend::RequirementChange Change;
};

struct SampleRequirement {
    const OutlineEntry* Entry = nullptr;
    int Parent = -1; // position of the parent among the project's requirements, or -1
    Backend::NewRequirement First;
    Backend::Revision Created;
    std::vector<SampleStep> Steps;
    Backend::ObjectId Id = 0; // once it is written
};

// What planning needs beside the entry.
struct SampleSurroundings {
    const NameMap& Users;
    const NameMap& Groups;
    Backend::Instant Start;      // of the project
    Backend::ObjectId ManagerId; // who accepts
    std::function<std::string(const std::string& file)> Picture;
};

// Index is the position in the project, by which its dates differ from others'.
SampleRequirement PlanRequirement(const OutlineEntry& entry, int index, const SampleType& type,
                                  const SampleSurroundings& surroundings);

// The value of that name; raises OutlineError at the entry when there is none.
Backend::ObjectId Find(const NameMap& names, const std::string& name, const OutlineEntry& entry);

} // namespace Exchange
