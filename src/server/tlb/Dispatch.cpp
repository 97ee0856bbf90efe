#include "server/tlb/Dispatch.h"

#include <vector>

#include "contracts/Exceptions.h"
#include "server/tlb/StatusCodes.h"

namespace Quorane_TLB {
namespace {

Variant InvokeOn(const Handle<IDispatch>& object, std::string_view name, InvokeKind kind,
                 std::vector<Variant> arguments) {
    return Require(object)->Invoke(name, kind, arguments);
}

} // namespace

IUnknown::~IUnknown() = default;

void RaiseInterfaceNotSupported() {
    throw EConvertError("Interface not supported");
}

void RaiseEmptyHandle() {
    throw EOleSysError("Object is empty.", StatusPointer);
}

Variant IDispatch::Invoke(std::string_view, InvokeKind, std::span<Variant>) {
    throw EOleSysError("Unknown name.", StatusUnknownName);
}

Variant CallByName(const Handle<IDispatch>& object, std::string_view name,
                   std::initializer_list<Variant> arguments) {
    return InvokeOn(object, name, InvokeKind::Method, arguments);
}

Variant GetByName(const Handle<IDispatch>& object, std::string_view name,
                  std::initializer_list<Variant> arguments) {
    return InvokeOn(object, name, InvokeKind::PropertyGet, arguments);
}

void PutByName(const Handle<IDispatch>& object, std::string_view name, const Variant& value) {
    InvokeOn(object, name, InvokeKind::PropertyPut, {value});
}

} // namespace Quorane_TLB
