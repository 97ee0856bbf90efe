// What the add-in asks of the IDE that loads it. A host implements these interfaces
// and sets VantrelIDEServices before it loads a module; the module asks for one
// service after the other and never learns which host it runs in.
//
// Everything here is called on the user-interface thread. Texts are UTF-8.
#pragma once

#include "contracts/DockServices.h"
#include "contracts/EditorServices.h"
#include "contracts/Exceptions.h"

#include <bitset>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <typeindex>

class TImageList;
class TMenuItem;

// The name and signature of the one function that a module exports. The host calls
// it right after loading, while it is still coming up.
inline constexpr const char* IDERegisterName = "IDERegister";
using TIDERegisterProc = void (*)();

enum THostWizardStateFlag { wsEnabled, wsChecked };
using THostWizardState = std::bitset<2>;

// What an add-in shows of itself to the host. Named operations, in the order in
// which the host knows them.
class IHostWizard {
public:
    virtual ~IHostWizard();

    virtual void AfterSave() = 0;
    virtual void BeforeSave() = 0;
    virtual void Destroyed() = 0;
    virtual void Modified() = 0;
    virtual std::string GetIDString() = 0;
    virtual std::string GetName() = 0;
    virtual THostWizardState GetState() = 0;
    virtual void Execute() = 0;
};

class IHostWizardServices : public IHostService {
public:
    ~IHostWizardServices() override;

    // Gives the index by which the wizard is removed. The host shares the wizard
    // until then. Raises Exception when a wizard of this identity is registered.
    virtual std::int32_t AddWizard(std::shared_ptr<IHostWizard> wizard) = 0;

    // Raises Exception for an index that AddWizard did not give or that is removed.
    virtual void RemoveWizard(std::int32_t index) = 0;
};

class IHostNServices : public IHostService {
public:
    ~IHostNServices() override;

    // Copies the images behind those that the host has, for its menus. Gives the
    // index of the first copy; images stays the caller's.
    virtual int AddImages(const TImageList& images) = 0;
};

// A menu of the host's main form.
class IHostMenu {
public:
    virtual ~IHostMenu();

    // Takes the item over and inserts it before the item at index, or last when
    // there are fewer items. The item's image index counts in the host's images.
    // The item lives until the main form goes or the module that made it is unloaded.
    virtual TMenuItem& Insert(int index, std::unique_ptr<TMenuItem> item) = 0;
};

class IHostMainForm : public IHostService {
public:
    ~IHostMainForm() override;

    // The menu component of that name, for example "ViewsMenu"; empty when the
    // main form has none. It lives as long as the main form.
    virtual IHostMenu* FindMenu(const std::string& name) = 0;
};

class IHostStartup : public IHostService {
public:
    ~IHostStartup() override;

    // Calls the handler once, when the main form exists; handlers run in the order
    // of adding, and a failure of one keeps none of the others from running. A
    // handler added after that is not called. Gives the token to remove it with.
    virtual int AddMainFormCreated(std::function<void()> handler) = 0;

    // A token that is unknown or whose handler has run is let pass.
    virtual void RemoveMainFormCreated(int token) = 0;
};

// The door to all services of a host.
class IVantrelIDEServices {
public:
    virtual ~IVantrelIDEServices();

    // Empty when the host lacks the service. The service lives as long as the host.
    virtual IHostService* Find(std::type_index service) = 0;
};

// Set by the host alone: before it loads a module, and back to empty after the last
// module is gone.
extern IVantrelIDEServices* VantrelIDEServices;

// Raises Exception when a host is missing or lacks the service.
[[noreturn]] void RaiseHostServiceMissing(const std::type_index& service);

// For services that a host may lack.
template<class T> T* FindHostService() {
    return VantrelIDEServices ? static_cast<T*>(VantrelIDEServices->Find(typeid(T))) : nullptr;
}

template<class T> T& HostService() {
    T* service = FindHostService<T>();
    if (!service) RaiseHostServiceMissing(typeid(T));
    return *service;
}
