#include "platform/widgets/Forms.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include "contracts/HostServices.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Layouts.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TForm::TForm(TWinControl* owner, const std::string& name)
    : TControlOf(nullptr, name) {
    setParent(owner ? &owner->Widget() : nullptr, Qt::Window);
    auto* layout = new TAlignLayout(*this);
    layout->SetHoldsFree(true);
}

TForm::~TForm() = default;

std::string TForm::Caption() const {
    return FromQt(windowTitle());
}

void TForm::SetCaption(const std::string& caption) {
    setWindowTitle(ToQt(caption));
}

void TForm::SetBorderStyle(TBorderStyle style) {
    if (style == TBorderStyle::Hint) {
        setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
        setAttribute(Qt::WA_ShowWithoutActivating);
        FPlaced = true;
        if (layout()) layout()->setSizeConstraint(QLayout::SetNoConstraint);
        return;
    }
    const bool dialog = style == TBorderStyle::Dialog;
    setWindowFlags(dialog ? Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint
                          : Qt::Window);
    if (layout()) layout()->setSizeConstraint(dialog ? QLayout::SetFixedSize : QLayout::SetDefaultConstraint);
}

void TForm::SetIcon(const std::string& iconName) {
    setWindowIcon(NamedIcon(iconName));
}

void TForm::Centre() {
    if (FPlaced || !isWindow()) return;
    FPlaced = true;
    const QWidget* owner = parentWidget() ? parentWidget()->window() : QApplication::activeWindow();
    const QScreen* screen = owner && owner != this ? owner->screen() : this->screen();
    if (layout()) layout()->activate();
    if (!testAttribute(Qt::WA_Resized)) adjustSize();
    QRect place = frameGeometry();
    place.moveCenter(screen->availableGeometry().center());
    move(place.topLeft());
}

TModalResult TForm::ShowModal() {
    const QPointer<TForm> alive(this);
    const TApplication::TModalScope scope;
    QEventLoop loop;
    FModalResult = TModalResult::None;
    FLoop = &loop;
    setWindowModality(Qt::ApplicationModal);
    show();
    activateWindow();
    QTimer::singleShot(0, this, [this] { RunModalHook(); });
    if (FModalResult == TModalResult::None) loop.exec(QEventLoop::DialogExec);
    if (!alive) return TModalResult::Cancel;
    FLoop = nullptr;
    hide();
    return FModalResult == TModalResult::None ? TModalResult::Cancel : FModalResult;
}

// A script that fails must not leave the form open for good.
void TForm::RunModalHook() {
    try {
        Application().CallModalHook(*this);
    } catch (...) {
        Application().HandleException();
        SetModalResult(TModalResult::Cancel);
    }
}

void TForm::SetModalResult(TModalResult result) {
    FModalResult = result;
    if (FLoop && result != TModalResult::None) FLoop->quit();
}

void TForm::Close() {
    close();
}

bool TForm::ClickDefault() {
    for (TComponent* component : OwnedComponents())
        if (auto* button = dynamic_cast<TButton*>(component);
            button && button->Default() && button->Showing()) {
            button->Click();
            return true;
        }
    return false;
}

bool TForm::ClickCancel() {
    for (TComponent* component : OwnedComponents())
        if (auto* button = dynamic_cast<TButton*>(component);
            button && button->Cancel() && button->Showing()) {
            button->Click();
            return true;
        }
    return false;
}

void TForm::closeEvent(QCloseEvent* event) {
    event->accept();
    if (FLoop && FModalResult == TModalResult::None) SetModalResult(TModalResult::Cancel);
}

void TForm::showEvent(QShowEvent* event) {
    Centre();
    QWidget::showEvent(event);
    if (FActiveControl) FActiveControl->SetFocus();
    if (!HostTellsVisibility() && !event->spontaneous()) Fire(OnShow);
}

void TForm::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!HostTellsVisibility() && !event->spontaneous()) Fire(OnHide);
}

void TForm::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
    if (plain && enter) {
        auto* focused = dynamic_cast<TButton*>(QApplication::focusWidget());
        if (focused)
            focused->Click();
        else if (!ClickDefault())
            event->ignore();
    } else if (plain && event->key() == Qt::Key_Escape && isWindow()) {
        if (!ClickCancel() && FLoop) close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

TDockableForm::TDockableForm(const std::string& name)
    : TForm(nullptr, name)
    , FSection(name) {}

TDockableForm::~TDockableForm() = default;

void TDockableForm::FormCreate() {
    if (auto* services = FindHostService<IHostDockServices>())
        FSite = services->AddDockableForm(*this, *this);
}

void TDockableForm::FormDestroy() {
    if (!FSite) return;
    if (FAutoSave) SaveWindowState(HostService<IHostDockServices>().IDEIniFile(), true);
    FSite.reset();
}

void TDockableForm::LoadWindowState(IDesktopStore& store) {
    if (FSite) FSite->LoadWindowState(store, FSection);
}

void TDockableForm::SaveWindowState(IDesktopStore& store, bool wholeDesktop) {
    if (FSite) FSite->SaveWindowState(store, FSection, wholeDesktop);
}

void TDockableForm::ForceShow() {
    if (FSite)
        FSite->ForceShow();
    else
        show();
}

bool TDockableForm::Floating() const {
    return FSite && FSite->IsFloating();
}

void TDockableForm::ShowForm() {
    if (FSite)
        FSite->Show();
    else
        show();
}

void TDockableForm::HideForm() {
    if (FSite)
        FSite->Hide();
    else
        hide();
}

bool TDockableForm::FormVisible() const {
    return FSite ? FSite->IsVisible() : isVisible();
}

void TDockableForm::DockShown() {
    Fire(OnShow);
}

void TDockableForm::DockHidden() {
    Fire(OnHide);
}

TFrame::TFrame(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {}

namespace {

bool TakesInput(const TComponent* component) {
    return !dynamic_cast<const TPanel*>(component) && !dynamic_cast<const TSplitter*>(component) &&
           !dynamic_cast<const TFrame*>(component) && !dynamic_cast<const TScrollBox*>(component) &&
           !dynamic_cast<const TToolBar*>(component) && !dynamic_cast<const TToolSeparator*>(component);
}

} // namespace

std::vector<TWinControl*> TFrame::InputControls() {
    std::vector<TWinControl*> controls;
    for (TComponent* component : OwnedComponents())
        if (auto* control = dynamic_cast<TWinControl*>(component); control && TakesInput(control))
            controls.push_back(control);
    return controls;
}

TDataModule::TDataModule(TComponent* owner, const std::string& name)
    : QObject(owner ? &owner->Object() : nullptr) {
    SetName(name);
}
