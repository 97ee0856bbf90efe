// The life of the panel: making, hiding, destruction.
#include "panel/QuoraneDockForm.h"

#include "description/UDescriptionFrame.h"
#include "description/UDescriptionToolbarFrame.h"
#include "frames/UBaseRequirementFrame.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

std::unique_ptr<TfrmQuoraneMain> TheForm;
TfrmQuoraneMain::TFrameFactory TraceabilityFrameFactory;

} // namespace

TfrmQuoraneMain* QuoranePanel() {
    return dynamic_cast<TfrmQuoraneMain*>(frmQuoraneMain);
}

TfrmQuoraneMain::TfrmQuoraneMain(TQuoraneGUIHelpers& helpers)
    : TDockableForm("frmQuoraneMain")
    , FHelpers(helpers) {
    SetCaption(SPanelCaption);
    SetIcon(AddInIconName);
    MakeImages();
    MakeActions();
    MakeParent();
    MakePopup();
    BindHandlers();
    FormCreate();
}

TfrmQuoraneMain::~TfrmQuoraneMain() {
    OnHide = nullptr;
    OnResize = nullptr;
    // The tab may outlive the panel; nothing of the panel stays in it.
    if (const std::shared_ptr<IHostTabFrame> tab = FTabFrame) {
        LeaveTab();
        tab->OnClose = nullptr;
        tab->OnSelect = nullptr;
        tab->OnDeselect = nullptr;
        tab->Close();
    }
    FormDestroy();
}

void TfrmQuoraneMain::CreateForm() {
    if (!TheForm) CreateDockableForm(TheForm);
}

void TfrmQuoraneMain::RemoveForm() {
    FreeDockableForm(TheForm);
}

void TfrmQuoraneMain::ShowForm() {
    CreateForm();
    if (TheForm->nbkParent->PageIndex() == ConnectedPage)
        ShowDockableForm(TheForm.get());
    else
        TheForm->ProceedLogon();
}

void TfrmQuoraneMain::SetTraceabilityFrameFactory(TFrameFactory factory) {
    TraceabilityFrameFactory = std::move(factory);
}

TfraBaseRequirementFrame* TfrmQuoraneMain::MakeTraceabilityFrame(TTabSheet& sheet) {
    if (TraceabilityFrameFactory) return TraceabilityFrameFactory(sheet);
    return new TfraBaseRequirementFrame(&sheet, "fraTraceability");
}

void TfrmQuoraneMain::FormCreate() {
    TDockableForm::FormCreate();
    SetHelpKeyword("hc_QuoraneRequirementTree");
    SetDesktopSection(Name());
    SetAutoSave(true);
    FHandlingSDKException = false;
    FHelpers.RequirementsTree = trvRequirements;
    nbkParent->SetPageIndex(LoginPage);
    nbkContents->SetPageIndex(ProjectPage);
    if (auto* docks = FindHostService<IHostDockServices>()) LoadWindowState(docks->IDEIniFile());
    SetOrientation();
    ResizeDescription();
    fraDescriptionToolbar->SetDHTMLEdit(fraDescription->wbrReqDescription.get());
    fraDescription->SetDescriptionToolbarFrame(fraDescriptionToolbar);
}

void TfrmQuoraneMain::FormHide() {
    // A server that has gone is told, but keeps the panel from nothing else.
    std::exception_ptr failure;
    try {
        const Handle<IRequirement>& requirement = FHelpers.CurrentRequirement;
        if (requirement && requirement->Get_LockedByCurrentUser() != WordFalse) requirement->unlock();
    } catch (...) {
        failure = std::current_exception();
    }
    // What stays in it unsaved must not take the lock again.
    fraDescription->ClearDirty();
    if (auto* docks = FindHostService<IHostDockServices>()) SaveWindowState(docks->IDEIniFile(), true);
    if (failure) std::rethrow_exception(failure);
}

void TfrmQuoraneMain::FormDestroy() {
    SetAutoSave(true);
    TDockableForm::FormDestroy();
    FHelpers.RequirementsTree = nullptr;
}

void TfrmQuoraneMain::FormResize() {
    SetOrientation();
}

int TfrmQuoraneMain::ActiveRequirementTab() const {
    return pgcRequirement->ActivePageIndex();
}
