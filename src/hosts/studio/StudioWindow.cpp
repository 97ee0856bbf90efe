#include "hosts/studio/StudioWindow.h"

#include "contracts/DockServices.h"
#include "hosts/studio/ProjectFiles.h"
#include "hosts/studio/editor/FindBar.h"
#include "hosts/studio/editor/SourceEdit.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/QtText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace {

const std::string DesktopSection = "Desktop";
constexpr int LayoutVersion = 1;
constexpr int MostRecentFiles = 10;
constexpr QSize FirstSize(1280, 800);
constexpr int FirstFilesWidth = 230;
constexpr int FirstDockWidth = 340;
constexpr int CloseRetryMs = 50;

QByteArray Decode(const std::string& base64) {
    return QByteArray::fromBase64(QByteArray::fromStdString(base64));
}

} // namespace

TStudioWindow::TStudioWindow(IDesktopStore& store)
    : FStore(store) {
    setObjectName(QStringLiteral("StudioWindow"));
    setWindowTitle(QStringLiteral("Quorane Studio"));
    setDockNestingEnabled(true);
    FRecent = ToQt(store.ReadString(DesktopSection, "RecentFiles", {})).split(u'\n', Qt::SkipEmptyParts);
    BuildCentre();
    FFiles = new TProjectFiles(this);
    FFiles->OnOpen = [this](const QString& path) { OpenFile(path); };
    FFiles->OnOpenFolder = [this] { Application().Dispatch(nullptr, [this] { AskForFolder(); }); };
    addDockWidget(Qt::LeftDockWidgetArea, FFiles);
    BuildFileMenu();
    BuildEditMenu();
    BuildViewsMenu();
    BuildHelpMenu();
    BuildStatusBar();
    RestoreLayout();
    UpdateState();
}

TStudioWindow::~TStudioWindow() {
    // The editors go with the window and have nothing more to tell it.
    FEditors->OnChanged = nullptr;
}

void TStudioWindow::BuildCentre() {
    auto* centre = new QWidget(this);
    FEditors = new TEditorArea(centre);
    FFindBar = new TFindBar([this] { return FEditors->CurrentEditor(); }, centre);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(FEditors, 1);
    layout->addWidget(FFindBar);
    setCentralWidget(centre);
    FEditors->OnChanged = [this] { UpdateState(); };
    FEditors->OnFile = [this](const QString& path) { Remember(path); };
}

void TStudioWindow::BuildStatusBar() {
    FNote = new QLabel(this);
    FNote->setObjectName(QStringLiteral("StatusNote"));
    FNote->setForegroundRole(QPalette::PlaceholderText);
    FPosition = new QLabel(this);
    FFormat = new QLabel(this);
    FLanguage = new QLabel(this);
    statusBar()->addWidget(FNote, 1);
    for (QLabel* label : {FPosition, FFormat, FLanguage}) {
        label->setContentsMargins(8, 0, 8, 0);
        statusBar()->addPermanentWidget(label);
    }
}

void TStudioWindow::ShowNote(const QString& note) {
    FNote->setText(note);
    FNote->setToolTip(note);
}

void TStudioWindow::AddDock(QDockWidget& dock) {
    // The other order would drop the place that the restored layout keeps for it.
    if (restoreDockWidget(&dock)) return;
    addDockWidget(Qt::RightDockWidgetArea, &dock);
    FNewDocks.push_back(&dock);
}

void TStudioWindow::ShowDock(QDockWidget& dock) {
    dock.show();
    dock.raise();
    // Without a size of its own a dock would take what its content asks for at most.
    if (std::erase(FNewDocks, &dock) > 0) resizeDocks({&dock}, {FirstDockWidth}, Qt::Horizontal);
}

void TStudioWindow::RestoreLayout() {
    resize(FirstSize);
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect available = screen->availableGeometry();
        resize(FirstSize.boundedTo(available.size()));
        move(available.center() - rect().center());
    }
    resizeDocks({FFiles}, {FirstFilesWidth}, Qt::Horizontal);
    restoreGeometry(Decode(FStore.ReadString(DesktopSection, "Geometry", {})));
    restoreState(Decode(FStore.ReadString(DesktopSection, "Layout", {})), LayoutVersion);
    const QString folder = ToQt(FStore.ReadString(DesktopSection, "Folder", {}));
    FFiles->SetFolder(QFileInfo(folder).isDir() ? folder : QString());
}

void TStudioWindow::SaveLayout(IDesktopStore& store) {
    store.WriteString(DesktopSection, "Geometry", saveGeometry().toBase64().toStdString());
    store.WriteString(DesktopSection, "Layout", saveState(LayoutVersion).toBase64().toStdString());
    store.WriteString(DesktopSection, "Folder", FromQt(FFiles->Folder()));
    store.WriteString(DesktopSection, "RecentFiles", FromQt(FRecent.join(u'\n')));
    store.UpdateFile();
}

void TStudioWindow::OpenFile(const QString& path) {
    Application().Dispatch(nullptr, [&] { FEditors->OpenFile(path); });
}

void TStudioWindow::OpenFolder(const QString& folder) {
    FFiles->SetFolder(folder);
    FFiles->show();
    UpdateState();
}

void TStudioWindow::Remember(const QString& path) {
    FRecent.removeAll(path);
    FRecent.prepend(path);
    if (FRecent.size() > MostRecentFiles) FRecent.resize(MostRecentFiles);
    FFiles->Follow(path);
    UpdateWrapping();
}

void TStudioWindow::UpdateState() {
    const TSourceEdit* editor = FEditors->CurrentEditor();
    for (QAction* action : FEditorActions)
        action->setEnabled(editor != nullptr);
    QStringList title;
    if (editor) title << editor->Caption() + QStringLiteral("[*]");
    if (!FFiles->Folder().isEmpty()) title << QDir(FFiles->Folder()).dirName();
    title << QStringLiteral("Quorane Studio");
    setWindowTitle(title.join(QStringLiteral(" – ")));
    setWindowModified(editor && editor->isModified());
    setWindowFilePath(editor ? editor->Path() : QString());
    UpdateStatusBar(editor);
}

void TStudioWindow::UpdateStatusBar(const TSourceEdit* editor) {
    for (QLabel* label : {FPosition, FFormat, FLanguage})
        label->setVisible(editor != nullptr);
    if (!editor) return;
    int line = 0;
    int column = 0;
    editor->getCursorPosition(&line, &column);
    FPosition->setText(QStringLiteral("Line %1, column %2").arg(line + 1).arg(column + 1));
    QString format = EncodingName(editor->Encoding()) + QStringLiteral(", ") + LineEndName(editor->LineEnd());
    if (editor->isReadOnly()) format += QStringLiteral(", read-only");
    FFormat->setText(format);
    FLanguage->setText(editor->LanguageName());
}

void TStudioWindow::closeEvent(QCloseEvent* event) {
    // A handler that runs the message loop is on the stack, perhaps the module's, which
    // must not be unloaded under it. The window closes when the handler has ended.
    if (Application().HandlerRunning() || QApplication::activeModalWidget()) {
        event->ignore();
        if (!std::exchange(FClosesLater, true))
            QTimer::singleShot(CloseRetryMs, this, [this] {
                FClosesLater = false;
                close();
            });
        return;
    }
    bool close = false;
    Application().Dispatch(nullptr, [&] { close = FEditors->QueryCloseAll(); });
    if (!close) {
        event->ignore();
        return;
    }
    Application().Dispatch(nullptr, [this] { SaveLayout(FStore); });
    if (OnClosing) OnClosing();
    event->accept();
}
