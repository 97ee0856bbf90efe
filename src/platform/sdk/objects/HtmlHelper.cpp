#include "platform/sdk/HtmlTags.h"
#include "platform/sdk/HtmlText.h"
#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

[[noreturn]] void RaiseNotOffered(std::string_view operation) {
    RaiseUnsupported("This client's HTML helper does not offer " + std::string(operation) + ".");
}

Handle<IStCollection> Texts(const std::vector<std::string>& texts) {
    std::vector<Variant> elements;
    for (const std::string& text : texts) {
        const std::u16string wide = Wide(text);
        elements.emplace_back(wide);
    }
    return MakeOwnCollection(std::move(elements));
}

class THtmlHelper final : public IHTMLHelper {
public:
    Handle<IStCollection> getImagePaths(const std::u16string& html) override {
        const TCall call("IHTMLHelper.getImagePaths");
        return Texts(AttributesOf(Utf8(html), "img", "src"));
    }

    std::u16string plainTextToHTML(const std::u16string& plain) override {
        const TCall call("IHTMLHelper.plainTextToHTML");
        return Wide(PlainTextToHtml(Utf8(plain)));
    }

    std::u16string replaceNcrWithUnicode(const std::u16string& html) override {
        const TCall call("IHTMLHelper.replaceNcrWithUnicode");
        return Wide(DecodeCharacterReferences(Utf8(html)));
    }

    std::u16string htmlToPlainText(const std::u16string& html) override {
        const TCall call("IHTMLHelper.htmlToPlainText");
        return Wide(HtmlToPlainText(Utf8(html)));
    }

    Handle<INodeList> getImageNodes(const std::u16string&) override { RaiseNotOffered("getImageNodes"); }
    std::u16string transformImageTags2(const std::u16string&, const std::u16string&) override {
        RaiseNotOffered("transformImageTags2");
    }
    std::u16string transformImageTags1(const std::u16string&) override {
        RaiseNotOffered("transformImageTags1");
    }
    Handle<IStCollection> getImageIDs(const std::u16string&) override { RaiseNotOffered("getImageIDs"); }
    std::u16string toUnorderedList(const std::u16string&) override { RaiseNotOffered("toUnorderedList"); }
    std::u16string tidy(const std::u16string&) override { RaiseNotOffered("tidy"); }
    std::u16string removeList(const std::u16string&) override { RaiseNotOffered("removeList"); }
    std::u16string resetImageTags(const std::u16string&) override { RaiseNotOffered("resetImageTags"); }
    std::u16string toOrderedList(const std::u16string&) override { RaiseNotOffered("toOrderedList"); }
    Handle<IStCollection> getNewImagePaths(const std::u16string&) override {
        RaiseNotOffered("getNewImagePaths");
    }
};

} // namespace

Handle<IHTMLHelper> MakeHtmlHelper() {
    return std::make_shared<THtmlHelper>();
}

} // namespace Sdk
