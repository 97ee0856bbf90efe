#include "platform/widgets/Buttons.h"

#include <QFrame>
#include <QPointer>

#include "platform/widgets/Forms.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TButton::TButton(TWinControl* parent, const std::string& name, const std::string& caption)
    : TControlOf(parent, name) {
    setAutoDefault(false);
    SetCaption(caption);
    connect(this, &QPushButton::clicked, this, [this] { Clicked(); });
}

TButton::~TButton() = default;

std::string TButton::Caption() const {
    return FromQt(text());
}

void TButton::SetCaption(const std::string& caption) {
    setText(ToQt(caption));
}

void TButton::SetAction(TAction& action) {
    FAction = &action;
    const auto follow = [this] {
        SetCaption(FAction->Caption());
        SetHint(FAction->Hint());
        SetEnabled(FAction->Enabled());
        SetVisible(FAction->Visible());
    };
    connect(&action, &QAction::changed, this, follow);
    connect(&action, &QObject::destroyed, this, [this] { FAction = nullptr; });
    follow();
}

void TButton::SetDefault(bool isDefault) {
    FDefault = isDefault;
    setDefault(isDefault);
}

void TButton::Click() {
    click();
}

void TButton::Clicked() {
    const QPointer<TButton> alive(this);
    if (FAction && !OnClick)
        FAction->Execute();
    else if (!Fire(OnClick))
        return;
    if (alive && FModalResult != TModalResult::None)
        if (auto* form = dynamic_cast<TForm*>(window())) form->SetModalResult(FModalResult);
}

TToolButton::TToolButton(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setIconSize(QSize(16, 16));
    connect(this, &QToolButton::clicked, this, [this] {
        if (!FAction) Fire(OnClick);
    });
}

TToolButton::~TToolButton() = default;

void TToolButton::SetAction(TAction& action) {
    FAction = &action;
    setDefaultAction(&action);
    setAccessibleName(ToQt(action.Hint()));
    const auto follow = [this] { SetVisible(FAction->Visible()); };
    connect(&action, &QAction::changed, this, follow);
    follow();
}

void TToolButton::SetStyle(TToolButtonStyle style) {
    setCheckable(style == TToolButtonStyle::Check);
    if (style == TToolButtonStyle::DropDown) setPopupMode(QToolButton::InstantPopup);
}

void TToolButton::SetImageIndex(int index) {
    FImageIndex = index;
    const auto* bar = dynamic_cast<TToolBar*>(Parent());
    if (bar && bar->Images()) setIcon(bar->Images()->Icon(index));
}

void TToolButton::SetDown(bool down) {
    setCheckable(true);
    setChecked(down);
}

void TToolButton::SetDropDownMenu(TPopupMenu& menu) {
    setMenu(&menu);
    SetStyle(TToolButtonStyle::DropDown);
}

void TToolButton::SetCaption(const std::string& caption) {
    setText(ToQt(caption));
    setToolButtonStyle(caption.empty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
}

void TToolButton::Click() {
    click();
}

TToolSeparator::TToolSeparator(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    setFrameShape(QFrame::VLine);
    setFrameShadow(QFrame::Plain);
    setForegroundRole(QPalette::Mid);
    setFixedSize(5, 18);
}

TToolBar::TToolBar(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    SetAlign(TAlign::Top);
    UseFlowLayout(1, 1);
}

TToolButton& TToolBar::AddButton(const std::string& name, TAction& action) {
    auto* button = new TToolButton(this, name);
    button->SetAction(action);
    return *button;
}

TToolButton& TToolBar::AddButton(const std::string& name, int imageIndex, const std::string& hint,
                                 TToolButtonStyle style) {
    auto* button = new TToolButton(this, name);
    button->SetStyle(style);
    button->SetImageIndex(imageIndex);
    button->SetHint(hint);
    return *button;
}

TToolSeparator& TToolBar::AddSeparator(const std::string& name) {
    return *new TToolSeparator(this, name);
}
