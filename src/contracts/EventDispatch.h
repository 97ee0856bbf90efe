// The dispatch interface by which the HTML engine calls a component about its events.
#pragma once

#include "contracts/HtmlEngine.h"
#include "contracts/Ole.h"

namespace Ole {

inline constexpr const char* DispatchId = "{00020400-0000-0000-C000-000000000046}";
// The flag of Invoke that stands for a call of a method.
inline constexpr std::uint16_t DispatchMethod = 1;

// What a call that fails by an exception tells of it.
struct TExceptionInfo {
    std::u16string Source;
    std::u16string Description;
    HResult Status = StatusOk;
};

class ITypeInfo;

class IDispatch : public IUnknown {
public:
    ~IDispatch() override;
    virtual HResult GetTypeInfoCount(std::int32_t& count) = 0;
    virtual HResult GetTypeInfo(std::int32_t index, std::uint32_t localeId, ITypeInfo*& info) = 0;
    virtual HResult GetIDsOfNames(const std::string& iid, const std::vector<std::u16string>& names,
                                  std::uint32_t localeId, std::vector<std::int32_t>& dispIds) = 0;
    // The three pointers at the end may be empty.
    virtual HResult Invoke(std::int32_t dispId, const std::string& iid, std::uint32_t localeId,
                           std::uint16_t flags, const TEventArguments& params, THtmlValue* result,
                           TExceptionInfo* exceptionInfo, std::uint32_t* argumentError) = 0;
};

} // namespace Ole
