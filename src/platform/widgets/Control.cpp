#include "platform/widgets/Control.h"

#include <algorithm>
#include <stdexcept>

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include "platform/widgets/Layouts.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/QtText.h"

std::string TComponent::Name() const {
    return FromQt(Object().objectName());
}

void TComponent::SetName(const std::string& name) {
    Object().setObjectName(ToQt(name));
}

std::vector<TComponent*> TComponent::OwnedComponents() {
    std::vector<TComponent*> components;
    for (QObject* object : Object().findChildren<QObject*>())
        if (auto* component = dynamic_cast<TComponent*>(object)) components.push_back(component);
    return components;
}

QObject& TControl::Object() {
    return Widget();
}

void TControl::Attach(TWinControl* parent, const std::string& name) {
    SetName(name);
    if (parent) parent->Adopt(*this);
}

TWinControl* TControl::Parent() const {
    for (QWidget* widget = Widget().parentWidget(); widget; widget = widget->parentWidget())
        if (auto* parent = dynamic_cast<TWinControl*>(widget)) return parent;
    return nullptr;
}

void TControl::SetParent(TWinControl& parent) {
    const bool hidden = !Visible();
    if (TWinControl* old = Parent(); old && old->ClientArea().layout())
        old->ClientArea().layout()->removeWidget(&Widget());
    Widget().setParent(&parent.ClientArea());
    parent.Adopt(*this);
    SetVisible(!hidden);
}

bool TControl::Enabled() const {
    return !Widget().testAttribute(Qt::WA_ForceDisabled);
}

void TControl::SetEnabled(bool enabled) {
    Widget().setEnabled(enabled);
}

bool TControl::Visible() const {
    if (Widget().isWindow()) return Widget().isVisible();
    return !(Widget().isHidden() && Widget().testAttribute(Qt::WA_WState_ExplicitShowHide));
}

void TControl::SetVisible(bool visible) {
    Widget().setVisible(visible);
}

bool TControl::Showing() const {
    return Widget().isVisible();
}

namespace {

TAlignLayout* LayoutOf(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    return parent && !widget.isWindow() ? dynamic_cast<TAlignLayout*>(parent->layout()) : nullptr;
}

bool IsPlacedByRows(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    return parent && !widget.isWindow() && parent->layout() && !LayoutOf(widget);
}

} // namespace

int TControl::Left() const {
    return Widget().x();
}
int TControl::Top() const {
    return Widget().y();
}

int TControl::Width() const {
    if (FAlign == TAlign::None && FWidth < 0 && LayoutOf(Widget()) && !FAnchorRight)
        return Widget().sizeHint().width();
    return Widget().width();
}

int TControl::Height() const {
    if (FAlign == TAlign::None && FHeight < 0 && LayoutOf(Widget()) && !FAnchorBottom)
        return Widget().sizeHint().height();
    return Widget().height();
}

void TControl::SetLeft(int left) {
    SetBounds(left, Top(), FWidth, FHeight);
}
void TControl::SetTop(int top) {
    SetBounds(Left(), top, FWidth, FHeight);
}
void TControl::SetWidth(int width) {
    SetBounds(Left(), Top(), width, FHeight);
}
void TControl::SetHeight(int height) {
    SetBounds(Left(), Top(), FWidth, height);
}

void TControl::SetBounds(int left, int top, int width, int height) {
    FWidth = width;
    FHeight = height;
    QWidget& widget = Widget();
    if (IsPlacedByRows(widget)) {
        if (width >= 0) widget.setFixedWidth(width);
        if (height >= 0) widget.setFixedHeight(height);
        return;
    }
    if (FAlign == TAlign::None) {
        widget.move(left, top);
        widget.resize(Width() == width || width < 0 ? Width() : width,
                      Height() == height || height < 0 ? Height() : height);
    }
    if (TAlignLayout* layout = LayoutOf(widget)) layout->invalidate();
}

void TControl::SetMinimumSize(int width, int height) {
    Widget().setMinimumSize(width, height);
}

void TControl::SetMaximumSize(int width, int height) {
    Widget().setMaximumSize(width, height);
}

void TControl::SetAlign(TAlign align) {
    FAlign = align;
    if (TAlignLayout* layout = LayoutOf(Widget())) layout->invalidate();
}

void TControl::SetMargin(int margin) {
    FMargin = margin;
    if (TAlignLayout* layout = LayoutOf(Widget())) layout->invalidate();
}

void TControl::SetAnchors(bool left, bool top, bool right, bool bottom) {
    FAnchorLeft = left;
    FAnchorTop = top;
    FAnchorRight = right;
    FAnchorBottom = bottom;
    if (TAlignLayout* layout = LayoutOf(Widget())) layout->invalidate();
}

std::string TControl::Hint() const {
    return FHint;
}

void TControl::SetHint(const std::string& hint) {
    FHint = hint;
    Widget().setToolTip(ToToolTip(hint));
    if (Widget().accessibleName().isEmpty()) Widget().setAccessibleName(ToQt(hint));
}

void TControl::SetAccessibleName(const std::string& name) {
    Widget().setAccessibleName(ToQt(name));
}

void TControl::SetColor(TColor color) {
    FColor = color;
    FParentColor = false;
    ApplyColor();
}

void TControl::SetParentColor(bool parentColor) {
    FParentColor = parentColor;
    if (parentColor) FColor = clDefault;
    ApplyColor();
}

namespace {

QColor Mapped(TColor color, QPalette::ColorRole role) {
    if (!color.IsSystem()) return QColor(color.Red(), color.Green(), color.Blue());
    return QApplication::palette().color(QPalette::Active, role);
}

} // namespace

QPalette::ColorRole TControl::RoleOf(TColor color) {
    if (color == clInfoText) return QPalette::ToolTipText;
    if (color == clInfoBk) return QPalette::ToolTipBase;
    return QPalette::Window;
}

// clWindow is what edits and lists have of themselves, so that it follows the style.
void TControl::ApplyColor() {
    QWidget& widget = Widget();
    QPalette palette;
    const bool plain = FColor == clDefault || FColor == clWindow;
    if (!plain)
        for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button})
            palette.setColor(role, Mapped(FColor, RoleOf(FColor)));
    const bool fixedFont = !FFontColor.IsSystem();
    if (fixedFont) palette.setColor(QPalette::WindowText, Mapped(FFontColor, QPalette::WindowText));
    if (plain && !fixedFont && !widget.testAttribute(Qt::WA_SetPalette)) return;
    widget.setPalette(palette);
}

bool TControl::Bold() const {
    return Widget().font().bold();
}

void TControl::SetBold(bool bold) {
    QFont font = Widget().font();
    font.setBold(bold);
    Widget().setFont(font);
}

void TControl::SetFont(const std::string& family, int pixelHeight) {
    QFont font = Widget().font();
    font.setFamily(ToQt(family));
    font.setPixelSize(pixelHeight);
    Widget().setFont(font);
}

void TControl::SetFontColor(TColor color) {
    FFontColor = color;
    Widget().setForegroundRole(color.IsSystem() ? RoleOf(color) : QPalette::WindowText);
    ApplyColor();
}

TPoint TControl::ScreenToClient(TPoint point) const {
    const QPoint local = Widget().mapFromGlobal(QPoint(point.X, point.Y));
    return {local.x(), local.y()};
}

TPoint TControl::ClientToScreen(TPoint point) const {
    const QPoint global = Widget().mapToGlobal(QPoint(point.X, point.Y));
    return {global.x(), global.y()};
}

void TControl::Repaint() {
    Widget().update();
}

TWinControl::~TWinControl() = default;

QWidget& TWinControl::ClientArea() {
    return Widget();
}

int TWinControl::ClientWidth() const {
    return const_cast<TWinControl*>(this)->ClientArea().width();
}

int TWinControl::ClientHeight() const {
    return const_cast<TWinControl*>(this)->ClientArea().height();
}

std::vector<TControl*> TWinControl::Controls() const {
    std::vector<TControl*> controls;
    for (QObject* object : const_cast<TWinControl*>(this)->ClientArea().children())
        if (auto* control = dynamic_cast<TControl*>(object)) controls.push_back(control);
    return controls;
}

void TWinControl::SetFocus() {
    Widget().setFocus(Qt::OtherFocusReason);
}

bool TWinControl::ContainsFocus() const {
    const QWidget* widget = QApplication::focusWidget();
    while (widget && widget != &Widget())
        widget = widget->parentWidget();
    return widget != nullptr;
}

bool TWinControl::Focused() const {
    return Widget().hasFocus();
}

void TWinControl::SetTabOrder(const std::vector<TWinControl*>& controls) {
    for (std::size_t i = 1; i < controls.size(); ++i)
        QWidget::setTabOrder(&controls[i - 1]->Widget(), &controls[i]->Widget());
}

void TWinControl::StandBeforeInTabOrder(TWinControl& other) {
    QWidget* before = other.Widget().previousInFocusChain();
    if (before != &Widget()) QWidget::setTabOrder(before, &Widget());
}

void TWinControl::BeginUpdate() {
    if (FHeldUpdates++ == 0) UpdateHeld(true);
}

void TWinControl::EndUpdate() {
    if (FHeldUpdates > 0 && --FHeldUpdates == 0) UpdateHeld(false);
}

void TWinControl::UpdateHeld(bool held) {
    Widget().setUpdatesEnabled(!held);
}

// What stands there before any child is the standard way, not yet in use.
void TWinControl::DropLayout() {
    QLayout* layout = ClientArea().layout();
    if (layout && layout->count() > 0)
        throw std::logic_error("The layout of " + Name() + " is chosen already.");
    const std::unique_ptr<QLayout> unused(layout);
}

void TWinControl::UseFlowLayout(int spacing, int margin) {
    DropLayout();
    QWidget& area = ClientArea();
    new TFlowLayout(area, spacing, margin);
    QSizePolicy policy = area.sizePolicy();
    policy.setHeightForWidth(true);
    area.setSizePolicy(policy);
}

TGridLayout& TWinControl::UseGridLayout() {
    if (FGrid) return *FGrid;
    DropLayout();
    FGrid = std::make_unique<TGridLayout>(ClientArea());
    return *FGrid;
}

void TWinControl::SetPadding(int padding, int spacing) {
    QWidget& area = ClientArea();
    if (!area.layout()) new TAlignLayout(area);
    if (auto* layout = dynamic_cast<TAlignLayout*>(area.layout())) layout->SetPadding(padding, spacing);
}

// A child of a grid is placed by whoever made it.
void TWinControl::Adopt(TControl& child) {
    QWidget& area = ClientArea();
    if (!area.layout()) new TAlignLayout(area);
    if (auto* layout = dynamic_cast<TAlignLayout*>(area.layout()))
        layout->AddControl(child);
    else if (!FGrid)
        area.layout()->addWidget(&child.Widget());
}

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
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return HandleMouse(event);
    case QEvent::ContextMenu:
        return HandleContextMenu(event);
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
        return false;
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

void TWinControl::HandleResized() {
    Fire(OnResize);
}

TGridLayout::TGridLayout(QWidget& area)
    : FLayout(*new QGridLayout(&area)) {}

void TGridLayout::Place(TControl& control, int row, int column, int rowSpan, int columnSpan) {
    FLayout.addWidget(&control.Widget(), row, column, rowSpan, columnSpan);
}

void TGridLayout::SetRowStretch(int row, int stretch) {
    FLayout.setRowStretch(row, stretch);
}

void TGridLayout::SetColumnStretch(int column, int stretch) {
    FLayout.setColumnStretch(column, stretch);
}

void TGridLayout::SetRowMinimumHeight(int row, int height) {
    FLayout.setRowMinimumHeight(row, height);
}

void TGridLayout::SetColumnMinimumWidth(int column, int width) {
    FLayout.setColumnMinimumWidth(column, width);
}

void TGridLayout::SetSpacing(int horizontal, int vertical) {
    FLayout.setHorizontalSpacing(horizontal);
    FLayout.setVerticalSpacing(vertical);
}

void TGridLayout::SetMargins(int left, int top, int right, int bottom) {
    FLayout.setContentsMargins(left, top, right, bottom);
}
