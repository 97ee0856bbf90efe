// A list in report style: rows with a caption in the first column and sub-items in the
// others, pictures, state pictures and a data slot for each row.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QTreeWidget>

#include "platform/widgets/Control.h"

class TImageList;
class TListView;

// What has changed in a row.
enum class TItemChange { Text, Image, State };

// A row. The list makes, owns and frees it.
class TListItem : public QTreeWidgetItem {
public:
    explicit TListItem(TListView& list);

    std::string Caption() const;
    void SetCaption(const std::string& caption);
    // Column 1 is sub-item 0.
    int SubItemCount() const { return FSubItems; }
    std::string SubItem(int index) const;
    void SetSubItem(int index, const std::string& text);
    void AddSubItem(const std::string& text);

    // The slot owns what it holds; setting frees what was there.
    TObject* Data() const { return FData.get(); }
    template<class T> T* DataAs() const { return dynamic_cast<T*>(FData.get()); }
    void SetData(std::unique_ptr<TObject> data) { FData = std::move(data); }

    // -1 for none. The state picture stands before the picture.
    int ImageIndex() const { return FImage; }
    void SetImageIndex(int index);
    int StateIndex() const { return FState; }
    void SetStateIndex(int index);

    int Index() const;
    bool Selected() const;
    // Selects the row, or takes the selection from it.
    void SetSelected(bool selected);
    void MakeVisible();
    void Delete();

private:
    TListView& FList;
    std::unique_ptr<TObject> FData;
    int FSubItems = 0;
    int FImage = -1;
    int FState = -1;
};

class TListView : public TScrollingControlOf<QTreeWidget> {
public:
    explicit TListView(TWinControl* parent, const std::string& name = {});
    ~TListView() override;

    // A row was selected or lost the selection, by the user, by the program, or
    // because the rows go away. When the selection moves, the row that loses it is
    // told first; for each row OnChange comes before OnSelectItem.
    TEvent<TListItem&, bool> OnSelectItem;
    TEvent<TListItem&, TItemChange> OnChange;
    // While something is dragged over the list: the object that the source drags, or
    // empty for one that the component layer does not know. Nothing is accepted unless
    // the handler sets accept.
    TEvent<TObject*, TPoint, bool&> OnDragOver;
    TEvent<TObject*, TPoint> OnDragDrop;

    void AddColumn(const std::string& caption, int width);
    TListItem& AddItem();
    int ItemCount() const { return topLevelItemCount(); }
    // Empty for an index that does not exist.
    TListItem* Item(int index) const;
    void DeleteItem(int index);
    // Frees all rows with their data.
    void ClearItems();

    // Empty when no row is selected.
    TListItem* Selected() const;
    void SetSelected(TListItem* item);
    // The row with the focus mark. Setting it selects nothing.
    TListItem* ItemFocused() const;
    void SetItemFocused(TListItem& item);
    TListItem* GetItemAt(int x, int y) const;

    // Not owned.
    void SetSmallImages(const TImageList* images) { FImages = images; }
    const TImageList* SmallImages() const { return FImages; }
    void SetStateImages(const TImageList* images);
    const TImageList* StateImages() const { return FStateImages; }

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    friend class TListItem;
    friend class TListDelegate;
    void Changed(TListItem& item, TItemChange change);
    const TImageList* FImages = nullptr;
    const TImageList* FStateImages = nullptr;
    int FColumnCount = 0;
};
