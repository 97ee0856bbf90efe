#include "platform/widgets/tree/ListView.h"

#include <algorithm>

#include <QApplication>
#include <QDragMoveEvent>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

// Paints the state picture before the rest of the first column.
class TListDelegate : public QStyledItemDelegate {
public:
    explicit TListDelegate(TListView& list)
        : QStyledItemDelegate(&list)
        , FList(list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem shown = option;
        shown.state.setFlag(QStyle::State_HasFocus, false);
        if (index.column() != 0 || !FList.FStateImages) {
            QStyledItemDelegate::paint(painter, shown, index);
            return;
        }
        QStyle& style = *(option.widget ? option.widget->style() : QApplication::style());
        style.drawPrimitive(QStyle::PE_PanelItemViewItem, &shown, painter, option.widget);
        const auto* item = dynamic_cast<const TListItem*>(FList.itemFromIndex(index));
        if (item && item->StateIndex() >= 0)
            FList.FStateImages->Icon(item->StateIndex())
                .paint(painter, QRect(option.rect.left() + 2, option.rect.top(), 16, option.rect.height()));
        shown.rect.setLeft(option.rect.left() + 19);
        QStyledItemDelegate::paint(painter, shown, index);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return QSize(size.width(), std::max(size.height(), 20));
    }

private:
    TListView& FList;
};

TListItem::TListItem(TListView& list)
    : FList(list) {}

std::string TListItem::Caption() const {
    return FromQt(text(0));
}

void TListItem::SetCaption(const std::string& caption) {
    setText(0, ToQt(caption));
    FList.Changed(*this, TItemChange::Text);
}

std::string TListItem::SubItem(int index) const {
    return FromQt(text(index + 1));
}

void TListItem::SetSubItem(int index, const std::string& text) {
    setText(index + 1, ToQt(text));
    FSubItems = std::max(FSubItems, index + 1);
    FList.Changed(*this, TItemChange::Text);
}

void TListItem::AddSubItem(const std::string& text) {
    SetSubItem(FSubItems, text);
}

void TListItem::SetImageIndex(int index) {
    FImage = index;
    setIcon(0, FList.SmallImages() && index >= 0 ? FList.SmallImages()->Icon(index) : QIcon());
    FList.Changed(*this, TItemChange::Image);
}

void TListItem::SetStateIndex(int index) {
    FState = index;
    FList.viewport()->update();
    FList.Changed(*this, TItemChange::State);
}

int TListItem::Index() const {
    return FList.indexOfTopLevelItem(const_cast<TListItem*>(this));
}

// Asked of the model: the item itself learns of a change only after the view has told it.
bool TListItem::Selected() const {
    return FList.selectionModel()->isSelected(FList.indexFromItem(this));
}

void TListItem::SetSelected(bool selected) {
    if (selected)
        FList.SetSelected(this);
    else if (Selected())
        FList.SetSelected(nullptr);
}

void TListItem::MakeVisible() {
    FList.scrollToItem(this);
}

void TListItem::Delete() {
    FList.DeleteItem(Index());
}

TListView::TListView(TWinControl* parent, const std::string& name)
    : TScrollingControlOf(parent, name) {
    setItemDelegate(new TListDelegate(*this));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setColumnCount(0);
    header()->setStretchLastSection(true);
    header()->setMinimumSectionSize(16);
    setAcceptDrops(true);
}

// The rows go while the list can still tell that they do.
TListView::~TListView() {
    OnSelectItem = nullptr;
    OnChange = nullptr;
    ClearItems();
}

void TListView::AddColumn(const std::string& caption, int width) {
    const int column = FColumnCount++;
    setColumnCount(FColumnCount);
    headerItem()->setText(column, ToQt(caption));
    if (width > 0) header()->resizeSection(column, width);
}

TListItem& TListView::AddItem() {
    auto item = std::make_unique<TListItem>(*this);
    TListItem& added = *item;
    addTopLevelItem(item.release());
    return added;
}

TListItem* TListView::Item(int index) const {
    return dynamic_cast<TListItem*>(topLevelItem(index));
}

void TListView::DeleteItem(int index) {
    TListItem* item = Item(index);
    if (item && item->Selected()) SetSelected(nullptr);
    const std::unique_ptr<QTreeWidgetItem> taken(takeTopLevelItem(index));
}

void TListView::ClearItems() {
    SetSelected(nullptr);
    clear();
}

TListItem* TListView::Selected() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? nullptr : dynamic_cast<TListItem*>(selected.first());
}

void TListView::SetSelected(TListItem* item) {
    if (item)
        setCurrentItem(item, 0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    else
        clearSelection();
}

TListItem* TListView::ItemFocused() const {
    return dynamic_cast<TListItem*>(currentItem());
}

void TListView::SetItemFocused(TListItem& item) {
    setCurrentItem(&item, 0, QItemSelectionModel::NoUpdate);
}

TListItem* TListView::GetItemAt(int x, int y) const {
    return dynamic_cast<TListItem*>(itemAt(x, y));
}

void TListView::SetStateImages(const TImageList* images) {
    FStateImages = images;
    viewport()->update();
}

void TListView::Changed(TListItem& item, TItemChange change) {
    Fire(OnChange, item, change);
}

void TListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeWidget::selectionChanged(selected, deselected);
    for (const bool gains : {false, true}) {
        const QItemSelection& rows = gains ? selected : deselected;
        if (rows.isEmpty()) continue;
        const QPersistentModelIndex row = rows.first().topLeft();
        for (const bool select : {false, true}) {
            auto* item = row.isValid() ? dynamic_cast<TListItem*>(itemFromIndex(row)) : nullptr;
            if (item && select)
                Fire(OnSelectItem, *item, gains);
            else if (item)
                Fire(OnChange, *item, TItemChange::State);
        }
    }
}

namespace {

TObject* DraggedObject(const QDropEvent& event) {
    auto* source = dynamic_cast<IDragSource*>(event.source());
    return source ? source->DragObject() : nullptr;
}

TPoint PointOf(const QDropEvent& event) {
    const QPoint point = event.position().toPoint();
    return {point.x(), point.y()};
}

} // namespace

void TListView::dragEnterEvent(QDragEnterEvent* event) {
    if (OnDragOver) event->accept();
}

void TListView::dragMoveEvent(QDragMoveEvent* event) {
    bool accept = false;
    Fire(OnDragOver, DraggedObject(*event), PointOf(*event), accept);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(accept);
}

void TListView::dropEvent(QDropEvent* event) {
    bool accept = false;
    Fire(OnDragOver, DraggedObject(*event), PointOf(*event), accept);
    if (!accept) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Fire(OnDragDrop, DraggedObject(*event), PointOf(*event));
}
