#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

template<class Interface> class TReference : public Interface, public TDataHolder<wire::DocumentReference> {
public:
    using TDataHolder::TDataHolder;

    WordBool Get_IsKey() override {
        const TCall call("IDocumentReference.Get_IsKey");
        return ToWordBool(HeldData()->is_key());
    }
};

class TFileReference final : public TReference<IFileReference> {
public:
    using TReference::TReference;

    std::u16string Get_Description() override {
        const TCall call("IFileReference.Get_Description");
        return Wide(HeldData()->file().description());
    }

    std::u16string Get_Path() override {
        const TCall call("IFileReference.Get_Path");
        return Wide(HeldData()->file().path());
    }
};

class TTextReference final : public TReference<ITextReference> {
public:
    using TReference::TReference;

    void Set_Text(const std::u16string& content) override {
        const TCall call("ITextReference.Set_Text");
        HeldData()->mutable_text()->set_text(Utf8(content));
    }

    std::u16string Get_Text() override {
        const TCall call("ITextReference.Get_Text");
        return Wide(HeldData()->text().text());
    }
};

class TWebReference final : public TReference<IWebReference> {
public:
    using TReference::TReference;

    void Set_URL(const std::u16string& address) override {
        const TCall call("IWebReference.Set_URL");
        HeldData()->mutable_web()->set_url(Utf8(address));
    }

    std::u16string Get_URL() override {
        const TCall call("IWebReference.Get_URL");
        return Wide(HeldData()->web().url());
    }
};

} // namespace

Handle<IDocumentReference> MakeReference(std::shared_ptr<wire::DocumentReference> reference) {
    switch (reference->kind_case()) {
    case wire::DocumentReference::kFile:
        return std::make_shared<TFileReference>(std::move(reference));
    case wire::DocumentReference::kText:
        return std::make_shared<TTextReference>(std::move(reference));
    case wire::DocumentReference::kWeb:
        return std::make_shared<TWebReference>(std::move(reference));
    default:
        // A kind of a newer server: kept, and shown as an empty row.
        return std::make_shared<TReference<IDocumentReference>>(std::move(reference));
    }
}

} // namespace Sdk
