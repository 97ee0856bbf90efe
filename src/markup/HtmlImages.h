// The pictures of a description. A stored one is named by the hash of its bytes
// ("src_original"), and shown from a file of that name.
#pragma once

#include "markup/HtmlDocument.h"

#include <vector>

namespace Markup {

struct HtmlImage {
    // The "src", as it stands; empty for none.
    std::string Path;
    // The hash of a stored picture; empty for any other.
    std::string Hash;
    // Marked to be stored with the next save.
    bool New = false;
    // The element by itself.
    std::string Html;
};

// In the order of the text.
std::vector<HtmlImage> ImagesOf(const HtmlDocument& document);

// Every stored picture shown from the address that is made of this and its hash.
// Others stay as they are.
void ShowImages(const HtmlDocument& document, const std::string& addressPrefix);

// Whether a text is the hash of a picture, and so leads nowhere as a file's name.
bool IsPictureHash(std::string_view text);

} // namespace Markup
