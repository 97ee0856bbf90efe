#include "backend/rules/Rules.h"
#include "backend/service/RequirementsServer.h"
#include "backend/service/Wire.h"

namespace Backend {

namespace {

void FillPermissions(Role role, wire::Permissions& message) {
    message.set_discuss(role >= Role::Discusser);
    message.set_edit(role >= Role::Editor);
    message.set_create(role >= Role::Editor);
    message.set_remove(role >= Role::Editor);
    message.set_trace(role >= Role::Editor);
}

} // namespace

grpc::Status RequirementsServer::GetDirectory(Context* context, const wire::GetDirectoryRequest* request,
                                              wire::GetDirectoryReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller&) {
        if (connection.Accounts.DirectoryRevision() != request->known_revision())
            ToWire(connection.Accounts.ReadDirectory(), *reply->mutable_directory());
    });
}

grpc::Status RequirementsServer::ListProjects(Context* context, const wire::ListProjectsRequest* request,
                                              wire::ListProjectsReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        const std::map<ObjectId, Role> roles = connection.Projects.RolesOf(caller.UserId);
        for (const Project& project : connection.Projects.ReadAll()) {
            const auto role = roles.find(project.Id);
            if (!caller.Administrator && role == roles.end()) continue;
            wire::Project& message = *reply->add_projects();
            ToWire(project, message);
            FillPermissions(caller.Administrator ? Role::Manager : role->second,
                            *message.mutable_permissions());
        }
        if (connection.Accounts.DirectoryRevision() != request->known_directory_revision())
            ToWire(connection.Accounts.ReadDirectory(), *reply->mutable_directory());
    });
}

grpc::Status RequirementsServer::GetRequirementType(Context* context,
                                                    const wire::GetRequirementTypeRequest* request,
                                                    wire::GetRequirementTypeReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        const std::optional<RequirementType> type = connection.Types.Read(request->id());
        if (!type)
            throw Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException",
                          "There is no requirement type " + std::to_string(request->id()) + ".");
        DemandRole(connection, caller, type->ProjectId, Role::Reader);
        if (type->Revision != request->known_revision()) ToWire(*type, *reply->mutable_requirement_type());
    });
}

grpc::Status RequirementsServer::GetGlossaries(Context* context, const wire::GetGlossariesRequest* request,
                                               wire::GetGlossariesReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        DemandRole(connection, caller, request->project_id(), Role::Reader);
        for (const Glossary& glossary : connection.Glossaries.ReadAll(request->project_id()))
            ToWire(glossary, *reply->add_glossaries());
    });
}

grpc::Status RequirementsServer::ListIntegrations(Context* context, const wire::ListIntegrationsRequest*,
                                                  wire::ListIntegrationsReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller&) {
        for (const Integration& integration : connection.Traces.Integrations())
            ToWire(integration, *reply->add_integrations());
    });
}

grpc::Status RequirementsServer::SaveIntegration(Context* context,
                                                 const wire::SaveIntegrationRequest* request,
                                                 wire::SaveIntegrationReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        DemandAnyRole(connection, caller, Role::Editor);
        const wire::Integration& message = request->integration();
        Integration integration{message.id(), message.name(), message.library_name(), message.icon()};
        CheckName("The integration's name", integration.Name, MaxRequirementName);
        CheckText("The integration's library name", integration.LibraryName, MaxRequirementName);
        CheckIcon("The integration's picture", integration.Icon);
        const auto same = connection.Traces.FindIntegration(integration.Name);
        if (same && same->Id != integration.Id)
            throw RuleViolation("There is an integration " + integration.Name + " already.");
        const auto all = connection.Traces.Integrations();
        const bool known = std::ranges::find(all, integration.Id, &Integration::Id) != all.end();
        if (integration.Id != 0 && !known)
            throw Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException",
                          "There is no integration " + std::to_string(integration.Id) + ".");
        if (integration.Id == 0) integration.Id = connection.Numbers.Next();
        connection.Traces.SaveIntegration(integration);
        reply->set_id(integration.Id);
    });
}

} // namespace Backend
