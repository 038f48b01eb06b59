#include "adapters/xml/XmlService.h"
#include "tests/support/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

namespace {

std::string Verdict(const std::string& schemaFile, const std::string& documentText) {
    const auto service = New<XmlService>();
    const auto cache = service->NewSchemaCache();
    cache->Add("", schemaFile);
    const auto document = service->NewDocument();
    if (!document->LoadXml(documentText))
        return "not well formed: " + document->ParseError().sReason;
    const XmlError error = document->Validate(cache);
    EXPECT_EQ(error.lErrorCode == 0, error.sReason.empty());
    return error.sReason.empty() ? "valid" : error.sReason;
}

std::string Shipped(const std::string& document) {
    return Verdict(CORVANE_SHIPPED_SCHEMA, document);
}

constexpr const char* commands = R"(
<ActionItems>
 <ActionItem Name="Open" Action="OnOpen" Visible="true" Enabled="0" Checked="maybe" Description="d"
  PassActionItemParam="x" Image="a.bmp" ImageDisabled="b" ImagePressed="c"/>
 <ActionItem Name="Open"/>
</ActionItems>
<Menus>
 <MenuItem Type="NoSuchWord" ActionItem="Open" PositionOrder="ten" Caption="#Open" Tip="t" Path="File"
  ShortCutKey="Ctrl+O" Separator="Sideways"/>
 <MenuItem/>
</Menus>)";

constexpr const char* page =
    R"(<Page PageProgID="S.P" Caption="c" IsOptional="perhaps" IsResizable="" PositionOrder="1"
 HelpContextID="7" HideExplorer="true">)";

} // namespace

TEST(ShippedSchema, TakesEveryElementAndAttributeAndLeavesWordsAlone) {
    const std::string commandsAndText = std::string("text") + commands + "<!-- comment -->";
    EXPECT_EQ(Shipped("<Service/>"), "valid");
    EXPECT_EQ(Shipped("<Service Name='S' ProgID='S.S' IsStartService='?' Active='yes'><Windows/><Preferences>" +
                      std::string(page) + commandsAndText + "</Page></Preferences>" + commandsAndText +
                      R"(<ExplorerItems>text<ExplorerItem Name="n" DisplayName="d" ProgID="S.I" Type="?" Parent="p"
                      PositionOrder="1" DefaultAction="Open" CanRename="?" Image="i">)" +
                      commandsAndText + "</ExplorerItem><ExplorerItem/></ExplorerItems>" +
                      R"(<Windows><Window Name="n" PageWidth="1" PageHeight="2" DefPageWidth="3" DefPageHeight="4"
                      Type="?" Caption="c" IsMDIChild="?" State="?" IsModal="?" IsNewBusinessContext="?"
                      IsApplyCommandShown="?">)" +
                      page + commandsAndText + commands + "</Page><Page/></Window></Windows>" + commands +
                      "<ExplorerItems/></Service>"),
              "valid");
}

TEST(ShippedSchema, CatchesWhatIsMisspeltOrMisplaced) {
    struct {
        std::string document, reason;
    } const cases[] = {
        {"<Service Nmae='S'/>", "line 1: Element 'Service', attribute 'Nmae': The attribute 'Nmae' is not allowed"},
        {"<Service>\n<ActionItems>\n<ActionItem Enable='true'/></ActionItems></Service>",
         "line 3: Element 'ActionItem', attribute 'Enable': The attribute 'Enable' is not allowed"},
        {"<Service>\n<ActionItems>\n<ActionItem\nName='a'\nname='b'/></ActionItems></Service>",
         "line 5: Element 'ActionItem', attribute 'name': The attribute 'name' is not allowed"},
        {"<Service>\n<Menus a=''/></Service>",
         "line 2: Element 'Menus', attribute 'a': The attribute 'a' is not allowed"},
        {"<Service>\n<Menu/></Service>", "line 2: Element 'Menu': This element is not expected. Expected is one of ( "
                                         "ActionItems, Menus, ExplorerItems, Windows, Preferences )"},
        {"<Service>\n<ActionItem/></Service>",
         "line 2: Element 'ActionItem': This element is not expected. Expected is one of ( "
         "ActionItems, Menus, ExplorerItems, Windows, Preferences )"},
        {"<Service><Windows>\n<Page/></Windows></Service>",
         "line 2: Element 'Page': This element is not expected. Expected is ( Window )"},
        {"<Service><Windows><Window>\n<ActionItems/></Window></Windows></Service>",
         "line 2: Element 'ActionItems': This element is not expected. Expected is ( Page )"},
        {"<Service xmlns='urn:other'/>", "line 1: there is no schema for the root element's namespace \"urn:other\""},
        {"<service/>", "line 1: Element 'service': No matching global declaration available for the validation root"},
        {"<Service>" + std::string(70000, '\n') + "<Nothing/></Service>",
         "line 70001: Element 'Nothing': This element is not expected. Expected is one of ( "
         "ActionItems, Menus, ExplorerItems, Windows, Preferences )"},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(Shipped(testCase.document), testCase.reason);
}

// The shipped schema is looked at in a way of its own; one that says more must be enforced as a whole.
TEST(Schemas, EveryRuleOfAnotherSchemaIsEnforced) {
    test::TemporaryFolder folder;
    const std::string attribute = "<xs:attribute name='a' type='xs:string'/>";
    const auto Text = [](const std::string& root, const std::string& parts, const std::string& type = {}) {
        return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' " + root + "><xs:element name='s'>" +
               "<xs:complexType mixed='true'>" + parts + "</xs:complexType></xs:element>" + type + "</xs:schema>";
    };
    const auto Choice = [](const std::string& element) {
        return "<xs:choice minOccurs='0' maxOccurs='unbounded'>" + element + "</xs:choice>";
    };
    struct {
        std::string schema, invalid;
    } const cases[] = {
        {Text("", attribute), "<s b='1'/>"},
        {Text("", attribute), "<s>text<s/></s>"},
        {Text("", attribute), "<s xmlns:x='urn:x' x:a='1'/>"},
        {Text("", attribute), "<s><a xmlns='urn:x'/></s>"},
        {Text("", attribute), "<!DOCTYPE s [<!ENTITY e '<s/>'>]><s>&e;</s>"},
        {Text("", "<xs:attribute name='a' type='xs:string' use='required'/>"), "<s/>"},
        {Text("", "<xs:attribute name='a' type='xs:integer'/>"), "<s a='x'/>"},
        {Text("", "<xs:attribute name='a' type='xs:string' fixed='1'/>"), "<s a='2'/>"},
        {Text("", Choice("<xs:element name='e' type='xs:integer'/>")), "<s><e>x</e></s>"},
        {Text("", Choice("<xs:element name='e' type='t'/>"), "<xs:complexType name='t'/>"), "<s><e>x</e></s>"},
        {Text("", Choice("<xs:element name='e' minOccurs='2' maxOccurs='2'/>")), "<s><e/></s>"},
        {Text("", "<xs:choice><xs:element name='e'/></xs:choice>"), "<s/>"},
        {Text("", "<xs:sequence><xs:element name='e'/></xs:sequence>"), "<s/>"},
        {Text("targetNamespace='urn:t'", attribute), "<s/>"},
        {Text("xmlns='http://www.w3.org/2001/XMLSchema'", Choice("<xs:element name='e' type='date'/>")),
         "<s><e>x</e></s>"},
    };
    for (const auto& [schema, invalid] : cases)
        EXPECT_NE(Verdict(folder.Write("Service.xdr", schema), invalid), "valid") << schema << invalid;
}

TEST(Schemas, MayBeRelaxNG) {
    test::TemporaryFolder folder;
    const std::string file = folder.Write("Service.xdr", R"(<element name="Service"
        xmlns="http://relaxng.org/ns/structure/1.0"><optional><attribute name="Name"/></optional>
        <zeroOrMore><element name="Menus"><empty/></element></zeroOrMore></element>)");
    EXPECT_EQ(Verdict(file, "<Service Name='x'><Menus/>\n<Menus/></Service>"), "valid");
    EXPECT_EQ(Verdict(file, "<Service\n>\n<Menus Nmae='x'/></Service>"),
              "line 3: Invalid attribute Nmae for element Menus");
}

TEST(Schemas, OneThatCannotBeUsedSaysWhere) {
    test::TemporaryFolder folder;
    struct {
        std::string bytes, why;
    } const cases[] = {
        {"<a>\n</b>", "line 2: Opening and ending tag mismatch: a line 1 and b"},
        {"", "line 1: Document is empty"},
        {"<Schema xmlns='urn:schemas'/>", "line 1: its root element is neither of W3C XML Schema nor of RELAX NG; its "
                                          "namespace is \"urn:schemas\""},
        {"<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema'>\n<s:element name='a' type='b'/></s:schema>",
         "line 2: element decl. 'a', attribute 'type': The QName value 'b' does not resolve to a(n) type definition"},
        {"<element xmlns='http://relaxng.org/ns/structure/1.0' name='a'>\n<ref name='b'/></element>",
         "line 2: Internal found no define for ref b"},
    };
    for (const auto& testCase : cases) {
        const std::string file = folder.Write("bad.xdr", testCase.bytes);
        EXPECT_EQ(FailureOf([&] { New<XmlService>()->NewSchemaCache()->Add("", file); }),
                  "-1: The schema file \"" + file + "\" can't be used: " + testCase.why);
    }
    EXPECT_EQ(FailureOf([&] { New<XmlService>()->NewSchemaCache()->Add("", folder.Path() + "/none.xdr"); }),
              "53: The schema file \"" + folder.Path() + "/none.xdr\" can't be used: there is no such file");
}

// libxml2 needn't see a simple schema before a document calls for it, so everything that it would mind must be seen.
TEST(Schemas, ASimpleOneWithAMistakeCannotBeUsedEither) {
    test::TemporaryFolder folder;
    const std::string partList[] = {
        "<s:complexType name='t' mixed='1'/><s:complexType name='t' mixed='1'/>",
        ("<s:complexType name='t' mixed='1'><s:attribute name='a' type='s:string'/><s:attribute name='a' "
         "type='s:string'/></s:complexType>"),
        ("<s:complexType name='t' mixed='1'><s:attribute name='a' type='s:string'/><s:choice minOccurs='0' "
         "maxOccurs='unbounded'/></s:complexType>"),
        "<s:complexType name='t' mixed='1'>text</s:complexType>",
        "<s:complexType name='t' mixed='1'><s:attribute name='a b' type='s:string'/></s:complexType>",
        "<s:complexType name='t' mixed='1'><s:attribute name='xmlns' type='s:string'/></s:complexType>",
        "<s:complexType name='1' mixed='1'/>",
        "<s:complexType mixed='1'/>",
        "<s:element name='e'><s:complexType name='t' mixed='1'/></s:element>",
        "<s:element name='e' type='t'/>",
        "<s:element name='e f' type='t'/><s:complexType name='t' mixed='1'/>",
        "<s:element name='e' type='t'/><s:element name='e' type='t'/><s:complexType name='t' mixed='1'/>",
        "<s:annotation><s:element name='e'/></s:annotation>",
    };
    const auto expectRefused = [&](const std::string& root, const std::string& parts) {
        const std::string file = folder.Write("bad.xdr", "<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema' " +
                                                             root + ">" + parts + "</s:schema>");
        const std::string failure = FailureOf([&] { New<XmlService>()->NewSchemaCache()->Add("", file); });
        EXPECT_NE(failure.find("can't be used: line 1: "), std::string::npos) << root << parts;
    };
    for (const std::string& parts : partList)
        expectRefused("", parts);
    expectRefused("elementFormDefault='?'", "");
}

TEST(Schemas, AreUsedForManyDocumentsAndSeeChangesOfTheTree) {
    const auto service = New<XmlService>();
    const auto cache = service->NewSchemaCache();
    cache->Add("", CORVANE_SHIPPED_SCHEMA);
    for (const bool changed : {false, true, false}) {
        const auto document = service->NewDocument();
        ASSERT_TRUE(document->LoadXml("<Service Name='1'/>"));
        if (changed)
            document->SelectSingleNode("Service")->SetAttribute("Other", "x");
        EXPECT_EQ(document->Validate(cache).sReason.empty(), !changed);
    }
}
