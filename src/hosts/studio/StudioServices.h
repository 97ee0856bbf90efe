// The studio's side of the host contract: everything but editors and docks, and the
// door to all of it.
#pragma once

#include "contracts/HostServices.h"
#include "hosts/studio/DockServices.h"
#include "hosts/studio/editor/EditorServices.h"
#include "platform/widgets/look/ImageList.h"

#include <map>
#include <optional>
#include <vector>

class TStudioWindow;

class TWizardServices : public IHostWizardServices {
public:
    std::int32_t AddWizard(std::shared_ptr<IHostWizard> wizard) override;
    void RemoveWizard(std::int32_t index) override;

    std::vector<std::string> Names() const;

private:
    std::map<std::int32_t, std::shared_ptr<IHostWizard>> FWizards;
    std::int32_t FNextIndex = 0;
};

class TImageServices : public IHostNServices {
public:
    int AddImages(const TImageList& images) override;
    const TImageList& Images() const { return FImages; }

private:
    TImageList FImages{nullptr, "HostImages"};
};

class TStartupServices : public IHostStartup {
public:
    int AddMainFormCreated(std::function<void()> handler) override;
    void RemoveMainFormCreated(int token) override;

    // Runs all handlers and forgets them. A failure shows in the standard error box.
    void TellMainFormCreated();

private:
    std::map<int, std::function<void()>> FHandlers;
    int FNextToken = 1;
    bool FTold = false;
};

class TMainFormServices : public IHostMainForm {
public:
    TMainFormServices(TStudioWindow& window, const TImageList& images);
    ~TMainFormServices() override;

    IHostMenu* FindMenu(const std::string& name) override;
    // Takes all inserted items away, whose code is about to go.
    void DropMenuItems();

private:
    class TMenu;
    std::unique_ptr<TMenu> FViewsMenu;
};

class TStudioServices : public IVantrelIDEServices {
public:
    explicit TStudioServices(IDesktopStore& store)
        : FDocks(store) {}

    IHostService* Find(std::type_index service) override;

    // The services of the window exist from here on.
    void AttachWindow(TStudioWindow& window);
    void DetachWindow();
    // Takes everything away that holds a module's code. Asks nothing.
    void DropModuleParts();

    TWizardServices& Wizards() { return FWizards; }
    TStartupServices& Startup() { return FStartup; }

private:
    TWizardServices FWizards;
    TImageServices FImages;
    TStartupServices FStartup;
    TDockServices FDocks;
    TStudioWindow* FWindow = nullptr;
    std::optional<TMainFormServices> FMainForm;
    std::optional<TModuleServices> FModules;
    std::optional<TEditorServices> FEditors;
};
