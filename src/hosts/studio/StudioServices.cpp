#include "hosts/studio/StudioServices.h"

#include "hosts/studio/StudioWindow.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Menus.h"

#include <QMenu>

#include <algorithm>

std::int32_t TWizardServices::AddWizard(std::shared_ptr<IHostWizard> wizard) {
    const std::string identity = wizard->GetIDString();
    for (const auto& [index, known] : FWizards)
        if (known->GetIDString() == identity)
            throw Exception("A wizard with the identity " + identity + " is registered already.");
    FWizards.emplace(FNextIndex, std::move(wizard));
    return FNextIndex++;
}

void TWizardServices::RemoveWizard(std::int32_t index) {
    const auto found = FWizards.find(index);
    if (found == FWizards.end()) throw Exception("No wizard has the index " + std::to_string(index) + ".");
    const std::shared_ptr<IHostWizard> wizard = found->second;
    FWizards.erase(found);
    wizard->Destroyed();
}

std::vector<std::string> TWizardServices::Names() const {
    std::vector<std::string> names;
    for (const auto& [index, wizard] : FWizards)
        names.push_back(wizard->GetName());
    return names;
}

int TImageServices::AddImages(const TImageList& images) {
    const int first = FImages.Count();
    for (int i = 0; i < images.Count(); ++i)
        FImages.AddFrom(images, i);
    return first;
}

int TStartupServices::AddMainFormCreated(std::function<void()> handler) {
    const int token = FNextToken++;
    if (!FTold) FHandlers.emplace(token, std::move(handler));
    return token;
}

void TStartupServices::RemoveMainFormCreated(int token) {
    FHandlers.erase(token);
}

void TStartupServices::TellMainFormCreated() {
    FTold = true;
    while (!FHandlers.empty()) {
        const auto handler = std::move(FHandlers.begin()->second);
        FHandlers.erase(FHandlers.begin());
        Application().Dispatch(nullptr, handler);
    }
}

class TMainFormServices::TMenu : public IHostMenu {
public:
    TMenu(QMenu& menu, const TImageList& images)
        : FMenu(menu)
        , FImages(images) {}

    TMenuItem& Insert(int index, std::unique_ptr<TMenuItem> item) override {
        const QList<QAction*> actions = FMenu.actions();
        const bool inside = index >= 0 && index < actions.size();
        item->SetImages(FImages);
        FMenu.insertAction(inside ? actions.at(index) : nullptr, item.get());
        FItems.push_back(std::move(item));
        return *FItems.back();
    }
    void Drop() { FItems.clear(); }

private:
    QMenu& FMenu;
    const TImageList& FImages;
    std::vector<std::unique_ptr<TMenuItem>> FItems;
};

TMainFormServices::TMainFormServices(TStudioWindow& window, const TImageList& images)
    : FViewsMenu(std::make_unique<TMenu>(window.ViewsMenu(), images)) {}

TMainFormServices::~TMainFormServices() = default;

IHostMenu* TMainFormServices::FindMenu(const std::string& name) {
    return name == "ViewsMenu" ? FViewsMenu.get() : nullptr;
}

void TMainFormServices::DropMenuItems() {
    FViewsMenu->Drop();
}

IHostService* TStudioServices::Find(std::type_index service) {
    const std::pair<std::type_index, IHostService*> services[] = {
        {typeid(IHostWizardServices), &FWizards},
        {typeid(IHostNServices), &FImages},
        {typeid(IHostStartup), &FStartup},
        {typeid(IHostDockServices), &FDocks},
        {typeid(IHostMainForm), FMainForm ? &*FMainForm : nullptr},
        {typeid(IHostModuleServices), FModules ? &*FModules : nullptr},
        {typeid(IHostEditorServices), FEditors ? &*FEditors : nullptr},
    };
    const auto found = std::ranges::find(services, service, [](const auto& entry) { return entry.first; });
    return found == std::end(services) ? nullptr : found->second;
}

void TStudioServices::AttachWindow(TStudioWindow& window) {
    FWindow = &window;
    FDocks.SetWindow(&window);
    FMainForm.emplace(window, FImages.Images());
    FModules.emplace(window.Editors());
    FEditors.emplace(window.Editors());
    window.Editors().OnContextMenu = [this](QMenu& menu) { FEditors->FillContextMenu(menu); };
}

void TStudioServices::DetachWindow() {
    if (!FWindow) return;
    FWindow->Editors().OnContextMenu = nullptr;
    FEditors.reset();
    FModules.reset();
    FMainForm.reset();
    FDocks.SetWindow(nullptr);
    FWindow = nullptr;
}

void TStudioServices::DropModuleParts() {
    if (!FWindow) return;
    FMainForm->DropMenuItems();
    FEditors->DropActionLists();
    FWindow->Editors().CloseFrames();
}
