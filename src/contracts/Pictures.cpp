#include "contracts/Pictures.h"

#include <cstdlib>

std::string PictureCacheFolder() {
    // A relative path there is to be ignored.
    const char* cache = std::getenv("XDG_CACHE_HOME");
    if (cache && *cache == '/') return std::string(cache) + "/quorane/images";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.cache/quorane/images";
}
