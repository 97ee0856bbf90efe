#include "platform/widgets/tree/TreeNode.h"

#include <algorithm>
#include <utility>

#include "contracts/Exceptions.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/tree/TreeModel.h"

TTreeNode::TTreeNode(TTreeView& tree, TTreeNode* parent)
    : FTree(tree)
    , FParent(parent) {
    if (parent) FLevel = static_cast<std::int16_t>(parent->FLevel + 1);
}

TTreeNode::~TTreeNode() {
    FChildren.clear();
    if (FParent) FTree.Forget(*this);
}

std::string TTreeNode::Text() const {
    return FromQt(FText);
}

void TTreeNode::ShowText(QString text) {
    if (text == FText) return;
    FText = std::move(text);
    Changed();
}

// A view whose updates are held looks at everything again afterwards.
void TTreeNode::Changed() {
    if (FParent && FIndex < FParent->FPublished && FTree.updatesEnabled()) FTree.FModel->Changed(*this);
}

void TTreeNode::SetImageIndex(int index) {
    if (FImage == index) return;
    FImage = static_cast<std::int16_t>(index);
    Changed();
}

void TTreeNode::SetSelectedIndex(int index) {
    if (FSelectedImage == index) return;
    FSelectedImage = static_cast<std::int16_t>(index);
    Changed();
}

void TTreeNode::SetStateIndex(int index) {
    if (FStateImage == index) return;
    FStateImage = static_cast<std::int16_t>(index);
    Changed();
}

void TTreeNode::SetHasChildren(bool hasChildren) {
    if (FHasChildren == hasChildren) return;
    FHasChildren = hasChildren;
    if (FParent && FIndex < FParent->FPublished) FTree.scheduleDelayedItemsLayout();
}

int TTreeNode::AbsoluteIndex() const {
    FTree.Flat();
    return FAbsoluteIndex;
}

TTreeNode* TTreeNode::Parent() const {
    return FParent && FParent->FParent ? FParent : nullptr;
}

TTreeNode* TTreeNode::Item(int index) const {
    return index >= 0 && index < Count() ? FChildren[static_cast<std::size_t>(index)].get() : nullptr;
}

TTreeNode* TTreeNode::GetNextSibling() const {
    return FParent->Item(FIndex + 1);
}

TTreeNode* TTreeNode::GetPrevSibling() const {
    return FParent->Item(FIndex - 1);
}

TTreeNode* TTreeNode::GetNext() const {
    if (TTreeNode* child = GetFirstChild()) return child;
    for (const TTreeNode* node = this; node->FParent; node = node->FParent)
        if (TTreeNode* sibling = node->GetNextSibling()) return sibling;
    return nullptr;
}

bool TTreeNode::IsAncestorOf(const TTreeNode& other) const {
    for (const TTreeNode* node = other.FParent; node; node = node->FParent)
        if (node == this) return true;
    return false;
}

bool TTreeNode::Expanded() const {
    return FParent && FIndex < FParent->FPublished && FTree.isExpanded(FTree.FModel->IndexOf(*this));
}

void TTreeNode::Expand(bool recurse) {
    TNodeWatch self(this);
    FTree.Open(*this);
    for (int i = 0; recurse && self.Node() && i < Count(); ++i)
        Item(i)->Expand(true);
}

void TTreeNode::Collapse() {
    FTree.Close(*this);
}

void TTreeNode::DeleteChildren() {
    TNodeWatch self(this);
    if (!FChildren.empty()) {
        FTree.LeaveBranch(*this, this);
        if (!self.Node()) return;
        FTree.Close(*this);
    }
    FTree.RemoveChildren(*this, 0, Count() - 1);
    SetHasChildren(false);
}

void TTreeNode::Delete() {
    TNodeWatch self(this);
    if (Selected() || (FTree.Selected() && IsAncestorOf(*FTree.Selected()))) {
        TTreeNode* successor = GetNextSibling();
        if (!successor) successor = GetPrevSibling();
        FTree.LeaveBranch(*this, successor ? successor : Parent());
    }
    if (!self.Node()) return;
    TTreeNode& parent = *FParent;
    FTree.RemoveChildren(parent, FIndex, FIndex);
    if (parent.FChildren.empty()) parent.SetHasChildren(false);
}

void TTreeNode::MoveTo(TTreeNode& target, TNodeAttach mode) {
    if (&target == this || IsAncestorOf(target)) throw Exception("A node cannot be moved below itself.");
    TTreeNode& source = *FParent;
    const bool insert = mode == TNodeAttach::Insert;
    TTreeNode& parent = insert ? *target.FParent : target;
    const int index = insert ? target.FIndex : parent.Count();
    FTree.EndEdit(true);
    FTree.PublishAll();
    FTree.FModel->Move(*this, parent, index);
    parent.SetHasChildren(true);
    if (source.FChildren.empty()) source.SetHasChildren(false);
    FTree.StructureChanged();
}

void TTreeNode::SortChildren() {
    FTree.EndEdit(true);
    if (FPublished > 0) FTree.PublishAll();
    FTree.FModel->Sort(*this);
    FTree.StructureChanged();
}

void TTreeNode::Renumber(int from) {
    for (int i = from; i < Count(); ++i)
        FChildren[static_cast<std::size_t>(i)]->FIndex = i;
}

void TTreeNode::EditText() {
    FTree.BeginEdit(*this);
}

void TTreeNode::MakeVisible() {
    if (FTree.OpenAncestors(*this)) FTree.scrollTo(FTree.FModel->IndexOf(*this));
}

bool TTreeNode::Selected() const {
    return FTree.Selected() == this;
}

void TTreeNode::SetSelected() {
    FTree.SetSelected(this);
}

TNodeWatch::TNodeWatch(TTreeNode* node)
    : FNode(node)
    , FTree(node ? &node->FTree : nullptr) {
    if (!node) return;
    node->FWatched = true;
    FTree->FWatches.push_back(this);
}

TNodeWatch::~TNodeWatch() {
    if (FNode) std::erase(FTree->FWatches, this);
}
