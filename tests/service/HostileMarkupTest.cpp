#include "ServiceFixture.h"

#include "support/HostileMarkup.h"

#include <gmock/gmock.h>
#include <libxml/parser.h>

#include <regex>

using namespace testing;

namespace {

class HostileMarkup : public ServiceFixture {
public:
    Client FAnn = LoggedOn("ann");

    // Gives the refusal or nothing.
    std::string Save(const std::string& description) {
        wire::SaveRequirementRequest request;
        request.set_id(Id("Two"));
        request.set_description(description);
        FAnn.Lock(Id("Two"));
        return RefusalOf([&] { FAnn.Save(request); });
    }
    std::string Kept() { return FAnn.Read(Id("Two")).description(); }
};

std::string Text(const xmlChar* text) {
    return text ? reinterpret_cast<const char*>(text) : "";
}

bool IsHostile(const std::string& element, const std::string& attribute, const std::string& value) {
    static const std::regex address("[ ]*(https?|ftp|mailto):.*|[^:]*|[^:]*[/?#].*", std::regex::icase);
    static const std::regex style("([^(\\\\@/]|rgba?\\()*", std::regex::icase);
    static const std::regex name(
        "on.*|src.+set|.*data.*|ping|action|formaction|background|poster|is|slot|item.*");
    if (std::regex_match(attribute, name)) return true;
    if (attribute == "style") return !std::regex_match(value, style);
    if (attribute == "src" || attribute == "src_original")
        return value.find_first_of(":/") != std::string::npos;
    if (attribute == "name") return element != "a";
    return attribute == "href" && !std::regex_match(value, address);
}

// What is hostile in it; empty for nothing.
std::string Fault(const xmlNode& node) {
    static const std::regex elements(
        "script|style|i?frame.*|object|embed|applet|meta|link|base|svg|math|template|"
        "no(script|embed|frames)|form|input|button|select|textarea|video|audio|source|"
        "track|image|plaintext|xmp|title|param|area|map|.*:.*");
    if (node.type == XML_COMMENT_NODE || node.type == XML_PI_NODE) return "comment";
    if (node.type != XML_ELEMENT_NODE) return "";
    const std::string element = Text(node.name);
    if (std::regex_match(element, elements)) return element;
    for (const xmlAttr* attribute = node.properties; attribute; attribute = attribute->next) {
        const std::string value = attribute->children ? Text(attribute->children->content) : "";
        if (IsHostile(element, Text(attribute->name), value))
            return element + " " + Text(attribute->name) + "=" + value;
    }
    for (const xmlNode* child = node.children; child; child = child->next)
        if (std::string fault = Fault(*child); !fault.empty()) return fault;
    return "";
}

TEST_F(HostileMarkup, IsKeptCleanOrRefused) {
    int kept = 0;
    for (const THostileRow& row : HostileRows) {
        SCOPED_TRACE(row.Name);
        const std::string before = Kept();
        const std::string refusal = Save(HostileText(row, "http://127.0.0.1:9", "/etc/secret"));
        if (!refusal.empty()) {
            EXPECT_EQ(Kept(), before);
            continue;
        }
        ++kept;
        const std::string document = "<r>" + Kept() + "</r>";
        const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> parsed(
            xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, "UTF-8",
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
            xmlFreeDoc);
        ASSERT_NE(parsed, nullptr) << document;
        EXPECT_EQ(Fault(*xmlDocGetRootElement(parsed.get())), "") << document;
    }
    // Refusing everything would be no cleaning.
    EXPECT_GT(kept, 150);
}

TEST_F(HostileMarkup, LeavesTheTextAroundIt) {
    ASSERT_EQ(Save("<p>one <script>x()</script><b onclick=\"x()\">two</b></p><form>three</form>"), "");
    EXPECT_EQ(Kept(), "<p>one <b>two</b></p><div>three</div>");
}

} // namespace
