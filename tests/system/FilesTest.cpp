#include "contracts/Exceptions.h"
#include "contracts/FileVersion.h"
#include "platform/system/DesktopSystemServices.h"
#include "platform/system/FileVersionReader.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <fstream>
#include <set>

#include <gtest/gtest.h>

QUORANE_FILE_VERSION(5, 2, 65535, 7)

namespace {

class Files : public testing::Test {
    // Made first: the services get their paths from it.
    QTemporaryDir FDir;

protected:
    std::filesystem::path Folder() const { return FDir.path().toStdString(); }
    std::string Program() const { return QCoreApplication::applicationFilePath().toStdString(); }

    TDesktopSystemServices FServices{{Folder() / "user.ini", Folder() / "machine.ini", {}}};
};

TEST_F(Files, VersionComesFromTheRecordOfTheProgram) {
    EXPECT_EQ(FServices.FileVersion(Program()), "5.2.65535.7");
}

TEST_F(Files, FilesWithoutARecordHaveNoVersion) {
    std::ofstream(Folder() / "text") << "no program";
    std::ofstream(Folder() / "empty");
    for (const std::filesystem::path& path :
         {Folder() / "text", Folder() / "empty", Folder() / "missing", Folder()})
        EXPECT_EQ(FServices.FileVersion(path), "") << path;
    EXPECT_EQ(FServices.FileVersion(""), "");
}

TEST_F(Files, CutOffProgramHasNoVersion) {
    std::ifstream in(Program(), std::ios::binary);
    std::string head(4096, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    for (const std::size_t length : {1, 15, 16, 63, 64, 65, 200, 511, 700}) {
        std::ofstream(Folder() / "cut", std::ios::binary) << head.substr(0, length);
        EXPECT_EQ(ReadFileVersion(Folder() / "cut"), "") << length;
    }
}

TEST_F(Files, TemporaryNamesAreFreshAndPrivateAndGoWithTheServices) {
    std::set<std::string> names;
    {
        TDesktopSystemServices one({}), two({});
        for (auto* services : {&one, &two, &one, &two})
            names.insert(services->UniqueTempFileName());
        EXPECT_EQ(names.size(), 4u);
        for (const std::string& name : names) {
            EXPECT_FALSE(std::filesystem::exists(name));
            std::ofstream(name) << "left behind";
            const auto rights =
                std::filesystem::status(std::filesystem::path(name).parent_path()).permissions();
            EXPECT_EQ(rights, std::filesystem::perms::owner_all);
        }
    }
    for (const std::string& name : names)
        EXPECT_FALSE(std::filesystem::exists(name));
}

TEST_F(Files, DeleteTellsWhetherAFileWent) {
    const std::string path = Folder() / "file";
    EXPECT_FALSE(FServices.DeleteFile(path));
    std::ofstream(path) << "x";
    EXPECT_TRUE(FServices.DeleteFile(path));
    EXPECT_FALSE(FServices.FileExists(path));
    EXPECT_FALSE(FServices.DeleteFile(Folder()));
}

TEST_F(Files, ProcessStartsInItsOwnFolder) {
    const auto program = Folder() / "tool with blank";
    std::ofstream(program) << "#!/bin/sh\npwd > \"$0.ran\"\n";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    FServices.StartProcess(program, Folder());

    std::string folder;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        std::ifstream ran(program.string() + ".ran");
        return static_cast<bool>(std::getline(ran, folder));
    }));
    EXPECT_EQ(std::filesystem::canonical(folder), std::filesystem::canonical(Folder()));
}

TEST_F(Files, ProgramThatCannotStartRaises) {
    const auto noProgram = Folder() / "notes.txt";
    std::ofstream(noProgram) << "no program";
    for (const std::string& path : {(Folder() / "missing").string(), noProgram.string(), std::string("sh")})
        EXPECT_THROW(FServices.StartProcess(path, Folder()), Exception) << path;
}

TEST_F(Files, IconIsThereForEveryPath) {
    std::ofstream(Folder() / "a.pdf") << "%PDF";
    for (const std::string& path :
         {(Folder() / "a.pdf").string(), std::string("/no/such/file.doc"), std::string()}) {
        const TPixels icon = FServices.FileIcon(path, 16);
        EXPECT_EQ(icon.Width, 16);
        EXPECT_EQ(icon.Bytes.size(), 16u * 16u * 4u);
        EXPECT_TRUE(std::ranges::any_of(icon.Bytes, [](std::uint8_t byte) { return byte != 0; }));
    }
}

class TOpened : public QObject {
    Q_OBJECT
public:
    Q_SLOT void Open(const QUrl& url) { FUrls.push_back(url.toString().toStdString()); }
    std::vector<std::string> FUrls;
};

TEST_F(Files, ShellOpensFilesAndAddresses) {
    TOpened opened;
    for (const auto* scheme : {"https", "file"})
        QDesktopServices::setUrlHandler(QString::fromUtf8(scheme), &opened, "Open");
    const std::string path = Folder() / "a b#1.txt";
    std::ofstream(path) << "x";
    FServices.ShellOpen("https://example.org/a?b=c#d");
    FServices.ShellOpen(path);
    const std::vector<std::string> expected{
        "https://example.org/a?b=c#d",
        QUrl::fromLocalFile(QString::fromStdString(path)).toString().toStdString()};
    EXPECT_EQ(opened.FUrls, expected);
    for (const auto* scheme : {"https", "file"})
        QDesktopServices::unsetUrlHandler(QString::fromUtf8(scheme));
}

} // namespace

#include "FilesTest.moc"
