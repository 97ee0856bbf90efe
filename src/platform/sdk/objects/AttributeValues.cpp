#include "platform/sdk/objects/Make.h"

#include <algorithm>

namespace Sdk {

namespace {

using TAttributeHandle = std::shared_ptr<const wire::Attribute>;
using TStateHandle = std::shared_ptr<TRequirementState>;

template<class Interface> class TValue : public Interface {
public:
    TValue(TSessionHandle session, TAttributeHandle attribute, TStateHandle state)
        : FSession(std::move(session))
        , FAttribute(std::move(attribute))
        , FState(std::move(state)) {}

    Handle<IAttribute> Get_Attribute() override {
        const TCall call("IAttributeValue.Get_Attribute");
        return MakeAttribute(FSession, FAttribute);
    }

    Handle<IAttributeID> Get_AttributeID() override {
        const TCall call("IAttributeValue.Get_AttributeID");
        return MakeIdentity<IAttributeID>(FAttribute->id());
    }

    Handle<IRequirement> Get_Requirement() override {
        const TCall call("IAttributeValue.Get_Requirement");
        return FState ? MakeRequirement(FSession, FState) : nullptr;
    }

protected:
    // The default where a requirement of the type has no value yet.
    const wire::AttributeValue& Read() const {
        const wire::AttributeValue* value = FState ? FState->FindValue(FAttribute->id()) : nullptr;
        return value ? *value : FAttribute->default_value();
    }

    // Reaches the client's object alone; the server learns it with the save.
    wire::AttributeValue& Write() const {
        if (!FState) RaiseUnsupported("The default value of an attribute cannot be changed by this client.");
        return FState->ValueToChange(FAttribute->id());
    }

    const TSessionHandle FSession;
    const TAttributeHandle FAttribute;
    const TStateHandle FState;
};

class TBooleanValue final : public TValue<IUDABooleanValue> {
public:
    using TValue::TValue;

    void Set_Value(WordBool value) override {
        const TCall call("IUDABooleanValue.Set_Value");
        Write().set_flag(value != WordFalse);
    }

    WordBool Get_Value() override {
        const TCall call("IUDABooleanValue.Get_Value");
        return ToWordBool(Read().flag());
    }
};

class TDateValue final : public TValue<IUDADateValue> {
public:
    using TValue::TValue;

    Handle<IUDADate> Get_UDADate() override {
        const TCall call("IUDADateValue.Get_UDADate");
        return Query<IUDADate>(MakeAttribute(FSession, FAttribute));
    }

    WordBool Get_IsEmpty() override {
        const TCall call("IUDADateValue.Get_IsEmpty");
        return ToWordBool(!Read().has_date());
    }

    void Set_Value(double value) override {
        const TCall call("IUDADateValue.Set_Value");
        Write().set_date(value);
    }

    double Get_Value() override {
        const TCall call("IUDADateValue.Get_Value");
        return Read().date();
    }
};

class TFloatValue final : public TValue<IUDAFloatValue> {
public:
    using TValue::TValue;

    void Set_Value(float value) override {
        const TCall call("IUDAFloatValue.Set_Value");
        Write().set_real(value);
    }

    float Get_Value() override {
        const TCall call("IUDAFloatValue.Get_Value");
        return Read().real();
    }
};

template<class Interface> class TIntegerValue final : public TValue<Interface> {
public:
    using TValue<Interface>::TValue;

    void Set_Value(std::int32_t value) override {
        const TCall call("IUDAIntegerValue.Set_Value");
        this->Write().set_integer(value);
    }

    std::int32_t Get_Value() override {
        const TCall call("IUDAIntegerValue.Get_Value");
        return this->Read().integer();
    }
};

class TTextValue final : public TValue<IUDATextValue> {
public:
    using TValue::TValue;

    void Set_Value(const std::u16string& value) override {
        const TCall call("IUDATextValue.Set_Value");
        Write().set_text(Utf8(value));
    }

    std::u16string Get_Value() override {
        const TCall call("IUDATextValue.Get_Value");
        return Wide(Read().text());
    }
};

class TListEntry final : public IUDAListEntry {
public:
    TListEntry(Variant value, bool selected)
        : FValue(std::move(value))
        , FSelected(selected) {}

    Variant Get_Value() override {
        const TCall call("IUDAListEntry.Get_Value");
        return FValue;
    }

    WordBool Get_Selected() override {
        const TCall call("IUDAListEntry.Get_Selected");
        return ToWordBool(FSelected);
    }

private:
    const Variant FValue;
    const bool FSelected;
};

class TListValue final : public TValue<IUDAListValue> {
public:
    using TValue::TValue;

    Handle<IStCollection> Get_Entries() override {
        const TCall call("IUDAListValue.Get_Entries");
        const auto& selected = Read().selected().indices();
        std::vector<Variant> entries;
        for (int i = 0; i < FAttribute->entries_size(); ++i) {
            const bool isSelected = std::find(selected.begin(), selected.end(), i) != selected.end();
            entries.emplace_back(MakeListEntry(EntryValue(FSession, FAttribute->entries(i)), isSelected));
        }
        return MakeCollection(std::move(entries));
    }

    // -1 takes the selection away.
    void Set_SelectedIndex(std::int32_t index) override {
        const TCall call("IUDAListValue.Set_SelectedIndex");
        if (index == -1) return WriteSelection({});
        WriteSelection({index});
    }

    void Set_SelectedIndices(const Handle<IStCollection>& indices) override {
        const TCall call("IUDAListValue.Set_SelectedIndices");
        std::vector<std::int32_t> positions;
        for (const Variant& index : ElementsOf(indices))
            positions.push_back(index.AsInteger());
        WriteSelection(std::move(positions));
    }

    Handle<IStCollection> Get_SelectedIndices() override {
        const TCall call("IUDAListValue.Get_SelectedIndices");
        const auto& indices = Read().selected().indices();
        return MakeNumbers({indices.data(), static_cast<std::size_t>(indices.size())});
    }

    Variant Get_SelectedValue() override {
        const TCall call("IUDAListValue.Get_SelectedValue");
        const auto& indices = Read().selected().indices();
        if (indices.empty() || indices[0] >= FAttribute->entries_size()) return Variant::Null();
        return EntryValue(FSession, FAttribute->entries(indices[0]));
    }

    std::int32_t Get_EntryCount() override {
        const TCall call("IUDAListValue.Get_EntryCount");
        return FAttribute->entries_size();
    }

private:
    void WriteSelection(std::vector<std::int32_t> positions) {
        for (const std::int32_t position : positions)
            CheckIndex(position, static_cast<std::size_t>(FAttribute->entries_size()));
        std::sort(positions.begin(), positions.end());
        positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
        auto& indices = *Write().mutable_selected()->mutable_indices();
        indices.Assign(positions.begin(), positions.end());
    }
};

} // namespace

Variant EntryValue(const TSessionHandle& session, const wire::ListEntry& entry) {
    switch (entry.value_case()) {
    case wire::ListEntry::kText:
        return Wide(entry.text());
    case wire::ListEntry::kNumber:
        return entry.number();
    case wire::ListEntry::kUserId:
        if (const auto user = MakeUser(session, entry.user_id())) return user;
        return Variant::Null();
    case wire::ListEntry::kGroupId:
        if (const auto group = MakeGroup(session, entry.group_id())) return group;
        return Variant::Null();
    default:
        return Variant::Null();
    }
}

Handle<IDispatch> MakeListEntry(const Variant& value, bool selected) {
    return std::make_shared<TListEntry>(value, selected);
}

Handle<IUDAListValue> MakeListValue(const TSessionHandle& session, TAttributeHandle attribute,
                                    TStateHandle state) {
    return std::make_shared<TListValue>(session, std::move(attribute), std::move(state));
}

Handle<IAttributeValue> MakeAttributeValue(const TSessionHandle& session, TAttributeHandle attribute,
                                           TStateHandle state) {
    switch (attribute->kind()) {
    case wire::ATTRIBUTE_KIND_BOOLEAN:
        return std::make_shared<TBooleanValue>(session, std::move(attribute), std::move(state));
    case wire::ATTRIBUTE_KIND_DATE:
        return std::make_shared<TDateValue>(session, std::move(attribute), std::move(state));
    case wire::ATTRIBUTE_KIND_FLOAT:
        return std::make_shared<TFloatValue>(session, std::move(attribute), std::move(state));
    case wire::ATTRIBUTE_KIND_INTEGER:
        return std::make_shared<TIntegerValue<IUDAIntegerValue>>(session, std::move(attribute),
                                                                 std::move(state));
    case wire::ATTRIBUTE_KIND_DURATION:
        return std::make_shared<TIntegerValue<IUDADurationValue>>(session, std::move(attribute),
                                                                  std::move(state));
    case wire::ATTRIBUTE_KIND_LIST:
        return std::make_shared<TListValue>(session, std::move(attribute), std::move(state));
    case wire::ATTRIBUTE_KIND_TEXT:
        return std::make_shared<TTextValue>(session, std::move(attribute), std::move(state));
    default:
        return std::make_shared<TValue<IAttributeValue>>(session, std::move(attribute), std::move(state));
    }
}

} // namespace Sdk
