#include "platform/sdk/ImageCache.h"

#include "contracts/Exceptions.h"
#include "contracts/Pictures.h"
#include "markup/HtmlImages.h"
#include "markup/PictureFormat.h"
#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/HtmlTags.h"

#include <absl/strings/escaping.h>
#include <absl/strings/match.h>

#include <fstream>
#include <system_error>

#include <unistd.h>

namespace Sdk {

namespace {

constexpr std::size_t ChunkBytes = 64 * 1024;

// A new picture as the description names it.
struct TNewPicture {
    // For messages.
    std::string Name;
    std::string Bytes;
};

[[noreturn]] void RaiseNoPicture(const std::string& name, const std::string& why) {
    RaiseFailure("InvalidValueException: " + name + " is " + why + ". Take it out or insert another one.");
}

// The file may be anything that the user has chosen, so its size is looked at first.
TNewPicture ReadPicture(const std::string& path) {
    TNewPicture picture{"The picture \"" + path + "\"", {}};
    if (!IsChosenPicture(path)) RaiseNoPicture(picture.Name, "not one that was inserted here");
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!error && size > Markup::MaxPictureBytes)
        RaiseNoPicture(picture.Name, "larger than " + std::to_string(Markup::MaxPictureBytes) + " bytes");
    if (!error) {
        picture.Bytes.resize(size);
        std::ifstream file(path, std::ios::binary);
        if (file.read(picture.Bytes.data(), static_cast<std::streamsize>(size))) return picture;
    }
    RaiseFailure("FileNotFoundException: " + picture.Name + " cannot be read.");
}

// The bytes stand in the address itself, behind "data:image/png;base64," for example.
TNewPicture DecodePicture(const std::string& address) {
    TNewPicture picture{"A pasted picture", {}};
    const std::size_t comma = address.find(',');
    if (comma != std::string::npos && absl::EndsWithIgnoreCase(address.substr(0, comma), ";base64"))
        absl::Base64Unescape(PicturePath(address.substr(comma + 1)), &picture.Bytes);
    if (picture.Bytes.size() > Markup::MaxPictureBytes)
        RaiseNoPicture(picture.Name, "larger than " + std::to_string(Markup::MaxPictureBytes) + " bytes");
    return picture;
}

TNewPicture TakePicture(const std::string& address) {
    TNewPicture picture = absl::StartsWithIgnoreCase(address, "data:") ? DecodePicture(address)
                                                                       : ReadPicture(PicturePath(address));
    if (Markup::PictureType(picture.Bytes).empty())
        RaiseNoPicture(picture.Name, "no " + std::string(Markup::PictureFormats) + " picture");
    return picture;
}

} // namespace

TImageCache::TImageCache(std::filesystem::path folder)
    : FFolder(std::move(folder)) {}

void TImageCache::Fetch(TConnection& connection, const std::string& hash) const {
    std::error_code error;
    const auto file = FFolder / hash;
    if (!Markup::IsPictureHash(hash) || std::filesystem::exists(file, error)) return;
    wire::GetImageRequest request;
    request.set_hash(hash);
    std::vector<wire::ImageChunk> chunks;
    try {
        chunks = connection.AskStream("GetImage", &TConnection::TStub::GetImage, request);
    } catch (const EOleSysError& failure) {
        if (failure.ErrorCode() == CodeServerUnavailable) throw;
        return;
    }
    // What is no picture would only lie there.
    std::string bytes;
    for (const wire::ImageChunk& chunk : chunks)
        bytes += chunk.data();
    if (Markup::PictureType(bytes).empty()) return;
    std::filesystem::create_directories(FFolder, error);
    // Another window may fetch the same picture at the same time.
    const auto part = FFolder / (hash + "." + std::to_string(getpid()));
    std::ofstream out(part, std::ios::binary);
    out << bytes;
    out.close();
    if (out)
        std::filesystem::rename(part, file, error);
    else
        std::filesystem::remove(part, error);
}

std::string TImageCache::Store(TConnection& connection, const std::string& address) {
    const std::string bytes = TakePicture(address).Bytes;
    std::vector<wire::ImageChunk> chunks;
    for (std::size_t at = 0; at < bytes.size(); at += ChunkBytes)
        chunks.emplace_back().set_data(bytes.substr(at, ChunkBytes));
    return connection.AskWithStream("PutImage", &TConnection::TStub::PutImage, chunks).hash();
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
        if (!hash || !source || !Markup::IsPictureHash(*hash)) return false;
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
        *source = Store(connection, *source);
        const std::string hash = *source;
        std::erase_if(attributes, [](const auto& attribute) {
            return attribute.first == "new" || attribute.first == "src_original";
        });
        attributes.emplace_back("src_original", hash);
        return true;
    });
}

std::string TImageCache::Prefix() const {
    return "file://" + PictureAddress(FFolder.string()) + "/";
}

} // namespace Sdk
