// The logon dialog. It makes the session object, logs on through it, and remembers
// server and user name for the next time, never the password.
#pragma once

#include "platform/widgets/Forms.h"

class TEdit;
class TImage;
class TPanel;

class TfrmQuoraneLogon : public TForm {
public:
    // Puts a new session object, not logged in, into QuoraneSession; the object of an
    // earlier logon logs out and goes. ShowModal gives Ok once the logon has
    // succeeded. After a refused one the dialog stays open as the user filled it.
    explicit TfrmQuoraneLogon(TWinControl* owner);
    ~TfrmQuoraneLogon() override;

    TImage* imgQuoraneLogon;
    TEdit* edtHost;
    TEdit* edtUser;
    TEdit* edtPassword;
    TButton* btnOk;
    TButton* btnCancel;

private:
    void BuildEntries(TPanel& entries);
    void BuildButtons(TPanel& buttons);
    void FormCreate();
    void btnOkClick();
};
