// A description on its way from the server into the page, changed there, and back.
#include "description/DescriptionTest.h"

using namespace Quorane_TLB;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

class TDescriptionEdit : public TDescriptionTest {
protected:
    TDescriptionEdit() {
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
        FText = DescriptionOnServer(FNumber);
    }
    std::int32_t FNumber;
    std::string FText;
};

TEST_F(TDescriptionEdit, ShowsTheDescriptionForEditing) {
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "On");
    EXPECT_FALSE(Frame().IsDirty());
    EXPECT_FALSE(Locked());
}

TEST_F(TDescriptionEdit, TypingTakesTheLockAndASaveWritesTheText) {
    ClickIntoText();
    TypeIntoPage(" Checked twice.");
    ASSERT_TRUE(WaitForLock());
    EXPECT_EQ(SelectedImage(), imRequirementLocked);
    EXPECT_TRUE(WaitForHtml("Checked twice."));
    TActor::Settle();
    EXPECT_TRUE(Panel().actSave->Enabled());
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("Checked twice."));
    EXPECT_THAT(Html(), HasSubstr("Checked twice."));
    EXPECT_FALSE(Frame().IsDirty());
    EXPECT_FALSE(Locked());
}

TEST_F(TDescriptionEdit, ACancelBringsTheStoredTextBack) {
    ClickIntoText();
    TypeIntoPage("never");
    ASSERT_TRUE(WaitForLock());
    User->Click("btnCancelSave");
    EXPECT_THAT(Html(), Not(HasSubstr("never")));
    EXPECT_EQ(DescriptionOnServer(FNumber), FText);
    EXPECT_FALSE(Frame().IsDirty());
}

TEST_F(TDescriptionEdit, ABlankComesBackWhereItWasEscaped) {
    DescribeAsBen(FNumber, u"<p>a%20b</p><p><a href=\"http://c/d%20e\">f</a></p>");
    User->Click("btnRefresh");
    Select(ZoneControl);
    const std::string html = Utf8(Frame().GetDocumentHTML());
    EXPECT_THAT(html, HasSubstr("a b"));
    EXPECT_THAT(html, HasSubstr("http://c/d e"));
}

TEST_F(TDescriptionTest, AskingForChangesLoadsADescriptionThatWasNot) {
    LogOn();
    TTreeNode& node = User->Node("trvRequirements", {Top().Text(), FirmwareType, "Zone control"});
    EXPECT_EQ(Frame().GetDocumentHTML(), u"");
    EXPECT_FALSE(Frame().wbrReqDescription->Started());
    Helpers().CurrentRequirement = RequirementContainer(&node).GetRequirement();
    EXPECT_FALSE(Frame().IsDirty());
    EXPECT_THAT(Html(), HasSubstr("heat <b>demand</b>"));
    const auto requests = Server->Calls.RoundTrips();
    EXPECT_FALSE(Frame().IsDirty());
    EXPECT_EQ(Server->Calls.RoundTrips(), requests);
}

TEST_F(TDescriptionEdit, ASaveWritesADescriptionThatHasNotChangedAsItWas) {
    User->Type("edtRequirementName", "Zones");
    User->Click("btnSave");
    EXPECT_TRUE(Called("IRequirementDescription.Set_Text"));
    EXPECT_EQ(DescriptionOnServer(FNumber), FText);
}

TEST_F(TDescriptionEdit, AKeyReferenceIsShownAndCannotBeEdited) {
    Select(GuardAgainstFrost);
    EXPECT_TRUE(Frame().isKeyReferenced());
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "Off");
    ClickIntoText();
    NameEdit().SetFocus();
    ClickIntoText();
    const std::string before = Html();
    const auto calls = Frame().wbrReqDescription->EngineCalls();
    TypeIntoPage("x");
    EXPECT_TRUE(WaitUntil([&] { return Frame().wbrReqDescription->EngineCalls() > calls; }));
    KeyIntoPage(Qt::Key_Tab);
    EXPECT_EQ(Html(), before);
    EXPECT_FALSE(Frame().IsDirty());
    EXPECT_FALSE(BarEnabled());
    Select(ZoneControl);
    EXPECT_FALSE(Frame().isKeyReferenced());
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "On");
    ClickIntoText();
    EXPECT_TRUE(BarEnabled());
}

TEST_F(TDescriptionEdit, TheFirstOfSeveralKeyReferencesIsShown) {
    RunInStore("drop index document_reference_key");
    for (const char* kind : {"1", "2", "3", "4"}) {
        RunInStore(std::string("pragma ignore_check_constraints = 1;"
                               "create temp table at as select max(id) id from requirement_version "
                               "where name = 'Guard against frost';"
                               "delete from document_reference where version_id = (select id from at);"
                               "insert into document_reference select id, 0, 3, 'none', '', 0 from at;"
                               "insert into document_reference select id, 1, ") +
                   kind +
                   ", 'first', 'first', 1 from at;"
                   "insert into document_reference select id, 2, 3, 'second', '', 1 from at");
        User->Click("btnRefresh");
        Select(GuardAgainstFrost);
        if (*kind == '4') {
            EXPECT_THAT(OnlyError(), HasSubstr("DocumentRefernce can be only of 3 types"));
            continue;
        }
        EXPECT_THAT(Html(), AllOf(HasSubstr("first"), Not(HasSubstr("none")), Not(HasSubstr("second"))))
            << kind;
    }
}

TEST_F(TDescriptionEdit, ASaveLeavesTheDescriptionUnderAKeyReferenceAsItWas) {
    Select(GuardAgainstFrost);
    const std::int32_t number = SelectedNumber();
    const std::string before = DescriptionOnServer(number);
    User->Type("edtRequirementName", "Guard against ice");
    User->Click("btnSave");
    EXPECT_EQ(NameOnServer(number), "Guard against ice");
    EXPECT_EQ(DescriptionOnServer(number), before);
}

} // namespace
