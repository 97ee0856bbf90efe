#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QWheelEvent>

#include "platform/widgets/Actions.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

void Wheel(QWidget& widget) {
    const QPointF point = widget.rect().center();
    QWheelEvent event(point, widget.mapToGlobal(point), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

class Edits : public ::testing::Test {
protected:
    Edits() { Form.SetPadding(4, 4); }

    template<class T> T& Make(const std::string& name) {
        auto& control = *new T(&Form, name);
        control.SetAlign(TAlign::Top);
        return control;
    }

    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TActionList& Actions{*new TActionList(Form, "actions")};
    TLog Log;
};

TEST_F(Edits, AnEditTellsOfChangesAndNotOfTheSameTextAgain) {
    auto& edit = Make<TEdit>("edt");
    edit.OnChange = [&] { Log.push_back(edit.Text()); };
    edit.SetText(std::u16string(u"Größe"));
    edit.SetText(std::string("Größe"));
    ShowWindow(Form);
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClicks(&edit, QStringLiteral("!"));
    edit.Clear();
    EXPECT_THAT(Log, ElementsAre("Größe", "Größe!", ""));
}

TEST_F(Edits, AMemoGivesItsLinesWithLineFeeds) {
    auto& memo = Make<TMemo>("mmo");
    memo.SetText(std::string("one\r\ntwo\nthree"));
    EXPECT_EQ(memo.Text(), "one\ntwo\nthree");
    EXPECT_FALSE(memo.Modified());
    EXPECT_FALSE(memo.Empty());
    memo.SetText(std::string("20\u00a0\u00b0C"));
    EXPECT_EQ(memo.Text(), "20\u00a0\u00b0C") << "a blank that does not break stays one";
    memo.SetText(std::string());
    EXPECT_TRUE(memo.Empty());
}

TEST_F(Edits, APasswordShowsStarsOnly) {
    auto& edit = Make<TEdit>("edt");
    edit.SetPassword(true);
    edit.SetText(std::string("secret"));
    EXPECT_EQ(edit.displayText(), QStringLiteral("******"));
    EXPECT_EQ(edit.Text(), "secret");
}

TEST_F(Edits, StandardCommandsActOnTheEditThatHasTheFocus) {
    auto& edit = Make<TEdit>("edt");
    auto& memo = Make<TMemo>("mmo");
    TEditAction copy(Actions, "copy", TEditCommand::Copy);
    TEditAction paste(Actions, "paste", TEditCommand::Paste);
    TEditAction undo(Actions, "undo", TEditCommand::Undo);
    TEditAction erase(Actions, "delete", TEditCommand::Delete);
    edit.SetText(std::string("word"));
    ShowWindow(Form);
    edit.SetFocus();
    EXPECT_FALSE(copy.Execute());
    edit.SelectAll();
    EXPECT_TRUE(copy.Execute());
    EXPECT_TRUE(erase.Execute());
    EXPECT_EQ(edit.Text(), "");
    memo.SetFocus();
    EXPECT_TRUE(paste.Execute());
    EXPECT_EQ(memo.Text(), "word");
    EXPECT_TRUE(memo.Modified());
    EXPECT_TRUE(undo.Execute());
    EXPECT_EQ(memo.Text(), "");
    memo.SetReadOnly(true);
    EXPECT_FALSE(paste.Execute());
}

TEST_F(Edits, StandardCommandsAreOffWhereThereIsNothingToEdit) {
    auto& list = Make<TListBox>("lst");
    TEditAction all(Actions, "all", TEditCommand::SelectAll);
    ShowWindow(Form);
    list.SetFocus();
    Application().ProcessIdle();
    EXPECT_FALSE(all.Enabled());
}

TEST_F(Edits, ACheckBoxTellsOfTheProgrammesChangesToo) {
    auto& box = Make<TCheckBox>("chb");
    box.SetCaption("R&D only");
    box.OnClick = [&] { Log.push_back(box.Checked() ? "on" : "off"); };
    box.SetChecked(true);
    box.SetChecked(true);
    ShowWindow(Form);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_THAT(Log, ElementsAre("on", "off"));
    EXPECT_EQ(box.Caption(), "R&D only");
}

TEST_F(Edits, ALabelShowsItsCaptionWithAndWithoutAccessKeys) {
    auto& label = Make<TLabel>("lbl");
    label.SetCaption("R&D");
    EXPECT_EQ(label.text(), QStringLiteral("R&D"));
    label.SetFocusControl(Make<TEdit>("edt"));
    EXPECT_EQ(label.text(), QStringLiteral("R&D"));
    label.SetShowAccelChar(false);
    EXPECT_EQ(label.text(), QStringLiteral("R&&D"));
    EXPECT_EQ(label.Caption(), "R&D");
}

TEST_F(Edits, TheWheelChangesNoValueOfAControlWithoutTheFocus) {
    auto& combo = Make<TComboBox>("cbx");
    auto& picker = Make<TDatePicker>("dtp");
    auto& other = Make<TEdit>("edt");
    combo.OnChange = [this] { Log.push_back("combo"); };
    picker.OnChange = [this] { Log.push_back("date"); };
    combo.Items().Add("one");
    combo.Items().Add("two");
    combo.SetItemIndex(0);
    ShowWindow(Form);
    other.SetFocus();
    Wheel(combo);
    Wheel(picker);
    EXPECT_THAT(Log, IsEmpty());
    EXPECT_EQ(combo.ItemIndex(), 0);
}

TEST_F(Edits, TypingIntoABlankDateShowsItAndTellsOnce) {
    auto& picker = Make<TDatePicker>("dtp");
    picker.setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    picker.SetDate(45292);
    picker.SetBlank(true);
    picker.OnChange = [&] { Log.push_back(std::to_string(static_cast<int>(picker.Date()))); };
    ShowWindow(Form);
    picker.setFocus();
    QTest::keyClick(&picker, Qt::Key_0);
    EXPECT_FALSE(picker.Blank());
    EXPECT_THAT(Log, ElementsAre("45292"));
}

TEST_F(Edits, LeavingABlankDateKeepsItBlank) {
    auto& picker = Make<TDatePicker>("dtp");
    auto& other = Make<TEdit>("edt");
    picker.SetDate(45292);
    picker.SetBlank(true);
    picker.OnChange = [this] { Log.push_back("date"); };
    ShowWindow(Form);
    picker.setFocus();
    QTest::keyClick(&picker, Qt::Key_Return);
    other.SetFocus();
    EXPECT_TRUE(picker.Blank());
    EXPECT_EQ(picker.text(), QString());
    EXPECT_EQ(picker.Date(), 45292);
    EXPECT_THAT(Log, IsEmpty());
}

TEST_F(Edits, ADisabledColourFollowsThePaletteAndGoesAgain) {
    auto& edit = Make<TEdit>("edt");
    auto& plain = Make<TEdit>("plain");
    edit.SetColor(clInactiveCaptionText);
    EXPECT_EQ(edit.palette().color(QPalette::Base), QApplication::palette().color(QPalette::Window));
    EXPECT_EQ(edit.Color(), clInactiveCaptionText);
    edit.SetColor(clWindow);
    EXPECT_EQ(edit.palette().color(QPalette::Base), plain.palette().color(QPalette::Base));
}

TEST_F(Edits, ComboEntriesShowTheirPictures) {
    TImageList images(nullptr);
    FillQuoraneImages(images);
    auto& combo = Make<TComboBox>("cbx");
    combo.SetImages(&images);
    combo.Items().Add("Anna");
    combo.SetItemImage(0, imUser);
    EXPECT_FALSE(combo.itemIcon(0).isNull());
}

} // namespace
