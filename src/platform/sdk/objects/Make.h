// Makes the objects behind the binding's interfaces from what the cache knows. The
// classes themselves are nobody's business but their own source's.
#pragma once

#include "platform/sdk/Channels.h"
#include "platform/sdk/objects/Objects.h"

#include <span>
#include <vector>

namespace Sdk {

// Refuses Add and Remove: what a server object hands out.
Handle<IStCollection> MakeCollection(std::vector<Variant> elements);
Handle<IStCollection> MakeNumbers(std::span<const std::int32_t> numbers);
// One number for each byte.
Handle<IStCollection> MakeBytes(const std::string& bytes);
// What a client fills itself.
Handle<IStCollection> MakeOwnCollection(std::vector<Variant> elements = {});
// Reads every element, of another implementation too. An empty handle raises.
std::vector<Variant> ElementsOf(const Handle<IStCollection>& collection);

// Dates of the server are instants; callers get them in local time.
double LocalDate(std::int64_t microsecondsUtc);

Handle<IQuoraneServer> MakeServer(const std::string& host, const TChannelFactory& channels);

// An empty handle for a number that nobody has.
Handle<IUser> MakeUser(const TSessionHandle& session, std::int32_t id);
Handle<IGroup> MakeGroup(const TSessionHandle& session, std::int32_t id);
Handle<IUser> MakeUser(const TSessionHandle& session, std::shared_ptr<const wire::User> user);
Handle<IGroup> MakeGroup(const TSessionHandle& session, std::shared_ptr<const wire::Group> group);
// The assignment is changed in place.
Handle<IDispatch> MakeAssignment(const TSessionHandle& session, std::shared_ptr<wire::Assignment> assignment);

Handle<IProject> MakeProject(const TSessionHandle& session, std::shared_ptr<const wire::Project> project);
Handle<IBaseline> MakeBaseline(const TSessionHandle& session, std::int32_t id);
Handle<IBaseline> MakeBaseline(const TSessionHandle& session, std::shared_ptr<const wire::Project> project,
                               const wire::Baseline& baseline);
Handle<IRequirementTree> MakeTree(const TSessionHandle& session, std::int32_t baselineId);

wire::RequirementTypeSummary SummaryOf(const wire::RequirementType& type);
// What a list tells of a type, before the type itself is read.
Handle<IRequirementType> MakeRequirementType(const TSessionHandle& session,
                                             const wire::RequirementTypeSummary& summary);
// An attribute of the type; the type is kept with it.
Handle<IAttribute> MakeAttribute(const TSessionHandle& session,
                                 std::shared_ptr<const wire::Attribute> attribute);

// Without a state: the attribute's default value.
Handle<IAttributeValue> MakeAttributeValue(const TSessionHandle& session,
                                           std::shared_ptr<const wire::Attribute> attribute,
                                           std::shared_ptr<TRequirementState> state);
Handle<IUDAListValue> MakeListValue(const TSessionHandle& session,
                                    std::shared_ptr<const wire::Attribute> attribute,
                                    std::shared_ptr<TRequirementState> state);
// Text, number, user or group.
Variant EntryValue(const TSessionHandle& session, const wire::ListEntry& entry);
Handle<IDispatch> MakeListEntry(const Variant& value, bool selected);

Handle<IRequirement> MakeRequirement(const TSessionHandle& session, std::shared_ptr<TRequirementState> state);
// As another object tells of it: read when more is asked for.
Handle<IRequirement> MakeRequirement(const TSessionHandle& session, const wire::RequirementSummary& summary);
Handle<IVersion> MakeVersion(const wire::Version& version);

// The reference is changed in place.
Handle<IDocumentReference> MakeReference(std::shared_ptr<wire::DocumentReference> reference);

Handle<IHistory> MakeHistory(const TSessionHandle& session, std::int32_t id, std::int32_t baselineId);
Handle<IDiscussion> MakeDiscussion(const TSessionHandle& session, std::int32_t requirementId);

Handle<ITrace> MakeTrace(const TSessionHandle& session, wire::Trace trace);
Handle<ITraceManager> MakeTraceManager(const TSessionHandle& session);
Handle<IIntegrationManager> MakeIntegrationManager(const TSessionHandle& session);
Handle<IIntegration> MakeIntegration(const TSessionHandle& session, wire::Integration integration);
Handle<IImageManager> MakeImageManager(const TSessionHandle& session);
Handle<IDispatch> MakeGlossary(const TSessionHandle& session, std::shared_ptr<const wire::Glossary> glossary);

Handle<IHTMLHelper> MakeHtmlHelper();
Handle<IHTMLHelperStatics> MakeHtmlHelperStatics();
Handle<IStInitializer> MakeInitializer();

} // namespace Sdk
