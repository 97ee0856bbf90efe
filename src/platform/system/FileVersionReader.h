// Reads the version record of a program file without loading it.
#pragma once

#include <string>

// "a.b.c.d" from the first record that QUORANE_FILE_VERSION left in the file; empty
// for every file that has none, whatever it is.
std::string ReadFileVersion(const std::string& path);
