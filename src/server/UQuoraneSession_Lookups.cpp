#include "server/UQuoraneSession.h"

using namespace Quorane_TLB;

Handle<IRequirement> TQuoraneSession::FindRequirement(const Handle<IRequirementID>& id) {
    return Cast<IRequirement>(Session()->get(id));
}

Handle<IRequirement> TQuoraneSession::FindLatestRequirement(std::int32_t id) {
    return Session()->getLatestRequirement(id);
}

Handle<IRequirementType> TQuoraneSession::FindRequirementType(const Handle<IQuoraneObjectID>& id) {
    return Cast<IRequirementType>(Session()->get(id));
}

Handle<IEnumerableStCollection> TQuoraneSession::GetProjects() {
    return EnumerableStCollection(Session()->Get_Projects());
}

Handle<IEnumerableStCollection> TQuoraneSession::GetUserList() {
    return EnumerableStCollection(Session()->Get_Users());
}

Handle<IEnumerableStCollection> TQuoraneSession::GetGroupList() {
    return EnumerableStCollection(Session()->Get_Groups());
}

Handle<IEnumerableStCollection> TQuoraneSession::GetProjectRequirementTypes(const Handle<IProject>& project) {
    return EnumerableStCollection(Require(Require(project)->Get_CurrentBaseline())->Get_RequirementTypes());
}

Handle<IIntegrationManager> TQuoraneSession::IntegrationManager() {
    return Session()->Get_IntegrationManager();
}

Handle<ITraceManager> TQuoraneSession::TraceManager() {
    return Session()->Get_TraceManager();
}

Handle<IRequirement> TQuoraneSession::CreateRequirementAsChild(const Handle<IRequirementTreeNode>& node,
                                                               const Handle<IProject>& project,
                                                               const Handle<IRequirement>& requirement,
                                                               const std::string& name) {
    return CreateRequirementAboveOrBelow(node, project, requirement, name, Require(node)->Get_ChildCount());
}

Handle<IRequirement> TQuoraneSession::CreateRequirementAboveOrBelow(const Handle<IRequirementTreeNode>& node,
                                                                    const Handle<IProject>& project,
                                                                    const Handle<IRequirement>& requirement,
                                                                    const std::string& name,
                                                                    std::int32_t position) {
    const Handle<IRequirementFactory> factory = CoRequirementFactory::Create();
    if (Require(node)->Get_IsRequirement() != WordFalse)
        return factory->Create2(Wide(name), requirement, position, Session());
    const Handle<IRequirementType> type = FindRequirementType(node->Get_ID());
    return factory->Create1(Wide(name), project, type, position, Session());
}
