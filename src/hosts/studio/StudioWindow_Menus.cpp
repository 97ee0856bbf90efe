#include "hosts/studio/ProjectFiles.h"
#include "hosts/studio/StudioWindow.h"
#include "hosts/studio/editor/FindBar.h"
#include "hosts/studio/editor/SourceEdit.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/QtText.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenuBar>

namespace {

constexpr int ZoomStep = 1;

QMenu* AddMenu(QMenuBar& bar, const char* name, const QString& caption) {
    QMenu* menu = bar.addMenu(caption);
    menu->setObjectName(QString::fromUtf8(name));
    menu->setToolTipsVisible(true);
    return menu;
}

} // namespace

QAction* TStudioWindow::Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& keys,
                            std::function<void()> run) {
    QAction* action = menu.addAction(caption);
    action->setObjectName(QString::fromUtf8(name));
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this,
            [body = std::move(run)] { Application().Dispatch(nullptr, body); });
    return action;
}

void TStudioWindow::ForEditor(const std::function<void(TSourceEdit&)>& run) {
    if (TSourceEdit* editor = FEditors->CurrentEditor()) run(*editor);
}

void TStudioWindow::BuildFileMenu() {
    QMenu& menu = *AddMenu(*menuBar(), "FileMenu", QStringLiteral("&File"));
    Add(menu, "FileNew", QStringLiteral("&New"), QKeySequence::New, [this] { FEditors->NewFile(); });
    Add(menu, "FileOpen", QStringLiteral("&Open…"), QKeySequence::Open, [this] { AskForFiles(); });
    FRecentMenu = menu.addMenu(QStringLiteral("Open &Recent"));
    connect(FRecentMenu, &QMenu::aboutToShow, this, [this] { FillRecentMenu(); });
    Add(menu, "FileOpenFolder", QStringLiteral("Open &Folder…"), {}, [this] { AskForFolder(); });
    Add(menu, "FileCloseFolder", QStringLiteral("Close Fol&der"), {}, [this] {
        FFiles->SetFolder({});
        UpdateState();
    });
    menu.addSeparator();
    FEditorActions.push_back(Add(menu, "FileSave", QStringLiteral("&Save"), QKeySequence::Save, [this] {
        ForEditor([this](TSourceEdit& editor) { FEditors->Save(editor); });
    }));
    FEditorActions.push_back(
        Add(menu, "FileSaveAs", QStringLiteral("Save &As…"), Qt::CTRL | Qt::SHIFT | Qt::Key_S,
            [this] { ForEditor([this](TSourceEdit& editor) { FEditors->SaveAs(editor); }); }));
    Add(menu, "FileSaveAll", QStringLiteral("Save A&ll"), {}, [this] { SaveAll(); });
    menu.addSeparator();
    Add(menu, "FileClose", QStringLiteral("&Close Tab"), QKeySequence::Close, [this] {
        if (QWidget* page = FEditors->currentWidget()) FEditors->ClosePage(*page);
    });
    menu.addSeparator();
    Add(menu, "FileQuit", QStringLiteral("&Quit"), QKeySequence::Quit, [this] { close(); });
}

void TStudioWindow::BuildEditMenu() {
    QMenu& menu = *AddMenu(*menuBar(), "EditMenu", QStringLiteral("&Edit"));
    const auto add = [&](const char* name, const char16_t* caption, const QKeySequence& keys,
                         void (*run)(TSourceEdit&)) {
        FEditorActions.push_back(
            Add(menu, name, QString::fromUtf16(caption), keys, [this, run] { ForEditor(run); }));
    };
    add("EditUndo", u"&Undo", QKeySequence::Undo, [](TSourceEdit& editor) { editor.undo(); });
    add("EditRedo", u"&Redo", QKeySequence::Redo, [](TSourceEdit& editor) { editor.redo(); });
    menu.addSeparator();
    add("EditCut", u"Cu&t", QKeySequence::Cut, [](TSourceEdit& editor) { editor.cut(); });
    add("EditCopy", u"&Copy", QKeySequence::Copy, [](TSourceEdit& editor) { editor.copy(); });
    add("EditPaste", u"&Paste", QKeySequence::Paste, [](TSourceEdit& editor) { editor.paste(); });
    add("EditSelectAll", u"Select &All", QKeySequence::SelectAll,
        [](TSourceEdit& editor) { editor.selectAll(); });
    menu.addSeparator();
    const auto addFind = [&](const char* name, const char16_t* caption, const QKeySequence& keys,
                             std::function<void()> run) {
        FEditorActions.push_back(Add(menu, name, QString::fromUtf16(caption), keys, std::move(run)));
    };
    addFind("EditFind", u"&Find…", QKeySequence::Find, [this] { FFindBar->Open(); });
    addFind("EditFindNext", u"Find &Next", QKeySequence::FindNext, [this] { FFindBar->FindNext(true); });
    addFind("EditFindPrevious", u"Find Pre&vious", QKeySequence::FindPrevious,
            [this] { FFindBar->FindNext(false); });
    addFind("EditGoToLine", u"&Go to Line…", Qt::CTRL | Qt::Key_G, [this] { AskForLine(); });
}

void TStudioWindow::BuildViewsMenu() {
    QMenu& menu = *AddMenu(*menuBar(), "ViewsMenu", QStringLiteral("&View"));
    FViewsMenu = &menu;
    QAction* files = FFiles->toggleViewAction();
    files->setText(QStringLiteral("&Files"));
    menu.addAction(files);
    menu.addSeparator();
    const auto turnTab = [this](int step) {
        if (const int count = FEditors->count())
            FEditors->setCurrentIndex((FEditors->currentIndex() + step + count) % count);
    };
    Add(menu, "ViewNextTab", QStringLiteral("&Next Tab"), Qt::CTRL | Qt::Key_PageDown,
        [turnTab] { turnTab(1); });
    Add(menu, "ViewPreviousTab", QStringLiteral("&Previous Tab"), Qt::CTRL | Qt::Key_PageUp,
        [turnTab] { turnTab(-1); });
    menu.addSeparator();
    QAction* wrap = Add(menu, "ViewWrap", QStringLiteral("&Wrap Lines"), {}, [this] {
        FWrapLines = !FWrapLines;
        UpdateWrapping();
    });
    wrap->setCheckable(true);
    Add(menu, "ViewZoomIn", QStringLiteral("Zoom &In"), QKeySequence::ZoomIn,
        [this] { ForEditor([](TSourceEdit& editor) { editor.zoomIn(ZoomStep); }); });
    Add(menu, "ViewZoomOut", QStringLiteral("Zoom &Out"), QKeySequence::ZoomOut,
        [this] { ForEditor([](TSourceEdit& editor) { editor.zoomOut(ZoomStep); }); });
    Add(menu, "ViewZoomReset", QStringLiteral("&Reset Zoom"), Qt::CTRL | Qt::Key_0,
        [this] { ForEditor([](TSourceEdit& editor) { editor.zoomTo(0); }); });
    menu.addSeparator();
}

void TStudioWindow::BuildHelpMenu() {
    QMenu& menu = *AddMenu(*menuBar(), "HelpMenu", QStringLiteral("&Help"));
    Add(menu, "HelpAbout", QStringLiteral("&About Quorane Studio"), {}, [] {
        Application().MessageBox("Quorane Studio is a small source editor that shows the requirements of a "
                                 "project beside its code.\n\nOpen the requirements with View, Quorane "
                                 "Requirements.",
                                 "About Quorane Studio", TMessageIcon::Information);
    });
}

void TStudioWindow::AskForFiles() {
    const TSourceEdit* editor = FEditors->TopEditor();
    const QString start =
        editor && !editor->Path().isEmpty() ? QFileInfo(editor->Path()).path() : FFiles->Folder();
    if (const auto path = Application().Dialogs().OpenFile({"Open", "All files (*)|*", FromQt(start)}))
        FEditors->OpenFile(ToQt(*path));
}

void TStudioWindow::AskForFolder() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Open Folder"), FFiles->Folder());
    if (!folder.isEmpty()) OpenFolder(folder);
}

void TStudioWindow::AskForLine() {
    ForEditor([this](TSourceEdit& editor) {
        int line = 0;
        int column = 0;
        editor.getCursorPosition(&line, &column);
        bool given = false;
        const int wanted = QInputDialog::getInt(this, QStringLiteral("Go to Line"), QStringLiteral("&Line:"),
                                                line + 1, 1, editor.lines(), 1, &given);
        if (!given) return;
        editor.setCursorPosition(wanted - 1, 0);
        editor.setFocus();
    });
}

void TStudioWindow::FillRecentMenu() {
    FRecentMenu->clear();
    for (const QString& path : std::as_const(FRecent)) {
        QAction* action = FRecentMenu->addAction(QFileInfo(path).fileName());
        action->setToolTip(path);
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, path] { OpenFile(path); });
    }
    FRecentMenu->setToolTipsVisible(true);
    if (FRecent.isEmpty()) FRecentMenu->addAction(QStringLiteral("No recent files"))->setEnabled(false);
}

void TStudioWindow::SaveAll() {
    for (TSourceEdit* editor : FEditors->Editors())
        if (editor->isModified() && !FEditors->Save(*editor)) return;
}

void TStudioWindow::UpdateWrapping() {
    for (TSourceEdit* editor : FEditors->Editors())
        editor->setWrapMode(FWrapLines ? QsciScintilla::WrapWord : QsciScintilla::WrapNone);
}
