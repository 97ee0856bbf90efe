// The dialog in which a message of a discussion is written. It knows no server: who
// shows it posts what was written when its result is Ok.
#pragma once

#include "platform/widgets/Forms.h"

class TAction;
class TActionList;
class TEdit;
class TImageList;
class TLabel;
class TMainMenu;
class TMemo;
class TPanel;
class TToolBar;

class TfrmQuoraneMessage : public TForm {
public:
    // Owner: the window it belongs to; may be empty.
    explicit TfrmQuoraneMessage(TWinControl* owner);

    TMainMenu* MessageActionMainMenuBar;
    TToolBar* tlbMessage;
    TPanel* pnlSubjet;
    TLabel* lblRequirementName;
    TEdit* edtSubject;
    TMemo* mmoBody;
    TAction* actSend;

private:
    void MakeActions();
    void MakeBars();
    void MakeFields();
    void actSendExecute();
    void actSendUpdate();

    TActionList* FActions;
    TImageList* FImages;
};
