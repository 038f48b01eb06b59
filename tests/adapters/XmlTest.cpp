#include "adapters/xml/XmlService.h"
#include "tests/adapters/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

namespace {

std::string Repeated(std::size_t n, std::string_view sText) {
    std::string sAll;
    for (std::size_t i = 0; i < n; ++i)
        sAll += sText;
    return sAll;
}

// The attribute "a" of the root, or the reason why there is none.
std::string AttributeAOf(std::string_view sBytes) {
    const auto oDocument = New<XmlService>()->NewDocument();
    if (!oDocument->LoadXml(sBytes))
        return "rejected: " + oDocument->ParseError().sReason;
    return oDocument->SelectSingleNode("*")->Attribute("a").value_or("absent");
}

std::string NamesOf(const std::vector<Ref<IXmlNode>>& aNodes) {
    std::string sNames;
    for (const auto& oNode : aNodes)
        sNames += oNode->Attribute("n").value_or("?") + "@" + std::to_string(oNode->Line()) + " ";
    return sNames;
}

} // namespace

TEST(XmlDecoding, BytesAreWindows1252WhateverTheDeclarationSays) {
    struct {
        std::string sBytes, sText;
    } const aCases[] = {
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
    for (const auto& oCase : aCases)
        EXPECT_EQ(AttributeAOf(oCase.sBytes), oCase.sText) << oCase.sBytes;
}

TEST(XmlLimits, WhatIsRejectedIsExplained) {
    const std::string sLaughs = "<!DOCTYPE r [<!ENTITY a 'ha'>" + [] {
        std::string sEntities;
        for (char c = 'b'; c < 'm'; ++c)
            sEntities +=
                std::string("<!ENTITY ") + c + " '" + Repeated(10, std::string("&") + char(c - 1) + ";") + "'>";
        return sEntities;
    }() + "]>\n<r";
    test::TemporaryFolder oFolder;
    const std::string sSecret = oFolder.Write("secret", "secret");
    const std::string sExternal = "<!DOCTYPE r [\n<!ENTITY x SYSTEM 'file://" + sSecret + "'>]>";
    struct {
        std::string sBytes, sReason;
    } const aCases[] = {
        {"", "the file is empty"},
        {"\xEF\xBB\xBF<r/>",
         "line 1: the file begins with the byte order mark of UTF-8, but each of its bytes is read as a "
         "character of Windows-1252; save it without the mark"},
        {"<r>\n<a>\n</r>", "line 3: Opening and ending tag mismatch: a line 2 and r"},
        {"<r>\n<a b='1' b='2'/></r>", "line 2: Attribute b redefined"},
        {"<r>\n&nothing;</r>", "line 2: Entity 'nothing' not defined"},
        {"\n<p:r/>", "line 2: Namespace prefix p on r is not defined"},
        {"\xFF\xFE<\0r\0", "line 1: Start tag expected, '<' not found"},
        {sLaughs + ">&l;</r>", "line 2: entities refer to themselves or expand beyond all measure"},
        {sLaughs + " a='&l;'/>", "line 2: entities refer to themselves or expand beyond all measure"},
        {"<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]>\n<r>&a;</r>",
         "line 2: entities refer to themselves or expand beyond all measure"},
        {sExternal + "<r>&x;</r>", "line 2: entity 'x' lies outside the file; external entities are not read"},
        {sExternal + "<r/>", "line 2: entity 'x' lies outside the file; external entities are not read"},
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
    for (const auto& oCase : aCases)
        EXPECT_EQ(AttributeAOf(oCase.sBytes), "rejected: " + oCase.sReason) << oCase.sBytes.substr(0, 200);
}

// An external subset that is only named is not read, and does no harm.
TEST(XmlLimits, WhatIsWithinTheLimitsIsTaken) {
    EXPECT_EQ(AttributeAOf("<!DOCTYPE r SYSTEM 'http://localhost/r.dtd'><r a='1'/>"), "1");
    EXPECT_EQ(AttributeAOf(Repeated(255, "<r a='1'>") + Repeated(255, "</r>")), "1");
    const std::string sLongest(XmlLimit::ValueBytes, 'x');
    EXPECT_EQ(AttributeAOf("<r a='" + sLongest + "'/>"), sLongest);
    EXPECT_EQ(AttributeAOf("<r a='1'>" + Repeated(200000, "<action-item with='attributes' and='text'/>\n") + "</r>"),
              "1");
}

TEST(XmlErrors, CodeIsPositiveAndADocumentCanBeLoadedAnew) {
    const auto oDocument = New<XmlService>()->NewDocument();
    EXPECT_TRUE(oDocument->LoadXml("<r n='1'/>"));
    EXPECT_FALSE(oDocument->LoadXml("<r>\n\n<"));
    EXPECT_GT(oDocument->ParseError().lErrorCode, 0);
    EXPECT_EQ(oDocument->ParseError().lLine, 3);
    EXPECT_EQ(oDocument->SelectSingleNode("r"), nullptr);
    EXPECT_TRUE(oDocument->LoadXml("<r n='2'/>"));
    EXPECT_EQ(oDocument->ParseError().lErrorCode, 0);
    EXPECT_EQ(oDocument->SelectSingleNode("r")->Attribute("n"), "2");
}

TEST(XmlNodes, XPathSelectsInDocumentOrder) {
    auto oDocument = New<XmlService>()->NewDocument();
    ASSERT_TRUE(oDocument->LoadXml("<S>\n<A>\n<I n='1'/> text <I n='2'/></A>\n<!-- c --><A><I n='3'><A><I n='4'/></A>"
                                   "</I></A><B><I n='5' x='5'/></B></S>"));
    const auto oRoot = oDocument->SelectSingleNode("S");
    EXPECT_EQ(NamesOf(oRoot->SelectNodes("./A/I")), "1@3 2@3 3@4 ");
    EXPECT_EQ(NamesOf(oRoot->SelectNodes("B/I | A/I")), "1@3 2@3 3@4 5@4 ");
    EXPECT_EQ(NamesOf(oRoot->SelectNodes("Nothing")), "");
    EXPECT_EQ(oRoot->SelectSingleNode("//S//I[@n='4']")->Attribute("n"), "4");
    EXPECT_EQ(oRoot->SelectSingleNode("A/I[9]"), nullptr);
    EXPECT_EQ(oDocument->SelectSingleNode("A"), nullptr);
    EXPECT_EQ(FailureOf([&] { (void)oRoot->SelectNodes("A["); }), "5: \"A[\" isn't an XPath expression");
    EXPECT_EQ(FailureOf([&] { (void)oRoot->SelectNodes("count(A)"); }), "13: \"count(A)\" selects a value, not nodes");
}

TEST(XmlNodes, OutliveDocumentAndService) {
    Ref<IXmlNode> oNode;
    {
        const auto oDocument = New<XmlService>()->NewDocument();
        ASSERT_TRUE(oDocument->LoadXml("<S><A n='kept'/></S>"));
        oNode = oDocument->SelectSingleNode("S");
    }
    EXPECT_EQ(oNode->SelectSingleNode("A")->Attribute("n"), "kept");
}

TEST(XmlNodes, AnAttributeIsReplacedOrAddedAsPlainText) {
    const auto oDocument = New<XmlService>()->NewDocument();
    ASSERT_TRUE(oDocument->LoadXml("<S n='1'/>"));
    const auto oNode = oDocument->SelectSingleNode("S");
    oNode->SetAttribute("n", "a & <b> &amp; ü");
    oNode->SetAttribute("m", "");
    EXPECT_EQ(oDocument->SelectSingleNode("S")->Attribute("n"), "a & <b> &amp; ü");
    EXPECT_EQ(oNode->Attribute("m"), "");
    EXPECT_EQ(FailureOf([&] { oNode->SetAttribute("n", "\xFF"); }).substr(0, 2), "5:");
}

TEST(XmlNodes, LinesGoOnBeyond65535) {
    const auto oDocument = New<XmlService>()->NewDocument();
    ASSERT_TRUE(oDocument->LoadXml("<S>" + std::string(70000, '\n') + "<A/>\n<B/></S>"));
    EXPECT_EQ(oDocument->SelectSingleNode("S/A")->Line(), 70001);
    EXPECT_EQ(oDocument->SelectSingleNode("S/B")->Line(), 70002);
}
