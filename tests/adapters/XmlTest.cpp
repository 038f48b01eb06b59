#include "adapters/xml/XmlService.h"
#include "tests/support/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

namespace {

std::string Repeated(std::size_t n, std::string_view text) {
    std::string all;
    for (std::size_t i = 0; i < n; ++i)
        all += text;
    return all;
}

// The attribute "a" of the root, or the reason why there is none.
std::string AttributeAOf(std::string_view bytes) {
    const auto document = New<XmlService>()->NewDocument();
    if (!document->LoadXml(bytes))
        return "rejected: " + document->ParseError().sReason;
    return document->SelectSingleNode("*")->Attribute("a").value_or("absent");
}

std::string NamesOf(const std::vector<Ref<IXmlNode>>& nodes) {
    std::string names;
    for (const auto& node : nodes)
        names += node->Attribute("n").value_or("?") + "@" + std::to_string(node->Line()) + " ";
    return names;
}

} // namespace

TEST(XmlDecoding, BytesAreWindows1252WhateverTheDeclarationSays) {
    struct {
        std::string bytes, text;
    } const cases[] = {
        {"<r a='plain'/>", "plain"},
        {"<r a='\x80 \xFC\xDF \x93q\x94'/>", "€ üß “q”"},
        {"<?xml version='1.0' encoding='UTF-8'?><r a='\xE4'/>", "ä"},
        {"<?xml version='1.0' encoding='UTF-8'?><r a='\xC3\xA4'/>", "Ã¤"},
        {"<?xml version='1.0' encoding='UTF-16'?><r a='\xE4'/>", "ä"},
        {"<?xml version='1.0' encoding='no-such-thing'?><r a='\xE4'/>", "ä"},
        {"<r a='\x81\x8D\x8F\x90\x9D'/>", "\u0081\u008D\u008F\u0090\u009D"},
        {"<r a='&#20013;&#x1F600;&amp;&lt;'/>", "中😀&<"},
        {"<!DOCTYPE r [<!ENTITY e 'inside'>]><r a='&e;'/>", "inside"},
        {"<r xmlns:x='urn:x' x:a='other'/>", "absent"},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(AttributeAOf(testCase.bytes), testCase.text) << testCase.bytes;
}

TEST(XmlLimits, WhatIsRejectedIsExplained) {
    const std::string laughs = "<!DOCTYPE r [<!ENTITY a 'ha'>" + [] {
        std::string entities;
        for (char c = 'b'; c < 'm'; ++c)
            entities += std::string("<!ENTITY ") + c + " '" + Repeated(10, std::string("&") + char(c - 1) + ";") + "'>";
        return entities;
    }() + "]>\n<r";
    test::TemporaryFolder folder;
    const std::string secret = folder.Write("secret", "secret");
    const std::string external = "<!DOCTYPE r [\n<!ENTITY x SYSTEM 'file://" + secret + "'>]>";
    struct {
        std::string bytes, reason;
    } const cases[] = {
        {"", "the file is empty"},
        {"\xEF\xBB\xBF<r/>",
         "line 1: the file begins with the byte order mark of UTF-8, but each of its bytes is read as a "
         "character of Windows-1252; save it without the mark"},
        {"<r>\n<a>\n</r>", "line 3: Opening and ending tag mismatch: a line 2 and r"},
        {"<r>\n<a b='1' b='2'/></r>", "line 2: Attribute b redefined"},
        {"<r>\n&nothing;</r>", "line 2: Entity 'nothing' not defined"},
        {"\n<p:r/>", "line 2: Namespace prefix p on r is not defined"},
        {std::string("\xFF\xFE<\0r\0", 6), "line 1: Start tag expected, '<' not found"},
        {laughs + ">&l;</r>", "line 2: entities refer to themselves or expand beyond all measure"},
        {laughs + " a='&l;'/>", "line 2: entities refer to themselves or expand beyond all measure"},
        {"<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]>\n<r>&a;</r>",
         "line 2: entities refer to themselves or expand beyond all measure"},
        {external + "<r>&x;</r>", "line 2: entity 'x' lies outside the file; external entities are not read"},
        {external + "<r/>", "line 2: entity 'x' lies outside the file; external entities are not read"},
        {"<!DOCTYPE r [<!ENTITY % p SYSTEM 'http://localhost/p'> %p;]><r/>",
         "line 1: entity 'p' lies outside the file; external entities are not read"},
        {Repeated(300, "<r>") + Repeated(300, "</r>"), "line 1: elements are nested deeper than 256 levels"},
        {"\n<r a='" + std::string(XmlLimit::ValueBytes + 1, 'x') + "'/>",
         "line 2: the value of attribute 'a' of element 'r' is larger than 256 KiB"},
        {"<r>\n" + std::string(XmlLimit::ValueBytes + 1, 'x') + "</r>",
         "line 2: a piece of text is larger than 256 KiB"},
        {"<r><![CDATA[" + std::string(XmlLimit::ValueBytes + 1, 'x') + "]]></r>",
         "line 1: a piece of text is larger than 256 KiB"},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(AttributeAOf(testCase.bytes), "rejected: " + testCase.reason) << testCase.bytes.substr(0, 200);
}

// An external subset that is only named is not read, and does no harm.
TEST(XmlLimits, WhatIsWithinTheLimitsIsTaken) {
    EXPECT_EQ(AttributeAOf("<!DOCTYPE r SYSTEM 'http://localhost/r.dtd'><r a='1'/>"), "1");
    EXPECT_EQ(AttributeAOf(Repeated(255, "<r a='1'>") + Repeated(255, "</r>")), "1");
    const std::string longest(XmlLimit::ValueBytes, 'x');
    EXPECT_EQ(AttributeAOf("<r a='" + longest + "'/>"), longest);
    EXPECT_EQ(AttributeAOf("<r a='1'>" + Repeated(200000, "<action-item with='attributes' and='text'/>\n") + "</r>"),
              "1");
}

TEST(XmlErrors, CodeIsPositiveAndADocumentCanBeLoadedAnew) {
    const auto document = New<XmlService>()->NewDocument();
    EXPECT_TRUE(document->LoadXml("<r n='1'/>"));
    EXPECT_FALSE(document->LoadXml("<r>\n\n<"));
    EXPECT_GT(document->ParseError().lErrorCode, 0);
    EXPECT_EQ(document->ParseError().lLine, 3);
    EXPECT_EQ(document->SelectSingleNode("r"), nullptr);
    EXPECT_TRUE(document->LoadXml("<r n='2'/>"));
    EXPECT_EQ(document->ParseError().lErrorCode, 0);
    EXPECT_EQ(document->SelectSingleNode("r")->Attribute("n"), "2");
}

TEST(XmlNodes, XPathSelectsInDocumentOrder) {
    auto document = New<XmlService>()->NewDocument();
    ASSERT_TRUE(document->LoadXml("<S>\n<A>\n<I n='1'/> text <I n='2'/></A>\n<!-- c --><A><I n='3'><A><I n='4'/></A>"
                                  "</I></A><B><I n='5' x='5'/></B></S>"));
    const auto root = document->SelectSingleNode("S");
    EXPECT_EQ(NamesOf(root->SelectNodes("./A/I")), "1@3 2@3 3@4 ");
    EXPECT_EQ(NamesOf(root->SelectNodes("B/I | A/I")), "1@3 2@3 3@4 5@4 ");
    EXPECT_EQ(NamesOf(root->SelectNodes("Nothing")), "");
    EXPECT_EQ(root->SelectSingleNode("//S//I[@n='4']")->Attribute("n"), "4");
    EXPECT_EQ(root->SelectSingleNode("A/I[9]"), nullptr);
    EXPECT_EQ(document->SelectSingleNode("A"), nullptr);
    EXPECT_EQ(FailureOf([&] { (void)root->SelectNodes("A["); }), "5: \"A[\" isn't an XPath expression");
    EXPECT_EQ(FailureOf([&] { (void)root->SelectNodes("count(A)"); }), "13: \"count(A)\" selects a value, not nodes");
}

TEST(XmlNodes, OutliveDocumentAndService) {
    Ref<IXmlNode> node;
    {
        const auto document = New<XmlService>()->NewDocument();
        ASSERT_TRUE(document->LoadXml("<S><A n='kept'/></S>"));
        node = document->SelectSingleNode("S");
    }
    EXPECT_EQ(node->SelectSingleNode("A")->Attribute("n"), "kept");
}

TEST(XmlNodes, AnAttributeIsReplacedOrAddedAsPlainText) {
    const auto document = New<XmlService>()->NewDocument();
    ASSERT_TRUE(document->LoadXml("<S n='1'/>"));
    const auto node = document->SelectSingleNode("S");
    node->SetAttribute("n", "a & <b> &amp; ü");
    node->SetAttribute("m", "");
    EXPECT_EQ(document->SelectSingleNode("S")->Attribute("n"), "a & <b> &amp; ü");
    EXPECT_EQ(node->Attribute("m"), "");
    EXPECT_EQ(FailureOf([&] { node->SetAttribute("n", "\xFF"); }).substr(0, 2), "5:");
}

TEST(XmlNodes, LinesGoOnBeyond65535) {
    const auto document = New<XmlService>()->NewDocument();
    ASSERT_TRUE(document->LoadXml("<S>" + std::string(70000, '\n') + "<A/>\n<B/></S>"));
    EXPECT_EQ(document->SelectSingleNode("S/A")->Line(), 70001);
    EXPECT_EQ(document->SelectSingleNode("S/B")->Line(), 70002);
}
