#include "platform/widgets/Control.h"

#include <stdexcept>

#include <QApplication>

#include "platform/widgets/Layouts.h"
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

void TWinControl::HandleResized() {
    Fire(OnResize);
}
