// What the description editor asks of the HTML engine: a browser control that loads a
// file, lets the user edit it in place and gives the document back as HTML.
//
// The interfaces bear the published names of the engine's objects and hold what the
// editor uses of them. An object that offers several interfaces is asked for another
// one by std::dynamic_pointer_cast; an element that is a table offers IHTMLTable.
//
// Every call waits for the engine and may run update handlers' messages meanwhile, but
// takes no input of the user. A call raises EOleSysError when the engine fails, when
// it does not answer in time and when the object's document is gone, unless it gives a
// THtmlStatus; these calls raise nothing. After a call without an answer the next ones
// fail at once until the engine comes round. Events arrive when the page is done with
// them, so their handlers may call.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

class TWinControl;
struct TKeyMessage;

using THtmlStatus = std::int32_t;
inline constexpr THtmlStatus hsOk = 0;
inline constexpr THtmlStatus hsFalse = 1;
inline constexpr auto hsFail = static_cast<THtmlStatus>(0x80004005);

// Nothing stands for null; numbers that are no integers come as text.
using THtmlValue = std::variant<std::monostate, bool, std::int32_t, std::u16string>;

class IHtmlObject {
public:
    virtual ~IHtmlObject();

    IHtmlObject(const IHtmlObject&) = delete;
    IHtmlObject& operator=(const IHtmlObject&) = delete;

protected:
    IHtmlObject() = default;
};

template<class T> using THtmlHandle = std::shared_ptr<T>;

class IHTMLStyle {
public:
    virtual ~IHTMLStyle();
    // A property of the style sheet language in either spelling, in any case.
    virtual void setAttribute(const std::u16string& name, const THtmlValue& value, std::int32_t flags) = 0;
};

class IHTMLElementCollection;

class IHTMLElement : public virtual IHtmlObject {
public:
    ~IHTMLElement() override;
    // In capital letters.
    virtual std::u16string get_tagName() = 0;
    virtual std::u16string get_outerHTML() = 0;
    // Nothing for an attribute that the element does not have.
    virtual THtmlValue getAttribute(const std::u16string& name) = 0;
    virtual void setAttribute(const std::u16string& name, const THtmlValue& value) = 0;
    virtual THtmlHandle<IHTMLElementCollection> get_children() = 0;
    virtual THtmlHandle<IHTMLStyle> get_style() = 0;
};

// The elements as they were when the collection was taken.
class IHTMLElementCollection {
public:
    virtual ~IHTMLElementCollection();
    virtual std::int32_t get_length() = 0;
    // Empty outside 0 to length - 1.
    virtual THtmlHandle<IHTMLElement> item(std::int32_t index) = 0;
};

// What is put into a table is sent with the next call that reads, or when the program
// comes back to its loop; a failure comes then.
class IHTMLTableCell : public virtual IHtmlObject {
public:
    ~IHTMLTableCell() override;
    virtual void put_width(const THtmlValue& width) = 0;
};

class IHTMLTableRow : public virtual IHtmlObject {
public:
    ~IHTMLTableRow() override;
    virtual THtmlHandle<IHTMLTableCell> insertCell(std::int32_t index) = 0;
};

class IHTMLTable : public virtual IHtmlObject {
public:
    ~IHTMLTable() override;
    virtual THtmlHandle<IHTMLTableRow> insertRow(std::int32_t index) = 0;
    virtual void put_border(const THtmlValue& border) = 0;
    virtual void put_borderColor(const THtmlValue& color) = 0;
    virtual void put_cellSpacing(const THtmlValue& spacing) = 0;
    virtual void put_cellPadding(const THtmlValue& padding) = 0;
    virtual void put_width(const THtmlValue& width) = 0;
    virtual void put_height(const THtmlValue& height) = 0;
    virtual void put_align(const std::u16string& align) = 0;
};

// What both kinds of range offer: formatting by name, "Bold" for example.
class IHTMLRange : public virtual IHtmlObject {
public:
    ~IHTMLRange() override;
    // False when the engine knows or allows no such command here.
    virtual bool execCommand(const std::string& name, bool showUserInterface, const THtmlValue& value) = 0;
    virtual THtmlValue queryCommandValue(const std::string& name) = 0;
};

class IHTMLTxtRange : public IHTMLRange {
public:
    ~IHTMLTxtRange() override;
    virtual std::u16string get_text() = 0;
    // The caret's place nearest to a point of the window, in pixels.
    virtual void moveToPoint(std::int32_t x, std::int32_t y) = 0;
    // The unit is "word". Moves are sent with the next call that reads or changes; a
    // negative count moves back.
    virtual void moveStart(const std::string& unit, std::int32_t count) = 0;
    virtual void moveEnd(const std::string& unit, std::int32_t count) = 0;
    virtual void collapse(bool toStart) = 0;
    virtual THtmlHandle<IHTMLElement> parentElement() = 0;
    // Replaces the range by parsed HTML; the user can take it back. An image whose "src"
    // is the path of a file is shown from there.
    virtual void pasteHTML(const std::u16string& html) = 0;
};

class IHTMLControlRange : public IHTMLRange {
public:
    ~IHTMLControlRange() override;
    virtual THtmlHandle<IHTMLElement> commonParentElement() = 0;
};

class IHTMLSelectionObject {
public:
    virtual ~IHTMLSelectionObject();
    // "None", "Text" or "Control".
    virtual std::string get_type() = 0;
    // An IHTMLTxtRange or an IHTMLControlRange. It is tied to the selection when it is
    // first changed or read, which fails when the selection has become the other kind;
    // until then it answers queryCommandValue for the selection, all commands of it in
    // one call of the engine.
    virtual THtmlHandle<IHTMLRange> createRange() = 0;
};

class IHTMLEventObj : public virtual IHtmlObject {
public:
    ~IHTMLEventObj() override;
    // "mouseup", "mousemove", "keydown", and "mouseleave" when the pointer leaves the
    // document.
    virtual std::string get_type() = 0;
};

class IHTMLEditDesigner {
public:
    virtual ~IHTMLEditDesigner();
    // Comes when the page is done with the event, so that the designer may call the engine
    // and sees what the event did; the answer, hsFalse to let the engine go on, holds
    // nothing back any more.
    virtual THtmlStatus PreHandleEvent(std::int32_t eventDispId, IHTMLEventObj& event) = 0;
};

class IHTMLEditServices {
public:
    virtual ~IHTMLEditServices();
    // The designer must outlive its being added; it goes with its document.
    virtual THtmlStatus AddDesigner(IHTMLEditDesigner& designer) = 0;
    virtual THtmlStatus RemoveDesigner(IHTMLEditDesigner& designer) = 0;
};

// The commands of the group CMDSETID_Forms3 that the editor uses.
enum THtmlCommand : std::uint32_t { hcNumberedList = 2184, hcBulletList = 2185, hcSetDirty = 2342 };
enum THtmlCommandOption : std::uint32_t { hoDefault = 0, hoPromptUser = 1, hoDontPromptUser = 2 };
enum THtmlCommandFlag : std::uint32_t { hfEnabled = 2, hfLatched = 4 };

class IOleCommandTarget : public virtual IHtmlObject {
public:
    ~IOleCommandTarget() override;
    virtual THtmlStatus Exec(std::uint32_t command, std::uint32_t option, const THtmlValue& in) = 0;
    // The flags of THtmlCommandFlag; 0 for a command that is not known or may not run.
    virtual THtmlStatus QueryStatus(std::uint32_t command, std::uint32_t& flags) = 0;
};

class IPersistStreamInit : public virtual IHtmlObject {
public:
    ~IPersistStreamInit() override;
    // hsOk after a change by the user or by a command, hsFalse otherwise. Answered
    // without asking the engine, so it is cheap enough for idle moments.
    virtual THtmlStatus IsDirty() = 0;
    // Leaves an empty document.
    virtual THtmlStatus InitNew() = 0;
};

using THtmlArgument =
    std::variant<std::monostate, bool, std::int32_t, std::u16string, THtmlHandle<IHtmlObject>>;

// The arguments of an event: the last one first, and of these the named ones, by
// their numbers, at the front.
struct TEventArguments {
    std::vector<THtmlArgument> Values;
    std::vector<std::int32_t> Named;
};

// What listens to the events of a dispatch interface.
class IHtmlEventSink {
public:
    virtual ~IHtmlEventSink();
    // flags holds 1 for a call of a method, which every event is. Gives hsOk for an
    // event of the interface. May raise, which ends in the standard error box.
    virtual THtmlStatus Invoke(std::int32_t dispId, std::uint16_t flags, const TEventArguments& arguments,
                               THtmlValue& result) = 0;
};

// Where an object gives out the events of one dispatch interface.
class IConnectionPoint {
public:
    virtual ~IConnectionPoint();
    // The sink must be taken back before it goes; a document that goes lets go of it.
    virtual THtmlStatus Advise(IHtmlEventSink& sink, std::uint32_t& cookie) = 0;
    // hsFail for a cookie that Advise did not give or that is taken back.
    virtual THtmlStatus Unadvise(std::uint32_t cookie) = 0;
};

class IConnectionPointContainer : public virtual IHtmlObject {
public:
    ~IConnectionPointContainer() override;
    // interfaceId in braces; hsFail and an empty handle for one that the object has not.
    virtual THtmlStatus FindConnectionPoint(const std::string& interfaceId,
                                            THtmlHandle<IConnectionPoint>& point) = 0;
};

// The window of a document. Its connection points are those of HTMLWindowEvents, which
// tell of onfocus and onblur.
class IHTMLWindow2 : public virtual IHtmlObject {
public:
    ~IHTMLWindow2() override;
};

inline constexpr const char* HTMLWindowEventsId = "{96A0A4E0-D062-11CF-94B6-00AA0060275C}";
inline constexpr auto heOnFocus = static_cast<std::int32_t>(0x80010001);
inline constexpr auto heOnBlur = static_cast<std::int32_t>(0x80010000);

class IHTMLDocument2 : public virtual IHtmlObject {
public:
    ~IHTMLDocument2() override;
    // "On" or "Off"; raises for anything else.
    virtual void put_designMode(const std::string& mode) = 0;
    virtual std::string get_designMode() = 0;
    // Only "utf-8", which every document of this engine has.
    virtual void put_charset(const std::string& charset) = 0;
    virtual THtmlHandle<IHTMLSelectionObject> get_selection() = 0;
    // An element that stands in no document yet.
    virtual THtmlHandle<IHTMLElement> createElement(const std::string& tagName) = 0;
    virtual THtmlHandle<IHTMLWindow2> get_parentWindow() = 0;
    virtual THtmlHandle<IHTMLEditServices> get_EditServices() = 0;
};

class IHTMLDocument3 : public virtual IHtmlObject {
public:
    ~IHTMLDocument3() override;
    // Empty while the document has none.
    virtual THtmlHandle<IHTMLElement> get_documentElement() = 0;
};

// The page as the receiver of keys.
class IOleInPlaceActiveObject : public virtual IHtmlObject {
public:
    ~IOleInPlaceActiveObject() override;
    // hsOk for a key that the page itself has a command for, such as Ctrl+B, so that no
    // shortcut of the host may take it away; hsFalse for any other.
    virtual THtmlStatus TranslateAccelerator(const TKeyMessage& message) = 0;
};

// The browser control. Its widget fills its parent and goes with it.
class IWebBrowser {
public:
    virtual ~IWebBrowser();

    virtual TWinControl& Control() = 0;
    // Starts loading the file; Busy is true until it is there. The document of before
    // is gone at once. Of other files the document shows those pictures that are in
    // PictureCacheFolder and those that the user has put in, into this document or an
    // earlier one; nothing comes from a network.
    virtual void Navigate(const std::string& path) = 0;
    virtual bool Busy() = 0;
    // Offers IHTMLDocument2, IHTMLDocument3, IOleCommandTarget, IPersistStreamInit.
    // Empty before the first Navigate and while the engine's process is dead.
    virtual THtmlHandle<IHtmlObject> Document() = 0;
    // Offers IOleInPlaceActiveObject.
    virtual THtmlHandle<IHtmlObject> Application() = 0;
    virtual void SetFocus() = 0;
    // How often the engine was asked for something, for measurements.
    virtual std::int64_t EngineCalls() = 0;

    // At the end of each load, also of a failed one.
    std::function<void()> OnDownloadComplete;
    // The engine's process has died, and with it the document and what was not taken out
    // of it. Comes at a turn of the message loop; a call that was under way has failed
    // before. Navigate starts the process anew.
    std::function<void()> OnEngineGone;
    // So many pictures of what the user has pasted or dropped are neither in the folder
    // for pictures nor bring their bytes along. Of them only the alternative text stays.
    std::function<void(int count)> OnPicturesLost;
    // The user wants to follow a link to the web or a mailbox, by a click, with Ctrl held
    // while the document is edited; the control itself never leaves the document.
    std::function<void(const std::string& address)> OnLinkClick;
    // The pointer has come onto such a link; empty when it has left it.
    std::function<void(const std::string& address)> OnLinkHover;
    // The user has changed the document and now pauses, or has left it: its HTML from
    // the outermost element on, without a call for it. So it outlives the engine's process.
    std::function<void(const std::u16string& html)> OnTextChanged;
};

// Makes a browser control in the parent. Raises EOleSysError when the engine cannot be
// started.
using THtmlEngineFactory =
    std::function<std::unique_ptr<IWebBrowser>(TWinControl& parent, const std::string& name)>;

// Set by whoever composes the program; empty takes it away.
void SetHtmlEngineFactory(THtmlEngineFactory factory);
// Raises EOleSysError when no engine is set, and what the factory raises.
std::unique_ptr<IWebBrowser> CreateWebBrowser(TWinControl& parent, const std::string& name);

// The one function that an engine's library exports, by this name. It may raise.
inline constexpr const char* HtmlEngineEntryName = "QuoraneCreateWebBrowser";
using THtmlEngineEntry = void (*)(TWinControl& parent, const std::string& name,
                                  std::unique_ptr<IWebBrowser>& browser);
