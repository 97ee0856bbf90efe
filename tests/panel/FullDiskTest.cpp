// A disk that is full when a requirement is saved: told once and clearly, the database
// stays whole, and the user's text is saved when there is room again.
#include "panel/PanelTest.h"

#include "backend/exchange/GeneratedProject.h"
#include "support/SoundDatabase.h"

#include <csignal>
#include <fstream>

#include <sys/mount.h>
#include <sys/resource.h>

namespace {

// A folder on a disk of its own that holds a few MB.
class TSmallDisk {
public:
    TSmallDisk()
        : FMounted(mount("tmpfs", FFolder.Path().c_str(), "tmpfs", 0, "size=8m") == 0) {}
    ~TSmallDisk() {
        if (FMounted) umount2(FFolder.Path().c_str(), MNT_DETACH);
    }
    TSmallDisk(const TSmallDisk&) = delete;
    TSmallDisk& operator=(const TSmallDisk&) = delete;

    // Only who administers the machine may mount a disk.
    bool Mounted() const { return FMounted; }
    std::string File(const std::string& name) const { return FFolder.File(name); }

    void Fill() {
        const std::string page(4096, 'x');
        std::ofstream filler(File("filler"), std::ios::binary);
        while (filler.write(page.data(), static_cast<std::streamsize>(page.size())).flush()) {
        }
    }
    void MakeRoom() { std::filesystem::remove(File("filler")); }

private:
    TTempFolder FFolder;
    const bool FMounted;
};

// While it lives no file of this process grows beyond the size.
class TFileSizeLimit {
public:
    explicit TFileSizeLimit(std::uintmax_t bytes) {
        // Writing beyond the limit is then a failure and not the process's end.
        FHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &FBefore);
        const rlimit limit{bytes, FBefore.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~TFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &FBefore);
        std::signal(SIGXFSZ, FHandler);
    }
    TFileSizeLimit(const TFileSizeLimit&) = delete;
    TFileSizeLimit& operator=(const TFileSizeLimit&) = delete;

private:
    rlimit FBefore{};
    void (*FHandler)(int) = nullptr;
};

// A panel on a database at that path, with its first requirement renamed and unsaved.
class TRenamed {
public:
    explicit TRenamed(const std::string& path)
        : FPath(path)
        , FStage(MakeDatabase(path)) {
        if (!FStage.LogOn("local", "admin", "admin")) throw std::runtime_error("the logon was refused");
        TTreeNode& type = FStage.Select({"Requirement"});
        type.Expand(false);
        type.GetFirstChild()->SetSelected();
        FStage.User->Type("edtRequirementName", "Renamed");
    }

    void SaveWithoutRoom(const char* reason) {
        FStage.User->Click("btnSave");
        const std::vector<std::string> errors = FStage.Dialogs.TakeErrors();
        ASSERT_EQ(errors.size(), 1U);
        EXPECT_THAT(errors[0], testing::AllOf(testing::HasSubstr(FPath), testing::HasSubstr(reason)));
        EXPECT_EQ(FStage.Panel().fraDetails->edtRequirementName->Text(), "Renamed");
        EXPECT_TRUE(FStage.Panel().actSave->Enabled());
        Backend::Database database(FPath);
        ExpectSound(database);
    }

    void SaveWithRoom() {
        FStage.User->Click("btnSave");
        EXPECT_EQ(FStage.Dialogs.TakeErrors(), std::vector<std::string>());
        EXPECT_EQ(FStage.Panel().trvRequirements->Selected()->Text(), "Renamed");
        EXPECT_FALSE(FStage.Panel().actSave->Enabled());
        Backend::Database database(FPath);
        ExpectSound(database);
    }

private:
    static const std::string& MakeDatabase(const std::string& path) {
        Exchange::BuildGeneratedDatabase(path, {50, 10}, Backend::BulkWriter::Hashing::QuickForTests);
        return path;
    }

    std::string FPath;
    TPanelStage FStage;
};

TEST(TFullDisk, FailsTheSaveOnceAndKeepsDatabaseAndText) {
    TSmallDisk disk;
    if (!disk.Mounted()) GTEST_SKIP() << "no right to mount a disk";
    TRenamed panel(disk.File("quorane.db"));
    disk.Fill();
    panel.SaveWithoutRoom("is full. Make room on it and try again.");
    disk.MakeRoom();
    panel.SaveWithRoom();
}

TEST(TFullDisk, AsDoesALimitOnTheSizeOfFiles) {
    const TTempFolder folder;
    const std::string path = folder.File("quorane.db");
    TRenamed panel(path);
    {
        const TFileSizeLimit limit(std::filesystem::file_size(path + "-wal"));
        panel.SaveWithoutRoom("Check the disk that holds it.");
    }
    panel.SaveWithRoom();
}

} // namespace
