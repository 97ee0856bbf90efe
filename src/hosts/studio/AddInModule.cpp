#include "hosts/studio/AddInModule.h"

#include "contracts/HostServices.h"

#include <dlfcn.h>

namespace {

[[noreturn]] void FailToLoad(const std::filesystem::path& path) {
    const char* reason = dlerror();
    throw Exception("The add-in " + path.string() +
                    " cannot be loaded: " + (reason ? reason : "unknown reason") + ".");
}

} // namespace

TAddInModule::TAddInModule(const std::filesystem::path& path)
    : FHandle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!FHandle) FailToLoad(path);
    FRegister = reinterpret_cast<TIDERegisterProc>(dlsym(FHandle, IDERegisterName));
    if (FRegister) return;
    dlclose(FHandle);
    throw Exception("The module " + path.string() + " is no add-in: it does not export IDERegister.");
}

TAddInModule::~TAddInModule() {
    dlclose(FHandle);
}

void TAddInModule::Register() {
    FRegister();
}
