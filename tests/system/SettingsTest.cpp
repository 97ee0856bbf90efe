#include "contracts/Exceptions.h"
#include "platform/system/DesktopSystemServices.h"

#include <QTemporaryDir>

#include <csignal>
#include <fstream>
#include <sys/resource.h>

#include <gtest/gtest.h>

namespace {

const std::string ConnectionKey = "Software\\Vantrel\\Quorane\\connection";

class Settings : public testing::Test {
protected:
    std::filesystem::path Folder() const { return FDir.path().toStdString(); }
    std::filesystem::path UserFile() const { return Folder() / "config" / "settings.ini"; }

    TDesktopSystemServices Services() const {
        return TDesktopSystemServices({UserFile(), Folder() / "machine.ini", {}});
    }

private:
    QTemporaryDir FDir;
};

// Lets writes to files fail past a few bytes, as they do on a full disk.
class TFullDisk {
public:
    TFullDisk() {
        FOldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &FOld);
        rlimit small = FOld;
        small.rlim_cur = 4096;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~TFullDisk() {
        setrlimit(RLIMIT_FSIZE, &FOld);
        std::signal(SIGXFSZ, FOldHandler);
    }

private:
    rlimit FOld{};
    void (*FOldHandler)(int);
};

TEST_F(Settings, ReadingGivesEmptyTextAndCreatesNothing) {
    auto services = Services();
    EXPECT_EQ(services.ReadUserSetting(ConnectionKey, "username"), "");
    EXPECT_EQ(services.ReadMachineSetting("\\SOFTWARE\\Vantrel\\Quorane", "Quorane_EXE"), "");
    EXPECT_TRUE(std::filesystem::is_empty(Folder()));
}

TEST_F(Settings, MissingNameInAnExistingKeyIsEmptyAndLeavesTheFileAlone) {
    auto services = Services();
    services.WriteUserSetting(ConnectionKey, "username", "Ben Ortega");
    const auto written = std::filesystem::last_write_time(UserFile());
    EXPECT_EQ(services.ReadUserSetting(ConnectionKey, "server"), "");
    EXPECT_EQ(std::filesystem::last_write_time(UserFile()), written);
}

TEST_F(Settings, ValuesComeBackAsTheyWereWritten) {
    const std::string texts[] = {"",
                                 "local",
                                 " blank around ",
                                 "a=b;c",
                                 "[section]",
                                 "back\\slash\\n",
                                 "two\r\nlines\n",
                                 "Zoë — 要求",
                                 ";comment",
                                 "\\"};
    for (const std::string& text : texts) {
        Services().WriteUserSetting(ConnectionKey, "server", text);
        EXPECT_EQ(Services().ReadUserSetting(ConnectionKey, "server"), text);
    }
}

TEST_F(Settings, WriteKeepsWhatAnotherProgramWroteMeanwhile) {
    auto first = Services();
    auto second = Services();
    first.WriteUserSetting(ConnectionKey, "username", "ann");
    second.WriteUserSetting(ConnectionKey, "server", "local");
    second.WriteUserSetting("Other", "server", "elsewhere");
    EXPECT_EQ(first.ReadUserSetting(ConnectionKey, "username"), "ann");
    EXPECT_EQ(first.ReadUserSetting(ConnectionKey, "server"), "local");
}

TEST_F(Settings, FullDiskRaisesAndKeepsTheOldValues) {
    auto services = Services();
    services.WriteUserSetting(ConnectionKey, "username", "ann");
    {
        const TFullDisk full;
        const std::string large(10'000, 'b');
        EXPECT_THROW(services.WriteUserSetting(ConnectionKey, "username", large), Exception);
    }
    EXPECT_EQ(services.ReadUserSetting(ConnectionKey, "username"), "ann");
    services.WriteUserSetting(ConnectionKey, "username", "cleo");
    EXPECT_EQ(services.ReadUserSetting(ConnectionKey, "username"), "cleo");
}

TEST_F(Settings, FolderThatCannotBeMadeRaises) {
    std::ofstream(Folder() / "config") << "a file where the folder should be";
    EXPECT_THROW(Services().WriteUserSetting(ConnectionKey, "username", "ann"), Exception);
}

TEST_F(Settings, DamagedFileLosesOnlyItsDamagedLines) {
    std::filesystem::create_directories(UserFile().parent_path());
    std::ofstream(UserFile()) << "rubbish\n[" << ConnectionKey << "]\n\xff\xfe\nusername = ann\r\n=x\n[open";
    EXPECT_EQ(Services().ReadUserSetting(ConnectionKey, "username"), "ann");
}

TEST_F(Settings, MachineSettingIsReadFromItsOwnFile) {
    std::ofstream(Folder() / "machine.ini")
        << "[\\SOFTWARE\\Vantrel\\Quorane]\nQuorane_EXE=/opt/quorane/quorane\n";
    EXPECT_EQ(Services().ReadMachineSetting("\\SOFTWARE\\Vantrel\\Quorane", "Quorane_EXE"),
              "/opt/quorane/quorane");
}

} // namespace
