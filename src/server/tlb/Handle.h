// Shared handles on SDK objects, the roots of every SDK interface, and the query
// from one interface of an object to another.
#pragma once

#include <cstdint>
#include <memory>

namespace Quorane_TLB {

// Any non-zero word reads as true; -1 and 0 are what is written.
using WordBool = std::int16_t;
inline constexpr WordBool WordTrue = -1;
inline constexpr WordBool WordFalse = 0;

constexpr WordBool ToWordBool(bool value) {
    return value ? WordTrue : WordFalse;
}

// Counted; the object goes away when its last holder lets go. May be empty.
template<class Interface> using Handle = std::shared_ptr<Interface>;

class IUnknown {
public:
    IUnknown() = default;
    IUnknown(const IUnknown&) = delete;
    IUnknown& operator=(const IUnknown&) = delete;
    virtual ~IUnknown();
};

// Gives an empty handle when the object lacks the interface, or when the given
// handle is empty.
template<class Interface, class Source> Handle<Interface> Query(const Handle<Source>& object) {
    return std::dynamic_pointer_cast<Interface>(object);
}

[[noreturn]] void RaiseInterfaceNotSupported();

// Raises EConvertError when the object lacks the interface. An empty handle stays
// empty.
template<class Interface, class Source> Handle<Interface> Cast(const Handle<Source>& object) {
    Handle<Interface> result = Query<Interface>(object);
    if (!result && object) RaiseInterfaceNotSupported();
    return result;
}

} // namespace Quorane_TLB
