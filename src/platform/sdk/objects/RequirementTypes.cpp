#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

using TTypeHandle = std::shared_ptr<const wire::RequirementType>;

class TCustomTab final : public ICustomTab {
public:
    TCustomTab(TSessionHandle session, TTypeHandle type, const wire::CustomTab& tab)
        : FSession(std::move(session))
        , FType(std::move(type))
        , FTab(tab) {}

    Handle<IStCollection> Get_Attributes() override {
        const TCall call("ICustomTab.Get_Attributes");
        std::vector<Variant> attributes;
        for (const wire::Attribute& attribute : FTab.attributes())
            attributes.emplace_back(
                MakeAttribute(FSession, std::shared_ptr<const wire::Attribute>(FType, &attribute)));
        return MakeCollection(std::move(attributes));
    }

    Handle<IStCollection> Get_Icon() override {
        const TCall call("ICustomTab.Get_Icon");
        return MakeBytes(FTab.icon());
    }

    std::u16string Get_Name() override {
        const TCall call("ICustomTab.Get_Name");
        return Wide(FTab.name());
    }

private:
    const TSessionHandle FSession;
    const TTypeHandle FType; // keeps FTab
    const wire::CustomTab& FTab;
};

class TRequirementType final : public TLockableObject<IRequirementType> {
public:
    TRequirementType(const TSessionHandle& session, wire::RequirementTypeSummary summary)
        : TLockableObject(session, summary.id(), "requirement type", ECache::RequirementTypes)
        , FSummary(std::move(summary)) {}

    Handle<IStCollection> Get_CustomTabs() override {
        const TCall call("IRequirementType.Get_CustomTabs");
        const TTypeHandle type = FSession->RequirementType(FSummary.id(), FSummary.revision());
        std::vector<Variant> tabs;
        for (const wire::CustomTab& tab : type->custom_tabs())
            tabs.emplace_back(std::make_shared<TCustomTab>(FSession, type, tab));
        return MakeCollection(std::move(tabs));
    }

    std::u16string Get_Description() override {
        const TCall call("IRequirementType.Get_Description");
        return Wide(FSummary.description());
    }

    std::u16string Get_Tag() override {
        const TCall call("IRequirementType.Get_Tag");
        return Wide(FSummary.tag());
    }

protected:
    std::string ReadName() override { return FSummary.name(); }

private:
    const wire::RequirementTypeSummary FSummary;
};

template<class Interface> class TAttribute : public TObject<Interface> {
public:
    TAttribute(const TSessionHandle& session, std::shared_ptr<const wire::Attribute> attribute)
        : TObject<Interface>(session, attribute->id(), "attribute", ECache::RequirementTypes)
        , FAttribute(std::move(attribute)) {}

    Handle<IAttributeValue> Get_DefaultValue() override {
        const TCall call("IAttribute.Get_DefaultValue");
        return MakeAttributeValue(this->FSession, FAttribute, nullptr);
    }

protected:
    std::string ReadName() override { return FAttribute->name(); }

    const std::shared_ptr<const wire::Attribute> FAttribute;
};

class TTextAttribute final : public TAttribute<IUDAText> {
public:
    using TAttribute::TAttribute;

    std::int32_t Get_MaxLength() override {
        const TCall call("IUDAText.Get_MaxLength");
        return FAttribute->max_length();
    }
};

class TDateAttribute final : public TAttribute<IUDADate> {
public:
    using TAttribute::TAttribute;

    double Get_MaxValue() override {
        const TCall call("IUDADate.Get_MaxValue");
        return FAttribute->max_date();
    }

    double Get_MinValue() override {
        const TCall call("IUDADate.Get_MinValue");
        return FAttribute->min_date();
    }
};

class TDurationAttribute final : public TAttribute<IUDADuration> {
public:
    using TAttribute::TAttribute;

    std::u16string Get_UnitName() override {
        const TCall call("IUDADuration.Get_UnitName");
        return Wide(FAttribute->unit_name());
    }
};

class TListAttribute final : public TAttribute<IUDAList> {
public:
    using TAttribute::TAttribute;

    Handle<IStCollection> Get_Entries() override {
        const TCall call("IUDAList.Get_Entries");
        std::vector<Variant> entries;
        for (const wire::ListEntry& entry : FAttribute->entries())
            entries.emplace_back(MakeListEntry(EntryValue(FSession, entry), false));
        return MakeCollection(std::move(entries));
    }

    std::int32_t Get_MaxSelections() override {
        const TCall call("IUDAList.Get_MaxSelections");
        return FAttribute->max_selections();
    }
};

} // namespace

wire::RequirementTypeSummary SummaryOf(const wire::RequirementType& type) {
    wire::RequirementTypeSummary summary;
    summary.set_id(type.id());
    summary.set_name(type.name());
    summary.set_tag(type.tag());
    summary.set_description(type.description());
    summary.set_revision(type.revision());
    return summary;
}

Handle<IRequirementType> MakeRequirementType(const TSessionHandle& session,
                                             const wire::RequirementTypeSummary& summary) {
    return std::make_shared<TRequirementType>(session, summary);
}

Handle<IAttribute> MakeAttribute(const TSessionHandle& session,
                                 std::shared_ptr<const wire::Attribute> attribute) {
    switch (attribute->kind()) {
    case wire::ATTRIBUTE_KIND_BOOLEAN:
        return std::make_shared<TAttribute<IUDABoolean>>(session, std::move(attribute));
    case wire::ATTRIBUTE_KIND_DATE:
        return std::make_shared<TDateAttribute>(session, std::move(attribute));
    case wire::ATTRIBUTE_KIND_FLOAT:
        return std::make_shared<TAttribute<IUDAFloat>>(session, std::move(attribute));
    case wire::ATTRIBUTE_KIND_INTEGER:
        return std::make_shared<TAttribute<IUDAInteger>>(session, std::move(attribute));
    case wire::ATTRIBUTE_KIND_DURATION:
        return std::make_shared<TDurationAttribute>(session, std::move(attribute));
    case wire::ATTRIBUTE_KIND_LIST:
        return std::make_shared<TListAttribute>(session, std::move(attribute));
    case wire::ATTRIBUTE_KIND_TEXT:
        return std::make_shared<TTextAttribute>(session, std::move(attribute));
    default:
        // A kind of a newer server: shown by name alone.
        return std::make_shared<TAttribute<IAttribute>>(session, std::move(attribute));
    }
}

} // namespace Sdk
