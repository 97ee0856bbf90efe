// The formatting of the selection: written to the engine, and read back from it.
#include "description/LateBrowser.h"
#include "description/UDescriptionToolbarFrame.h"
#include "platform/widgets/Lists.h"
#include "server/UQuoraneStHelpers.h"

using Quorane_TLB::Utf8;
using Quorane_TLB::Wide;

THtmlHandle<IHTMLDocument2> TfraDescriptionToolbar::DOMInterface() const {
    return FDHTMLEdit ? std::dynamic_pointer_cast<IHTMLDocument2>(FDHTMLEdit->Document()) : nullptr;
}

THtmlHandle<IOleCommandTarget> TfraDescriptionToolbar::CommandTarget() const {
    return FDHTMLEdit ? std::dynamic_pointer_cast<IOleCommandTarget>(FDHTMLEdit->Document()) : nullptr;
}

THtmlHandle<IHTMLRange> TfraDescriptionToolbar::SelectedRange() const {
    const auto document = DOMInterface();
    return document ? document->get_selection()->createRange() : nullptr;
}

THtmlValue TfraDescriptionToolbar::GetHTMLEditProperty(const std::string& name) const {
    const auto range = SelectedRange();
    return range ? range->queryCommandValue(name) : THtmlValue();
}

void TfraDescriptionToolbar::SetHTMLEditProperty(const std::string& name, const THtmlValue& value) {
    if (const auto range = SelectedRange()) range->execCommand(name, false, value);
    UpdateDisplay();
}

std::uint32_t TfraDescriptionToolbar::GetCommandStatus(std::uint32_t command) const {
    std::uint32_t flags = 0;
    if (const auto target = CommandTarget()) target->QueryStatus(command, flags);
    return flags;
}

void TfraDescriptionToolbar::GetSpecialCommandState(std::uint32_t command, bool& enabled,
                                                    bool& latched) const {
    const std::uint32_t flags = GetCommandStatus(command);
    enabled = (flags & hfEnabled) != 0;
    latched = (flags & hfLatched) != 0;
}

THtmlStatus TfraDescriptionToolbar::HrExecCommand(std::uint32_t command, const THtmlValue& in, bool prompt) {
    const auto target = CommandTarget();
    return target ? target->Exec(command, prompt ? hoPromptUser : hoDontPromptUser, in) : hsOk;
}

THtmlStatus TfraDescriptionToolbar::SpecialCommand(std::uint32_t command, bool prompt) {
    return HrExecCommand(command, {}, prompt);
}

// A value of another kind counts as false.
bool TfraDescriptionToolbar::GetFlag(const std::string& name) const {
    const THtmlValue value = GetHTMLEditProperty(name);
    const bool* flag = std::get_if<bool>(&value);
    return flag && *flag;
}

bool TfraDescriptionToolbar::GetBold() const {
    return GetFlag("Bold");
}

void TfraDescriptionToolbar::SetBold(bool bold) {
    SetHTMLEditProperty("Bold", bold);
}

bool TfraDescriptionToolbar::GetItalic() const {
    return GetFlag("Italic");
}

void TfraDescriptionToolbar::SetItalic(bool italic) {
    SetHTMLEditProperty("Italic", italic);
}

bool TfraDescriptionToolbar::GetUnderline() const {
    return GetFlag("Underline");
}

void TfraDescriptionToolbar::SetUnderline(bool underline) {
    SetHTMLEditProperty("Underline", underline);
}

std::string TfraDescriptionToolbar::GetFontName() const {
    const THtmlValue value = GetHTMLEditProperty("FontName");
    const auto* name = std::get_if<std::u16string>(&value);
    return name ? Utf8(*name) : std::string();
}

void TfraDescriptionToolbar::SetFontName(const std::string& name) {
    SetHTMLEditProperty("FontName", Wide(name));
}

int TfraDescriptionToolbar::GetFontSize() const {
    const THtmlValue value = GetHTMLEditProperty("FontSize");
    const auto* size = std::get_if<std::int32_t>(&value);
    return size ? *size : -1;
}

void TfraDescriptionToolbar::SetFontSize(int size) {
    SetHTMLEditProperty("FontSize", size);
}

TTextAlignment TfraDescriptionToolbar::GetTextAlignment() const {
    if (GetFlag("JustifyRight")) return TTextAlignment::Right;
    return GetFlag("JustifyCenter") ? TTextAlignment::Center : TTextAlignment::Left;
}

void TfraDescriptionToolbar::SetTextAlignment(TTextAlignment alignment) {
    const char* name = alignment == TTextAlignment::Right    ? "JustifyRight"
                       : alignment == TTextAlignment::Center ? "JustifyCenter"
                                                             : "JustifyLeft";
    SetHTMLEditProperty(name, true);
}

bool TfraDescriptionToolbar::GetNumberedList() const {
    bool enabled = false;
    bool latched = false;
    GetSpecialCommandState(hcNumberedList, enabled, latched);
    return enabled && latched;
}

void TfraDescriptionToolbar::SetNumberedList() {
    SpecialCommand(hcNumberedList, false);
    UpdateDisplay();
}

bool TfraDescriptionToolbar::GetBulletList() const {
    bool enabled = false;
    bool latched = false;
    GetSpecialCommandState(hcBulletList, enabled, latched);
    return enabled && latched;
}

void TfraDescriptionToolbar::SetBulletList() {
    SpecialCommand(hcBulletList, false);
    UpdateDisplay();
}

void TfraDescriptionToolbar::SetTextColor(TColor color) {
    SetHTMLEditProperty("ForeColor", color.ToInteger());
}

void TfraDescriptionToolbar::UpdateDisplay() {
    btnBold->SetDown(GetBold());
    btnItalic->SetDown(GetItalic());
    btnUnderline->SetDown(GetUnderline());
    btnNumberedList->SetDown(GetNumberedList());
    btnBullets->SetDown(GetBulletList());
    const TTextAlignment alignment = GetTextAlignment();
    btnAlignLeft->SetDown(alignment == TTextAlignment::Left);
    btnCenter->SetDown(alignment == TTextAlignment::Center);
    btnAlignRight->SetDown(alignment == TTextAlignment::Right);
    // Documents write fonts in any case.
    cbxFontNames->SetItemIndex(cbxFontNames->Items().IndexOfAnyCase(GetFontName()));
    ShowFontSize(GetFontSize());
}

void TfraDescriptionToolbar::ShowFontSize(int size) {
    TStrings& sizes = cbxFontSize->Items();
    const std::string text = std::to_string(size);
    if (size != -1 && sizes.IndexOf(text) < 0) sizes.Add(text);
    cbxFontSize->SetItemIndex(size == -1 ? -1 : sizes.IndexOf(text));
}

void TfraDescriptionToolbar::SetDocDirty() {
    if (const auto target = CommandTarget()) target->Exec(hcSetDirty, hoDefault, true);
}

THtmlHandle<IHTMLElement> TfraDescriptionToolbar::SelectedElement() const {
    const auto document = DOMInterface();
    if (!document) return nullptr;
    const auto selection = document->get_selection();
    const std::string type = selection->get_type();
    const auto range = selection->createRange();
    if (type == "Control") {
        const auto control = std::dynamic_pointer_cast<IHTMLControlRange>(range);
        return control ? control->commonParentElement() : nullptr;
    }
    const auto text = std::dynamic_pointer_cast<IHTMLTxtRange>(range);
    if (!text) return nullptr;
    text->collapse(true);
    return text->parentElement();
}
