// The exception classes that every layer shares. The standard error box shows
// what() of whatever leaves a handler, so each message is a sentence for the user.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

// A plain failure with a message fit for the user, as 8-bit text in UTF-8.
class Exception : public std::runtime_error {
public:
    explicit Exception(const std::string& message);
    ~Exception() override;
};

// A failure of the component-object layer: an object that cannot be started, a
// call that the SDK answered with a failing status. Message() of a failed call
// holds the class name of the server's exception.
class EOleSysError : public Exception {
public:
    EOleSysError(const std::string& message, std::int32_t errorCode);
    ~EOleSysError() override;

    // The failing status, negative as such codes are.
    std::int32_t ErrorCode() const { return FErrorCode; }

private:
    std::int32_t FErrorCode;
};

// A value that cannot be converted: text in place of a number, a variant of the
// wrong kind, a query that a cast insists on.
class EConvertError : public Exception {
public:
    explicit EConvertError(const std::string& message);
    ~EConvertError() override;
};

// Ends a handler without a message, because the user has been told already. The guard
// of a handler lets it go no further.
class EAbort : public Exception {
public:
    EAbort();
    ~EAbort() override;
};
