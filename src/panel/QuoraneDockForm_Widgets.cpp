// The frame of the form: pages, bars and the tree.
#include "description/UDescriptionToolbarFrame.h"
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
constexpr int ListChars = 12;
constexpr int BarMargin = 6;

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
    fraDescriptionToolbar = new TfraDescriptionToolbar(tlbDescription, *imlQuorane);
}

void TfrmQuoraneMain::MakeProjectBar() {
    pnlProjectBaseline = new TPanel(pnlToolBars, "pnlProjectBaseline");
    pnlProjectBaseline->SetAlign(TAlign::Top);
    TGridLayout& grid = pnlProjectBaseline->UseGridLayout();
    grid.SetMargins(BarMargin, BarMargin, BarMargin, 0);
    grid.SetSpacing(BarMargin, 0);
    const auto addList = [&](const char* labelName, const char* caption, const char* name, int column) {
        auto* label = new TLabel(pnlProjectBaseline, labelName, caption);
        auto* list = new TComboBox(pnlProjectBaseline, name);
        list->SetMinimumChars(ListChars);
        label->SetFocusControl(*list);
        grid.Place(*label, 0, column);
        grid.Place(*list, 0, column + 1);
        grid.SetColumnStretch(column + 1, 1);
        return list;
    };
    cbxProjects = addList("lblProject", SProjectLabel, "cbxProjects", 0);
    cbxProjects->SetSorted(true);
    cbxProjectBaselines = addList("lblBaseline", SBaselineLabel, "cbxProjectBaselines", 2);
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
    // What moves into the tab leaves the window in which shortcuts work by themselves.
    ActionManager->BindShortCuts(*pnlToolBars);
    ActionManager->BindShortCuts(*nbkContents);
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
    trvRequirements->OnEditing = [this](TTreeNode& node, std::string& text, bool& allow) {
        trvRequirementsEditing(node, text, allow);
    };
    trvRequirements->OnEdited = [this](TTreeNode& node, std::string& text) {
        trvRequirementsEdited(node, text);
    };
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
