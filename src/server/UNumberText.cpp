#include "server/UNumberText.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <string_view>

#include "contracts/Exceptions.h"
#include "server/UResourceStrings.h"
#include "server/tlb/Variant.h"

std::string_view DecimalSeparator() {
    return std::localeconv()->decimal_point;
}

namespace {

// A number's own text: without the blanks around it and a leading plus.
std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    text = text.substr(first, text.find_last_not_of(blanks) + 1 - first);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

template<class TNumber> bool Parse(std::string_view text, TNumber& number) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

std::string FloatToUserText(double value, std::string_view separator) {
    std::string text = Quorane_TLB::FloatToText(value);
    if (const auto point = text.find('.'); point != text.npos) text.replace(point, 1, separator);
    return text;
}

float UserTextToFloat(const std::string& text, std::string_view separator) {
    std::string number(Trimmed(text));
    const bool foreignPoint = separator != "." && number.find('.') != number.npos;
    if (const auto point = number.find(separator); point != number.npos)
        number.replace(point, separator.size(), ".");
    float value = 0;
    if (foreignPoint || !Parse(number, value) || !std::isfinite(value))
        throw EConvertError("'" + text + SNotAFloat);
    return value;
}

std::int32_t UserTextToInteger(const std::string& text) {
    std::int32_t value = 0;
    if (!Parse(Trimmed(text), value)) throw EConvertError("'" + text + SNotAnInteger);
    return value;
}
