#include "LateLibraries.h"

#include "contracts/Exceptions.h"
#include "server/tlb/StatusCodes.h"

#include <dlfcn.h>

namespace {

using namespace Quorane_TLB;

template<class TEntry> TEntry OpenLibrary(const std::filesystem::path& library, const char* entryName) {
    void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* entry = handle ? dlsym(handle, entryName) : nullptr;
    if (entry) return reinterpret_cast<TEntry>(entry);
    const char* reason = dlerror();
    throw EOleSysError(library.filename().string() +
                           " cannot be started: " + (reason ? reason : "unknown reason"),
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
    if (!entry) entry = OpenLibrary<TSdkEntry>(library, SdkEntryName);
    Handle<IDispatch> object;
    entry(classId, machine, object);
    return object;
}

std::unique_ptr<IWebBrowser> CreateEngineBrowser(const std::filesystem::path& library, TWinControl& parent,
                                                 const std::string& name) {
    static THtmlEngineEntry entry = nullptr;
    if (!entry) entry = OpenLibrary<THtmlEngineEntry>(library, HtmlEngineEntryName);
    std::unique_ptr<IWebBrowser> browser;
    entry(parent, name, browser);
    return browser;
}
