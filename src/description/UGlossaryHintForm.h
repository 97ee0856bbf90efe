// The hint beside the mouse pointer that explains a glossary's term.
#pragma once

#include <memory>
#include <string>

#include "platform/widgets/Edits.h"
#include "platform/widgets/Forms.h"

class TfrmGlossaryHint : public TForm {
public:
    TfrmGlossaryHint();

    // Shows the hint with its left top corner at a point of the screen, in pixels. It
    // stays until it is hidden.
    void ShowHint(int x, int y, const std::string& glossaryName, const std::string& definition);

    void SetGlossaryName(const std::string& glossaryName);
    void SetDefinition(const std::string& definition);
    // Makes the form as high as the definition needs; the width stays.
    void DoResize();

    TShape* shpGlossary;
    TLabel* lblGlossaryName;
    TLabel* lblDefinition;

private:
    std::string FGlossaryName;
    std::string FDefinition;
};

// There from CreateGlossaryHint to FreeGlossaryHint, which the description frame calls
// with its own making and end: a window can be made no earlier than the application.
extern std::unique_ptr<TfrmGlossaryHint> frmGlossaryHint;

void CreateGlossaryHint();
// Does nothing without a hint.
void HideGlossaryHint();
void FreeGlossaryHint();
