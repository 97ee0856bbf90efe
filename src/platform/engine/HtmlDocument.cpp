#include "platform/engine/HtmlDocument.h"

#include "contracts/EventDispatch.h"
#include "contracts/Exceptions.h"
#include "platform/widgets/Application.h"

#include <algorithm>

namespace {

class TSelection : public IHTMLSelectionObject {
public:
    explicit TSelection(TEnginePage& page)
        : FDocument(page, 0) {}

    std::string get_type() override {
        return FDocument.Page().Selection()[QLatin1String("type")].toString().toStdString();
    }
    THtmlHandle<IHTMLRange> createRange() override { return MakeRange(FDocument.Page()); }

private:
    TPageObject FDocument;
};

class TEventObj : public IHTMLEventObj {
public:
    explicit TEventObj(std::string type)
        : FType(std::move(type)) {}
    std::string get_type() override { return FType; }

private:
    std::string FType;
};

// The numbers of the events that designers see.
std::int32_t EventNumber(const QString& type) {
    constexpr std::int32_t mouseMove = -606;
    constexpr std::int32_t mouseUp = -607;
    constexpr std::int32_t keyDown = -602;
    constexpr std::int32_t mouseLeave = 1043;
    if (type == QStringLiteral("mousemove")) return mouseMove;
    if (type == QStringLiteral("mouseleave")) return mouseLeave;
    return type == QStringLiteral("mouseup") ? mouseUp : keyDown;
}

// Empty for a command that the editor does not have.
QString CommandName(std::uint32_t command) {
    switch (command) {
    case hcNumberedList:
        return QStringLiteral("insertOrderedList");
    case hcBulletList:
        return QStringLiteral("insertUnorderedList");
    default:
        return {};
    }
}

// A call whose failure is a status and no exception.
template<class TBody> THtmlStatus Status(TBody&& body) {
    try {
        std::forward<TBody>(body)();
        return hsOk;
    } catch (const EOleSysError&) {
        return hsFail;
    }
}

} // namespace

THtmlDocument::THtmlDocument(TEnginePage& page)
    : FObject(page, 0) {}

void THtmlDocument::put_designMode(const std::string& mode) {
    const bool editing = mode == "On";
    if (!editing && mode != "Off") throw EOleSysError("The design mode is On or Off.", hsFail);
    FObject.Call("setDesignMode",
                 {editing ? QStringLiteral("on") : QStringLiteral("off"), FObject.Page().Guard().Chosen()});
    FEditing = editing;
}

std::string THtmlDocument::get_designMode() {
    return FObject.Read("designMode").toString().toStdString();
}

void THtmlDocument::put_charset(const std::string& charset) {
    FObject.Page();
    if (charset != "utf-8") throw EOleSysError("The engine has no charset but utf-8.", hsFail);
}

THtmlHandle<IHTMLSelectionObject> THtmlDocument::get_selection() {
    return std::make_shared<TSelection>(FObject.Page());
}

THtmlHandle<IHTMLElement> THtmlDocument::createElement(const std::string& tagName) {
    return MakeElement(FObject.Page(), FObject.Call("createElement", {QString::fromStdString(tagName)}));
}

THtmlHandle<IHTMLWindow2> THtmlDocument::get_parentWindow() {
    FObject.Page();
    return shared_from_this();
}

THtmlHandle<IHTMLEditServices> THtmlDocument::get_EditServices() {
    return shared_from_this();
}

THtmlHandle<IHTMLElement> THtmlDocument::get_documentElement() {
    return MakeElement(FObject.Page(), FObject.Read("documentElement"));
}

THtmlStatus THtmlDocument::Exec(std::uint32_t command, std::uint32_t, const THtmlValue& in) {
    if (command == hcSetDirty) {
        const bool* dirty = std::get_if<bool>(&in);
        if (!dirty) return hsFail;
        const THtmlStatus status = Status([&] { SetDirty(*dirty); });
        // Whoever clears it goes by that, also while the page cannot be told.
        if (status != hsOk && !*dirty) FDirty = false;
        return status;
    }
    const QString name = CommandName(command);
    if (name.isEmpty()) return hsFail;
    return Status([&] {
        if (!FObject.Call("command", {name}).toBool())
            throw EOleSysError("The command is not allowed here.", hsFail);
    });
}

// What is refused leaves the state as it was, or later news of it would go unheard.
void THtmlDocument::SetDirty(bool dirty) {
    FObject.Post("setDirty", {dirty, FEpoch + 1});
    ++FEpoch;
    FDirty = dirty;
}

THtmlStatus THtmlDocument::QueryStatus(std::uint32_t command, std::uint32_t& flags) {
    flags = 0;
    const QString name = CommandName(command);
    if (name.isEmpty()) return hsFail;
    return Status([&] {
        const QJsonValue all = FObject.Page().Selection()[QLatin1String("flags")];
        flags = static_cast<std::uint32_t>(all[name].toInt());
    });
}

THtmlStatus THtmlDocument::IsDirty() {
    return Alive() && FDirty ? hsOk : hsFalse;
}

THtmlStatus THtmlDocument::InitNew() {
    return Status([&] {
        FObject.Post("initNew");
        SetDirty(false);
    });
}

THtmlStatus THtmlDocument::AddDesigner(IHTMLEditDesigner& designer) {
    if (!Alive()) return hsFail;
    if (std::ranges::find(FDesigners, &designer) == FDesigners.end()) FDesigners.push_back(&designer);
    return hsOk;
}

THtmlStatus THtmlDocument::RemoveDesigner(IHTMLEditDesigner& designer) {
    return std::erase(FDesigners, &designer) == 1 ? hsOk : hsFail;
}

THtmlStatus THtmlDocument::FindConnectionPoint(const std::string& interfaceId,
                                               THtmlHandle<IConnectionPoint>& point) {
    point = interfaceId == HTMLWindowEventsId ? shared_from_this() : nullptr;
    return point ? hsOk : hsFail;
}

THtmlStatus THtmlDocument::Advise(IHtmlEventSink& sink, std::uint32_t& cookie) {
    cookie = 0;
    if (!Alive()) return hsFail;
    cookie = ++FLastCookie;
    FSinks.emplace(cookie, &sink);
    return hsOk;
}

THtmlStatus THtmlDocument::Unadvise(std::uint32_t cookie) {
    return FSinks.erase(cookie) == 1 ? hsOk : hsFail;
}

void THtmlDocument::Tell(const QJsonObject& message) {
    if (const QJsonValue type = message[QStringLiteral("event")]; type.isString()) {
        TellDesigners(type.toString());
    } else if (message[QStringLiteral("epoch")] == FEpoch) {
        // News from before the last setting of the dirty state says nothing any more.
        FDirty = message[QStringLiteral("dirty")].toBool();
        const QJsonValue html = message[QStringLiteral("html")];
        if (html.isString() && OnTextChanged) OnTextChanged(html.toString().toStdU16String());
    }
}

void THtmlDocument::TellDesigners(const QString& type) {
    TEventObj event(type.toStdString());
    // A designer may take itself or another one away.
    for (IHTMLEditDesigner* designer : std::vector(FDesigners))
        if (std::ranges::find(FDesigners, designer) != FDesigners.end())
            Application().Dispatch(nullptr, [&] { designer->PreHandleEvent(EventNumber(type), event); });
}

void THtmlDocument::TellFocus(bool focused) {
    for (const auto& [cookie, sink] : std::map(FSinks)) {
        if (!FSinks.contains(cookie)) continue;
        THtmlValue result;
        Application().Dispatch(nullptr,
                               [&] { sink->Invoke(focused ? heOnFocus : heOnBlur, Ole::DispatchMethod, {}, result); });
    }
}
