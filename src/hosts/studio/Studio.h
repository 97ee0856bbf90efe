// The host as a whole: services, add-in and window, in the order in which they come
// up and go.
#pragma once

#include "hosts/studio/AddInModule.h"
#include "hosts/studio/DesktopStore.h"
#include "hosts/studio/StudioServices.h"
#include "hosts/studio/StudioWindow.h"

struct TStudioOptions {
    // The add-in; empty for none.
    std::filesystem::path Module;
    // Where the desktop is kept.
    std::filesystem::path Desktop;

    // The add-in beside the program and the desktop in the user's configuration folder.
    static TStudioOptions Default();
};

class TStudio {
public:
    // Loads the add-in and lets it register, makes the window, tells that the main
    // form exists. The window is not shown yet. An add-in that cannot be loaded
    // leaves a note in the window and an editor that works.
    explicit TStudio(const TStudioOptions& options);
    // Unloads the add-in, then takes the window away.
    ~TStudio();

    TStudioWindow& Window() { return *FWindow; }
    TStudioServices& Services() { return FServices; }
    bool HasModule() const { return FModule != nullptr; }

    // Takes the add-in out of the running studio; without one nothing happens.
    void UnloadModule();

private:
    void LoadModule(const std::filesystem::path& path);

    TDesktopStore FStore;
    TStudioServices FServices;
    std::unique_ptr<TAddInModule> FModule;
    std::unique_ptr<TStudioWindow> FWindow;
    std::string FModuleFailure;
};
