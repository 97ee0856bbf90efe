#include <gmock/gmock.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "platform/widgets/Dialogs.h"
#include "platform/widgets/Forms.h"
#include "support/Actor.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

using ::testing::ElementsAre;

namespace {

// Does something with the window that comes up, once it is there.
template<class Window> void WhenUp(std::function<void(Window&)> steps) {
    QTimer::singleShot(0, qApp, [steps] {
        if (auto* window = qobject_cast<Window*>(QApplication::activeModalWidget()))
            steps(*window);
        else
            WhenUp<Window>(steps);
    });
}

struct TKeyCase {
    const char* Name;
    TMessageButtons Buttons;
    TMessageResult Default;
    Qt::Key Key;
    TMessageResult Expected;
};

class MessageKeys : public ::testing::TestWithParam<TKeyCase> {};

TEST_P(MessageKeys, GiveTheirButton) {
    const TKeyCase& row = GetParam();
    WhenUp<QMessageBox>([&](QMessageBox& box) { QTest::keyClick(&box, row.Key); });
    TNativeDialogs dialogs;
    EXPECT_EQ(dialogs.ShowMessage({"text", "caption", TMessageIcon::Question, row.Buttons, row.Default}),
              row.Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Boxes, MessageKeys,
    ::testing::Values(
        TKeyCase{"EnterOnNo", TMessageButtons::YesNo, TMessageResult::No, Qt::Key_Return, TMessageResult::No},
        TKeyCase{"EnterOnYes", TMessageButtons::YesNo, TMessageResult::None, Qt::Key_Return,
                 TMessageResult::Yes},
        TKeyCase{"EscapeOfYesNo", TMessageButtons::YesNo, TMessageResult::None, Qt::Key_Escape,
                 TMessageResult::No},
        TKeyCase{"EscapeOfOk", TMessageButtons::Ok, TMessageResult::None, Qt::Key_Escape, TMessageResult::Ok},
        TKeyCase{"EscapeOfThree", TMessageButtons::YesNoCancel, TMessageResult::None, Qt::Key_Escape,
                 TMessageResult::Cancel}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(Messages, AServersTextIsShownAsItIs) {
    const std::string text = "<b>The \"src\" & more</b>";
    QString shown;
    WhenUp<QMessageBox>([&](QMessageBox& box) {
        shown = box.textFormat() == Qt::PlainText ? box.text() : QStringLiteral("markup");
        box.accept();
    });
    TNativeDialogs dialogs;
    dialogs.ShowError(text);
    EXPECT_EQ(shown.toStdString(), text);
}

TEST(FileQuestions, AFiltersPairsBecomeEntriesAndThePathComesBack) {
    TTempFolder folder;
    WriteFile(folder.Path() / "picture.gif", "GIF89a");
    QStringList filters;
    WhenUp<QFileDialog>([&](QFileDialog& dialog) {
        filters = dialog.nameFilters();
        dialog.selectFile(QString::fromStdString(folder.File("picture.gif")));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    TNativeDialogs dialogs;
    const auto path = dialogs.OpenPicture(
        {"Picture", "All (*.gif;*.jpg)|*.gif;*.jpg|GIF Image Gile (*.gif)|*.gif", folder.File("")});
    EXPECT_EQ(path, folder.File("picture.gif"));
    EXPECT_THAT(filters,
                ElementsAre(QStringLiteral("All (*.gif *.jpg)"), QStringLiteral("GIF Image Gile (*.gif)")));
}

TEST(FileQuestions, ACancelledQuestionGivesNothing) {
    WhenUp<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    TNativeDialogs dialogs;
    EXPECT_EQ(dialogs.OpenFile({}), std::nullopt);
}

TEST(Forms, ADialogEndsByItsButtonsKeysAndItsCloseBox) {
    TForm form(nullptr, "dlg");
    auto& ok = *new TButton(&form, "btnOk", "OK");
    ok.SetDefault(true);
    ok.SetModalResult(TModalResult::Ok);
    auto& cancel = *new TButton(&form, "btnCancel", "Cancel");
    cancel.SetCancel(true);
    cancel.SetModalResult(TModalResult::Cancel);
    const std::pair<std::function<void(TForm&)>, TModalResult> ends[] = {
        {[](TForm& shown) { QTest::keyClick(&shown, Qt::Key_Return); }, TModalResult::Ok},
        {[](TForm& shown) { QTest::keyClick(&shown, Qt::Key_Escape); }, TModalResult::Cancel},
        {[](TForm& shown) { shown.Close(); }, TModalResult::Cancel},
    };
    TActor actor(form);
    for (const auto& [end, expected] : ends) {
        actor.WhenModal(end);
        EXPECT_EQ(form.ShowModal(), expected);
        EXPECT_FALSE(form.Visible());
    }
}

TEST(Forms, AFailingOkLeavesTheDialogOpen) {
    TForm form(nullptr, "dlg");
    auto& ok = *new TButton(&form, "btnOk", "OK");
    ok.SetModalResult(TModalResult::Ok);
    TScriptedDialogs dialogs;
    int attempts = 0;
    ok.OnClick = [&] {
        if (++attempts == 1) throw std::runtime_error("Invalid Login");
    };
    TActor actor(form);
    actor.WhenModal([&](TForm& shown) {
        ok.Click();
        EXPECT_TRUE(shown.Visible());
        ok.Click();
    });
    EXPECT_EQ(form.ShowModal(), TModalResult::Ok);
    EXPECT_THAT(dialogs.Errors(), ElementsAre("Invalid Login"));
}

} // namespace
