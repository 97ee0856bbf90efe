// Commands with one state for all the buttons and menu items that show them.
#pragma once

#include <string>
#include <vector>

#include <QAction>
#include <QObject>

#include "platform/widgets/Control.h"

class TActionList;
class TImageList;

// A command. OnUpdate runs when the message loop goes idle and before each execution,
// and sets what the command looks like. A failure of OnUpdate is reported once, and
// again only after it has succeeded in between.
class TAction : public QAction, public TComponent {
public:
    TAction(TActionList& list, const std::string& name);
    ~TAction() override;
    QObject& Object() override { return *this; }
    using TComponent::Object;

    TEvent<> OnExecute;
    TEvent<> OnUpdate;

    // "&" marks the access key in menus.
    std::string Caption() const { return FCaption; }
    void SetCaption(const std::string& caption);
    std::string Hint() const { return FHint; }
    void SetHint(const std::string& hint);
    int ImageIndex() const { return FImageIndex; }
    void SetImageIndex(int index);
    std::string Category() const { return FCategory; }
    void SetCategory(const std::string& category) { FCategory = category; }
    // In the form "F5", "Ctrl+X", "Del"; empty for none.
    void SetShortCut(const std::string& keys);

    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool enabled);
    bool Visible() const { return isVisible(); }
    void SetVisible(bool visible) { setVisible(visible); }
    bool Checked() const { return isChecked(); }
    // Makes the action checkable when first called.
    void SetChecked(bool checked);

    // Updates the action and, if it is enabled then, runs OnExecute under the
    // dispatcher. Gives whether OnExecute ran.
    bool Execute();
    virtual void Update();

    TActionList& List() const { return FList; }

protected:
    // What an action of a kind of its own does when OnExecute is empty.
    virtual void ExecuteTarget() {}
    virtual bool HasTarget() const { return false; }

private:
    void ShowTexts();
    TActionList& FList;
    std::string FCaption;
    std::string FHint;
    std::string FCategory;
    std::string FUpdateFailure;
    int FImageIndex = -1;
    bool FEnabled = true;
};

// The actions of a form or a data module. Owner frees it. Shortcuts work in the
// owner's window; without an owner that is a control, use BindShortCuts.
class TActionList : public QObject, public TComponent {
public:
    TActionList(TComponent& owner, const std::string& name);
    ~TActionList() override;
    QObject& Object() override { return *this; }
    using TComponent::Object;

    // Not owned.
    void SetImages(const TImageList* images);
    const TImageList* Images() const { return FImages; }
    const std::vector<TAction*>& Actions() const { return FActions; }
    // Empty when there is none of that name.
    TAction* Find(const std::string& name) const;
    // Runs all update handlers, unless a modal window shuts the owner's window out.
    void UpdateIfReachable();
    // Lets the shortcuts work in another control as well.
    void BindShortCuts(TWinControl& control);

private:
    friend class TAction;
    const TImageList* FImages = nullptr;
    std::vector<TAction*> FActions;
};

enum class TEditCommand { Cut, Copy, Paste, SelectAll, Undo, Delete };

// A standard command on whichever edit control has the focus; it is enabled when that
// control could carry it out.
class TEditAction : public TAction {
public:
    TEditAction(TActionList& list, const std::string& name, TEditCommand command);
    void Update() override;

protected:
    void ExecuteTarget() override;
    bool HasTarget() const override { return true; }

private:
    TEditCommand FCommand;
};
