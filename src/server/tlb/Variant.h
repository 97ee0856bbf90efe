// A value of one of several kinds, as collections, history and calls by name pass
// it.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "server/tlb/Handle.h"

namespace Quorane_TLB {

class IDispatch;

class Variant {
public:
    // In the order of the alternatives of FValue.
    enum class EKind { Empty, Null, Byte, Integer, Boolean, Float, Double, Text, Dispatch, TextReference };

    Variant() = default; // Empty: no value was given
    Variant(std::int32_t value)
        : FValue(value) {}
    Variant(double value)
        : FValue(value) {}
    Variant(std::u16string value)
        : FValue(std::move(value)) {}
    Variant(const char16_t* value)
        : FValue(std::u16string(value)) {}
    Variant(Handle<IDispatch> object)
        : FValue(std::move(object)) {}
    template<class Interface>
    Variant(const Handle<Interface>& object)
        : FValue(Handle<IDispatch>(object)) {}
    Variant(bool) = delete;

    static Variant Null() { return Of(TNull()); } // a value that is known to be none
    static Variant Byte(std::uint8_t value) { return Of(value); }
    static Variant Boolean(WordBool value) { return Of(TBoolean{value}); }
    static Variant Float(float value) { return Of(value); }
    // An 8-bit text of the caller, which must outlive the variant; the call may
    // change it.
    static Variant TextReference(std::string& text) { return Of(&text); }

    EKind Kind() const { return static_cast<EKind>(FValue.index()); }
    bool IsEmpty() const { return Kind() == EKind::Empty; }
    bool IsNull() const { return Kind() == EKind::Null; }

    // Each gives the value in the wanted form, converted where that loses nothing but
    // the kind (numbers among each other, numbers to text), and raises EConvertError
    // where it can't be. Empty reads as 0, empty text or an empty handle.
    std::int32_t AsInteger() const; // a fraction is rounded to the nearest, half to even
    WordBool AsBoolean() const;
    float AsFloat() const;
    double AsDouble() const;
    std::u16string AsText() const;
    Handle<IDispatch> AsDispatch() const;
    // Raises EConvertError for every other kind.
    std::string& AsTextReference() const;

    bool operator==(const Variant&) const = default;

private:
    struct TNull {
        bool operator==(const TNull&) const = default;
    };
    struct TBoolean {
        WordBool Value;
        bool operator==(const TBoolean&) const = default;
    };
    using TValue = std::variant<std::monostate, TNull, std::uint8_t, std::int32_t, TBoolean, float, double,
                                std::u16string, Handle<IDispatch>, std::string*>;

    template<class Alternative> static Variant Of(Alternative value) {
        Variant result;
        result.FValue = std::move(value);
        return result;
    }

    TValue FValue;
};

// The value as 8-bit text; Null gives empty text. Raises EConvertError for an object.
std::string VarToStr(const Variant& value);

// The general decimal form with up to 15 significant digits and a point.
std::string FloatToText(double value);

} // namespace Quorane_TLB
