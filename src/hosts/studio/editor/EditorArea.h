// The tabs of the host: source editors and tabs that hold widgets of an add-in.
#pragma once

#include <QPointer>
#include <QTabWidget>

#include <functional>
#include <memory>
#include <vector>

class QMenu;
class TSourceEdit;
class TTabFrame;

class TEditorArea : public QTabWidget {
public:
    explicit TEditorArea(QWidget* parent);
    ~TEditorArea() override;

    // An editor with an empty text, in front.
    TSourceEdit& NewFile();
    // The editor of that file, in front; the file is read unless it is open. Raises
    // Exception when it cannot be read.
    TSourceEdit& OpenFile(const QString& path);
    // The editor of that file if it is open.
    TSourceEdit* FindEditor(const QString& path) const;

    // The editor that was in front last, also while another kind of tab is in front;
    // empty when no file is open.
    TSourceEdit* TopEditor() const;
    // The editor in front; empty while another kind of tab is.
    TSourceEdit* CurrentEditor() const;
    std::vector<TSourceEdit*> Editors() const;

    // Saves under the editor's path, or asks for one. Gives false when the user
    // cancels. Raises Exception when the file cannot be written.
    bool Save(TSourceEdit& editor);
    bool SaveAs(TSourceEdit& editor);

    // Asks about unsaved changes or asks the tab's handler. Gives whether the tab is
    // gone. Raises Exception when saving fails; the tab then stays.
    bool ClosePage(QWidget& page);
    // Asks for every source editor with changes; closes nothing. False when the user
    // cancels one.
    bool QueryCloseAll();

    // The tab frame's tab comes up, or goes without a question.
    void ShowFrame(TTabFrame& frame);
    void RemoveFrame(TTabFrame& frame);
    // Closes all tab frames, whose handlers are about to go; a refusal does not count.
    // Pages and what is still on them are destroyed when this returns.
    void CloseFrames();
    void RefreshTab(QWidget& page);

    // The tab in front or what it shows has changed.
    std::function<void()> OnChanged;
    // A file came into an editor, by opening or by saving under a new name.
    std::function<void(const QString& path)> OnFile;
    std::function<void(QMenu&)> OnContextMenu;

protected:
    void tabInserted(int index) override;
    void paintEvent(QPaintEvent* event) override;

private:
    TSourceEdit& AddEditor(std::unique_ptr<TSourceEdit> editor);
    void Activated(int index);
    void Changed();
    bool MayDiscard(TSourceEdit& editor);
    TTabFrame* FrameOf(const QWidget* page) const;

    // The most recent editor last.
    std::vector<QPointer<TSourceEdit>> FRecent;
    std::vector<std::shared_ptr<TTabFrame>> FFrames;
    QPointer<QWidget> FActive;
    int FNewFiles = 0;
};
