// An HTML text of any quality as a tree, for the client's HTML helper and for the
// server's rules alike. Texts are UTF-8, names in lower case. The tree is the XML
// library's own; what is added to it or taken out of it follows the library's rules.
#pragma once

#include <libxml/tree.h>

#include <memory>
#include <string>
#include <string_view>

namespace Markup {

enum class Nesting {
    // Some 250 elements deep, for whoever walks the tree by recursion.
    Bounded,
    Any,
};

class HtmlDocument {
public:
    // Of a whole document, or of a piece of one, which is read as a body's content.
    explicit HtmlDocument(std::string_view html, Nesting nesting = Nesting::Bounded);

    // Whether text is missing: a tag, an attribute or a comment has no end, or elements
    // nest too deep.
    bool Lost() const { return FLost; }
    // Whether the text had a tag for the document or its body.
    bool IsWhole() const { return FWhole; }
    // Null when there is nothing in it.
    xmlNode* Root() const { return xmlDocGetRootElement(FDocument.get()); }
    // Null when there is none, as in a document of frames.
    xmlNode* Body() const;

private:
    bool FWhole = false;
    bool FLost = false;
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> FDocument;
};

// Empty for null.
std::string_view View(const xmlChar* text);

// Null when the element has none of that name.
const xmlAttr* FindAttribute(const xmlNode& element, std::string_view name);
// With its references decoded; empty for none of that name.
std::string ValueOf(const xmlAttr& attribute);
std::string ValueOf(const xmlNode& element, std::string_view attribute);

bool IsElement(const xmlNode& node, std::string_view name);
// Whether the element begins a line of its own.
bool IsBlock(const xmlNode& element);

// White space or a comment.
bool IsBlank(const xmlNode& node);

// A node of its own, for the caller to put into the document.
xmlNode* NewElement(xmlDoc* document, const char* name);
void Rename(xmlNode& element, const char* name);
// The node and what is in it.
void Remove(xmlNode* node);
// Leaves what is in it in its place.
void Unwrap(xmlNode* element);

// Where a tag begins, written with its bracket ("<body"); the text's size for nowhere.
// Comments and the values of attributes are passed over.
std::size_t FindTag(std::string_view html, std::string_view tag);

// The visitor may take the child out or put others before it.
template<class Visit> void EachChild(const xmlNode& parent, Visit visit) {
    for (xmlNode *child = parent.children, *next = nullptr; child; child = next) {
        next = child->next;
        visit(child);
    }
}

// Calls `enter` for each node below the parent in its order, and `leave` for each
// element when its content is through. Where `enter` gives false, the content is
// skipped, and so is `leave`. Any depth will do; no node may be moved meanwhile.
template<class Node, class Enter, class Leave> void Walk(Node& parent, Enter enter, Leave leave) {
    Node* node = parent.children;
    while (node) {
        if (enter(*node)) {
            if (node->type == XML_ELEMENT_NODE && node->children) {
                node = node->children;
                continue;
            }
            if (node->type == XML_ELEMENT_NODE) leave(*node);
        }
        while (!node->next) {
            node = node->parent;
            if (node == &parent) return;
            leave(*node);
        }
        node = node->next;
    }
}

} // namespace Markup
