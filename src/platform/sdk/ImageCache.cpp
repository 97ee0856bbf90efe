#include "platform/sdk/ImageCache.h"

#include "contracts/Exceptions.h"
#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/HtmlTags.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include <unistd.h>

namespace Sdk {

namespace {

constexpr std::size_t ChunkBytes = 64 * 1024;
const std::string FileScheme = "file://";

std::string WithoutScheme(const std::string& address) {
    return address.starts_with(FileScheme) ? address.substr(FileScheme.size()) : address;
}

std::string MediaType(const std::filesystem::path& file) {
    std::string type = file.extension().string();
    if (!type.empty()) type.erase(0, 1);
    for (char& letter : type)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    if (type == "jpg") type = "jpeg";
    if (type == "svg") type = "svg+xml";
    return "image/" + (type.empty() ? "png" : type);
}

// What comes from a description becomes a file name, so nothing else passes.
bool IsHash(std::string_view text) {
    const auto isDigit = [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'f');
    };
    return text.size() == 64 && std::all_of(text.begin(), text.end(), isDigit);
}

} // namespace

TImageCache::TImageCache(std::filesystem::path folder)
    : FFolder(std::move(folder)) {}

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

std::string TImageCache::Store(TConnection& connection, const std::string& path) const {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad() || bytes.empty())
        RaiseFailure("FileNotFoundException: The picture \"" + path + "\" cannot be read.");
    std::vector<wire::ImageChunk> chunks;
    for (std::size_t at = 0; at < bytes.size(); at += ChunkBytes) {
        wire::ImageChunk& chunk = chunks.emplace_back();
        if (at == 0) chunk.set_media_type(MediaType(path));
        chunk.set_data(bytes.substr(at, ChunkBytes));
    }
    try {
        return connection.AskWithStream("PutImage", &TConnection::TStub::PutImage, chunks).hash();
    } catch (const EOleSysError& failure) {
        const std::string reason = failure.what();
        if (!reason.starts_with("InvalidValueException")) throw;
        // The server does not know which of the pictures it was sent.
        RaiseFailure(reason + " Take the picture \"" + path + "\" out or insert another one.");
    }
}

std::string TImageCache::WithoutNew(const std::string& html) {
    return ChangeTags(html, "img", [](THtmlAttributes& attributes) {
        return std::erase_if(attributes, [](const auto& attribute) { return attribute.first == "new"; }) > 0;
    });
}

std::string TImageCache::ToShown(const std::string& html) const {
    return ChangeTags(html, "img", [this](THtmlAttributes& attributes) {
        const std::string* hash = FindAttribute(attributes, "src_original");
        std::string* source = FindAttribute(attributes, "src");
        if (!hash || !source || !IsHash(*hash)) return false;
        *source = Prefix() + *hash;
        return true;
    });
}

std::string TImageCache::ToStored(const std::string& html) const {
    return ChangeTags(html, "img", [this](THtmlAttributes& attributes) {
        std::string* source = FindAttribute(attributes, "src");
        if (!source || !source->starts_with(Prefix())) return false;
        source->erase(0, Prefix().size());
        return true;
    });
}

std::string TImageCache::StoreNew(TConnection& connection, const std::string& html) const {
    return ChangeTags(html, "img", [&](THtmlAttributes& attributes) {
        std::string* source = FindAttribute(attributes, "src");
        if (!source || !FindAttribute(attributes, "new")) return false;
        *source = Store(connection, WithoutScheme(*source));
        const std::string hash = *source;
        std::erase_if(attributes, [](const auto& attribute) { return attribute.first == "new"; });
        attributes.emplace_back("src_original", hash);
        return true;
    });
}

std::string TImageCache::Prefix() const {
    return FileScheme + FFolder.string() + "/";
}

} // namespace Sdk
