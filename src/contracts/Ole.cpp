#include "contracts/Ole.h"

#include <cstdio>

#include "contracts/DataTransfer.h"
#include "contracts/EventDispatch.h"
#include "contracts/Exceptions.h"

namespace Ole {

IUnknown::~IUnknown() = default;
IDispatch::~IDispatch() = default;

static std::string StatusText(HResult status) {
    switch (status) {
    case StatusNoInterface:
        return "Interface not supported";
    case hsFail:
        return "Unspecified error";
    case StatusParameterNotFound:
        return "Parameter not found.";
    case StatusBadParameterCount:
        return "Invalid number of parameters.";
    default:
        char text[20];
        std::snprintf(text, sizeof text, "OLE error %08X", static_cast<std::uint32_t>(status));
        return text;
    }
}

void Check(HResult status) {
    if (status < 0) throw EOleSysError(StatusText(status), status);
}

} // namespace Ole

IEnumFORMATETC::~IEnumFORMATETC() = default;
IDataObject::~IDataObject() = default;
