#include "server/UQuoraneLogonForm.h"

#include "contracts/SystemServices.h"
#include "platform/widgets/look/Images.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"

namespace {

constexpr char ConnectionKey[] = "Software\\Vantrel\\Quorane\\connection";
constexpr char UserValue[] = "username";
constexpr char ServerValue[] = "server";

constexpr int DialogWidth = 400;
constexpr int BannerHeight = 96;
constexpr int EntryMargin = 20;
constexpr int RowSpacing = 10;

} // namespace

TfrmQuoraneLogon::TfrmQuoraneLogon(TWinControl* owner)
    : TForm(owner, "frmQuoraneLogon")
    , lblServer(&pnlEntries, "lblServer", SLogonServer)
    , lblUser(&pnlEntries, "lblUser", SLogonUser)
    , lblPassword(&pnlEntries, "lblPassword", SLogonPassword)
    , btnOk(&pnlButtons, "btnOk", SLogonOk)
    , btnCancel(&pnlButtons, "btnCancel", SLogonCancel) {
    SetCaption(SLogonCaption);
    SetHelpKeyword("HC_QuoraneLogon");
    SetBorderStyle(TBorderStyle::Dialog);
    SetIcon(AddInIconName);
    PlaceEntries();
    PlaceButtons();
    SetWidth(DialogWidth);
    SetHeight(BannerHeight + pnlEntries.Height());
    SetActiveControl(edtHost);
    FormCreate();
}

TfrmQuoraneLogon::~TfrmQuoraneLogon() = default;

void TfrmQuoraneLogon::PlaceEntries() {
    imgQuoraneLogon.SetAnchors(true, true, true, true);
    imgQuoraneLogon.SetBackground("logon");
    pnlEntries.SetAlign(TAlign::Bottom);
    FEntryGrid.SetMargins(EntryMargin, RowSpacing, EntryMargin, EntryMargin);
    FEntryGrid.SetSpacing(RowSpacing, RowSpacing);
    FEntryGrid.SetColumnStretch(1, 1);
    const struct {
        TLabel& Label;
        TEdit& Edit;
    } rows[] = {{lblServer, edtHost}, {lblUser, edtUser}, {lblPassword, edtPassword}};
    int row = 0;
    for (const auto& entry : rows) {
        entry.Label.SetFocusControl(entry.Edit);
        FEntryGrid.Place(entry.Label, row, 0);
        FEntryGrid.Place(entry.Edit, row, 1);
        ++row;
    }
    edtPassword.SetPassword(true);
    FEntryGrid.Place(pnlButtons, row, 0, 1, 2);
}

void TfrmQuoraneLogon::PlaceButtons() {
    FButtonGrid.SetMargins(0, RowSpacing, 0, 0);
    FButtonGrid.SetSpacing(RowSpacing, 0);
    FButtonGrid.SetColumnStretch(0, 1);
    FButtonGrid.Place(btnOk, 0, 1);
    FButtonGrid.Place(btnCancel, 0, 2);
    btnOk.SetDefault(true);
    btnOk.OnClick = [this] { btnOkClick(); };
    btnCancel.SetCancel(true);
    btnCancel.SetModalResult(TModalResult::Cancel);
}

void TfrmQuoraneLogon::FormCreate() {
    edtUser.SetText(SystemServices().ReadUserSetting(ConnectionKey, UserValue));
    edtHost.SetText(SystemServices().ReadUserSetting(ConnectionKey, ServerValue));
    QuoraneSession = std::make_unique<TQuoraneSession>();
}

void TfrmQuoraneLogon::btnOkClick() {
    {
        const THourglass waiting;
        CurrentSession().Login(edtHost.Text(), edtUser.Text(), edtPassword.Text());
    }
    SystemServices().WriteUserSetting(ConnectionKey, UserValue, edtUser.Text());
    SystemServices().WriteUserSetting(ConnectionKey, ServerValue, edtHost.Text());
    SetModalResult(TModalResult::Ok);
}
