// The tab with the discussion of a requirement: messages with replies below them, and
// the text of the selected message. Selecting a message marks it as read.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class TButton;
class TImageList;
class TMemo;
class TTreeNode;
class TVirtualTree;

// The record in each node of the tree.
struct TVTNodeData {
    std::string Subject;
    std::string From;
    double Date = 0; // days since 30 December 1899
    Quorane_TLB::Handle<Quorane_TLB::IDiscussionMessage> Message;
};

class TfraDiscussion : public TfraBaseRequirementFrame {
public:
    explicit TfraDiscussion(TWinControl* parent, const std::string& name = "fraDiscussion");

    void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement) override;
    // Forgets what was read of the discussion and, while its tab is on show, reads it
    // again; no message is selected for a reply then.
    void RefreshDiscussion();

    TButton* btnPostNew;
    TButton* btnPostReply;
    TButton* brnRefreshDiscussion;
    TVirtualTree* trvRequirementDiscussion;
    TMemo* mmoDiscussionText;

private:
    void MakeTree();
    void ForgetDiscussion() const;
    void AddMessages(TTreeNode* parent, const Quorane_TLB::Handle<Quorane_TLB::IStCollection>& messages);
    void actPostMessageExecute();
    void actPostReplyExecute();
    void brnRefreshDiscussionClick();
    void trvRequirementDiscussionChange(TTreeNode* node);
    void trvRequirementDiscussionGetText(const TTreeNode& node, int column, std::string& text) const;
    void trvRequirementDiscussionGetImageIndex(int column, int& imageIndex) const;
    void trvRequirementDiscussionPaintText(const TTreeNode& node, bool& bold) const;
    void FrameResize();

    TImageList* imlQuorane;
    // What a reply would answer; may be empty.
    Quorane_TLB::Handle<Quorane_TLB::IDiscussionMessage> FSelectedMessage;
};
