#include "contracts/Exceptions.h"

Exception::Exception(const std::string& message)
    : std::runtime_error(message) {}
Exception::~Exception() = default;

EOleSysError::EOleSysError(const std::string& message, std::int32_t errorCode)
    : Exception(message)
    , FErrorCode(errorCode) {}
EOleSysError::~EOleSysError() = default;

EConvertError::EConvertError(const std::string& message)
    : Exception(message) {}
EConvertError::~EConvertError() = default;

EAbort::EAbort()
    : Exception("Operation aborted") {}
EAbort::~EAbort() = default;
