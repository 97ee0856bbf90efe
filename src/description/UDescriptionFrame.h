// The HTML description of the requirement on show. It is shown here and not edited: the
// document that a save takes from this frame is the one that the requirement holds.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class THtmlView;

class TfraDescription : public TfraBaseRequirementFrame {
public:
    explicit TfraDescription(TWinControl* parent, const std::string& name = "fraDescription");

    // Shows the description of the current requirement, or the text of its key
    // reference if it has one. Does nothing without a current requirement. A failing
    // server call leaves the view empty and goes no further.
    void UpdateDescription();

    // Whether the user has changed the document since it was loaded.
    bool IsDirty() const { return false; }

    // What a save writes as the description of the current requirement; empty without
    // one. Raises what reading the description raises.
    std::u16string GetDocumentHTML() const;

    // Whether the text on show is that of a key reference.
    bool isKeyReferenced() const { return FKeyReferenced; }

    THtmlView* wbrReqDescription;

private:
    std::u16string HtmlToShow();
    void OpenLink(const std::string& address);

    bool FKeyReferenced = false;
};
