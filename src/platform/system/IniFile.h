// A small file of named values in sections, for settings and desktop layouts.
//
// A value may hold any UTF-8 text: line ends and outer blanks survive. A write
// replaces the file as a whole or not at all, and leaves what another process
// wrote meanwhile under other names in place.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

class TIniFile {
public:
    // Reads nothing yet and creates nothing.
    explicit TIniFile(std::filesystem::path path);

    const std::filesystem::path& Path() const { return FPath; }

    // The value on disk; empty when file, section or name is missing or the file
    // cannot be read. A line that is no "name=value" is let pass.
    std::optional<std::string> Read(const std::string& section, const std::string& name) const;

    using TValues = std::map<std::string, std::string>;
    using TSections = std::map<std::string, TValues>;

    // All that the file holds.
    TSections ReadAll() const;

    // Merges the values into the file and creates it, and its folder, when missing.
    // Raises Exception when that fails; the file is then as it was.
    void Write(const TSections& changes) const;

private:
    std::filesystem::path FPath;
};
