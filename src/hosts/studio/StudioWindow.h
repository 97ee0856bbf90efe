// The studio's main window: menus, editor tabs, dock areas, status bar.
#pragma once

#include "hosts/studio/editor/EditorArea.h"

#include <QMainWindow>
#include <QStringList>

class IDesktopStore;
class QAction;
class QDockWidget;
class QLabel;
class QMenu;
class TFindBar;
class TProjectFiles;

class TStudioWindow : public QMainWindow {
public:
    // Size, place and layout come from the store.
    explicit TStudioWindow(IDesktopStore& store);
    ~TStudioWindow() override;

    TEditorArea& Editors() { return *FEditors; }
    // The menu in which add-ins put their entries.
    QMenu& ViewsMenu() { return *FViewsMenu; }

    // Where the restored layout has it, otherwise on the right.
    void AddDock(QDockWidget& dock);
    // Up and in front.
    void ShowDock(QDockWidget& dock);
    // Puts size, place and layout, of all docks that there are now, into the store
    // and the store on disk. Raises Exception when that fails.
    void SaveLayout(IDesktopStore& store);

    // Each shows a failure in the standard error box.
    void OpenFile(const QString& path);
    void OpenFolder(const QString& folder);

    // A line in the status bar that stays until the next one; empty takes it away.
    void ShowNote(const QString& note);

    // Called when the window is about to close for good, with all docks in place.
    std::function<void()> OnClosing;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QAction* Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& keys,
                 std::function<void()> run);
    void BuildFileMenu();
    void BuildEditMenu();
    void BuildViewsMenu();
    void BuildHelpMenu();
    void BuildCentre();
    void BuildStatusBar();

    void AskForFiles();
    void AskForFolder();
    void AskForLine();
    void Remember(const QString& path);
    void FillRecentMenu();
    void SaveAll();
    void UpdateWrapping();
    void ForEditor(const std::function<void(TSourceEdit&)>& run);
    void UpdateState();
    void UpdateStatusBar(const TSourceEdit* editor);
    void RestoreLayout();

    IDesktopStore& FStore;
    TEditorArea* FEditors = nullptr;
    TFindBar* FFindBar = nullptr;
    TProjectFiles* FFiles = nullptr;
    QMenu* FViewsMenu = nullptr;
    QMenu* FRecentMenu = nullptr;
    QLabel* FNote = nullptr;
    QLabel* FPosition = nullptr;
    QLabel* FFormat = nullptr;
    QLabel* FLanguage = nullptr;
    // Enabled while a source editor is in front.
    std::vector<QAction*> FEditorActions;
    // Docks that no layout has placed, until they show for the first time.
    std::vector<QPointer<QDockWidget>> FNewDocks;
    QStringList FRecent;
    bool FWrapLines = false;
    bool FClosesLater = false;
};
