#include "hosts/studio/Studio.h"
#include "contracts/SystemServices.h"
#include "hosts/studio/AddInModule.h"
#include "hosts/studio/editor/SourceEdit.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QTest>

#include <dlfcn.h>
#include <fstream>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Studio : public testing::Test {
protected:
    Studio() {
        qputenv("QUORANE_TEST_LOG", QByteArray::fromStdString(FFolder.File("log")));
        qunsetenv("QUORANE_TEST_REFUSE");
    }

    TStudioOptions Options(const std::filesystem::path& module) const {
        return {module, FFolder.File("studio.ini")};
    }
    static std::filesystem::path TestModule() {
        return std::filesystem::path(QCoreApplication::applicationDirPath().toStdString()) /
               "libtest_studio_module.so";
    }
    static bool Loaded(const std::filesystem::path& module) {
        void* handle = dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (handle) dlclose(handle);
        return handle != nullptr;
    }
    std::vector<std::string> Log() const {
        std::vector<std::string> lines;
        std::ifstream in(FFolder.File("log"));
        for (std::string line; std::getline(in, line);)
            lines.push_back(line);
        return lines;
    }
    static std::string Note(TStudio& studio) {
        return studio.Window().findChild<QLabel*>(QStringLiteral("StatusNote"))->text().toStdString();
    }
    static QDockWidget* TestDock(TStudio& studio) {
        return studio.Window().findChild<QDockWidget*>(QStringLiteral("TestForm"));
    }
    static QAction* TestItem(TStudio& studio) {
        for (QAction* action : studio.Window().ViewsMenu().actions())
            if (action->objectName() == QStringLiteral("TestItem")) return action;
        return nullptr;
    }

    TTempFolder FFolder;
    TScriptedDialogs FDialogs;
};

TEST_F(Studio, WithoutItsModuleIsAWorkingEditorWithANote) {
    TStudio studio(Options(FFolder.File("missing.so")));
    EXPECT_FALSE(studio.HasModule());
    EXPECT_THAT(Note(studio), HasSubstr("missing.so"));
    TSourceEdit& editor = studio.Window().Editors().NewFile();
    editor.setText(QStringLiteral("text"));
    editor.Save(QString::fromStdString(FFolder.File("saved.txt")));
    EXPECT_EQ(ReadFile(FFolder.File("saved.txt")), "text");
    EXPECT_THAT(FDialogs.Errors(), IsEmpty());
}

TEST_F(Studio, LibraryThatIsNoAddInIsRefused) {
    const auto folder = TestModule().parent_path();
    TStudio studio(Options(folder / "libquorane_contracts.so"));
    EXPECT_FALSE(studio.HasModule());
    EXPECT_THAT(Note(studio), HasSubstr("IDERegister"));
}

TEST_F(Studio, ModuleThatFailsToRegisterIsTakenOutAgain) {
    qputenv("QUORANE_TEST_REFUSE", "1");
    TStudio studio(Options(TestModule()));
    EXPECT_FALSE(studio.HasModule());
    EXPECT_EQ(Note(studio), "The module does not want to.");
    EXPECT_FALSE(Loaded(TestModule()));
}

TEST(AddInModule, ThatIsRefusedLeavesNoService) {
    TAddInModule module(std::filesystem::path(QCoreApplication::applicationDirPath().toStdString()) /
                        "libquorane-addin.so");
    EXPECT_THROW(module.Register(), Exception);
    EXPECT_THROW(SystemServices(), Exception);
}

TEST_F(Studio, ModuleHearsOfTheMainFormOnceItExists) {
    TStudio studio(Options(TestModule()));
    EXPECT_THAT(Log(), ElementsAre("register", "main form"));
    EXPECT_THAT(studio.Services().Wizards().Names(), ElementsAre("TestWizard"));
    EXPECT_EQ(studio.Window().ViewsMenu().actions().indexOf(TestItem(studio)), 10);
    EXPECT_TRUE(TestDock(studio)->isHidden());
}

TEST_F(Studio, MenuItemOfTheModuleBringsItsFormUp) {
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    TestItem(studio)->trigger();
    EXPECT_TRUE(TestDock(studio)->isVisible());
    EXPECT_FALSE(TestDock(studio)->isFloating());
}

TEST_F(Studio, FormIsToldWhenItsDockIsClosedAndNotWhenItIsTornOff) {
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    TestItem(studio)->trigger();
    TestDock(studio)->setFloating(true);
    TestDock(studio)->setFloating(false);
    QCoreApplication::processEvents();
    EXPECT_THAT(Log(), ElementsAre("register", "main form"));
    TestDock(studio)->close();
    EXPECT_THAT(Log(), ElementsAre("register", "main form", "form hidden"));
}

TEST_F(Studio, FormBehindAnotherTabOfItsAreaIsNotHidden) {
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    TestItem(studio)->trigger();
    auto* files = studio.Window().findChild<QDockWidget*>(QStringLiteral("ProjectFiles"));
    studio.Window().tabifyDockWidget(TestDock(studio), files);
    files->raise();
    QCoreApplication::processEvents();
    EXPECT_THAT(Log(), ElementsAre("register", "main form"));
}

TEST_F(Studio, TakingTheModuleAwayLeavesNothingOfIt) {
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    TestItem(studio)->trigger();
    EXPECT_EQ(studio.Window().Editors().count(), 1);
    studio.UnloadModule();
    EXPECT_THAT(Log(), ElementsAre("register", "main form", "tab closes", "wizard removed", "wizard gone",
                                   "form hidden", "finalized"));
    EXPECT_FALSE(Loaded(TestModule()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(studio.Window().Editors().count(), 0);
    EXPECT_EQ(TestItem(studio), nullptr);
    EXPECT_EQ(TestDock(studio), nullptr);
    QMenu menu;
    dynamic_cast<TEditorServices*>(FindHostService<IHostEditorServices>())->FillContextMenu(menu);
    EXPECT_THAT(menu.actions(), IsEmpty());
    EXPECT_FALSE(Note(studio).empty());
}

TEST_F(Studio, LayoutSurvivesARestart) {
    {
        TStudio studio(Options(TestModule()));
        studio.Window().show();
        TestItem(studio)->trigger();
        studio.Window().addDockWidget(Qt::BottomDockWidgetArea, TestDock(studio));
        studio.Window().findChild<QDockWidget*>(QStringLiteral("ProjectFiles"))->hide();
        studio.Window().resize(901, 655);
        studio.Window().close();
    }
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    EXPECT_EQ(studio.Window().size(), QSize(901, 655));
    EXPECT_TRUE(studio.Window().findChild<QDockWidget*>(QStringLiteral("ProjectFiles"))->isHidden());
    EXPECT_TRUE(TestDock(studio)->isHidden());
    TestItem(studio)->trigger();
    EXPECT_EQ(studio.Window().dockWidgetArea(TestDock(studio)), Qt::BottomDockWidgetArea);
}

TEST_F(Studio, LayoutOfTheModuleSurvivesARunWithoutIt) {
    {
        TStudio studio(Options(TestModule()));
        studio.Window().show();
        TestItem(studio)->trigger();
        studio.Window().addDockWidget(Qt::BottomDockWidgetArea, TestDock(studio));
        studio.Window().close();
    }
    {
        TStudio studio(Options({}));
        studio.Window().show();
        studio.Window().close();
    }
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    TestItem(studio)->trigger();
    EXPECT_EQ(studio.Window().dockWidgetArea(TestDock(studio)), Qt::BottomDockWidgetArea);
}

TEST_F(Studio, LayoutThatCannotBeSavedIsToldAndTheWindowCloses) {
    WriteFile(FFolder.File("file"), "in the way");
    TStudioOptions options{{}, std::filesystem::path(FFolder.File("file")) / "studio.ini"};
    TStudio studio(options);
    studio.Window().show();
    studio.Window().close();
    EXPECT_FALSE(studio.Window().isVisible());
    ASSERT_EQ(FDialogs.Errors().size(), 1u);
    EXPECT_THAT(FDialogs.Errors()[0], HasSubstr("studio.ini"));
}

TEST_F(Studio, DamagedDesktopFileGivesTheFirstLayout) {
    WriteFile(FFolder.File("studio.ini"), "[Desktop]\nLayout=rubbish\nGeometry=///\nFolder=/no/such\n\xff");
    TStudio studio(Options({}));
    studio.Window().show();
    EXPECT_TRUE(studio.Window().findChild<QDockWidget*>(QStringLiteral("ProjectFiles"))->isVisible());
    EXPECT_THAT(FDialogs.Errors(), IsEmpty());
}

TEST_F(Studio, ClosingStopsWhenTheUserKeepsAChangedFile) {
    TStudio studio(Options({}));
    studio.Window().show();
    studio.Window().Editors().NewFile().insert(QStringLiteral("changed"));
    FDialogs.Answer(TMessageResult::Cancel);
    studio.Window().close();
    EXPECT_TRUE(studio.Window().isVisible());
    FDialogs.Answer(TMessageResult::No);
    studio.Window().close();
    EXPECT_FALSE(studio.Window().isVisible());
}

TEST_F(Studio, ModuleStaysLoadedUntilItsHandlersHaveEnded) {
    TStudio studio(Options(TestModule()));
    studio.Window().show();
    Application().Dispatch(nullptr, [&] {
        studio.Window().close();
        Application().ProcessMessages();
        EXPECT_TRUE(studio.HasModule());
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !studio.HasModule(); }));
    EXPECT_FALSE(studio.Window().isVisible());
}

} // namespace
