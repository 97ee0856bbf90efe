#include "hosts/studio/editor/TabFrame.h"

#include "contracts/Exceptions.h"
#include "hosts/studio/editor/EditorArea.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TTabFrame::TTabFrame(TEditorArea& area)
    : FArea(&area)
    , FPage(new TFrame(nullptr, "TabFrameBody")) {
    FPage->setParent(&area);
    FPage->hide();
}

TTabFrame::~TTabFrame() {
    // A frame that was never shown has no tab that would own its page.
    if (FPage && (!FArea || FArea->indexOf(FPage) < 0)) delete FPage.data();
}

void TTabFrame::DestroyPage() {
    delete FPage.data();
}

void TTabFrame::RequireBody() const {
    if (!FPage) throw Exception("The tab is closed.");
}

TFrame& TTabFrame::Body() {
    RequireBody();
    return *FPage;
}

void TTabFrame::SetCaption(const std::string& caption) {
    FCaption = ToQt(caption);
    if (FArea && FPage) FArea->RefreshTab(*FPage);
}

void TTabFrame::SetTitle(const std::string& title) {
    FTitle = ToQt(title);
    if (FArea && FPage) FArea->RefreshTab(*FPage);
}

void TTabFrame::SetIcon(const std::string& iconName) {
    FIconName = iconName;
    if (FArea && FPage) FArea->RefreshTab(*FPage);
}

QIcon TTabFrame::Icon() const {
    return FIconName.empty() ? QIcon() : NamedIcon(FIconName);
}

void TTabFrame::SetHelpKeyword(const std::string& keyword) {
    RequireBody();
    FPage->SetHelpKeyword(keyword);
}

void TTabFrame::Show() {
    RequireBody();
    if (FArea) FArea->ShowFrame(*this);
}

bool TTabFrame::Close() {
    if (!FPage) return true;
    // The handler may let go of the last handle or ask for closing again.
    if (FClosing) return false;
    FClosing = true;
    const auto handler = OnClose;
    bool allowed = true;
    const bool ran = Application().Dispatch(FPage, [&] { allowed = !handler || handler(); });
    FClosing = false;
    if (!ran || !allowed) return false;
    if (FArea) FArea->RemoveFrame(*this);
    return true;
}
