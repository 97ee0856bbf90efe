// The way of a description into the engine and back.
#include "description/UDescriptionFrame.h"

#include "contracts/Exceptions.h"
#include "description/MSHTMLEvents.h"
#include "description/UGlossaryHintForm.h"
#include "frames/ScopedFlag.h"
#include "frames/URequirementPanel.h"
#include "platform/widgets/Containers.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

// While a description loads, no change counts as the user's.
bool UpdatingDescription = false;

// The engine writes the blanks of addresses escaped.
std::u16string WithBlanks(const std::u16string& html) {
    constexpr std::u16string_view escaped = u"%20";
    std::u16string text;
    text.reserve(html.size());
    std::size_t from = 0;
    for (auto at = html.find(escaped); at != std::u16string::npos; at = html.find(escaped, from)) {
        text.append(html, from, at - from).push_back(u' ');
        from = at + escaped.size();
    }
    return text.append(html, from);
}

std::optional<std::int32_t> CurrentNumber() {
    const Handle<IRequirement>& requirement = GUIHelpers->CurrentRequirement;
    return requirement ? std::optional(requirement->Get_IDNumber()) : std::nullopt;
}

} // namespace

TfraDescription::TfraDescription(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name)
    , wbrReqDescription(std::make_unique<TLateBrowser>(*this, "wbrReqDescription"))
    , eddDescription(new TEditDesigner(this, "eddDescription")) {
    CreateGlossaryHint();
    MakeEngineGonePanel();
    wbrReqDescription->OnEngineGone = [this] { EngineGone(); };
    wbrReqDescription->OnDownloadComplete = [this] { wbrReqDescriptionDownloadComplete(); };
    wbrReqDescription->OnPicturesLost = [](int count) { TellLostPictures(count); };
    wbrReqDescription->OnLinkClick = [](const std::string& address) { OpenLink(address); };
    wbrReqDescription->OnLinkHover = [this](const std::string& address) { ShowLinkHint(address); };
    wbrReqDescription->OnTextChanged = [this](const std::u16string& html) { KeepText(html); };
    eddDescription->OnPreHandleEvent = [this](std::int32_t eventDispId, IHTMLEventObj& event) {
        return eddDescriptionPreHandleEvent(eventDispId, event);
    };
}

TfraDescription::~TfraDescription() {
    Application().SetMessageHook({});
    FreeGlossaryHint();
}

void TfraDescription::UpdateDescription() {
    Show({});
}

// A text that was kept takes the place of the stored one, as a change of the user's.
void TfraDescription::Show(const std::u16string& kept) {
    const Handle<IRequirement> requirement = GUIHelpers->CurrentRequirement;
    if (!wbrReqDescription || !QuoraneSession || !requirement) return;
    const TScopedFlag updating(UpdatingDescription);
    const int load = ++FLoads;
    FLoadedRequirement = CurrentNumber();
    FShownRequirement.reset();
    FKeptText = kept;
    pnlEngineGone->Hide();
    try {
        LeaveDocument();
        FKeyReferenced = hasKeyReference();
        if (FKeyReferenced)
            Load(FKeyReferenceDescription);
        else
            Load(kept.empty() ? requirement->Get_Description()->Get_Text() : kept);
        if (load != FLoads) return;
        if (FKeyReferenced)
            SetDesignModeOff();
        else
            SetDesignModeOn();
        if (load != FLoads) return;
        AttachDesigner();
        if (!kept.empty() && !FKeyReferenced) SetDirty(true);
        FShownRequirement = FLoadedRequirement;
    } catch (const EOleSysError&) {
        // Frames and tree report what the server refuses; the view stays empty.
        if (load == FLoads) CloseToTyping();
    } catch (...) {
        if (load == FLoads) CloseToTyping();
        throw;
    }
}

// Leaves nothing of the last requirement on show while the next one is read.
void TfraDescription::LeaveDocument() {
    HideGlossaryHint();
    const auto document = std::dynamic_pointer_cast<IPersistStreamInit>(wbrReqDescription->Document());
    if (!document) return;
    ClearDirty();
    document->InitNew();
    DetachDesigner();
}

// What is typed into the page of a failed load belongs to no requirement, and would be
// lost without a word.
void TfraDescription::CloseToTyping() {
    try {
        SetDesignModeOff();
    } catch (const EOleSysError&) {
        // A page that takes no calls takes no keys either.
    }
}

bool TfraDescription::hasKeyReference() {
    const auto references =
        EnumerableStCollection(GUIHelpers->CurrentRequirement->Get_DocumentReferences())->GetEnumerator();
    while (references->MoveNext()) {
        const auto reference = Cast<IDocumentReference>(references->GetCurrent());
        if (reference->Get_IsKey() == WordFalse) continue;
        FKeyReferenceDescription = getDescriptionFromDocumentReference(reference);
        return true;
    }
    return false;
}

std::u16string
TfraDescription::getDescriptionFromDocumentReference(const Handle<IDocumentReference>& reference) {
    const Handle<IHTMLHelper> helper = CoHTMLHelperFactory::Create()->Create1();
    if (const auto file = Query<IFileReference>(reference))
        return helper->plainTextToHTML(file->Get_Description());
    if (const auto web = Query<IWebReference>(reference)) return helper->plainTextToHTML(web->Get_URL());
    if (const auto text = Query<ITextReference>(reference)) return helper->plainTextToHTML(text->Get_Text());
    throw Exception(SUnknownReferenceKind);
}

void TfraDescription::Load(const std::u16string& html) {
    wbrReqDescription->Navigate(CurrentSession().PrepareRequirementDescriptionFile(html));
    wbrReqDescription->Control().SetAccessibleName(SDescription);
    WaitWhileEditorBusy();
    const auto document = GetHtmlDocument2();
    if (!document) throw EOleSysError("The description could not be loaded.", hsFail);
    document->put_charset("utf-8");
}

void TfraDescription::WaitWhileEditorBusy() {
    Application().WaitWhile([this] { return wbrReqDescription->Busy(); });
}

void TfraDescription::SetDesignModeOn() {
    WaitWhileEditorBusy();
    if (const auto document = GetHtmlDocument2()) document->put_designMode("On");
}

void TfraDescription::SetDesignModeOff() {
    DetachDesigner();
    if (const auto document = GetHtmlDocument2()) document->put_designMode("Off");
}

void TfraDescription::AttachDesigner() {
    FDesignerHandle = eddDescription;
    if (const auto services = EditServices()) services->AddDesigner(*FDesignerHandle);
}

void TfraDescription::DetachDesigner() {
    const auto services = EditServices();
    if (FDesignerHandle && services) services->RemoveDesigner(*FDesignerHandle);
}

bool TfraDescription::ShowsCurrentRequirement() {
    return FShownRequirement && FShownRequirement == CurrentNumber();
}

bool TfraDescription::IsDirty() {
    if (UpdatingDescription) return false;
    if (const auto document = std::dynamic_pointer_cast<IPersistStreamInit>(wbrReqDescription->Document()))
        return ShowsCurrentRequirement() && document->IsDirty() == hsOk;
    // A load that has failed is not tried again at each idle moment.
    if (const auto number = CurrentNumber(); number && number != FLoadedRequirement) UpdateDescription();
    return false;
}

void TfraDescription::ClearDirty() {
    SetDirty(false);
}

void TfraDescription::SetDirty(bool dirty) {
    if (const auto target = std::dynamic_pointer_cast<IOleCommandTarget>(wbrReqDescription->Document()))
        target->Exec(hcSetDirty, hoDefault, dirty);
}

void TfraDescription::KeepText(const std::u16string& html) {
    if (ShowsCurrentRequirement()) FKeptText = WithBlanks(html);
}

std::u16string TfraDescription::GetDocumentHTML() {
    if (!ShowsCurrentRequirement()) return {};
    const auto document = std::dynamic_pointer_cast<IHTMLDocument3>(wbrReqDescription->Document());
    if (!document) return FKeptText;
    const auto element = document->get_documentElement();
    if (!element) return {};
    FKeptText = WithBlanks(element->get_outerHTML());
    return FKeptText;
}

THtmlHandle<IHTMLDocument2> TfraDescription::GetHtmlDocument2() {
    return std::dynamic_pointer_cast<IHTMLDocument2>(wbrReqDescription->Document());
}

THtmlHandle<IHTMLEditServices> TfraDescription::EditServices() {
    const auto document = GetHtmlDocument2();
    return document ? document->get_EditServices() : nullptr;
}
