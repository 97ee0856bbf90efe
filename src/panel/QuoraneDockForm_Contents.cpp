// The three pages of nbkContents.
#include "description/UDescriptionFrame.h"
#include "frames/UDetailsFrame.h"
#include "frames/UDiscussionFrame.h"
#include "frames/UHistoryFrame.h"
#include "frames/UReferencesFrame.h"
#include "frames/UResponibilitiesFrame.h"
#include "frames/UValidationFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/tree/ListView.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int Padding = 8;
constexpr int TabsHeight = 250;
constexpr int ListColumnWidth = 240;

TLabel& LabelFor(TWinControl& control, const std::string& name, const std::string& caption) {
    auto* label = new TLabel(control.Parent(), name, caption);
    label->SetFocusControl(control);
    return *label;
}

} // namespace

void TfrmQuoraneMain::MakeContents(TWinControl& parent) {
    nbkContents = new TNotebook(&parent, "nbkContents");
    nbkContents->SetAlign(TAlign::Client);
    nbkContents->AddPage("Project");
    nbkContents->AddPage("RequirementType");
    nbkContents->AddPage("Requirement");
    MakeProjectPage();
    MakeRequirementTypePage();
    MakeRequirementPage();
}

void TfrmQuoraneMain::MakeProjectPage() {
    TPage& page = nbkContents->Page(0);
    page.SetPadding(Padding, LabelGap);
    auto* label = new TLabel(&page, "lblProjectInfo", SProjectInfoLabel);
    label->SetAlign(TAlign::Top);
    mmoProjectInfo = new TMemo(&page, "mmoProjectInfo");
    mmoProjectInfo->SetAlign(TAlign::Client);
    mmoProjectInfo->SetReadOnly(true);
    label->SetFocusControl(*mmoProjectInfo);
}

void TfrmQuoraneMain::MakeRequirementTypePage() {
    TPage& page = nbkContents->Page(1);
    TGridLayout& grid = page.UseGridLayout();
    grid.SetMargins(Padding, Padding, Padding, Padding);
    grid.SetSpacing(Padding, LabelGap);
    edtReqTypeName = new TEdit(&page, "edtReqTypeName");
    edtReqTypeName->SetReadOnly(true);
    edtReqTypeTag = new TEdit(&page, "edtReqTypeTag");
    edtReqTypeTag->SetReadOnly(true);
    pgcReqType = new TPageControl(&page, "pgcReqType");
    grid.Place(LabelFor(*edtReqTypeName, "lblRequirementType", SRequirementTypeLabel), 0, 0);
    grid.Place(LabelFor(*edtReqTypeTag, "lblTag", STagLabel), 0, 1);
    grid.Place(*edtReqTypeName, 1, 0);
    grid.Place(*edtReqTypeTag, 1, 1);
    grid.Place(*pgcReqType, 2, 0, 1, 2);
    grid.SetColumnStretch(0, 2);
    grid.SetColumnStretch(1, 1);
    grid.SetRowStretch(2, 1);
    auto* description = new TTabSheet(*pgcReqType, "Description", SDescriptionTab);
    mmoReqTypeDescription = new TMemo(description, "mmoReqTypeDescription");
    mmoReqTypeDescription->SetAlign(TAlign::Client);
    mmoReqTypeDescription->SetReadOnly(true);
    mmoReqTypeDescription->SetAccessibleName(SDescriptionTab);
    MakeCustomTabsSheet();
    pgcReqType->SetActivePageIndex(0);
}

void TfrmQuoraneMain::MakeCustomTabsSheet() {
    tbsCustomTabs = new TTabSheet(*pgcReqType, "tbsCustomTabs", SCustomTabsTab);
    TGridLayout& grid = tbsCustomTabs->UseGridLayout();
    grid.SetMargins(Padding, Padding, Padding, Padding);
    grid.SetSpacing(Padding, LabelGap);
    lstReqTypeCustomTabs = new TListView(tbsCustomTabs, "lstReqTypeCustomTabs");
    lstCustomTabAttributes = new TListView(tbsCustomTabs, "lstCustomTabAttributes");
    grid.Place(LabelFor(*lstReqTypeCustomTabs, "lblReqTypeCustomTabs", SCustomTabsLabel), 0, 0);
    grid.Place(LabelFor(*lstCustomTabAttributes, "lblCustomTabAttributes", SCustomTabAttributesLabel), 0, 1);
    int column = 0;
    for (TListView* list : {lstReqTypeCustomTabs, lstCustomTabAttributes}) {
        list->SetSmallImages(imlQuorane);
        list->AddColumn(SListNameColumn, ListColumnWidth);
        grid.Place(*list, 1, column);
        grid.SetColumnStretch(column++, 1);
    }
    grid.SetRowStretch(1, 1);
}

void TfrmQuoraneMain::MakeRequirementPage() {
    TPage& page = nbkContents->Page(2);
    pgcRequirement = new TPageControl(&page, "pgcRequirement");
    pgcRequirement->SetImages(imgTabs);
    pgcRequirement->SetHeight(TabsHeight);
    pgcRequirement->SetAlign(TAlign::Top);
    DescriptionSplitter = new TSplitter(&page, "DescriptionSplitter");
    DescriptionSplitter->SetAlign(TAlign::Top);
    pnlDescription = new TPanel(&page, "pnlDescription");
    pnlDescription->SetAlign(TAlign::Client);
    pnlDescription->OnResize = [this] { ResizeDescription(); };
    MakeFixedTabs();
    fraDescription = new TfraDescription(pnlDescription, "fraDescription");
    fraDescription->SetAlign(TAlign::Client);
}

void TfrmQuoraneMain::MakeFixedTabs() {
    auto* tbsDetails = new TTabSheet(*pgcRequirement, "tbsDetails", SDetailsTab);
    scbDetails = new TScrollBox(tbsDetails, "scbDetails");
    scbDetails->SetAlign(TAlign::Client);
    fraDetails = new TfraDetails(scbDetails);
    fraTraceability = MakeTraceabilityFrame(*new TTabSheet(*pgcRequirement, "tbsTraces", STraceabilityTab));
    const auto addSheet = [this](const char* name, const char* caption) {
        return new TTabSheet(*pgcRequirement, name, caption);
    };
    fraValidation = new TfraValidation(addSheet("tbsValidation", SValidationTab));
    fraDiscussion = new TfraDiscussion(addSheet("tbsDiscussion", SDiscussionTab));
    fraReferences = new TfraReferences(addSheet("tbsReferences", SReferencesTab));
    fraHistory = new TfraHistory(addSheet("tbsHistory", SHistoryTab));
    fraResponsibilities = new TfraResponsibilities(addSheet("tbsResponsibilities", SResponsibilitiesTab));
    for (TfraBaseRequirementFrame* frame : FixedFrames())
        frame->SetAlign(TAlign::Client);
    pgcRequirement->SetActivePageIndex(rtDetails);
}

std::array<TfraBaseRequirementFrame*, rtFirstCustom> TfrmQuoraneMain::FixedFrames() const {
    return {fraDetails,    fraTraceability, fraValidation,      fraDiscussion,
            fraReferences, fraHistory,      fraResponsibilities};
}
