// The requirement tree's side of the panel: building the tree, labels, pictures and
// searches, the edit lock of the current requirement, and the attribute controls.
// It holds the current baseline and requirement for everybody (see the base class).
//
// A view node is a node of the panel's tree view, a server node one of the server's
// requirement tree. View nodes exist only for branches that have been opened. All
// operations raise what the server calls in them raise.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frames/URequirementPanel.h"
#include "server/Quorane_TLB.h"

class TRequirementTreeNodeContainer;
class TBitmap;
class TLabel;
class TTreeNode;
class TTreeView;

class TQuoraneGUIHelpers final : public TRequirementContext {
public:
    // The panel's tree; empty until the panel has been made. Not owned.
    TTreeView* RequirementsTree = nullptr;
    // True while a selection by the program runs: a branch that opens on its way is
    // then not read again, since that would free the node that is being selected.
    bool SelectingNode = false;
    bool ShowSerialNumbers = false;
    bool ShowHierarchicalNumbers = false;

    // Reads the first level of each requirement type that has one and shows none.
    void EnsureFirstLevelRequirements();
    // Reads the children of the view node anew. What was open below it closes, and a
    // selection below it moves to the node. Does nothing while SelectingNode is set.
    void PopulateChildren(TTreeNode& node);
    void AddRequirementNode(TTreeNode& parent,
                            const Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>& node);
    // The label: name, for a requirement with the numbers that are switched on.
    std::u16string GetProperNodeText(Quorane_TLB::ITreeNode& node) const;
    // Of a node that goes by another name than the server knows.
    std::u16string GetProperNodeText(Quorane_TLB::ITreeNode& node, const std::u16string& name) const;
    // Keeps the picture when the SDK fails to tell the node's state.
    void UpdateStateImage(TTreeNode& viewNode, Quorane_TLB::IRequirementTreeNode& node);
    void UpdateCurrentRequirementStateImage() override;
    // Forgets what the client has cached, changes that were not saved included, and
    // reads the selected node and CurrentRequirement again. Raises Exception when the
    // server's tree no longer holds the node.
    void RefreshCurrentRequirement();
    void UpdateAllRequirementNodeLabels();
    void SetShowSerialNumbers(bool show);
    void SetShowHierarchicalNumbers(bool show);
    void SetShowingRequirementInfo(bool showing) { ShowingRequirementInfo = showing; }

    // The level 1 node on the way from the node to the top; empty for the top node.
    TTreeNode* FindRequirementTypeNode(TTreeNode* node) const;
    // Among the direct children; empty when none has the number.
    TTreeNode* FindChildNodeWithID(const TTreeNode& node, std::int32_t id) const;
    TTreeNode* FindRequirementTreeNode(const Quorane_TLB::Handle<Quorane_TLB::ITreeNode>& node) const;
    // The view node of the server node or of its nearest ancestor that has one.
    TTreeNode* FindParentInTree(const Quorane_TLB::Handle<Quorane_TLB::ITreeNode>& node) const;
    // Opens the branches down to the node, selects it and shows the first tab. Raises
    // Exception for the node of a type and for one that the tree does not hold.
    void SelectRequirementInTree(const Quorane_TLB::Handle<Quorane_TLB::ITreeNode>& node);
    // Selects the requirement of that number in the baseline on show, or tells the
    // user that there is none.
    void SearchNodeById(std::int32_t id);
    // Re-enters the message loop.
    void ShowRequirementNotFoundMessage();

    // Gives the lock on CurrentRequirement back and takes the padlock from its node.
    void UnlockCurrentRequirement();
    void LockCurrentRequirement() override;
    void UpdateDescription() override;

    // What GetUDAIntegerValue gives for an attribute without a value.
    static constexpr std::int32_t NoIntegerValue = -2147483646;
    static constexpr int TabIconSize = 16;

    // Adds the label and the widget for an attribute of CurrentRequirement to parent,
    // at top, in pixels, which moves below them; nothing for a kind without a widget. A
    // widget whose attribute has no value is disabled and says so in its hint; a date
    // without a value raises Exception.
    void CreateAttributeControl(int& top, TWinControl& parent,
                                const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    // The same for one kind each; parent owns what is made.
    void CreateSLTextAttribute(int& top, TWinControl& parent,
                               const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    void CreateMLTextAttribute(int& top, TWinControl& parent,
                               const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    void CreateCheckBoxAttribute(int& top, TWinControl& parent,
                                 const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    void CreateFloatAttribute(int& top, TWinControl& parent,
                              const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    void CreateIntegerAttribute(int& top, TWinControl& parent,
                                const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    void CreateDateAttribute(int& top, TWinControl& parent,
                             const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    void CreateSSListAttribute(int& top, TWinControl& parent,
                               const Quorane_TLB::Handle<Quorane_TLB::IUDAList>& list);
    void CreateMSListAttribute(int& top, TWinControl& parent,
                               const Quorane_TLB::Handle<Quorane_TLB::IUDAList>& list);
    TLabel& CreateAttributeLabel(TWinControl& parent, int& top,
                                 const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    // A name for the control that was last added to the given one.
    static std::string UDAControlName(const TWinControl& control);

    // The value that CurrentRequirement holds for the attribute, and what is in it. The
    // handle is empty when there is none; the result is then empty, NoIntegerValue, 0,
    // false or no position.
    std::string GetUDATextValue(const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute,
                                Quorane_TLB::Handle<Quorane_TLB::IUDATextValue>& value) const;
    std::int32_t GetUDAIntegerValue(const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute,
                                    Quorane_TLB::Handle<Quorane_TLB::IUDAIntegerValue>& value) const;
    float GetUDAFloatValue(const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute,
                           Quorane_TLB::Handle<Quorane_TLB::IUDAFloatValue>& value) const;
    double GetUDADateValue(const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute,
                           Quorane_TLB::Handle<Quorane_TLB::IUDADateValue>& value) const;
    bool GetUDABooleanValue(const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute,
                            Quorane_TLB::Handle<Quorane_TLB::IUDABooleanValue>& value) const;
    void GetUDAListValues(const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute,
                          std::vector<std::int32_t>& positions,
                          Quorane_TLB::Handle<Quorane_TLB::IUDAListValue>& value) const;

    // Writes what the user has changed in an attribute's widget, under the lock. Does
    // nothing while custom tabs are made. Reports failures itself.
    void ChangeAttributeUI(TWinControl& control);

    // The picture of a custom tab from its pixels, three integers each, row by row;
    // empty for no pixels.
    static std::unique_ptr<TBitmap>
    GenerateTempIcon(const Quorane_TLB::Handle<Quorane_TLB::IStCollection>& pixels);

private:
    // A new widget under the label of the attribute, at top, which moves to the widget.
    template<class TWidget>
    TWidget* AddLabelled(TWinControl& parent, int& top,
                         const Quorane_TLB::Handle<Quorane_TLB::IAttribute>& attribute);
    static void FinishAttributeControl(TWinControl& control, TWinControl& parent, int& top,
                                       const Quorane_TLB::Handle<Quorane_TLB::IAttributeValue>& value);
    Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode> ReadSelectedNodeAgain();
    TTreeNode* SearchDownwards(TTreeNode& ancestor,
                               const Quorane_TLB::Handle<Quorane_TLB::ITreeNode>& wanted);
    void SetSelectedNodeImage(int image);
};

// The one object, which GUIHelpers shows to the frames. Made at the first call.
TQuoraneGUIHelpers& PanelHelpers();
// Destroys it with the handles that it holds; the panel must be gone.
void FinalizeGUIHelpers();

// The container of a view node below the top one. Raises Exception for an empty node
// and for one without a container.
TRequirementTreeNodeContainer& RequirementContainer(const TTreeNode* node);

// The requirement's "save", which the binding reaches by name, with an empty comment.
void SaveByName(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement);
