#include "platform/sdk/Failures.h"

#include "contracts/Exceptions.h"

namespace Sdk {

void RaiseFailure(const std::string& message, std::int32_t code) {
    throw EOleSysError(message, code);
}

void RaiseLostConnection(const std::string& why) {
    throw EOleSysError("RemoteServerException: Quorane.SERVER_ERROR: " + why, CodeServerUnavailable);
}

void RaiseUnsupported(std::string_view what) {
    throw EOleSysError("UnsupportedOperationException: " + std::string(what), CodeUnsupported);
}

void CheckIndex(std::int64_t index, std::size_t count) {
    if (index >= 0 && static_cast<std::size_t>(index) < count) return;
    throw EOleSysError("IndexOutOfBoundsException: The list of " + std::to_string(count) +
                           " elements has none at position " + std::to_string(index) + ".",
                       CodeBadIndex);
}

} // namespace Sdk
