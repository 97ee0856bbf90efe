#include "markup/HtmlImages.h"

#include "markup/HtmlWriter.h"

#include <algorithm>

namespace Markup {

namespace {

template<class Visit> void EachImage(const HtmlDocument& document, Visit visit) {
    const auto enter = [&](xmlNode& node) {
        if (IsElement(node, "img")) visit(node);
        return true;
    };
    if (xmlNode* const root = document.Root()) Walk(*root, enter, [](const xmlNode&) {});
}

std::string HashOf(const xmlNode& image) {
    std::string hash = ValueOf(image, "src_original");
    return IsPictureHash(hash) ? hash : std::string();
}

} // namespace

std::vector<HtmlImage> ImagesOf(const HtmlDocument& document) {
    std::vector<HtmlImage> images;
    EachImage(document, [&](const xmlNode& image) {
        const bool isNew = FindAttribute(image, "new") != nullptr;
        images.push_back({ValueOf(image, "src"), HashOf(image), isNew, Write(image)});
    });
    return images;
}

void ShowImages(const HtmlDocument& document, const std::string& addressPrefix) {
    EachImage(document, [&](xmlNode& image) {
        const std::string hash = HashOf(image);
        const std::string address = addressPrefix + hash;
        if (!hash.empty())
            xmlSetProp(&image, reinterpret_cast<const xmlChar*>("src"),
                       reinterpret_cast<const xmlChar*>(address.c_str()));
    });
}

bool IsPictureHash(std::string_view text) {
    return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

} // namespace Markup
