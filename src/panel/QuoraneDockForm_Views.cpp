// The panel's two places, the dock and the editor tab, and the layout in them.
#include "description/UDescriptionFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int SplitterSize = 5;

} // namespace

void CreateDockableForm(std::unique_ptr<TfrmQuoraneMain>& variable) {
    variable = std::make_unique<TfrmQuoraneMain>(PanelHelpers());
    const std::string name = variable->Name();
    if (auto* addresses = FindHostService<IHostFieldAddresses>())
        addresses->RegisterFieldAddress(name, &variable);
    if (auto* docks = FindHostService<IHostDockServices>())
        docks->RegisterDesktopFormClass("TfrmQuoraneMain", name, name);
}

void FreeDockableForm(std::unique_ptr<TfrmQuoraneMain>& variable) {
    if (!variable) return;
    if (auto* addresses = FindHostService<IHostFieldAddresses>())
        addresses->UnregisterFieldAddress(&variable);
    variable.reset();
}

void ShowDockableForm(TfrmQuoraneMain* form) {
    if (!form) return;
    if (form->Floating()) {
        form->TDockableForm::ShowForm();
    } else {
        form->ForceShow();
        if (auto* docks = FindHostService<IHostDockServices>()) docks->FocusWindow(*form);
    }
    form->ShowTab();
}

void TfrmQuoraneMain::SetOrientation() {
    const bool wide = Width() > Height();
    const TAlign align = wide ? TAlign::Left : TAlign::Top;
    trvRequirements->SetAlign(align);
    splContents->SetAlign(align);
    if (wide) {
        splContents->SetLeft(trvRequirements->Left() + trvRequirements->Width() + SplitterSize);
        splContents->SetWidth(SplitterSize);
    } else {
        splContents->SetTop(trvRequirements->Top() + trvRequirements->Height() + SplitterSize);
        splContents->SetHeight(SplitterSize);
    }
    // With the contents in a tab of their own the tree is alone here.
    if (FTabFrame && wide) trvRequirements->SetWidth(nbkParent->ClientWidth());
    if (FTabFrame && !wide) trvRequirements->SetHeight(nbkParent->ClientHeight());
}

void TfrmQuoraneMain::ResizeDescription() {
    if (!fraDescription || !fraDescription->wbrReqDescription->Started()) return;
    fraDescription->wbrReqDescription->Control().SetBounds(0, 0, pnlDescription->ClientWidth(),
                                                           pnlDescription->ClientHeight());
}

void TfrmQuoraneMain::ShowTab() {
    auto* editors = FindHostService<IHostEditorServices>();
    if (!editors) return;
    if (!FTabFrame) {
        FTabFrame = editors->CreateTabFrame();
        FTabFrame->SetCaption(SMessageCaption);
        FTabFrame->SetTitle(SMessageCaption);
        FTabFrame->SetIcon(AddInIconName);
        FTabFrame->OnClose = [this] { return CloseFrame(); };
        FTabFrame->OnSelect = [this] { SelectFrame(); };
        FTabFrame->OnDeselect = [this] { DeSelectFrame(); };
        FTabFrame->SetHelpKeyword("hc_QuoraneIntegration");
        splContents->Hide();
        trvRequirements->SetAlign(TAlign::Client);
    }
    ReparentAndAlignComponents();
    FTabFrame->Show();
}

void TfrmQuoraneMain::ReparentAndAlignComponents() {
    TFrame& body = FTabFrame->Body();
    pnlToolBars->SetParent(body);
    pnlToolBars->SetAlign(TAlign::Top);
    nbkContents->SetParent(body);
    nbkContents->SetAlign(TAlign::Client);
}

void TfrmQuoraneMain::LeaveTab() {
    // Out of the tab, so that they outlive it.
    pnlToolBars->SetParent(*HoldPanel);
    nbkContents->SetParent(*HoldPanel);
    FTabFrame = nullptr;
}

bool TfrmQuoraneMain::CloseFrame() {
    LeaveTab();
    if (FormVisible()) HideForm();
    return true;
}
