#include "ide/QuoraneAddinWizard.h"

#include "ide/UDtmImages.h"
#include "panel/QuoraneDockForm.h"
#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Menus.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int MenuItemPosition = 10;

std::unique_ptr<TProductStartup> ProductStartup;
std::shared_ptr<TQuoraneAddin> QuoraneAddin;

// Gives the index of the first image among the host's.
int CopyImagesToHost() {
    const TdtmImages images;
    return HostService<IHostNServices>().AddImages(images.imlImages());
}

// A step of the way out; its failure keeps none of the others from running.
template<class TStep> void LetGo(TStep&& step) {
    Application().Dispatch(nullptr, std::forward<TStep>(step));
}

} // namespace

std::string TQuoraneAddin::GetIDString() {
    return "Vantrel.QuoraneOstrel2005Plugin";
}

std::string TQuoraneAddin::GetName() {
    return "QuoraneOstrel2005Plugin";
}

THostWizardState TQuoraneAddin::GetState() {
    return THostWizardState().set(wsEnabled);
}

void TQuoraneAddin::ShowForm() {
    try {
        TQuoraneSession::EnvironmentDescription();
    } catch (const EOleSysError&) {
        Application().MessageBox(SSDKNotInstalled, SMessageCaption, TMessageIcon::Error);
        return;
    }
    TfrmQuoraneMain::ShowForm();
}

TProductStartup::TProductStartup()
    : FHandlerToken(HostService<IHostStartup>().AddMainFormCreated([this] { MainFormCreated(); })) {}

TProductStartup::~TProductStartup() {
    if (FWizardIndex != -1) LetGo([this] { HostService<IHostWizardServices>().RemoveWizard(FWizardIndex); });
    LetGo([this] { HostService<IHostStartup>().RemoveMainFormCreated(FHandlerToken); });
    LetGo([] { TfrmQuoraneMain::RemoveForm(); });
}

void TProductStartup::MainFormCreated() {
    QuoraneAddin = std::make_shared<TQuoraneAddin>();
    FWizardIndex = HostService<IHostWizardServices>().AddWizard(QuoraneAddin);
    TfrmQuoraneMain::CreateForm();
    AddMenuItem(CopyImagesToHost());
}

void TProductStartup::AddMenuItem(int imageIndex) {
    IHostMenu* viewsMenu = HostService<IHostMainForm>().FindMenu("ViewsMenu");
    if (!viewsMenu) throw Exception("The host has no views menu.");
    auto item = std::make_unique<TMenuItem>("ViewQuoraneRequirementsItem", SProductName);
    item->OnClick = [addin = QuoraneAddin] { addin->ShowForm(); };
    item->SetImageIndex(imageIndex);
    viewsMenu->Insert(MenuItemPosition, std::move(item));
}

void RegisterAddIn() {
    ProductStartup = std::make_unique<TProductStartup>();
}

void UnregisterAddIn() {
    ProductStartup.reset();
    QuoraneAddin.reset();
    FinalizeGUIHelpers();
}
