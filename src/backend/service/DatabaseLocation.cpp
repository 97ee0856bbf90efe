#include "backend/service/DatabaseLocation.h"

#include <cstdlib>

namespace Backend {

namespace {

std::string Environment(const char* name) {
    const char* text = std::getenv(name);
    return text ? text : "";
}

} // namespace

std::string DefaultDatabasePath() {
    if (const auto folder = Environment("QUORANE_DATA_DIR"); !folder.empty()) return folder + "/quorane.db";
    auto data = Environment("XDG_DATA_HOME");
    if (data.empty()) data = Environment("HOME") + "/.local/share";
    return data + "/quorane/quorane.db";
}

} // namespace Backend
