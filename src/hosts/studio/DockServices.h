// Dock areas of the studio's window for dockable forms.
#pragma once

#include "contracts/DockServices.h"

#include <map>
#include <memory>
#include <string>

class TStudioWindow;

class TDockServices : public IHostDockServices {
public:
    explicit TDockServices(IDesktopStore& store)
        : FStore(store) {}

    // The window in which sites are made; empty before it exists and when it goes.
    void SetWindow(TStudioWindow* window) { FWindow = window; }

    std::unique_ptr<IDockSite> AddDockableForm(TForm& form, IDockEvents& events) override;
    void FocusWindow(TForm& form) override;
    IDesktopStore& IDEIniFile() override;
    void RegisterDesktopFormClass(const std::string& className, const std::string& section,
                                  const std::string& name) override;

private:
    IDesktopStore& FStore;
    TStudioWindow* FWindow = nullptr;
    // Section of each form by its class.
    std::map<std::string, std::string> FFormClasses;
};
