#include "frames/UDetailsFrame.h"

#include "frames/URequirementPanel.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "server/UListClearer.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

constexpr int ColumnWidth = 160;
constexpr int ColumnGap = 8;
constexpr int RowGap = 4;

} // namespace

TfraDetails::TfraDetails(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name)
    , imlQuorane(new TImageList(this, "imlQuorane")) {
    FillQuoraneImages(*imlQuorane);
    UseGridLayout();
    edtRequirementName = new TEdit(this, "edtRequirementName");
    edtRequirementTagID = new TEdit(this, "edtRequirementTagID");
    edtRequirementTagID->SetReadOnly(true);
    edtRequirementTagID->SetColor(clInactiveCaptionText);
    edtRequirementVersion = new TEdit(this, "edtRequirementVersion");
    edtRequirementVersion->SetReadOnly(true);
    cbxRequirementStatus = new TComboBox(this, "cbxRequirementStatus");
    cbxRequirementPriority = new TComboBox(this, "cbxRequirementPriority");
    cbxRequirementOwner = new TComboBox(this, "cbxRequirementOwner");
    cbxRequirementOwner->SetImages(imlQuorane);
    PlaceWidgets();
    BindHandlers();
}

void TfraDetails::PlaceWidgets() {
    struct TCell {
        TWinControl* Control;
        const char* LabelName;
        const char* Caption;
        int Row;
        int Column;
    };
    const TCell cells[] = {
        {edtRequirementName, "lblRequirementName", SRequirementName, 0, 0},
        {edtRequirementTagID, "lblRequirementTagId", SRequirementTagID, 0, 1},
        {edtRequirementVersion, "lblRequirementVersion", SRequirementVersion, 0, 2},
        {cbxRequirementStatus, "lblStatus", SRequirementStatus, 1, 0},
        {cbxRequirementPriority, "lblPriority", SRequirementPriority, 1, 1},
        {cbxRequirementOwner, "lblOwner", SRequirementOwner, 1, 2},
    };
    TGridLayout& grid = *Grid();
    grid.SetMargins(FrameMargin, FrameMargin, FrameMargin, FrameMargin);
    grid.SetSpacing(ColumnGap, LabelGap);
    std::vector<TWinControl*> tabOrder;
    for (const TCell& cell : cells) {
        auto* label = new TLabel(this, cell.LabelName, cell.Caption);
        label->SetFocusControl(*cell.Control);
        grid.Place(*label, 3 * cell.Row, cell.Column);
        grid.Place(*cell.Control, 3 * cell.Row + 1, cell.Column);
        grid.SetColumnMinimumWidth(cell.Column, ColumnWidth);
        tabOrder.push_back(cell.Control);
    }
    grid.SetRowMinimumHeight(2, RowGap);
    // What is left goes behind the last column and under the last row.
    grid.SetColumnStretch(3, 1);
    grid.SetRowStretch(5, 1);
    SetTabOrder(tabOrder);
}

void TfraDetails::BindHandlers() {
    edtRequirementName->OnChange = [this] { edtRequirementNameChange(); };
    cbxRequirementStatus->OnChange = [this] { cbxRequirementStatusChange(); };
    cbxRequirementPriority->OnChange = [this] { cbxRequirementPriorityChange(); };
    cbxRequirementOwner->OnChange = [this] { cbxRequirementOwnerChange(); };
}

void TfraDetails::SetRequirement(const Handle<IRequirement>& requirement) {
    TfraBaseRequirementFrame::SetRequirement(requirement);
    if (requirement)
        RefreshDetails();
    else
        ShowNothing();
    EnableDisableControls();
}

void TfraDetails::ShowNothing() {
    for (TEdit* edit : {edtRequirementName, edtRequirementTagID, edtRequirementVersion})
        edit->Clear();
    for (TComboBox* list : {cbxRequirementStatus, cbxRequirementPriority, cbxRequirementOwner})
        list->SetItemIndex(-1);
}

void TfraDetails::RefreshDetails() {
    const Handle<IRequirement> requirement = GetRequirement();
    edtRequirementName->SetText(requirement->Get_Name());
    edtRequirementTagID->SetText(TagAndID());
    const Handle<IVersion> version = requirement->Get_Version();
    edtRequirementVersion->SetText(std::to_string(version->Get_MajorVersion()) + "." +
                                   std::to_string(version->Get_MinorVersion()));
    GUIHelpers->FillUDAList(*cbxRequirementPriority, requirement->Get_Priority());
    GUIHelpers->FillUDAList(*cbxRequirementStatus, requirement->Get_Status());
    RefreshOwner();
}

std::string TfraDetails::TagAndID() const {
    const Handle<IRequirement> requirement = GetRequirement();
    try {
        return Utf8(requirement->Get_RequirementType()->Get_Tag()) +
               std::to_string(requirement->Get_IDNumber());
    } catch (const std::exception&) {
        // A requirement that has never been saved has no number yet.
        return Utf8(requirement->Get_RequirementType()->Get_Tag()) + SNewRequirementMark;
    }
}

void TfraDetails::RefreshOwner() {
    const Handle<IUser> owner = GetRequirement()->Get_Owner();
    if (!owner) {
        cbxRequirementOwner->SetItemIndex(-1);
        return;
    }
    FillOwnerCombo();
    cbxRequirementOwner->SetItemIndex(cbxRequirementOwner->Items().IndexOf(Utf8(owner->Get_UserName())));
}

void TfraDetails::FillOwnerCombo() {
    const TUpdate held(*cbxRequirementOwner);
    TStrings& items = cbxRequirementOwner->Items();
    ClearStrings(items);
    const auto users = CurrentSession().GetUserList()->GetEnumerator();
    while (users->MoveNext()) {
        const auto user = Cast<IUser>(users->GetCurrent());
        const int index = items.AddObject(Utf8(user->Get_Name()), std::make_unique<TUserContainer>(user));
        cbxRequirementOwner->SetItemImage(index, imUser);
    }
}

void TfraDetails::edtRequirementNameChange() {
    ChangeRequirement([this] {
        GUIHelpers->CurrentRequirement->Set_Name(RequiredText(edtRequirementName->Text()));
    });
}

void TfraDetails::cbxRequirementStatusChange() {
    ChangeRequirement(
        [this] { GetRequirement()->Get_Status()->Set_SelectedIndex(cbxRequirementStatus->ItemIndex()); });
}

void TfraDetails::cbxRequirementPriorityChange() {
    ChangeRequirement(
        [this] { GetRequirement()->Get_Priority()->Set_SelectedIndex(cbxRequirementPriority->ItemIndex()); });
}

void TfraDetails::cbxRequirementOwnerChange() {
    ChangeRequirement([this] {
        const int index = cbxRequirementOwner->ItemIndex();
        if (const auto* owner = cbxRequirementOwner->Items().ObjectAs<TUserContainer>(index))
            GetRequirement()->Set_Owner(owner->User);
    });
}
