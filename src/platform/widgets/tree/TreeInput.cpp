#include <algorithm>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include "platform/widgets/QtText.h"
#include "platform/widgets/tree/TreeModel.h"
#include "platform/widgets/tree/TreeView.h"

namespace {

TPoint PointOf(const QMouseEvent& event) {
    const QPoint point = event.position().toPoint();
    return {point.x(), point.y()};
}

} // namespace

void TTreeView::mousePressEvent(QMouseEvent* event) {
    EndEdit(false);
    if (FDragging) {
        EndDrag(false);
        return;
    }
    const TPoint point = PointOf(*event);
    TTreeNode* node = GetNodeAt(point.X, point.Y);
    if (!node || event->button() != Qt::LeftButton) return;
    if (GetHitTestInfoAt(point.X, point.Y) == TTreeHit::OnButton) {
        Toggle(*node);
        return;
    }
    FPressPoint = point;
    Select(node);
    FPressed = FDragAutomatic;
}

void TTreeView::mouseMoveEvent(QMouseEvent* event) {
    const TPoint point = PointOf(*event);
    if (FDragging) {
        ContinueDrag(point);
    } else if (FPressed && event->buttons() & Qt::LeftButton) {
        const int distance = std::abs(point.X - FPressPoint.X) + std::abs(point.Y - FPressPoint.Y);
        if (distance >= QApplication::startDragDistance()) {
            BeginDrag();
            ContinueDrag(point);
        }
    }
}

void TTreeView::mouseReleaseEvent(QMouseEvent* event) {
    FPressed = false;
    if (FDragging) {
        FDragPoint = PointOf(*event);
        EndDrag(true);
    }
}

void TTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    const TPoint point = PointOf(*event);
    if (TTreeNode* node = GetNodeAt(point.X, point.Y); node && event->button() == Qt::LeftButton)
        Toggle(*node);
}

bool TTreeView::HandleBranchKey(int key) {
    if (!FSelected) return false;
    TTreeNode& node = *FSelected;
    switch (key) {
    case Qt::Key_Right:
        if (node.Expanded())
            Select(node.GetFirstChild());
        else
            Open(node);
        return true;
    case Qt::Key_Left:
        if (node.Expanded())
            Close(node);
        else if (node.Parent())
            Select(node.Parent());
        return true;
    case Qt::Key_Plus:
        Open(node);
        return true;
    case Qt::Key_Minus:
        Close(node);
        return true;
    case Qt::Key_Asterisk:
        node.Expand(true);
        return true;
    default:
        return false;
    }
}

bool TTreeView::HandleMoveKey(QKeyEvent& event) {
    static const std::pair<int, CursorAction> moves[] = {
        {Qt::Key_Up, MoveUp},   {Qt::Key_Down, MoveDown},     {Qt::Key_Home, MoveHome},
        {Qt::Key_End, MoveEnd}, {Qt::Key_PageUp, MovePageUp}, {Qt::Key_PageDown, MovePageDown},
    };
    for (const auto& [key, action] : moves)
        if (event.key() == key) {
            PublishAll();
            if (TTreeNode* node = NodeOf(moveCursor(action, event.modifiers()))) Select(node);
            return true;
        }
    return false;
}

void TTreeView::keyPressEvent(QKeyEvent* event) {
    if (FDragging) {
        if (event->key() == Qt::Key_Escape) EndDrag(false);
        return;
    }
    if (HandleBranchKey(event->key()) || HandleMoveKey(*event)) return;
    QTreeView::keyPressEvent(event);
}

TPoint TTreeView::KeyboardMenuPoint() const {
    if (!FSelected) return TScrollingControlOf::KeyboardMenuPoint();
    const TRect row = DisplayRect(*FSelected);
    return {row.Left + 10, row.Top + row.Height / 2};
}

void TTreeView::BeginEdit(TTreeNode& node) {
    EndEdit(false);
    const TNodeWatch watch(&node);
    std::string text = node.Text();
    bool allow = true;
    if (!Fire(OnEditing, node, text, allow) || !allow || !watch.Node()) return;
    node.MakeVisible();
    if (!watch.Node()) return;
    FEdited = &node;
    FEditor = new QLineEdit(ToQt(text), viewport());
    FEditor->setObjectName(objectName() + QStringLiteral("Editor"));
    FEditor->setAccessibleName(QStringLiteral("Name"));
    FEditor->installEventFilter(this);
    connect(FEditor, &QLineEdit::textChanged, this, [this] { PlaceEditor(); });
    PlaceEditor();
    FEditor->selectAll();
    FEditor->show();
    FEditor->setFocus(Qt::OtherFocusReason);
}

void TTreeView::PlaceEditor() {
    if (!FEditor || !FEdited) return;
    executeDelayedItemsLayout();
    const QRect row = visualRect(FModel->IndexOf(*FEdited));
    const int left = row.left() + TextOffset(*FEdited);
    const int wanted = FEditor->fontMetrics().horizontalAdvance(FEditor->text()) + 24;
    const int room = std::max(viewport()->width() - left - 2, 60);
    const int height = std::max(row.height(), FEditor->sizeHint().height());
    const int top = row.top() - (height - row.height()) / 2;
    FEditor->setGeometry(left, std::max(top, 0), std::clamp(wanted, 60, room), height);
}

void TTreeView::EndEdit(bool cancel) {
    if (!FEditor) return;
    QLineEdit* editor = std::exchange(FEditor, nullptr);
    TTreeNode* node = std::exchange(FEdited, nullptr);
    editor->removeEventFilter(this);
    if (editor->hasFocus()) setFocus(Qt::OtherFocusReason);
    editor->hide();
    editor->deleteLater();
    if (cancel || !node) return;
    const TNodeWatch watch(node);
    std::string text = FromQt(editor->text());
    if (Fire(OnEdited, *node, text) && watch.Node()) node->ShowText(ToQt(text));
}

bool TTreeView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != FEditor || !FEditor) return TScrollingControlOf::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool ends = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab;
        if (ends || key == Qt::Key_Escape) {
            EndEdit(!ends);
            return true;
        }
    } else if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) EndEdit(false);
    }
    return false;
}

bool TTreeView::AskDragOver(TPoint position) {
    bool accept = false;
    if (viewport()->rect().contains(position.X, position.Y)) Fire(OnDragOver, this, position, accept);
    return accept;
}

void TTreeView::BeginDrag() {
    FPressed = false;
    FDragging = true;
    FScrollTimer.start(60, this);
}

void TTreeView::ContinueDrag(TPoint position) {
    FDragPoint = position;
    FDropAccepted = AskDragOver(position);
    FDropNode = FDropAccepted ? GetNodeAt(position.X, position.Y) : nullptr;
    viewport()->setCursor(FDropAccepted ? Qt::DragMoveCursor : Qt::ForbiddenCursor);
    viewport()->update();
}

void TTreeView::EndDrag(bool drop) {
    FDragging = false;
    FDropNode = nullptr;
    FScrollTimer.stop();
    viewport()->unsetCursor();
    viewport()->update();
    const TPoint point = FDragPoint;
    if (drop && AskDragOver(point)) Fire(OnDragDrop, this, point);
}

// Near an edge the tree scrolls on for as long as the drag stays there.
void TTreeView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != FScrollTimer.timerId()) {
        QTreeView::timerEvent(event);
        return;
    }
    const int edge = 20;
    QScrollBar& bar = *verticalScrollBar();
    if (FDragPoint.Y < edge)
        bar.setValue(bar.value() - bar.singleStep());
    else if (FDragPoint.Y > viewport()->height() - edge)
        bar.setValue(bar.value() + bar.singleStep());
}

void TTreeView::PaintDropMark(QPainter& painter) {
    const TRect row = DisplayRect(*FDropNode);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
    painter.drawRoundedRect(QRectF(row.Left + 0.5, row.Top + 0.5, row.Width - 2, row.Height - 1), 3, 3);
}

void TTreeView::paintEvent(QPaintEvent* event) {
    PublishAll();
    QTreeView::paintEvent(event);
    if (FDropNode) {
        QPainter painter(viewport());
        PaintDropMark(painter);
    }
}

void TTreeView::scrollContentsBy(int dx, int dy) {
    QTreeView::scrollContentsBy(dx, dy);
    PlaceEditor();
}

// A row without columns reaches to the right edge, and so does its selection.
void TTreeView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    if (isHeaderHidden()) header()->setMinimumSectionSize(viewport()->width());
    PlaceEditor();
}
