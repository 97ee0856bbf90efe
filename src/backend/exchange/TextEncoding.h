// Bytes of a known or guessed encoding as UTF-8.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Exchange {

// An encoding that the system does not know; the message is a sentence.
class EncodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct DecodedText {
    std::string Utf8;          // without byte-order mark; U+FFFD stands for what is wrong
    std::string Encoding;      // that was used
    std::vector<int> BadLines; // numbers, from 1, of the lines with wrong bytes, ascending
};

// A line ends with a line feed, a carriage return, or both. An empty encoding means
// the one that a byte-order mark tells, and UTF-8 without one.
DecodedText DecodeText(std::string_view bytes, const std::string& encoding);

} // namespace Exchange
