#include "hosts/studio/editor/EditorArea.h"

#include "hosts/studio/editor/SourceEdit.h"
#include "hosts/studio/editor/TabFrame.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/QtText.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QPainter>
#include <QTabBar>

#include <algorithm>

namespace {

// Two paths of one file are the same file; a file that does not exist is its path.
QString Identity(const QString& path) {
    const QFileInfo file(path);
    const QString canonical = file.canonicalFilePath();
    return canonical.isEmpty() ? file.absoluteFilePath() : canonical;
}

// A small cross that stands out under the pointer only.
class TCloseButton : public QAbstractButton {
public:
    explicit TCloseButton(QWidget* parent)
        : QAbstractButton(parent) {
        setFixedSize(Size, Size);
        setFocusPolicy(Qt::NoFocus);
        setToolTip(QStringLiteral("Close"));
        setAccessibleName(toolTip());
        setAttribute(Qt::WA_Hover);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor ink = palette().color(QPalette::WindowText);
        if (underMouse()) {
            ink.setAlphaF(0.15F);
            painter.setPen(Qt::NoPen);
            painter.setBrush(ink);
            painter.drawRoundedRect(rect(), 3, 3);
        }
        ink.setAlphaF(underMouse() ? 1.0F : 0.55F);
        painter.setPen(QPen(ink, 1.3));
        const QRectF cross = QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset);
        painter.drawLine(cross.topLeft(), cross.bottomRight());
        painter.drawLine(cross.topRight(), cross.bottomLeft());
    }

private:
    static constexpr int Size = 16;
    static constexpr double Inset = 4.5;
};

} // namespace

TEditorArea::TEditorArea(QWidget* parent)
    : QTabWidget(parent) {
    setObjectName(QStringLiteral("EditorArea"));
    setDocumentMode(true);
    setMovable(true);
    setElideMode(Qt::ElideMiddle);
    connect(this, &QTabWidget::currentChanged, this, [this](int index) { Activated(index); });
    connect(this, &QTabWidget::tabCloseRequested, this,
            [this](int index) { Application().Dispatch(nullptr, [&] { ClosePage(*widget(index)); }); });
}

// The style's own close buttons are louder than the captions.
void TEditorArea::tabInserted(int index) {
    QTabWidget::tabInserted(index);
    auto* button = new TCloseButton(tabBar());
    QWidget* page = widget(index);
    connect(button, &QAbstractButton::clicked, this,
            [this, page] { Q_EMIT tabCloseRequested(indexOf(page)); });
    tabBar()->setTabButton(index, QTabBar::RightSide, button);
}

TEditorArea::~TEditorArea() {
    // Tabs that go with the area are no change to tell.
    disconnect(this, nullptr, this, nullptr);
}

TSourceEdit& TEditorArea::AddEditor(std::unique_ptr<TSourceEdit> made) {
    TSourceEdit& editor = *made.release();
    editor.OnContextMenu = [this](QMenu& menu) {
        if (OnContextMenu) OnContextMenu(menu);
    };
    connect(&editor, &QsciScintilla::modificationChanged, this, [this, &editor] { RefreshTab(editor); });
    connect(&editor, &QsciScintilla::cursorPositionChanged, this, [this] { Changed(); });
    setCurrentIndex(addTab(&editor, editor.Caption()));
    RefreshTab(editor);
    editor.setFocus();
    return editor;
}

TSourceEdit& TEditorArea::NewFile() {
    const QString caption = QStringLiteral("Untitled %1").arg(++FNewFiles);
    return AddEditor(std::make_unique<TSourceEdit>(caption, this));
}

TSourceEdit& TEditorArea::OpenFile(const QString& path) {
    if (TSourceEdit* open = FindEditor(path)) {
        setCurrentWidget(open);
        open->setFocus();
        return *open;
    }
    auto editor = std::make_unique<TSourceEdit>(QString(), this);
    editor->Load(path);
    TSourceEdit& added = AddEditor(std::move(editor));
    if (OnFile) OnFile(added.Path());
    return added;
}

TSourceEdit* TEditorArea::FindEditor(const QString& path) const {
    const QString identity = Identity(path);
    for (TSourceEdit* editor : Editors())
        if (!editor->Path().isEmpty() && Identity(editor->Path()) == identity) return editor;
    return nullptr;
}

TSourceEdit* TEditorArea::TopEditor() const {
    const auto alive =
        std::find_if(FRecent.rbegin(), FRecent.rend(), [](const auto& editor) { return editor; });
    return alive == FRecent.rend() ? nullptr : alive->data();
}

TSourceEdit* TEditorArea::CurrentEditor() const {
    return dynamic_cast<TSourceEdit*>(currentWidget());
}

std::vector<TSourceEdit*> TEditorArea::Editors() const {
    std::vector<TSourceEdit*> editors;
    for (int i = 0; i < count(); ++i)
        if (auto* editor = dynamic_cast<TSourceEdit*>(widget(i))) editors.push_back(editor);
    return editors;
}

bool TEditorArea::Save(TSourceEdit& editor) {
    if (editor.Path().isEmpty()) return SaveAs(editor);
    if (editor.ChangedOnDisk() &&
        Application().MessageBox(
            FromQt(editor.Path()) + " has been changed by another program. Save over that change?", "Save",
            TMessageIcon::Warning, TMessageButtons::YesNo, TMessageResult::No) != TMessageResult::Yes)
        return false;
    editor.Save(editor.Path());
    RefreshTab(editor);
    return true;
}

bool TEditorArea::SaveAs(TSourceEdit& editor) {
    const QString start = editor.Path().isEmpty() ? editor.Caption() : editor.Path();
    const auto path = Application().Dialogs().SaveFile({"Save As", "All files (*)|*", FromQt(start)});
    if (!path) return false;
    editor.Save(ToQt(*path));
    RefreshTab(editor);
    if (OnFile) OnFile(editor.Path());
    return true;
}

bool TEditorArea::MayDiscard(TSourceEdit& editor) {
    if (!editor.isModified()) return true;
    setCurrentWidget(&editor);
    const TMessageResult answer =
        Application().MessageBox("Save the changes to " + FromQt(editor.Caption()) + "?", "Quorane Studio",
                                 TMessageIcon::Question, TMessageButtons::YesNoCancel, TMessageResult::Yes);
    if (answer == TMessageResult::Yes) return Save(editor);
    return answer == TMessageResult::No;
}

bool TEditorArea::ClosePage(QWidget& page) {
    if (auto* editor = dynamic_cast<TSourceEdit*>(&page)) {
        if (!MayDiscard(*editor)) return false;
        removeTab(indexOf(editor));
        // It may be an event of the editor itself that closes it.
        editor->deleteLater();
        std::erase_if(FRecent, [editor](const auto& recent) { return !recent || recent == editor; });
        Changed();
        return true;
    }
    const auto frame = std::ranges::find(FFrames, &page, [](const auto& shown) { return shown->Page(); });
    // A copy keeps the frame while its handler lets go of it.
    return frame != FFrames.end() && std::shared_ptr(*frame)->Close();
}

bool TEditorArea::QueryCloseAll() {
    const auto editors = Editors();
    return std::ranges::all_of(editors, [this](TSourceEdit* editor) { return MayDiscard(*editor); });
}

void TEditorArea::ShowFrame(TTabFrame& frame) {
    if (indexOf(frame.Page()) < 0) {
        FFrames.push_back(frame.shared_from_this());
        addTab(frame.Page(), QString());
        RefreshTab(*frame.Page());
    }
    setCurrentWidget(frame.Page());
}

void TEditorArea::RemoveFrame(TTabFrame& frame) {
    const std::shared_ptr<TTabFrame> kept = frame.shared_from_this();
    std::erase(FFrames, kept);
    QWidget* page = frame.Page();
    removeTab(indexOf(page));
    page->hide();
    // What closed the tab may be a widget on its page.
    page->deleteLater();
    Changed();
}

void TEditorArea::CloseFrames() {
    for (const auto& frame : std::vector(FFrames)) {
        const bool closed = frame->Close();
        frame->OnClose = nullptr;
        frame->OnSelect = nullptr;
        frame->OnDeselect = nullptr;
        if (!closed) RemoveFrame(*frame);
        // What is left on the page may be of a kind whose code goes next.
        frame->DestroyPage();
    }
}

void TEditorArea::RefreshTab(QWidget& page) {
    const int index = indexOf(&page);
    if (index < 0) return;
    if (const auto* editor = dynamic_cast<TSourceEdit*>(&page)) {
        setTabText(index,
                   editor->isModified() ? editor->Caption() + QStringLiteral(" •") : editor->Caption());
        setTabToolTip(index, editor->Path().isEmpty() ? editor->Caption() : editor->Path());
    } else if (const TTabFrame* frame = FrameOf(&page)) {
        setTabText(index, frame->Caption());
        setTabToolTip(index, frame->Title());
        setTabIcon(index, frame->Icon());
    }
    Changed();
}

TTabFrame* TEditorArea::FrameOf(const QWidget* page) const {
    const auto frame = std::ranges::find(FFrames, page, [](const auto& shown) { return shown->Page(); });
    return frame == FFrames.end() ? nullptr : frame->get();
}

void TEditorArea::Activated(int index) {
    const QPointer<QWidget> left = FActive;
    FActive = widget(index);
    if (auto* editor = dynamic_cast<TSourceEdit*>(FActive.data())) {
        std::erase_if(FRecent, [editor](const auto& recent) { return !recent || recent == editor; });
        FRecent.emplace_back(editor);
    }
    // A handler may close its tab.
    if (const TTabFrame* frame = left ? FrameOf(left) : nullptr; frame && frame->OnDeselect)
        Application().Dispatch(nullptr, [handler = frame->OnDeselect] { handler(); });
    if (const TTabFrame* frame = FActive ? FrameOf(FActive) : nullptr; frame && frame->OnSelect)
        Application().Dispatch(nullptr, [handler = frame->OnSelect] { handler(); });
    Changed();
}

void TEditorArea::paintEvent(QPaintEvent* event) {
    QTabWidget::paintEvent(event);
    if (count() > 0) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), Qt::AlignCenter,
                     QStringLiteral("Open a file from the list of files\nor press Ctrl+O"));
}

void TEditorArea::Changed() {
    if (OnChanged) OnChanged();
}
