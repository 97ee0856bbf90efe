// The interface under every SDK interface: its operations can also be called by
// name.
#pragma once

#include <initializer_list>
#include <span>
#include <string_view>

#include "server/tlb/Guid.h"
#include "server/tlb/Handle.h"
#include "server/tlb/Text.h"
#include "server/tlb/Variant.h"

namespace Quorane_TLB {

// A property stands under its name without Get_ or Set_.
enum class InvokeKind { Method, PropertyGet, PropertyPut };

class IDispatch : public IUnknown {
public:
    // Calls the operation of that name, with its case, and that many arguments; the
    // arguments that the call fills are changed in place. Gives Empty when the
    // operation has no result. Raises EOleSysError "Unknown name." when the object
    // has no such operation, EConvertError when an argument can't be converted, and
    // whatever the operation raises.
    virtual Variant Invoke(std::string_view name, InvokeKind kind, std::span<Variant> arguments);
};

[[noreturn]] void RaiseEmptyHandle();

// Gives the handle back. Raises EOleSysError when it is empty, where a call through
// it would otherwise end the program.
template<class Interface> const Handle<Interface>& Require(const Handle<Interface>& object) {
    if (!object) RaiseEmptyHandle();
    return object;
}

// The common forms of Invoke. An empty handle raises EOleSysError.
Variant CallByName(const Handle<IDispatch>& object, std::string_view name,
                   std::initializer_list<Variant> arguments = {});
Variant GetByName(const Handle<IDispatch>& object, std::string_view name,
                  std::initializer_list<Variant> arguments = {});
void PutByName(const Handle<IDispatch>& object, std::string_view name, const Variant& value);

} // namespace Quorane_TLB
