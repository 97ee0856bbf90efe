// What may be a picture of a description: client and server go by the same rules.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Markup {

inline constexpr std::size_t MaxPictureBytes = 16 * 1024 * 1024;
// As a message names them.
inline constexpr std::string_view PictureFormats = "PNG, JPEG, GIF or WebP";

// The media type that the first bytes tell; empty when they are those of no picture.
inline std::string_view PictureType(std::string_view bytes) {
    struct TFormat {
        std::string_view Start;
        std::string_view Type;
    };
    constexpr std::array formats = {TFormat{"\x89PNG\r\n\x1A\n", "image/png"},
                                    TFormat{"\xFF\xD8\xFF", "image/jpeg"}, TFormat{"GIF87a", "image/gif"},
                                    TFormat{"GIF89a", "image/gif"}};
    for (const TFormat& format : formats)
        if (bytes.starts_with(format.Start)) return format.Type;
    if (bytes.starts_with("RIFF") && bytes.size() >= 12 && bytes.substr(8, 4) == "WEBP") return "image/webp";
    return {};
}

} // namespace Markup
