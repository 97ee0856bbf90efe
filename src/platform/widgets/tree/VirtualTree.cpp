#include "platform/widgets/tree/VirtualTree.h"

#include <QHeaderView>

#include "platform/widgets/QtText.h"

TVirtualTree::TVirtualTree(TWinControl* parent, const std::string& name)
    : TTreeView(parent, name) {
    setHeaderHidden(false);
    setAllColumnsShowFocus(true);
    header()->setSectionResizeMode(QHeaderView::Interactive);
    header()->setStretchLastSection(true);
}

void TVirtualTree::AddColumn(const std::string& caption, int width) {
    FColumns.push_back(caption);
    FWidths.push_back(width);
    ShowColumns(FColumns);
    for (std::size_t i = 0; i < FWidths.size(); ++i)
        header()->resizeSection(static_cast<int>(i), FWidths[i]);
}

int TVirtualTree::ColumnTotal() const {
    return static_cast<int>(FColumns.size());
}

// After a failure the handler is left alone until the tree's nodes change, since a
// window that repaints after its error box would fail again.
template<class Handler, class... Arguments>
void TVirtualTree::Ask(int question, const Handler& handler, Arguments&&... arguments) const {
    bool& failed = FFailed[static_cast<std::size_t>(question)];
    if (!handler || failed) return;
    try {
        handler(std::forward<Arguments>(arguments)...);
    } catch (const std::exception& failure) {
        failed = true;
        Application().ShowExceptionLater(failure.what());
    }
}

void TVirtualTree::StructureChanged() {
    TTreeView::StructureChanged();
    FFailed = {};
}

QString TVirtualTree::NodeText(const TTreeNode& node, int column) const {
    std::string text;
    Ask(0, OnGetText, const_cast<TTreeNode&>(node), column, text);
    return ToQt(text);
}

int TVirtualTree::NodeImage(const TTreeNode& node, int column, bool) const {
    int image = -1;
    Ask(1, OnGetImageIndex, const_cast<TTreeNode&>(node), column, image);
    return image;
}

bool TVirtualTree::NodeBold(const TTreeNode& node, int column) const {
    bool bold = false;
    Ask(2, OnPaintText, const_cast<TTreeNode&>(node), column, bold);
    return bold;
}
