#include "backend/store/ProjectTable.h"

namespace Backend {

void ProjectTable::Add(const Project& project) {
    FDatabase.Run("insert into project (id, name, description) values ($1, $2, $3)", project.Id, project.Name,
                  project.Description);
    int position = 0;
    for (ObjectId groupId : project.GroupIds)
        FDatabase.Run("insert into project_group (project_id, position, group_id) values ($1, $2, $3)",
                      project.Id, position++, groupId);
}

void ProjectTable::AddBaseline(const Baseline& baseline) {
    FDatabase.Run("insert into baseline (id, project_id, position, name, description, type, created) "
                  "values ($1, $2, (select count(*) from baseline where project_id = $2), $3, $4, $5, $6)",
                  baseline.Id, baseline.ProjectId, baseline.Name, baseline.Description,
                  static_cast<int>(baseline.Type), baseline.Created);
}

void ProjectTable::SetBaselineType(ObjectId baselineId, BaselineType type) {
    FDatabase.Run("update baseline set type = $2 where id = $1", baselineId, static_cast<int>(type));
}

void ProjectTable::GrantUser(ObjectId projectId, ObjectId userId, Role role) {
    FDatabase.Run("insert into project_right (project_id, subject_id, user_id, role) values ($1, $2, $2, $3) "
                  "on conflict (project_id, subject_id) do update set role = excluded.role",
                  projectId, userId, static_cast<int>(role));
}

void ProjectTable::GrantGroup(ObjectId projectId, ObjectId groupId, Role role) {
    FDatabase.Run(
        "insert into project_right (project_id, subject_id, group_id, role) values ($1, $2, $2, $3) "
        "on conflict (project_id, subject_id) do update set role = excluded.role",
        projectId, groupId, static_cast<int>(role));
}

std::vector<Project> ProjectTable::ReadAll() {
    std::vector<Project> projects;
    Rows rows = FDatabase.Query("select id, name, description from project order by name, id");
    while (rows.Next()) {
        Project project;
        project.Id = rows.Int(0);
        project.Name = rows.Text(1);
        project.Description = rows.Text(2);
        projects.push_back(std::move(project));
    }
    std::map<ObjectId, Project*> byId;
    for (Project& project : projects)
        byId[project.Id] = &project;
    ReadBaselines(byId);
    Rows types = FDatabase.Query("select id, project_id, name, tag, description, revision "
                                 "from requirement_type order by id");
    while (types.Next())
        byId[types.Int(1)]->Types.push_back(
            {types.Int(0), types.Text(2), types.Text(3), types.Text(4), types.Int64(5)});
    Rows groups =
        FDatabase.Query("select project_id, group_id from project_group order by project_id, position");
    while (groups.Next())
        byId[groups.Int(0)]->GroupIds.push_back(groups.Int(1));
    return projects;
}

void ProjectTable::ReadBaselines(std::map<ObjectId, Project*>& projects) {
    std::map<ObjectId, std::vector<ObjectId>> types;
    Rows nodes = FDatabase.Query("select baseline_id, node_id from tree_node where version_id is null "
                                 "order by baseline_id, order_key");
    while (nodes.Next())
        types[nodes.Int(0)].push_back(nodes.Int(1));
    Rows rows = FDatabase.Query("select id, project_id, name, description, type, created "
                                "from baseline order by project_id, position");
    while (rows.Next()) {
        Baseline baseline{rows.Int(0),
                          rows.Int(1),
                          rows.Text(2),
                          rows.Text(3),
                          static_cast<BaselineType>(rows.Int(4)),
                          rows.Int64(5),
                          types[rows.Int(0)]};
        Project& project = *projects[baseline.ProjectId];
        if (baseline.Type == BaselineType::Current) project.CurrentBaselineId = baseline.Id;
        project.Baselines.push_back(std::move(baseline));
    }
}

std::optional<Baseline> ProjectTable::FindBaseline(ObjectId baselineId) {
    Rows rows = FDatabase.Query("select id, project_id, name, description, type, created "
                                "from baseline where id = $1",
                                baselineId);
    if (!rows.Next()) return std::nullopt;
    return Baseline{
        rows.Int(0),   rows.Int(1), rows.Text(2), rows.Text(3), static_cast<BaselineType>(rows.Int(4)),
        rows.Int64(5), {}};
}

ObjectId ProjectTable::CurrentBaseline(ObjectId projectId) {
    Rows rows = FDatabase.Query("select id from baseline where project_id = $1 and type = 1", projectId);
    return rows.Next() ? rows.Int(0) : 0;
}

ObjectId ProjectTable::Find(const std::string& name) {
    Rows rows = FDatabase.Query("select id from project where name = $1", name);
    return rows.Next() ? rows.Int(0) : 0;
}

std::string ProjectTable::NameOf(ObjectId projectId) {
    Rows rows = FDatabase.Query("select name from project where id = $1", projectId);
    return rows.Next() ? rows.Text(0) : std::string();
}

bool ProjectTable::HasGroup(ObjectId projectId, ObjectId groupId) {
    return FDatabase
        .Query("select 1 from project_group where project_id = $1 and group_id = $2", projectId, groupId)
        .Next();
}

std::optional<Role> ProjectTable::RoleOf(ObjectId projectId, ObjectId userId) {
    Rows rows = FDatabase.Query("select max(role) from project_right where project_id = $1 and (user_id = $2 "
                                "or group_id in (select group_id from group_member where user_id = $2))",
                                projectId, userId);
    if (!rows.Next() || rows.IsNull(0)) return std::nullopt;
    return static_cast<Role>(rows.Int(0));
}

std::map<ObjectId, Role> ProjectTable::RolesOf(ObjectId userId) {
    std::map<ObjectId, Role> roles;
    Rows rows = FDatabase.Query("select project_id, max(role) from project_right where user_id = $1 "
                                "or group_id in (select group_id from group_member where user_id = $1) "
                                "group by project_id",
                                userId);
    while (rows.Next())
        roles[rows.Int(0)] = static_cast<Role>(rows.Int(1));
    return roles;
}

} // namespace Backend
