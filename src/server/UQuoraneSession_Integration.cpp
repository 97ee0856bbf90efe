#include <string>

#include "contracts/Exceptions.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "server/UQuoraneSession.h"

using namespace Quorane_TLB;

namespace {

// The same for all users; traces to source files are tied to it.
constexpr char16_t IntegrationIdentity[] = u"VantrelQuoraneAddin";
constexpr int IconSize = 16;

// Red, green, blue for each pixel, row by row from the top.
Handle<IStCollection> IntegrationIcon() {
    const Handle<IStCollection> values = CoCollectionFactory::Create()->Create1();
    const TBitmap icon = NamedBitmap(AddInIconName, IconSize, TColor::Rgb(255, 255, 255));
    for (int y = 0; y < IconSize; ++y) {
        for (int x = 0; x < IconSize; ++x) {
            const TColor pixel = icon.Pixel(x, y);
            for (const std::uint8_t part : {pixel.Red(), pixel.Green(), pixel.Blue()})
                Require(values)->Add(Variant::Byte(part));
        }
    }
    return values;
}

} // namespace

void TQuoraneSession::EnsureIntegrationAdded() {
    if (HasIntegration()) return;
    const Handle<IStCollection> icon = IntegrationIcon();
    try {
        AddIntegration(icon);
    } catch (const EOleSysError&) {
        // A user without the right to add integrations works without one.
    }
}

bool TQuoraneSession::HasIntegration() {
    const auto integrations =
        EnumerableStCollection(Require(IntegrationManager())->Get_Integrations())->GetEnumerator();
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
