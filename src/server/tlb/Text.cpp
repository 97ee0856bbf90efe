#include "server/tlb/Text.h"

#include <cstddef>
#include <cstdint>

namespace Quorane_TLB {
namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char32_t NextOfUtf16(std::u16string_view text, std::size_t& index) {
    const char32_t unit = text[index++];
    if (IsHighSurrogate(unit) && index < text.size() && IsLowSurrogate(text[index]))
        return 0x10000 + ((unit - 0xD800) << 10) + (text[index++] - 0xDC00U);
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? Replacement : unit;
}

void AppendUtf8(std::string& result, char32_t point) {
    const auto put = [&result](char32_t value) { result.push_back(static_cast<char>(value)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

void AppendUtf16(std::u16string& result, char32_t point) {
    if (point < 0x10000) {
        result.push_back(static_cast<char16_t>(point));
        return;
    }
    result.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
    result.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

int ContinuationCount(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 1;
    if (lead >= 0xE0 && lead <= 0xEF) return 2;
    if (lead >= 0xF0 && lead <= 0xF4) return 3;
    return -1;
}

bool IsTooLong(char32_t point, int continuations) {
    return (continuations == 2 && point < 0x800) || (continuations == 3 && point < 0x10000);
}

// A fault takes one byte with it, so that what follows is read afresh.
char32_t NextOfUtf8(std::string_view text, std::size_t& index) {
    const auto lead = static_cast<unsigned char>(text[index++]);
    if (lead < 0x80) return lead;
    const int continuations = ContinuationCount(lead);
    if (continuations < 0 || text.size() - index < static_cast<std::size_t>(continuations))
        return Replacement;
    char32_t point = lead & (0x3FU >> continuations);
    for (int i = 0; i < continuations; ++i) {
        const auto byte = static_cast<unsigned char>(text[index + static_cast<std::size_t>(i)]);
        if ((byte & 0xC0) != 0x80) return Replacement;
        point = (point << 6) | (byte & 0x3FU);
    }
    if (IsTooLong(point, continuations) || point > 0x10FFFF || IsHighSurrogate(point) ||
        IsLowSurrogate(point))
        return Replacement;
    index += static_cast<std::size_t>(continuations);
    return point;
}

} // namespace

std::string Utf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size();)
        AppendUtf8(result, NextOfUtf16(text, index));
    return result;
}

std::u16string Wide(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size();)
        AppendUtf16(result, NextOfUtf8(text, index));
    return result;
}

} // namespace Quorane_TLB
