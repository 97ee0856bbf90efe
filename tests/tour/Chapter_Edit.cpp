#include "tour/Chapters.h"
#include "tour/Tour.h"
#include "tour/TourServer.h"

#include "platform/widgets/tree/TreeView.h"

#include <QLineEdit>
#include <QTest>

namespace {

using Quorane_TLB::Utf8;

constexpr int RequirementImage = 3;
constexpr int PadlockImage = 23;
const std::string Project = "Hearth Controller";
const std::string Type = "System Requirement";
const std::string Comfort = "Keep every room at the temperature its people want";

// The requirements of the type's first level, and one below the first of them.
class TEditing {
public:
    explicit TEditing(TTour& tour)
        : FTour(tour)
        , FServer("ben", "hearth-ben")
        , FBaseline(FServer.Baseline(Project, "Current")) {}

    TTreeView& Tree() { return FTour.User().Get<TTreeView>("trvRequirements"); }
    TTreeNode& Select(const std::vector<std::string>& below) {
        std::vector<std::string> path{Project, Type};
        path.insert(path.end(), below.begin(), below.end());
        return FTour.User().SelectNode("trvRequirements", path);
    }
    // As the server has it now.
    Quorane_TLB::Handle<Quorane_TLB::IRequirement> OnServer(const std::vector<std::string>& below) {
        return FServer.Latest(NodeOnServer(below));
    }
    std::vector<std::string> ChildrenOnServer(const std::vector<std::string>& below) {
        return FServer.ChildNames(NodeOnServer(below));
    }
    void TypeIntoNode(const std::string& text) {
        TTour::Check(Tree().IsEditing(), "the label is not being edited");
        auto* editor = Tree().findChild<QLineEdit*>();
        editor->selectAll();
        QTest::keyClicks(editor, QString::fromStdString(text));
        QTest::keyClick(editor, Qt::Key_Return);
        TActor::Settle();
    }
    void CheckClean(const std::string& when) {
        TTour::Check(Tree().Selected()->ImageIndex() == RequirementImage, "the padlock stays " + when);
        TTour::Check(!FTour.User().Find("btnSave").isEnabled(), "Save stays enabled " + when);
    }
    void CheckChanged() {
        TTour::Check(Tree().Selected()->ImageIndex() == PadlockImage, "no padlock shows");
        TTour::Check(FTour.User().Find("btnSave").isEnabled(), "Save is not enabled");
    }

private:
    Quorane_TLB::Handle<Quorane_TLB::ITreeNode> NodeOnServer(const std::vector<std::string>& below) {
        FServer.Forget(FBaseline);
        std::vector<std::string> path{Type};
        path.insert(path.end(), below.begin(), below.end());
        return FServer.Node(FBaseline, path);
    }

    TTour& FTour;
    TTourServer FServer;
    Quorane_TLB::Handle<Quorane_TLB::IBaseline> FBaseline;
};

void ChangeStatus(TTour& tour, TEditing& editing) {
    editing.Select({Comfort});
    tour.User().ChooseTab("pgcRequirement", "Details");
    editing.CheckClean("on a requirement that nobody touched");
    tour.User().Choose("cbxRequirementStatus", "Accepted");
    editing.CheckChanged();
    // A second client is refused.
    std::string refusal;
    try {
        editing.OnServer({Comfort})->lock();
    } catch (const std::exception& failure) {
        refusal = failure.what();
    }
    TTour::Check(refusal.find("ObjectLockedException") != std::string::npos,
                 "a second client got the lock: " + refusal);
}

void Save(TTour& tour, TEditing& editing) {
    const std::string before = tour.Text("edtRequirementVersion");
    tour.User().Click("btnSave");
    editing.CheckClean("after the save");
    TTour::CheckEqual<std::string>(
        Quorane_TLB::VarToStr(editing.OnServer({Comfort})->Get_Status()->Get_SelectedValue()), "Accepted",
        "the status on the server");
    TTour::Check(tour.Text("edtRequirementVersion") != before, "the save made no version");
}

void Cancel(TTour& tour, TEditing& editing) {
    tour.User().Type("edtRequirementName", "A name that will not stay");
    editing.CheckChanged();
    tour.User().Click("btnCancelSave");
    editing.CheckClean("after the cancel");
    TTour::CheckEqual(tour.Text("edtRequirementName"), Comfort, "the name after the cancel");
    TTour::CheckEqual(Utf8(editing.OnServer({Comfort})->Get_Name()), Comfort, "the name on the server");
}

void BeRefused(TTour& tour, TEditing& editing) {
    const auto held = editing.OnServer({Comfort});
    held->lock();
    tour.User().Choose("cbxRequirementPriority", "Could");
    const auto errors = tour.Dialogs().TakeErrors();
    TTour::Check(errors == std::vector<std::string>{"The object requested is currently locked."},
                 "the refused lock was not told");
    editing.CheckClean("after a refused lock");
    held->unlock();
}

void CreateChild(TTour& tour, TEditing& editing) {
    editing.Select({Comfort});
    tour.User().ChooseTab("pgcRequirement", "Details");
    tour.User().Click("btnCreateRequirement");
    tour.Picture("a new requirement gets its name", tour.Studio().Window());
    editing.TypeIntoNode("Stay quiet at night");
    tour.User().Click("btnSave");
    editing.CheckClean("after the new requirement's save");
    TTour::CheckEqual<std::string>(editing.ChildrenOnServer({Comfort}).back(), "Stay quiet at night",
                                   "the new requirement");
}

void InsertBeforeAndAfter(TTour& tour, TEditing& editing) {
    editing.Select({Comfort, "Stay quiet at night"});
    tour.User().Click("btnInsertBefore");
    editing.TypeIntoNode("Before the night");
    editing.Select({Comfort, "Stay quiet at night"});
    tour.User().Click("btnInsertAfter");
    editing.TypeIntoNode("After the night");
    tour.User().Click("btnSave");
    std::vector<std::string> names = editing.ChildrenOnServer({Comfort});
    names.erase(names.begin(), names.end() - 3);
    TTour::Check(names ==
                     std::vector<std::string>{"Before the night", "Stay quiet at night", "After the night"},
                 "the inserted requirements do not stand beside it");
}

void DeleteTheInserted(TTour& tour, TEditing& editing) {
    for (const char* name : {"Before the night", "After the night"}) {
        editing.Select({Comfort, name});
        tour.Dialogs().Answer(TMessageResult::Yes);
        tour.User().Click("btnDeleteRequirement");
        tour.Dialogs().TakeMessages();
    }
    TTour::CheckEqual<std::string>(editing.ChildrenOnServer({Comfort}).back(), "Stay quiet at night",
                                   "the last child");
}

void RenameAndMove(TTour& tour, TEditing& editing) {
    editing.Select({Comfort, "Stay quiet at night"});
    tour.User().Key("trvRequirements", Qt::Key_F2);
    editing.TypeIntoNode("Be quiet at night");
    tour.User().Click("btnSave");
    tour.User().Click("btnMoveRequirementUp");
    const std::vector<std::string> wanted{"Hold the wanted temperature", "Be quiet at night",
                                          "Follow a weekly schedule"};
    TTour::Check(editing.ChildrenOnServer({Comfort}) == wanted, "the move is not on the server");
    TTour::CheckEqual<std::string>(editing.Tree().Selected()->Text(), "Be quiet at night", "the selection");
}

void DragAndDelete(TTour& tour, TEditing& editing) {
    TTreeNode& node = editing.Select({Comfort, "Be quiet at night"});
    TTreeNode& target = tour.User().Node("trvRequirements", {Project, Type, "Be installed within one hour"});
    tour.User().DragNode(editing.Tree(), node, target);
    TTour::CheckEqual<std::string>(editing.ChildrenOnServer({"Be installed within one hour"}).back(),
                                   "Be quiet at night", "the dragged requirement");
    tour.Dialogs().Answer(TMessageResult::Yes);
    tour.User().Key("trvRequirements", Qt::Key_Delete);
    const auto asked = tour.Dialogs().TakeMessages();
    TTour::Check(asked.size() == 1 && asked[0].Caption == "Confirmation", "no question before the deletion");
    TTour::Check(editing.ChildrenOnServer({"Be installed within one hour"}).back() != "Be quiet at night",
                 "the requirement is still on the server");
}

void FindById(TTour& tour, TEditing& editing) {
    const auto wanted = editing.OnServer({Comfort, "Hold the wanted temperature"});
    const std::string number = std::to_string(wanted->Get_IDNumber());
    tour.User().WhenModal([&](TForm& form) {
        TActor actor(form.Widget());
        actor.Type("edtID", "SYS " + number);
        tour.Picture("find by id", form.Widget());
        actor.Click("btnFind");
    });
    tour.User().Click("btnSearchById");
    TTour::CheckEqual<std::string>(editing.Tree().Selected()->Text(), "Hold the wanted temperature",
                                   "the requirement found");
}

} // namespace

void TourEdit(TTour& tour) {
    TEditing editing(tour);
    tour.Step("changed status locks", [&] { ChangeStatus(tour, editing); });
    tour.Step("save", [&] { Save(tour, editing); });
    tour.Step("cancel", [&] { Cancel(tour, editing); });
    tour.Step("refused by a second client", [&] { BeRefused(tour, editing); });
    tour.Step("create a child", [&] { CreateChild(tour, editing); });
    tour.Step("insert before and after", [&] { InsertBeforeAndAfter(tour, editing); });
    tour.Step("delete the inserted", [&] { DeleteTheInserted(tour, editing); });
    tour.Step("rename and move", [&] { RenameAndMove(tour, editing); });
    tour.Step("drag and delete", [&] { DragAndDelete(tour, editing); });
    tour.Step("find by id", [&] { FindById(tour, editing); });
}
