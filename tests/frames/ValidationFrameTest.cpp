// The validation procedure of a requirement, shown and edited.
#include <gtest/gtest.h>

#include "frames/FramesFixture.h"
#include "frames/UValidationFrame.h"
#include "platform/widgets/Edits.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;

namespace {

class ValidationFrame : public TFramesTest {
protected:
    ValidationFrame() {
        ON_CALL(*Requirement, Get_Validation()).WillByDefault(Return(u"Measure twice"));
        ON_CALL(*Requirement, Set_Validation(_)).WillByDefault([this](const std::u16string& text) {
            Log.push_back("validation:" + Utf8(text));
        });
    }

    TfraValidation Frame{&Host};
};

TEST_F(ValidationFrame, FillingShowsTheTextWithoutALock) {
    Fill(Frame);
    EXPECT_EQ(Frame.mmoValidationProcedure->Text(), "Measure twice");
    EXPECT_TRUE(Frame.mmoValidationProcedure->Enabled());
    EXPECT_TRUE(Log.empty());
}

TEST_F(ValidationFrame, OneBlankShowsAsItIs) {
    ON_CALL(*Requirement, Get_Validation()).WillByDefault(Return(u" "));
    Fill(Frame);
    EXPECT_EQ(Frame.mmoValidationProcedure->Text(), " ");
}

TEST_F(ValidationFrame, AnEditLocksBeforeItIsWritten) {
    Fill(Frame);
    Frame.mmoValidationProcedure->SetText(std::string("Cut once"));
    EXPECT_THAT(Log, ElementsAre("lock", "validation:Cut once"));
}

TEST_F(ValidationFrame, AnEmptiedTextIsStoredAsOneBlank) {
    Fill(Frame);
    Frame.mmoValidationProcedure->Clear();
    EXPECT_THAT(Log, ElementsAre("lock", "validation: "));
}

TEST_F(ValidationFrame, ARefusedLockWritesNothingAndKeepsTheText) {
    Fill(Frame);
    Gate.Refusal = "The object requested is currently locked.";
    Frame.mmoValidationProcedure->SetText(std::string("Mine"));
    EXPECT_THAT(Log, ElementsAre("lock"));
    EXPECT_EQ(Frame.mmoValidationProcedure->Text(), "Mine");
    EXPECT_THAT(Dialogs.Errors(), ElementsAre(Gate.Refusal));
}

TEST_F(ValidationFrame, AFrozenBaselineDisablesTheMemo) {
    InFrozenBaseline();
    Fill(Frame);
    EXPECT_FALSE(Frame.mmoValidationProcedure->Enabled());
}

} // namespace
