// Hostile markup in the store, where no service has seen it, and then on show.
#include "description/DescriptionTest.h"

#include "backend/store/Database.h"
#include "support/HostileOutside.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

// What one of them leaves open takes others with it, so those in a document stand far
// apart in the list.
constexpr std::size_t Documents = 16;

TEST_F(TDescriptionTest, HostileMarkupOfTheStoreRunsFetchesAndReadsNothing) {
    THostileOutside outside;
    LogOn();
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    for (std::size_t document = 0; document < Documents; ++document) {
        SCOPED_TRACE(document);
        std::string html = "<p>shown</p>";
        for (std::size_t row = document; row < std::size(HostileRows); row += Documents)
            html += outside.Filled(HostileRows[row]);
        Backend::Database(Server->DatabasePath(), Backend::Database::Mode::OpenExisting)
            .Run("update requirement_text set description = $1 where id in "
                 "(select text_id from requirement_version where requirement_id = $2)",
                 html, number);
        User->Click("btnRefresh");
        Select(ZoneControl);
        EXPECT_THAT(Html(), HasSubstr("shown"));
        EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "On");
        EXPECT_THAT(Html(), Not(StartsWith("<html id=\"ran\"")));
    }
    EXPECT_FALSE(outside.Server.waitForNewConnection(200));
    EXPECT_FALSE(outside.FileOpened());
    EXPECT_THAT(System.Opened, IsEmpty());
}

} // namespace
