#include "server/tlb/Variant.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>

#include "contracts/Exceptions.h"
#include "server/tlb/Dispatch.h"

namespace Quorane_TLB {
namespace {

constexpr std::array<std::string_view, 10> KindNames = {
    "Empty", "Null", "Byte", "Integer", "Boolean", "Single", "Double", "Text", "Dispatch", "Text reference"};

[[noreturn]] void RaiseCannotConvert(Variant::EKind from, std::string_view to) {
    throw EConvertError("Could not convert variant of type (" +
                        std::string(KindNames[static_cast<std::size_t>(from)]) + ") into type (" +
                        std::string(to) + ")");
}

std::optional<double> ParseNumber(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

} // namespace

double Variant::AsDouble() const {
    switch (Kind()) {
    case EKind::Empty:
        return 0;
    case EKind::Byte:
        return std::get<std::uint8_t>(FValue);
    case EKind::Integer:
        return std::get<std::int32_t>(FValue);
    case EKind::Boolean:
        return std::get<TBoolean>(FValue).Value;
    case EKind::Float:
        return static_cast<double>(std::get<float>(FValue));
    case EKind::Double:
        return std::get<double>(FValue);
    case EKind::Text:
    case EKind::TextReference:
        if (const auto number = ParseNumber(Utf8(AsText()))) return *number;
        break;
    case EKind::Null:
    case EKind::Dispatch:
        break;
    }
    RaiseCannotConvert(Kind(), "Double");
}

std::int32_t Variant::AsInteger() const {
    if (const auto* integer = std::get_if<std::int32_t>(&FValue)) return *integer;
    const double number = std::nearbyint(AsDouble());
    if (!(number >= std::numeric_limits<std::int32_t>::min() &&
          number <= std::numeric_limits<std::int32_t>::max()))
        RaiseCannotConvert(Kind(), "Integer");
    return static_cast<std::int32_t>(number);
}

WordBool Variant::AsBoolean() const {
    if (const auto* boolean = std::get_if<TBoolean>(&FValue)) return boolean->Value;
    return ToWordBool(AsDouble() != 0);
}

float Variant::AsFloat() const {
    return static_cast<float>(AsDouble());
}

std::u16string Variant::AsText() const {
    switch (Kind()) {
    case EKind::Empty:
        return {};
    case EKind::Text:
        return std::get<std::u16string>(FValue);
    case EKind::TextReference:
        return Wide(*std::get<std::string*>(FValue));
    case EKind::Boolean:
        return std::get<TBoolean>(FValue).Value != 0 ? u"True" : u"False";
    case EKind::Byte:
    case EKind::Integer:
        return Wide(std::to_string(AsInteger()));
    case EKind::Float:
    case EKind::Double:
        return Wide(FloatToText(AsDouble()));
    case EKind::Null:
    case EKind::Dispatch:
        break;
    }
    RaiseCannotConvert(Kind(), "Text");
}

Handle<IDispatch> Variant::AsDispatch() const {
    if (IsEmpty()) return {};
    if (const auto* object = std::get_if<Handle<IDispatch>>(&FValue)) return *object;
    RaiseCannotConvert(Kind(), "Dispatch");
}

std::string& Variant::AsTextReference() const {
    if (auto* const* text = std::get_if<std::string*>(&FValue)) return **text;
    RaiseCannotConvert(Kind(), "Text reference");
}

std::string VarToStr(const Variant& value) {
    return value.IsNull() ? std::string() : Utf8(value.AsText());
}

std::string FloatToText(double value) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 15).ptr;
    return {text, end};
}

} // namespace Quorane_TLB
