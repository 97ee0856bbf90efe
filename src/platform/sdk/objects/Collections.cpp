#include "platform/sdk/objects/Make.h"

#include <algorithm>

namespace Sdk {

namespace {

// A walk keeps the collection alive and sees what is added to it meanwhile.
class TCollectionEnum final : public IStCollectionEnum {
public:
    TCollectionEnum(Handle<IStCollection> collection, std::int32_t position)
        : FCollection(std::move(collection))
        , FPosition(position) {}

    // Gives one element a call, whatever number was asked for: `element` has room
    // for no more.
    void Next(std::int32_t celt, Variant& element, std::int32_t& fetched) override {
        const TCall call("IStCollectionEnum.Next");
        element = Variant();
        fetched = 0;
        if (celt < 1 || FPosition >= FCollection->Get_Count()) return;
        element = FCollection->Get_Item(Variant(FPosition++));
        fetched = 1;
    }

    void Skip(std::int32_t celt) override {
        const TCall call("IStCollectionEnum.Skip");
        FPosition = std::clamp(FPosition + celt, 0, FCollection->Get_Count());
    }

    void Reset() override {
        const TCall call("IStCollectionEnum.Reset");
        FPosition = 0;
    }

    Handle<IStCollectionEnum> Clone() override {
        const TCall call("IStCollectionEnum.Clone");
        return std::make_shared<TCollectionEnum>(FCollection, FPosition);
    }

private:
    const Handle<IStCollection> FCollection;
    std::int32_t FPosition;
};

class TCollection final : public IStCollection, public std::enable_shared_from_this<TCollection> {
public:
    TCollection(std::vector<Variant> elements, bool readOnly)
        : FElements(std::move(elements))
        , FReadOnly(readOnly) {}

    const std::vector<Variant>& Elements() const { return FElements; }

    Handle<IUnknown> Get__NewEnum() override {
        const TCall call("IStCollection.Get__NewEnum");
        return std::make_shared<TCollectionEnum>(shared_from_this(), 0);
    }

    Variant Get_Item(const Variant& index) override {
        const TCall call("IStCollection.Get_Item");
        return FElements[Position(index)];
    }

    std::int32_t Get_Count() override {
        const TCall call("IStCollection.Get_Count");
        return static_cast<std::int32_t>(FElements.size());
    }

    void Add(const Variant& element) override {
        const TCall call("IStCollection.Add");
        CheckChange();
        FElements.push_back(element);
    }

    void Remove(const Variant& index) override {
        const TCall call("IStCollection.Remove");
        CheckChange();
        FElements.erase(FElements.begin() + static_cast<std::ptrdiff_t>(Position(index)));
    }

    WordBool Get_ReadOnly() override {
        const TCall call("IStCollection.Get_ReadOnly");
        return ToWordBool(FReadOnly);
    }

private:
    std::size_t Position(const Variant& index) const {
        const std::int32_t position = index.AsInteger();
        CheckIndex(position, FElements.size());
        return static_cast<std::size_t>(position);
    }

    void CheckChange() const {
        if (FReadOnly)
            RaiseUnsupported("This list belongs to an object of the server. Change a copy of it instead.");
    }

    std::vector<Variant> FElements;
    const bool FReadOnly;
};

} // namespace

Handle<IStCollection> MakeCollection(std::vector<Variant> elements) {
    return std::make_shared<TCollection>(std::move(elements), true);
}

Handle<IStCollection> MakeNumbers(std::span<const std::int32_t> numbers) {
    return MakeCollection({numbers.begin(), numbers.end()});
}

Handle<IStCollection> MakeBytes(const std::string& bytes) {
    std::vector<Variant> elements;
    elements.reserve(bytes.size());
    for (const char byte : bytes)
        elements.emplace_back(std::int32_t{static_cast<unsigned char>(byte)});
    return MakeCollection(std::move(elements));
}

Handle<IStCollection> MakeOwnCollection(std::vector<Variant> elements) {
    return std::make_shared<TCollection>(std::move(elements), false);
}

std::vector<Variant> ElementsOf(const Handle<IStCollection>& collection) {
    if (!collection) RaiseForeignObject();
    if (const auto* own = dynamic_cast<const TCollection*>(collection.get())) return own->Elements();
    std::vector<Variant> elements;
    for (std::int32_t i = 0; i < collection->Get_Count(); ++i)
        elements.push_back(collection->Get_Item(Variant(i)));
    return elements;
}

} // namespace Sdk
