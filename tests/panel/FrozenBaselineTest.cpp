// Commands while a frozen baseline is on show: each says that it cannot be done there,
// and neither that baseline nor the current one changes.
#include "panel/PanelTest.h"

#include "backend/store/Database.h"

using testing::HasSubstr;

namespace {

class TFrozen : public TPanelTest {
protected:
    TFrozen() {
        LogOn();
        User->Choose("cbxProjectBaselines", "Release 1.0");
    }

    // All trees of the server, row by row.
    std::string Trees() {
        std::string text;
        Backend::Database database(Server->DatabasePath());
        Backend::Rows rows = database.Query(
            "select baseline_id || ' ' || parent_id || ' ' || order_key || ' ' || node_id || ' ' || "
            "coalesce(version_id, 0) from tree_node order by baseline_id, parent_id, order_key");
        while (rows.Next())
            text += rows.Text(0) + "\n";
        return text;
    }
};

struct TRefusedCommand {
    const char* Name;
    std::vector<std::string> Path;
    TAction* TfrmQuoraneMain::*Command;
    const char* Sentence;
};

void PrintTo(const TRefusedCommand& row, std::ostream* out) {
    *out << row.Name;
}

class TFrozenCommands : public TFrozen, public testing::WithParamInterface<TRefusedCommand> {};

TEST_P(TFrozenCommands, AreToldOnceAndChangeNoBaseline) {
    const TRefusedCommand& row = GetParam();
    TTreeNode& node = Select(row.Path);
    const std::string before = Trees();
    const std::vector<std::string> siblings = Children(*node.Parent());
    Dialogs.Answer(TMessageResult::Yes);
    ASSERT_TRUE((Panel().*row.Command)->Execute());
    TActor::Settle();
    EXPECT_THAT(OnlyError(), HasSubstr(row.Sentence));
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_TRUE(node.Selected());
    EXPECT_EQ(Children(*node.Parent()), siblings);
    EXPECT_EQ(Trees(), before);
    EXPECT_FALSE(Panel().actSave->Enabled());
}

constexpr const char* NothingCreated =
    "Nothing can be created in a frozen baseline. Select the current baseline first.";
constexpr const char* Frozen = "The baseline Release 1.0 is frozen.";
using TPanel = TfrmQuoraneMain;

INSTANTIATE_TEST_SUITE_P(
    , TFrozenCommands,
    testing::Values(
        TRefusedCommand{"FirstLevel", {FirmwareType}, &TPanel::actCreateRequirement, NothingCreated},
        TRefusedCommand{"Child", ZoneControl, &TPanel::actCreateRequirement, NothingCreated},
        TRefusedCommand{"AboveOnTheFirstLevel", ZoneControl, &TPanel::actCreateRequirementAbove,
                        NothingCreated},
        TRefusedCommand{"Above", FilterReadings, &TPanel::actCreateRequirementAbove, NothingCreated},
        TRefusedCommand{"Below", FilterReadings, &TPanel::actCreateRequirementBelow, NothingCreated},
        TRefusedCommand{"MoveDown", FilterReadings, &TPanel::actMoveReqDown, Frozen},
        TRefusedCommand{"Delete", FilterReadings, &TPanel::actDeleteReq, "cannot be removed there"},
        TRefusedCommand{"Rename", FilterReadings, &TPanel::actRenameReq, "cannot be changed there"}));

TEST_F(TFrozen, DraggingChangesNoBaseline) {
    TTreeNode& target = User->Node("trvRequirements", {Top().Text(), FirmwareType, "Schedule"});
    TTreeNode& source = Select(FilterReadings);
    const std::string before = Trees();
    User->DragNode(Tree(), source, target);
    EXPECT_THAT(OnlyError(), HasSubstr(Frozen));
    EXPECT_EQ(Trees(), before);
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), "Zone control");
}

} // namespace
