// The common part of all components and controls: names, hints, placement, colours,
// tags and the events that every control has. A control is a Qt widget plus this.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QEvent>
#include <QObject>
#include <QPalette>
#include <QWidget>

#include "platform/widgets/Application.h"
#include "platform/widgets/Basics.h"

class QKeyEvent;
class TAlignLayout;
class TGridLayout;
class TPopupMenu;
class TWinControl;

// Anything with a name and an owner. The name is the Qt object name, so that tests,
// style sheets and screen readers find it. The owner frees what it owns.
class TComponent {
public:
    TComponent() = default;
    TComponent(const TComponent&) = delete;
    TComponent& operator=(const TComponent&) = delete;
    virtual ~TComponent() = default;

    virtual QObject& Object() = 0;
    const QObject& Object() const { return const_cast<TComponent*>(this)->Object(); }

    std::string Name() const;
    void SetName(const std::string& name);

    // A number that the logic may use as a mark; 0 at first.
    int Tag() const { return FTag; }
    void SetTag(int tag) { FTag = tag; }
    // An object that the component owns for the logic.
    TObject* TagObject() const { return FTagObject.get(); }
    template<class T> T* TagObjectAs() const { return dynamic_cast<T*>(FTagObject.get()); }
    void SetTagObject(std::unique_ptr<TObject> object) { FTagObject = std::move(object); }

    std::string HelpKeyword() const { return FHelpKeyword; }
    void SetHelpKeyword(const std::string& keyword) { FHelpKeyword = keyword; }

    // The component of that name and kind among all that this one owns, or empty.
    template<class T = TComponent> T* FindComponent(const std::string& name) {
        for (TComponent* component : OwnedComponents())
            if (T* found = dynamic_cast<T*>(component); found && component->Name() == name) return found;
        return nullptr;
    }
    // Everything owned, at any depth, each followed by what it owns.
    std::vector<TComponent*> OwnedComponents();

    // Runs a handler under the dispatcher: see TApplication::Dispatch. False when it
    // raised. The component may be gone afterwards if the handler frees it.
    template<class Handler, class... Arguments>
    bool Fire(const Handler& handler, Arguments&&... arguments) const {
        if (!handler) return true;
        const Handler copy = handler;
        return Application().Dispatch(this, [&] { copy(std::forward<Arguments>(arguments)...); });
    }

private:
    int FTag = 0;
    std::unique_ptr<TObject> FTagObject;
    std::string FHelpKeyword;
};

// A control: something to see. Its parent is also its owner.
class TControl : public TComponent {
public:
    virtual QWidget& Widget() = 0;
    const QWidget& Widget() const { return const_cast<TControl*>(this)->Widget(); }
    QObject& Object() override;
    using TComponent::Object;

    // Empty for a form and for a control whose parent is the host's.
    TWinControl* Parent() const;
    // Moves the control, with its alignment, to the end of another parent's children.
    void SetParent(TWinControl& parent);

    // The control's own states, whatever those of its parents are.
    bool Enabled() const;
    void SetEnabled(bool enabled);
    bool Visible() const;
    void SetVisible(bool visible);
    void Show() { SetVisible(true); }
    void Hide() { SetVisible(false); }
    // Whether it and all its parents are visible.
    bool Showing() const;

    // In pixels of the parent's client area. Heights are valid at once: a control that
    // was never sized has the height that its content asks for. A size that is set
    // stands in an aligned place too; a size below the minimum is raised to it.
    int Left() const;
    int Top() const;
    int Width() const;
    int Height() const;
    void SetLeft(int left);
    void SetTop(int top);
    void SetWidth(int width);
    void SetHeight(int height);
    void SetBounds(int left, int top, int width, int height);
    void SetMinimumSize(int width, int height);
    void SetMaximumSize(int width, int height);
    // The sizes that were set; -1 where the content decides.
    int SetWidthOrNone() const { return FWidth; }
    int SetHeightOrNone() const { return FHeight; }

    TAlign Align() const { return FAlign; }
    void SetAlign(TAlign align);
    // Space around the control inside its aligned place, in pixels.
    int Margin() const { return FMargin; }
    void SetMargin(int margin);
    // For controls with Align None: which of the parent's edges they follow. Left and
    // top at first; one that follows right or bottom ends Margin() pixels before it.
    void SetAnchors(bool left, bool top, bool right, bool bottom);
    bool AnchoredRight() const { return FAnchorRight; }
    bool AnchoredBottom() const { return FAnchorBottom; }

    // Tooltip, and accessible name of a control without a caption.
    std::string Hint() const;
    void SetHint(const std::string& hint);
    // What a screen reader says where neither caption nor label tells.
    void SetAccessibleName(const std::string& name);

    // Background. clDefault is what the style gives.
    TColor Color() const { return FColor; }
    void SetColor(TColor color);
    // Takes the parent's background; Color() is then clDefault.
    void SetParentColor(bool parentColor);
    bool ParentColor() const { return FParentColor; }
    bool Bold() const;
    void SetBold(bool bold);
    // A family that the screen lacks is replaced by one that it has.
    void SetFont(const std::string& family, int pixelHeight);
    // The text's colour: a fixed one, or one of the system's, which it follows.
    void SetFontColor(TColor color);

    TPoint ScreenToClient(TPoint point) const;
    TPoint ClientToScreen(TPoint point) const;

    void Repaint();

protected:
    // To be called at the end of each constructor that makes the widget: name, place
    // in the parent's layout, accessible name.
    void Attach(TWinControl* parent, const std::string& name);
    virtual void ApplyColor();
    // Where the palette keeps a colour of the system.
    static QPalette::ColorRole RoleOf(TColor color);

private:
    friend class TAlignLayout;
    TAlign FAlign = TAlign::None;
    TColor FColor = clDefault;
    TColor FFontColor = clDefault;
    std::string FHint;
    bool FParentColor = false;
    bool FAnchorLeft = true;
    bool FAnchorTop = true;
    bool FAnchorRight = false;
    bool FAnchorBottom = false;
    int FMargin = 0;
    int FWidth = -1;
    int FHeight = -1;
};

// A control that takes the focus or holds other controls.
class TWinControl : public TControl {
public:
    ~TWinControl() override;

    TEvent<> OnResize;
    // The focus comes or goes inside the window; not when the window itself is left, or
    // the control opens a list of its own.
    TEvent<> OnEnter;
    TEvent<> OnExit;
    TEvent<> OnDblClick;
    // Setting handled keeps the key from the control itself.
    TEvent<TKey, TShiftState, bool&> OnKeyDown;
    // In pixels of the client area; fired before the control acts on the press.
    TEvent<TMouseButton, TShiftState, TPoint> OnMouseDown;
    TEvent<TShiftState, TPoint> OnMouseMove;

    // Where children stand.
    virtual QWidget& ClientArea();
    int ClientWidth() const;
    int ClientHeight() const;
    // Direct children, in the order of creation.
    std::vector<TControl*> Controls() const;
    int ControlCount() const { return static_cast<int>(Controls().size()); }

    void SetFocus();
    bool Focused() const;
    // Whether it or something in it has the focus, an open list included. In OnExit the
    // focus is where it goes to already.
    bool ContainsFocus() const;
    // The next control in the tab order; a parent sets it for its children in turn.
    void SetTabOrder(const std::vector<TWinControl*>& controls);
    // Puts this control right before the other one, which keeps its place. Both must
    // stand in one window.
    void StandBeforeInTabOrder(TWinControl& other);

    TPopupMenu* PopupMenu() const { return FPopupMenu; }
    // Shown on a right click and on the menu key; not owned, empty for none.
    void SetPopupMenu(TPopupMenu* menu) { FPopupMenu = menu; }

    // Holds painting from the first call to the last matching one.
    void BeginUpdate();
    void EndUpdate();
    class TUpdate {
    public:
        explicit TUpdate(TWinControl& control)
            : FControl(control) {
            FControl.BeginUpdate();
        }
        ~TUpdate() { FControl.EndUpdate(); }
        TUpdate(const TUpdate&) = delete;
        TUpdate& operator=(const TUpdate&) = delete;

    private:
        TWinControl& FControl;
    };

    // How children are placed: by Align and bounds at first. Flow puts them in rows
    // from the left and wraps; the grid puts them where Place tells. To be chosen
    // before the first child is made.
    void UseFlowLayout(int spacing = 4, int margin = 0);
    TGridLayout& UseGridLayout();
    TGridLayout* Grid() const { return FGrid.get(); }
    // Space between the client area's edge and aligned children, and between them.
    void SetPadding(int padding, int spacing = 0);

protected:
    virtual void UpdateHeld(bool held);
    // What an event of the widget means for the handlers above; true when it is used
    // up. Called before the widget's own processing.
    bool HandleEvent(QEvent& event);
    // Mouse events of a widget's inner viewport arrive here too.
    bool HandleViewportEvent(QEvent& event);
    // Called when the widget has taken on another size.
    void HandleResized();
    // Where a popup menu comes up that was asked for by key.
    virtual TPoint KeyboardMenuPoint() const;
    friend class TControl;
    void Adopt(TControl& child);

private:
    void DropLayout();
    bool HandleMouse(QEvent& event);
    bool HandleKey(QEvent& event);
    bool HandleContextMenu(QEvent& event);
    TPopupMenu* FPopupMenu = nullptr;
    std::unique_ptr<TGridLayout> FGrid;
    int FHeldUpdates = 0;
};

// Rows and columns that grow with their content. Row and column count from 0.
class TGridLayout {
public:
    explicit TGridLayout(QWidget& area);
    void Place(TControl& control, int row, int column, int rowSpan = 1, int columnSpan = 1);
    // How much of the spare room a row or column takes; 0 at first.
    void SetRowStretch(int row, int stretch);
    void SetColumnStretch(int column, int stretch);
    void SetColumnMinimumWidth(int column, int width);
    void SetRowMinimumHeight(int row, int height);
    void SetSpacing(int horizontal, int vertical);
    void SetMargins(int left, int top, int right, int bottom);

private:
    class QGridLayout& FLayout;
};

// A Qt widget class as a windowed control.
template<class Q> class TControlOf : public Q, public TWinControl {
public:
    TControlOf(TWinControl* parent, const std::string& name)
        : Q(parent ? &parent->ClientArea() : nullptr) {
        Attach(parent, name);
    }
    // Nothing that Qt tells while it takes the widget apart reaches a handler.
    ~TControlOf() override { this->blockSignals(true); }
    QWidget& Widget() override { return *this; }
    using TControl::Widget;

protected:
    bool event(QEvent* event) override {
        if (HandleEvent(*event)) {
            event->accept();
            return true;
        }
        const bool resized = event->type() == QEvent::Resize;
        const bool used = Q::event(event);
        if (resized) HandleResized();
        return used;
    }
};

// The same for widgets that scroll an inner viewport.
template<class Q> class TScrollingControlOf : public TControlOf<Q> {
public:
    using TControlOf<Q>::TControlOf;

protected:
    bool viewportEvent(QEvent* event) override {
        if (this->HandleViewportEvent(*event)) {
            event->accept();
            return true;
        }
        return Q::viewportEvent(event);
    }
};

// The key of a key event that the widget gets.
TKeyMessage KeyMessage(const QKeyEvent& event, QWidget& receiver);
