#include "contracts/Exceptions.h"
#include "hosts/studio/editor/EditorArea.h"
#include "hosts/studio/editor/SourceEdit.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Editor : public testing::Test {
protected:
    QString File(const std::string& name) const { return QString::fromStdString(FFolder.File(name)); }
    TSourceEdit& Open(const std::string& bytes) {
        WriteFile(FFolder.File("file.cpp"), bytes);
        return FArea.OpenFile(File("file.cpp"));
    }
    std::string OnDisk() const { return ReadFile(FFolder.File("file.cpp")); }

    TTempFolder FFolder;
    TScriptedDialogs FDialogs;
    TEditorArea FArea{nullptr};
};

using namespace std::string_literals;

struct TBytesRow {
    const char* Name;
    std::string Bytes;
    TEncoding Encoding;
    TLineEnd LineEnd;
};

class UnusualFiles : public Editor, public testing::WithParamInterface<TBytesRow> {};

TEST_P(UnusualFiles, ComeBackByteForByte) {
    TSourceEdit& editor = Open(GetParam().Bytes);
    EXPECT_EQ(editor.Encoding(), GetParam().Encoding);
    EXPECT_EQ(editor.LineEnd(), GetParam().LineEnd);
    editor.Save(editor.Path());
    EXPECT_EQ(OnDisk(), GetParam().Bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, UnusualFiles,
    testing::Values(TBytesRow{"Empty", "", TEncoding::Utf8, TLineEnd::Unix},
                    TBytesRow{"NoLastLineEnd", "a\nb", TEncoding::Utf8, TLineEnd::Unix},
                    TBytesRow{"Dos", "a\r\nb\r\n", TEncoding::Utf8, TLineEnd::Dos},
                    TBytesRow{"Mac", "a\rb\r", TEncoding::Utf8, TLineEnd::Mac},
                    TBytesRow{"Mixed", "a\r\nb\nc\rd\n", TEncoding::Utf8, TLineEnd::Unix},
                    TBytesRow{"Bom", "\xEF\xBB\xBFh\xC3\xA9\r\n", TEncoding::Utf8Bom, TLineEnd::Dos},
                    TBytesRow{"BomOnly", "\xEF\xBB\xBF", TEncoding::Utf8Bom, TLineEnd::Unix},
                    TBytesRow{"Astral", "x = \xF0\x9F\x94\xA5;\n", TEncoding::Utf8, TLineEnd::Unix},
                    TBytesRow{"Utf16Little",
                              "\xFF\xFE"s
                              "a\0\r\0\n\0"s,
                              TEncoding::Utf16Little, TLineEnd::Dos},
                    TBytesRow{"Utf16Big",
                              "\xFE\xFF"s
                              "\0a\0\n"s,
                              TEncoding::Utf16Big, TLineEnd::Unix},
                    TBytesRow{"Latin1", "caf\xE9\n", TEncoding::Latin1, TLineEnd::Unix},
                    TBytesRow{"Separators",
                              "a\xE2\x80\xA8"
                              "b\x0C\n",
                              TEncoding::Utf8, TLineEnd::Unix}),
    [](const auto& row) { return row.param.Name; });

TEST_F(Editor, NewLinesTakeTheLineEndOfTheFile) {
    TSourceEdit& editor = Open("a\r\n");
    editor.setCursorPosition(0, 1);
    editor.SendScintilla(QsciScintilla::SCI_NEWLINE);
    editor.Save(editor.Path());
    EXPECT_EQ(OnDisk(), "a\r\n\r\n");
}

TEST_F(Editor, WhatLatin1CannotHoldGoesOutInUtf8) {
    TSourceEdit& editor = Open("caf\xE9\n");
    editor.insertAt(QStringLiteral("→"), 0, 0);
    editor.Save(editor.Path());
    EXPECT_EQ(OnDisk(), "→caf\xC3\xA9\n");
    EXPECT_EQ(editor.Encoding(), TEncoding::Utf8);
}

TEST_F(Editor, FilesThatAreNoTextAreRefused) {
    WriteFile(FFolder.File("binary"), "\x7F"
                                      "ELF\0\1"s);
    for (const QString& path : {File("binary"), File("missing"), File("."), QStringLiteral("/proc/self/mem")})
        EXPECT_THROW(FArea.OpenFile(path), Exception) << path.toStdString();
    EXPECT_EQ(FArea.count(), 0);
}

TEST_F(Editor, FullDiskKeepsTheFileAndTheChange) {
    TSourceEdit& editor = Open("old");
    editor.setText(QString(100, u'n'));
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 10;
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(FArea.Save(editor), Exception);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(OnDisk(), "old");
    EXPECT_TRUE(editor.isModified());
    EXPECT_TRUE(FArea.Save(editor));
    EXPECT_EQ(OnDisk(), std::string(100, 'n'));
}

TEST_F(Editor, FileWithoutRightsOpensReadOnlyAndCannotBeSaved) {
    WriteFile(FFolder.File("file.cpp"), "mine");
    std::filesystem::permissions(FFolder.Path(), std::filesystem::perms(0555));
    std::filesystem::permissions(FFolder.File("file.cpp"), std::filesystem::perms(0444));
    constexpr uid_t nobody = 65534;
    const bool root = geteuid() == 0;
    ASSERT_TRUE(!root || setresuid(nobody, nobody, 0) == 0);
    TSourceEdit& editor = FArea.OpenFile(File("file.cpp"));
    EXPECT_TRUE(editor.isReadOnly());
    EXPECT_THROW(editor.Save(editor.Path()), Exception);
    ASSERT_TRUE(!root || setresuid(0, 0, 0) == 0);
    std::filesystem::permissions(FFolder.Path(), std::filesystem::perms(0755));
    EXPECT_EQ(OnDisk(), "mine");
}

TEST_F(Editor, SavingThroughALinkKeepsTheLinkAndTheRights) {
    WriteFile(FFolder.File("real.sh"), "old");
    std::filesystem::permissions(FFolder.File("real.sh"), std::filesystem::perms(0750));
    std::filesystem::create_symlink(FFolder.File("real.sh"), FFolder.File("link.sh"));
    TSourceEdit& editor = FArea.OpenFile(File("link.sh"));
    editor.setText(QStringLiteral("new"));
    FArea.Save(editor);
    EXPECT_TRUE(std::filesystem::is_symlink(FFolder.File("link.sh")));
    EXPECT_EQ(ReadFile(FFolder.File("real.sh")), "new");
    EXPECT_EQ(std::filesystem::status(FFolder.File("real.sh")).permissions(), std::filesystem::perms(0750));
}

TEST_F(Editor, ChangeByAnotherProgramIsAskedAbout) {
    TSourceEdit& editor = Open("first");
    editor.setText(QStringLiteral("mine"));
    WriteFile(FFolder.File("file.cpp"), "theirs");
    std::filesystem::last_write_time(FFolder.File("file.cpp"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    FDialogs.Answer(TMessageResult::No);
    EXPECT_FALSE(FArea.Save(editor));
    EXPECT_EQ(OnDisk(), "theirs");
    FDialogs.Answer(TMessageResult::Yes);
    EXPECT_TRUE(FArea.Save(editor));
    EXPECT_EQ(OnDisk(), "mine");
}

TEST_F(Editor, OneFileHasOneTabWhateverItsPath) {
    TSourceEdit& editor = Open("x");
    std::filesystem::create_symlink(FFolder.File("file.cpp"), FFolder.File("other"));
    EXPECT_EQ(&FArea.OpenFile(File("./file.cpp")), &editor);
    EXPECT_EQ(&FArea.OpenFile(File("other")), &editor);
    EXPECT_EQ(FArea.count(), 1);
}

TEST_F(Editor, ClosingAChangedFileAsksWhatToDo) {
    struct TRow {
        TMessageResult Answer;
        bool Closed;
        const char* OnDisk;
    };
    for (const TRow& row : {TRow{TMessageResult::Cancel, false, "old"}, TRow{TMessageResult::No, true, "old"},
                            TRow{TMessageResult::Yes, true, "newold"}}) {
        TSourceEdit& editor = Open("old");
        editor.insertAt(QStringLiteral("new"), 0, 0);
        FDialogs.Answer(row.Answer);
        EXPECT_EQ(FArea.ClosePage(editor), row.Closed);
        EXPECT_EQ(OnDisk(), row.OnDisk);
        EXPECT_EQ(FArea.FindEditor(File("file.cpp")) == nullptr, row.Closed);
        editor.setModified(false);
        if (!row.Closed) FArea.ClosePage(editor);
    }
}

TEST_F(Editor, CloseStopsWhenSavingFails) {
    TSourceEdit& editor = FArea.NewFile();
    editor.insert(QStringLiteral("text"));
    FDialogs.Answer(TMessageResult::Yes);
    FDialogs.AnswerFile(FFolder.File("no/such/folder/file.txt"));
    EXPECT_THROW(FArea.ClosePage(editor), Exception);
    EXPECT_EQ(FArea.count(), 1);
    EXPECT_TRUE(editor.isModified());
}

TEST_F(Editor, DragCarriesTextAndFileName) {
    TSourceEdit& editor = Open("one two");
    editor.setSelection(0, 4, 0, 7);
    const auto* drag = dynamic_cast<TEditTextDragObject*>(dynamic_cast<IDragSource&>(editor).DragObject());
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->Text(), "two");
    EXPECT_EQ(drag->FileName(), FFolder.File("file.cpp"));
}

} // namespace
