#include "hosts/studio/ProjectFiles.h"

#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

TProjectFiles::TProjectFiles(QWidget* parent)
    : QDockWidget(QStringLiteral("Files"), parent)
    , FTree(new QTreeView)
    , FNoFolder(new QWidget) {
    setObjectName(QStringLiteral("ProjectFiles"));
    FTree->setObjectName(QStringLiteral("ProjectFilesTree"));
    FTree->setAccessibleName(QStringLiteral("Files of the project"));
    FTree->setHeaderHidden(true);
    FTree->setUniformRowHeights(true);
    FTree->setFrameShape(QFrame::NoFrame);
    FTree->setAnimated(false);
    connect(FTree, &QTreeView::activated, this, [this](const QModelIndex& index) { Open(index); });

    auto* hint = new QLabel(QStringLiteral("No folder is open."), FNoFolder);
    hint->setAlignment(Qt::AlignCenter);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto* button = new QPushButton(QStringLiteral("Open &Folder…"), FNoFolder);
    connect(button, &QPushButton::clicked, this, [this] {
        if (OnOpenFolder) OnOpenFolder();
    });
    auto* layout = new QVBoxLayout(FNoFolder);
    layout->addStretch();
    layout->addWidget(hint);
    layout->addWidget(button, 0, Qt::AlignHCenter);
    layout->addStretch();

    auto* pages = new QStackedWidget(this);
    pages->addWidget(FNoFolder);
    pages->addWidget(FTree);
    setWidget(pages);
}

void TProjectFiles::SetFolder(const QString& folder) {
    FFolder = folder.isEmpty() ? QString() : QDir(folder).absolutePath();
    auto* pages = static_cast<QStackedWidget*>(widget());
    if (FFolder.isEmpty()) {
        pages->setCurrentWidget(FNoFolder);
        return;
    }
    if (!FModel) {
        // Made late: it starts a thread that reads folders.
        FModel = new QFileSystemModel(this);
        FModel->setFilter(QDir::AllEntries | QDir::NoDotAndDotDot);
        FTree->setModel(FModel);
        for (int column = 1; column < FModel->columnCount(); ++column)
            FTree->hideColumn(column);
    }
    FTree->setRootIndex(FModel->setRootPath(FFolder));
    FTree->setToolTip(FFolder);
    pages->setCurrentWidget(FTree);
}

void TProjectFiles::Follow(const QString& path) {
    if (!FModel || !path.startsWith(FFolder + u'/')) return;
    const QModelIndex index = FModel->index(path);
    FTree->setCurrentIndex(index);
    FTree->scrollTo(index);
}

void TProjectFiles::Open(const QModelIndex& index) {
    if (!FModel->isDir(index) && OnOpen) OnOpen(FModel->filePath(index));
}
