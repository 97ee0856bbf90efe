// What the requirement frames and the description need of the panel that shows
// them. The panel implements both classes; nothing in this folder knows it
// otherwise, so the arrow points from panel to frames only.
#pragma once

#include "contracts/Exceptions.h"

#include <exception>
#include <utility>

#include "server/Quorane_TLB.h"

class TComboBox;
class TControl;
class TWinControl;

// The requirement on show and the one gate that every edit passes.
class TRequirementContext {
public:
    TRequirementContext();
    virtual ~TRequirementContext();
    TRequirementContext(const TRequirementContext&) = delete;
    TRequirementContext& operator=(const TRequirementContext&) = delete;

    // True while the program fills the frames; every change handler then does nothing.
    bool ShowingRequirementInfo = false;
    // The baseline on show; empty before the first one is selected.
    Quorane_TLB::Handle<Quorane_TLB::IBaseline> CurrentBaseline;
    // True while the custom tabs are rebuilt; attribute widgets then write nothing.
    bool CreatingCustomTabs = false;
    // Empty while the selection is not on a requirement.
    Quorane_TLB::Handle<Quorane_TLB::IRequirement> CurrentRequirement;

    // Takes the server's edit lock on CurrentRequirement unless it is held already.
    // Every edit calls it before it writes. Raises when the lock is refused: nothing
    // has been changed then, and the caller must not write. A connection that was lost
    // and gets restored, which re-enters the message loop, raises EAbort: the
    // requirement on show is then gone.
    virtual void LockCurrentRequirement() = 0;

    // Loads the description of CurrentRequirement into its view again.
    virtual void UpdateDescription() = 0;

    // Reads the tree node of the current requirement again and shows its state image.
    virtual void UpdateCurrentRequirementStateImage() = 0;

    // Makes a control usable or not, with the colour that goes with it.
    static void EnableDisableControl(bool enabled, TWinControl& control);

    // Puts the entries of a list value into a drop-down list, each text once, and
    // selects the value's entry; selects nothing when the value is null.
    static void FillUDAList(TComboBox& list, const Quorane_TLB::Handle<Quorane_TLB::IUDAListValue>& value);

    // Shares the height of the parent between two controls that stand one above the
    // other; first keeps its top, and gap pixels stay between them.
    static void ResizeEqually(TControl& first, TControl& second, int gap);
};

// Positions of the fixed tabs in pgcRequirement; custom tabs come behind them.
enum TRequirementTab {
    rtNone = -1,
    rtDetails,
    rtTraces,
    rtValidation,
    rtDiscussion,
    rtReferences,
    rtHistory,
    rtResponsibilities,
    rtFirstCustom
};

// The panel as its frames see it.
class TRequirementPanel {
public:
    TRequirementPanel();
    virtual ~TRequirementPanel();
    TRequirementPanel(const TRequirementPanel&) = delete;
    TRequirementPanel& operator=(const TRequirementPanel&) = delete;

    // Reports a failure by raising a plain exception with the text for the user.
    // Returns only when the failure was a lost connection that has been restored;
    // all handles on server objects are stale then. Re-enters the message loop
    // while its box is up. Call it from inside the catch clause of a handler.
    virtual void HandleSDKException(const std::exception& failure) = 0;

    // Index of the tab on show, a TRequirementTab or a custom tab's; rtNone when no
    // tab is active.
    virtual int ActiveRequirementTab() const = 0;
};

// The one object of each kind. They are set by the constructors above and emptied
// by the destructors; empty before the panel exists.
extern TRequirementContext* GUIHelpers;
extern TRequirementPanel* frmQuoraneMain;

// Runs the body of an event handler under the one guard: whatever it raises goes to
// HandleSDKException.
template<class TBody> void GuardServerCalls(TBody&& body) {
    try {
        std::forward<TBody>(body)();
    } catch (const EAbort&) {
        return;
    } catch (const std::exception& failure) {
        frmQuoraneMain->HandleSDKException(failure);
    }
}

// The steps that the change handlers of all frames share: a fill is no edit, and
// nothing is written without the lock.
template<class TWrite> void ChangeRequirement(TWrite&& write) {
    GuardServerCalls([&] {
        if (GUIHelpers->ShowingRequirementInfo) return;
        GUIHelpers->LockCurrentRequirement();
        std::forward<TWrite>(write)();
    });
}
