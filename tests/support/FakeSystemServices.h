// The operating system as a test wants it: settings in memory, temporary files in the
// test's folder, and a record of what was started or opened.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "support/TempFolder.h"

class TFakeSystemServices : public ISystemServices {
public:
    TFakeSystemServices() { SetSystemServices(this); }
    ~TFakeSystemServices() override { SetSystemServices(nullptr); }

    // By key and name.
    std::map<std::pair<std::string, std::string>, std::string> UserSettings;
    std::map<std::pair<std::string, std::string>, std::string> MachineSettings;
    std::map<std::string, std::string> TypeLibraries;
    std::map<std::string, std::string> FileVersions;
    std::vector<std::pair<std::string, std::string>> Started;
    std::vector<std::string> Opened;
    bool StartingFails = false;
    double Today = 46000.5;

    std::string ReadUserSetting(const std::string& key, const std::string& name) override {
        return Value(UserSettings, {key, name});
    }
    void WriteUserSetting(const std::string& key, const std::string& name,
                          const std::string& value) override {
        UserSettings[{key, name}] = value;
    }
    std::string ReadMachineSetting(const std::string& key, const std::string& name) override {
        return Value(MachineSettings, {key, name});
    }
    std::string TypeLibraryPath(const std::string& libraryId) override {
        return Value(TypeLibraries, libraryId);
    }
    std::string FileVersion(const std::string& path) override { return Value(FileVersions, path); }
    std::string UniqueTempFileName() override { return FFolder.File("temp" + std::to_string(++FTempFiles)); }
    bool FileExists(const std::string& path) override { return std::filesystem::exists(path); }
    bool DeleteFile(const std::string& path) override {
        std::error_code ignored;
        return std::filesystem::remove(path, ignored);
    }
    void StartProcess(const std::string& path, const std::string& workingDirectory) override {
        if (StartingFails) throw Exception("cannot start " + path);
        Started.emplace_back(path, workingDirectory);
    }
    void ShellOpen(const std::string& target) override { Opened.push_back(target); }
    TPixels FileIcon(const std::string&, int size) override {
        return {size, size, std::vector<std::uint8_t>(static_cast<std::size_t>(size) * size * 4, 0x80)};
    }
    std::string ShortDateText(double date) override {
        return "day " + std::to_string(static_cast<int>(date));
    }
    std::string DateTimeText(double date) override { return "time " + std::to_string(date); }
    double Now() override { return Today; }

private:
    template<class TMap> static std::string Value(const TMap& values, const typename TMap::key_type& index) {
        const auto found = values.find(index);
        return found == values.end() ? std::string() : found->second;
    }

    TTempFolder FFolder;
    int FTempFiles = 0;
};
