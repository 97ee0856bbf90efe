// Lists of texts with objects: drop-down lists, list boxes, check list boxes.
#pragma once

#include <memory>
#include <string>

#include <QComboBox>
#include <QListWidget>

#include "platform/widgets/Control.h"

class TImageList;

// The entries of a list control. Each entry owns its object. Indexes count from 0; an
// index that does not exist gives empty results and changes nothing.
class TStrings {
public:
    TStrings() = default;
    TStrings(const TStrings&) = delete;
    TStrings& operator=(const TStrings&) = delete;
    virtual ~TStrings() = default;

    virtual int Count() const = 0;
    virtual std::string Text(int index) const = 0;
    virtual void SetText(int index, const std::string& text) = 0;
    virtual TObject* Object(int index) const = 0;
    template<class T> T* ObjectAs(int index) const { return dynamic_cast<T*>(Object(index)); }
    // Frees the object that the entry had.
    virtual void SetObject(int index, std::unique_ptr<TObject> object) = 0;
    // Gives the index of the new entry, which in a sorted list needn't be the last.
    virtual int AddObject(const std::string& text, std::unique_ptr<TObject> object) = 0;
    int Add(const std::string& text) { return AddObject(text, nullptr); }
    virtual void Delete(int index) = 0;
    virtual void Clear() = 0;
    virtual void BeginUpdate() = 0;
    virtual void EndUpdate() = 0;
    // The first entry of exactly this text, or -1.
    int IndexOf(const std::string& text) const;
    // The same without regard to case.
    int IndexOfAnyCase(const std::string& text) const;
};

// A drop-down list without free text. OnChange fires when the user picks an entry;
// the program, which knows what it selects, calls its handler itself.
class TComboBox : public TControlOf<QComboBox> {
public:
    explicit TComboBox(TWinControl* parent, const std::string& name = {});
    ~TComboBox() override;
    TEvent<> OnChange;

    TStrings& Items() { return *FItems; }
    // A sorted list puts each new entry in its place by the rules of the user's
    // language; to be set while the list is empty.
    void SetSorted(bool sorted) { FSorted = sorted; }
    bool Sorted() const { return FSorted; }
    // -1 for no selection; an index that does not exist selects nothing.
    int ItemIndex() const { return currentIndex(); }
    void SetItemIndex(int index);
    // The text of the selected entry; empty without one.
    std::string Text() const;

    // Pictures for entries; not owned.
    void SetImages(const TImageList* images) { FImages = images; }
    void SetItemImage(int index, int imageIndex);
    // The list's width in characters, for lists that stand in a bar.
    void SetMinimumChars(int chars);

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    class TItems;
    std::unique_ptr<TStrings> FItems;
    const TImageList* FImages = nullptr;
    bool FSorted = false;
};

// A list box with one selection.
class TListBox : public TScrollingControlOf<QListWidget> {
public:
    explicit TListBox(TWinControl* parent, const std::string& name = {});
    ~TListBox() override;
    // The user has selected another entry.
    TEvent<> OnClick;

    TStrings& Items() { return *FItems; }
    int ItemIndex() const { return currentRow(); }
    void SetItemIndex(int index);

protected:
    std::unique_ptr<TStrings> FItems;
};

// A list box whose entries carry check boxes.
class TCheckListBox : public TListBox {
public:
    explicit TCheckListBox(TWinControl* parent, const std::string& name = {});
    // The user has checked or cleared the entry of that index.
    TEvent<int> OnClickCheck;

    bool Checked(int index) const;
    void SetChecked(int index, bool checked);

    QSize sizeHint() const override;
};
