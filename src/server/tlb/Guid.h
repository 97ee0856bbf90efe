// The 128-bit identifiers of interfaces, classes and the type library.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>

namespace Quorane_TLB {

struct Guid {
    std::uint32_t First;
    std::uint16_t Second;
    std::uint16_t Third;
    std::array<std::uint8_t, 8> Rest;

    auto operator<=>(const Guid&) const = default;
};

// In braces, in capital hexadecimal digits.
std::string GuidToString(const Guid& guid);

} // namespace Quorane_TLB
