// Keys, mouse and focus of a control, told to its handlers.
#include "platform/widgets/Control.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include "platform/widgets/Menus.h"

namespace {

TKey KeyOf(int key) {
    switch (key) {
    case Qt::Key_Delete:
        return TKey::Delete;
    case Qt::Key_F2:
        return TKey::F2;
    case Qt::Key_F5:
        return TKey::F5;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return TKey::Enter;
    case Qt::Key_Escape:
        return TKey::Escape;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return TKey::Tab;
    case Qt::Key_Backspace:
        return TKey::Backspace;
    case Qt::Key_Space:
        return TKey::Space;
    case Qt::Key_Insert:
        return TKey::Insert;
    case Qt::Key_Home:
        return TKey::Home;
    case Qt::Key_End:
        return TKey::End;
    case Qt::Key_Up:
        return TKey::Up;
    case Qt::Key_Down:
        return TKey::Down;
    case Qt::Key_Left:
        return TKey::Left;
    case Qt::Key_Right:
        return TKey::Right;
    default:
        return TKey::Other;
    }
}

TShiftState ShiftOf(Qt::KeyboardModifiers modifiers) {
    return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
            modifiers.testFlag(Qt::AltModifier)};
}

TMouseButton ButtonOf(Qt::MouseButton button) {
    if (button == Qt::RightButton) return TMouseButton::Right;
    return button == Qt::MiddleButton ? TMouseButton::Middle : TMouseButton::Left;
}

} // namespace

TKeyMessage KeyMessage(const QKeyEvent& event, QWidget& receiver) {
    TKeyMessage message;
    message.Down = event.type() != QEvent::KeyRelease;
    message.Key = KeyOf(event.key());
    if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) message.Letter = static_cast<char>(event.key());
    message.Shift = ShiftOf(event.modifiers());
    for (QWidget* widget = &receiver; widget && !message.Window; widget = widget->parentWidget())
        message.Window = dynamic_cast<TWinControl*>(widget);
    return message;
}

bool TWinControl::HandleKey(QEvent& event) {
    const auto& key = static_cast<QKeyEvent&>(event);
    bool handled = false;
    Fire(OnKeyDown, KeyOf(key.key()), ShiftOf(key.modifiers()), handled);
    return handled;
}

bool TWinControl::HandleMouse(QEvent& event) {
    // An inner viewport's events come here before Qt drops those of a disabled widget.
    if (!Widget().isEnabled()) return false;
    const auto& mouse = static_cast<QMouseEvent&>(event);
    const TPoint point{mouse.position().toPoint().x(), mouse.position().toPoint().y()};
    if (event.type() == QEvent::MouseMove) {
        Fire(OnMouseMove, ShiftOf(mouse.modifiers()), point);
        return false;
    }
    // The second press of two quick ones is a press as well.
    const QPointer<QObject> alive(&Object());
    if (event.type() == QEvent::MouseButtonDblClick) Fire(OnDblClick);
    if (alive) Fire(OnMouseDown, ButtonOf(mouse.button()), ShiftOf(mouse.modifiers()), point);
    return false;
}

TPoint TWinControl::KeyboardMenuPoint() const {
    return {ClientWidth() / 2, ClientHeight() / 2};
}

bool TWinControl::HandleContextMenu(QEvent& event) {
    if (!FPopupMenu) return false;
    const auto& menu = static_cast<QContextMenuEvent&>(event);
    TPoint point{menu.globalPos().x(), menu.globalPos().y()};
    if (menu.reason() == QContextMenuEvent::Keyboard) point = ClientToScreen(KeyboardMenuPoint());
    FPopupMenu->Popup(point);
    return true;
}

namespace {

bool MovesInsideWindow(const QEvent& event) {
    const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

} // namespace

bool TWinControl::HandleEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
        return HandleKey(event);
    case QEvent::FocusIn:
        if (MovesInsideWindow(event)) Fire(OnEnter);
        return false;
    case QEvent::FocusOut:
        if (MovesInsideWindow(event)) Fire(OnExit);
        return false;
    case QEvent::ApplicationPaletteChange:
        ApplyColor();
        return false;
    default:
        return HandleViewportEvent(event);
    }
}

bool TWinControl::HandleViewportEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return HandleMouse(event);
    case QEvent::ContextMenu:
        return HandleContextMenu(event);
    default:
        return false;
    }
}
