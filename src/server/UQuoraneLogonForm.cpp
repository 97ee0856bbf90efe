#include "server/UQuoraneLogonForm.h"

#include "contracts/SystemServices.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
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
constexpr int Spacing = 10;

} // namespace

TfrmQuoraneLogon::TfrmQuoraneLogon(TWinControl* owner)
    : TForm(owner, "frmQuoraneLogon") {
    SetCaption(SLogonCaption);
    SetHelpKeyword("HC_QuoraneLogon");
    SetBorderStyle(TBorderStyle::Dialog);
    SetIcon(AddInIconName);
    imgQuoraneLogon = new TImage(this, "imgQuoraneLogon");
    imgQuoraneLogon->SetAnchors(true, true, true, true);
    imgQuoraneLogon->SetBackground("logon");
    auto* pnlEntries = new TPanel(this, "pnlEntries");
    pnlEntries->SetAlign(TAlign::Client);
    pnlEntries->SetMinimumSize(DialogWidth, 0);
    BuildEntries(*pnlEntries);
    SetActiveControl(*edtHost);
    FormCreate();
}

TfrmQuoraneLogon::~TfrmQuoraneLogon() = default;

void TfrmQuoraneLogon::BuildEntries(TPanel& entries) {
    TGridLayout& grid = entries.UseGridLayout();
    grid.SetMargins(EntryMargin, BannerHeight + EntryMargin, EntryMargin, EntryMargin);
    grid.SetSpacing(Spacing, Spacing);
    grid.SetColumnStretch(1, 1);
    int row = 0;
    const auto addRow = [&](const char* labelName, const char* caption, const char* editName) {
        auto* label = new TLabel(&entries, labelName, caption);
        auto* edit = new TEdit(&entries, editName);
        label->SetFocusControl(*edit);
        grid.Place(*label, row, 0);
        grid.Place(*edit, row, 1);
        ++row;
        return edit;
    };
    edtHost = addRow("lblServer", SLogonServer, "edtHost");
    edtUser = addRow("lblUser", SLogonUser, "edtUser");
    edtPassword = addRow("lblPassword", SLogonPassword, "edtPassword");
    edtPassword->SetPassword(true);
    auto* pnlButtons = new TPanel(&entries, "pnlButtons");
    BuildButtons(*pnlButtons);
    grid.Place(*pnlButtons, row, 0, 1, 2);
    SetTabOrder({edtHost, edtUser, edtPassword, btnOk, btnCancel});
}

void TfrmQuoraneLogon::BuildButtons(TPanel& buttons) {
    TGridLayout& grid = buttons.UseGridLayout();
    grid.SetMargins(0, Spacing, 0, 0);
    grid.SetSpacing(Spacing, 0);
    grid.SetColumnStretch(0, 1);
    btnOk = new TButton(&buttons, "btnOk", SLogonOk);
    btnOk->SetDefault(true);
    btnOk->OnClick = [this] { btnOkClick(); };
    btnCancel = new TButton(&buttons, "btnCancel", SLogonCancel);
    btnCancel->SetCancel(true);
    btnCancel->SetModalResult(TModalResult::Cancel);
    grid.Place(*btnOk, 0, 1);
    grid.Place(*btnCancel, 0, 2);
}

void TfrmQuoraneLogon::FormCreate() {
    edtUser->SetText(SystemServices().ReadUserSetting(ConnectionKey, UserValue));
    edtHost->SetText(SystemServices().ReadUserSetting(ConnectionKey, ServerValue));
    QuoraneSession = std::make_unique<TQuoraneSession>();
}

void TfrmQuoraneLogon::btnOkClick() {
    {
        const THourglass waiting;
        CurrentSession().Login(edtHost->Text(), edtUser->Text(), edtPassword->Text());
    }
    SystemServices().WriteUserSetting(ConnectionKey, UserValue, edtUser->Text());
    SystemServices().WriteUserSetting(ConnectionKey, ServerValue, edtHost->Text());
    SetModalResult(TModalResult::Ok);
}
