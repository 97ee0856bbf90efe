#include "description/UDHTMLHelper.h"

#include <algorithm>

namespace {

char16_t Capital(char16_t letter) {
    return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
}

bool SameTag(const std::u16string& one, const std::string& other) {
    return std::ranges::equal(one, other, {}, Capital,
                              [](char letter) { return Capital(static_cast<unsigned char>(letter)); });
}

} // namespace

std::int32_t THTMLHelper::GetSubElementCount(IHTMLElement& element, const std::string& tagName,
                                             bool recursive) {
    const THtmlHandle<IHTMLElementCollection> children = element.get_children();
    if (!children) return 0;
    std::int32_t count = 0;
    for (std::int32_t index = 0; index < children->get_length(); ++index) {
        const THtmlHandle<IHTMLElement> child = children->item(index);
        if (!child) continue;
        if (SameTag(child->get_tagName(), tagName))
            ++count;
        else if (recursive)
            count += GetSubElementCount(*child, tagName, recursive);
    }
    return count;
}

std::int32_t THTMLHelper::GetTableRowCount(IHTMLElement& table) {
    return GetSubElementCount(table, "TR", true);
}

std::int32_t THTMLHelper::GetTableColCount(IHTMLElement& table) {
    const std::int32_t rows = GetTableRowCount(table);
    return rows == 0 ? 0 : GetSubElementCount(table, "TD", true) / rows;
}
