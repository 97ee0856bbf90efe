#include "server/tlb/ClassObjects.h"

#include "contracts/Exceptions.h"
#include "server/tlb/Creator.h"
#include "server/tlb/InterfaceTable.h"
#include "server/tlb/ServerComponent.h"
#include "server/tlb/StatusCodes.h"

namespace Quorane_TLB {
namespace {

TClassObjectProvider& Provider() {
    static TClassObjectProvider provider;
    return provider;
}

std::string ClassLabel(const Guid& classId) {
    for (const TInterfaceEntry& entry : InterfaceTable())
        if (!entry.ClassName.empty() && entry.ClassId == classId)
            return std::string(entry.ClassName) + " " + GuidToString(classId);
    return GuidToString(classId);
}

} // namespace

void SetClassObjectProvider(TClassObjectProvider provider) {
    Provider() = std::move(provider);
}

Handle<IDispatch> StartClass(const Guid& classId, const std::string& machine) {
    Handle<IDispatch> object;
    if (Provider()) object = Provider()(classId, machine);
    if (!object) throw EOleSysError("Class not registered: " + ClassLabel(classId), StatusClassNotRegistered);
    return object;
}

void RaiseClassLacksInterface() {
    throw EOleSysError("Interface not supported", StatusNoInterface);
}

void RaiseNotConnected() {
    throw EOleSysError("DefaultInterface is NULL. Component is not connected to Server. "
                       "You must call 'Connect' or 'ConnectTo' before this operation",
                       StatusUnexpected);
}

} // namespace Quorane_TLB
