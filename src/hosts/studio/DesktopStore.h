// The studio's desktop store: named values in a file of the user's configuration
// folder. What is written is seen by the next read at once and by the disk when the
// file is updated.
#pragma once

#include "contracts/DockServices.h"
#include "platform/system/IniFile.h"

class TDesktopStore : public IDesktopStore {
public:
    explicit TDesktopStore(std::filesystem::path path);

    std::string ReadString(const std::string& section, const std::string& name,
                           const std::string& fallback) override;
    int ReadInteger(const std::string& section, const std::string& name, int fallback) override;
    bool ReadBool(const std::string& section, const std::string& name, bool fallback) override;
    void WriteString(const std::string& section, const std::string& name, const std::string& value) override;
    void WriteInteger(const std::string& section, const std::string& name, int value) override;
    void WriteBool(const std::string& section, const std::string& name, bool value) override;
    void UpdateFile() override;

private:
    TIniFile FFile;
    TIniFile::TSections FStored;
    TIniFile::TSections FChanges;
};
