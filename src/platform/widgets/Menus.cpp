#include "platform/widgets/Menus.h"

#include <utility>

#include <QActionGroup>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TMenuItem::TMenuItem(const std::string& name, const std::string& caption)
    : QAction(nullptr) {
    SetName(name);
    if (!caption.empty()) SetCaption(caption);
    connect(this, &QAction::triggered, this, [this] {
        if (FAction && !OnClick)
            FAction->Execute();
        else
            Fire(OnClick);
    });
}

TMenuItem::~TMenuItem() = default;

std::string TMenuItem::Caption() const {
    return FromQt(text());
}

void TMenuItem::SetCaption(const std::string& caption) {
    FOwnCaption = true;
    setText(ToQt(caption));
}

std::string TMenuItem::Hint() const {
    return FHint;
}

void TMenuItem::SetHint(const std::string& hint) {
    FHint = hint;
    setToolTip(ToToolTip(hint));
}

void TMenuItem::SetEnabled(bool enabled) {
    FEnabled = enabled;
    setEnabled(enabled);
}

void TMenuItem::SetChecked(bool checked) {
    setCheckable(true);
    setChecked(checked);
}

void TMenuItem::SetRadioItem(bool radio) {
    setCheckable(true);
    auto* menu = dynamic_cast<QMenu*>(parent());
    if (!radio || !menu) {
        setActionGroup(nullptr);
        return;
    }
    auto* group = menu->findChild<QActionGroup*>(QString(), Qt::FindDirectChildrenOnly);
    setActionGroup(group ? group : new QActionGroup(menu));
}

void TMenuItem::SetImages(const TImageList& images) {
    setIcon(images.Icon(FImageIndex));
}

void TMenuItem::SetAction(TAction& action) {
    FAction = &action;
    connect(&action, &QAction::changed, this, [this] { FollowAction(); });
    connect(&action, &QObject::destroyed, this, [this] { FAction = nullptr; });
    FollowAction();
}

void TMenuItem::FollowAction() {
    if (!FOwnCaption) setText(ToQt(FAction->Caption().empty() ? FAction->Hint() : FAction->Caption()));
    if (!FAction->icon().isNull()) setIcon(FAction->icon());
    // The keys are shown here and obeyed by the action itself.
    setShortcut(FAction->shortcut());
    setShortcutContext(Qt::WidgetShortcut);
    setCheckable(FAction->isCheckable());
    setChecked(FAction->isChecked());
    setVisible(FAction->Visible());
    SetEnabled(FAction->Enabled());
}

void TMenuItem::Click() {
    trigger();
}

TPopupMenu& TMenuItem::SubMenu() {
    if (!FSubMenu) {
        FSubMenu = std::make_unique<TPopupMenu>(nullptr, Name() + "Menu");
        setMenu(FSubMenu.get());
    }
    return *FSubMenu;
}

TPopupMenu::TPopupMenu(TWinControl* owner, const std::string& name)
    : QMenu(owner ? &owner->Widget() : nullptr) {
    SetName(name);
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, [this] { Prepare(); });
}

TPopupMenu::~TPopupMenu() {
    Clear();
}

TMenuItem& TPopupMenu::Add(const std::string& name, const std::string& caption) {
    return Insert(-1, std::make_unique<TMenuItem>(name, caption));
}

TMenuItem& TPopupMenu::Add(const std::string& name, TAction& action) {
    TMenuItem& item = Insert(-1, std::make_unique<TMenuItem>(name));
    item.SetAction(action);
    return item;
}

void TPopupMenu::AddSeparator() {
    addSeparator();
}

TMenuItem& TPopupMenu::Insert(int index, std::unique_ptr<TMenuItem> item) {
    const QList<QAction*> present = actions();
    TMenuItem& inserted = *item.release();
    inserted.setParent(this);
    insertAction(index >= 0 && index < present.size() ? present[index] : nullptr, &inserted);
    return inserted;
}

std::vector<TMenuItem*> TPopupMenu::Items() const {
    std::vector<TMenuItem*> items;
    for (QAction* action : actions())
        if (auto* item = dynamic_cast<TMenuItem*>(action)) items.push_back(item);
    return items;
}

// What the menu owns goes with it, separators too.
void TPopupMenu::Clear() {
    for (QAction* action : actions()) {
        removeAction(action);
        const std::unique_ptr<QAction> owned(action->parent() == this ? action : nullptr);
    }
}

void TPopupMenu::Popup(TPoint screenPoint) {
    FPoint = screenPoint;
    popup(QPoint(screenPoint.X, screenPoint.Y));
}

void TPopupMenu::Prepare() {
    Fire(OnPopup);
    for (TMenuItem* item : Items())
        if (TAction* action = item->Action()) action->Update();
}

TMainMenu::TMainMenu(TWinControl* parent, const std::string& name)
    : QMenuBar(parent ? &parent->ClientArea() : nullptr) {
    SetAlign(TAlign::Top);
    Attach(parent, name);
}

TMenuItem& TMainMenu::Add(const std::string& name, const std::string& caption) {
    auto* item = std::make_unique<TMenuItem>(name, caption).release();
    item->setParent(this);
    item->SubMenu();
    addAction(item);
    return *item;
}
