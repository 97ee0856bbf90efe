// The dialog that asks for a requirement's number, and the jump to it in the tree.
#pragma once

#include "platform/widgets/Forms.h"

class TEdit;

class TfrmFindById : public TForm {
public:
    TfrmFindById();
    ~TfrmFindById() override;

    TEdit* edtID;
    TButton* btnFind;
    TButton* btnCancel;
};

// The dialog while it is on show, else empty.
extern TfrmFindById* frmFindById;

// Asks for the number and selects that requirement in the baseline on show; tells the
// user when there is none. All but digits in the entry is dropped, so that a number
// can be pasted with its tag. Re-enters the message loop. Raises what the search does.
void ExecuteSearchById();
