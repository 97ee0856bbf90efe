// The requirements panel: the dockable form that leads from the logon to a listed
// project and baseline, owns the requirement tree and all frames, and carries the
// commands on them. Its widgets are public by name, as those of a designed form are;
// who needs the panel but not its widgets uses TRequirementPanel (frames).
//
// The handlers of one duty stand together: QuoraneDockForm_<Duty>.cpp. Unless told
// otherwise a handler gives every exception to HandleSDKException.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "contracts/HostServices.h"
#include "frames/URequirementPanel.h"
#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Forms.h"

class TActionList;
class TAction;
class TComboBox;
class TEdit;
class TfraBaseRequirementFrame;
class TfraDescription;
class TfraDescriptionToolbar;
class TfraDetails;
class TfraResponsibilities;
class TfraHistory;
class TfraReferences;
class TfraDiscussion;
class TfraValidation;
class TImageList;
class TListItem;
class TListView;
class TMemo;
class TMenuItem;
class TNotebook;
class TPageControl;
class TPanel;
class TPopupMenu;
class TScrollBox;
class TSplitter;
class TTabSheet;
class TToolBar;
class TToolButton;
class TTreeNode;
class TTreeView;

// Pages of nbkParent: whether the panel is connected is told by the page alone.
enum TParentPage { ConnectedPage, LoginPage };
// Pages of nbkContents.
enum TContentsPage { ProjectPage, RequirementTypePage, RequirementPage };

class TfrmQuoraneMain final : public TDockableForm, public TRequirementPanel {
public:
    // Makes the widgets and runs FormCreate.
    explicit TfrmQuoraneMain(TQuoraneGUIHelpers& helpers);
    ~TfrmQuoraneMain() override;

    // Makes the one panel, hidden, unless it exists.
    static void CreateForm();
    // Destroys it with all that hangs on it; the session and what PanelHelpers holds
    // stay.
    static void RemoveForm();
    // Brings a connected panel up; otherwise asks for the logon first and comes up
    // when that went well. Raises what filling the lists raises.
    static void ShowForm();

    // The frame of the tab "Traceability" belongs to a folder above this one: whoever
    // composes the two says how it is made, before CreateForm. Without it the tab
    // holds a frame that shows nothing.
    using TFrameFactory = std::function<TfraBaseRequirementFrame*(TWinControl& parent)>;
    static void SetTraceabilityFrameFactory(TFrameFactory factory);

    // A fresh session, then all lists and the tree from it. The project stays by name,
    // the baseline becomes the first one.
    void RefreshAll();
    void SelectBaseLine(const Quorane_TLB::Handle<Quorane_TLB::IBaseline>& baseline);

    void ShowProjectInfo();
    void ShowRequirementTypeInfo(TTreeNode& node);
    // Reads the node's requirement and fills description, custom tabs and the frame
    // of the active tab. Re-enters the message loop while the description loads.
    void ShowRequirementInfo(TTreeNode& node);
    // The custom tabs of the current requirement, and the frame of the active tab.
    void ShowTabs();
    void ShowActivePageInfo();
    int ActiveRequirementTab() const override;

    void HandleSDKException(const std::exception& failure) override;

    // Writes the requirement and its description, gives the lock back and shows what
    // the server made of it. Raises Exception for an empty name, with nothing written
    // and the lock still held.
    void SaveCurrentRequirement();
    // Does nothing unless the current user holds the lock.
    void SaveCurrentRequirementIfNeeded();

    // The selected node must be a type's or a requirement's.
    Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode> CurrentRequirementTreeNode() const;
    // Raises Exception unless a requirement's node is selected.
    std::u16string CurrentRequirementName() const;

    const Quorane_TLB::Handle<Quorane_TLB::IProject>& Project() const { return FProject; }
    bool HandlingSDKException() const { return FHandlingSDKException; }

    // Pages and bars
    TNotebook* nbkParent;
    TPanel* pnlFormLogin;
    TPanel* HoldPanel;
    TPanel* pnlToolBars;
    TPanel* pnlProjectBaseline;
    TComboBox* cbxProjects;
    TComboBox* cbxProjectBaselines;
    TToolBar* tlbMainButtons;
    TToolBar* tlbDescription;
    TfraDescriptionToolbar* fraDescriptionToolbar;
    TToolButton* btnHierarchicalNumbers;
    TToolButton* btnSerialNumbers;
    TToolButton* btnCommentFormat;
    TToolButton* btnSearchById;
    TTreeView* trvRequirements;
    TSplitter* splContents;
    TNotebook* nbkContents;

    // Page "Project"
    TMemo* mmoProjectInfo;

    // Page "RequirementType"
    TEdit* edtReqTypeName;
    TEdit* edtReqTypeTag;
    TPageControl* pgcReqType;
    TMemo* mmoReqTypeDescription;
    TTabSheet* tbsCustomTabs;
    TListView* lstReqTypeCustomTabs;
    TListView* lstCustomTabAttributes;

    // Page "Requirement"
    TPageControl* pgcRequirement;
    TScrollBox* scbDetails;
    TfraDetails* fraDetails;
    TfraBaseRequirementFrame* fraTraceability;
    TfraValidation* fraValidation;
    TfraDiscussion* fraDiscussion;
    TfraReferences* fraReferences;
    TfraHistory* fraHistory;
    TfraResponsibilities* fraResponsibilities;
    TSplitter* DescriptionSplitter;
    TPanel* pnlDescription;
    TfraDescription* fraDescription;

    // Commands
    TImageList* imlQuorane;
    TImageList* imlTreeState;
    TImageList* imgTabs;
    TActionList* ActionManager;
    TAction* actSave;
    TAction* actCancelSave;
    TAction* actUnlock;
    TAction* actLogoff;
    TAction* actRefresh;
    TAction* actCreateRequirement;
    TAction* actCreateRequirementBelow;
    TAction* actCreateRequirementAbove;
    TAction* actMoveReqUp;
    TAction* actMoveReqDown;
    TAction* actDeleteReq;
    TAction* actRenameReq;
    TAction* actTallyworks;
    TAction* actInterestToggle;
    TPopupMenu* ppmRequirements;
    TPopupMenu* CommentingFormatPopupMenu;

private:
    // Widgets
    void MakeImages();
    void MakeActions();
    void MakeParent();
    void MakeToolBars(TWinControl& parent);
    void MakeProjectBar();
    void MakeMainButtons();
    void MakeCommentFormatMenu();
    void MakeTree(TWinControl& parent);
    void MakePopup();
    void MakeContents(TWinControl& parent);
    void MakeProjectPage();
    void MakeRequirementTypePage();
    void MakeCustomTabsSheet();
    void MakeRequirementPage();
    void MakeFixedTabs();
    static TfraBaseRequirementFrame* MakeTraceabilityFrame(TTabSheet& sheet);
    // The frames of the fixed tabs, by the tab's index.
    std::array<TfraBaseRequirementFrame*, rtFirstCustom> FixedFrames() const;
    void BindHandlers();

    // Life
    void FormCreate() override;
    void FormDestroy() override;
    void FormHide();
    void FormResize();

    // Connection
    void ProceedLogon();
    bool DoLogon();
    void FillProjects();
    void SelectProject(const Quorane_TLB::Handle<Quorane_TLB::IProject>& project);
    void FillBaseLines();
    void cbxProjectsChange();
    void cbxProjectBaselinesChange();
    void actRefreshExecute();
    void actLogoffExecute();

    // Tree
    void PouplateRequirementTypes();
    void trvRequirementsExpanding(TTreeNode& node);
    void trvRequirementsChange(TTreeNode* node);
    void trvRequirementsChanging();
    void btnHierarchicalNumbersClick();
    void btnSerialNumbersClick();
    void actInterestToggleExecute();
    void actInterestToggleUpdate();

    // Pages
    void pgcRequirementChange();
    void lstReqTypeCustomTabsSelectItem(TListItem& item, bool selected);
    void nbkContentsPageChanged();
    void ShowCustomTabAttributes(TListItem* item);
    void RefreshCustomTabs();
    void CreateCustomTabs();
    void CreateCustomTab(const Quorane_TLB::Handle<Quorane_TLB::ICustomTab>& tab);
    int AddTabImage(const Quorane_TLB::Handle<Quorane_TLB::ICustomTab>& tab);

    // Edit cycle
    void actSaveExecute();
    void actCancelSaveExecute();
    void actCancelSaveUpdate();
    void LockForDescription();
    void actUnlockExecute();
    void actUnlockUpdate();

    // Tree commands
    bool IsRequirementSelected() const;
    void SelectNewRequirement(TTreeNode& parent, std::int32_t parentID, std::int32_t createdID);
    void DemandCurrentBaseline() const;
    void CreateRequirementAsChild(TTreeNode& selected);
    void CreateRequirementOnTheSameLevel(bool above);
    void ForgetCachedTree();
    Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>
    FindReqTreeNode(const Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>& node, std::int32_t id);
    void MoveRequirementUp(const Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>& node);
    void MoveRequirementDown(const Quorane_TLB::Handle<Quorane_TLB::IRequirementTreeNode>& node);
    bool MoveAcceptedByUser(Quorane_TLB::ITreeNode& source, Quorane_TLB::ITreeNode& target);
    void MoveUnder(TTreeNode& source, TTreeNode& target);
    void actCreateRequirementExecute();
    void actCreateRequirementUpdate();
    void actCreateRequirementAboveExecute();
    void actCreateRequirementAboveUpdate();
    void actCreateRequirementBelowExecute();
    void actCreateRequirementBelowUpdate();
    void actMoveReqUpExecute();
    void actMoveReqUpUpdate();
    void actMoveReqDownExecute();
    void actDeleteReqExecute();
    void actRenameReqExecute();
    void actRenameReqUpdate();
    void actTallyworksExecute();
    void btnSearchByIdClick();
    void ppmRequirementsPopup();
    void trvRequirementsEditing(TTreeNode& node, std::string& text, bool& allow);
    void trvRequirementsEdited(const TTreeNode& node, std::string& text);
    void trvRequirementsKeyDown(TKey key, bool& handled);
    bool trvRequirementsDragOver(TWinControl* source, TPoint point);
    void trvRequirementsDragDrop(TPoint point);

    // Views
    void SetOrientation();
    void ResizeDescription();
    void ShowTab();
    void ReparentAndAlignComponents();
    void LeaveTab();
    bool CloseFrame();
    // What the panel shows does not depend on which tab is in front.
    void SelectFrame() {}
    void DeSelectFrame() {}
    friend void ShowDockableForm(TfrmQuoraneMain* form);

    TQuoraneGUIHelpers& FHelpers;
    // The current project; it survives a logoff. May be empty.
    Quorane_TLB::Handle<Quorane_TLB::IProject> FProject;
    // The tab in the host's editor area while it is open.
    std::shared_ptr<IHostTabFrame> FTabFrame;
    bool FHandlingSDKException = false;
    // While a cancel runs: the idle check must not take the lock again.
    bool FCancellingSave = false;
};

// The one panel; empty when it does not exist.
TfrmQuoraneMain* QuoranePanel();

// Makes the form, keeps it in the variable, and lets the host's desktop know both.
void CreateDockableForm(std::unique_ptr<TfrmQuoraneMain>& variable);
// Withdraws the variable from the host and destroys the form, if there is one.
void FreeDockableForm(std::unique_ptr<TfrmQuoraneMain>& variable);
// Docked forms come to the front and get the focus; then the tab shows as well. Does
// nothing for an empty form.
void ShowDockableForm(TfrmQuoraneMain* form);
