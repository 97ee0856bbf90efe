#include "platform/widgets/Layouts.h"

#include <algorithm>

#include <QGridLayout>

#include "platform/widgets/Control.h"

TAlignLayout::TAlignLayout(QWidget& area)
    : QLayout(&area) {
    setContentsMargins(0, 0, 0, 0);
}

TAlignLayout::~TAlignLayout() = default;

void TAlignLayout::AddControl(TControl& control) {
    addChildWidget(&control.Widget());
    FEntries.push_back({std::make_unique<QWidgetItem>(&control.Widget()), &control});
    invalidate();
}

void TAlignLayout::SetPadding(int padding, int spacing) {
    FPadding = padding;
    FSpacing = spacing;
    invalidate();
}

TControl* TAlignLayout::Before(const TControl& control) const {
    TControl* before = nullptr;
    for (const TEntry& entry : FEntries) {
        if (entry.Control == &control) return before;
        if (!entry.Item->isEmpty() && entry.Control && entry.Control->Align() == control.Align())
            before = entry.Control;
    }
    return nullptr;
}

void TAlignLayout::addItem(QLayoutItem* item) {
    FEntries.push_back({std::unique_ptr<QLayoutItem>(item), dynamic_cast<TControl*>(item->widget())});
    invalidate();
}

int TAlignLayout::count() const {
    return static_cast<int>(FEntries.size());
}

QLayoutItem* TAlignLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? FEntries[static_cast<std::size_t>(index)].Item.get() : nullptr;
}

QLayoutItem* TAlignLayout::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    const auto entry = FEntries.begin() + index;
    QLayoutItem* item = entry->Item.release();
    FEntries.erase(entry);
    invalidate();
    return item;
}

namespace {

bool IsUpright(TAlign edge) {
    return edge == TAlign::Top || edge == TAlign::Bottom;
}

int Order(const TControl* control) {
    switch (control ? control->Align() : TAlign::None) {
    case TAlign::Top:
        return 0;
    case TAlign::Bottom:
        return 1;
    case TAlign::Left:
        return 2;
    case TAlign::Right:
        return 3;
    default:
        return 4;
    }
}

} // namespace

std::vector<const TAlignLayout::TEntry*> TAlignLayout::InOrder() const {
    std::vector<const TEntry*> entries;
    for (const TEntry& entry : FEntries)
        if (!entry.Item->isEmpty() && entry.Control && entry.Control->Align() != TAlign::None)
            entries.push_back(&entry);
    std::stable_sort(entries.begin(), entries.end(), [](const TEntry* left, const TEntry* right) {
        return Order(left->Control) < Order(right->Control);
    });
    return entries;
}

QSize TAlignLayout::SizeOf(const TEntry& entry, TMeasure measure, int width) const {
    const TControl& control = *entry.Control;
    QSize size = measure == TMeasure::Hint ? entry.Item->sizeHint() : entry.Item->minimumSize();
    const QSize minimum = entry.Item->minimumSize();
    if (entry.Item->hasHeightForWidth() && width > 0)
        size.setHeight(entry.Item->heightForWidth(width - 2 * control.Margin()));
    if (measure == TMeasure::Hint && control.SetWidthOrNone() >= 0)
        size.setWidth(std::max(minimum.width(), control.SetWidthOrNone()));
    if (measure == TMeasure::Hint && control.SetHeightOrNone() >= 0)
        size.setHeight(std::max(minimum.height(), control.SetHeightOrNone()));
    return size.boundedTo(entry.Item->maximumSize()) + QSize(2 * control.Margin(), 2 * control.Margin());
}

QSize TAlignLayout::FreeSize() const {
    QSize size(0, 0);
    for (const TEntry& entry : FEntries)
        if (entry.Control && !entry.Item->isEmpty() && entry.Control->Align() == TAlign::None)
            size = size.expandedTo(QSize(entry.Control->Left() + entry.Control->Width(),
                                         entry.Control->Top() + entry.Control->Height()));
    return size.isNull() ? size : size + QSize(FPadding + 5, FPadding + 5);
}

QSize TAlignLayout::Measure(TMeasure measure, int width) const {
    QSize total(0, 0);
    const auto entries = InOrder();
    const int inner = width > 0 ? width - 2 * FPadding : width;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        const TAlign edge = (*entry)->Control->Align();
        const QSize size = SizeOf(**entry, measure, edge == TAlign::Client || IsUpright(edge) ? inner : 0);
        const int gap = total.isNull() ? 0 : FSpacing;
        if (edge == TAlign::Client)
            total = total.expandedTo(size);
        else if (IsUpright(edge))
            total = QSize(std::max(total.width(), size.width()), total.height() + size.height() + gap);
        else
            total = QSize(total.width() + size.width() + gap, std::max(total.height(), size.height()));
    }
    total += QSize(2 * FPadding, 2 * FPadding);
    return FHoldsFree ? total.expandedTo(FreeSize()) : total;
}

QSize TAlignLayout::sizeHint() const {
    return Measure(TMeasure::Hint, 0);
}

QSize TAlignLayout::minimumSize() const {
    return Measure(TMeasure::Minimum, 0);
}

bool TAlignLayout::hasHeightForWidth() const {
    return std::any_of(FEntries.begin(), FEntries.end(), [](const TEntry& entry) {
        return entry.Control && entry.Control->Align() != TAlign::None && entry.Item->hasHeightForWidth();
    });
}

int TAlignLayout::heightForWidth(int width) const {
    return Measure(TMeasure::Hint, width).height();
}

int TAlignLayout::Across(const TEntry& entry, const QRect& room) const {
    const bool upright = IsUpright(entry.Control->Align());
    const QSize size = SizeOf(entry, TMeasure::Hint, upright ? room.width() : 0);
    return upright ? size.height() : size.width();
}

// What the controls that are placed later need at least along the same direction.
int TAlignLayout::Reserved(std::size_t from, bool upright) const {
    const auto entries = InOrder();
    int sum = 0;
    int client = 0;
    for (std::size_t i = from; i < entries.size(); ++i) {
        const TAlign edge = entries[i]->Control->Align();
        const QSize size = SizeOf(*entries[i], TMeasure::Minimum, 0);
        const int extent = upright ? size.height() : size.width();
        if (edge != TAlign::Client && IsUpright(edge) == upright)
            sum += extent + FSpacing;
        else
            client = std::max(client, extent);
    }
    return sum + client;
}

QRect TAlignLayout::TakeRoom(const TEntry& entry, QRect& room, int reserved) const {
    const TAlign edge = entry.Control->Align();
    if (edge == TAlign::Client) return room;
    const bool upright = IsUpright(edge);
    const int available = upright ? room.height() : room.width();
    const QSize least = SizeOf(entry, TMeasure::Minimum, upright ? room.width() : 0);
    const int minimum = upright ? least.height() : least.width();
    const int extent = std::max(std::min(Across(entry, room), available - reserved), minimum);
    QRect place = room;
    const int step = extent + FSpacing;
    if (edge == TAlign::Top) {
        place.setHeight(extent);
        room.setTop(room.top() + step);
    } else if (edge == TAlign::Bottom) {
        place.setTop(room.bottom() + 1 - extent);
        room.setBottom(room.bottom() - step);
    } else if (edge == TAlign::Left) {
        place.setWidth(extent);
        room.setLeft(room.left() + step);
    } else {
        place.setLeft(room.right() + 1 - extent);
        room.setRight(room.right() - step);
    }
    return place;
}

void TAlignLayout::PlaceFree(const TEntry& entry, const QRect& rect) const {
    const TControl& control = *entry.Control;
    const QSize hint = entry.Item->sizeHint();
    const int left = control.Left();
    const int top = control.Top();
    int width = control.SetWidthOrNone() >= 0 ? control.SetWidthOrNone() : hint.width();
    int height = control.SetHeightOrNone() >= 0 ? control.SetHeightOrNone() : hint.height();
    if (control.AnchoredRight()) width = rect.width() - left - control.Margin();
    if (control.AnchoredBottom()) height = rect.height() - top - control.Margin();
    const QSize size =
        QSize(width, height).expandedTo(entry.Item->minimumSize()).boundedTo(entry.Item->maximumSize());
    entry.Item->widget()->setGeometry(QRect(QPoint(left, top), size));
}

void TAlignLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    for (const TEntry& entry : FEntries)
        if (entry.Control && !entry.Item->isEmpty() && entry.Control->Align() == TAlign::None)
            PlaceFree(entry, rect);
    QRect room = rect.adjusted(FPadding, FPadding, -FPadding, -FPadding);
    const auto entries = InOrder();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const int margin = entries[i]->Control->Margin();
        const int reserved = Reserved(i + 1, IsUpright(entries[i]->Control->Align()));
        const QRect place = TakeRoom(*entries[i], room, reserved);
        entries[i]->Item->widget()->setGeometry(place.adjusted(margin, margin, -margin, -margin));
    }
}

TFlowLayout::TFlowLayout(QWidget& area, int spacing, int margin)
    : QLayout(&area) {
    setContentsMargins(margin, margin, margin, margin);
    setSpacing(spacing);
}

TFlowLayout::~TFlowLayout() = default;

void TFlowLayout::addItem(QLayoutItem* item) {
    FItems.emplace_back(item);
    invalidate();
}

int TFlowLayout::count() const {
    return static_cast<int>(FItems.size());
}

QLayoutItem* TFlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? FItems[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* TFlowLayout::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    QLayoutItem* item = FItems[static_cast<std::size_t>(index)].release();
    FItems.erase(FItems.begin() + index);
    invalidate();
    return item;
}

int TFlowLayout::Arrange(const QRect& rect, bool place) const {
    const QRect room = rect.marginsRemoved(contentsMargins());
    int top = room.top();
    std::size_t first = 0;
    while (first < FItems.size()) {
        int x = room.left();
        int rowHeight = 0;
        std::size_t end = first;
        for (; end < FItems.size(); ++end) {
            if (FItems[end]->isEmpty()) continue;
            const QSize size = FItems[end]->sizeHint();
            if (rowHeight > 0 && x + size.width() > room.right() + 1) break;
            x += size.width() + spacing();
            rowHeight = std::max(rowHeight, size.height());
        }
        x = room.left();
        for (; first < end; ++first) {
            if (FItems[first]->isEmpty()) continue;
            const QSize size = FItems[first]->sizeHint();
            const int width =
                std::min(size.width(), std::max(room.width(), FItems[first]->minimumSize().width()));
            if (place)
                FItems[first]->setGeometry(
                    QRect(x, top + (rowHeight - size.height()) / 2, width, size.height()));
            x += size.width() + spacing();
        }
        top += rowHeight + (rowHeight > 0 && end < FItems.size() ? spacing() : 0);
    }
    return top - room.top() + contentsMargins().top() + contentsMargins().bottom();
}

void TFlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    Arrange(rect, true);
}

int TFlowLayout::heightForWidth(int width) const {
    return Arrange(QRect(0, 0, width, 0), false);
}

QSize TFlowLayout::sizeHint() const {
    QSize size(0, 0);
    for (const auto& item : FItems)
        if (!item->isEmpty())
            size = QSize(size.width() + item->sizeHint().width() + spacing(),
                         std::max(size.height(), item->sizeHint().height()));
    return size.grownBy(contentsMargins());
}

QSize TFlowLayout::minimumSize() const {
    QSize size(0, 0);
    for (const auto& item : FItems)
        if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

TGridLayout::TGridLayout(QWidget& area)
    : FLayout(*new QGridLayout(&area)) {}

void TGridLayout::Place(TControl& control, int row, int column, int rowSpan, int columnSpan) {
    FLayout.addWidget(&control.Widget(), row, column, rowSpan, columnSpan);
}

void TGridLayout::SetRowStretch(int row, int stretch) {
    FLayout.setRowStretch(row, stretch);
}

void TGridLayout::SetColumnStretch(int column, int stretch) {
    FLayout.setColumnStretch(column, stretch);
}

void TGridLayout::SetRowMinimumHeight(int row, int height) {
    FLayout.setRowMinimumHeight(row, height);
}

void TGridLayout::SetColumnMinimumWidth(int column, int width) {
    FLayout.setColumnMinimumWidth(column, width);
}

void TGridLayout::SetSpacing(int horizontal, int vertical) {
    FLayout.setHorizontalSpacing(horizontal);
    FLayout.setVerticalSpacing(vertical);
}

void TGridLayout::SetMargins(int left, int top, int right, int bottom) {
    FLayout.setContentsMargins(left, top, right, bottom);
}
