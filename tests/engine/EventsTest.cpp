#include "EngineFixture.h"

#include "contracts/Exceptions.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class TListening : public IHTMLEditDesigner, public IHtmlEventSink {
public:
    THtmlStatus PreHandleEvent(std::int32_t, IHTMLEventObj& event) override {
        Types.push_back(event.get_type());
        if (OnEvent) OnEvent();
        return hsFalse;
    }
    THtmlStatus Invoke(std::int32_t dispId, std::uint16_t, const TEventArguments&, THtmlValue&) override {
        Focus.push_back(dispId == heOnFocus ? "focus" : dispId == heOnBlur ? "blur" : "?");
        return hsOk;
    }

    std::vector<std::string> Types;
    std::vector<std::string> Focus;
    std::function<void()> OnEvent;
};

class EngineEvents : public TEngineFixture {
protected:
    TListening FListening;

    IHTMLEditServices& Services() { return *Document<IHTMLDocument2>()->get_EditServices(); }
};

TEST_F(EngineEvents, DesignerSeesMouseAndKeys) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    Services().AddDesigner(FListening);
    QTest::mouseMove(&KeyTarget(), {30, 20});
    QTest::mouseMove(&KeyTarget(), {60, 25});
    Click(30, 20);
    Type("x");
    const auto saw = [this](const char* type) {
        return WaitUntil([&] { return std::ranges::count(FListening.Types, type) > 0; });
    };
    EXPECT_TRUE(saw("mousemove"));
    EXPECT_TRUE(saw("mouseup"));
    EXPECT_TRUE(saw("keydown"));
    EXPECT_EQ(std::ranges::count(FListening.Types, "keydown"), 1) << "added twice, it is there once";
}

TEST_F(EngineEvents, DesignerMayCallTheEngineAndTakeItselfAway) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    std::string html;
    FListening.OnEvent = [&] {
        html = Html();
        Services().RemoveDesigner(FListening);
    };
    Type("xyz");
    ASSERT_TRUE(WaitUntil([&] { return !html.empty(); }));
    ASSERT_TRUE(WaitUntil([this] { return Html().find("xyz") != std::string::npos; }));
    EXPECT_THAT(FListening.Types, ElementsAre("keydown"));
    EXPECT_NE(Services().RemoveDesigner(FListening), hsOk);
}

TEST_F(EngineEvents, WordUnderThePointerCostsOneCallInTheEventOfAMove) {
    Edit("<body style='margin:0;font:40px monospace'>alpha beta</body>");
    Services().AddDesigner(FListening);
    std::int64_t calls = -1;
    std::u16string word;
    FListening.OnEvent = [&] {
        const auto before = FBrowser.EngineCalls();
        const auto range = TextRange();
        range->moveToPoint(20, 25);
        range->moveStart("word", -1);
        range->moveEnd("word", 1);
        word = range->get_text();
        calls = FBrowser.EngineCalls() - before;
    };
    QTest::mouseMove(&KeyTarget(), {30, 20});
    ASSERT_TRUE(WaitUntil([&] { return !word.empty(); }));
    EXPECT_EQ(word, u"alpha");
    EXPECT_EQ(calls, 1);
}

TEST_F(EngineEvents, MovesThatWaitForABusyProgramComeAsOne) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    FListening.OnEvent = [&] {
        if (FListening.Types.size() > 1) return;
        for (int call = 0; call < 2000; ++call) {
            const QPointF place(call % 300, 20);
            QMouseEvent move(QEvent::MouseMove, place, place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&KeyTarget(), &move);
            Html();
        }
    };
    QTest::mouseMove(&KeyTarget(), {90, 30});
    ASSERT_TRUE(WaitUntil([&] { return !FListening.Types.empty(); }));
    Type("x");
    ASSERT_TRUE(WaitUntil([&] { return std::ranges::count(FListening.Types, "keydown") > 0; }));
    // The one that came first, those that waited, and those after them.
    EXPECT_LE(std::ranges::count(FListening.Types, "mousemove"), 4);
}

TEST_F(EngineEvents, NoEventArrivesInTheMiddleOfACall) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    bool calling = false;
    bool interrupted = false;
    FListening.OnEvent = [&] { interrupted = interrupted || calling; };
    Type("abcdef");
    for (int call = 0; call < 200; ++call) {
        calling = true;
        Html();
        calling = false;
    }
    EXPECT_FALSE(interrupted);
    EXPECT_TRUE(WaitUntil([this] { return !FListening.Types.empty(); }));
}

TEST_F(EngineEvents, DesignerSeesWhatTheEventDid) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    std::vector<std::string> seen;
    FListening.OnEvent = [&] {
        if (FListening.Types.back() == "keydown") seen.push_back(Html());
    };
    Type("x");
    ASSERT_TRUE(WaitUntil([&] { return seen.size() == 1; }));
    EXPECT_THAT(seen[0], HasSubstr("xtext"));
    QTest::keyClick(&KeyTarget(), Qt::Key_Backspace);
    ASSERT_TRUE(WaitUntil([&] { return seen.size() == 2; }));
    EXPECT_THAT(seen[1], HasSubstr("<p>text"));
}

TEST_F(EngineEvents, WindowTellsOfFocusUntilItIsLeft) {
    auto* other = new QLineEdit(&FForm);
    other->setGeometry(0, 400, 100, 30);
    other->show();
    Edit("<p>text</p>");
    const auto window =
        std::dynamic_pointer_cast<IConnectionPointContainer>(Document<IHTMLDocument2>()->get_parentWindow());
    THtmlHandle<IConnectionPoint> point;
    EXPECT_NE(window->FindConnectionPoint("{00000000-0000-0000-0000-000000000000}", point), hsOk);
    ASSERT_EQ(window->FindConnectionPoint(HTMLWindowEventsId, point), hsOk);
    std::uint32_t cookie = 0;
    ASSERT_EQ(point->Advise(FListening, cookie), hsOk);
    other->setFocus();
    FBrowser.SetFocus();
    EXPECT_THAT(FListening.Focus, ElementsAre("blur", "focus"));
    EXPECT_EQ(point->Unadvise(cookie), hsOk);
    EXPECT_NE(point->Unadvise(cookie), hsOk);
    other->setFocus();
    EXPECT_EQ(FListening.Focus.size(), 2u);
}

TEST_F(EngineEvents, FocusThatGoesDuringALoadIsTold) {
    QLineEdit other(&FForm);
    other.setGeometry(0, 400, 100, 30);
    other.show();
    Edit("<p>text</p>");
    FBrowser.OnDownloadComplete = [this] {
        std::uint32_t cookie = 0;
        std::dynamic_pointer_cast<IConnectionPoint>(FBrowser.Document())->Advise(FListening, cookie);
    };
    FBrowser.Navigate(FFolder.File("description.html"));
    other.setFocus();
    ASSERT_TRUE(WaitUntil([this] { return !FBrowser.Busy(); }));
    EXPECT_THAT(FListening.Focus, ElementsAre("blur"));
}

TEST_F(EngineEvents, FailingDesignerEndsInTheErrorBox) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    FListening.OnEvent = [] { throw Exception("no hint today"); };
    Type("x");
    EXPECT_TRUE(WaitUntil([this] { return !FDialogs.Errors().empty(); }));
    EXPECT_THAT(FDialogs.Errors(), Contains("no hint today"));
}

TEST_F(EngineEvents, ContextMenuOnShowKeepsNoCallWaiting) {
    Edit("<p>text</p>");
    Services().AddDesigner(FListening);
    std::string html;
    FListening.OnEvent = [&] { html = Html(); };
    QTest::mouseClick(&KeyTarget(), Qt::RightButton, {}, {30, 20});
    ASSERT_TRUE(WaitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    EXPECT_NO_THROW(html = Html());
    EXPECT_THAT(html, testing::HasSubstr("text"));
    QApplication::activePopupWidget()->close();
    EXPECT_THAT(FDialogs.Errors(), testing::IsEmpty());
}

} // namespace
