// Where the embedded server's database lies when nobody says otherwise.
#pragma once

#include <string>

namespace Backend {

// "quorane.db" in $QUORANE_DATA_DIR; when that is not set, in the folder "quorane" of
// the user's data folder, $XDG_DATA_HOME or ~/.local/share. The folder need not exist
// yet; who makes the database makes it first.
std::string DefaultDatabasePath();

} // namespace Backend
