#include "EngineFixture.h"

#include "backend/rules/Markup.h"
#include "backend/rules/Refusal.h"
#include "contracts/Exceptions.h"
#include "support/HostileOutside.h"

#include <QTcpSocket>
#include <QWebEngineScript>
#include <QWebEngineSettings>

#include <set>

namespace {

using testing::IsEmpty;
using testing::Not;

class EngineHostile : public TEngineFixture {
protected:
    EngineHostile() {
        FBrowser.OnLinkClick = [this](const std::string& address) { FLeft.push_back(address); };
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

    THostileOutside FOutside;
    std::vector<std::string> FLeft;
};

TEST_F(EngineHostile, DocumentsRunFetchReadAndFollowNothing) {
    for (const THostileRow& row : HostileRows) {
        SCOPED_TRACE(row.Name);
        Load(FOutside.Filled(row));
        ASSERT_NE(FBrowser.Document(), nullptr);
        const QUrl address = Address();
        Document<IHTMLDocument2>()->put_designMode("On");
        EXPECT_THAT(Html(), Not(testing::StartsWith("<html id=\"ran\"")));
        Settle();
        ASSERT_NE(FBrowser.Document(), nullptr);
        EXPECT_THAT(Html(), Not(testing::StartsWith("<html id=\"ran\"")));
        EXPECT_NE(Document<IHTMLDocument2>()->get_selection()->get_type(), "");
        EXPECT_EQ(Address(), address);
        EXPECT_FALSE(FOutside.Server.hasPendingConnections());
        EXPECT_FALSE(FOutside.FileOpened());
    }
    EXPECT_THAT(FLeft, IsEmpty());
    EXPECT_FALSE(FOutside.Server.waitForNewConnection(200));
    EXPECT_FALSE(FOutside.FileOpened());
}

// The same documents in a page without any care: what the tests look for does happen.
TEST_F(EngineHostile, DocumentsDoHarmInAnOpenPage) {
    std::string html;
    for (const THostileRow& row : HostileRows)
        if (std::set<std::string_view>{"Script", "PictureRemote", "PictureOfAFile"}.contains(row.Name))
            html += FOutside.Filled(row);
    WriteFile(FFolder.File("open.html"), html);
    QWebEngineProfile profile;
    QWebEnginePage page(&profile);
    page.settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    std::string shown;
    QObject::connect(&page, &QWebEnginePage::loadFinished, &page,
                     [&] { page.toHtml([&](const QString& text) { shown = text.toStdString(); }); });
    page.load(QUrl::fromLocalFile(QString::fromStdString(FFolder.File("open.html"))));
    EXPECT_TRUE(WaitUntil([&] { return FOutside.Server.hasPendingConnections() && FOutside.FileOpened(); }));
    FOutside.Server.nextPendingConnection()->abort();
    EXPECT_TRUE(WaitUntil([&] { return shown.find("<html id=\"ran\"") == 0; })) << shown;
}

// What is kept of a description means the same to the browser as to the server: nothing
// comes to life in it when it is shown, edited and sent back.
TEST_F(EngineHostile, CleanMarkupComesBackFromTheEngineAsItWas) {
    for (const THostileRow& row : HostileRows) {
        SCOPED_TRACE(row.Name);
        std::string clean;
        try {
            clean = Backend::CleanMarkup(FOutside.Filled(row));
        } catch (const Backend::Refusal&) {
            continue;
        }
        Load(clean);
        EXPECT_TRUE(Backend::SameMarkup(Backend::CleanMarkup(Html()), clean)) << clean << '\n' << Html();
    }
}

} // namespace
