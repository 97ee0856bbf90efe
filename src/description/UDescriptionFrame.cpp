#include "description/UDescriptionFrame.h"

#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "frames/URequirementPanel.h"
#include "platform/widgets/look/HtmlView.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

// Empty when the requirement has no key reference.
Handle<IDocumentReference> KeyReference(const Handle<IRequirement>& requirement) {
    const auto references = EnumerableStCollection(requirement->Get_DocumentReferences())->GetEnumerator();
    while (references->MoveNext()) {
        auto reference = Cast<IDocumentReference>(references->GetCurrent());
        if (reference->Get_IsKey() != WordFalse) return reference;
    }
    return {};
}

std::u16string TextOf(const Handle<IDocumentReference>& reference) {
    if (const auto file = Query<IFileReference>(reference)) return file->Get_Description();
    if (const auto web = Query<IWebReference>(reference)) return web->Get_URL();
    if (const auto text = Query<ITextReference>(reference)) return text->Get_Text();
    throw Exception(SUnknownReferenceKind);
}

} // namespace

TfraDescription::TfraDescription(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name) {
    wbrReqDescription = new THtmlView(this, "wbrReqDescription");
    wbrReqDescription->SetAlign(TAlign::Client);
    wbrReqDescription->SetAccessibleName(SDescription);
    wbrReqDescription->OnLinkClick = [this](const std::string& address) { OpenLink(address); };
}

void TfraDescription::UpdateDescription() {
    if (!GUIHelpers->CurrentRequirement) return;
    wbrReqDescription->Clear();
    try {
        wbrReqDescription->SetHtml(HtmlToShow());
    } catch (const EOleSysError&) {
        // Frames and tree report what the server refuses; the view stays empty.
        FKeyReferenced = false;
    }
}

std::u16string TfraDescription::HtmlToShow() {
    const Handle<IRequirement> requirement = GUIHelpers->CurrentRequirement;
    const Handle<IDocumentReference> key = KeyReference(requirement);
    FKeyReferenced = key != nullptr;
    if (!key) return requirement->Get_Description()->Get_Text();
    return CoHTMLHelperFactory::Create()->Create1()->plainTextToHTML(TextOf(key));
}

std::u16string TfraDescription::GetDocumentHTML() const {
    const Handle<IRequirement> requirement = GUIHelpers->CurrentRequirement;
    return requirement ? requirement->Get_Description()->Get_Text() : std::u16string();
}

void TfraDescription::OpenLink(const std::string& address) {
    if (Application().MessageBox(SOpenLinkQuestion + address, SMessageCaption, TMessageIcon::Question,
                                 TMessageButtons::YesNo) == TMessageResult::Yes)
        SystemServices().ShellOpen(address);
}
