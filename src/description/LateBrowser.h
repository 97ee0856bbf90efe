// A browser control that starts the HTML engine with the first document: the panel is
// made at the start of the IDE, which should not pay for an engine that nobody needs yet.
#pragma once

#include <memory>
#include <string>

#include "contracts/HtmlEngine.h"

class TLateBrowser : public IWebBrowser {
public:
    // Takes the control's place in the parent, which must outlive this object.
    TLateBrowser(TWinControl& parent, std::string name);
    ~TLateBrowser() override;

    TWinControl& Parent() const { return FParent; }
    bool Started() const { return FBrowser != nullptr; }

    // These two start the engine, and raise EOleSysError when that fails.
    TWinControl& Control() override;
    void Navigate(const std::string& path) override;

    bool Busy() override;
    THtmlHandle<IHtmlObject> Document() override;
    THtmlHandle<IHtmlObject> Application() override;
    void SetFocus() override;
    std::int64_t EngineCalls() override;

private:
    IWebBrowser& Browser();

    TWinControl& FParent;
    const std::string FName;
    std::unique_ptr<IWebBrowser> FBrowser;
};
