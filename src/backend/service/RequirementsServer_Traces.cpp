#include "backend/rules/Rules.h"
#include "backend/service/RequirementsServer.h"
#include "backend/service/Wire.h"

namespace Backend {

namespace {

constexpr std::size_t MaxKeyLength = 4096;

Trace FindTrace(Connection& connection, ObjectId traceId) {
    if (auto trace = connection.Traces.Read(traceId)) return *trace;
    throw Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException",
                  "There is no trace " + std::to_string(traceId) + ".");
}

std::string LastComponent(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos || separator + 1 == path.size() ? path : path.substr(separator + 1);
}

ObjectId ExternalEnd(Connection& connection, const wire::IntegrationObject& message) {
    CheckName("The object's key", message.external_key(), MaxKeyLength);
    CheckText("The object's name", message.name(), MaxRequirementName);
    CheckText("The object's location", message.location(), MaxKeyLength);
    CheckIcon("The object's picture", message.icon());
    const auto integration = connection.Traces.FindIntegration(message.integration_name());
    if (!integration)
        throw Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException",
                      "There is no integration " + message.integration_name() + ".");
    if (const ObjectId known = connection.Traces.FindObject(integration->Id, message.external_key()))
        return known;
    const ExternalObject made{connection.Numbers.Next(),
                              integration->Id,
                              integration->Name,
                              message.external_key(),
                              message.name().empty() ? LastComponent(message.external_key()) : message.name(),
                              message.location().empty() ? message.external_key() : message.location(),
                              message.icon()};
    connection.Traces.AddObject(made);
    return made.Id;
}

} // namespace

void RequirementsServer::FillTraceEnd(Connection& connection, const Caller& caller, const TraceEnd& end,
                                      wire::TraceEnd& message) {
    if (end.ObjectNumber) {
        ToWire(connection.Traces.ReadObject(end.ObjectNumber).value(), *message.mutable_external());
        return;
    }
    wire::RequirementSummary& summary = *message.mutable_requirement();
    summary.set_id(end.RequirementId);
    const ObjectId projectId = connection.Requirements.ProjectOf(end.RequirementId);
    summary.set_project_id(projectId);
    // Of a project that the user does not see, the trace shows no more than the number.
    if (!caller.Administrator && !connection.Projects.RoleOf(projectId, caller.UserId)) return;
    summary.set_project_name(connection.Projects.NameOf(projectId));
    const auto place =
        connection.Trees.Find(connection.Projects.CurrentBaseline(projectId), end.RequirementId);
    if (!place) return;
    const RequirementVersion version = connection.Requirements.ReadVersion(place->VersionId).value();
    const RequirementType type = connection.Types.Read(version.TypeId).value();
    summary.set_name(version.Name);
    summary.set_serial_number(SerialNumber(type.Tag, end.RequirementId));
    summary.set_requirement_type_id(type.Id);
    summary.set_requirement_type_name(type.Name);
    summary.set_requirement_type_tag(type.Tag);
    summary.set_baseline_id(place->BaselineId);
    ToWire(version.Number, *summary.mutable_version());
}

void RequirementsServer::FillTrace(Connection& connection, const Caller& caller, const Trace& trace,
                                   wire::Trace& message) {
    message.set_id(trace.Id);
    message.set_suspect(trace.Suspect);
    FillTraceEnd(connection, caller, trace.From, *message.mutable_from());
    FillTraceEnd(connection, caller, trace.To, *message.mutable_to());
}

grpc::Status RequirementsServer::ListTraces(Context* context, const wire::ListTracesRequest* request,
                                            wire::ListTracesReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        const ObjectId id = PlaceIn(connection, caller, request->requirement()).NodeId;
        for (const Trace& trace : connection.Traces.EndingAt(id))
            FillTrace(connection, caller, trace, *reply->add_traces_from());
        for (const Trace& trace : connection.Traces.StartingAt(id))
            FillTrace(connection, caller, trace, *reply->add_traces_to());
    });
}

grpc::Status RequirementsServer::CreateTrace(Context* context, const wire::CreateTraceRequest* request,
                                             wire::CreateTraceReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TraceEnd near{CurrentPlace(connection, caller, request->requirement_id(), Role::Editor).NodeId,
                            0};
        TraceEnd far;
        if (request->other_case() == wire::CreateTraceRequest::kOtherRequirementId)
            far.RequirementId =
                CurrentPlace(connection, caller, request->other_requirement_id(), Role::Editor).NodeId;
        else
            far.ObjectNumber = ExternalEnd(connection, request->external());
        if (far.RequirementId == near.RequirementId)
            throw RuleViolation("A requirement cannot be traced to itself.");
        Trace trace;
        trace.From = request->away() ? near : far;
        trace.To = request->away() ? far : near;
        if (connection.Traces.Find(trace.From, trace.To))
            throw RuleViolation("There is such a trace already.");
        trace.Id = connection.Numbers.Next();
        connection.Traces.Add(trace);
        FillTrace(connection, caller, trace, *reply->mutable_trace());
    });
}

grpc::Status RequirementsServer::SaveTrace(Context* context, const wire::SaveTraceRequest* request,
                                           wire::SaveTraceReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        DemandTraceRights(connection, caller, FindTrace(connection, request->id()));
        connection.Traces.SetSuspect(request->id(), request->suspect());
    });
}

grpc::Status RequirementsServer::RemoveTrace(Context* context, const wire::RemoveTraceRequest* request,
                                             wire::RemoveTraceReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        DemandTraceRights(connection, caller, FindTrace(connection, request->id()));
        connection.Traces.Remove(request->id());
    });
}

void RequirementsServer::DemandTraceRights(Connection& connection, const Caller& caller, const Trace& trace) {
    // The right at either end is enough: who edits a requirement edits its traces.
    if (trace.From.RequirementId && trace.To.RequirementId) {
        const ObjectId from = connection.Requirements.ProjectOf(trace.From.RequirementId);
        const auto role = connection.Projects.RoleOf(from, caller.UserId);
        if (caller.Administrator || (role && *role >= Role::Editor)) return;
    }
    const ObjectId end = trace.To.RequirementId ? trace.To.RequirementId : trace.From.RequirementId;
    DemandRole(connection, caller, connection.Requirements.ProjectOf(end), Role::Editor);
}

} // namespace Backend
