// How many round trips to the server each action of the user costs, on a session that
// has been used before.
#include "Limits.h"

#include "frames/UDetailsFrame.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/tree/TreeView.h"
#include "support/PanelStage.h"

namespace {

class TCounts {
public:
    explicit TCounts(TPanelStage& stage)
        : FStage(stage) {}

    void Count(const std::string& action, double limit, const std::function<void()>& steps) {
        FStage.Server->Calls.Clear();
        steps();
        TActor::Settle();
        std::string requests;
        for (const std::string& request : FStage.Server->Calls.Requests())
            requests += (requests.empty() ? "" : ", ") + request;
        FLimits.push_back({"round trips: " + action, limit,
                           static_cast<double>(FStage.Server->Calls.RoundTrips()), "", requests});
    }

    const TLimits& Limits() const { return FLimits; }

private:
    TPanelStage& FStage;
    TLimits FLimits;
};

TTreeNode& FirstType(TPanelStage& stage) {
    TTreeNode* node = stage.Panel().trvRequirements->GetFirstNode()->GetFirstChild();
    while (!node->HasChildren())
        node = node->GetNextSibling();
    return *node;
}

// The requirement on show gets another name, key by key, and is saved.
void CountEditing(TPanelStage& stage, TCounts& counts) {
    auto& name = *stage.Panel().fraDetails->edtRequirementName;
    const std::string text = name.Text();
    counts.Count("first keystroke", 1, [&] { name.SetText(text + "a"); });
    counts.Count("ten further keystrokes", 0, [&] {
        for (int key = 0; key < 10; ++key)
            name.SetText(name.Text() + "b");
    });
    counts.Count("idle, requirement locked", 0, [] {
        for (int turn = 0; turn < 100; ++turn)
            TActor::Settle();
    });
    counts.Count("save", 5, [&] { stage.Panel().actSave->Execute(); });
}

} // namespace

TLimits MeasureRoundTrips() {
    TPanelStage stage;
    TCounts counts(stage);
    counts.Count("logon to shown tree", 6, [&] { stage.LogOn(); });
    TTreeNode& type = FirstType(stage);
    counts.Count("open a branch", 1, [&] { type.Expand(false); });
    counts.Count("select a requirement, first of its type", 2, [&] { type.Item(0)->SetSelected(); });
    counts.Count("select another requirement", 1, [&] { type.Item(1)->SetSelected(); });
    const auto& tabs = *stage.Panel().pgcRequirement;
    for (int tab = rtFirstCustom - 1; tab >= 0; --tab) {
        const std::string caption = tabs.Page(tab).Caption();
        counts.Count("change to tab " + caption, 1,
                     [&] { stage.User->ChooseTab("pgcRequirement", caption); });
    }
    counts.Count("idle, requirement on show", 0, [] {
        for (int turn = 0; turn < 100; ++turn)
            TActor::Settle();
    });
    CountEditing(stage, counts);
    return counts.Limits();
}
