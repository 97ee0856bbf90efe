#include "hosts/studio/editor/EditorServices.h"
#include "contracts/Exceptions.h"
#include "hosts/studio/editor/EditorArea.h"
#include "hosts/studio/editor/SourceEdit.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Forms.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QMenu>
#include <QPointer>

#include <algorithm>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditorContract : public testing::Test {
protected:
    QString NewSource(const std::string& name, const std::string& text) {
        WriteFile(FFolder.File(name), text);
        return QString::fromStdString(FFolder.File(name));
    }
    std::shared_ptr<IHostEditBuffer> CurrentBuffer() {
        const auto editor =
            std::dynamic_pointer_cast<IHostSourceEditor>(FModules.Get_CurrentModule()->Get_CurrentEditor());
        return editor->GetEditView(0)->Get_Buffer();
    }

    TTempFolder FFolder;
    TScriptedDialogs FDialogs;
    TEditorArea FArea{nullptr};
    TModuleServices FModules{FArea};
    TEditorServices FEditors{FArea};
};

TEST_F(EditorContract, WithoutAFileThereIsNoModuleAndNoBuffer) {
    EXPECT_EQ(FModules.Get_CurrentModule(), nullptr);
    EXPECT_EQ(FEditors.Get_TopBuffer(), nullptr);
}

TEST_F(EditorContract, InsertedTextStandsAtTheCursorAndIsOneUndoStep) {
    TSourceEdit& editor = FArea.OpenFile(NewSource("a.cpp", "one\r\ntwo\r\n"));
    editor.setCursorPosition(1, 1);
    CurrentBuffer()->Get_EditPosition()->InsertText("// Prüfung 要求\r\n");
    EXPECT_EQ(CurrentBuffer()->Get_Text(), "one\r\nt// Prüfung 要求\r\nwo\r\n");
    int line = 0;
    int column = 0;
    editor.getCursorPosition(&line, &column);
    EXPECT_EQ(std::pair(line, column), std::pair(2, 0));
    editor.undo();
    EXPECT_EQ(CurrentBuffer()->Get_Text(), "one\r\ntwo\r\n");
}

TEST_F(EditorContract, ReplacedTextKeepsTheLineAndIsOneUndoStep) {
    TSourceEdit& editor = FArea.OpenFile(NewSource("a.cpp", "one\ntwo\nthree\n"));
    editor.setCursorPosition(2, 2);
    CurrentBuffer()->Set_Text("1\n2\n3\n4\n");
    int line = 0;
    int column = 0;
    editor.getCursorPosition(&line, &column);
    EXPECT_EQ(line, 2);
    editor.undo();
    EXPECT_EQ(CurrentBuffer()->Get_Text(), "one\ntwo\nthree\n");
}

TEST_F(EditorContract, ReadOnlyTextRefusesBothKindsOfChange) {
    TSourceEdit& editor = FArea.OpenFile(NewSource("a.cpp", "fixed"));
    editor.setReadOnly(true);
    EXPECT_THROW(CurrentBuffer()->Get_EditPosition()->InsertText("x"), Exception);
    EXPECT_THROW(CurrentBuffer()->Set_Text("x"), Exception);
    EXPECT_EQ(CurrentBuffer()->Get_Text(), "fixed");
}

TEST_F(EditorContract, FindModuleOpensTheFileOrGivesAnEmptyHandle) {
    NewSource("a.cpp", "text");
    NewSource("binary", std::string("\0\1", 2));
    EXPECT_EQ(FModules.FindModule(FFolder.File("missing.cpp")), nullptr);
    EXPECT_EQ(FModules.FindModule(FFolder.File("binary")), nullptr);
    EXPECT_EQ(FModules.FindModule(FFolder.Path()), nullptr);
    EXPECT_EQ(FArea.count(), 0);
    ASSERT_NE(FModules.FindModule(FFolder.File("a.cpp")), nullptr);
    ASSERT_NE(FModules.FindModule(FFolder.File("a.cpp")), nullptr);
    EXPECT_EQ(FArea.count(), 1);
    EXPECT_THAT(FDialogs.Errors(), IsEmpty());
}

TEST_F(EditorContract, HandlesOfAClosedFileStaySafe) {
    TSourceEdit& editor = FArea.OpenFile(NewSource("a.cpp", "text"));
    const auto module = FModules.Get_CurrentModule();
    const auto buffer = CurrentBuffer();
    FArea.ClosePage(editor);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(module->Get_CurrentEditor(), nullptr);
    EXPECT_THROW(module->Show(), Exception);
    EXPECT_THROW(buffer->Get_FileName(), Exception);
    EXPECT_EQ(FEditors.Get_TopBuffer(), nullptr);
}

TEST_F(EditorContract, TopBufferIsTheLastEditorInFrontAlsoBehindATabFrame) {
    FArea.OpenFile(NewSource("a.cpp", ""));
    FArea.OpenFile(NewSource("b.cpp", ""));
    FArea.OpenFile(NewSource("a.cpp", ""));
    const auto frame = FEditors.CreateTabFrame();
    frame->Show();
    EXPECT_EQ(FEditors.Get_TopBuffer()->Get_FileName(), FFolder.File("a.cpp"));
    FArea.ClosePage(*FArea.TopEditor());
    EXPECT_EQ(FEditors.Get_TopBuffer()->Get_FileName(), FFolder.File("b.cpp"));
}

TEST_F(EditorContract, TabFrameTellsOfSelectionAndAsksBeforeClosing) {
    std::vector<std::string> told;
    bool allow = false;
    FArea.OpenFile(NewSource("a.cpp", ""));
    const auto frame = FEditors.CreateTabFrame();
    frame->SetCaption("Quorane");
    frame->OnSelect = [&] { told.push_back("select"); };
    frame->OnDeselect = [&] { told.push_back("deselect"); };
    frame->OnClose = [&] {
        told.push_back("close");
        return allow;
    };
    frame->Show();
    FArea.setCurrentIndex(0);
    EXPECT_FALSE(frame->Close());
    allow = true;
    Q_EMIT FArea.tabCloseRequested(1);
    EXPECT_EQ(FArea.count(), 1);
    EXPECT_THAT(told, ElementsAre("select", "deselect", "close", "close"));
}

TEST_F(EditorContract, WidgetsMovedOutOfAClosingTabLiveOn) {
    TForm home(nullptr, "home");
    TPanel panel(&home, "panel");
    auto frame = FEditors.CreateTabFrame();
    panel.SetParent(frame->Body());
    frame->Show();
    frame->OnClose = [&] {
        panel.SetParent(home);
        frame.reset();
        return true;
    };
    EXPECT_TRUE(std::shared_ptr(frame)->Close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(panel.Parent(), &home);
    EXPECT_EQ(FArea.count(), 0);
}

TEST_F(EditorContract, HandlerThatFailsKeepsTheTabAndShowsTheFailureOnce) {
    const auto frame = FEditors.CreateTabFrame();
    frame->OnClose = []() -> bool { throw Exception("not now"); };
    frame->Show();
    EXPECT_FALSE(frame->Close());
    EXPECT_EQ(FArea.count(), 1);
    EXPECT_THAT(FDialogs.Errors(), ElementsAre("not now"));
}

TEST_F(EditorContract, ClosingAllFramesLeavesNoWidgetOfThemWhateverTheirHandlersSay) {
    const std::function<bool()> handlers[] = {
        nullptr,
        [] { return true; },
        [] { return false; },
        []() -> bool { throw Exception("not now"); },
    };
    std::vector<std::shared_ptr<IHostTabFrame>> frames;
    std::vector<QPointer<QWidget>> widgets;
    for (const auto& handler : handlers) {
        frames.push_back(FEditors.CreateTabFrame());
        widgets.emplace_back(new TPanel(&frames.back()->Body(), "panel"));
        frames.back()->OnClose = handler;
        frames.back()->Show();
    }
    FArea.CloseFrames();
    EXPECT_EQ(FArea.count(), 0);
    EXPECT_TRUE(std::ranges::all_of(widgets, &QPointer<QWidget>::isNull));
    EXPECT_THAT(FDialogs.TakeErrors(), ElementsAre("not now"));
}

TEST_F(EditorContract, ContextMenuHangsActionsBelowTheirCategory) {
    TDataModule owner(nullptr, "owner");
    TActionList list(owner, "list");
    const auto add = [&](const char* name, const char* category, const char* caption) {
        auto* action = new TAction(list, name);
        action->SetCategory(category);
        action->SetCaption(caption);
        return action;
    };
    TAction* group = add("Group", "Requirements", "Requirements");
    add("Insert", "Requirements.Insert", "Insert");
    add("Line", "Requirements.Separator", "-");
    add("Update", "Requirements.Update", "Update")->OnUpdate = [&] {
        list.Find("Update")->SetEnabled(false);
    };
    FEditors.RegisterActionList(0, 0, list, 7);

    QMenu menu;
    FEditors.FillContextMenu(menu);
    ASSERT_EQ(menu.actions().size(), 2);
    const QList<QAction*> entries = menu.actions().at(1)->menu()->actions();
    ASSERT_EQ(entries.size(), 3);
    EXPECT_TRUE(entries.at(1)->isSeparator());
    EXPECT_FALSE(entries.at(2)->isEnabled());
    group->OnUpdate = [&] { group->SetVisible(false); };
    QMenu without;
    FEditors.FillContextMenu(without);
    EXPECT_EQ(without.actions().size(), 1);
}

} // namespace
