// The XML document reader, the same cases on both platforms (pugixml natively, XmlLite under
// Wine): the template readers must name the same line and column everywhere.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/ozWholeFile.h"
#include "platform/ozXmlDocument.h"

namespace {

using Place = std::pair<unsigned, unsigned>;

TEST(XmlDocument, ReadsTheTreeWithPlacesInEitherEncodingAsTemplatesShip)
{
    const std::string sample =
        "<?xml version=\"1.0\"?>\r\n<!-- a comment -->\r\n"
        "<root xmlns:p='urn:p' a=\"1 &amp; 2\">\r\n"
        "  <child>t&lt;e<![CDATA[<x>]]>xt</child>\r\n"
        "  <empty/><p:n/>\r\n</root>\r\n";
    std::string utf16 = "\xFF\xFE", declared = sample;
    for (char c : declared.insert(19, " encoding='UTF-16'"))
        utf16 += std::string{c, '\0'};
    for (const std::string& bytes : {sample, utf16}) {
        ozXmlElement root;
        ASSERT_TRUE(ozReadXmlDocument(bytes, root));
        EXPECT_EQ(Place(root.line, root.column), Place(3, 1));
        EXPECT_EQ(*root.Attribute("a"), "1 & 2");
        EXPECT_EQ(root.text, "") << "white space between children is no text";
        EXPECT_EQ(root.children[0].text, "t<e<x>xt");
        EXPECT_EQ(Place(root.children[0].line, root.children[0].column), Place(4, 3));
        EXPECT_EQ(root.Child("p:n")->column, 11u);
    }
    // A real template: UTF-16 with a byte-order mark.
    std::string bytes;
    ozXmlElement root;
    if (!ozReadWholeFile(OZ_CORPUS_DIR "/admx/msedge/msedge.admx", bytes))
        GTEST_SKIP() << "the corpus is not there (" << OZ_CORPUS_DIR << ")";
    ozStatus read = ozReadXmlDocument(bytes, root);
    ASSERT_TRUE(read) << read.Message();
    const ozXmlElement* target = root.Child("policyNamespaces")->Child("target");
    EXPECT_EQ(Place(target->line, target->column), Place(5, 5));
    EXPECT_EQ(*target->Attribute("prefix"), "microsoft_edge");
    EXPECT_EQ(root.Child("policies")->children.size(), 574u);
}

TEST(XmlDocument, RefusesMalformedOrTooDeepDocumentsNamingTheLine)
{
    auto nested = [](unsigned depth) {
        std::string open, close;
        for (unsigned i = 0; i < depth; ++i) {
            open += "<e>";
            close += "</e>";
        }
        return open + close;
    };
    const std::pair<std::string, unsigned> cases[] = {
        {"<a>\n<b>\n</a>", 3},         // end tag of another element
        {"<a x='1' x='2'/>", 1},       // attribute given twice
        {"<a>\n  <b x=1/>\n</a>", 2},  // unquoted attribute
        {"", 1},                       // no document element
        {nested(ozXmlMaximumDepth + 1), 1},
    };
    for (const auto& [text, line] : cases) {
        ozXmlElement root;
        root.name = "left over";
        ozStatus read = ozReadXmlDocument(text, root);
        EXPECT_EQ(read.Message().rfind("line " + std::to_string(line) + ", column ", 0), 0u)
            << text << ": " << read.Message();
        EXPECT_EQ(read.Line(), line);
        EXPECT_TRUE(root.name.empty());
    }
    ozXmlElement root;
    EXPECT_TRUE(ozReadXmlDocument(nested(ozXmlMaximumDepth), root)) << "at the limit";
}

}  // namespace
