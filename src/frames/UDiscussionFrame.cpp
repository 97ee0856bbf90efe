#include "frames/UDiscussionFrame.h"

#include "contracts/SystemServices.h"
#include "frames/UQuoraneMessageForm.h"
#include "frames/URequirementPanel.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/VirtualTree.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

enum TColumn { SubjectColumn, FromColumn, DateColumn };
constexpr int ColumnWidth = 150;

const TVTNodeData& DataOf(const TTreeNode& node) {
    return *TVirtualTree::NodeData<TVTNodeData>(node);
}

} // namespace

TfraDiscussion::TfraDiscussion(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name)
    , imlQuorane(new TImageList(this, "imlQuorane")) {
    FillQuoraneImages(*imlQuorane);
    btnPostNew = new TButton(this, "btnPostNew", SDiscussionPostNew);
    btnPostNew->OnClick = [this] { actPostMessageExecute(); };
    btnPostReply = new TButton(this, "btnPostReply", SDiscussionPostReply);
    btnPostReply->OnClick = [this] { actPostReplyExecute(); };
    brnRefreshDiscussion = new TButton(this, "brnRefreshDiscussion", SDiscussionRefresh);
    brnRefreshDiscussion->OnClick = [this] { brnRefreshDiscussionClick(); };
    MakeTree();
    mmoDiscussionText = new TMemo(this, "mmoDiscussionText");
    mmoDiscussionText->SetReadOnly(true);
    mmoDiscussionText->SetAccessibleName(SDiscussionText);
    OnResize = [this] { FrameResize(); };
}

void TfraDiscussion::MakeTree() {
    trvRequirementDiscussion = new TVirtualTree(this, "trvRequirementDiscussion");
    trvRequirementDiscussion->SetAccessibleName(SDiscussionMessages);
    trvRequirementDiscussion->SetImages(imlQuorane);
    trvRequirementDiscussion->AddColumn(SDiscussionSubject, ColumnWidth);
    trvRequirementDiscussion->AddColumn(SDiscussionFrom, ColumnWidth);
    trvRequirementDiscussion->AddColumn(SDiscussionDate, ColumnWidth);
    trvRequirementDiscussion->OnChange = [this](TTreeNode* node) { trvRequirementDiscussionChange(node); };
    trvRequirementDiscussion->OnGetText = [this](TTreeNode& node, int column, std::string& text) {
        trvRequirementDiscussionGetText(node, column, text);
    };
    trvRequirementDiscussion->OnGetImageIndex = [this](TTreeNode&, int column, int& imageIndex) {
        trvRequirementDiscussionGetImageIndex(column, imageIndex);
    };
    trvRequirementDiscussion->OnPaintText = [this](TTreeNode& node, int, bool& bold) {
        trvRequirementDiscussionPaintText(node, bold);
    };
}

void TfraDiscussion::SetRequirement(const Handle<IRequirement>& requirement) {
    TfraBaseRequirementFrame::SetRequirement(requirement);
    RefreshDiscussion();
    EnableDisableControls();
}

void TfraDiscussion::RefreshDiscussion() {
    if (GetRequirement()) ForgetDiscussion();
    FSelectedMessage = nullptr;
    if (frmQuoraneMain->ActiveRequirementTab() != rtDiscussion) return;
    trvRequirementDiscussion->Clear();
    mmoDiscussionText->Clear();
    if (GetRequirement()) AddMessages(nullptr, GetRequirement()->Get_Discussion()->Get_Messages());
}

void TfraDiscussion::ForgetDiscussion() const {
    GetRequirement()->Get_Discussion()->Get_Manager()->Get_Cache()->clear();
}

void TfraDiscussion::AddMessages(TTreeNode* parent, const Handle<IStCollection>& messages) {
    const auto walk = EnumerableStCollection(messages)->GetEnumerator();
    while (walk->MoveNext()) {
        const auto message = Cast<IDiscussionMessage>(walk->GetCurrent());
        TTreeNode& node = trvRequirementDiscussion->AddNode(
            parent, TVTNodeData{Utf8(message->Get_Subject()), Utf8(message->Get_Author()->Get_Name()),
                                message->Get_Date(), message});
        AddMessages(&node, message->Get_Replies());
    }
}

void TfraDiscussion::trvRequirementDiscussionGetText(const TTreeNode& node, int column,
                                                     std::string& text) const {
    const TVTNodeData& message = DataOf(node);
    if (column <= SubjectColumn)
        text = message.Subject;
    else if (column == FromColumn)
        text = message.From;
    else if (column == DateColumn)
        text = SystemServices().DateTimeText(message.Date);
}

void TfraDiscussion::trvRequirementDiscussionGetImageIndex(int column, int& imageIndex) const {
    if (column <= SubjectColumn) imageIndex = imMessage;
}

void TfraDiscussion::trvRequirementDiscussionPaintText(const TTreeNode& node, bool& bold) const {
    bold = DataOf(node).Message->Get_Read() == WordFalse;
}

void TfraDiscussion::trvRequirementDiscussionChange(TTreeNode* node) {
    GuardServerCalls([&] {
        if (!node) return;
        const Handle<IDiscussionMessage> message = DataOf(*node).Message;
        mmoDiscussionText->SetText(message->Get_Body());
        FSelectedMessage = message;
        if (message->Get_Read() != WordFalse) return;
        message->Set_Read(WordTrue);
        ForgetDiscussion();
        GUIHelpers->UpdateCurrentRequirementStateImage();
    });
}

void TfraDiscussion::actPostMessageExecute() {
    GuardServerCalls([this] {
        TfrmQuoraneMessage dialog(nullptr);
        dialog.lblRequirementName->SetCaption(Utf8(GetRequirement()->Get_Name()));
        if (dialog.ShowModal() == TModalResult::Ok)
            GetRequirement()->Get_Discussion()->post(Wide(dialog.edtSubject->Text()),
                                                     Wide(dialog.mmoBody->Text()));
        RefreshDiscussion();
    });
}

void TfraDiscussion::actPostReplyExecute() {
    GuardServerCalls([this] {
        if (!FSelectedMessage) return;
        TfrmQuoraneMessage dialog(nullptr);
        dialog.SetCaption(SReplyMessageCaption);
        dialog.lblRequirementName->SetCaption(Utf8(GetRequirement()->Get_Name()));
        dialog.edtSubject->SetText(SReplyPrefix + Utf8(FSelectedMessage->Get_Subject()));
        if (dialog.ShowModal() != TModalResult::Ok) return;
        FSelectedMessage->reply(Wide(dialog.edtSubject->Text()), Wide(dialog.mmoBody->Text()));
        RefreshDiscussion();
    });
}

void TfraDiscussion::brnRefreshDiscussionClick() {
    GuardServerCalls([this] { RefreshDiscussion(); });
}

void TfraDiscussion::FrameResize() {
    const int width = ClientWidth() - 2 * FrameMargin;
    int left = FrameMargin;
    for (TButton* button : {btnPostNew, btnPostReply, brnRefreshDiscussion}) {
        button->SetLeft(left);
        button->SetTop(FrameMargin);
        left += button->Width() + ButtonGap;
    }
    trvRequirementDiscussion->SetLeft(FrameMargin);
    trvRequirementDiscussion->SetTop(btnPostNew->Top() + btnPostNew->Height() + FrameMargin);
    trvRequirementDiscussion->SetWidth(width);
    mmoDiscussionText->SetLeft(FrameMargin);
    mmoDiscussionText->SetWidth(width);
    GUIHelpers->ResizeEqually(*trvRequirementDiscussion, *mmoDiscussionText, StackGap);
}
