#include "platform/sdk/ImageCache.h"

#include "contracts/Exceptions.h"
#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/HtmlText.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>
#include <system_error>

#include <unistd.h>

namespace Sdk {

namespace {

// What comes from a description becomes a file name, so nothing else passes.
bool IsHash(std::string_view text) {
    const auto isDigit = [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'f');
    };
    return text.size() == 64 && std::all_of(text.begin(), text.end(), isDigit);
}

void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

std::filesystem::path FolderFrom(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? std::filesystem::path(value) : std::filesystem::path();
}

} // namespace

TImageCache::TImageCache(std::filesystem::path folder)
    : FFolder(std::move(folder)) {}

std::filesystem::path TImageCache::DefaultFolder() {
    std::filesystem::path base = FolderFrom("XDG_CACHE_HOME");
    if (base.empty()) base = FolderFrom("HOME") / ".cache";
    return base / "quorane" / "images";
}

void TImageCache::Fetch(TConnection& connection, const std::string& hash) const {
    std::error_code error;
    const auto file = FFolder / hash;
    if (!IsHash(hash) || std::filesystem::exists(file, error)) return;
    wire::GetImageRequest request;
    request.set_hash(hash);
    std::vector<wire::ImageChunk> chunks;
    try {
        chunks = connection.AskStream("GetImage", &TConnection::TStub::GetImage, request);
    } catch (const EOleSysError& failure) {
        if (failure.ErrorCode() == CodeServerUnavailable) throw;
        return;
    }
    std::filesystem::create_directories(FFolder, error);
    // Another window may fetch the same picture at the same time.
    const auto part = FFolder / (hash + "." + std::to_string(getpid()));
    std::ofstream out(part, std::ios::binary);
    for (const wire::ImageChunk& chunk : chunks)
        out << chunk.data();
    out.close();
    if (out)
        std::filesystem::rename(part, file, error);
    else
        std::filesystem::remove(part, error);
}

std::string TImageCache::ToShown(const std::string& html) const {
    std::string shown = html;
    const auto named = AttributesOf(html, "img", "src_original");
    for (const std::string& hash : std::set<std::string>(named.begin(), named.end()))
        if (IsHash(hash)) ReplaceAll(shown, " src=\"" + hash + "\"", " src=\"" + Prefix() + hash + "\"");
    return shown;
}

std::string TImageCache::ToStored(const std::string& html) const {
    std::string stored = html;
    ReplaceAll(stored, " src=\"" + Prefix(), " src=\"");
    return stored;
}

std::string TImageCache::Prefix() const {
    return "file://" + FFolder.string() + "/";
}

} // namespace Sdk
