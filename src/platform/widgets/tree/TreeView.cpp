#include "platform/widgets/tree/TreeView.h"

#include <algorithm>

#include <QHeaderView>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/tree/TreeModel.h"

TTreeView::TTreeView(TWinControl* parent, const std::string& name)
    : TScrollingControlOf(parent, name)
    , FModel(std::make_unique<TTreeModel>(*this))
    , FRoot(std::make_unique<TTreeNode>(*this, nullptr)) {
    setModel(FModel.get());
    const std::unique_ptr<QItemSelectionModel> standard(selectionModel());
    setSelectionModel(new TTreeSelection(*this, FModel.get()));
    setItemDelegate(new TTreeDelegate(*this));
    setUniformRowHeights(true);
    setHeaderHidden(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setIndentation(19);
    setVerticalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // Measures the rows that show and no others.
    header()->setResizeContentsPrecision(0);
}

TTreeView::~TTreeView() {
    FMoving = true;
    setModel(nullptr);
    FRoot.reset();
    for (TNodeWatch* watch : FWatches)
        watch->Drop();
}

TTreeNode& TTreeView::Add(const std::string& text) {
    return NewNode(*FRoot, ToQt(text));
}

TTreeNode& TTreeView::AddChild(TTreeNode& parent, const std::string& text) {
    return NewNode(parent, ToQt(text));
}

TTreeNode& TTreeView::AddChild(TTreeNode& parent, const std::u16string& text) {
    return NewNode(parent, ToQt(text));
}

TTreeNode& TTreeView::NewNode(TTreeNode& parent, QString text) {
    auto owned = std::make_unique<TTreeNode>(*this, &parent);
    TTreeNode& node = *owned;
    node.FText = std::move(text);
    node.FIndex = parent.Count();
    parent.FChildren.push_back(std::move(owned));
    ++FNodeCount;
    parent.SetHasChildren(true);
    WaitForPublishing(parent);
    StructureChanged();
    return node;
}

void TTreeView::WaitForPublishing(TTreeNode& node) {
    if (node.FWaiting) return;
    node.FWaiting = true;
    FWaitingNodes.push_back(&node);
    if (FPublishPosted) return;
    FPublishPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            FPublishPosted = false;
            PublishAll();
        },
        Qt::QueuedConnection);
}

// A child can be told of once its parent is known to the view.
void TTreeView::Publish(TTreeNode& node) {
    if (node.FParent && node.FIndex >= node.FParent->FPublished) Publish(*node.FParent);
    FModel->Publish(node);
    node.FWaiting = false;
}

void TTreeView::PublishAll() {
    while (!FWaitingNodes.empty()) {
        TTreeNode* node = FWaitingNodes.back();
        FWaitingNodes.pop_back();
        Publish(*node);
    }
}

int TTreeView::Count() const {
    return FNodeCount;
}

TTreeNode* TTreeView::GetFirstNode() const {
    return FRoot->GetFirstChild();
}

const std::vector<TTreeNode*>& TTreeView::Flat() const {
    if (FFlatValid) return FFlat;
    FFlat.clear();
    FFlat.reserve(static_cast<std::size_t>(FNodeCount));
    for (TTreeNode* node = GetFirstNode(); node; node = node->GetNext()) {
        node->FAbsoluteIndex = static_cast<int>(FFlat.size());
        FFlat.push_back(node);
    }
    FFlatValid = true;
    return FFlat;
}

TTreeNode* TTreeView::Item(int absoluteIndex) const {
    const auto& nodes = Flat();
    return absoluteIndex >= 0 && absoluteIndex < static_cast<int>(nodes.size())
               ? nodes[static_cast<std::size_t>(absoluteIndex)]
               : nullptr;
}

void TTreeView::StructureChanged() {
    FFlatValid = false;
}

void TTreeView::Clear() {
    EndEdit(true);
    if (FSelected) LeaveBranch(*FRoot, nullptr);
    RemoveChildren(*FRoot, 0, FRoot->Count() - 1);
}

void TTreeView::RemoveChildren(TTreeNode& parent, int first, int last) {
    if (last < first) return;
    if (parent.FPublished > 0) PublishAll();
    const auto removed = FModel->Remove(parent, first, last);
    StructureChanged();
}

// What still points at a node that goes away.
void TTreeView::Forget(const TTreeNode& node) {
    --FNodeCount;
    if (node.FWaiting) std::erase(FWaitingNodes, &node);
    if (FSelected == &node) FSelected = nullptr;
    if (FDropNode == &node) FDropNode = nullptr;
    if (FEdited == &node) {
        FEdited = nullptr;
        EndEdit(true);
    }
    if (!node.FWatched) return;
    std::erase_if(FWatches, [&](TNodeWatch* watch) {
        const bool gone = watch->Node() == &node;
        if (gone) watch->Drop();
        return gone;
    });
}

TTreeNode* TTreeView::NodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<TTreeNode*>(index.internalPointer()) : nullptr;
}

void TTreeView::SetSelected(TTreeNode* node) {
    Select(node);
}

void TTreeView::Select(TTreeNode* node) {
    if (node == FSelected) return;
    EndEdit(false);
    const TNodeWatch watch(node);
    bool allow = true;
    Fire(OnChanging, node, allow);
    if (!allow || watch.Node() != node || node == FSelected) return;
    if (node && !OpenAncestors(*node)) return;
    Apply(node);
    if (node) scrollTo(FModel->IndexOf(*node));
    Fire(OnChange, node);
}

void TTreeView::Apply(TTreeNode* node) {
    PublishAll();
    FSelected = node;
    FMoving = true;
    if (node)
        selectionModel()->setCurrentIndex(FModel->IndexOf(*node),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    else
        selectionModel()->clear();
    FMoving = false;
    viewport()->update();
}

// False when a handler has deleted the node on the way.
bool TTreeView::OpenAncestors(TTreeNode& node) {
    const TNodeWatch watch(&node);
    std::vector<TTreeNode*> closed;
    for (TTreeNode* ancestor = node.Parent(); ancestor; ancestor = ancestor->Parent())
        if (!ancestor->Expanded()) closed.push_back(ancestor);
    while (!closed.empty() && watch.Node()) {
        Open(*closed.back());
        closed.pop_back();
    }
    PublishAll();
    return watch.Node() != nullptr;
}

void TTreeView::Open(TTreeNode& node) {
    if (!node.HasChildren() || node.Expanded()) return;
    const TNodeWatch watch(&node);
    bool allow = true;
    Fire(OnExpanding, node, allow);
    if (!allow || !watch.Node() || node.Count() == 0) return;
    PublishAll();
    setExpanded(FModel->IndexOf(node), true);
}

void TTreeView::Close(TTreeNode& node) {
    if (!node.Expanded()) return;
    const TNodeWatch watch(&node);
    LeaveBranch(node, &node);
    if (watch.Node()) setExpanded(FModel->IndexOf(node), false);
}

void TTreeView::Toggle(TTreeNode& node) {
    if (node.Expanded())
        Close(node);
    else
        Open(node);
}

// Moves the selection off the branch and what stands on it; a handler that refuses
// cannot keep it there.
void TTreeView::LeaveBranch(const TTreeNode& branch, TTreeNode* successor) {
    const auto stands = [&] {
        return FSelected &&
               ((FSelected == &branch && successor != &branch) || branch.IsAncestorOf(*FSelected));
    };
    if (!stands()) return;
    const TNodeWatch watch(successor);
    const TNodeWatch branchWatch(const_cast<TTreeNode*>(&branch));
    Select(successor);
    if (branchWatch.Node() && stands()) Apply(watch.Node());
}

TTreeNode* TTreeView::GetNodeAt(int x, int y) const {
    return NodeOf(indexAt(QPoint(x, y)));
}

int TTreeView::TextOffset(const TTreeNode& node) const {
    const int state = FStateImages && node.StateIndex() >= 0 ? TTreeDelegate::StateWidth : 0;
    return state + (FImages && NodeImage(node, 0, node.Selected()) >= 0 ? 20 : 0);
}

TTreeHit TTreeView::GetHitTestInfoAt(int x, int y) const {
    const TTreeNode* node = GetNodeAt(x, y);
    if (!node) return TTreeHit::Nowhere;
    const QRect row = visualRect(FModel->IndexOf(*node));
    if (x < row.left())
        return node->HasChildren() && x >= row.left() - indentation() ? TTreeHit::OnButton
                                                                      : TTreeHit::Nowhere;
    const int state = FStateImages && node->StateIndex() >= 0 ? TTreeDelegate::StateWidth : 0;
    const int text = TextOffset(*node);
    const int offset = x - row.left();
    if (offset < state) return TTreeHit::OnStateIcon;
    if (offset < text) return TTreeHit::OnIcon;
    return offset < text + fontMetrics().horizontalAdvance(node->FText) + 8 ? TTreeHit::OnLabel
                                                                            : TTreeHit::OnRight;
}

TRect TTreeView::DisplayRect(const TTreeNode& node) const {
    if (!node.FParent || node.FIndex >= node.FParent->FPublished) return {};
    const QRect row = visualRect(FModel->IndexOf(node));
    return {row.left(), row.top(), row.width(), row.height()};
}

TRect TTreeView::StateIconRect(const TTreeNode& node) const {
    const TRect row = DisplayRect(node);
    if (!FStateImages || node.StateIndex() < 0 || row.Height == 0) return {};
    return {row.Left, row.Top, TTreeDelegate::StateWidth, row.Height};
}

void TTreeView::SetImages(const TImageList* images) {
    FImages = images;
    viewport()->update();
}

void TTreeView::SetStateImages(const TImageList* images) {
    FStateImages = images;
    viewport()->update();
}

QString TTreeView::NodeText(const TTreeNode& node, int) const {
    return node.FText;
}

int TTreeView::NodeImage(const TTreeNode& node, int column, bool selected) const {
    if (column > 0) return -1;
    return selected ? node.SelectedIndex() : node.ImageIndex();
}

bool TTreeView::NodeBold(const TTreeNode&, int) const {
    return false;
}

void TTreeView::ShowColumns(const std::vector<std::string>& captions) {
    std::vector<QString> headers;
    for (const std::string& caption : captions)
        headers.push_back(ToQt(caption));
    FModel->SetHeaders(std::move(headers));
}

void TTreeView::UpdateHeld(bool held) {
    TScrollingControlOf::UpdateHeld(held);
    if (held) return;
    PublishAll();
    scheduleDelayedItemsLayout();
    viewport()->update();
}

void TTreeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
        if (!isExpanded(above)) return;
    QTreeView::scrollTo(index, hint);
}
