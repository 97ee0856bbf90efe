// What the pointer finds in a description: words, and the glossaries' terms among them.
#include "description/DescriptionTest.h"

#include "description/UGlossaryHintForm.h"

namespace {

class TDescriptionGlossary : public TDescriptionTest {
protected:
    // A word on each line, in letters large enough to point at.
    TDescriptionGlossary() {
        RunInStore("insert into glossary_term (glossary_id, position, name, definition) "
                   "select id, 1000, 'demand', 'Asked for.' from glossary where name = 'Safety terms';"
                   "insert into glossary_term (glossary_id, position, name, definition) "
                   "select id, 1000, 'frost', 'Ice.' from glossary where name = 'Heating terms'");
        LogOn();
        Change(ZoneControl, [](const TReq& requirement) {
            requirement->Get_Description()->Set_Text(
                u"<font size=\"6\">demand<br>Demand<br>frost guard<br>watch<b>dog</b></font>");
        });
    }

    // Shows a requirement after another user has changed it.
    void Change(const std::vector<std::string>& path, const std::function<void(const TReq&)>& change) {
        Select(path);
        const std::int32_t number = SelectedNumber();
        Select({FirmwareType});
        ChangeAsBen(number, change);
        Select(path);
    }

    // Moves the pointer onto a line, and waits until the page has told of the move.
    void Point(int line) {
        const auto calls = Frame().wbrReqDescription->EngineCalls();
        QTest::mouseMove(&Page(), QPoint(30 + ++FMoves % 3, 24 + 37 * line));
        ASSERT_TRUE(WaitUntil([&] { return Frame().wbrReqDescription->EngineCalls() > calls; }));
        FCalls = Frame().wbrReqDescription->EngineCalls() - calls;
    }
    std::string Shown() {
        if (!frmGlossaryHint->Visible()) return {};
        return frmGlossaryHint->lblGlossaryName->Caption() + ": " +
               frmGlossaryHint->lblDefinition->Caption().substr(0, 9);
    }

    // A move to where the pointer is already, from an earlier case too, is none.
    static inline int FMoves = 0;
    std::int64_t FCalls = 0;
};

TEST_F(TDescriptionGlossary, TermUnderThePointerIsExplainedInItsExactSpelling) {
    struct TRow {
        int Line;
        const char* Word;
        const char* Hint;
    };
    for (const TRow& row : {TRow{0, "demand", "Safety terms: Asked for"}, TRow{1, "Demand", ""},
                            TRow{2, "frost", "Heating terms: Ice."},
                            TRow{3, "watchdog", "Safety terms: A timer i"}, TRow{6, "", ""}}) {
        Point(row.Line);
        EXPECT_EQ(Quorane_TLB::Utf8(Frame().CurrentDescriptionElement()), row.Word);
        EXPECT_EQ(Shown(), row.Hint) << row.Word;
    }
}

TEST_F(TDescriptionGlossary, TermInTheTextOfAKeyReferenceIsExplained) {
    Change(GuardAgainstFrost, [](const TReq& requirement) {
        const auto references = requirement->Get_DocumentReferences();
        Quorane_TLB::Cast<Quorane_TLB::ITextReference>(references->Get_Item(0).AsDispatch())
            ->Set_Text(u"demand");
        requirement->Set_DocumentReferences(references);
    });
    ASSERT_TRUE(Frame().isKeyReferenced());
    Point(0);
    EXPECT_EQ(Shown(), "Safety terms: Asked for");
}

TEST_F(TDescriptionGlossary, HintStandsBesideThePointer) {
    Point(0);
    const QPoint pointer = QCursor::pos();
    EXPECT_EQ(frmGlossaryHint->Left(), pointer.x() + 10);
    EXPECT_EQ(frmGlossaryHint->Top(), pointer.y() + 5);
}

TEST_F(TDescriptionGlossary, MoveAfterTheFirstCostsOneCallAndNoRoundTrip) {
    Point(0);
    Server->Calls.Clear();
    for (const int line : {1, 2, 3, 0, 6}) {
        Point(line);
        EXPECT_EQ(FCalls, 1) << line;
    }
    EXPECT_EQ(Server->Calls.RoundTrips(), 0);
}

TEST_F(TDescriptionGlossary, FailureOfTheServerIsToldAndTheNextMoveAsksAgain) {
    Server->Calls.FailOperation("IProject.Get_Glossaries", "ObjectNotFoundException: gone");
    Point(0);
    EXPECT_NE(OnlyError(), "");
    EXPECT_EQ(Shown(), "");
    Point(1);
    Point(0);
    EXPECT_NE(Shown(), "");
}

TEST_F(TDescriptionGlossary, HintGoesWithTheDocumentOrThePointer) {
    const std::vector<std::pair<const char*, std::function<void()>>> rows = {
        {"key reference", [this] { Select(GuardAgainstFrost); }},
        {"type", [this] { Select({FirmwareType}); }},
        {"pointer",
         [this] {
             QTest::mouseMove(&NameEdit(), {5, 5});
         }},
    };
    for (const auto& [name, leave] : rows) {
        Select(ZoneControl);
        Point(0);
        ASSERT_NE(Shown(), "") << name;
        leave();
        EXPECT_TRUE(WaitUntil([this] { return Shown().empty(); })) << name;
    }
}

TEST_F(TDescriptionGlossary, HintGoesWithThePanel) {
    Point(0);
    ASSERT_NE(Shown(), "");
    TfrmQuoraneMain::RemoveForm();
    EXPECT_EQ(frmGlossaryHint, nullptr);
}

} // namespace
