// One widget for each user-defined attribute of a custom tab, chosen by the kind of the
// attribute, and the one handler that writes what the user changes in them.
#include "contracts/Exceptions.h"
#include "frames/UBaseRequirementFrame.h"
#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "server/UNumberText.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

constexpr int ControlLeft = 10;
constexpr int ControlWidth = 300;
constexpr int MemoHeight = 50;
constexpr int GapUnderLabel = 3;
constexpr int GapUnderControl = 5;
constexpr std::int32_t LongestSingleLine = 255;

// The value of the attribute in the requirement, if it has one of that kind.
template<class TValue>
Handle<TValue> FindValue(const Handle<IRequirement>& requirement, const Handle<IAttribute>& attribute) {
    const std::int32_t wanted = attribute->Get_DefaultValue()->Get_AttributeID()->Get_IDNumber();
    const auto values = EnumerableStCollection(requirement->Get_AttributeValues())->GetEnumerator();
    while (values->MoveNext()) {
        const auto value = Cast<IAttributeValue>(values->GetCurrent());
        if (value->Get_AttributeID()->Get_IDNumber() != wanted) continue;
        if (const auto typed = Query<TValue>(value)) return typed;
    }
    return {};
}

std::string EntryText(const Handle<IUDAListEntry>& entry) {
    const Variant value = entry->Get_Value();
    if (value.Kind() != Variant::EKind::Dispatch) return VarToStr(value);
    const Handle<IDispatch> object = value.AsDispatch();
    if (const auto user = Query<IUser>(object)) return Utf8(user->Get_Name());
    if (const auto group = Query<IGroup>(object)) return Utf8(group->Get_Name());
    return VarToStr(value);
}

void FillEntries(TStrings& items, const Handle<IUDAList>& list) {
    const auto entries = EnumerableStCollection(list->Get_Entries())->GetEnumerator();
    while (entries->MoveNext())
        items.Add(EntryText(Cast<IUDAListEntry>(entries->GetCurrent())));
}

void Place(TControl& control, int top) {
    control.SetLeft(ControlLeft);
    control.SetTop(top);
    control.SetWidth(ControlWidth);
}

void WriteText(const Handle<IUDATextValue>& value, const std::string& text) {
    if (!text.empty()) {
        value->Set_Value(Wide(text));
        return;
    }
    std::string empty;
    PutByName(Handle<IDispatch>(value), "Value", Variant::TextReference(empty));
}

void WriteSelection(const Handle<IUDAListValue>& value, TWinControl& control) {
    if (const auto* list = dynamic_cast<TComboBox*>(&control)) {
        value->Set_SelectedIndex(list->ItemIndex());
        return;
    }
    auto& list = dynamic_cast<TCheckListBox&>(control);
    const Handle<IStCollection> checked = CoCollectionFactory::Create()->Create1();
    for (int position = 0; position < list.Items().Count(); ++position)
        if (list.Checked(position)) checked->Add(position);
    value->Set_SelectedIndices(checked);
}

void WriteDate(const Handle<IUDADateValue>& value, TDatePicker& picker) {
    picker.SetBlank(false);
    value->Set_Value(picker.Date());
}

std::string TextOf(const TWinControl& control) {
    if (const auto* memo = dynamic_cast<const TMemo*>(&control)) return memo->Text();
    return dynamic_cast<const TEdit&>(control).Text();
}

void WriteValue(const Handle<IAttributeValue>& value, TWinControl& control) {
    if (const auto text = Query<IUDATextValue>(value))
        WriteText(text, TextOf(control));
    else if (const auto number = Query<IUDAFloatValue>(value))
        number->Set_Value(UserTextToFloat(TextOf(control)));
    else if (const auto integer = Query<IUDAIntegerValue>(value))
        integer->Set_Value(UserTextToInteger(TextOf(control)));
    else if (const auto boolean = Query<IUDABooleanValue>(value))
        boolean->Set_Value(ToWordBool(dynamic_cast<TCheckBox&>(control).Checked()));
    else if (const auto list = Query<IUDAListValue>(value))
        WriteSelection(list, control);
    else if (const auto date = Query<IUDADateValue>(value))
        WriteDate(date, dynamic_cast<TDatePicker&>(control));
}

} // namespace

std::string TQuoraneGUIHelpers::UDAControlName(const TWinControl& control) {
    return "ctl_" + control.Name() + "_" + std::to_string(control.ControlCount());
}

TLabel& TQuoraneGUIHelpers::CreateAttributeLabel(TWinControl& parent, int& top,
                                                 const Handle<IAttribute>& attribute) {
    auto* label = new TLabel(&parent);
    label->SetShowAccelChar(false);
    label->SetCaption(Utf8(attribute->Get_Name()) + ":");
    label->SetBold(false);
    label->SetLeft(ControlLeft);
    label->SetTop(top);
    label->SetName(UDAControlName(parent));
    top += label->Height() + GapUnderLabel;
    return *label;
}

template<class TWidget>
TWidget* TQuoraneGUIHelpers::AddLabelled(TWinControl& parent, int& top, const Handle<IAttribute>& attribute) {
    TLabel& label = CreateAttributeLabel(parent, top, attribute);
    auto* widget = new TWidget(&parent);
    Place(*widget, top);
    label.SetFocusControl(*widget);
    return widget;
}

std::string TQuoraneGUIHelpers::GetUDATextValue(const Handle<IAttribute>& attribute,
                                                Handle<IUDATextValue>& value) const {
    value = FindValue<IUDATextValue>(CurrentRequirement, attribute);
    return value ? Utf8(value->Get_Value()) : std::string();
}

std::int32_t TQuoraneGUIHelpers::GetUDAIntegerValue(const Handle<IAttribute>& attribute,
                                                    Handle<IUDAIntegerValue>& value) const {
    value = FindValue<IUDAIntegerValue>(CurrentRequirement, attribute);
    return value ? value->Get_Value() : NoIntegerValue;
}

float TQuoraneGUIHelpers::GetUDAFloatValue(const Handle<IAttribute>& attribute,
                                           Handle<IUDAFloatValue>& value) const {
    value = FindValue<IUDAFloatValue>(CurrentRequirement, attribute);
    return value ? value->Get_Value() : 0;
}

double TQuoraneGUIHelpers::GetUDADateValue(const Handle<IAttribute>& attribute,
                                           Handle<IUDADateValue>& value) const {
    value = FindValue<IUDADateValue>(CurrentRequirement, attribute);
    return value ? value->Get_Value() : 0;
}

bool TQuoraneGUIHelpers::GetUDABooleanValue(const Handle<IAttribute>& attribute,
                                            Handle<IUDABooleanValue>& value) const {
    value = FindValue<IUDABooleanValue>(CurrentRequirement, attribute);
    return value && value->Get_Value() != WordFalse;
}

void TQuoraneGUIHelpers::GetUDAListValues(const Handle<IAttribute>& attribute,
                                          std::vector<std::int32_t>& positions,
                                          Handle<IUDAListValue>& value) const {
    positions.clear();
    value = FindValue<IUDAListValue>(CurrentRequirement, attribute);
    if (!value) return;
    const Handle<IStCollection> selected = value->Get_SelectedIndices();
    positions.resize(static_cast<std::size_t>(selected->Get_Count()));
    for (std::size_t index = 0; index < positions.size(); ++index)
        positions[index] = selected->Get_Item(static_cast<std::int32_t>(index)).AsInteger();
}

// The end of each Create operation: name, container, enable rule, running top.
void TQuoraneGUIHelpers::FinishAttributeControl(TWinControl& control, TWinControl& parent, int& top,
                                                const Handle<IAttributeValue>& value) {
    control.SetBold(false);
    control.SetName(UDAControlName(parent));
    top += control.Height() + GapUnderControl;
    if (!value) {
        EnableDisableControl(false, control);
        control.SetHint(SAttributeValueMissing);
        return;
    }
    control.SetTagObject(std::make_unique<TAttributeValueContainer>(value));
    if (const Handle<IRequirement> requirement = value->Get_Requirement())
        EnableDisableControl(StandsInCurrentBaseline(requirement), control);
}

void TQuoraneGUIHelpers::CreateSLTextAttribute(int& top, TWinControl& parent,
                                               const Handle<IAttribute>& attribute) {
    auto* edit = AddLabelled<TEdit>(parent, top, attribute);
    Handle<IUDATextValue> value;
    edit->SetText(GetUDATextValue(attribute, value));
    edit->OnChange = [this, edit] { ChangeAttributeUI(*edit); };
    FinishAttributeControl(*edit, parent, top, value);
}

void TQuoraneGUIHelpers::CreateMLTextAttribute(int& top, TWinControl& parent,
                                               const Handle<IAttribute>& attribute) {
    auto* memo = AddLabelled<TMemo>(parent, top, attribute);
    memo->SetHeight(MemoHeight);
    Handle<IUDATextValue> value;
    memo->SetText(GetUDATextValue(attribute, value));
    memo->OnChange = [this, memo] { ChangeAttributeUI(*memo); };
    FinishAttributeControl(*memo, parent, top, value);
}

void TQuoraneGUIHelpers::CreateCheckBoxAttribute(int& top, TWinControl& parent,
                                                 const Handle<IAttribute>& attribute) {
    auto* box = new TCheckBox(&parent);
    box->SetCaption(Utf8(attribute->Get_Name()));
    Place(*box, top);
    Handle<IUDABooleanValue> value;
    box->SetChecked(GetUDABooleanValue(attribute, value));
    box->OnClick = [this, box] { ChangeAttributeUI(*box); };
    FinishAttributeControl(*box, parent, top, value);
}

void TQuoraneGUIHelpers::CreateFloatAttribute(int& top, TWinControl& parent,
                                              const Handle<IAttribute>& attribute) {
    auto* edit = AddLabelled<TMaskEdit>(parent, top, attribute);
    Handle<IUDAFloatValue> value;
    const float number = GetUDAFloatValue(attribute, value);
    if (value) edit->SetText(FloatToUserText(static_cast<double>(number)));
    edit->OnChange = [this, edit] { ChangeAttributeUI(*edit); };
    FinishAttributeControl(*edit, parent, top, value);
}

void TQuoraneGUIHelpers::CreateIntegerAttribute(int& top, TWinControl& parent,
                                                const Handle<IAttribute>& attribute) {
    auto* edit = AddLabelled<TMaskEdit>(parent, top, attribute);
    Handle<IUDAIntegerValue> value;
    const std::int32_t number = GetUDAIntegerValue(attribute, value);
    if (value) edit->SetText(std::to_string(number));
    edit->OnChange = [this, edit] { ChangeAttributeUI(*edit); };
    FinishAttributeControl(*edit, parent, top, value);
}

void TQuoraneGUIHelpers::CreateDateAttribute(int& top, TWinControl& parent,
                                             const Handle<IAttribute>& attribute) {
    auto* picker = AddLabelled<TDatePicker>(parent, top, attribute);
    Handle<IUDADateValue> value;
    const double date = GetUDADateValue(attribute, value);
    if (!value) throw Exception(SDateValueNotFound);
    const bool empty = value->Get_IsEmpty() != WordFalse;
    if (!empty) picker->SetDate(date);
    const Handle<IUDADate> limits = value->Get_UDADate();
    picker->SetMinDate(limits->Get_MinValue());
    picker->SetMaxDate(limits->Get_MaxValue());
    picker->SetBlank(empty);
    picker->OnChange = [this, picker] { ChangeAttributeUI(*picker); };
    FinishAttributeControl(*picker, parent, top, value);
}

void TQuoraneGUIHelpers::CreateSSListAttribute(int& top, TWinControl& parent, const Handle<IUDAList>& list) {
    auto* box = AddLabelled<TComboBox>(parent, top, list);
    FillEntries(box->Items(), list);
    std::vector<std::int32_t> selected;
    Handle<IUDAListValue> value;
    GetUDAListValues(list, selected, value);
    box->SetItemIndex(selected.empty() ? -1 : selected.front());
    box->OnChange = [this, box] { ChangeAttributeUI(*box); };
    FinishAttributeControl(*box, parent, top, value);
}

void TQuoraneGUIHelpers::CreateMSListAttribute(int& top, TWinControl& parent, const Handle<IUDAList>& list) {
    auto* box = AddLabelled<TCheckListBox>(parent, top, list);
    FillEntries(box->Items(), list);
    std::vector<std::int32_t> selected;
    Handle<IUDAListValue> value;
    GetUDAListValues(list, selected, value);
    for (const std::int32_t position : selected)
        box->SetChecked(position, true);
    box->OnClickCheck = [this, box](int) { ChangeAttributeUI(*box); };
    FinishAttributeControl(*box, parent, top, value);
}

void TQuoraneGUIHelpers::CreateAttributeControl(int& top, TWinControl& parent,
                                                const Handle<IAttribute>& attribute) {
    if (const auto text = Query<IUDAText>(attribute)) {
        if (text->Get_MaxLength() <= LongestSingleLine)
            CreateSLTextAttribute(top, parent, attribute);
        else
            CreateMLTextAttribute(top, parent, attribute);
    } else if (Query<IUDABoolean>(attribute)) {
        CreateCheckBoxAttribute(top, parent, attribute);
    } else if (Query<IUDAFloat>(attribute)) {
        CreateFloatAttribute(top, parent, attribute);
    } else if (const auto list = Query<IUDAList>(attribute)) {
        if (list->Get_MaxSelections() > 1)
            CreateMSListAttribute(top, parent, list);
        else
            CreateSSListAttribute(top, parent, list);
    } else if (Query<IUDAInteger>(attribute)) {
        CreateIntegerAttribute(top, parent, attribute);
    } else if (Query<IUDADate>(attribute)) {
        CreateDateAttribute(top, parent, attribute);
    }
}

void TQuoraneGUIHelpers::ChangeAttributeUI(TWinControl& control) {
    GuardServerCalls([&] {
        if (CreatingCustomTabs) return;
        LockCurrentRequirement();
        if (const auto* container = control.TagObjectAs<TAttributeValueContainer>())
            WriteValue(container->Value, control);
    });
}

std::unique_ptr<TBitmap> TQuoraneGUIHelpers::GenerateTempIcon(const Handle<IStCollection>& pixels) {
    const std::int32_t count = pixels->Get_Count();
    if (count == 0) return nullptr;
    auto icon = std::make_unique<TBitmap>(TabIconSize, TabIconSize);
    const auto level = [&](std::int32_t index) {
        return static_cast<std::uint8_t>(pixels->Get_Item(index).AsInteger());
    };
    const std::int32_t pixelCount = std::min(count / 3, TabIconSize * TabIconSize);
    for (std::int32_t pixel = 0; pixel < pixelCount; ++pixel)
        icon->SetPixel(pixel % TabIconSize, pixel / TabIconSize,
                       TColor::Rgb(level(3 * pixel), level(3 * pixel + 1), level(3 * pixel + 2)));
    return icon;
}
