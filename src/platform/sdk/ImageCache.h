// The pictures of descriptions on this machine. A stored description names a picture
// by the hash of its bytes; a shown one by the file in this cache.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Sdk {

class TConnection;

class TImageCache {
public:
    // The folder need not exist yet.
    explicit TImageCache(std::filesystem::path folder);

    // One round trip for a picture that is not here. One that the server lacks, that is
    // none or that cannot be stored is left out: the description shows without it. Raises
    // the failure of a lost connection.
    void Fetch(TConnection& connection, const std::string& hash) const;

    // The description with every picture that is marked as new sent to the server and
    // named by its hash: a round trip each. Its address is a file's (PictureAddress) or
    // holds the bytes themselves ("data:"). Raises when a file is not chosen
    // (IsChosenPicture), cannot be read, is too large or is no picture.
    std::string StoreNew(TConnection& connection, const std::string& html) const;

    // The description without marks for new pictures. One that somebody else has marked
    // would send a file of this user's with the next save.
    static std::string WithoutNew(const std::string& html);

    // Each the inverse of the other, of a whole description.
    std::string ToShown(const std::string& html) const;
    std::string ToStored(const std::string& html) const;

private:
    static std::string Store(TConnection& connection, const std::string& address);
    std::string Prefix() const;

    const std::filesystem::path FFolder;
};

} // namespace Sdk
