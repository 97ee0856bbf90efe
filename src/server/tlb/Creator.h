// The start of SDK objects by the identifier of their class.
#pragma once

#include <string>

#include "server/tlb/Dispatch.h"

namespace Quorane_TLB {

// Raises EOleSysError "Class not registered" when there is no such class.
Handle<IDispatch> StartClass(const Guid& classId, const std::string& machine);

[[noreturn]] void RaiseClassLacksInterface();

// Each result is a new object. An empty machine name means this machine.
template<class Interface> class TCreator {
public:
    static Handle<Interface> Create() { return CreateRemote(std::string()); }

    static Handle<Interface> CreateRemote(const std::string& machine) {
        Handle<Interface> result = Query<Interface>(StartClass(Interface::ClassID, machine));
        if (!result) RaiseClassLacksInterface();
        return result;
    }
};

} // namespace Quorane_TLB
