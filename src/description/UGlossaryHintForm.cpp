#include "description/UGlossaryHintForm.h"

#include <cmath>

std::unique_ptr<TfrmGlossaryHint> frmGlossaryHint;

namespace {

constexpr int FormWidth = 254;
constexpr int FormHeight = 56;
constexpr int DefinitionWidth = 251;
constexpr int LineHeight = 13;
constexpr int Slack = 5;
constexpr char FontName[] = "Tahoma";
constexpr int FontHeight = 11;

} // namespace

TfrmGlossaryHint::TfrmGlossaryHint()
    : TForm(nullptr, "frmGlossaryHint") {
    SetBorderStyle(TBorderStyle::Hint);
    SetFont(FontName, FontHeight);
    SetColor(clInfoBk);
    SetBounds(0, 0, FormWidth, FormHeight);
    shpGlossary = new TShape(this, "shpGlossary");
    shpGlossary->SetAlign(TAlign::Client);
    shpGlossary->SetColor(clInfoBk);
    shpGlossary->SetFontColor(clInfoText);
    lblGlossaryName = new TLabel(this, "lblGlossaryName");
    lblGlossaryName->SetBounds(2, 1, DefinitionWidth - 1, LineHeight);
    lblGlossaryName->SetFontColor(clBlue);
    lblDefinition = new TLabel(this, "lblDefinition");
    lblDefinition->SetBounds(1, 16, DefinitionWidth, LineHeight);
    lblDefinition->SetFontColor(clInfoText);
    lblDefinition->SetWordWrap(true);
}

void TfrmGlossaryHint::ShowHint(int x, int y, const std::string& glossaryName,
                                const std::string& definition) {
    SetLeft(x);
    SetTop(y);
    SetGlossaryName(glossaryName);
    SetDefinition(definition);
    DoResize();
    Show();
}

void TfrmGlossaryHint::SetGlossaryName(const std::string& glossaryName) {
    FGlossaryName = glossaryName;
    lblGlossaryName->SetCaption(glossaryName);
}

void TfrmGlossaryHint::SetDefinition(const std::string& definition) {
    FDefinition = definition;
    lblDefinition->SetCaption(definition);
}

void TfrmGlossaryHint::DoResize() {
    const double textWidth = lblDefinition->TextWidth();
    const int lines = static_cast<int>(std::ceil(textWidth / lblDefinition->Width() + 1.0));
    lblDefinition->SetHeight(lines * LineHeight);
    SetHeight(lblGlossaryName->Height() + lblDefinition->Height() + Slack);
}

void CreateGlossaryHint() {
    frmGlossaryHint = std::make_unique<TfrmGlossaryHint>();
}

void HideGlossaryHint() {
    if (frmGlossaryHint) frmGlossaryHint->Hide();
}

void FreeGlossaryHint() {
    frmGlossaryHint.reset();
}
