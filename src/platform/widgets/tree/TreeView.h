// A tree of nodes with text, picture and state picture, editing in place and dragging
// inside the tree. It stands on an item model of its own: children that are added to
// a closed branch cost the view nothing until it next looks.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QBasicTimer>
#include <QTreeView>

#include "platform/widgets/Control.h"
#include "platform/widgets/tree/TreeNode.h"

class QLineEdit;
class QPainter;
class TImageList;
class TTreeModel;
class TTreeSelection;

enum class TTreeHit { Nowhere, OnButton, OnStateIcon, OnIcon, OnLabel, OnRight };

class TTreeView : public TScrollingControlOf<QTreeView> {
public:
    explicit TTreeView(TWinControl* parent, const std::string& name = {});
    ~TTreeView() override;

    // Before the selection moves, by the user or by the program. Clearing allow keeps
    // the selection; an exception does not. The node may be empty.
    TEvent<TTreeNode*, bool&> OnChanging;
    // After it has moved; the node may be empty.
    TEvent<TTreeNode*> OnChange;
    // Before a branch opens, by the user, by the program, or because a node below it
    // gets selected. The handler may add and delete the node's children. Clearing
    // allow keeps it closed; an exception does not.
    TEvent<TTreeNode&, bool&> OnExpanding;
    // Before the editor opens with the text, at first the node's. Clearing allow, or an
    // exception, keeps it closed.
    TEvent<TTreeNode&, std::string&, bool&> OnEditing;
    // The user has finished the text. What the handler leaves in it becomes the
    // node's text; after an exception the node keeps the old one.
    TEvent<TTreeNode&, std::string&> OnEdited;
    // While something is dragged over the tree, in pixels of its client area; nothing
    // is accepted unless the handler sets accept. The source control is empty for a
    // drag from elsewhere.
    TEvent<TWinControl*, TPoint, bool&> OnDragOver;
    // It was dropped where it was last accepted.
    TEvent<TWinControl*, TPoint> OnDragDrop;

    // A top node at the end.
    TTreeNode& Add(const std::string& text);
    // A child at the end; fires nothing and opens nothing.
    TTreeNode& AddChild(TTreeNode& parent, const std::string& text);
    TTreeNode& AddChild(TTreeNode& parent, const std::u16string& text);
    // All nodes, closed branches included.
    int Count() const;
    // By absolute index; empty for one that does not exist.
    TTreeNode* Item(int absoluteIndex) const;
    TTreeNode* GetFirstNode() const;
    void Clear();

    TTreeNode* Selected() const { return FSelected; }
    // Opens the branches above the node and scrolls to it. Empty clears the selection.
    // May end on another node when a handler refuses or deletes.
    void SetSelected(TTreeNode* node);

    // In pixels of the client area; empty where no row is.
    TTreeNode* GetNodeAt(int x, int y) const;
    TTreeHit GetHitTestInfoAt(int x, int y) const;
    // Of the node's row; empty when it does not show.
    TRect DisplayRect(const TTreeNode& node) const;
    TRect StateIconRect(const TTreeNode& node) const;

    // Not owned; empty for none.
    void SetImages(const TImageList* images);
    void SetStateImages(const TImageList* images);
    const TImageList* Images() const { return FImages; }
    const TImageList* StateImages() const { return FStateImages; }
    void SetIndent(int pixels) { setIndentation(pixels); }
    // Whether a drag starts by itself when the user pulls a row.
    void SetDragAutomatic(bool automatic) { FDragAutomatic = automatic; }
    bool Dragging() const { return FDragging; }

    bool IsEditing() const { return FEditor != nullptr; }
    // Ends editing: with the text as it stands, or without it.
    void EndEdit(bool cancel);

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

protected:
    // What a row shows; a derived tree answers for columns of its own.
    virtual int ColumnTotal() const { return 1; }
    virtual QString NodeText(const TTreeNode& node, int column) const;
    virtual int NodeImage(const TTreeNode& node, int column, bool selected) const;
    virtual bool NodeBold(const TTreeNode& node, int column) const;

    void UpdateHeld(bool held) override;
    TPoint KeyboardMenuPoint() const override;
    void ShowColumns(const std::vector<std::string>& captions);
    // Called when nodes came or went.
    virtual void StructureChanged();
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class TTreeNode;
    friend class TNodeWatch;
    friend class TTreeModel;
    friend class TTreeSelection;
    friend class TTreeDelegate;

    TTreeNode& NewNode(TTreeNode& parent, QString text);
    void Select(TTreeNode* node);
    bool OpenAncestors(TTreeNode& node);
    void Open(TTreeNode& node);
    void Close(TTreeNode& node);
    void Toggle(TTreeNode& node);
    void LeaveBranch(const TTreeNode& branch, TTreeNode* successor);
    void BeginEdit(TTreeNode& node);
    void PlaceEditor();
    const std::vector<TTreeNode*>& Flat() const;
    TTreeNode* NodeOf(const QModelIndex& index) const;
    bool HandleBranchKey(int key);
    bool HandleMoveKey(QKeyEvent& event);
    void WaitForPublishing(TTreeNode& node);
    void Publish(TTreeNode& node);
    void PublishAll();
    void Apply(TTreeNode* node);
    void RemoveChildren(TTreeNode& parent, int first, int last);
    void Forget(const TTreeNode& node);
    int TextOffset(const TTreeNode& node) const;
    bool AskDragOver(TPoint position);
    void BeginDrag();
    void ContinueDrag(TPoint position);
    void EndDrag(bool drop);
    void PaintDropMark(QPainter& painter);

    std::unique_ptr<TTreeModel> FModel;
    std::unique_ptr<TTreeNode> FRoot;
    mutable std::vector<TTreeNode*> FFlat;
    mutable bool FFlatValid = false;
    std::vector<TNodeWatch*> FWatches;
    std::vector<TTreeNode*> FWaitingNodes;
    TTreeNode* FSelected = nullptr;
    int FNodeCount = 0;
    const TImageList* FImages = nullptr;
    const TImageList* FStateImages = nullptr;
    QLineEdit* FEditor = nullptr;
    TTreeNode* FEdited = nullptr;
    bool FMoving = false;
    bool FPublishPosted = false;
    bool FDragAutomatic = false;
    bool FPressed = false;
    bool FDragging = false;
    bool FDropAccepted = false;
    TPoint FPressPoint;
    TPoint FDragPoint;
    TTreeNode* FDropNode = nullptr;
    QBasicTimer FScrollTimer;
};
