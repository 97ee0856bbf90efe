#include "description/LateBrowser.h"

TLateBrowser::TLateBrowser(TWinControl& parent, std::string name)
    : FParent(parent)
    , FName(std::move(name)) {}

TLateBrowser::~TLateBrowser() = default;

IWebBrowser& TLateBrowser::Browser() {
    if (FBrowser) return *FBrowser;
    FBrowser = CreateWebBrowser(FParent, FName);
    FBrowser->OnDownloadComplete = [this] {
        if (OnDownloadComplete) OnDownloadComplete();
    };
    FBrowser->OnEngineGone = [this] {
        if (OnEngineGone) OnEngineGone();
    };
    FBrowser->OnPicturesLost = [this](int count) {
        if (OnPicturesLost) OnPicturesLost(count);
    };
    FBrowser->OnLinkClick = [this](const std::string& address) {
        if (OnLinkClick) OnLinkClick(address);
    };
    FBrowser->OnLinkHover = [this](const std::string& address) {
        if (OnLinkHover) OnLinkHover(address);
    };
    FBrowser->OnTextChanged = [this](const std::u16string& html) {
        if (OnTextChanged) OnTextChanged(html);
    };
    return *FBrowser;
}

TWinControl& TLateBrowser::Control() {
    return Browser().Control();
}

void TLateBrowser::Navigate(const std::string& path) {
    Browser().Navigate(path);
}

bool TLateBrowser::Busy() {
    return FBrowser && FBrowser->Busy();
}

THtmlHandle<IHtmlObject> TLateBrowser::Document() {
    return FBrowser ? FBrowser->Document() : nullptr;
}

THtmlHandle<IHtmlObject> TLateBrowser::Application() {
    return FBrowser ? FBrowser->Application() : nullptr;
}

void TLateBrowser::SetFocus() {
    if (FBrowser) FBrowser->SetFocus();
}

std::int64_t TLateBrowser::EngineCalls() {
    return FBrowser ? FBrowser->EngineCalls() : 0;
}
