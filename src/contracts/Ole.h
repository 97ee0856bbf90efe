// The roots of the component-object layer as the HTML engine and data transfers know it:
// statuses and the interface that every other one derives from. Identifiers are texts in
// braces, in capital digits.
#pragma once

#include <cstdint>
#include <string>

namespace Ole {

// Negative for a failure.
using HResult = std::int32_t;

inline constexpr HResult StatusOk = 0;
inline constexpr HResult StatusFalse = 1;
inline constexpr auto StatusNotImplemented = static_cast<HResult>(0x80004001);
inline constexpr auto StatusNoInterface = static_cast<HResult>(0x80004002);
inline constexpr auto StatusUnexpected = static_cast<HResult>(0x8000FFFF);
inline constexpr auto StatusMemberNotFound = static_cast<HResult>(0x80020003);
inline constexpr auto StatusParameterNotFound = static_cast<HResult>(0x80020004);
inline constexpr auto StatusBadParameterCount = static_cast<HResult>(0x8002000E);
inline constexpr auto StatusAdviseNotSupported = static_cast<HResult>(0x80040003);
inline constexpr auto StatusBadFormat = static_cast<HResult>(0x80040064);

// Raises EOleSysError with the status's text for a failure.
void Check(HResult status);

inline constexpr const char* UnknownId = "{00000000-0000-0000-C000-000000000046}";

class IUnknown {
public:
    virtual ~IUnknown();
    // Fills object with a pointer to the interface of that identifier, or empties it.
    virtual HResult QueryInterface(const std::string& iid, void*& object) = 0;
    virtual std::int32_t _AddRef() = 0;
    virtual std::int32_t _Release() = 0;
};

} // namespace Ole
