#include "EngineFixture.h"

#include "contracts/Exceptions.h"

#include <QTimer>

#include <csignal>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class EngineLoading : public TEngineFixture {};

TEST_F(EngineLoading, TextComesOutAsItWentIn) {
    Load("<html><head></head><body><p>Prüfung 要求 &amp; <b>b</b></p></body></html>");
    EXPECT_EQ(Html(), "<html><head></head><body><p>Prüfung 要求 &amp; <b>b</b></p></body></html>");
}

TEST_F(EngineLoading, DocumentIsGoneAtOnceAndTheNextIsTold) {
    Load("<p>one</p>");
    int completed = 0;
    FBrowser.OnDownloadComplete = [&] {
        ++completed;
        EXPECT_NE(FBrowser.Document(), nullptr);
    };
    const auto old = Document<IHTMLDocument3>();
    const auto element = old->get_documentElement();
    FBrowser.Navigate(FFolder.File("description.html"));
    EXPECT_TRUE(FBrowser.Busy());
    EXPECT_EQ(FBrowser.Document(), nullptr);
    EXPECT_THROW(element->get_outerHTML(), EOleSysError);
    ASSERT_TRUE(WaitUntil([&] { return completed == 1; }));
    EXPECT_THROW(old->get_documentElement(), EOleSysError);
    EXPECT_THAT(Html(), HasSubstr("one"));
}

TEST_F(EngineLoading, MissingFileEndsTheLoadWithoutADocument) {
    int completed = 0;
    FBrowser.OnDownloadComplete = [&] { ++completed; };
    FBrowser.Navigate(FFolder.File("missing.html"));
    ASSERT_TRUE(WaitUntil([&] { return completed == 1; }));
    EXPECT_FALSE(FBrowser.Busy());
    EXPECT_EQ(FBrowser.Document(), nullptr);
}

TEST_F(EngineLoading, DeadEngineProcessFailsCallsAtOnceAndTheNextLoadStartsIt) {
    int told = 0;
    FBrowser.OnEngineGone = [&] { ++told; };
    // Far beyond the time that the test may take: no call may wait for it.
    FBrowser.SetLimits({std::chrono::hours(1), std::chrono::hours(1)});
    for (int round = 1; round <= 2; ++round) {
        Load("<p>one</p>");
        const auto document = Document<IHTMLDocument3>();
        const auto target = Document<IOleCommandTarget>();
        SignalEngine(SIGKILL);
        EXPECT_THROW(for (int call = 0; call < 10'000; ++call) document->get_documentElement(), EOleSysError);
        EXPECT_EQ(told, round - 1);
        const auto calls = FBrowser.EngineCalls();
        EXPECT_THROW(document->get_documentElement(), EOleSysError);
        EXPECT_NE(target->Exec(hcNumberedList, hoDefault, {}), hsOk);
        EXPECT_EQ(FBrowser.EngineCalls(), calls);
        EXPECT_EQ(FBrowser.Document(), nullptr);
        ASSERT_TRUE(WaitUntil([&] { return told == round; }));
    }
    Load("<p>two</p>");
    EXPECT_THAT(Html(), HasSubstr("two"));
}

TEST_F(EngineLoading, ProcessThatDiesDuringALoadEndsIt) {
    Load("<p>one</p>");
    SignalEngine(SIGSTOP);
    FBrowser.Navigate(FFolder.File("description.html"));
    ASSERT_TRUE(FBrowser.Busy());
    SignalEngine(SIGKILL);
    ASSERT_TRUE(WaitUntil([this] { return !FBrowser.Busy(); }));
    Load("<p>two</p>");
    EXPECT_THAT(Html(), HasSubstr("two"));
}

TEST_F(EngineLoading, HungEngineFailsCallsUntilItComesRound) {
    Edit("<p>kept</p>");
    Document<IOleCommandTarget>()->Exec(hcSetDirty, hoDefault, true);
    FBrowser.SetLimits({std::chrono::milliseconds(50), std::chrono::milliseconds(50)});
    SignalEngine(SIGSTOP);
    EXPECT_THROW(Html(), EOleSysError);
    EXPECT_NE(Document<IOleCommandTarget>()->Exec(hcSetDirty, hoDefault, false), hsOk);
    EXPECT_FALSE(Dirty());
    // Nor does the pointer that goes away say that the page is back.
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&KeyTarget(), &leave);
    const auto calls = FBrowser.EngineCalls();
    EXPECT_THROW(Html(), EOleSysError);
    EXPECT_EQ(FBrowser.EngineCalls(), calls);
    SignalEngine(SIGCONT);
    FBrowser.SetLimits({});
    const auto html = [this] {
        try {
            return Html();
        } catch (const EOleSysError&) {
            return std::string();
        }
    };
    EXPECT_TRUE(WaitUntil([&] { return html().find("kept") != std::string::npos; }));
    // What was refused must not keep the page's news from being heard.
    Type("x");
    EXPECT_TRUE(WaitUntil([this] { return Dirty(); }));
}

TEST_F(EngineLoading, LoadWithoutAnEndIsGivenUp) {
    Load("<p>one</p>");
    FBrowser.SetLimits({std::chrono::milliseconds(50), std::chrono::milliseconds(50)});
    int completed = 0;
    FBrowser.OnDownloadComplete = [&] { ++completed; };
    SignalEngine(SIGSTOP);
    FBrowser.Navigate(FFolder.File("description.html"));
    ASSERT_TRUE(WaitUntil([this] { return !FBrowser.Busy(); }));
    EXPECT_EQ(FBrowser.Document(), nullptr);
    EXPECT_EQ(completed, 1);
    FBrowser.SetLimits({});
    Load("<p>two</p>");
    EXPECT_THAT(Html(), HasSubstr("two"));
}

TEST_F(EngineLoading, LoadDuringACallFailsTheCall) {
    Load("<p>one</p>");
    FBrowser.SetLimits({std::chrono::hours(1), std::chrono::hours(1)});
    const auto document = Document<IHTMLDocument3>();
    QTimer::singleShot(0, &FBrowser, [this] { FBrowser.Navigate(FFolder.File("description.html")); });
    EXPECT_THROW(for (int call = 0; call < 10'000; ++call) document->get_documentElement(), EOleSysError);
    ASSERT_TRUE(WaitUntil([this] { return !FBrowser.Busy(); }));
    EXPECT_THAT(Html(), HasSubstr("one"));
}

TEST_F(EngineLoading, LinksAreToldAndNotFollowed) {
    std::vector<std::string> followed;
    FBrowser.OnLinkClick = [&](const std::string& address) { followed.push_back(address); };
    const auto link = [](const std::string& address) {
        return "<body style='margin:0'><a href=\"" + address + "\" style='font-size:40px'>link</a></body>";
    };
    const auto clickWithCtrl = [this] {
        QTest::mouseClick(&KeyTarget(), Qt::LeftButton, Qt::ControlModifier, {20, 25});
    };
    Load(link("https://example.org/a"));
    Click(20, 25);
    ASSERT_TRUE(WaitUntil([&] { return followed.size() == 1; }));
    Edit(link("mailto:ann@example.org"));
    Click(20, 25);
    clickWithCtrl();
    ASSERT_TRUE(WaitUntil([&] { return followed.size() == 2; }));
    for (const char* address : {"javascript:document.body.innerHTML=''", "file:///etc/passwd",
                                "data:text/html,x", "ms-msdt:/id", "description.html", "//127.0.0.1/x"}) {
        Load(link(address));
        Click(20, 25);
        Edit(link(address));
        clickWithCtrl();
        EXPECT_THAT(Html(), HasSubstr(">link</a>")) << address;
    }
    Load(link("https://example.org/b"));
    Click(20, 25);
    ASSERT_TRUE(WaitUntil([&] { return followed.size() >= 3; }));
    EXPECT_THAT(followed,
                ElementsAre("https://example.org/a", "mailto:ann@example.org", "https://example.org/b"));
}

} // namespace
