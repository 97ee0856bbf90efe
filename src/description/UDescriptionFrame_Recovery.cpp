// The way on after the engine's process has died under a description.
#include "description/UDescriptionFrame.h"

#include "description/UDescriptionToolbarFrame.h"
#include "description/UGlossaryHintForm.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "server/UResourceStrings.h"

void TfraDescription::MakeEngineGonePanel() {
    pnlEngineGone = new TPanel(this, "pnlEngineGone");
    pnlEngineGone->SetAlign(TAlign::Top);
    TGridLayout& grid = pnlEngineGone->UseGridLayout();
    grid.SetMargins(FrameMargin, LabelGap, FrameMargin, LabelGap);
    grid.SetSpacing(FrameMargin, 0);
    auto* text = new TLabel(pnlEngineGone, "lblEngineGone", SEngineGone);
    text->SetWordWrap(true);
    btnLoadAgain = new TButton(pnlEngineGone, "btnLoadAgain", SLoadAgain);
    btnLoadAgain->OnClick = [this] { btnLoadAgainClick(); };
    grid.Place(*text, 0, 0);
    grid.Place(*btnLoadAgain, 0, 1);
    grid.SetColumnStretch(0, 1);
    pnlEngineGone->Hide();
}

void TfraDescription::EngineGone() {
    // The next description may be on its way already, in a process of its own.
    if (wbrReqDescription->Busy() || wbrReqDescription->Document()) return;
    FHtmlFocused = false;
    HideGlossaryHint();
    if (FDescriptionToolbar) FDescriptionToolbar->EnableDisable(false);
    pnlEngineGone->Show();
}

void TfraDescription::btnLoadAgainClick() {
    const std::u16string kept = FKeptText;
    Show(kept);
    wbrReqDescription->SetFocus();
}
