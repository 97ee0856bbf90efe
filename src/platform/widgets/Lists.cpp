#include "platform/widgets/Lists.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

int TStrings::IndexOf(const std::string& text) const {
    for (int i = 0; i < Count(); ++i)
        if (Text(i) == text) return i;
    return -1;
}

int TStrings::IndexOfAnyCase(const std::string& text) const {
    const QString wanted = ToQt(text);
    for (int i = 0; i < Count(); ++i)
        if (wanted.compare(ToQt(Text(i)), Qt::CaseInsensitive) == 0) return i;
    return -1;
}

namespace {

// Objects beside the entries that a widget holds.
class TObjectStrings : public TStrings {
public:
    int Count() const override { return static_cast<int>(FObjects.size()); }
    TObject* Object(int index) const override {
        return Holds(index) ? FObjects[static_cast<std::size_t>(index)].get() : nullptr;
    }
    void SetObject(int index, std::unique_ptr<TObject> object) override {
        if (Holds(index)) FObjects[static_cast<std::size_t>(index)] = std::move(object);
    }
    int AddObject(const std::string& text, std::unique_ptr<TObject> object) override {
        const int index = InsertText(ToQt(text));
        FObjects.insert(FObjects.begin() + index, std::move(object));
        return index;
    }
    void Delete(int index) override {
        if (!Holds(index)) return;
        DeleteText(index);
        FObjects.erase(FObjects.begin() + index);
    }
    void Clear() override {
        ClearTexts();
        FObjects.clear();
    }

protected:
    bool Holds(int index) const { return index >= 0 && index < Count(); }
    virtual int InsertText(const QString& text) = 0;
    virtual void DeleteText(int index) = 0;
    virtual void ClearTexts() = 0;

private:
    std::vector<std::unique_ptr<TObject>> FObjects;
};

} // namespace

class TComboBox::TItems : public TObjectStrings {
public:
    explicit TItems(TComboBox& combo)
        : FCombo(combo) {}
    std::string Text(int index) const override { return FromQt(FCombo.itemText(index)); }
    void SetText(int index, const std::string& text) override { FCombo.setItemText(index, ToQt(text)); }
    void BeginUpdate() override { FCombo.BeginUpdate(); }
    void EndUpdate() override { FCombo.EndUpdate(); }

protected:
    // A widget selects its first entry by itself; here only the program selects.
    int InsertText(const QString& text) override {
        const QSignalBlocker blocker(FCombo);
        const int selected = FCombo.currentIndex();
        const int index = FCombo.Sorted() ? Place(text) : FCombo.count();
        FCombo.insertItem(index, text);
        FCombo.setCurrentIndex(selected >= index ? selected + 1 : selected);
        return index;
    }
    void DeleteText(int index) override {
        const QSignalBlocker blocker(FCombo);
        const int selected = FCombo.currentIndex();
        FCombo.removeItem(index);
        FCombo.setCurrentIndex(selected == index ? -1 : selected - (selected > index ? 1 : 0));
    }
    void ClearTexts() override {
        const QSignalBlocker blocker(FCombo);
        FCombo.clear();
    }

private:
    int Place(const QString& text) const {
        int low = 0;
        int high = FCombo.count();
        while (low < high) {
            const int middle = (low + high) / 2;
            if (FOrder.compare(FCombo.itemText(middle), text) <= 0)
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    }
    TComboBox& FCombo;
    const QCollator FOrder = TextOrder();
};

TComboBox::TComboBox(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name)
    , FItems(std::make_unique<TItems>(*this)) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    connect(this, &QComboBox::currentIndexChanged, this, [this] { Fire(OnChange); });
}

TComboBox::~TComboBox() = default;

void TComboBox::SetItemIndex(int index) {
    const QSignalBlocker blocker(*this);
    setCurrentIndex(index >= 0 && index < count() ? index : -1);
}

std::string TComboBox::Text() const {
    return FromQt(currentText());
}

void TComboBox::SetItemImage(int index, int imageIndex) {
    if (FImages) setItemIcon(index, FImages->Icon(imageIndex));
}

void TComboBox::SetMinimumChars(int chars) {
    setMinimumContentsLength(chars);
}

// Turning the wheel over a page that scrolls must not change the values on it.
void TComboBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

namespace {

class TListItems : public TObjectStrings {
public:
    TListItems(TListBox& list, bool checkable)
        : FList(list)
        , FCheckable(checkable) {}
    std::string Text(int index) const override {
        return Holds(index) ? FromQt(FList.item(index)->text()) : std::string();
    }
    void SetText(int index, const std::string& text) override {
        const QSignalBlocker blocker(FList);
        if (Holds(index)) FList.item(index)->setText(ToQt(text));
    }
    void BeginUpdate() override { FList.BeginUpdate(); }
    void EndUpdate() override { FList.EndUpdate(); }

protected:
    int InsertText(const QString& text) override {
        const QSignalBlocker blocker(FList);
        FList.addItem(text);
        QListWidgetItem* item = FList.item(FList.count() - 1);
        if (FCheckable) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
        }
        return FList.count() - 1;
    }
    void DeleteText(int index) override {
        const QSignalBlocker blocker(FList);
        const std::unique_ptr<QListWidgetItem> item(FList.takeItem(index));
    }
    void ClearTexts() override {
        const QSignalBlocker blocker(FList);
        FList.clear();
    }

private:
    TListBox& FList;
    bool FCheckable;
};

} // namespace

TListBox::TListBox(TWinControl* parent, const std::string& name)
    : TScrollingControlOf(parent, name)
    , FItems(std::make_unique<TListItems>(*this, false)) {
    setUniformItemSizes(true);
    setSpacing(2);
    connect(this, &QListWidget::currentRowChanged, this, [this] { Fire(OnClick); });
}

TListBox::~TListBox() = default;

void TListBox::SetItemIndex(int index) {
    const QSignalBlocker blocker(*this);
    setCurrentRow(index);
}

TCheckListBox::TCheckListBox(TWinControl* parent, const std::string& name)
    : TListBox(parent, name) {
    FItems = std::make_unique<TListItems>(*this, true);
    connect(this, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem* item) { Fire(OnClickCheck, row(item)); });
}

bool TCheckListBox::Checked(int index) const {
    const QListWidgetItem* entry = item(index);
    return entry && entry->checkState() == Qt::Checked;
}

void TCheckListBox::SetChecked(int index, bool checked) {
    const QSignalBlocker blocker(*this);
    if (QListWidgetItem* entry = item(index)) entry->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

// Room for a handful of entries; more of them scroll.
QSize TCheckListBox::sizeHint() const {
    const int row = std::max(sizeHintForRow(0), fontMetrics().height()) + 2 * spacing();
    return QSize(QListWidget::sizeHint().width(), std::clamp(count(), 3, 6) * row + 2 * frameWidth() + 2);
}
