// The failing statuses of the component-object layer that this program raises
// itself, in the layer's own numbers.
#pragma once

#include <cstdint>

namespace Quorane_TLB {

inline constexpr auto StatusNoInterface = static_cast<std::int32_t>(0x80004002);
inline constexpr auto StatusPointer = static_cast<std::int32_t>(0x80004003);
inline constexpr auto StatusFailed = static_cast<std::int32_t>(0x80004005);
inline constexpr auto StatusUnexpected = static_cast<std::int32_t>(0x8000FFFF);
inline constexpr auto StatusTypeMismatch = static_cast<std::int32_t>(0x80020005);
inline constexpr auto StatusUnknownName = static_cast<std::int32_t>(0x80020006);
inline constexpr auto StatusException = static_cast<std::int32_t>(0x80020009);
inline constexpr auto StatusBadIndex = static_cast<std::int32_t>(0x8002000B);
inline constexpr auto StatusClassNotRegistered = static_cast<std::int32_t>(0x80040154);
inline constexpr auto StatusInvalidArgument = static_cast<std::int32_t>(0x80070057);

} // namespace Quorane_TLB
