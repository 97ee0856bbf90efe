// What a client may do with HTML texts without a server, by an HTML parser: mark-up of
// any quality will do. An operation that gives HTML writes all of it anew as well-formed
// XHTML, a piece as a piece, and raises when text would be lost on the way.
#include "contracts/Pictures.h"
#include "markup/HtmlImages.h"
#include "markup/HtmlLists.h"
#include "markup/HtmlText.h"
#include "markup/HtmlWriter.h"
#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

using Markup::HtmlDocument;
using Markup::HtmlImage;
using Markup::ListKind;

// The binding knows no operation of a node list, so what it holds is reached by name, as
// in a collection: "Count" and "Item".
class TNodeList final : public INodeList {
public:
    explicit TNodeList(std::vector<Variant> nodes)
        : FNodes(MakeCollection(std::move(nodes))) {}

    Variant Invoke(std::string_view name, InvokeKind kind, std::span<Variant> arguments) override {
        return FNodes->Invoke(name, kind, arguments);
    }

private:
    const Handle<IStCollection> FNodes;
};

// One element for each image for which there is something to tell.
std::vector<Variant> OfImages(const std::u16string& html,
                              const std::function<Variant(const HtmlImage&)>& tell) {
    std::vector<Variant> elements;
    for (const HtmlImage& image : ImagesOf(HtmlDocument(Utf8(html), Markup::Nesting::Any)))
        if (Variant element = tell(image); !element.IsEmpty()) elements.push_back(std::move(element));
    return elements;
}

Variant TextOrNothing(const std::string& text) {
    return text.empty() ? Variant() : Variant(Wide(text));
}

std::u16string Rewritten(const std::u16string& html, const std::function<void(const HtmlDocument&)>& change) {
    const HtmlDocument document(Utf8(html));
    if (document.Lost())
        RaiseFailure("IllegalArgumentException: The HTML has a tag, an attribute or a comment without an "
                     "end, or nests too deep, so that text would be lost. Mend it and try again.");
    change(document);
    return Wide(Write(document));
}

std::u16string ShownFrom(const std::u16string& html, std::string folder) {
    if (!folder.ends_with('/')) folder += '/';
    return Rewritten(html, [&](const HtmlDocument& document) { ShowImages(document, "file://" + PictureAddress(folder)); });
}

// The operations are the same on an instance and on the statics, and told to observers
// by the name that they have on an instance.
template<class Interface> class THtmlHelper final : public Interface {
public:
    // The addresses of all images, in their order.
    Handle<IStCollection> getImagePaths(const std::u16string& html) override {
        const TCall call("IHTMLHelper.getImagePaths");
        return MakeOwnCollection(
            OfImages(html, [](const HtmlImage& image) { return TextOrNothing(image.Path); }));
    }

    // The mark-up of each image's element, in their order.
    Handle<INodeList> getImageNodes(const std::u16string& html) override {
        const TCall call("IHTMLHelper.getImageNodes");
        return std::make_shared<TNodeList>(
            OfImages(html, [](const HtmlImage& image) { return TextOrNothing(image.Html); }));
    }

    // A fragment that a browser shows as the plain text stands.
    std::u16string plainTextToHTML(const std::u16string& plain) override {
        const TCall call("IHTMLHelper.plainTextToHTML");
        return Wide(Markup::PlainTextToHtml(Utf8(plain)));
    }

    // The HTML with every stored picture shown from the file in that folder that its hash
    // names; the folder is an absolute path.
    std::u16string transformImageTags2(const std::u16string& html, const std::u16string& folder) override {
        const TCall call("IHTMLHelper.transformImageTags2");
        return ShownFrom(html, Utf8(folder));
    }

    // The HTML with every stored picture shown from this machine's picture cache.
    std::u16string transformImageTags1(const std::u16string& html) override {
        const TCall call("IHTMLHelper.transformImageTags1");
        return ShownFrom(html, PictureCacheFolder());
    }

    // An identity for each stored picture, in their order; its number is made of the
    // first 31 bits of the picture's hash, because pictures have no numbers of their own.
    Handle<IStCollection> getImageIDs(const std::u16string& html) override {
        const TCall call("IHTMLHelper.getImageIDs");
        return MakeOwnCollection(OfImages(html, [](const HtmlImage& image) {
            if (image.Hash.empty()) return Variant();
            const unsigned long number = std::stoul(image.Hash.substr(0, 8), nullptr, 16) >> 1;
            return Variant(MakeIdentity<IImageID>(static_cast<std::int32_t>(number)));
        }));
    }

    // All of the HTML as one bulleted list, an item of each paragraph, line or list item.
    std::u16string toUnorderedList(const std::u16string& html) override {
        const TCall call("IHTMLHelper.toUnorderedList");
        return Rewritten(html, [](const HtmlDocument& document) { MakeList(document, ListKind::Unordered); });
    }

    // The HTML mended: every element nested and ended, every attribute quoted.
    std::u16string tidy(const std::u16string& html) override {
        const TCall call("IHTMLHelper.tidy");
        return Rewritten(html, [](const HtmlDocument&) {});
    }

    // The HTML with the characters in place of numeric references to them, all else byte
    // for byte; references to characters that mark-up is made of stay.
    std::u16string replaceNcrWithUnicode(const std::u16string& html) override {
        const TCall call("IHTMLHelper.replaceNcrWithUnicode");
        return Wide(Markup::DecodeNumericReferences(Utf8(html)));
    }

    // The HTML with paragraphs in place of all list items.
    std::u16string removeList(const std::u16string& html) override {
        const TCall call("IHTMLHelper.removeList");
        return Rewritten(html, Markup::RemoveLists);
    }

    // The HTML with every stored picture named by its hash, as a description is kept:
    // takes a transformation back.
    std::u16string resetImageTags(const std::u16string& html) override {
        const TCall call("IHTMLHelper.resetImageTags");
        return Rewritten(html, [](const HtmlDocument& document) { ShowImages(document, ""); });
    }

    // All of the HTML as one numbered list, an item of each paragraph, line or list item.
    std::u16string toOrderedList(const std::u16string& html) override {
        const TCall call("IHTMLHelper.toOrderedList");
        return Rewritten(html, [](const HtmlDocument& document) { MakeList(document, ListKind::Ordered); });
    }

    // What a reader sees of the HTML, without pictures; never fails.
    std::u16string htmlToPlainText(const std::u16string& html) override {
        const TCall call("IHTMLHelper.htmlToPlainText");
        return Wide(Markup::HtmlToPlainText(Utf8(html)));
    }

    // The addresses of the images that the next save is to store, in their order.
    Handle<IStCollection> getNewImagePaths(const std::u16string& html) override {
        const TCall call("IHTMLHelper.getNewImagePaths");
        return MakeOwnCollection(OfImages(
            html, [](const HtmlImage& image) { return image.New ? TextOrNothing(image.Path) : Variant(); }));
    }
};

} // namespace

Handle<IHTMLHelper> MakeHtmlHelper() {
    return std::make_shared<THtmlHelper<IHTMLHelper>>();
}

Handle<IHTMLHelperStatics> MakeHtmlHelperStatics() {
    return std::make_shared<THtmlHelper<IHTMLHelperStatics>>();
}

} // namespace Sdk
