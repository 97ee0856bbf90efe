#include "markup/HtmlLists.h"

#include <functional>

namespace Markup {

namespace {

bool IsList(const xmlNode& node) {
    return IsElement(node, "ul") || IsElement(node, "ol") || IsElement(node, "menu") ||
           IsElement(node, "dir");
}

bool ShowsNothing(const xmlNode& node) {
    return IsBlank(node) || IsElement(node, "script") || IsElement(node, "style");
}

bool IsParagraph(const xmlNode& node) {
    return IsElement(node, "p") || IsElement(node, "div");
}

bool IsEmptyParagraph(const xmlNode& node) {
    bool isEmpty = IsParagraph(node);
    EachChild(node, [&](const xmlNode* child) { isEmpty = isEmpty && ShowsNothing(*child); });
    return isEmpty;
}

// Puts nodes to their place one after another, and what stands in a line together
// into an element of its own.
class Placer {
public:
    // The place takes over what it is given.
    Placer(const char* lineElement, std::function<void(xmlNode*)> place)
        : FLineElement(lineElement)
        , FPlace(std::move(place)) {}

    void Block(xmlNode* node) {
        xmlUnlinkNode(node);
        EndLine();
        FPlace(node);
    }

    void Inline(xmlNode* node) {
        if (!FLine && ShowsNothing(*node)) return Remove(node);
        if (!FLine) {
            FLine = NewElement(node->doc, FLineElement);
            FPlace(FLine);
        }
        xmlUnlinkNode(node);
        xmlAddChild(FLine, node);
    }

    void EndLine() { FLine = nullptr; }

private:
    const char* const FLineElement;
    const std::function<void(xmlNode*)> FPlace;
    xmlNode* FLine = nullptr; // in its place already
};

void RemoveList(xmlNode* list) {
    const xmlNode* from = nullptr;
    Placer placer("p", [&](xmlNode* node) {
        if (from && IsParagraph(*node) && !node->properties)
            node->properties = xmlCopyPropList(node, from->properties);
        xmlAddPrevSibling(list, node);
    });
    const auto place = [&](xmlNode* node) { IsBlock(*node) ? placer.Block(node) : placer.Inline(node); };
    EachChild(*list, [&](xmlNode* item) {
        if (!IsElement(*item, "li")) return place(item);
        placer.EndLine();
        from = item;
        EachChild(*item, place);
        from = nullptr;
        placer.EndLine();
    });
    Remove(list);
}

void RemoveListsIn(const xmlNode& parent) {
    EachChild(parent, [](xmlNode* child) {
        RemoveListsIn(*child);
        if (IsList(*child)) RemoveList(child);
    });
}

} // namespace

void MakeList(const HtmlDocument& document, ListKind kind) {
    xmlNode* const body = document.Body();
    if (!body) return;
    xmlNode* const list = NewElement(body->doc, kind == ListKind::Ordered ? "ol" : "ul");
    Placer placer("li", [list](xmlNode* node) {
        xmlNode* item = node;
        if (IsParagraph(*node)) {
            Rename(*node, "li");
        } else if (!IsElement(*node, "li")) {
            item = NewElement(node->doc, "li");
            xmlAddChild(item, node);
        }
        xmlAddChild(list, item);
    });
    const std::function<void(xmlNode*)> place = [&](xmlNode* node) {
        if (IsList(*node)) {
            EachChild(*node, place);
            Remove(node);
        } else if (IsElement(*node, "br") || IsEmptyParagraph(*node)) {
            placer.EndLine();
            Remove(node);
        } else {
            IsBlock(*node) ? placer.Block(node) : placer.Inline(node);
        }
    };
    EachChild(*body, place);
    if (list->children)
        xmlAddChild(body, list);
    else
        xmlFreeNode(list);
}

void RemoveLists(const HtmlDocument& document) {
    if (const xmlNode* const root = document.Root()) RemoveListsIn(*root);
}

} // namespace Markup
