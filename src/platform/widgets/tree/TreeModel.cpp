#include "platform/widgets/tree/TreeModel.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QPainter>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TTreeNode& TTreeModel::NodeOrRoot(const QModelIndex& index) const {
    return index.isValid() ? *static_cast<TTreeNode*>(index.internalPointer()) : *FTree.FRoot;
}

QModelIndex TTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const TTreeNode& node = NodeOrRoot(parent);
    if (row < 0 || row >= node.FPublished || column < 0 || column >= columnCount({})) return {};
    return createIndex(row, column, node.FChildren[static_cast<std::size_t>(row)].get());
}

QModelIndex TTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(*NodeOrRoot(child).FParent) : QModelIndex();
}

int TTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : NodeOrRoot(parent).FPublished;
}

int TTreeModel::columnCount(const QModelIndex&) const {
    return FTree.ColumnTotal();
}

bool TTreeModel::hasChildren(const QModelIndex& parent) const {
    return parent.isValid() ? parent.column() == 0 && NodeOrRoot(parent).FHasChildren
                            : FTree.FRoot->FPublished > 0;
}

QVariant TTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return FTree.NodeText(NodeOrRoot(index), index.column());
}

QVariant TTreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= static_cast<int>(FHeaders.size()))
        return {};
    return FHeaders[static_cast<std::size_t>(section)];
}

Qt::ItemFlags TTreeModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

QModelIndex TTreeModel::IndexOf(const TTreeNode& node, int column) const {
    if (&node == FTree.FRoot.get()) return {};
    return createIndex(node.FIndex, column, const_cast<TTreeNode*>(&node));
}

void TTreeModel::SetHeaders(std::vector<QString> headers) {
    beginResetModel();
    FHeaders = std::move(headers);
    endResetModel();
}

void TTreeModel::Publish(TTreeNode& parent) {
    const int total = parent.Count();
    if (parent.FPublished == total) return;
    beginInsertRows(IndexOf(parent), parent.FPublished, total - 1);
    parent.FPublished = total;
    endInsertRows();
}

// The nodes are the caller's from here on; the view knows them no more.
std::vector<std::unique_ptr<TTreeNode>> TTreeModel::Remove(TTreeNode& parent, int first, int last) {
    const auto begin = parent.FChildren.begin();
    const bool published = first < parent.FPublished;
    if (published) beginRemoveRows(IndexOf(parent), first, last);
    std::vector<std::unique_ptr<TTreeNode>> removed(std::make_move_iterator(begin + first),
                                                    std::make_move_iterator(begin + last + 1));
    parent.FChildren.erase(begin + first, begin + last + 1);
    parent.Renumber(first);
    if (published) {
        parent.FPublished -= last - first + 1;
        endRemoveRows();
    }
    return removed;
}

void TTreeModel::SetLevel(TTreeNode& node, int level) {
    node.FLevel = static_cast<std::int16_t>(level);
    for (const auto& child : node.FChildren)
        SetLevel(*child, level + 1);
}

void TTreeModel::Move(TTreeNode& node, TTreeNode& parent, int index) {
    TTreeNode& source = *node.FParent;
    const int from = node.FIndex;
    if (&source == &parent && (index == from || index == from + 1)) return;
    beginMoveRows(IndexOf(source), from, from, IndexOf(parent), index);
    std::unique_ptr<TTreeNode> moved = std::move(source.FChildren[static_cast<std::size_t>(from)]);
    source.FChildren.erase(source.FChildren.begin() + from);
    --source.FPublished;
    if (&source == &parent && from < index) --index;
    parent.FChildren.insert(parent.FChildren.begin() + index, std::move(moved));
    ++parent.FPublished;
    node.FParent = &parent;
    source.Renumber(&source == &parent ? std::min(from, index) : from);
    parent.Renumber(std::min(from, index));
    if (&source != &parent) parent.Renumber(index);
    SetLevel(node, parent.FLevel + 1);
    endMoveRows();
}

void TTreeModel::Sort(TTreeNode& parent) {
    const QCollator order = TextOrder();
    const bool published = parent.FPublished > 0;
    if (published) Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::stable_sort(
        parent.FChildren.begin(), parent.FChildren.end(),
        [&](const auto& left, const auto& right) { return order.compare(left->FText, right->FText) < 0; });
    parent.Renumber(0);
    if (!published) return;
    for (const QModelIndex& index : before)
        changePersistentIndex(index, IndexOf(NodeOrRoot(index), index.column()));
    Q_EMIT layoutChanged();
}

void TTreeModel::Changed(const TTreeNode& node) {
    Q_EMIT dataChanged(IndexOf(node), IndexOf(node, columnCount({}) - 1));
}

// A view that gets the focus makes its first row current without selecting it, which
// a tree has no use for.
void TTreeSelection::setCurrentIndex(const QModelIndex& index, SelectionFlags command) {
    if (FTree.FMoving)
        QItemSelectionModel::setCurrentIndex(index, command);
    else if (index.isValid() && command.testFlag(Select))
        FTree.Select(FTree.NodeOf(index));
}

void TTreeSelection::select(const QItemSelection& selection, SelectionFlags command) {
    if (FTree.FMoving)
        QItemSelectionModel::select(selection, command);
    else if (command.testFlag(Select) && !selection.isEmpty())
        FTree.Select(FTree.NodeOf(selection.first().topLeft()));
}

void TTreeSelection::clear() {
    if (FTree.FMoving) QItemSelectionModel::clear();
}

void TTreeDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const TTreeNode* node = FTree.NodeOf(index);
    if (!node) return;
    const int image = FTree.NodeImage(*node, index.column(), node == FTree.FSelected);
    if (FTree.FImages && image >= 0) {
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = FTree.FImages->Icon(image);
        option->decorationSize = QSize(16, 16);
    }
    option->font.setBold(FTree.NodeBold(*node, index.column()));
    option->state.setFlag(QStyle::State_HasFocus, false);
}

void TTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    const TTreeNode* node = FTree.NodeOf(index);
    const bool hasState = node && index.column() == 0 && FTree.FStateImages && node->StateIndex() >= 0;
    if (!hasState) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    QStyle& style = *(row.widget ? row.widget->style() : QApplication::style());
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &row, painter, row.widget);
    const QRect place(option.rect.left() + 2, option.rect.top(), 16, option.rect.height());
    const QIcon::Mode mode = !option.state.testFlag(QStyle::State_Enabled)   ? QIcon::Disabled
                             : option.state.testFlag(QStyle::State_Selected) ? QIcon::Selected
                                                                             : QIcon::Normal;
    FTree.FStateImages->Icon(node->StateIndex()).paint(painter, place, Qt::AlignCenter, mode);
    QStyleOptionViewItem rest = option;
    rest.rect.setLeft(option.rect.left() + StateWidth);
    QStyledItemDelegate::paint(painter, rest, index);
}

QSize TTreeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    const TTreeNode* node = FTree.NodeOf(index);
    if (node && index.column() == 0 && node->StateIndex() >= 0) size.rwidth() += StateWidth;
    return QSize(size.width(), std::max(size.height(), 20));
}
