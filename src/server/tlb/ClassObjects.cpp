#include "server/tlb/ClassObjects.h"

#include "contracts/Exceptions.h"
#include "server/tlb/Creator.h"
#include "server/tlb/StatusCodes.h"

namespace Quorane_TLB {
namespace {

TClassObjectProvider& Provider() {
    static TClassObjectProvider provider;
    return provider;
}

} // namespace

void SetClassObjectProvider(TClassObjectProvider provider) {
    Provider() = std::move(provider);
}

Handle<IDispatch> StartClass(const Guid& classId, const std::string& machine) {
    Handle<IDispatch> object;
    if (Provider()) object = Provider()(classId, machine);
    if (!object)
        throw EOleSysError("Class not registered, ClassID: " + GuidToString(classId),
                           StatusClassNotRegistered);
    return object;
}

void RaiseClassLacksInterface() {
    throw EOleSysError("Interface not supported", StatusNoInterface);
}

} // namespace Quorane_TLB
