// A folder of a test's own that goes away with the object.
#pragma once

#include <filesystem>
#include <string>

class TTempFolder {
public:
    TTempFolder();
    ~TTempFolder();
    TTempFolder(const TTempFolder&) = delete;
    TTempFolder& operator=(const TTempFolder&) = delete;

    const std::filesystem::path& Path() const { return FPath; }
    std::string File(const std::string& name) const { return (FPath / name).string(); }

private:
    std::filesystem::path FPath;
};

std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);
