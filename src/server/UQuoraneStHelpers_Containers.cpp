#include <utility>

#include "contracts/Exceptions.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

TProjectContainer::TProjectContainer(Handle<IProject> project)
    : Project(std::move(project)) {}
TProjectContainer::~TProjectContainer() = default;

TBaseLineContainer::TBaseLineContainer(Handle<IBaseline> baseline)
    : Baseline(std::move(baseline)) {}
TBaseLineContainer::~TBaseLineContainer() = default;

TCustomTabContainer::TCustomTabContainer(Handle<ICustomTab> customTab)
    : CustomTab(std::move(customTab)) {}
TCustomTabContainer::~TCustomTabContainer() = default;

TRequirementTreeNodeContainer::TRequirementTreeNodeContainer(Handle<IRequirementTreeNode> node,
                                                             Handle<IBaseline> baseline)
    : Node(std::move(node))
    , Baseline(std::move(baseline)) {}
TRequirementTreeNodeContainer::~TRequirementTreeNodeContainer() = default;

Handle<IRequirement> TRequirementTreeNodeContainer::GetRequirement() const {
    if (Require(Node)->Get_IsRequirement() == WordFalse) throw Exception(SNotARequirementNode);
    if (Require(Baseline)->Get_Type() == Baseline->Get_TYPE_CURRENT())
        return CurrentSession().FindLatestRequirement(Node->Get_ID()->Get_IDNumber());
    return CurrentSession().FindRequirement(Cast<IRequirementID>(Node->Get_ID()));
}

void TRequirementTreeNodeContainer::RefreshRequirement(Handle<IRequirementTreeNode> node) {
    Node = std::move(node);
}

TUserContainer::TUserContainer(Handle<IUser> user)
    : User(std::move(user)) {}
TUserContainer::~TUserContainer() = default;

TGroupMemberAssignmentContainer::TGroupMemberAssignmentContainer(Handle<IGroupMemberAssignment> assignment)
    : Assignment(std::move(assignment)) {}
TGroupMemberAssignmentContainer::~TGroupMemberAssignmentContainer() = default;

THistoryRevisionContainer::THistoryRevisionContainer(Handle<IHistoryRevision> revision)
    : Revision(std::move(revision)) {}
THistoryRevisionContainer::~THistoryRevisionContainer() = default;

TDocRefContainer::TDocRefContainer(Handle<IDocumentReference> reference, std::string text,
                                   std::int32_t position)
    : Reference(std::move(reference))
    , Text(std::move(text))
    , Position(position) {}
TDocRefContainer::~TDocRefContainer() = default;

TTraceContainer::TTraceContainer(Handle<ITrace> trace, Handle<IIntegrationObject> integrationObject)
    : Trace(std::move(trace))
    , IntegrationObject(std::move(integrationObject)) {}
TTraceContainer::~TTraceContainer() = default;

TAttributeValueContainer::TAttributeValueContainer(Handle<IAttributeValue> value)
    : Value(std::move(value)) {}
TAttributeValueContainer::~TAttributeValueContainer() = default;
