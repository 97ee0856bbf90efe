// The frame of the form: pages, bars and the tree.
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/ListView.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int TreeIndent = 19;
constexpr int TreeWidth = 260;
constexpr int TreeHeight = 300;
constexpr int ListChars = 20;

} // namespace

void TfrmQuoraneMain::MakeParent() {
    nbkParent = new TNotebook(this, "nbkParent");
    nbkParent->SetAlign(TAlign::Client);
    TPage& connected = nbkParent->AddPage("Default");
    TPage& login = nbkParent->AddPage("Login");
    pnlFormLogin = new TPanel(&login, "pnlFormLogin");
    pnlFormLogin->SetAlign(TAlign::Client);
    HoldPanel = new TPanel(pnlFormLogin, "HoldPanel");
    HoldPanel->Hide();
    MakeToolBars(connected);
    MakeTree(connected);
    MakeContents(connected);
}

void TfrmQuoraneMain::MakeToolBars(TWinControl& parent) {
    pnlToolBars = new TPanel(&parent, "pnlToolBars");
    pnlToolBars->SetAlign(TAlign::Top);
    MakeProjectBar();
    MakeMainButtons();
    tlbDescription = new TToolBar(pnlToolBars, "tlbDescription");
    tlbDescription->SetAlign(TAlign::Top);
}

void TfrmQuoraneMain::MakeProjectBar() {
    pnlProjectBaseline = new TPanel(pnlToolBars, "pnlProjectBaseline");
    pnlProjectBaseline->SetAlign(TAlign::Top);
    pnlProjectBaseline->UseFlowLayout();
    auto* lblProject = new TLabel(pnlProjectBaseline, "lblProject", SProjectLabel);
    cbxProjects = new TComboBox(pnlProjectBaseline, "cbxProjects");
    cbxProjects->SetSorted(true);
    cbxProjects->SetMinimumChars(ListChars);
    lblProject->SetFocusControl(*cbxProjects);
    auto* lblBaseline = new TLabel(pnlProjectBaseline, "lblBaseline", SBaselineLabel);
    cbxProjectBaselines = new TComboBox(pnlProjectBaseline, "cbxProjectBaselines");
    cbxProjectBaselines->SetMinimumChars(ListChars);
    lblBaseline->SetFocusControl(*cbxProjectBaselines);
}

void TfrmQuoraneMain::MakeMainButtons() {
    tlbMainButtons = new TToolBar(pnlToolBars, "tlbMainButtons");
    tlbMainButtons->SetAlign(TAlign::Top);
    tlbMainButtons->SetImages(imlQuorane);
    tlbMainButtons->AddButton("btnCreateRequirement", *actCreateRequirement);
    tlbMainButtons->AddButton("btnInsertBefore", *actCreateRequirementAbove);
    tlbMainButtons->AddButton("btnInsertAfter", *actCreateRequirementBelow);
    tlbMainButtons->AddButton("btnMoveRequirementUp", *actMoveReqUp);
    tlbMainButtons->AddButton("btnMoveRequirementDown", *actMoveReqDown);
    tlbMainButtons->AddButton("btnDeleteRequirement", *actDeleteReq);
    tlbMainButtons->AddSeparator();
    tlbMainButtons->AddButton("btnSave", *actSave);
    tlbMainButtons->AddButton("btnCancelSave", *actCancelSave);
    tlbMainButtons->AddButton("btnRefresh", *actRefresh);
    tlbMainButtons->AddButton("btnLogOff", *actLogoff);
    tlbMainButtons->AddButton("btnTallyworks", *actTallyworks);
    tlbMainButtons->AddSeparator();
    btnHierarchicalNumbers = &tlbMainButtons->AddButton("btnHierarchicalNumbers", imHierarchicalNumbers,
                                                        SHierarchicalNumbersHint, TToolButtonStyle::Check);
    btnSerialNumbers = &tlbMainButtons->AddButton("btnSerialNumbers", imSerialNumbers, SSerialNumbersHint,
                                                  TToolButtonStyle::Check);
    btnCommentFormat = &tlbMainButtons->AddButton("btnCommentFormat", imCommentFormat, SCommentFormatHint,
                                                  TToolButtonStyle::DropDown);
    MakeCommentFormatMenu();
    btnCommentFormat->SetDropDownMenu(*CommentingFormatPopupMenu);
    btnSearchById = &tlbMainButtons->AddButton("btnSearchById", imFindById, SFindByIdHint);
}

void TfrmQuoraneMain::MakeTree(TWinControl& parent) {
    trvRequirements = new TTreeView(&parent, "trvRequirements");
    trvRequirements->SetBounds(0, 0, TreeWidth, TreeHeight);
    trvRequirements->SetAccessibleName(SRequirementTree);
    trvRequirements->SetImages(imlQuorane);
    trvRequirements->SetStateImages(imlTreeState);
    trvRequirements->SetIndent(TreeIndent);
    trvRequirements->SetDragAutomatic(true);
    TTreeNode& project = trvRequirements->Add(SProjectNamePlaceholder);
    project.SetImageIndex(imProject);
    project.SetSelectedIndex(imProject);
    splContents = new TSplitter(&parent, "splContents");
}

void TfrmQuoraneMain::BindHandlers() {
    OnHide = [this] { FormHide(); };
    OnResize = [this] { FormResize(); };
    cbxProjects->OnChange = [this] { cbxProjectsChange(); };
    cbxProjectBaselines->OnChange = [this] { cbxProjectBaselinesChange(); };
    btnHierarchicalNumbers->OnClick = [this] { btnHierarchicalNumbersClick(); };
    btnSerialNumbers->OnClick = [this] { btnSerialNumbersClick(); };
    btnSearchById->OnClick = [this] { btnSearchByIdClick(); };
    trvRequirements->OnChanging = [this](TTreeNode*, bool&) { trvRequirementsChanging(); };
    trvRequirements->OnChange = [this](TTreeNode* node) { trvRequirementsChange(node); };
    trvRequirements->OnExpanding = [this](TTreeNode& node, bool&) { trvRequirementsExpanding(node); };
    trvRequirements->OnEditing = [this](TTreeNode& node, bool& allow) {
        trvRequirementsEditing(node, allow);
    };
    trvRequirements->OnEdited = [this](TTreeNode&, std::string& text) { trvRequirementsEdited(text); };
    trvRequirements->OnKeyDown = [this](TKey key, TShiftState, bool& handled) {
        trvRequirementsKeyDown(key, handled);
    };
    trvRequirements->OnDragOver = [this](TWinControl* source, TPoint point, bool& accept) {
        accept = trvRequirementsDragOver(source, point);
    };
    trvRequirements->OnDragDrop = [this](TWinControl*, TPoint point) { trvRequirementsDragDrop(point); };
    nbkContents->OnPageChanged = [this] { nbkContentsPageChanged(); };
    pgcRequirement->OnChange = [this] { pgcRequirementChange(); };
    lstReqTypeCustomTabs->OnSelectItem = [this](TListItem& item, bool selected) {
        lstReqTypeCustomTabsSelectItem(item, selected);
    };
}
