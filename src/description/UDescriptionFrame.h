// The HTML description of the requirement on show, edited in place by the HTML engine:
// the description goes into a file, the browser control loads the file, and a save takes
// the whole document back.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "description/LateBrowser.h"
#include "frames/UBaseRequirementFrame.h"

class TfraDescriptionToolbar;
class TPanel;
class THTMLWindowEvents;

// What the engine shows its events to, as a component with a handler.
class TEditDesigner : public TDataModule, public IHTMLEditDesigner {
public:
    using TDataModule::TDataModule;

    std::function<THtmlStatus(std::int32_t eventDispId, IHTMLEventObj& event)> OnPreHandleEvent;

    THtmlStatus PreHandleEvent(std::int32_t eventDispId, IHTMLEventObj& event) override;
};

class TfraDescription : public TfraBaseRequirementFrame {
public:
    explicit TfraDescription(TWinControl* parent, const std::string& name = "fraDescription");
    ~TfraDescription() override;

    // Not owned, empty for none.
    void SetDescriptionToolbarFrame(TfraDescriptionToolbar* toolbar) { FDescriptionToolbar = toolbar; }

    // Loads the description of the current requirement for editing, or the text of its
    // key reference, which cannot be edited. Does nothing without session or current
    // requirement. A failing server or engine call leaves the view empty and goes no
    // further; any other failure leaves it empty, too, and is raised. Re-enters the message loop: another
    // requirement may be on show afterwards.
    void UpdateDescription();

    // Whether the user has changed the document since it was loaded; false while it
    // loads. Asks neither engine nor server, but loads a description that was not.
    bool IsDirty();
    // From here on only further changes count.
    void ClearDirty();

    // The document on show from its outermost element on: what a save writes as the
    // description, unless isKeyReferenced. When the engine's process has died, what was
    // last taken from it. Empty while no document of the current requirement is on show.
    // Raises EOleSysError when the engine fails.
    std::u16string GetDocumentHTML();

    bool isHtmlFocused() const { return FHtmlFocused; }
    // Whether the text on show is that of a key reference.
    bool isKeyReferenced() const { return FKeyReferenced; }

    // Empty without a document.
    THtmlHandle<IHTMLDocument2> GetHtmlDocument2();
    THtmlHandle<IHTMLEditServices> EditServices();
    // Re-enters the message loop until the browser has loaded. There is no time limit.
    void WaitWhileEditorBusy();

    // The word under the pointer, without blanks around it; empty when there is none
    // and when the engine cannot tell.
    std::u16string CurrentDescriptionElement();

    std::unique_ptr<TLateBrowser> wbrReqDescription;
    TEditDesigner* eddDescription;
    // On show while the engine's process is dead.
    TPanel* pnlEngineGone;
    TButton* btnLoadAgain;

private:
    void MakeEngineGonePanel();

    // Loading
    void Show(const std::u16string& kept);
    void LeaveDocument();
    void CloseToTyping();
    bool hasKeyReference();
    static std::u16string getDescriptionFromDocumentReference(
        const Quorane_TLB::Handle<Quorane_TLB::IDocumentReference>& reference);
    void Load(const std::u16string& html);
    void SetDirty(bool dirty);
    void SetDesignModeOn();
    void SetDesignModeOff();
    void AttachDesigner();
    void DetachDesigner();
    bool ShowsCurrentRequirement();
    // So that it outlives the engine's process.
    void KeepText(const std::u16string& html);

    // Events
    void wbrReqDescriptionDownloadComplete();
    void EngineGone();
    void btnLoadAgainClick();
    void registerWebBrowserEventListeners();
    THtmlStatus eddDescriptionPreHandleEvent(std::int32_t eventDispId, IHTMLEventObj& event);
    void wbrReqDescriptiononclick();
    void wbrReqDescriptiononmousemove();
    void wbrReqDescriptiononkeydown();
    void htmlOnFocused();
    void htmlOnBlured();
    void MsgHandler(const TKeyMessage& message, bool& handled);
    void insertTabInDocument();
    static void TellLostPictures(int count);
    static void OpenLink(const std::string& address);
    // An empty address is none.
    void ShowLinkHint(const std::string& address);

    TfraDescriptionToolbar* FDescriptionToolbar = nullptr;
    // Of the requirement on show; empty while nothing was taken.
    std::u16string FKeptText;
    // Made from the key reference of the last requirement that had one.
    std::u16string FKeyReferenceDescription;
    bool FHtmlFocused = false;
    bool FKeyReferenced = false;
    std::unique_ptr<THTMLWindowEvents> FWindowEvents;
    THtmlHandle<IOleInPlaceActiveObject> FInPlaceObject;
    // The designer as attached to the engine; empty for none.
    IHTMLEditDesigner* FDesignerHandle = nullptr;
    // The Tab key went down in the document, and not on the way into it.
    bool FTabDown = false;
    // Counts the loads, so that one that another has overtaken in the message loop
    // knows.
    int FLoads = 0;
    // The requirement that was loaded last, well or not, and the one whose document is
    // on show, by their numbers.
    std::optional<std::int32_t> FLoadedRequirement;
    std::optional<std::int32_t> FShownRequirement;
};
