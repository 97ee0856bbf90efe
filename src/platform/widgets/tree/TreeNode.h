// A node of a tree view. The tree makes, owns and frees its nodes; a pointer to a node
// is good until the node is deleted, which deletes all below it as well.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QString>

#include "platform/widgets/Basics.h"

class TTreeView;
class TTreeModel;

// Where MoveTo puts a node: before the target among its siblings, or last below it.
enum class TNodeAttach { Insert, AddChild };

class TTreeNode {
public:
    TTreeNode(TTreeView& tree, TTreeNode* parent);
    ~TTreeNode();
    TTreeNode(const TTreeNode&) = delete;
    TTreeNode& operator=(const TTreeNode&) = delete;

    std::string Text() const;
    void SetText(const std::string& text) { ShowText(QString::fromStdString(text)); }
    void SetText(const std::u16string& text) { ShowText(QString::fromStdU16String(text)); }

    // The slot owns what it holds; setting frees what was there.
    TObject* Data() const { return FData.get(); }
    template<class T> T* DataAs() const { return dynamic_cast<T*>(FData.get()); }
    void SetData(std::unique_ptr<TObject> data) { FData = std::move(data); }

    // Indexes of the tree's images and state images; -1 for none.
    int ImageIndex() const { return FImage; }
    void SetImageIndex(int index);
    int SelectedIndex() const { return FSelectedImage; }
    void SetSelectedIndex(int index);
    int StateIndex() const { return FStateImage; }
    void SetStateIndex(int index);

    // The expand mark. It stands apart from the children: adding the first child sets
    // it, deleting the last one clears it, and in between it can be set for children
    // that are not there yet.
    bool HasChildren() const { return FHasChildren; }
    void SetHasChildren(bool hasChildren);

    // 0 for a top node.
    int Level() const { return FLevel; }
    // Among its siblings.
    int Index() const { return FIndex; }
    // Among all nodes in display order, closed branches included.
    int AbsoluteIndex() const;

    // Empty for a top node.
    TTreeNode* Parent() const;
    int Count() const { return static_cast<int>(FChildren.size()); }
    TTreeNode* Item(int index) const;
    TTreeNode* GetFirstChild() const { return Item(0); }
    TTreeNode* GetLastChild() const { return Item(Count() - 1); }
    TTreeNode* GetNextSibling() const;
    TTreeNode* GetPrevSibling() const;
    // The next one in display order, closed branches included.
    TTreeNode* GetNext() const;
    // Whether this node stands somewhere above the other.
    bool IsAncestorOf(const TTreeNode& other) const;

    bool Expanded() const;
    // Opens the branch if it has the mark; with recurse, all branches below it too.
    // Fires OnExpanding for each branch that was closed.
    void Expand(bool recurse);
    // Closes the branch. A selection below it moves to this node first.
    void Collapse();
    // The children with all below them go in one step. Closes the branch and clears
    // the mark. A selection below it moves to this node first.
    void DeleteChildren();
    // Deletes this node. If the selection stands on it or below it, the selection
    // first moves to the next sibling, else the one before, else the parent.
    void Delete();
    // The node keeps its children and its selection. Raises Exception for a target
    // that is the node itself or stands below it.
    void MoveTo(TTreeNode& target, TNodeAttach mode);
    // Sorts the direct children by their text, by the rules of the user's language.
    void SortChildren();
    // Opens the editor on the node's text, if OnEditing allows it.
    void EditText();
    void MakeVisible();
    bool Selected() const;
    void SetSelected();
    TTreeView& TreeView() const { return FTree; }

private:
    friend class TTreeView;
    friend class TTreeModel;
    friend class TNodeWatch;
    void ShowText(QString text);
    void Changed();
    void Renumber(int from);

    TTreeView& FTree;
    TTreeNode* FParent;
    std::vector<std::unique_ptr<TTreeNode>> FChildren;
    std::unique_ptr<TObject> FData;
    QString FText;
    mutable int FAbsoluteIndex = -1;
    int FIndex = 0;
    // How many children the view has been told of.
    int FPublished = 0;
    std::int16_t FLevel = -1;
    std::int16_t FImage = -1;
    std::int16_t FSelectedImage = -1;
    std::int16_t FStateImage = -1;
    bool FHasChildren = false;
    bool FWaiting = false;
    bool FWatched = false;
};

// Follows a node across calls that may delete it.
class TNodeWatch {
public:
    explicit TNodeWatch(TTreeNode* node);
    ~TNodeWatch();
    TNodeWatch(const TNodeWatch&) = delete;
    TNodeWatch& operator=(const TNodeWatch&) = delete;
    // Empty once the node is gone.
    TTreeNode* Node() const { return FNode; }

private:
    friend class TTreeView;
    void Drop() { FNode = nullptr; }
    TTreeNode* FNode;
    TTreeView* FTree;
};
