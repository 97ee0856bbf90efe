// A user with a mouse and a keyboard, who finds controls by their names. Every step
// goes through real events; after it the message loop has run dry and idle updates
// have run, as a user would find the window.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/widgets/Basics.h"
#include "platform/widgets/Forms.h"
#include "platform/widgets/tree/TreeView.h"

class QPoint;
class QWidget;

class TActor {
public:
    // Controls are looked for below this window first, then in all other windows,
    // so that a part that moved into another window is still found.
    explicit TActor(QWidget& window);

    // The control of that object name; raises std::runtime_error naming it when there
    // is none. Hidden ones are found too.
    QWidget& Find(const std::string& name);
    // The first one of that name that is of the kind.
    template<class T> T& Get(const std::string& name) {
        for (QWidget* widget : All(name))
            if (T* found = dynamic_cast<T*>(widget)) return *found;
        RaiseMissing(name);
    }
    bool Exists(const std::string& name) { return Lookup(name) != nullptr; }

    // Presses the left button in the middle of a button, check box or tool button.
    // Raises std::runtime_error when it is hidden or disabled.
    void Click(const std::string& name);
    // Replaces the text of an edit or memo key by key.
    void Type(const std::string& name, const std::string& text);
    // Picks the entry of a drop-down list by its text, with the list open.
    void Choose(const std::string& name, const std::string& entry);
    void ChooseTab(const std::string& pageControl, const std::string& caption);
    void Key(const std::string& name, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    // A node by the texts on the way from the top node; branches on the way are opened
    // by a click on their marks. Raises std::runtime_error naming the text not found.
    TTreeNode& Node(const std::string& tree, const std::vector<std::string>& path);
    // Clicks on the node's text.
    TTreeNode& SelectNode(const std::string& tree, const std::vector<std::string>& path);
    // Drags from the one node's text to the other's.
    void DragNode(TTreeView& tree, TTreeNode& from, TTreeNode& to);

    // The next modal form runs this and must close itself by it (a click on a button).
    void WhenModal(std::function<void(TForm&)> steps);

    // Lets the message loop run until the condition holds; gives false after timeout
    // milliseconds. Waiting is for a condition, never for time.
    static bool WaitFor(const std::function<bool()>& condition, int timeout = 20000);
    // Runs the message loop dry, then the idle updates.
    static void Settle();

private:
    // Those below the actor's own window come first.
    std::vector<QWidget*> All(const std::string& name);
    QWidget* Lookup(const std::string& name);
    [[noreturn]] static void RaiseMissing(const std::string& name);
    static QPoint Middle(TTreeView& tree, TTreeNode& node);
    QWidget& Usable(const std::string& name);

    QWidget& FWindow;
};
