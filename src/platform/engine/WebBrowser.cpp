#include "platform/engine/WebBrowser.h"

#include "contracts/Exceptions.h"
#include "platform/widgets/QtText.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenu>

#include <string_view>

#include <unistd.h>

namespace {

class TKeyReceiver : public IOleInPlaceActiveObject {
public:
    // Keys without Ctrl are kept from shortcuts by the view itself.
    THtmlStatus TranslateAccelerator(const TKeyMessage& message) override {
        static constexpr std::string_view commands = "ABCIUVXYZ";
        const bool command = message.Shift.Ctrl && !message.Shift.Alt && message.Letter != 0 &&
                             commands.find(message.Letter) != std::string_view::npos;
        return command ? hsOk : hsFalse;
    }
};

} // namespace

// The event comes out of the engine, which answers no call before it is back: so this
// does not wait for the menu.
void TBrowserControl::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto action :
         {QWebEnginePage::Undo, QWebEnginePage::Redo, QWebEnginePage::NoWebAction, QWebEnginePage::Cut,
          QWebEnginePage::Copy, QWebEnginePage::Paste, QWebEnginePage::PasteAndMatchStyle,
          QWebEnginePage::NoWebAction, QWebEnginePage::SelectAll}) {
        if (action == QWebEnginePage::NoWebAction)
            menu->addSeparator();
        else
            menu->addAction(pageAction(action));
    }
    menu->popup(event->globalPos());
}

// The engine would end the whole program when it finds itself run by root inside its
// sandbox, and crash when two drawing contexts cannot be shared.
void PrepareEngine() {
    if (geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    if (!QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts))
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
}

TWebBrowser::TWebBrowser(TWinControl& parent, const std::string& name)
    : FPage(std::make_unique<TEnginePage>(FProfile))
    , FControl(new TBrowserControl(&parent, name)) {
    FControl->SetAlign(TAlign::Client);
    FControl->setPage(FPage.get());
    FPage->OnLoaded = [this] { Loaded(); };
    FPage->OnMessage = [this](const QJsonObject& message) { Hear(message); };
    FPage->OnGone = [this] {
        TellHover({});
        if (OnEngineGone) ::Application().Dispatch(FControl, [this] { OnEngineGone(); });
    };
    FPage->OnLink = [this](const QUrl& url) {
        if (OnLinkClick) ::Application().Dispatch(FControl, [&] { OnLinkClick(FromQt(url.toString())); });
    };
    connect(FPage.get(), &QWebEnginePage::renderProcessTerminated, this,
            [this] { FTakeFocus = FFocusWidget && FFocusWidget->hasFocus(); });
    WatchFocus();
}

TWebBrowser::~TWebBrowser() {
    FPage->OnLoaded = nullptr;
    FPage->OnGone = nullptr;
    if (FFocusWidget) FFocusWidget->removeEventFilter(this);
    if (FControl) FControl->setPage(nullptr);
}

TWinControl& TWebBrowser::Control() {
    if (!FControl) throw EOleSysError("The browser control is gone.", hsFail);
    return *FControl;
}

void TWebBrowser::Navigate(const std::string& path) {
    FDocument.reset();
    TellHover({});
    FPage->Load(ToQt(path));
}

bool TWebBrowser::Busy() {
    return FPage->Loading();
}

THtmlHandle<IHtmlObject> TWebBrowser::Document() {
    if (!FDocument || !FDocument->Alive()) return nullptr;
    return std::static_pointer_cast<IHTMLDocument2>(FDocument);
}

std::int64_t TWebBrowser::EngineCalls() {
    return FPage->Calls();
}

THtmlHandle<IHtmlObject> TWebBrowser::Application() {
    return std::make_shared<TKeyReceiver>();
}

void TWebBrowser::SetFocus() {
    if (FControl) FControl->setFocus();
}

void TWebBrowser::Loaded() {
    FDocument = FPage->Ready() ? std::make_shared<THtmlDocument>(*FPage) : nullptr;
    if (FDocument)
        FDocument->OnTextChanged = [this](const std::u16string& html) {
            if (OnTextChanged) ::Application().Dispatch(FControl, [&] { OnTextChanged(html); });
        };
    WatchFocus();
    if (OnDownloadComplete) ::Application().Dispatch(FControl, [this] { OnDownloadComplete(); });
    // Nobody listened to the document when the focus came or went.
    const bool focused = FFocusWidget && FFocusWidget->hasFocus();
    if (FDocument && (focused || FToldFocus)) TellFocus(focused);
}

void TWebBrowser::TellFocus(bool focused) {
    FToldFocus = focused;
    // A listener may load another document.
    const auto document = FDocument;
    document->TellFocus(focused);
}

void TWebBrowser::Hear(const QJsonObject& message) {
    const auto document = FDocument;
    if (!document) return;
    if (const int lost = message[QStringLiteral("lostPictures")].toInt(); lost > 0) {
        if (OnPicturesLost) ::Application().Dispatch(FControl, [&] { OnPicturesLost(lost); });
        return;
    }
    const QJsonValue type = message[QStringLiteral("event")];
    if (type == QStringLiteral("mousemove") || type == QStringLiteral("mouseleave"))
        TellHover(message[QStringLiteral("link")].toString());
    document->Tell(message);
}

void TWebBrowser::TellHover(const QString& address) {
    const QString link = TEnginePage::LeadsOutside(QUrl(address)) ? address : QString();
    if (std::exchange(FHovered, link) == link || !OnLinkHover) return;
    ::Application().Dispatch(FControl, [&] { OnLinkHover(FromQt(link)); });
}

// The widget that takes the keys is made late and anew after the engine's process died.
void TWebBrowser::WatchFocus() {
    QWidget* proxy = FControl ? FControl->focusProxy() : nullptr;
    if (!proxy || proxy == FFocusWidget) return;
    FFocusWidget = proxy;
    proxy->installEventFilter(this);
    // With the old widget the focus went nowhere.
    if (std::exchange(FTakeFocus, false) && !QApplication::focusWidget()) SetFocus();
}

bool TWebBrowser::eventFilter(QObject* watched, QEvent* event) {
    // The page itself has no way out for the keyboard while it is edited.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Backtab &&
        FDocument && FDocument->Editing()) {
        if (FControl) FControl->LeaveBackwards();
        return true;
    }
    if (event->type() == QEvent::Leave)
        FPage->Hear({{QStringLiteral("event"), QStringLiteral("mouseleave")}});
    const bool focusEvent = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (!focusEvent || watched != FFocusWidget) return false;
    const bool gained = event->type() == QEvent::FocusIn;
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const auto document = FDocument;
    // The Tab key would take the caret from its place to the first link or field.
    const bool tabbed = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    if (gained && tabbed && document && document->Editing()) {
        QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
        QCoreApplication::sendEvent(watched, &plain);
        return true;
    }
    // The context menu is a part of the editor.
    if (reason != Qt::PopupFocusReason && document) TellFocus(gained);
    return false;
}
