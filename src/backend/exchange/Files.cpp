#include "backend/exchange/Files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace Exchange {

namespace {

[[noreturn]] void Fail(const std::string& path, int error) {
    throw FileError("The file " + path + " cannot be read: " + std::strerror(error) + ".");
}

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

std::string ReadFile(const std::string& path) {
    const std::unique_ptr<std::FILE, Closer> file(std::fopen(path.c_str(), "rb"));
    if (!file) Fail(path, errno);
    std::string bytes;
    char buffer[65536];
    while (const auto count = std::fread(buffer, 1, sizeof buffer, file.get()))
        bytes.append(buffer, count);
    if (std::ferror(file.get())) Fail(path, errno);
    return bytes;
}

} // namespace Exchange
