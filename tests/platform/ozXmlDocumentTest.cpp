// The XML document reader, the same cases on both platforms: pugixml natively, XmlLite under
// Wine. The tree, its places and the refusals must agree, so that the template readers name
// the same line and column everywhere.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/ozWholeFile.h"
#include "platform/ozXmlDocument.h"

namespace {

// ASCII text as UTF-16 little endian with its byte-order mark.
std::string Utf16(const std::string& ascii)
{
    std::string bytes = "\xFF\xFE";
    for (char c : ascii) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

const char* const Sample =
    "<?xml version=\"1.0\"?>\r\n"
    "<!-- a comment -->\r\n"
    "<root a=\"1 &amp; 2\" b='x'>\r\n"
    "  <child>t&lt;e<![CDATA[<x>]]>xt</child>\r\n"
    "  <empty/><p:n/>\r\n"
    "</root>\r\n";

TEST(XmlDocument, ReadsTheTreeWithPlacesInEitherEncoding)
{
    for (const std::string& bytes : {std::string(Sample), Utf16(Sample)}) {
        ozXmlElement root;
        ozStatus read = ozReadXmlDocument(bytes, root);
        ASSERT_TRUE(read) << read.Message();
        EXPECT_EQ(root.name, "root");
        EXPECT_EQ((std::pair{root.line, root.column}), (std::pair{3u, 1u}));
        ASSERT_NE(root.Attribute("a"), nullptr);
        EXPECT_EQ(*root.Attribute("a"), "1 & 2");
        EXPECT_EQ(root.text, "");  // the white space between children is no text
        ASSERT_EQ(root.children.size(), 3u);
        EXPECT_EQ(root.children[0].text, "t<e<x>xt");
        EXPECT_EQ((std::pair{root.children[0].line, root.children[0].column}), (std::pair{4u, 3u}));
        EXPECT_EQ(root.Child("p:n")->column, 11u);
        EXPECT_EQ(root.Child("missing"), nullptr);
    }
}

TEST(XmlDocument, RefusesMalformedDocumentsNamingTheLine)
{
    struct Case {
        const char* text;
        unsigned line;
    } const cases[] = {
        {"<a>\n<b>\n</a>", 3},         // end tag of another element
        {"<a x='1' x='2'/>", 1},       // attribute given twice
        {"<a>\n  <b x=1/>\n</a>", 2},  // unquoted attribute
        {"", 1},                       // no document element
    };
    for (const Case& c : cases) {
        ozXmlElement root;
        root.name = "left over";
        ozStatus read = ozReadXmlDocument(c.text, root);
        EXPECT_FALSE(read) << c.text;
        EXPECT_EQ(read.Line(), c.line) << c.text << ": " << read.Message();
        EXPECT_EQ(read.Message().rfind("line " + std::to_string(c.line) + ", column ", 0), 0u)
            << read.Message();
        EXPECT_TRUE(root.name.empty());
    }
}

TEST(XmlDocument, RefusesNestingBeyondTheLimit)
{
    auto nested = [](unsigned depth) {
        std::string text;
        for (unsigned i = 0; i < depth; ++i)
            text += "<e>";
        for (unsigned i = 0; i < depth; ++i)
            text += "</e>";
        return text;
    };
    ozXmlElement root;
    EXPECT_TRUE(ozReadXmlDocument(nested(ozXmlMaximumDepth), root));
    ozStatus deeper = ozReadXmlDocument(nested(ozXmlMaximumDepth + 1), root);
    EXPECT_FALSE(deeper);
    EXPECT_NE(deeper.Message().find("nested deeper"), std::string::npos) << deeper.Message();
}

// A real template in UTF-16 with a byte-order mark, as templates ship.
TEST(XmlDocument, ReadsTheCorpusTemplateInUtf16)
{
    std::string bytes;
    if (!ozReadWholeFile(OZ_CORPUS_DIR "/admx/msedge/msedge.admx", bytes))
        GTEST_SKIP() << "the corpus is not there (" << OZ_CORPUS_DIR << ")";
    ozXmlElement root;
    ozStatus read = ozReadXmlDocument(bytes, root);
    ASSERT_TRUE(read) << read.Message();
    EXPECT_EQ(root.name, "policyDefinitions");
    const ozXmlElement* namespaces = root.Child("policyNamespaces");
    ASSERT_NE(namespaces, nullptr);
    EXPECT_EQ((std::pair{namespaces->line, namespaces->column}), (std::pair{4u, 3u}));
    EXPECT_EQ(*namespaces->Child("target")->Attribute("prefix"), "microsoft_edge");
    ASSERT_NE(root.Child("policies"), nullptr);
    EXPECT_EQ(root.Child("policies")->children.size(), 574u);
}

}  // namespace
