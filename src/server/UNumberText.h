// Numbers as the user reads and writes them: with the system's decimal separator.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Of the system; some languages have one of several bytes.
std::string_view DecimalSeparator();

// The general decimal form with up to 15 significant digits.
std::string FloatToUserText(double value, std::string_view separator = DecimalSeparator());

// Both take the whole text, blanks around the number allowed, and raise EConvertError
// for any other text and for a number out of range.
float UserTextToFloat(const std::string& text, std::string_view separator = DecimalSeparator());
std::int32_t UserTextToInteger(const std::string& text);
