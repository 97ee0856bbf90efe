// The tab with the revisions of a requirement and, below them, what changed in the
// selected one. It only reads.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class TListItem;
class TListView;

class TfraHistory : public TfraBaseRequirementFrame {
public:
    explicit TfraHistory(TWinControl* parent, const std::string& name = "fraHistory");

    void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement) override;
    // Reads the revisions, newest or oldest first as the server gives them, and
    // selects the first.
    void ShowHistory();

    TListView* lstHistory;
    TListView* lstChanges;

private:
    void AddRevision(const Quorane_TLB::Handle<Quorane_TLB::IHistoryRevision>& revision);
    void AddChange(const Quorane_TLB::Handle<Quorane_TLB::IHistoryChange>& change);
    void lstHistorySelectItem(TListItem& item, bool selected);
    void FrameResize();
};
