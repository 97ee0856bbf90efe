#include "SdkLibrary.h"

#include "contracts/Exceptions.h"
#include "server/tlb/StatusCodes.h"

#include <dlfcn.h>

namespace {

using namespace Quorane_TLB;

TSdkEntry OpenLibrary(const std::filesystem::path& library) {
    void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* entry = handle ? dlsym(handle, SdkEntryName) : nullptr;
    if (entry) return reinterpret_cast<TSdkEntry>(entry);
    const char* reason = dlerror();
    throw EOleSysError(std::string("The Quorane SDK cannot be started: ") +
                           (reason ? reason : "unknown reason"),
                       StatusClassNotRegistered);
}

} // namespace

std::filesystem::path ModuleFolder() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&ModuleFolder), &info) || !info.dli_fname) return {};
    return std::filesystem::absolute(info.dli_fname).parent_path();
}

Handle<IDispatch> CreateSdkObject(const std::filesystem::path& library, const Guid& classId,
                                  const std::string& machine) {
    static TSdkEntry entry = nullptr;
    if (!entry) entry = OpenLibrary(library);
    Handle<IDispatch> object;
    entry(classId, machine, object);
    return object;
}
