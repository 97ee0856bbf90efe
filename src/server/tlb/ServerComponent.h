// What all components of the binding share: one handle on an SDK object, started when
// it is first needed or handed in.
#pragma once

#include <utility>

#include "server/tlb/Creator.h"

namespace Quorane_TLB {

struct TServerData {
    Guid ClassID;
    Guid InterfaceID;
    Guid EventsID; // all zero: no component has events
    int Version;
};

[[noreturn]] void RaiseNotConnected();

template<class Interface> class TServerComponent {
public:
    TServerComponent() { InitServerData(); }
    virtual ~TServerComponent() = default;
    TServerComponent(const TServerComponent&) = delete;
    TServerComponent& operator=(const TServerComponent&) = delete;

    const TServerData& ServerData() const { return FServerData; }

    // Starts the server class. Does nothing while the component holds an object.
    // Raises as a creator does.
    virtual void Connect() {
        if (!FInterface) FInterface = TCreator<Interface>::Create();
    }
    // Lets the object go that the component holds and takes this one.
    void ConnectTo(Handle<Interface> object) {
        Disconnect();
        FInterface = std::move(object);
    }
    void Disconnect() { FInterface.reset(); }

    // Connects when the component holds no object yet, and raises EOleSysError when
    // there is none afterwards either.
    const Handle<Interface>& GetDefaultInterface() {
        if (!FInterface) Connect();
        if (!FInterface) RaiseNotConnected();
        return FInterface;
    }

private:
    void InitServerData() { FServerData = {Interface::ClassID, Interface::IID, Guid{}, 500}; }

    TServerData FServerData{};
    Handle<Interface> FInterface;
};

} // namespace Quorane_TLB
