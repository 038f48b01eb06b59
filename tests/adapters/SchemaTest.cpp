#include "adapters/xml/XmlService.h"
#include "tests/adapters/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

namespace {

std::string Verdict(const std::string& sSchemaFile, const std::string& sDocument) {
    const auto oService = New<XmlService>();
    const auto oCache = oService->NewSchemaCache();
    oCache->Add("", sSchemaFile);
    const auto oDocument = oService->NewDocument();
    if (!oDocument->LoadXml(sDocument))
        return "not well formed: " + oDocument->ParseError().sReason;
    const XmlError oError = oDocument->Validate(oCache);
    EXPECT_EQ(oError.lErrorCode == 0, oError.sReason.empty());
    return oError.sReason.empty() ? "valid" : oError.sReason;
}

std::string Shipped(const std::string& sDocument) {
    return Verdict(CORVANE_SHIPPED_SCHEMA, sDocument);
}

constexpr const char* sCommands = R"(
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

constexpr const char* sPage =
    R"(<Page PageProgID="S.P" Caption="c" IsOptional="perhaps" IsResizable="" PositionOrder="1"
 HelpContextID="7" HideExplorer="true">)";

} // namespace

TEST(ShippedSchema, TakesEveryElementAndAttributeAndLeavesWordsAlone) {
    const std::string sCommandsAndText = std::string("text") + sCommands + "<!-- comment -->";
    EXPECT_EQ(Shipped("<Service/>"), "valid");
    EXPECT_EQ(Shipped("<Service Name='S' ProgID='S.S' IsStartService='?' Active='yes'><Windows/><Preferences>" +
                      std::string(sPage) + sCommandsAndText + "</Page></Preferences>" + sCommandsAndText +
                      R"(<ExplorerItems>text<ExplorerItem Name="n" DisplayName="d" ProgID="S.I" Type="?" Parent="p"
                      PositionOrder="1" DefaultAction="Open" CanRename="?" Image="i">)" +
                      sCommandsAndText + "</ExplorerItem><ExplorerItem/></ExplorerItems>" +
                      R"(<Windows><Window Name="n" PageWidth="1" PageHeight="2" DefPageWidth="3" DefPageHeight="4"
                      Type="?" Caption="c" IsMDIChild="?" State="?" IsModal="?" IsNewBusinessContext="?"
                      IsApplyCommandShown="?">)" +
                      sPage + sCommandsAndText + sCommands + "</Page><Page/></Window></Windows>" + sCommands +
                      "<ExplorerItems/></Service>"),
              "valid");
}

TEST(ShippedSchema, CatchesWhatIsMisspeltOrMisplaced) {
    struct {
        std::string sDocument, sReason;
    } const aCases[] = {
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
    for (const auto& oCase : aCases)
        EXPECT_EQ(Shipped(oCase.sDocument), oCase.sReason);
}

// The shipped schema is looked at in a way of its own; one that says more must be enforced as a whole.
TEST(Schemas, EveryRuleOfAnotherSchemaIsEnforced) {
    test::TemporaryFolder oFolder;
    const std::string sAttribute = "<xs:attribute name='a' type='xs:string'/>";
    const auto Text = [](const std::string& sRoot, const std::string& sParts, const std::string& sType = {}) {
        return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' " + sRoot + "><xs:element name='s'>" +
               "<xs:complexType mixed='true'>" + sParts + "</xs:complexType></xs:element>" + sType + "</xs:schema>";
    };
    const auto Choice = [](const std::string& sElement) {
        return "<xs:choice minOccurs='0' maxOccurs='unbounded'>" + sElement + "</xs:choice>";
    };
    struct {
        std::string sSchema, sInvalid;
    } const aCases[] = {
        {Text("", sAttribute), "<s b='1'/>"},
        {Text("", sAttribute), "<s>text<s/></s>"},
        {Text("", sAttribute), "<s xmlns:x='urn:x' x:a='1'/>"},
        {Text("", sAttribute), "<s><a xmlns='urn:x'/></s>"},
        {Text("", sAttribute), "<!DOCTYPE s [<!ENTITY e '<s/>'>]><s>&e;</s>"},
        {Text("", "<xs:attribute name='a' type='xs:string' use='required'/>"), "<s/>"},
        {Text("", "<xs:attribute name='a' type='xs:integer'/>"), "<s a='x'/>"},
        {Text("", "<xs:attribute name='a' type='xs:string' fixed='1'/>"), "<s a='2'/>"},
        {Text("", Choice("<xs:element name='e' type='xs:integer'/>")), "<s><e>x</e></s>"},
        {Text("", Choice("<xs:element name='e' type='t'/>"), "<xs:complexType name='t'/>"), "<s><e>x</e></s>"},
        {Text("", Choice("<xs:element name='e' minOccurs='2' maxOccurs='2'/>")), "<s><e/></s>"},
        {Text("", "<xs:choice><xs:element name='e'/></xs:choice>"), "<s/>"},
        {Text("", "<xs:sequence><xs:element name='e'/></xs:sequence>"), "<s/>"},
        {Text("targetNamespace='urn:t'", sAttribute), "<s/>"},
        {Text("xmlns='http://www.w3.org/2001/XMLSchema'", Choice("<xs:element name='e' type='date'/>")),
         "<s><e>x</e></s>"},
    };
    for (const auto& [sSchema, sInvalid] : aCases)
        EXPECT_NE(Verdict(oFolder.Write("Service.xdr", sSchema), sInvalid), "valid") << sSchema << sInvalid;
}

TEST(Schemas, MayBeRelaxNG) {
    test::TemporaryFolder oFolder;
    const std::string sFile = oFolder.Write("Service.xdr", R"(<element name="Service"
        xmlns="http://relaxng.org/ns/structure/1.0"><optional><attribute name="Name"/></optional>
        <zeroOrMore><element name="Menus"><empty/></element></zeroOrMore></element>)");
    EXPECT_EQ(Verdict(sFile, "<Service Name='x'><Menus/>\n<Menus/></Service>"), "valid");
    EXPECT_EQ(Verdict(sFile, "<Service\n>\n<Menus Nmae='x'/></Service>"),
              "line 3: Invalid attribute Nmae for element Menus");
}

TEST(Schemas, OneThatCannotBeUsedSaysWhere) {
    test::TemporaryFolder oFolder;
    struct {
        std::string sBytes, sWhy;
    } const aCases[] = {
        {"<a>\n</b>", "line 2: Opening and ending tag mismatch: a line 1 and b"},
        {"", "line 1: Document is empty"},
        {"<Schema xmlns='urn:schemas'/>", "line 1: its root element is neither of W3C XML Schema nor of RELAX NG; its "
                                          "namespace is \"urn:schemas\""},
        {"<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema'>\n<s:element name='a' type='b'/></s:schema>",
         "line 2: element decl. 'a', attribute 'type': The QName value 'b' does not resolve to a(n) type definition"},
        {"<element xmlns='http://relaxng.org/ns/structure/1.0' name='a'>\n<ref name='b'/></element>",
         "line 2: Internal found no define for ref b"},
    };
    for (const auto& oCase : aCases) {
        const std::string sFile = oFolder.Write("bad.xdr", oCase.sBytes);
        EXPECT_EQ(FailureOf([&] { New<XmlService>()->NewSchemaCache()->Add("", sFile); }),
                  "-1: The schema file \"" + sFile + "\" can't be used: " + oCase.sWhy);
    }
    EXPECT_EQ(FailureOf([&] { New<XmlService>()->NewSchemaCache()->Add("", oFolder.Path() + "/none.xdr"); }),
              "53: The schema file \"" + oFolder.Path() + "/none.xdr\" can't be used: there is no such file");
}

// libxml2 needn't see a simple schema before a document calls for it, so everything that it would mind must be seen.
TEST(Schemas, ASimpleOneWithAMistakeCannotBeUsedEither) {
    test::TemporaryFolder oFolder;
    const std::string aParts[] = {
        "<s:complexType name='t' mixed='1'/><s:complexType name='t' mixed='1'/>",
        "<s:complexType name='t' mixed='1'><s:attribute name='a' type='s:string'/><s:attribute name='a' "
        "type='s:string'/></s:complexType>",
        "<s:complexType name='t' mixed='1'><s:attribute name='a' type='s:string'/><s:choice minOccurs='0' "
        "maxOccurs='unbounded'/></s:complexType>",
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
    const auto fnExpectRefused = [&](const std::string& sRoot, const std::string& sParts) {
        const std::string sFile = oFolder.Write("bad.xdr", "<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema' " +
                                                               sRoot + ">" + sParts + "</s:schema>");
        const std::string sFailure = FailureOf([&] { New<XmlService>()->NewSchemaCache()->Add("", sFile); });
        EXPECT_NE(sFailure.find("can't be used: line 1: "), std::string::npos) << sRoot << sParts;
    };
    for (const std::string& sParts : aParts)
        fnExpectRefused("", sParts);
    fnExpectRefused("elementFormDefault='?'", "");
}

TEST(Schemas, AreUsedForManyDocumentsAndSeeChangesOfTheTree) {
    const auto oService = New<XmlService>();
    const auto oCache = oService->NewSchemaCache();
    oCache->Add("", CORVANE_SHIPPED_SCHEMA);
    for (const bool bChanged : {false, true, false}) {
        const auto oDocument = oService->NewDocument();
        ASSERT_TRUE(oDocument->LoadXml("<Service Name='1'/>"));
        if (bChanged)
            oDocument->SelectSingleNode("Service")->SetAttribute("Other", "x");
        EXPECT_EQ(oDocument->Validate(oCache).sReason.empty(), !bChanged);
    }
}
