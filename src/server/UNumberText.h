// Numbers as the user reads and writes them: with the system's decimal separator.
#pragma once

#include <cstdint>
#include <string>

// The general decimal form with up to 15 significant digits.
std::string FloatToUserText(double value);

// Both take the whole text, blanks around the number allowed, and raise EConvertError
// for any other text and for a number out of range.
float UserTextToFloat(const std::string& text);
std::int32_t UserTextToInteger(const std::string& text);
