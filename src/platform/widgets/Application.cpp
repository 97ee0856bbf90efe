#include "platform/widgets/Application.h"

#include <algorithm>
#include <set>
#include <utility>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCursor>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpression>

#include "platform/widgets/Actions.h"
#include "platform/widgets/Control.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/QtText.h"

namespace {

// Shows the keys of all widgets to the message hook. The system asks the widget with the
// focus about each key before shortcuts get it; that is where the hook comes in.
class TKeyFilter : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool down = event->type() == QEvent::ShortcutOverride;
        QWidget* focused = QApplication::focusWidget();
        if (!(down || event->type() == QEvent::KeyRelease) || watched != focused) return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (!down && key.isAutoRepeat()) return false;
        const bool handled = Application().CallMessageHook(KeyMessage(key, *focused));
        if (!down || !handled) return false;
        event->accept();
        return true;
    }
};

// A message handler that begins a loop of its own may have others behind it in the queue.
// The system's loop takes them for known and sleeps until something new is posted, which
// may be what one of them was to bring about.
void HearWaitingMessages() {
    if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance()) dispatcher->wakeUp();
}

} // namespace

// What ties the application to Qt's loop: renewed when a program makes another loop.
struct TApplication::TLoop {
    std::unique_ptr<TKeyFilter> KeyFilter;
    QPointer<QAbstractEventDispatcher> Dispatcher;
    QMetaObject::Connection Connection;
};

TApplication::TApplication()
    : FLoop(std::make_unique<TLoop>())
    , FNativeDialogs(std::make_unique<TNativeDialogs>()) {}

TApplication::~TApplication() = default;

TApplication& Application() {
    static TApplication application;
    return application;
}

void TApplication::HandleException() {
    std::string text;
    try {
        throw;
    } catch (const std::exception& failure) {
        text = failure.what();
    } catch (...) {
        text = "An unknown error has occurred.";
    }
    ShowException(text);
}

void TApplication::ShowException(const std::string& text) {
    Dialogs().ShowError(text);
}

void TApplication::ShowExceptionLater(const std::string& text) {
    if (FLateError == text) return;
    FLateError = text;
    QMetaObject::invokeMethod(
        qApp,
        [this, text] {
            FLateError.clear();
            ShowException(text);
        },
        Qt::QueuedConnection);
}

TMessageResult TApplication::MessageBox(const std::string& text, const std::string& caption,
                                        TMessageIcon icon, TMessageButtons buttons,
                                        TMessageResult defaultButton) {
    return Dialogs().ShowMessage({text, caption, icon, buttons, defaultButton});
}

IDialogs& TApplication::Dialogs() {
    return FDialogs ? *FDialogs : *FNativeDialogs;
}

IDialogs* TApplication::SetDialogs(IDialogs* dialogs) {
    return std::exchange(FDialogs, dialogs);
}

void TApplication::SetModalHook(std::function<void(TForm&)> hook) {
    FModalHook = std::move(hook);
}

void TApplication::CallModalHook(TForm& form) {
    if (const auto hook = FModalHook) hook(form);
}

void TApplication::ProcessMessages() {
    QCoreApplication::processEvents();
}

void TApplication::WaitMessage() {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void TApplication::WaitWhile(const std::function<bool()>& condition) {
    HearWaitingMessages();
    while (condition())
        WaitMessage();
}

void TApplication::SetMessageHook(TMessageHook hook) {
    FMessageHook = std::move(hook);
    // The filter stays: the call may come from inside it.
    if (!FLoop->KeyFilter) FLoop->KeyFilter = std::make_unique<TKeyFilter>();
    if (FMessageHook)
        qApp->installEventFilter(FLoop->KeyFilter.get());
    else if (qApp)
        qApp->removeEventFilter(FLoop->KeyFilter.get());
}

bool TApplication::CallMessageHook(const TKeyMessage& message) {
    bool handled = false;
    const TMessageHook hook = FMessageHook;
    if (hook) Dispatch(nullptr, [&] { hook(message, handled); });
    return handled;
}

bool TApplication::IsSending(const TComponent& sender) const {
    return std::find(FSenders.begin(), FSenders.end(), &sender) != FSenders.end();
}

void TApplication::HookMessageLoop() {
    QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    if (!dispatcher || FLoop->Dispatcher == dispatcher) return;
    FLoop->Dispatcher = dispatcher;
    FLoop->Connection = QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, dispatcher,
                                         [this] { ProcessIdle(); });
}

void TApplication::AddActionList(TActionList& list) {
    HookMessageLoop();
    FActionLists.push_back(&list);
}

void TApplication::RemoveActionList(TActionList& list) {
    std::erase(FActionLists, &list);
}

void TApplication::ProcessIdle() {
    if (FUpdating || HandlerRunning() || FEngineCalls > 0) return;
    FUpdating = true;
    UpdateActions();
    FUpdating = false;
}

void TApplication::UpdateActions() {
    const std::vector<TActionList*> lists = FActionLists;
    for (TActionList* list : lists)
        if (std::find(FActionLists.begin(), FActionLists.end(), list) != FActionLists.end())
            list->UpdateIfReachable();
}

TApplication::TEngineCall::TEngineCall() {
    ++Application().FEngineCalls;
    HearWaitingMessages();
}
TApplication::TEngineCall::~TEngineCall() {
    --Application().FEngineCalls;
}

TApplication::TModalScope::TModalScope()
    : FSenders(std::exchange(Application().FSenders, {}))
    , FEngineCalls(std::exchange(Application().FEngineCalls, 0))
    , FUpdating(std::exchange(Application().FUpdating, false)) {}

TApplication::TModalScope::~TModalScope() {
    Application().FSenders = std::move(FSenders);
    Application().FEngineCalls = FEngineCalls;
    Application().FUpdating = FUpdating;
}

THourglass::THourglass() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}
THourglass::~THourglass() {
    QApplication::restoreOverrideCursor();
}

TScreen& Screen() {
    static TScreen screen;
    return screen;
}

std::vector<std::string> TScreen::Fonts() const {
    // A family that two makers have is listed under each with the maker behind it, which
    // is no name that a document can use.
    static const QRegularExpression maker(QStringLiteral(R"( \[[^\]]*\]$)"));
    std::set<std::string> names;
    for (QString family : QFontDatabase::families())
        if (!QFontDatabase::isPrivateFamily(family)) names.insert(FromQt(family.remove(maker)));
    return {names.begin(), names.end()};
}

TPoint TScreen::CursorPosition() const {
    const QPoint point = QCursor::pos();
    return {point.x(), point.y()};
}

bool TScreen::HourglassShown() const {
    const QCursor* cursor = QApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
}
