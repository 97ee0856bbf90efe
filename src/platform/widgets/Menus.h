// Menus: popup menus, menu bars and their items.
#pragma once

#include <memory>
#include <string>

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "platform/widgets/Actions.h"
#include "platform/widgets/Control.h"

class TPopupMenu;

// An item of a menu, with a click of its own or with an action behind it. The menu
// that it stands in owns it.
class TMenuItem : public QAction, public TComponent {
public:
    // An item that stands in no menu yet.
    explicit TMenuItem(const std::string& name, const std::string& caption = {});
    ~TMenuItem() override;
    QObject& Object() override { return *this; }
    using TComponent::Object;

    TEvent<> OnClick;

    std::string Caption() const;
    void SetCaption(const std::string& caption);
    std::string Hint() const;
    void SetHint(const std::string& hint);
    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool enabled);
    bool Visible() const { return isVisible(); }
    void SetVisible(bool visible) { setVisible(visible); }
    bool Checked() const { return isChecked(); }
    void SetChecked(bool checked);
    // Radio items of one menu exclude each other's check mark. After it stands in its menu.
    void SetRadioItem(bool radio);
    // The index in the images of the menu that it stands in; -1 for none.
    int ImageIndex() const { return FImageIndex; }
    void SetImageIndex(int index) { FImageIndex = index; }
    void SetImages(const TImageList& images);

    // The item shows the action's states, and its texts unless it has its own.
    void SetAction(TAction& action);
    TAction* Action() const { return FAction; }
    // As a click of the user does. Nothing happens while it is disabled.
    void Click();

    // The submenu, made at the first call.
    TPopupMenu& SubMenu();

private:
    void FollowAction();
    TAction* FAction = nullptr;
    std::string FHint;
    std::unique_ptr<TPopupMenu> FSubMenu;
    bool FOwnCaption = false;
    bool FEnabled = true;
    int FImageIndex = -1;
};

// A menu that comes up at the pointer. OnPopup fires before it shows; the actions of
// its items are brought up to date after that.
class TPopupMenu : public QMenu, public TComponent {
public:
    explicit TPopupMenu(TWinControl* owner, const std::string& name = {});
    ~TPopupMenu() override;
    QObject& Object() override { return *this; }
    using TComponent::Object;

    TEvent<> OnPopup;

    TMenuItem& Add(const std::string& name, const std::string& caption);
    TMenuItem& Add(const std::string& name, TAction& action);
    void AddSeparator();
    // Takes the item over and puts it before the one at index, or last.
    TMenuItem& Insert(int index, std::unique_ptr<TMenuItem> item);
    // Items in order, submenus' own items not included.
    std::vector<TMenuItem*> Items() const;
    void Clear();

    // Where it was asked for, in screen coordinates; valid in OnPopup and in the items'
    // handlers.
    TPoint PopupPoint() const { return FPoint; }
    // Shows the menu and returns when it is open.
    void Popup(TPoint screenPoint);
    // What OnPopup and the updates before showing do, without showing.
    void Prepare();

private:
    TPoint FPoint;
};

// A form's menu bar: its menus are added with Add, their items in SubMenu().
class TMainMenu : public QMenuBar, public TControl {
public:
    explicit TMainMenu(TWinControl* parent, const std::string& name = {});
    QWidget& Widget() override { return *this; }
    using TControl::Widget;

    TMenuItem& Add(const std::string& name, const std::string& caption);
};
