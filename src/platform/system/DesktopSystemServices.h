// The operating system's services on a free desktop: settings in files of the
// user's configuration folder, the shell by the desktop's own opener.
#pragma once

#include "contracts/SystemServices.h"
#include "platform/system/IniFile.h"

#include <map>
#include <memory>

class QTemporaryDir;

struct TSystemPaths {
    std::filesystem::path UserSettings;
    std::filesystem::path MachineSettings;
    // Path of each type library by its identity in braces.
    std::map<std::string, std::string> TypeLibraries;

    // Below XDG_CONFIG_HOME and /etc; no type library.
    static TSystemPaths Default();
};

class TDesktopSystemServices : public ISystemServices {
public:
    explicit TDesktopSystemServices(TSystemPaths paths);
    // Deletes what is left of the temporary files whose names it gave.
    ~TDesktopSystemServices() override;

    std::string ReadUserSetting(const std::string& key, const std::string& name) override;
    void WriteUserSetting(const std::string& key, const std::string& name, const std::string& value) override;
    std::string ReadMachineSetting(const std::string& key, const std::string& name) override;
    std::string TypeLibraryPath(const std::string& libraryId) override;
    std::string FileVersion(const std::string& path) override;
    std::string UniqueTempFileName() override;
    bool FileExists(const std::string& path) override;
    bool DeleteFile(const std::string& path) override;
    void StartProcess(const std::string& path, const std::string& workingDirectory) override;
    void ShellOpen(const std::string& target) override;
    TPixels FileIcon(const std::string& path, int size) override;
    std::string ShortDateText(double date) override;
    std::string DateTimeText(double date) override;
    double Now() override;

private:
    TSystemPaths FPaths;
    TIniFile FUserSettings;
    TIniFile FMachineSettings;
    std::unique_ptr<QTemporaryDir> FTempDir;
    int FTempFiles = 0;
};
