// Entries that the server cannot take, and texts that look as if it could not: each is
// saved exactly as it was entered, or refused in a sentence with the entry still on show.
#include "backend/store/Database.h"
#include "panel/PanelTest.h"

#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Quorane_TLB;
using testing::HasSubstr;

namespace {

const std::string Planning = "Planning", Safety = "Safety";
const std::string Colorful = "\U0001F525 20\u00a0\u00b0C \u5bb6 <b>&amp;";
const std::string WithNul("a\0b", 3);

class TTextFaults : public TPanelTest {
public:
    TTextFaults() {
        LogOn("ben");
        Select(Implausible);
    }

    // The widget on that tab; for a custom tab the one that the number stands for.
    TWinControl& Open(const std::string& tab, const std::string& name) {
        User->ChooseTab("pgcRequirement", tab);
        if (tab == "References") User->Click("btnNewText");
        if (tab != Planning && tab != Safety) return User->Get<TWinControl>(name);
        const std::string box = "ctl_ctl_pgcRequirement_" + std::string(tab == Planning ? "8" : "9") + "_1";
        return User->Get<TWinControl>("ctl_" + box + "_" + name);
    }
    // Puts the text in place of what stands there, as a user pastes it.
    static void Paste(TWinControl& control, const std::string& text) {
        const QString pasted = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        if (auto* edit = dynamic_cast<QLineEdit*>(&control)) {
            edit->selectAll();
            edit->insert(pasted);
        } else {
            auto& memo = dynamic_cast<QPlainTextEdit&>(control);
            memo.selectAll();
            memo.insertPlainText(pasted);
        }
        TActor::Settle();
    }
    static std::string Shown(TWinControl& control) {
        if (auto* memo = dynamic_cast<TMemo*>(&control)) return memo->Text();
        return dynamic_cast<TEdit&>(control).Text();
    }
    using TPanelTest::ValueOf;
    std::string OnServer(const std::function<std::string(const TReq&)>& read) {
        return read(ReadAs("admin", SelectedNumber()));
    }
    // Behind the server's back: the list's attribute does not have the entry any more.
    void LoseEntry(const std::string& entry) {
        Backend::Database database(Server->DatabasePath());
        EXPECT_EQ(database.Run("delete from attribute_entry where text_entry = $1", entry), 1);
        database.Run("update requirement_type set revision = revision + 1");
    }
    // The errors of a save; those that came up at once when it was entered otherwise.
    std::vector<std::string> ErrorsOfSave() {
        if (Dialogs.Errors().empty()) User->Click("btnSave");
        return Dialogs.TakeErrors();
    }
};

struct TField {
    const char* Name;
    std::string Tab, Widget;
    std::function<std::string(const Handle<IRequirement>&)> Read;
};

void PrintTo(const TField& row, std::ostream* out) {
    *out << row.Name;
}

std::string LastReference(const Handle<IRequirement>& requirement) {
    const auto references = requirement->Get_DocumentReferences();
    const auto last = references->Get_Item(references->Get_Count() - 1).AsDispatch();
    return Utf8(Cast<ITextReference>(last)->Get_Text());
}

class TTextFields : public TTextFaults, public testing::WithParamInterface<TField> {};

TEST_P(TTextFields, KeepEveryCharacterOrSayWhichOneTheyCannot) {
    const TField& field = GetParam();
    Paste(Open(field.Tab, field.Widget), Colorful);
    EXPECT_THAT(ErrorsOfSave(), testing::IsEmpty());
    EXPECT_EQ(OnServer(field.Read), Colorful);
    TWinControl& again = Open(field.Tab, field.Widget);
    Paste(again, WithNul);
    const std::vector<std::string> errors = ErrorsOfSave();
    ASSERT_EQ(errors.size(), 1U) << "on the server: " << OnServer(field.Read);
    EXPECT_THAT(errors[0], HasSubstr("holds the character NUL"));
    EXPECT_EQ(Shown(again), WithNul);
    EXPECT_TRUE(Panel().actSave->Enabled());
    Paste(again, "plain");
    EXPECT_THAT(ErrorsOfSave(), testing::IsEmpty());
    EXPECT_EQ(OnServer(field.Read), "plain");
}

INSTANTIATE_TEST_SUITE_P(
    , TTextFields,
    testing::Values(TField{"Name", "Details", "edtRequirementName",
                           [](const auto& requirement) { return Utf8(requirement->Get_Name()); }},
                    TField{"Validation", "Validation", "mmoValidationProcedure",
                           [](const auto& requirement) { return Utf8(requirement->Get_Validation()); }},
                    TField{"Reference", "References", "mmoReferenceDescription", LastReference},
                    TField{"ShortAttribute", Safety, "9",
                           [](const auto& it) { return TTextFaults::ValueOf(it, u"Hazard"); }},
                    TField{"LongAttribute", Safety, "11",
                           [](const auto& it) { return TTextFaults::ValueOf(it, u"Safety argument"); }}));

struct TBadEntry {
    const char* Name;
    std::string Tab, Widget, Text, Sentence;
};

void PrintTo(const TBadEntry& row, std::ostream* out) {
    *out << row.Name;
}

class TBadEntries : public TTextFaults, public testing::WithParamInterface<TBadEntry> {};

TEST_P(TBadEntries, AreToldOnceAndStayOnShow) {
    const TBadEntry& row = GetParam();
    const std::string version = Panel().fraDetails->edtRequirementVersion->Text();
    TWinControl& control = Open(row.Tab, row.Widget);
    Paste(control, row.Text);
    const std::vector<std::string> errors = ErrorsOfSave();
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_THAT(errors[0], HasSubstr(row.Sentence));
    EXPECT_EQ(Shown(control), row.Text);
    EXPECT_EQ(SelectedImage(), imRequirementLocked);
    const auto kept = ReadAs("admin", SelectedNumber())->Get_Version();
    EXPECT_EQ(std::to_string(kept->Get_MajorVersion()) + "." + std::to_string(kept->Get_MinorVersion()),
              version);
}

INSTANTIATE_TEST_SUITE_P(
    , TBadEntries,
    testing::Values(
        TBadEntry{"LongName", "Details", "edtRequirementName", std::string(10'000, 'n'),
                  "name is longer than 255 characters"},
        TBadEntry{"LongAttribute", Safety, "9", std::string(121, 'h'),
                  "\"Hazard\" is longer than 120 characters"},
        TBadEntry{"LettersForANumber", Planning, "8", "many", "'many' is not"},
        TBadEntry{"NoNumber", Planning, "8", "", "'' is not"},
        TBadEntry{"LettersForAFraction", Safety, "3", "soon", "'soon' is not"},
        TBadEntry{"TooLargeNumber", Planning, "8", "41", "\"Story points\" takes values from 0 to 40"},
        TBadEntry{"NumberBeyondAllBounds", Planning, "8", "99999999999", "'99999999999' is not"},
        TBadEntry{"TooLongDuration", Planning, "2", "401", "\"Effort\" takes values from 0 to 400"},
        TBadEntry{"TooLargeFraction", Safety, "3", "86400.5",
                  "\"Fault tolerance time\" takes values from 0 to 86400"}));

TEST_F(TTextFaults, AnEntryThatItsListHasLostIsRefusedAndHoldsUpNoOtherChoice) {
    const auto choose = [this](const char* entry) { User->Choose(Open(Planning, "6").Name(), entry); };
    choose("Later");
    EXPECT_THAT(ErrorsOfSave(), testing::IsEmpty());
    choose("1.0");
    LoseEntry("Later");
    choose("Later");
    const std::vector<std::string> errors = ErrorsOfSave();
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_THAT(errors[0], HasSubstr("was changed after it was read; refresh and try again."));
    EXPECT_EQ(dynamic_cast<TComboBox&>(Open(Planning, "6")).Text(), "Later");
    User->Click("btnCancelSave");
    auto& list = dynamic_cast<TComboBox&>(Open(Planning, "6"));
    EXPECT_THAT(Entries(list), testing::ElementsAre("1.0", "1.1", "2.0"));
    EXPECT_EQ(list.Text(), "") << "what the requirement holds is no entry any more";
    choose("2.0");
    EXPECT_THAT(ErrorsOfSave(), testing::IsEmpty());
    EXPECT_EQ(ValueOf(ReadAs("admin", SelectedNumber()), u"Target release"), "2.0");
}

TEST_F(TTextFaults, WhoIsRefusedATreeCommandIsToldWhoHoldsTheLock) {
    const TReq other = Server->LogOn("eva")->getLatestRequirement(SelectedNumber());
    other->lock();
    Dialogs.Answer(TMessageResult::Yes);
    User->Click("btnDeleteRequirement");
    EXPECT_THAT(OnlyError(), HasSubstr("is locked by Eva Novak"));
    TTreeNode& target = User->Node("trvRequirements", {Top().Text(), "App Requirement"});
    Select(Implausible);
    Dialogs.Answer(TMessageResult::Yes);
    User->DragNode(Tree(), *Tree().Selected(), target);
    EXPECT_THAT(OnlyError(), HasSubstr("is locked by Eva Novak"));
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), FilterReadings.back());
}

} // namespace
