#include <string>

#include "contracts/Exceptions.h"
#include "server/UQuoraneSession.h"

using namespace Quorane_TLB;

namespace {

// The same for all users; traces to source files are tied to it.
constexpr char16_t IntegrationIdentity[] = u"VantrelQuoraneAddin";

} // namespace

bool TQuoraneSession::HasIntegration() {
    const auto integrations =
        EnumerableStCollection(IntegrationManager()->Get_Integrations())->GetEnumerator();
    while (integrations->MoveNext())
        if (Cast<IIntegration>(integrations->GetCurrent())->Get_Name2() == IntegrationIdentity) return true;
    return false;
}

void TQuoraneSession::AddIntegration(const Handle<IStCollection>& icon) {
    const Handle<IIntegration> integration =
        CoIntegrationFactory::Create()->Create1(IntegrationIdentity, Session());
    Require(integration)->Set_Name2(IntegrationIdentity);
    integration->Set_Icon(icon);
    integration->save();
}
