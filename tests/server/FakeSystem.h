// An operating system without a disk: settings in memory, numbered temporary names.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "contracts/SystemServices.h"

class TFakeSystem : public ISystemServices {
public:
    TFakeSystem() { SetSystemServices(this); }
    ~TFakeSystem() override { SetSystemServices(nullptr); }

    std::string ReadUserSetting(const std::string& key, const std::string& name) override {
        return UserSettings[key + "|" + name];
    }
    void WriteUserSetting(const std::string& key, const std::string& name,
                          const std::string& value) override {
        UserSettings[key + "|" + name] = value;
        Writes.push_back(name + "=" + value);
    }
    std::string ReadMachineSetting(const std::string& key, const std::string& name) override {
        return MachineSettings[key + "|" + name];
    }
    std::string TypeLibraryPath(const std::string& libraryId) override { return Libraries[libraryId]; }
    std::string FileVersion(const std::string& path) override { return Versions[path]; }
    std::string UniqueTempFileName() override { return "/tmp/quorane-" + std::to_string(++FNames); }
    bool FileExists(const std::string& path) override {
        return std::find(Files.begin(), Files.end(), path) != Files.end();
    }
    bool DeleteFile(const std::string& path) override { return std::erase(Files, path) > 0; }
    void StartProcess(const std::string&, const std::string&) override {}
    void ShellOpen(const std::string&) override {}
    TPixels FileIcon(const std::string&, int) override { return {}; }
    std::string ShortDateText(double date) override { return "day " + std::to_string(int(date)); }
    std::string DateTimeText(double date) override { return "moment " + std::to_string(date); }
    double Now() override { return 0; }

    // By key and name, joined with "|".
    std::map<std::string, std::string> UserSettings;
    std::map<std::string, std::string> MachineSettings;
    std::map<std::string, std::string> Libraries;
    std::map<std::string, std::string> Versions;
    std::vector<std::string> Files;
    // "name=value", in order.
    std::vector<std::string> Writes;

private:
    int FNames = 0;
};
