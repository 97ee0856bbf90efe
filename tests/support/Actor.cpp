#include "support/Actor.h"

#include <stdexcept>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>

#include "platform/widgets/Application.h"
#include "platform/widgets/Containers.h"

namespace {

QString FromUtf8(const std::string& text) {
    return QString::fromStdString(text);
}

std::runtime_error Failure(const std::string& what, const std::string& name) {
    return std::runtime_error(what + ": " + name);
}

} // namespace

TActor::TActor(QWidget& window)
    : FWindow(window) {}

std::vector<QWidget*> TActor::All(const std::string& name) {
    std::vector<QWidget*> found;
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.prepend(&FWindow);
    for (QWidget* window : windows) {
        if (window->objectName() == FromUtf8(name)) found.push_back(window);
        for (QWidget* widget : window->findChildren<QWidget*>(FromUtf8(name)))
            found.push_back(widget);
    }
    return found;
}

QWidget* TActor::Lookup(const std::string& name) {
    const std::vector<QWidget*> found = All(name);
    return found.empty() ? nullptr : found.front();
}

void TActor::RaiseMissing(const std::string& name) {
    throw Failure("there is no control of this name", name);
}

QWidget& TActor::Find(const std::string& name) {
    if (QWidget* found = Lookup(name)) return *found;
    RaiseMissing(name);
}

QWidget& TActor::Usable(const std::string& name) {
    QWidget& widget = Find(name);
    if (!widget.isVisible()) throw Failure("the control is hidden", name);
    if (!widget.isEnabled()) throw Failure("the control is disabled", name);
    return widget;
}

void TActor::Settle() {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Application().ProcessMessages();
    Application().ProcessIdle();
    Application().ProcessMessages();
}

bool TActor::WaitFor(const std::function<bool()>& condition, int timeout) {
    return QTest::qWaitFor(condition, timeout);
}

void TActor::Click(const std::string& name) {
    QTest::mouseClick(&Usable(name), Qt::LeftButton);
    Settle();
}

void TActor::Type(const std::string& name, const std::string& text) {
    QWidget& widget = Usable(name);
    widget.setFocus();
    if (auto* memo = qobject_cast<QPlainTextEdit*>(&widget)) memo->selectAll();
    if (auto* edit = qobject_cast<QLineEdit*>(&widget)) edit->selectAll();
    QTest::keyClick(&widget, Qt::Key_Delete);
    QTest::keyClicks(&widget, FromUtf8(text));
    Settle();
}

void TActor::Choose(const std::string& name, const std::string& entry) {
    auto& combo = dynamic_cast<QComboBox&>(Usable(name));
    const int index = combo.findText(FromUtf8(entry));
    if (index < 0) throw Failure("the list " + name + " has no such entry", entry);
    combo.showPopup();
    QAbstractItemView& list = *combo.view();
    const QModelIndex row = combo.model()->index(index, combo.modelColumn(), combo.rootModelIndex());
    list.scrollTo(row);
    list.setCurrentIndex(row);
    QTest::keyClick(&list, Qt::Key_Return);
    if (list.isVisible()) combo.hidePopup();
    Settle();
}

void TActor::ChooseTab(const std::string& pageControl, const std::string& caption) {
    auto& tabs = dynamic_cast<QTabWidget&>(Usable(pageControl));
    QTabBar& bar = *tabs.tabBar();
    int index = 0;
    while (index < tabs.count() && tabs.tabText(index) != FromUtf8(caption))
        ++index;
    if (index == tabs.count()) throw Failure("there is no tab", caption);
    bar.setFocus();
    // Tabs that are scrolled out of the bar are reached by the arrow keys.
    if (bar.rect().contains(bar.tabRect(index)))
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(index).center());
    while (tabs.currentIndex() != index)
        QTest::keyClick(&bar, tabs.currentIndex() < index ? Qt::Key_Right : Qt::Key_Left);
    Settle();
}

void TActor::Key(const std::string& name, int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&Usable(name), static_cast<Qt::Key>(key), modifiers);
    Settle();
}

TTreeNode& TActor::Node(const std::string& treeName, const std::vector<std::string>& path) {
    auto& tree = Get<TTreeView>(treeName);
    TTreeNode* node = nullptr;
    for (const std::string& text : path) {
        if (node && !node->Expanded()) {
            node->Expand(false);
            Settle();
        }
        TTreeNode* next = node ? node->GetFirstChild() : tree.GetFirstNode();
        while (next && next->Text() != text)
            next = next->GetNextSibling();
        if (!next) throw Failure("the tree " + treeName + " has no node", text);
        node = next;
    }
    return *node;
}

QPoint TActor::Middle(TTreeView& tree, TTreeNode& node) {
    node.MakeVisible();
    Settle();
    const TRect place = tree.DisplayRect(node);
    if (place.Height == 0) throw Failure("the node does not show", node.Text());
    // Behind the pictures, where the text begins.
    const QRect row(place.Left, place.Top, place.Width, place.Height);
    for (int x = row.left(); x < row.right(); ++x)
        if (tree.GetHitTestInfoAt(x, row.center().y()) == TTreeHit::OnLabel) return {x + 4, row.center().y()};
    return row.center();
}

TTreeNode& TActor::SelectNode(const std::string& treeName, const std::vector<std::string>& path) {
    TTreeNode& node = Node(treeName, path);
    auto& tree = Get<TTreeView>(treeName);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, Middle(tree, node));
    Settle();
    return node;
}

void TActor::DragNode(TTreeView& tree, TTreeNode& from, TTreeNode& to) {
    const QPoint start = Middle(tree, from);
    const QPoint end = Middle(tree, to);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, start);
    const QPoint away = start + QPoint(0, 2 * QApplication::startDragDistance());
    for (const QPoint point : {away, end, end + QPoint(1, 0)})
        QTest::mouseMove(tree.viewport(), point);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, end);
    Settle();
}

void TActor::WhenModal(std::function<void(TForm&)> steps) {
    Application().SetModalHook([steps = std::move(steps)](TForm& form) {
        Application().SetModalHook({});
        steps(form);
    });
}
