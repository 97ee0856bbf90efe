#include <gmock/gmock.h>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include "contracts/Exceptions.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class Dispatch : public ::testing::Test {
protected:
    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TEdit& Edt{*new TEdit(&Form, "edt")};
    TActionList& List{*new TActionList(Form, "actions")};
    TAction& Act{*new TAction(List, "act")};
};

TEST_F(Dispatch, AFailureInsideANestedHandlerIsShownOnceAndEndsThere) {
    auto& button = *new TButton(&Form, "btn");
    bool wentOn = false;
    Edt.OnChange = [] { throw Exception("inner"); };
    button.OnClick = [&] {
        Edt.SetText(std::string("x"));
        wentOn = true;
    };
    button.Click();
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("inner"));
    EXPECT_TRUE(wentOn);
}

TEST_F(Dispatch, WhateverIsThrownEndsInTheBox) {
    auto& button = *new TButton(&Form, "btn");
    button.OnClick = [] { throw 5; };
    button.Click();
    EXPECT_EQ(Dialogs.Errors().size(), 1U);
}

TEST_F(Dispatch, UpdatesRunWhenTheLoopGoesIdle) {
    QEventLoop loop;
    QTimer::singleShot(20000, &loop, [&] { loop.exit(1); });
    Act.OnUpdate = [&] { loop.quit(); };
    EXPECT_EQ(loop.exec(), 0);
}

TEST_F(Dispatch, UpdatesWaitWhileAHandlerOrAnEngineCallIsOnTheStack) {
    int updates = 0;
    Act.OnUpdate = [&] { ++updates; };
    Edt.OnChange = [&] {
        Application().ProcessMessages();
        Application().ProcessIdle();
        EXPECT_EQ(updates, 0);
    };
    Edt.SetText(std::string("x"));
    {
        const TApplication::TEngineCall call;
        Application().ProcessIdle();
        EXPECT_EQ(updates, 0);
    }
    Application().ProcessIdle();
    EXPECT_EQ(updates, 1);
}

TEST_F(Dispatch, AWaitInAMessageHandlerHearsTheMessageBehindIt) {
    const auto post = [this](auto handler) {
        QMetaObject::invokeMethod(&Edt, handler, Qt::QueuedConnection);
    };
    QEventLoop loop;
    QTimer::singleShot(20000, &loop, [&] { loop.exit(1); });
    int code = -1;
    post([&] {
        const TApplication::TEngineCall call;
        code = loop.exec();
    });
    post([&] { loop.quit(); });
    Application().ProcessMessages();
    EXPECT_EQ(code, 0);

    bool answered = false;
    const QDeadlineTimer deadline(20000);
    QTimer wake;
    wake.start(1000);
    post([&] { Application().WaitWhile([&] { return !answered && !deadline.hasExpired(); }); });
    post([&] { answered = true; });
    Application().ProcessMessages();
    EXPECT_FALSE(deadline.hasExpired());
}

TEST_F(Dispatch, UpdatesWaitWhileTheErrorBoxOfAHandlerIsUp) {
    int updates = 0;
    Act.OnUpdate = [&] { ++updates; };
    Dialogs.Answer(TMessageResult::Ok, [] { Application().ProcessIdle(); });
    Edt.OnChange = [] { Application().MessageBox("text", "caption"); };
    Edt.SetText(std::string("x"));
    EXPECT_EQ(updates, 0);
}

TEST_F(Dispatch, AModalFormUpdatesItsOwnActionsAndNoOthers) {
    int outer = 0;
    int inner = 0;
    Act.OnUpdate = [&] { ++outer; };
    Edt.OnChange = [&] {
        TForm dialog(nullptr, "dlg");
        TActionList actions(dialog, "inner");
        TAction action(actions, "send");
        action.OnUpdate = [&] { ++inner; };
        Application().SetModalHook([&](TForm& form) {
            Application().SetModalHook({});
            Application().ProcessIdle();
            form.SetModalResult(TModalResult::Ok);
        });
        EXPECT_EQ(dialog.ShowModal(), TModalResult::Ok);
    };
    Edt.SetText(std::string("x"));
    EXPECT_GT(inner, 0);
    EXPECT_EQ(outer, 0);
}

TEST_F(Dispatch, AFailingUpdateIsReportedOnceUntilItHasSucceeded) {
    bool fails = true;
    Act.OnUpdate = [&] {
        if (fails) throw Exception("no connection");
    };
    for (int i = 0; i < 3; ++i)
        Application().ProcessIdle();
    EXPECT_THAT(Dialogs.TakeErrors(), ElementsAre("no connection"));
    fails = false;
    Application().ProcessIdle();
    fails = true;
    Application().ProcessIdle();
    EXPECT_THAT(Dialogs.TakeErrors(), ElementsAre("no connection"));
}

TEST_F(Dispatch, ExecutingAsksTheUpdateHandlerFirst) {
    int runs = 0;
    Act.OnExecute = [&] { ++runs; };
    Act.OnUpdate = [this] { Act.SetEnabled(false); };
    EXPECT_FALSE(Act.Execute());
    EXPECT_EQ(runs, 0);
    Act.OnUpdate = [this] { Act.SetEnabled(true); };
    EXPECT_TRUE(Act.Execute());
    EXPECT_EQ(runs, 1);
}

TEST_F(Dispatch, ButtonsFollowTheirActionAndRunIt) {
    int runs = 0;
    Act.OnExecute = [&] { ++runs; };
    Act.SetHint("Save");
    auto& bar = *new TToolBar(&Form, "tlb");
    TToolButton& button = bar.AddButton("btn", Act);
    ShowWindow(Form);
    QTest::mouseClick(&button, Qt::LeftButton);
    Act.SetEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(runs, 1);
    Act.SetVisible(false);
    EXPECT_FALSE(button.Visible());
    EXPECT_EQ(button.toolTip(), QStringLiteral("Save"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Save"));
}

TEST_F(Dispatch, AHandlerMayFreeThePageThatItRunsFrom) {
    auto& pages = *new TPageControl(&Form, "pgc");
    auto& page = *new TTabSheet(pages, "tbs", "Tab");
    auto& inside = *new TEdit(&page, "inside");
    int alive = 0;
    inside.SetTagObject(std::make_unique<TCounted>(alive));
    inside.OnChange = [&] { pages.FreePage(0); };
    inside.SetText(std::string("x"));
    EXPECT_EQ(pages.PageCount(), 0);
    EXPECT_EQ(Form.FindComponent("inside"), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(alive, 0);
}

} // namespace
