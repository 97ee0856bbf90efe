// The add-in's module: composes the system's services, the SDK and the add-in, and
// takes them apart again when the host unloads it.
#include "LateLibraries.h"
#include "ide/QuoraneAddinWizard.h"
#include "platform/system/DesktopSystemServices.h"
#include "server/Quorane_TLB.h"
#include "server/UQuoraneSession.h"

#include <filesystem>

namespace {

TSystemPaths Paths(const std::filesystem::path& library) {
    TSystemPaths paths = TSystemPaths::Default();
    paths.TypeLibraries.emplace(Quorane_TLB::GuidToString(Quorane_TLB::LIBID_Quorane), library);
    return paths;
}

// Where the logic finds system, SDK and engine while the module is in use.
class TServices {
public:
    TServices()
        : FLibrary(ModuleFolder() / "libquorane-sdk.so")
        , FSystem(Paths(FLibrary)) {
        SetSystemServices(&FSystem);
        Quorane_TLB::SetClassObjectProvider(
            [library = FLibrary](const Quorane_TLB::Guid& classId, const std::string& machine) {
                return CreateSdkObject(library, classId, machine);
            });
        SetHtmlEngineFactory([library = ModuleFolder() / "libquorane-engine.so"](TWinControl& parent,
                                                                                 const std::string& name) {
            return CreateEngineBrowser(library, parent, name);
        });
    }
    ~TServices() {
        SetHtmlEngineFactory({});
        Quorane_TLB::SetClassObjectProvider({});
        SetSystemServices(nullptr);
    }

    TServices(const TServices&) = delete;
    TServices& operator=(const TServices&) = delete;

private:
    std::filesystem::path FLibrary;
    TDesktopSystemServices FSystem;
};

class TComposition {
public:
    TComposition() { RegisterAddIn(); }
    // The panel goes before the session, and the session needs SDK and system.
    ~TComposition() {
        UnregisterAddIn();
        FinalizeQuoraneSession();
    }

    TComposition(const TComposition&) = delete;
    TComposition& operator=(const TComposition&) = delete;

private:
    // A member, so that it goes also when the host refuses the add-in.
    TServices FServices;
};

} // namespace

extern "C" [[gnu::visibility("default")]] void IDERegister() {
    // Made at the call and not at load, so it is destroyed before every other object of
    // the module.
    static const TComposition composition;
}
