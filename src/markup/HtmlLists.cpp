#include "markup/HtmlLists.h"

#include <functional>

namespace Markup {

namespace {

bool IsList(const xmlNode& node) {
    return IsElement(node, "ul") || IsElement(node, "ol") || IsElement(node, "menu") ||
           IsElement(node, "dir");
}

bool IsBlank(const xmlNode& node) {
    if (node.type == XML_COMMENT_NODE) return true;
    return node.type == XML_TEXT_NODE && xmlIsBlankNode(&node);
}

void Free(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

const xmlChar* Name(const char* name) {
    return reinterpret_cast<const xmlChar*>(name);
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
        if (!FLine && IsBlank(*node)) return Free(node);
        if (!FLine) {
            FLine = xmlNewDocNode(node->doc, nullptr, Name(FLineElement), nullptr);
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

// The visitor may take the child out.
void EachChild(const xmlNode& parent, const std::function<void(xmlNode*)>& visit) {
    for (xmlNode *child = parent.children, *next = nullptr; child; child = next) {
        next = child->next;
        visit(child);
    }
}

void RemoveList(xmlNode* list) {
    Placer placer("p", [list](xmlNode* node) { xmlAddPrevSibling(list, node); });
    const auto place = [&](xmlNode* node) { IsBlock(*node) ? placer.Block(node) : placer.Inline(node); };
    EachChild(*list, [&](xmlNode* item) {
        if (!IsElement(*item, "li")) return place(item);
        placer.EndLine();
        EachChild(*item, place);
        placer.EndLine();
    });
    Free(list);
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
    xmlNode* const list =
        xmlNewDocNode(body->doc, nullptr, Name(kind == ListKind::Ordered ? "ol" : "ul"), nullptr);
    Placer placer("li", [list](xmlNode* node) {
        xmlNode* item = node;
        if (IsElement(*node, "p") || IsElement(*node, "div")) {
            xmlNodeSetName(node, Name("li"));
        } else if (!IsElement(*node, "li")) {
            item = xmlNewDocNode(node->doc, nullptr, Name("li"), nullptr);
            xmlAddChild(item, node);
        }
        xmlAddChild(list, item);
    });
    const std::function<void(xmlNode*)> place = [&](xmlNode* node) {
        if (IsList(*node)) {
            EachChild(*node, place);
            Free(node);
        } else if (IsElement(*node, "br")) {
            placer.EndLine();
            Free(node);
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
