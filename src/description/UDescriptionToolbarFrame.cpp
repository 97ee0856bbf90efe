// The controls of the bar, and what each of them does.
#include "description/UDescriptionToolbarFrame.h"

#include "description/UDescriptionFrame.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int FontNamesWidth = 145;
constexpr int FontSizeWidth = 49;
constexpr int LargestFontSize = 7;

std::string AttributeText(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        if (letter == '&')
            escaped += "&amp;";
        else if (letter == '"')
            escaped += "&quot;";
        else
            escaped += letter;
    }
    return escaped;
}

} // namespace

TfraDescriptionToolbar::TfraDescriptionToolbar(TWinControl* parent, const TImageList& images,
                                               const std::string& name)
    : TFrame(parent, name) {
    MakeControls(images);
    BindHandlers();
    SetupFormattingButtons();
    EnableDisable(false);
}

void TfraDescriptionToolbar::MakeControls(const TImageList& images) {
    tlbDescriptionFormatting = new TToolBar(this, "tlbDescriptionFormatting");
    tlbDescriptionFormatting->SetImages(&images);
    tlbDescriptionFormatting->SetAccessibleName(SFormattingBar);
    const auto addList = [this](const char* listName, const char* hint, int width) {
        auto* list = new TComboBox(tlbDescriptionFormatting, listName);
        list->SetHint(hint);
        list->SetWidth(width);
        return list;
    };
    const auto add = [this](const char* button, int image, const char* hint,
                            TToolButtonStyle style = TToolButtonStyle::Button) {
        return &tlbDescriptionFormatting->AddButton(button, image, hint, style);
    };
    cbxFontNames = addList("cbxFontNames", SFontNameHint, FontNamesWidth);
    cbxFontSize = addList("cbxFontSize", SFontSizeHint, FontSizeWidth);
    cbxFontSize->SetSorted(true);
    for (int size = 1; size <= LargestFontSize; ++size)
        cbxFontSize->Items().Add(std::to_string(size));
    tlbDescriptionFormatting->AddSeparator("btnSeparatorBold");
    btnBold = add("btnBold", imBold, SBoldHint, TToolButtonStyle::Check);
    btnItalic = add("btnItalic", imItalic, SItalicHint);
    btnUnderline = add("btnUnderline", imUnderline, SUnderlineHint, TToolButtonStyle::Check);
    tlbDescriptionFormatting->AddSeparator("btnSeparatorAlignment");
    btnAlignLeft = add("btnAlignLeft", imAlignLeft, SLeftJustifyHint);
    btnCenter = add("btnCenter", imAlignCenter, SCenterJustifyHint);
    btnAlignRight = add("btnAlignRight", imAlignRight, SRightJustifyHint);
    tlbDescriptionFormatting->AddSeparator("btnSeparatorBullets");
    btnNumberedList = add("btnNumberedList", imNumberedList, SNumberedListHint);
    btnBullets = add("btnBullets", imBullets, SBulletsHint);
    tlbDescriptionFormatting->AddSeparator("btnSeparatorColor");
    btnForeColor = add("btnForeColor", imForeColor, SForegroundColorHint);
    btnInsertTable = add("btnInsertTable", imInsertTable, SInsertTableHint);
    btnInsertImage = add("btnInsertImage", imInsertImage, SInsertImageHint);
}

void TfraDescriptionToolbar::BindHandlers() {
    cbxFontNames->OnChange = [this] { cbxFontNamesChange(); };
    cbxFontNames->OnEnter = [this] { cbxFontNameEntered(); };
    cbxFontNames->OnExit = [this] { cbxFontNameExited(); };
    cbxFontSize->OnChange = [this] { cbxFontSizeChange(); };
    cbxFontSize->OnEnter = [this] { cbxFontSizeEntered(); };
    cbxFontSize->OnExit = [this] { cbxFontSizeExited(); };
    const auto bind = [this](TToolButton* button, void (TfraDescriptionToolbar::*execute)()) {
        button->OnClick = [this, execute] { (this->*execute)(); };
        button->OnExit = [this] { EnableDisable(false); };
    };
    bind(btnBold, &TfraDescriptionToolbar::btnBoldExecute);
    bind(btnItalic, &TfraDescriptionToolbar::btnItalicExecute);
    bind(btnUnderline, &TfraDescriptionToolbar::btnUnderlineExecute);
    bind(btnAlignLeft, &TfraDescriptionToolbar::btnAlignLeftExecute);
    bind(btnCenter, &TfraDescriptionToolbar::btnCenterExecute);
    bind(btnAlignRight, &TfraDescriptionToolbar::btnAlignRightExecute);
    bind(btnNumberedList, &TfraDescriptionToolbar::btnNumListExecute);
    bind(btnBullets, &TfraDescriptionToolbar::btnBulletExecute);
    bind(btnForeColor, &TfraDescriptionToolbar::btnColorExecute);
    bind(btnInsertTable, &TfraDescriptionToolbar::btnInsertTableExecute);
    bind(btnInsertImage, &TfraDescriptionToolbar::btnInsertImageClick);
}

void TfraDescriptionToolbar::SetupFormattingButtons() {
    TStrings& names = cbxFontNames->Items();
    names.BeginUpdate();
    for (const std::string& font : Screen().Fonts())
        names.Add(font);
    names.EndUpdate();
}

TfraDescription* TfraDescriptionToolbar::Description() const {
    return FDHTMLEdit ? dynamic_cast<TfraDescription*>(&FDHTMLEdit->Parent()) : nullptr;
}

void TfraDescriptionToolbar::EnableDisable(bool enable) {
    const TfraDescription* description = Description();
    const bool keyed = description && description->isKeyReferenced();
    // The lists' flags and the document's follow one after the other when the focus
    // moves between them, and the bar's buttons have none.
    const bool inside = tlbDescriptionFormatting->ContainsFocus() ||
                        (FDHTMLEdit && FDHTMLEdit->Started() && FDHTMLEdit->Control().ContainsFocus());
    const bool focused =
        description && (FFontNameFocused || FFontSizeFocused || description->isHtmlFocused() || inside);
    if (!enable && focused && !keyed) return;
    const bool enabled = enable && !keyed;
    tlbDescriptionFormatting->SetEnabled(enabled);
    for (TControl* control : tlbDescriptionFormatting->Controls())
        control->SetEnabled(enabled);
}

void TfraDescriptionToolbar::JoinTabOrder(TWinControl& document) {
    for (TControl* control : tlbDescriptionFormatting->Controls())
        if (auto* input = dynamic_cast<TWinControl*>(control)) input->StandBeforeInTabOrder(document);
}

void TfraDescriptionToolbar::cbxFontNamesChange() {
    SetFontName(cbxFontNames->Text());
}

void TfraDescriptionToolbar::cbxFontNameEntered() {
    FFontNameFocused = true;
    EnableDisable(true);
}

void TfraDescriptionToolbar::cbxFontNameExited() {
    FFontNameFocused = false;
    EnableDisable(false);
}

void TfraDescriptionToolbar::cbxFontSizeChange() {
    SetFontSize(std::stoi(cbxFontSize->Text()));
}

void TfraDescriptionToolbar::cbxFontSizeEntered() {
    FFontSizeFocused = true;
    EnableDisable(true);
}

void TfraDescriptionToolbar::cbxFontSizeExited() {
    FFontSizeFocused = false;
    EnableDisable(false);
}

void TfraDescriptionToolbar::btnBoldExecute() {
    SetBold(btnBold->Down());
}

void TfraDescriptionToolbar::btnItalicExecute() {
    SetItalic(btnItalic->Down());
}

void TfraDescriptionToolbar::btnUnderlineExecute() {
    SetUnderline(btnUnderline->Down());
}

void TfraDescriptionToolbar::btnAlignLeftExecute() {
    SetTextAlignment(TTextAlignment::Left);
}

void TfraDescriptionToolbar::btnCenterExecute() {
    SetTextAlignment(TTextAlignment::Center);
}

void TfraDescriptionToolbar::btnAlignRightExecute() {
    SetTextAlignment(TTextAlignment::Right);
}

void TfraDescriptionToolbar::btnNumListExecute() {
    SetNumberedList();
}

void TfraDescriptionToolbar::btnBulletExecute() {
    SetBulletList();
}

void TfraDescriptionToolbar::btnColorExecute() {
    const std::optional<TColor> color = Application().Dialogs().PickColor(FTextColor);
    if (!color) return;
    FTextColor = *color;
    SetTextColor(*color);
}

void TfraDescriptionToolbar::btnInsertImageClick() {
    const auto range = std::dynamic_pointer_cast<IHTMLTxtRange>(SelectedRange());
    if (!range) return;
    const std::optional<std::string> path = Application().Dialogs().OpenPicture({"", SPictureFilter, ""});
    if (!path) return;
    range->pasteHTML(Quorane_TLB::Wide("<IMG src=\"" + AttributeText(*path) + "\" border=0 new=\"true\">"));
}
