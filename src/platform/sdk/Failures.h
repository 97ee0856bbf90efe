// How a failure shows: each operation that does not succeed raises EOleSysError,
// and its message carries the class name of the server's exception, by which the
// callers tell failures apart.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Sdk {

// Status codes of the component-object layer.
inline constexpr std::int32_t CodeFailed = static_cast<std::int32_t>(0x80004005);
inline constexpr std::int32_t CodeUnsupported = static_cast<std::int32_t>(0x80004001);
inline constexpr std::int32_t CodeBadIndex = static_cast<std::int32_t>(0x8002000B);
inline constexpr std::int32_t CodeServerUnavailable = static_cast<std::int32_t>(0x800706BA);

[[noreturn]] void RaiseFailure(const std::string& message, std::int32_t code = CodeFailed);

// The connection or the session is gone. The message holds "RemoteServerException"
// and "Quorane.SERVER_ERROR", which makes the callers restore the session.
[[noreturn]] void RaiseLostConnection(const std::string& why);

// The operation exists in the binding and this SDK does not offer it on that kind.
[[noreturn]] void RaiseUnsupported(std::string_view what);

// For a number that must be a position in a list of `count` elements.
void CheckIndex(std::int64_t index, std::size_t count);

} // namespace Sdk
