// What the description shows while the pointer rests on it.
#include <algorithm>

#include "description/UDescriptionFrame.h"
#include "description/UGlossaryHintForm.h"
#include "frames/URequirementPanel.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

namespace {

// The hint stands beside the pointer and not under it.
constexpr int RightOfPointer = 10;
constexpr int BelowPointer = 5;

std::u16string Trimmed(const std::u16string& text) {
    const auto isInk = [](char16_t letter) { return letter > u' '; };
    const auto first = std::ranges::find_if(text, isInk);
    const auto last = std::find_if(text.rbegin(), std::make_reverse_iterator(first), isInk);
    return {first, last.base()};
}

} // namespace

void TfraDescription::wbrReqDescriptiononmousemove() {
    GuardServerCalls([this] {
        const TPoint pointer = Screen().CursorPosition();
        const std::u16string word = CurrentDescriptionElement();
        Handle<IGlossary> glossary;
        Handle<IGlossaryTerm> term;
        if (const Handle<IRequirement> requirement = GUIHelpers->CurrentRequirement)
            CurrentSession().GetGlossaryTerm(requirement->Get_Project(), word, glossary, term);
        if (term)
            frmGlossaryHint->ShowHint(pointer.X + RightOfPointer, pointer.Y + BelowPointer,
                                      Utf8(glossary->Get_Name()), Utf8(term->Get_Definition()));
        else
            HideGlossaryHint();
    });
}

std::u16string TfraDescription::CurrentDescriptionElement() {
    try {
        const TPoint place = wbrReqDescription->Control().ScreenToClient(Screen().CursorPosition());
        const THtmlHandle<IHTMLDocument2> document = GetHtmlDocument2();
        if (!document) return {};
        const auto range = std::dynamic_pointer_cast<IHTMLTxtRange>(document->get_selection()->createRange());
        if (!range) return {};
        range->moveToPoint(place.X, place.Y);
        range->moveStart("word", -1);
        range->moveEnd("word", 1);
        return Trimmed(range->get_text());
    } catch (const std::exception&) {
        // Without a word there is no hint, and the next move asks again.
        return {};
    }
}
