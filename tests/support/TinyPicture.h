// A real picture, for whoever looks at its bytes.
#pragma once

#include <string>
#include <string_view>

// As it is without a mark.
inline constexpr std::string_view TinyPictureBase64 = "R0lGODlhAQABAIAAAAAAAP///ywAAAAAAQABAAACAkQBADs=";

// A GIF of one point. What stands behind its end is no part of it, so different marks
// make different pictures.
inline std::string TinyPicture(std::string_view mark = {}) {
    using namespace std::string_view_literals;
    constexpr auto gif =
        "GIF89a\x01\0\x01\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0;"sv;
    return std::string(gif).append(mark);
}
