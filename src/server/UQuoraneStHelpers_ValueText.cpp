#include "contracts/SystemServices.h"
#include "server/UNumberText.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

namespace {

std::string SelectedEntries(const Handle<IUDAListValue>& list) {
    std::string result;
    const auto entries = EnumerableStCollection(list->Get_Entries())->GetEnumerator();
    while (entries->MoveNext()) {
        const auto entry = Cast<IUDAListEntry>(entries->GetCurrent());
        if (entry->Get_Selected() != WordFalse) result += TQuoraneHelpers::VariantToStr(entry->Get_Value());
    }
    return result;
}

std::string WithUnit(const Handle<IUDADurationValue>& duration) {
    const auto attribute = Cast<IUDADuration>(duration->Get_Attribute());
    return std::to_string(duration->Get_Value()) + Utf8(attribute->Get_UnitName());
}

} // namespace

std::string TQuoraneHelpers::UDAToString(const Handle<IAttributeValue>& value) {
    if (const auto boolean = Query<IUDABooleanValue>(value)) return std::to_string(boolean->Get_Value());
    if (const auto number = Query<IUDAFloatValue>(value))
        return FloatToUserText(static_cast<double>(number->Get_Value()));
    if (const auto integer = Query<IUDAIntegerValue>(value)) return std::to_string(integer->Get_Value());
    if (const auto text = Query<IUDATextValue>(value)) return Utf8(text->Get_Value());
    if (const auto date = Query<IUDADateValue>(value))
        return SystemServices().ShortDateText(date->Get_Value());
    if (const auto duration = Query<IUDADurationValue>(value)) return WithUnit(duration);
    if (const auto list = Query<IUDAListValue>(value)) return SelectedEntries(list);
    return {};
}

std::string TQuoraneHelpers::VariantToStr(const Variant& value) {
    if (value.IsNull()) return {};
    if (value.Kind() == Variant::EKind::Text) return Utf8(value.AsText());
    if (value.Kind() == Variant::EKind::Integer) return std::to_string(value.AsInteger());
    const Handle<IDispatch> object = value.AsDispatch();
    if (const auto attributeValue = Query<IAttributeValue>(object)) return UDAToString(attributeValue);
    if (const auto named = Query<IQuoraneObject>(object)) return Utf8(named->Get_Name());
    return {};
}
