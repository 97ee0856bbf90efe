#include "EngineFixture.h"

#include "contracts/Exceptions.h"

#include <QTcpServer>

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

TEST_F(EngineLoading, ScriptsOfTheDocumentNeverRun) {
    Load("<body onload='document.body.id=1'><p>safe</p><script>document.body.innerHTML='ran'</script>"
         "<img src='missing.png' onerror='document.body.innerHTML=2'></body>");
    EXPECT_THAT(Html(), HasSubstr("<p>safe</p>"));
    EXPECT_THAT(Html(), Not(HasSubstr("id=\"1\"")));
}

TEST_F(EngineLoading, NothingIsFetchedFromTheNetwork) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const std::string address = "http://127.0.0.1:" + std::to_string(server.serverPort()) + "/";
    Load("<head><link rel=stylesheet href='" + address + "a.css'></head><img src='" + address +
         "b.png'><iframe src='" + address + "c'></iframe><p>text</p>");
    EXPECT_THAT(Html(), HasSubstr("text"));
    EXPECT_FALSE(server.waitForNewConnection(200));
}

TEST_F(EngineLoading, DeadEngineProcessFailsCallsAndTheNextLoadStartsIt) {
    Load("<p>one</p>");
    const auto document = Document<IHTMLDocument3>();
    const auto pid = static_cast<TBrowserControl&>(FBrowser.Control()).page()->renderProcessPid();
    ASSERT_GT(pid, 0);
    ::kill(static_cast<pid_t>(pid), SIGKILL);
    EXPECT_THROW(for (int call = 0; call < 10'000; ++call) document->get_documentElement(), EOleSysError);
    EXPECT_EQ(FBrowser.Document(), nullptr);
    Load("<p>two</p>");
    EXPECT_THAT(Html(), HasSubstr("two"));
}

TEST_F(EngineLoading, LinksAreToldAndNotFollowed) {
    std::vector<std::string> followed;
    FBrowser.OnLinkClick = [&](const std::string& address) { followed.push_back(address); };
    Load("<body style='margin:0'><a href='https://example.org/a' style='font-size:40px'>link</a></body>");
    Click(20, 25);
    ASSERT_TRUE(WaitUntil([&] { return !followed.empty(); }));
    EXPECT_THAT(followed, ElementsAre("https://example.org/a"));
    EXPECT_THAT(Html(), HasSubstr("link"));
}

TEST_F(EngineLoading, EmptiedDocumentHasNoTextLeft) {
    Load("<p>text</p>");
    EXPECT_EQ(Document<IPersistStreamInit>()->InitNew(), hsOk);
    EXPECT_EQ(Html(), "<html><head></head><body></body></html>");
}

} // namespace
