#include "EngineFixture.h"

#include "backend/rules/Markup.h"
#include "backend/rules/Refusal.h"
#include "contracts/Exceptions.h"
#include "support/HostileMarkup.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QWebEngineScript>
#include <QWebEngineSettings>

#include <set>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

using testing::IsEmpty;
using testing::Not;

// Sees whether any file of a folder is opened.
class TFolderWatch {
public:
    explicit TFolderWatch(const std::string& folder)
        : FQueue(inotify_init1(IN_NONBLOCK)) {
        inotify_add_watch(FQueue, folder.c_str(), IN_OPEN);
    }
    ~TFolderWatch() { ::close(FQueue); }
    TFolderWatch(const TFolderWatch&) = delete;
    TFolderWatch& operator=(const TFolderWatch&) = delete;

    bool Opened() {
        std::array<char, 4096> events{};
        return ::read(FQueue, events.data(), events.size()) > 0;
    }

private:
    int FQueue;
};

class EngineHostile : public TEngineFixture {
protected:
    EngineHostile() {
        std::filesystem::create_directory(FFolder.Path() / "outside");
        WriteFile(FFolder.File("outside/p.png"), "picture");
        WriteFile(FFolder.File("outside/style.css"), "p{color:red}");
        WriteFile(FFolder.File("outside/page.html"), "<p>page</p>");
        WriteFile(FFolder.File("outside/a.js"), std::string(HostileScript));
        EXPECT_TRUE(FServer.listen(QHostAddress::LocalHost));
        FBrowser.OnLinkClick = [this](const std::string& address) { FLeft.push_back(address); };
    }

    std::string Filled(const THostileRow& row) {
        return HostileText(row, "http://127.0.0.1:" + std::to_string(FServer.serverPort()),
                           FFolder.File("outside"));
    }
    QUrl Address() { return static_cast<TBrowserControl&>(FBrowser.Control()).page()->url(); }
    // The document is painted twice, which ends what its load has set off.
    void Settle() {
        bool painted = false;
        static_cast<TBrowserControl&>(FBrowser.Control())
            .page()
            ->runJavaScript(QStringLiteral("new Promise(done => requestAnimationFrame(() => "
                                           "requestAnimationFrame(done)))"),
                            QWebEngineScript::ApplicationWorld, [&](const QVariant&) { painted = true; });
        ASSERT_TRUE(WaitUntil([&] { return painted; }));
    }

    QTcpServer FServer;
    std::vector<std::string> FLeft;
};

TEST_F(EngineHostile, DocumentsRunFetchReadAndFollowNothing) {
    TFolderWatch outside(FFolder.File("outside"));
    for (const THostileRow& row : HostileRows) {
        SCOPED_TRACE(row.Name);
        Load(Filled(row));
        ASSERT_NE(FBrowser.Document(), nullptr);
        const QUrl address = Address();
        Document<IHTMLDocument2>()->put_designMode("On");
        EXPECT_THAT(Html(), Not(testing::StartsWith("<html id=\"ran\"")));
        Settle();
        ASSERT_NE(FBrowser.Document(), nullptr);
        EXPECT_THAT(Html(), Not(testing::StartsWith("<html id=\"ran\"")));
        EXPECT_NE(Document<IHTMLDocument2>()->get_selection()->get_type(), "");
        EXPECT_EQ(Address(), address);
        EXPECT_FALSE(FServer.hasPendingConnections());
        EXPECT_FALSE(outside.Opened());
    }
    EXPECT_THAT(FLeft, IsEmpty());
    EXPECT_FALSE(FServer.waitForNewConnection(200));
    EXPECT_FALSE(outside.Opened());
}

// The same documents in a page without any care: what the tests look for does happen.
TEST_F(EngineHostile, DocumentsDoHarmInAnOpenPage) {
    TFolderWatch outside(FFolder.File("outside"));
    std::string html;
    for (const THostileRow& row : HostileRows)
        if (std::set<std::string_view>{"Script", "PictureRemote", "PictureOfAFile"}.contains(row.Name))
            html += Filled(row);
    WriteFile(FFolder.File("open.html"), html);
    QWebEngineProfile profile;
    QWebEnginePage page(&profile);
    page.settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    std::string shown;
    QObject::connect(&page, &QWebEnginePage::loadFinished, &page,
                     [&] { page.toHtml([&](const QString& text) { shown = text.toStdString(); }); });
    page.load(QUrl::fromLocalFile(QString::fromStdString(FFolder.File("open.html"))));
    EXPECT_TRUE(WaitUntil([&] { return FServer.hasPendingConnections() && outside.Opened(); }));
    FServer.nextPendingConnection()->abort();
    EXPECT_TRUE(WaitUntil([&] { return shown.find("<html id=\"ran\"") == 0; })) << shown;
}

// What is kept of a description means the same to the browser as to the server: nothing
// comes to life in it when it is shown, edited and sent back.
TEST_F(EngineHostile, CleanMarkupComesBackFromTheEngineAsItWas) {
    for (const THostileRow& row : HostileRows) {
        SCOPED_TRACE(row.Name);
        std::string clean;
        try {
            clean = Backend::CleanMarkup(Filled(row));
        } catch (const Backend::Refusal&) {
            continue;
        }
        Load(clean);
        EXPECT_TRUE(Backend::SameMarkup(Backend::CleanMarkup(Html()), clean)) << clean << '\n' << Html();
    }
}

} // namespace
