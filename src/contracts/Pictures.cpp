#include "contracts/Pictures.h"

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <set>
#include <string_view>
#include <system_error>

namespace {

// The character of an escape's two digits; 0 when they are none.
char Unescaped(std::string_view digits) {
    unsigned code = 0;
    const char* end = digits.data() + digits.size();
    const auto [read, error] = std::from_chars(digits.data(), end, code, 16);
    return digits.size() == 2 && error == std::errc() && read == end ? static_cast<char>(code) : '\0';
}

// Of the file itself, however it is come by.
std::filesystem::path Canonical(const std::string& path) {
    std::error_code error;
    return std::filesystem::weakly_canonical(path, error);
}

struct TChosen {
    std::mutex Mutex;
    std::set<std::filesystem::path> Files;
};

TChosen& Chosen() {
    static TChosen chosen;
    return chosen;
}

} // namespace

std::string PictureCacheFolder() {
    // A relative path there is to be ignored.
    const char* cache = std::getenv("XDG_CACHE_HOME");
    if (cache && *cache == '/') return std::string(cache) + "/quorane/images";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.cache/quorane/images";
}

std::string PictureAddress(const std::string& path) {
    constexpr std::string_view meaningful = "#%?\\\t\n\r";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string address;
    for (const char letter : path) {
        if (meaningful.find(letter) == std::string_view::npos) {
            address += letter;
            continue;
        }
        address += '%';
        address += digits[static_cast<unsigned char>(letter) >> 4];
        address += digits[static_cast<unsigned char>(letter) & 15];
    }
    return address;
}

std::string PicturePath(const std::string& address) {
    constexpr std::string_view scheme = "file://";
    std::string path;
    for (std::size_t at = address.starts_with(scheme) ? scheme.size() : 0; at < address.size(); ++at) {
        const std::string_view rest = std::string_view(address).substr(at);
        const char escaped = rest.starts_with('%') ? Unescaped(rest.substr(1, 2)) : '\0';
        path += escaped ? escaped : address[at];
        if (escaped) at += 2;
    }
    return path;
}

void ChoosePicture(const std::string& path) {
    const std::lock_guard guard(Chosen().Mutex);
    Chosen().Files.insert(Canonical(path));
}

bool IsChosenPicture(const std::string& path) {
    const std::lock_guard guard(Chosen().Mutex);
    return Chosen().Files.contains(Canonical(path));
}
