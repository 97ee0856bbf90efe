// The interfaces by which a program hands data to another one, through the clipboard or
// a drag. The names are the published ones. Objects are held by counted handles.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "contracts/Ole.h"

// A block of memory that another program may read; zero at first.
class TGlobalMemory {
public:
    TGlobalMemory(std::uint32_t flags, std::size_t size)
        : FFlags(flags)
        , FBytes(size) {}

    std::uint32_t Flags() const { return FFlags; }
    std::size_t Size() const { return FBytes.size(); }

    // The first byte. The block stays in its place until as many unlocks followed.
    std::byte* Lock() {
        ++FLocks;
        return FBytes.data();
    }
    void Unlock() { --FLocks; }
    int Locks() const { return FLocks; }

private:
    std::uint32_t FFlags;
    std::vector<std::byte> FBytes;
    int FLocks = 0;
};

inline constexpr std::uint16_t CF_UNICODETEXT = 13;
inline constexpr std::uint32_t DVASPECT_CONTENT = 1;
inline constexpr std::uint32_t TYMED_HGLOBAL = 1;
inline constexpr std::uint32_t GMEM_SHARE = 0x2000;
inline constexpr std::uint32_t DATADIR_GET = 1;

struct DVTARGETDEVICE;

// A form in which data is offered or asked for.
struct FORMATETC {
    std::uint16_t cfFormat = 0;
    const DVTARGETDEVICE* ptd = nullptr;
    std::uint32_t dwAspect = 0;
    std::int32_t lindex = 0;
    std::uint32_t tymed = 0;

    bool operator==(const FORMATETC&) const = default;
};

// Data on its way. Whoever receives it owns the memory.
struct STGMEDIUM {
    std::uint32_t tymed = 0;
    std::unique_ptr<TGlobalMemory> hGlobal;
    std::shared_ptr<void> pUnkForRelease;
};

class IEnumFORMATETC {
public:
    virtual ~IEnumFORMATETC();
    // records has room for count; fetched may be empty. StatusFalse when fewer came.
    virtual Ole::HResult Next(std::uint32_t count, FORMATETC* records, std::uint32_t* fetched) = 0;
    virtual Ole::HResult Skip(std::uint32_t count) = 0;
    virtual Ole::HResult Reset() = 0;
    virtual Ole::HResult Clone(std::shared_ptr<IEnumFORMATETC>& enumerator) = 0;
};

class IAdviseSink;
class IEnumSTATDATA;

class IDataObject {
public:
    virtual ~IDataObject();
    virtual Ole::HResult GetData(const FORMATETC& format, STGMEDIUM& medium) = 0;
    virtual Ole::HResult GetDataHere(const FORMATETC& format, STGMEDIUM& medium) = 0;
    virtual Ole::HResult QueryGetData(const FORMATETC& format) = 0;
    virtual Ole::HResult GetCanonicalFormatEtc(const FORMATETC& format, FORMATETC& canonical) = 0;
    virtual Ole::HResult SetData(const FORMATETC& format, STGMEDIUM& medium, bool release) = 0;
    virtual Ole::HResult EnumFormatEtc(std::uint32_t direction,
                                       std::shared_ptr<IEnumFORMATETC>& enumerator) = 0;
    virtual Ole::HResult DAdvise(const FORMATETC& format, std::uint32_t flags, IAdviseSink* sink,
                                 std::uint32_t& connection) = 0;
    virtual Ole::HResult DUnadvise(std::uint32_t connection) = 0;
    virtual Ole::HResult EnumDAdvise(std::shared_ptr<IEnumSTATDATA>& enumerator) = 0;
};
