// The list of the files below a source folder.
#pragma once

#include <QDockWidget>

#include <functional>

class QFileSystemModel;
class QTreeView;

class TProjectFiles : public QDockWidget {
public:
    explicit TProjectFiles(QWidget* parent);

    // Empty for none.
    void SetFolder(const QString& folder);
    const QString& Folder() const { return FFolder; }
    // Selects the file if it lies below the folder.
    void Follow(const QString& path);

    std::function<void(const QString& path)> OnOpen;
    std::function<void()> OnOpenFolder;

private:
    void Open(const QModelIndex& index);

    QFileSystemModel* FModel = nullptr;
    QTreeView* FTree;
    QWidget* FNoFolder;
    QString FFolder;
};
