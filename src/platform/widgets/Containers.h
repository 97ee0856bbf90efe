// Controls that hold other controls: panels, scroll boxes, splitters, notebooks, pages.
#pragma once

#include <string>
#include <vector>

#include <QFrame>
#include <QGroupBox>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>

#include "platform/widgets/Control.h"

class TImageList;

class TPanel : public TControlOf<QFrame> {
public:
    explicit TPanel(TWinControl* parent, const std::string& name = {});
    // An automatic panel is as large as its content asks; otherwise the size that was
    // set stands. On at first.
    void SetAutoSize(bool autoSize);
    bool AutoSize() const { return FAutoSize; }

private:
    bool FAutoSize = true;
    int FKeptHeight = -1;
};

// A panel with a caption and an outline.
class TGroupBox : public TControlOf<QGroupBox> {
public:
    TGroupBox(TWinControl* parent, const std::string& name, const std::string& caption);
};

// Scrolls when its children need more room than it has: both those with bounds of
// their own and those that are aligned.
class TScrollBox : public TControlOf<QScrollArea> {
public:
    explicit TScrollBox(TWinControl* parent, const std::string& name = {});
    QWidget& ClientArea() override;

private:
    QWidget* FContent = nullptr;
};

// Sizes the control that stands before it with the same alignment. To be aligned to
// the edge that this control is aligned to, and made right after it.
class TSplitter : public TControlOf<QFrame> {
public:
    explicit TSplitter(TWinControl* parent, const std::string& name = {});

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    TControl* Sized() const;
    bool Upright() const { return Align() == TAlign::Left || Align() == TAlign::Right; }
    void Resize(int delta);
    TPoint FStart;
    int FStartSize = 0;
    // Below this the sized control is not made smaller.
    static constexpr int MinSize = 30;
    bool FDragging = false;
};

class TPage : public TControlOf<QWidget> {
public:
    explicit TPage(class TNotebook& notebook, const std::string& name);
};

// Pages of which one shows, chosen by the program. OnPageChanged fires when another
// page has come up, not when the page that shows is set again.
class TNotebook : public TControlOf<QStackedWidget> {
public:
    explicit TNotebook(TWinControl* parent, const std::string& name = {});
    TEvent<> OnPageChanged;

    // Owned by the notebook; the first one shows.
    TPage& AddPage(const std::string& pageName);
    TPage& Page(int index) { return *FPages.at(static_cast<std::size_t>(index)); }
    int PageCount() const { return static_cast<int>(FPages.size()); }
    int PageIndex() const { return currentIndex(); }
    void SetPageIndex(int index);
    // Name of the page that shows.
    std::string ActivePage() const;

private:
    std::vector<TPage*> FPages;
};

class TPageControl;

// A page of a page control with a tab. Made at the end of the pages.
class TTabSheet : public TControlOf<QWidget> {
public:
    TTabSheet(TPageControl& pageControl, const std::string& name, const std::string& caption);

    std::string Caption() const { return FCaption; }
    // "&" shows as it is.
    void SetCaption(const std::string& caption);
    int ImageIndex() const { return FImageIndex; }
    // An index of the page control's images; -1 for none.
    void SetImageIndex(int index);
    int PageIndex() const;

private:
    friend class TPageControl;
    TPageControl* FPageControl;
    std::string FCaption;
    int FImageIndex = -1;
};

// Tabbed pages that can be added and freed at run time. OnChange fires when the user
// has chosen another tab; the program, which knows what it shows, calls its handler
// itself. It also knows the state in which no page is active.
class TPageControl : public TControlOf<QTabWidget> {
public:
    explicit TPageControl(TWinControl* parent, const std::string& name = {});
    ~TPageControl() override;
    TEvent<> OnChange;

    // Not owned.
    void SetImages(const TImageList* images) { FImages = images; }
    const TImageList* Images() const { return FImages; }
    int PageCount() const { return count(); }
    TTabSheet& Page(int index) const;
    // -1 when none is active.
    int ActivePageIndex() const;
    // An index that does not exist leaves no page active.
    void SetActivePageIndex(int index);
    TTabSheet* ActivePage() const;
    void SetActivePage(TTabSheet& page);
    // Frees the page with all that it holds. A page from which a handler runs goes
    // when the handler is through.
    void FreePage(int index);

    // Its controls are the pages.
    QWidget& ClientArea() override;

private:
    friend class TTabSheet;
    class TProgramChange;
    void UserChanged();
    const TImageList* FImages = nullptr;
    int FProgramChanges = 0;
    bool FNoneActive = false;
};
