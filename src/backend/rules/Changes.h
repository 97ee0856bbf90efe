// What is asked for when a requirement is made or changed, by a client's save and by
// the bulk writer alike.
#pragma once

#include "backend/store/Model.h"

#include <optional>
#include <string>
#include <vector>

namespace Backend {

struct NewRequirement {
    ObjectId ProjectId = 0;
    ObjectId TypeId = 0;   // of a first-level requirement
    ObjectId ParentId = 0; // or the requirement that it goes under, as its last child
    std::string Name;
    std::string Description; // well-formed HTML
    std::string Validation;
    ObjectId OwnerId = 0;
    int StatusIndex = 0;                // -1: none chosen
    int PriorityIndex = 0;              // -1: none chosen
    std::vector<AttributeValue> Values; // others hold their attribute's default
    std::vector<DocumentReference> References;
    std::vector<Assignment> Responsible;
};

// Who wrote something and when. Comment belongs to the history.
struct Revision {
    ObjectId UserId = 0;
    Instant Date = 0;
    std::string Comment;
};

// What a save changes; what is absent stays.
struct RequirementChange {
    std::optional<std::string> Name;
    std::optional<std::string> Description;
    std::optional<std::string> Validation;
    std::optional<ObjectId> OwnerId;
    std::optional<int> StatusIndex;
    std::optional<int> PriorityIndex;
    std::vector<AttributeValue> Values;
    std::optional<std::vector<DocumentReference>> References;
    std::optional<std::vector<Assignment>> Responsible;
};

} // namespace Backend
