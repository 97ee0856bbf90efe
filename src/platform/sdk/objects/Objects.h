// What the objects behind the binding's interfaces have in common. A chain of
// parent interfaces is carried out by a chain of templates over the interface that
// stands at its end, so that each operation is written once.
#pragma once

#include "platform/sdk/Failures.h"
#include "platform/sdk/SdkCalls.h"
#include "platform/sdk/Session.h"
#include "server/Quorane_TLB.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Sdk {

using namespace Quorane_TLB;

using TSessionHandle = std::shared_ptr<TSession>;

// How an operation gets at the data behind an object that a caller hands in, without
// calling operations that an observer would take for the caller's own.
template<class Data> class TDataHolder {
public:
    explicit TDataHolder(std::shared_ptr<Data> data)
        : FData(std::move(data)) {}
    virtual ~TDataHolder() = default;

    const std::shared_ptr<Data>& HeldData() const { return FData; }

private:
    const std::shared_ptr<Data> FData;
};

[[noreturn]] void RaiseForeignObject();

// Raises EOleSysError for an empty handle and for an object that holds no such data.
template<class Data, class Interface> const std::shared_ptr<Data>& DataOf(const Handle<Interface>& object) {
    const auto* holder = dynamic_cast<const TDataHolder<Data>*>(object.get());
    if (!holder) RaiseForeignObject();
    return holder->HeldData();
}

// An object with a number of its own.
class TNumbered {
public:
    explicit TNumbered(std::int32_t number)
        : FNumber(number) {}
    virtual ~TNumbered() = default;

    std::int32_t Number() const { return FNumber; }

private:
    const std::int32_t FNumber;
};

template<class Interface> std::int32_t NumberOf(const Handle<Interface>& object) {
    const auto* numbered = dynamic_cast<const TNumbered*>(object.get());
    if (!numbered) RaiseForeignObject();
    return numbered->Number();
}

template<class Interface> class TIdentity : public Interface, public TNumbered {
public:
    using TNumbered::TNumbered;

    std::int32_t Get_IDNumber() override {
        const TCall call("IQuoraneObjectID.Get_IDNumber");
        return Number();
    }
};

// Names a requirement as one baseline holds it.
class TRequirementIdentity final : public TIdentity<IRequirementID> {
public:
    TRequirementIdentity(std::int32_t number, std::int32_t baselineId)
        : TIdentity(number)
        , FBaselineId(baselineId) {}

    // 0: as the current baseline holds it.
    std::int32_t BaselineId() const { return FBaselineId; }

private:
    const std::int32_t FBaselineId;
};

template<class Interface> Handle<Interface> MakeIdentity(std::int32_t number) {
    return std::make_shared<TIdentity<Interface>>(number);
}

Handle<IQuoraneObjectCache> MakeCache(const TSessionHandle& session, ECache cache);

// A manager that has nothing but its cache.
template<class Interface> class TManager : public Interface {
public:
    TManager(TSessionHandle session, ECache cache)
        : FSession(std::move(session))
        , FCache(cache) {}

    Handle<IQuoraneObjectCache> Get_Cache() override {
        const TCall call("IQuoraneObjectManager.Get_Cache");
        return MakeCache(FSession, FCache);
    }

protected:
    const TSessionHandle FSession;

private:
    const ECache FCache;
};

Handle<IQuoraneObjectManager> MakeManager(const TSessionHandle& session, ECache cache);

// IQuoraneObject: a name and a manager.
template<class Interface> class TObject : public Interface, public TNumbered {
public:
    // Kind names the object in the failure of an operation that it does not offer.
    TObject(TSessionHandle session, std::int32_t number, std::string_view kind, ECache cache)
        : TNumbered(number)
        , FSession(std::move(session))
        , FKind(kind)
        , FCache(cache) {}

    Handle<IQuoraneObjectManager> Get_Manager() override {
        const TCall call("IQuoraneObject.Get_Manager");
        return MakeManager(FSession, FCache);
    }

    void Set_Name(const std::u16string& name) override {
        const TCall call("IQuoraneObject.Set_Name");
        WriteName(Utf8(name));
    }

    std::u16string Get_Name() override {
        const TCall call("IQuoraneObject.Get_Name");
        return Wide(ReadName());
    }

protected:
    virtual std::string ReadName() = 0;
    virtual void WriteName(const std::string&) { RaiseNotOffered("be renamed"); }

    [[noreturn]] void RaiseNotOffered(std::string_view what) const {
        RaiseUnsupported("A " + std::string(FKind) + " cannot " + std::string(what) + " by this client.");
    }

    const TSessionHandle FSession;

private:
    const std::string_view FKind;
    const ECache FCache;
};

// IMutableQuoraneObject: adds saving and removal.
template<class Interface> class TMutableObject : public TObject<Interface> {
public:
    using TObject<Interface>::TObject;
    using Interface::save; // a derived interface may have another form of it

    void remove() override {
        const TCall call("IMutableQuoraneObject.remove");
        Remove();
    }

    void save() override {
        const TCall call("IMutableQuoraneObject.save");
        Save();
    }

protected:
    virtual void Remove() { this->RaiseNotOffered("be removed"); }
    virtual void Save() { this->RaiseNotOffered("be changed"); }
};

// ILockableQuoraneObject: adds the server's edit lock.
template<class Interface> class TLockableObject : public TMutableObject<Interface> {
public:
    using TMutableObject<Interface>::TMutableObject;

    void lock() override {
        const TCall call("ILockableQuoraneObject.lock");
        Lock();
    }

    void unlock() override {
        const TCall call("ILockableQuoraneObject.unlock");
        Unlock();
    }

    WordBool Get_LockedByCurrentUser() override {
        const TCall call("ILockableQuoraneObject.Get_LockedByCurrentUser");
        return ToWordBool(IsLocked());
    }

protected:
    virtual void Lock() { this->RaiseNotOffered("be locked"); }
    virtual void Unlock() { this->RaiseNotOffered("be locked"); }
    virtual bool IsLocked() { return this->FSession->HoldsLock(this->Number()); }
};

} // namespace Sdk
