// The two forms of text: 8-bit in the system code page, which is UTF-8, on the
// user-interface side, and UTF-16 on the SDK's side.
#pragma once

#include <string>
#include <string_view>

namespace Quorane_TLB {

// Neither direction fails: what is no well-formed text becomes U+FFFD.
std::string Utf8(std::u16string_view text);
std::u16string Wide(std::string_view text);

} // namespace Quorane_TLB
