// What the frames on the tabs of a requirement share: the requirement on show and
// the rule that decides whether its widgets can be used. A frame keeps no copy of
// what the user edits: each change goes into the requirement's object at once.
#pragma once

#include <string>

#include "platform/widgets/Forms.h"
#include "server/Quorane_TLB.h"

// Pixels around the widgets of a frame, and between a label and its widget.
inline constexpr int FrameMargin = 8;
inline constexpr int LabelGap = 3;
// Pixels between two widgets that share the height of a frame.
inline constexpr int StackGap = 10;
// Pixels between two buttons in a row.
inline constexpr int ButtonGap = 6;

class TfraBaseRequirementFrame : public TFrame {
public:
    explicit TfraBaseRequirementFrame(TWinControl* parent, const std::string& name = {});

    // The requirement on show; may be empty.
    virtual Quorane_TLB::Handle<Quorane_TLB::IRequirement> GetRequirement() const;

    // Shows the requirement, read from its object; an empty handle shows nothing.
    // Raises what the reading raises, with the widgets filled up to there.
    virtual void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement);

    // Makes the widgets usable when the requirement stands in the current baseline,
    // and only then.
    virtual void EnableDisableControls();

private:
    Quorane_TLB::Handle<Quorane_TLB::IRequirement> FRequirement;
};

// Whether the requirement stands in the current baseline of its project: the client's
// whole rule on what can be edited. False for an empty handle.
bool StandsInCurrentBaseline(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement);

// What the server gets for a required text: one blank stands for an empty one.
std::u16string RequiredText(const std::string& text);
