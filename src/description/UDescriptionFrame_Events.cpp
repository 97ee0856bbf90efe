// What the document, its window and the keyboard tell the frame.
#include "description/UDescriptionFrame.h"

#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "description/MSHTMLEvents.h"
#include "description/UDescriptionToolbarFrame.h"
#include "description/UGlossaryHintForm.h"
#include "server/UResourceStrings.h"

namespace {

// What a hint shows of one, in letters.
constexpr std::size_t LongestAddress = 100;

} // namespace

THtmlStatus TEditDesigner::PreHandleEvent(std::int32_t eventDispId, IHTMLEventObj& event) {
    return OnPreHandleEvent ? OnPreHandleEvent(eventDispId, event) : hsFalse;
}

void TfraDescription::wbrReqDescriptionDownloadComplete() {
    if (!wbrReqDescription->Document()) return;
    DetachDesigner();
    AttachDesigner();
    registerWebBrowserEventListeners();
}

void TfraDescription::registerWebBrowserEventListeners() {
    if (!FWindowEvents) {
        FWindowEvents = std::make_unique<THTMLWindowEvents>(nullptr, "FWindowEvents");
        FWindowEvents->onfocus = [this](TMSHTMLEventsBaseSink&) { htmlOnFocused(); };
        FWindowEvents->onblur = [this](TMSHTMLEventsBaseSink&) { htmlOnBlured(); };
    }
    try {
        FWindowEvents->Connect(GetHtmlDocument2()->get_parentWindow());
    } catch (const Exception&) {
        // A document without these events can be edited all the same. A sink tells the
        // engine's failures, which are of a class of their own, as plain ones.
    }
}

THtmlStatus TfraDescription::eddDescriptionPreHandleEvent(std::int32_t, IHTMLEventObj& event) {
    const std::string type = event.get_type();
    if (type == "mouseup") wbrReqDescriptiononclick();
    if (type == "mousemove") wbrReqDescriptiononmousemove();
    if (type == "keydown") wbrReqDescriptiononkeydown();
    if (type == "mouseleave") HideGlossaryHint();
    return hsFalse;
}

void TfraDescription::wbrReqDescriptiononclick() {
    if (FDescriptionToolbar) FDescriptionToolbar->UpdateDisplay();
}

void TfraDescription::wbrReqDescriptiononkeydown() {
    if (FDescriptionToolbar) FDescriptionToolbar->UpdateDisplay();
}

void TfraDescription::htmlOnFocused() {
    FHtmlFocused = true;
    if (!FDescriptionToolbar) return;
    FDescriptionToolbar->EnableDisable(true);
    // Here, because what moves into another window leaves its tab order behind.
    FDescriptionToolbar->JoinTabOrder(wbrReqDescription->Control());
}

void TfraDescription::htmlOnBlured() {
    FHtmlFocused = false;
    FTabDown = false;
    if (FDescriptionToolbar) FDescriptionToolbar->EnableDisable(false);
    Application().SetMessageHook(
        [this](const TKeyMessage& message, bool& handled) { MsgHandler(message, handled); });
}

void TfraDescription::MsgHandler(const TKeyMessage& message, bool& handled) {
    handled = wbrReqDescription->Started() && message.Window == &wbrReqDescription->Control();
    if (!handled || wbrReqDescription->Busy()) return;
    if (!FInPlaceObject)
        FInPlaceObject = std::dynamic_pointer_cast<IOleInPlaceActiveObject>(wbrReqDescription->Application());
    if (!FInPlaceObject) return;
    switch (message.Key) {
    case TKey::Tab: {
        const bool plain = !message.Shift.Shift && !message.Shift.Ctrl && !message.Shift.Alt;
        const bool wasDown = std::exchange(FTabDown, message.Down && plain);
        if (!message.Down && wasDown) insertTabInDocument();
        // A command of the host's, such as the way to its next window.
        handled = !message.Shift.Ctrl && !message.Shift.Alt;
        return;
    }
    case TKey::Backspace:
    case TKey::Left:
    case TKey::Right:
    case TKey::Up:
    case TKey::Down:
        return;
    default:
        // What the page has no command for stays the host's: its shortcuts work here, too.
        handled = FInPlaceObject->TranslateAccelerator(message) == hsOk;
    }
}

void TfraDescription::insertTabInDocument() {
    const auto document = FKeyReferenced ? nullptr : GetHtmlDocument2();
    if (!document) return;
    const auto range = std::dynamic_pointer_cast<IHTMLTxtRange>(document->get_selection()->createRange());
    if (range) range->pasteHTML(u"&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;");
}

void TfraDescription::TellLostPictures(int count) {
    Application().MessageBox(count == 1 ? SPictureLost : std::to_string(count) + SPicturesLost,
                             SMessageCaption, TMessageIcon::Warning, TMessageButtons::Ok);
}

void TfraDescription::OpenLink(const std::string& address) {
    if (Application().MessageBox(SOpenLinkQuestion + address, SMessageCaption, TMessageIcon::Question,
                                 TMessageButtons::YesNo) == TMessageResult::Yes)
        SystemServices().ShellOpen(address);
}

void TfraDescription::ShowLinkHint(const std::string& address) {
    std::string hint = address.substr(0, LongestAddress);
    if (hint.size() < address.size()) hint += "...";
    if (!hint.empty()) hint += FKeyReferenced ? SClickToOpen : SCtrlClickToOpen;
    wbrReqDescription->Control().SetHint(hint);
}
