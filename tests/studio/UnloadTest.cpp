// The real add-in, with SDK and HTML engine, taken out of the studio while it works on a
// description.
#include "backend/exchange/SampleDatabase.h"
#include "backend/store/Database.h"
#include "hosts/studio/Studio.h"
#include "platform/widgets/Application.h"
#include "support/Actor.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QAction>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;

const std::string TypeName = "System Requirement";
const std::vector<std::string> Warm{"Hearth Controller", TypeName,
                                    "Keep every room at the temperature its people want"};
const std::vector<std::string> Safe{"Hearth Controller", TypeName,
                                    "Never let the home or its people come to harm"};

class StudioUnload : public testing::Test {
protected:
    // The SDK stays in the process and keeps its database.
    static void SetUpTestSuite() {
        static const TTempFolder folder;
        Database = folder.File("quorane.db");
        qputenv("QUORANE_DATA_DIR", folder.Path().c_str());
        Exchange::BuildSampleDatabase(
            {Database, QUORANE_SAMPLES_DIR, {}, Backend::BulkWriter::Hashing::QuickForTests});
    }

    StudioUnload() {
        qputenv("XDG_CONFIG_HOME", FFolder.File("config").c_str());
        std::filesystem::create_directory(FFolder.File("tmp"));
        qputenv("TMPDIR", FFolder.File("tmp").c_str());
        TStudioOptions options = TStudioOptions::Default();
        options.Desktop = FFolder.File("studio.ini");
        FStudio = std::make_unique<TStudio>(options);
        FStudio->Window().resize(1200, 900);
        FStudio->Window().show();
        FUser = std::make_unique<TActor>(FStudio->Window());
        LogOn();
    }
    ~StudioUnload() override {
        FUser.reset();
        FStudio.reset();
        qputenv("TMPDIR", FTmpBefore);
    }

    void LogOn() {
        FUser->WhenModal([](TForm& form) {
            TActor actor(form.Widget());
            actor.Type("edtHost", "local");
            actor.Type("edtUser", "anna");
            actor.Type("edtPassword", "hearth-anna");
            actor.Click("btnOk");
        });
        for (QAction* action : FStudio->Window().ViewsMenu().actions())
            if (action->objectName() == QStringLiteral("ViewQuoraneRequirementsItem")) action->trigger();
        TActor::Settle();
    }
    // Closes the window inside the handler that shows the requirement, once the engine is
    // there: the handler waits for nothing but the engine.
    void CloseWhileShowing(const std::vector<std::string>& path) {
        QTimer turns;
        QObject::connect(&turns, &QTimer::timeout, [&] {
            if (!Application().HandlerRunning() || !FUser->Exists("wbrReqDescription")) return;
            turns.stop();
            FStudio->Window().close();
            FClosedInLoad = true;
            EXPECT_TRUE(FStudio->HasModule());
        });
        turns.start(0);
        FUser->SelectNode("trvRequirements", path);
        EXPECT_TRUE(FClosedInLoad);
    }
    void MakeDirty() {
        FUser->ChooseTab("pgcRequirement", "Details");
        QWidget& page = *FUser->Find("wbrReqDescription").focusProxy();
        page.window()->activateWindow();
        QTest::mouseClick(&page, Qt::LeftButton, {}, QPoint(300, 25));
        QTest::keyClicks(&page, QStringLiteral("q"));
        ASSERT_TRUE(TActor::WaitFor([this] {
            TActor::Settle();
            return FUser->Find("btnSave").isEnabled();
        }));
        ASSERT_EQ(Locks(), 1);
    }
    static int Locks() {
        Backend::Database database(Database, Backend::Database::Mode::OpenExisting);
        Backend::Rows rows = database.Query("select count(*) from requirement_lock");
        return rows.Next() ? rows.Int(0) : -1;
    }
    std::vector<std::string> TemporaryFiles() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(FFolder.File("tmp")))
            if (entry.path().filename().string().starts_with("quorane-")) names.push_back(entry.path());
        return names;
    }
    void ExpectNothingLeft() {
        ASSERT_TRUE(TActor::WaitFor([this] { return !FStudio->HasModule(); }));
        TActor::Settle();
        EXPECT_FALSE(FStudio->Window().isVisible());
        EXPECT_FALSE(FUser->Exists("frmQuoraneMain"));
        EXPECT_FALSE(FUser->Exists("wbrReqDescription"));
        EXPECT_EQ(Locks(), 0);
        EXPECT_THAT(TemporaryFiles(), IsEmpty());
        EXPECT_THAT(FDialogs.Errors(), IsEmpty());
        EXPECT_THAT(FDialogs.Unexpected(), IsEmpty());
    }

    static inline std::string Database;
    const QByteArray FTmpBefore = qEnvironmentVariable("TMPDIR", QStringLiteral("/tmp")).toUtf8();
    TTempFolder FFolder;
    TScriptedDialogs FDialogs;
    std::unique_ptr<TStudio> FStudio;
    std::unique_ptr<TActor> FUser;
    bool FClosedInLoad = false;
};

TEST_F(StudioUnload, WhileTheFirstDescriptionLoads) {
    CloseWhileShowing(Warm);
    ExpectNothingLeft();
}

TEST_F(StudioUnload, WhileAnotherDescriptionTakesThePlaceOfOne) {
    FUser->SelectNode("trvRequirements", Warm);
    ASSERT_FALSE(TemporaryFiles().empty());
    CloseWhileShowing(Safe);
    ExpectNothingLeft();
}

TEST_F(StudioUnload, WithAChangedDescription) {
    FUser->SelectNode("trvRequirements", Warm);
    MakeDirty();
    FStudio->Window().close();
    ExpectNothingLeft();
}

} // namespace
