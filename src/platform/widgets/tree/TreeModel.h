// What the Qt view sees of a tree's nodes, how it paints them, and how its selection
// asks before it moves. Used by TTreeView alone.
#pragma once

#include <vector>

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QStyledItemDelegate>

#include "platform/widgets/tree/TreeView.h"

// The view is told of children in runs: a node's children count for it once they are
// published.
class TTreeModel : public QAbstractItemModel {
public:
    explicit TTreeModel(TTreeView& tree)
        : FTree(tree) {}

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    bool hasChildren(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Of a published node; the root has the invalid index.
    QModelIndex IndexOf(const TTreeNode& node, int column = 0) const;
    void SetHeaders(std::vector<QString> headers);

    void Publish(TTreeNode& parent);
    std::vector<std::unique_ptr<TTreeNode>> Remove(TTreeNode& parent, int first, int last);
    void Move(TTreeNode& node, TTreeNode& parent, int index);
    void Sort(TTreeNode& parent);
    void Changed(const TTreeNode& node);

private:
    static void SetLevel(TTreeNode& node, int level);
    TTreeNode& NodeOrRoot(const QModelIndex& index) const;
    TTreeView& FTree;
    std::vector<QString> FHeaders;
};

// Lets nothing but the tree move the selection, so that OnChanging always comes first.
class TTreeSelection : public QItemSelectionModel {
public:
    TTreeSelection(TTreeView& tree, QAbstractItemModel* model)
        : QItemSelectionModel(model, &tree)
        , FTree(tree) {}
    using QItemSelectionModel::select;
    void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override;
    void select(const QItemSelection& selection, SelectionFlags command) override;
    void clear() override;

private:
    TTreeView& FTree;
};

class TTreeDelegate : public QStyledItemDelegate {
public:
    explicit TTreeDelegate(TTreeView& tree)
        : QStyledItemDelegate(&tree)
        , FTree(tree) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // The room of a state picture before the picture of a row.
    static constexpr int StateWidth = 19;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    TTreeView& FTree;
};
