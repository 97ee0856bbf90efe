#include "hosts/studio/DesktopStore.h"

#include <charconv>

namespace {

const std::string* Find(const TIniFile::TSections& sections, const std::string& section,
                        const std::string& name) {
    const auto values = sections.find(section);
    if (values == sections.end()) return nullptr;
    const auto value = values->second.find(name);
    return value == values->second.end() ? nullptr : &value->second;
}

} // namespace

TDesktopStore::TDesktopStore(std::filesystem::path path)
    : FFile(std::move(path))
    , FStored(FFile.ReadAll()) {}

std::string TDesktopStore::ReadString(const std::string& section, const std::string& name,
                                      const std::string& fallback) {
    if (const std::string* changed = Find(FChanges, section, name)) return *changed;
    const std::string* stored = Find(FStored, section, name);
    return stored ? *stored : fallback;
}

int TDesktopStore::ReadInteger(const std::string& section, const std::string& name, int fallback) {
    const std::string text = ReadString(section, name, {});
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : fallback;
}

bool TDesktopStore::ReadBool(const std::string& section, const std::string& name, bool fallback) {
    return ReadInteger(section, name, fallback ? 1 : 0) != 0;
}

void TDesktopStore::WriteString(const std::string& section, const std::string& name,
                                const std::string& value) {
    FChanges[section][name] = value;
}

void TDesktopStore::WriteInteger(const std::string& section, const std::string& name, int value) {
    WriteString(section, name, std::to_string(value));
}

void TDesktopStore::WriteBool(const std::string& section, const std::string& name, bool value) {
    WriteInteger(section, name, value ? 1 : 0);
}

void TDesktopStore::UpdateFile() {
    if (FChanges.empty()) return;
    FFile.Write(FChanges);
    for (const auto& [section, values] : FChanges)
        for (const auto& [name, value] : values)
            FStored[section][name] = value;
    FChanges.clear();
}
