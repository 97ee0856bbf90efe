#include "tour/Chapters.h"
#include "tour/Tour.h"
#include "tour/TourServer.h"

#include "platform/widgets/Containers.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/look/Look.h"
#include "platform/widgets/tree/ListView.h"
#include "platform/widgets/tree/TreeView.h"

namespace {

const std::vector<std::string> SystemType{"System Requirement"};
const std::vector<std::string> Comfort{"System Requirement",
                                       "Keep every room at the temperature its people want"};

std::vector<std::string> Below(const std::vector<std::string>& path) {
    std::vector<std::string> whole{"Hearth Controller"};
    whole.insert(whole.end(), path.begin(), path.end());
    return whole;
}

std::vector<std::string> Children(TTreeNode& node) {
    std::vector<std::string> texts;
    for (TTreeNode* child = node.GetFirstChild(); child; child = child->GetNextSibling())
        texts.push_back(child->Text());
    return texts;
}

void OpenBranches(TTour& tour, TTourServer& server) {
    const auto baseline = server.Baseline("Hearth Controller", "Current");
    for (const auto& path : {SystemType, Comfort}) {
        TTreeNode& node = tour.User().Node("trvRequirements", Below(path));
        node.Expand(false);
        TActor::Settle();
        TTour::Check(Children(node) == server.ChildNames(server.Node(baseline, path)),
                     "the branch is not the server's: " + path.back());
    }
}

void SwitchNumbers(TTour& tour) {
    tour.User().Click("btnHierarchicalNumbers");
    tour.User().Click("btnSerialNumbers");
    auto& type = tour.User().Node("trvRequirements", Below(SystemType));
    const std::string label = type.GetFirstChild()->Text();
    TTour::Check(label.starts_with("1 Keep every room") && label.find(" - SYS") != std::string::npos,
                 "the label carries no numbers: " + label);
}

void ShowDetails(TTour& tour, TTourServer& server) {
    tour.User().SelectNode("trvRequirements", Below(Comfort));
    const auto baseline = server.Baseline("Hearth Controller", "Current");
    const auto requirement = server.Latest(server.Node(baseline, Comfort));
    using Quorane_TLB::Utf8;
    TTour::CheckEqual(tour.Text("edtRequirementName"), Utf8(requirement->Get_Name()), "name");
    TTour::CheckEqual(tour.Text("edtRequirementTagID"),
                      Utf8(requirement->Get_RequirementType()->Get_Tag()) +
                          std::to_string(requirement->Get_IDNumber()),
                      "tag and id");
    TTour::CheckEqual(tour.Text("cbxRequirementStatus"),
                      Quorane_TLB::VarToStr(requirement->Get_Status()->Get_SelectedValue()), "status");
    TTour::CheckEqual(tour.Text("cbxRequirementPriority"),
                      Quorane_TLB::VarToStr(requirement->Get_Priority()->Get_SelectedValue()), "priority");
    TTour::CheckEqual(tour.Text("cbxRequirementOwner"), Utf8(requirement->Get_Owner()->Get_Name()), "owner");
}

void ShowType(TTour& tour) {
    tour.User().SelectNode("trvRequirements", Below(SystemType));
    TTour::CheckEqual<std::string>(tour.Text("edtReqTypeTag"), "SYS", "tag");
    tour.User().ChooseTab("pgcReqType", "Custom Tabs");
    TTour::Check(tour.User().Get<TListView>("lstReqTypeCustomTabs").ItemCount() > 0,
                 "the custom tabs are not listed");
}

void ShowFrozenBaseline(TTour& tour, TTourServer& server) {
    tour.User().Choose("cbxProjectBaselines", "Release 1.0");
    auto& type = tour.User().Node("trvRequirements", Below(SystemType));
    type.Expand(false);
    TActor::Settle();
    const auto baseline = server.Baseline("Hearth Controller", "Release 1.0");
    TTour::Check(Children(type) == server.ChildNames(server.Node(baseline, SystemType)),
                 "the frozen tree is not the server's");
    tour.User().SelectNode("trvRequirements", Below(Comfort));
    TTour::Check(!tour.User().Find("edtRequirementName").isEnabled(), "a frozen requirement can be edited");
}

void HideAndShow(TTour& tour) {
    tour.User().Choose("cbxProjectBaselines", "Current");
    auto& panel = tour.User().Get<TDockableForm>("frmQuoraneMain");
    panel.HideForm();
    TActor::Settle();
    TTour::Check(!panel.FormVisible(), "the panel does not hide");
    tour.ChooseMenu("ViewQuoraneRequirementsItem");
    TTour::Check(panel.FormVisible(), "the panel does not come back");
}

} // namespace

void TourBrowse(TTour& tour) {
    TTourServer server("ben", "hearth-ben");
    tour.Step("open branches", [&] { OpenBranches(tour, server); });
    tour.Step("requirement type", [&] { ShowType(tour); });
    tour.Step("details", [&] { ShowDetails(tour, server); });
    for (const char* tab :
         {"Traceability", "Validation", "Discussion", "References", "History", "Responsibilities"})
        tour.Step(std::string("tab ") + tab, [&] { tour.User().ChooseTab("pgcRequirement", tab); });
    tour.Step("back to details", [&] { tour.User().ChooseTab("pgcRequirement", "Details"); });
    tour.Step("numbers in labels", [&] { SwitchNumbers(tour); });
    tour.Step("dark palette", [&] { ApplyLook(TPalette::Dark); });
    ApplyLook(TPalette::Light);
    tour.Step("plain labels again", [&] {
        tour.User().Click("btnHierarchicalNumbers");
        tour.User().Click("btnSerialNumbers");
    });
    tour.Step("frozen baseline", [&] { ShowFrozenBaseline(tour, server); });
    tour.Step("hide and show", [&] { HideAndShow(tour); });
    tour.Step("refresh", [&] {
        tour.User().Click("btnRefresh");
        TTour::CheckEqual<std::string>(tour.Text("cbxProjects"), "Hearth Controller",
                                       "project after refresh");
    });
}
