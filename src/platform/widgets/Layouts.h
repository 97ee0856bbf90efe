// The layout managers behind Align and UseFlowLayout.
#pragma once

#include <memory>
#include <vector>

#include <QLayout>
#include <QWidgetItem>

class TControl;

// Places controls along the edges: top, bottom, left, right in this order, each in
// the order of creation, and the client in the rest. A size that was set for a control
// stands as far as the others keep their minimum.
class TAlignLayout : public QLayout {
public:
    explicit TAlignLayout(QWidget& area);
    ~TAlignLayout() override;

    void AddControl(TControl& control);
    // Controls with bounds of their own count for the size that the area needs.
    void SetHoldsFree(bool holds) { FHoldsFree = holds; }
    void SetPadding(int padding, int spacing);
    // The visible control that stands before this one with the same alignment.
    TControl* Before(const TControl& control) const;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    void setGeometry(const QRect& rect) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal | Qt::Vertical; }

private:
    struct TEntry {
        std::unique_ptr<QLayoutItem> Item;
        TControl* Control;
    };
    enum class TMeasure { Hint, Minimum };
    QSize Measure(TMeasure measure, int width) const;
    QSize SizeOf(const TEntry& entry, TMeasure measure, int width) const;
    QSize FreeSize() const;
    int Across(const TEntry& entry, const QRect& room) const;
    int Reserved(std::size_t from, bool upright) const;
    void PlaceFree(const TEntry& entry, const QRect& rect) const;
    QRect TakeRoom(const TEntry& entry, QRect& room, int reserved) const;
    std::vector<const TEntry*> InOrder() const;

    std::vector<TEntry> FEntries;
    int FPadding = 0;
    int FSpacing = 0;
    bool FHoldsFree = false;
};

// Places controls in rows from the left, each as large as it asks, and wraps.
class TFlowLayout : public QLayout {
public:
    TFlowLayout(QWidget& area, int spacing, int margin);
    ~TFlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    void setGeometry(const QRect& rect) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    Qt::Orientations expandingDirections() const override { return {}; }

private:
    int Arrange(const QRect& rect, bool place) const;
    std::vector<std::unique_ptr<QLayoutItem>> FItems;
};
