// Projects, their baselines, and who may do what in them.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <map>
#include <optional>

namespace Backend {

class ProjectTable {
public:
    explicit ProjectTable(Database& database)
        : FDatabase(database) {}

    // Without baselines and types.
    void Add(const Project& project);
    // After the project's other baselines.
    void AddBaseline(const Baseline& baseline);
    void SetBaselineType(ObjectId baselineId, BaselineType type);
    // A later grant replaces an earlier one.
    void GrantUser(ObjectId projectId, ObjectId userId, Role role);
    void GrantGroup(ObjectId projectId, ObjectId groupId, Role role);

    // Everything that a project and its baselines show, in the order of their names.
    std::vector<Project> ReadAll();
    std::optional<Baseline> FindBaseline(ObjectId baselineId); // without its types
    ObjectId CurrentBaseline(ObjectId projectId);              // 0: no such project
    ObjectId Find(const std::string& name);                    // 0: there is none
    std::string NameOf(ObjectId projectId);                    // empty: there is none
    bool HasGroup(ObjectId projectId, ObjectId groupId);

    // The highest role that a user has by himself or through a group.
    std::optional<Role> RoleOf(ObjectId projectId, ObjectId userId);
    std::map<ObjectId, Role> RolesOf(ObjectId userId);

private:
    void ReadBaselines(std::map<ObjectId, Project*>& projects);

    Database& FDatabase;
};

} // namespace Backend
