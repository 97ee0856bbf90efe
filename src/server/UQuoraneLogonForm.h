// The logon dialog. It makes the session object, logs on through it, and remembers
// server and user name for the next time, never the password.
#pragma once

#include "platform/widgets/Buttons.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Forms.h"

class TfrmQuoraneLogon : public TForm {
public:
    // Puts a new session object, not logged in, into QuoraneSession; the object of an
    // earlier logon logs out and goes. ShowModal gives Ok once the logon has
    // succeeded. After a refused one the dialog stays open as the user filled it.
    explicit TfrmQuoraneLogon(TWinControl* owner);
    ~TfrmQuoraneLogon() override;

    TImage imgQuoraneLogon{this, "imgQuoraneLogon"};
    TPanel pnlEntries{this, "pnlEntries"};

private:
    // A grid stands before what it holds.
    TGridLayout& FEntryGrid = pnlEntries.UseGridLayout();

public:
    TLabel lblServer;
    TEdit edtHost{&pnlEntries, "edtHost"};
    TLabel lblUser;
    TEdit edtUser{&pnlEntries, "edtUser"};
    TLabel lblPassword;
    TEdit edtPassword{&pnlEntries, "edtPassword"};
    TPanel pnlButtons{&pnlEntries, "pnlButtons"};

private:
    TGridLayout& FButtonGrid = pnlButtons.UseGridLayout();

public:
    TButton btnOk;
    TButton btnCancel;

private:
    void PlaceEntries();
    void PlaceButtons();
    void FormCreate();
    void btnOkClick();
};
    TPanel pnlEntries{this, "pnlEntries"};
    TLabel lblServer;
    TEdit edtHost{&pnlEntries, "edtHost"};
    TLabel lblUser;
    TEdit edtUser{&pnlEntries, "edtUser"};
    TLabel lblPassword;
    TEdit edtPassword{&pnlEntries, "edtPassword"};
    TPanel pnlButtons{&pnlEntries, "pnlButtons"};
    TButton btnOk;
    TButton btnCancel;

private:
    void BuildEntries();
    void BuildButtons();
    void FormCreate();
    void btnOkClick();
};
