// Whole files as bytes.
#pragma once

#include <stdexcept>
#include <string>

namespace Exchange {

// A file that cannot be read; the message is a sentence that names it.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Raises FileError.
std::string ReadFile(const std::string& path);

} // namespace Exchange
