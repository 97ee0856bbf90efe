// What the generated tables of calls by name are made of: a row per operation, the
// search for it, and the conversion of arguments and results.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

#include "contracts/Exceptions.h"
#include "server/tlb/Dispatch.h"
#include "server/tlb/StatusCodes.h"

namespace Quorane_TLB {

template<class Interface> struct TNamedOperation {
    std::string_view Name;
    InvokeKind Kind;
    std::size_t ArgumentCount;
    Variant (*Call)(Interface& self, std::span<Variant> arguments);
};

// A parent's operation of the same name is told apart by its number of arguments.
template<class Interface>
const TNamedOperation<Interface>* FindNamed(std::span<const TNamedOperation<Interface>> operations,
                                            std::string_view name, InvokeKind kind,
                                            std::size_t argumentCount) {
    const auto found = std::ranges::find_if(operations, [&](const TNamedOperation<Interface>& operation) {
        return operation.Name == name && operation.Kind == kind && operation.ArgumentCount == argumentCount;
    });
    return found == operations.end() ? nullptr : &*found;
}

template<class Value> struct TFromVariant;

template<class Interface> struct TFromVariant<Handle<Interface>> {
    static Handle<Interface> Convert(const Variant& value) {
        const Handle<IDispatch> object = value.AsDispatch();
        Handle<Interface> result = Query<Interface>(object);
        if (object && !result) throw EOleSysError("Type mismatch.", StatusTypeMismatch);
        return result;
    }
};

template<> struct TFromVariant<std::u16string> {
    static std::u16string Convert(const Variant& value) { return value.AsText(); }
};

template<> struct TFromVariant<WordBool> {
    static WordBool Convert(const Variant& value) { return value.AsBoolean(); }
};

template<> struct TFromVariant<std::int32_t> {
    static std::int32_t Convert(const Variant& value) { return value.AsInteger(); }
};

template<> struct TFromVariant<float> {
    static float Convert(const Variant& value) { return value.AsFloat(); }
};

template<> struct TFromVariant<double> {
    static double Convert(const Variant& value) { return value.AsDouble(); }
};

template<> struct TFromVariant<Variant> {
    static const Variant& Convert(const Variant& value) { return value; }
};

template<class Value> decltype(auto) FromVariant(const Variant& value) {
    return TFromVariant<Value>::Convert(value);
}

inline Variant ToVariant(std::u16string text) {
    return Variant(std::move(text));
}

inline Variant ToVariant(WordBool flag) {
    return Variant::Boolean(flag);
}

inline Variant ToVariant(std::int32_t number) {
    return Variant(number);
}

inline Variant ToVariant(float number) {
    return Variant::Float(number);
}

inline Variant ToVariant(double number) {
    return Variant(number);
}

inline Variant ToVariant(Variant value) {
    return value;
}

// Objects travel in variants by their dispatch interface.
template<class Interface> Variant ToVariant(const Handle<Interface>& object) {
    return Variant(Query<IDispatch>(object));
}

} // namespace Quorane_TLB
