#include "platform/widgets/Containers.h"

#include <algorithm>

#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOption>
#include <QTabBar>

#include "platform/widgets/Layouts.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TPanel::TPanel(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {}

// The layout measures an automatic panel anew at each change of its content.
void TPanel::SetAutoSize(bool autoSize) {
    if (autoSize == FAutoSize) return;
    FAutoSize = autoSize;
    if (!autoSize) FKeptHeight = height();
    SetHeight(autoSize ? -1 : FKeptHeight);
    updateGeometry();
}

TGroupBox::TGroupBox(TWinControl* parent, const std::string& name, const std::string& caption)
    : TControlOf(parent, name) {
    setTitle(ToQt(caption));
}

TScrollBox::TScrollBox(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    FContent = new QWidget(this);
    auto* layout = new TAlignLayout(*FContent);
    layout->SetHoldsFree(true);
    setWidget(FContent);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
}

QWidget& TScrollBox::ClientArea() {
    return FContent ? *FContent : *this;
}

TSplitter::TSplitter(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    SetBounds(0, 0, 5, 5);
    SetAlign(TAlign::Left);
    SetAccessibleName("Splitter");
}

TControl* TSplitter::Sized() const {
    const QWidget* area = parentWidget();
    const auto* layout = area ? dynamic_cast<const TAlignLayout*>(area->layout()) : nullptr;
    return layout ? layout->Before(*this) : nullptr;
}

void TSplitter::Resize(int delta) {
    TControl* sized = Sized();
    if (!sized) return;
    const bool grows = Align() == TAlign::Left || Align() == TAlign::Top;
    const QSize room = parentWidget()->size();
    const int largest = (Upright() ? room.width() : room.height()) - MinSize;
    const int extent = std::clamp(FStartSize + (grows ? delta : -delta), MinSize, std::max(largest, MinSize));
    if (Upright())
        sized->SetWidth(extent);
    else
        sized->SetHeight(extent);
}

void TSplitter::showEvent(QShowEvent* event) {
    setCursor(Upright() ? Qt::SplitHCursor : Qt::SplitVCursor);
    QFrame::showEvent(event);
}

void TSplitter::mousePressEvent(QMouseEvent* event) {
    const TControl* sized = Sized();
    if (!sized || event->button() != Qt::LeftButton) return;
    setCursor(Upright() ? Qt::SplitHCursor : Qt::SplitVCursor);
    FStart = {static_cast<int>(event->globalPosition().x()), static_cast<int>(event->globalPosition().y())};
    FStartSize = Upright() ? sized->Width() : sized->Height();
    FDragging = true;
}

void TSplitter::mouseMoveEvent(QMouseEvent* event) {
    if (FDragging)
        Resize(Upright() ? static_cast<int>(event->globalPosition().x()) - FStart.X
                         : static_cast<int>(event->globalPosition().y()) - FStart.Y);
}

void TSplitter::mouseReleaseEvent(QMouseEvent*) {
    FDragging = false;
}

void TSplitter::keyPressEvent(QKeyEvent* event) {
    const TControl* sized = Sized();
    if (!sized) return;
    FStartSize = Upright() ? sized->Width() : sized->Height();
    const int back = Upright() ? Qt::Key_Left : Qt::Key_Up;
    const int forth = Upright() ? Qt::Key_Right : Qt::Key_Down;
    if (event->key() == back || event->key() == forth)
        Resize(event->key() == forth ? 10 : -10);
    else
        event->ignore();
}

void TSplitter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    if (hasFocus()) painter.fillRect(rect(), palette().color(QPalette::Highlight));
    if (Upright()) option.state |= QStyle::State_Horizontal;
    style()->drawControl(QStyle::CE_Splitter, &option, &painter, this);
}

TPage::TPage(TNotebook& notebook, const std::string& name)
    : TControlOf(nullptr, name) {
    notebook.addWidget(this);
}

TNotebook::TNotebook(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    connect(this, &QStackedWidget::currentChanged, this, [this] {
        if (FPages.size() > 1) Fire(OnPageChanged);
    });
}

TPage& TNotebook::AddPage(const std::string& pageName) {
    auto* page = new TPage(*this, pageName);
    FPages.push_back(page);
    return *page;
}

void TNotebook::SetPageIndex(int index) {
    setCurrentIndex(index);
}

std::string TNotebook::ActivePage() const {
    const auto* page = dynamic_cast<const TPage*>(currentWidget());
    return page ? page->Name() : std::string();
}

// Tells the program's own changes of the current tab from the user's.
class TPageControl::TProgramChange {
public:
    explicit TProgramChange(TPageControl& control)
        : FControl(control) {
        ++FControl.FProgramChanges;
    }
    ~TProgramChange() { --FControl.FProgramChanges; }
    TProgramChange(const TProgramChange&) = delete;
    TProgramChange& operator=(const TProgramChange&) = delete;

private:
    TPageControl& FControl;
};

TTabSheet::TTabSheet(TPageControl& pageControl, const std::string& name, const std::string& caption)
    : TControlOf(nullptr, name)
    , FPageControl(&pageControl) {
    const TPageControl::TProgramChange change(pageControl);
    pageControl.addTab(this, QString());
    SetCaption(caption);
}

void TTabSheet::SetCaption(const std::string& caption) {
    FCaption = caption;
    FPageControl->setTabText(PageIndex(), ToQt(caption).replace(QStringLiteral("&"), QStringLiteral("&&")));
}

void TTabSheet::SetImageIndex(int index) {
    FImageIndex = index;
    if (FPageControl->Images()) FPageControl->setTabIcon(PageIndex(), FPageControl->Images()->Icon(index));
}

int TTabSheet::PageIndex() const {
    return FPageControl->indexOf(this);
}

TPageControl::TPageControl(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideNone);
    connect(this, &QTabWidget::currentChanged, this, [this] { UserChanged(); });
    // A click on the only candidate changes nothing for Qt when no page counts as active.
    connect(tabBar(), &QTabBar::tabBarClicked, this, [this](int index) {
        if (FNoneActive && index == currentIndex()) UserChanged();
    });
}

TPageControl::~TPageControl() = default;

void TPageControl::UserChanged() {
    if (FProgramChanges > 0) return;
    FNoneActive = false;
    Fire(OnChange);
}

QWidget& TPageControl::ClientArea() {
    return *findChild<QStackedWidget*>(QString(), Qt::FindDirectChildrenOnly);
}

TTabSheet& TPageControl::Page(int index) const {
    return dynamic_cast<TTabSheet&>(*widget(index));
}

int TPageControl::ActivePageIndex() const {
    return FNoneActive ? -1 : currentIndex();
}

void TPageControl::SetActivePageIndex(int index) {
    const TProgramChange change(*this);
    FNoneActive = index < 0 || index >= count();
    if (!FNoneActive) setCurrentIndex(index);
}

TTabSheet* TPageControl::ActivePage() const {
    return FNoneActive ? nullptr : dynamic_cast<TTabSheet*>(currentWidget());
}

void TPageControl::SetActivePage(TTabSheet& page) {
    SetActivePageIndex(page.PageIndex());
}

void TPageControl::FreePage(int index) {
    auto* page = dynamic_cast<TTabSheet*>(widget(index));
    if (!page) return;
    const TProgramChange change(*this);
    removeTab(index);
    page->hide();
    page->setParent(nullptr);
    const std::vector<TComponent*> held = page->OwnedComponents();
    const bool inUse = std::any_of(held.begin(), held.end(), [](const TComponent* component) {
        return Application().IsSending(*component);
    });
    if (inUse)
        page->deleteLater();
    else
        std::unique_ptr<TTabSheet>(page).reset();
}
