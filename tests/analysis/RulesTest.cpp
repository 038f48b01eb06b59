#include "analysis/Print.h"
#include "tests/analysis/CheckedFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace corvane::check {

void PrintTo(const RuleText& oRule, std::ostream* pStream) {
    *pStream << oRule.sName;
}

} // namespace corvane::check

namespace corvane::testing {

using check::Rule;

namespace {

bool LooksIntoPlugins(Rule eRule) {
    return eRule >= Rule::MissingPlugin || eRule == Rule::UnreachableWindow;
}

class RuleExample : public ::testing::TestWithParam<check::RuleText> {};

} // namespace

// The examples that the reference shows. Each differs from its neighbour in what the rule is about.
TEST_P(RuleExample, IsFoundAndItsNeighbourIsLeftAlone) {
    const check::RuleText& oRule = GetParam();
    const bool bPlugins = LooksIntoPlugins(oRule.eRule);
    CheckedFolder oBad;
    CheckedFolder oGood;
    oBad.WriteExample(oRule.sBad);
    oGood.WriteExample(oRule.sGood);
    if (bPlugins) {
        oBad.AddPlugins();
        oGood.AddPlugins();
    }
    const auto aFindings = oBad.Check(bPlugins);
    ASSERT_EQ(aFindings.size(), 1U) << oBad.Text(bPlugins);
    EXPECT_EQ(check::TextOf(aFindings[0].eRule).sName, oRule.sName) << oBad.Text(bPlugins);
    EXPECT_GT(aFindings[0].oPlace.oAt.lLine, 0);
    EXPECT_GT(aFindings[0].oPlace.oAt.lColumn, 0);
    EXPECT_EQ(oGood.Text(bPlugins), "");
}

namespace {

std::vector<check::RuleText> RulesWithExamples() {
    std::vector<check::RuleText> aRules(check::AllRules().begin(), check::AllRules().end());
    std::erase_if(aRules, [](const check::RuleText& o) { return o.sBad.empty(); });
    return aRules;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(All, RuleExample, ::testing::ValuesIn(RulesWithExamples()), [](const auto& oInfo) {
    std::string sName(oInfo.param.sName);
    std::erase(sName, '-');
    return sName;
});

TEST(Rules, StandInOrderAndTheReferenceShowsThem) {
    int nRule = 0;
    for (const auto& oRule : check::AllRules()) {
        EXPECT_EQ(static_cast<int>(oRule.eRule), nRule++) << oRule.sName;
        EXPECT_EQ(check::RuleNamed(oRule.sName), oRule.eRule);
    }
    std::stringstream oReference;
    oReference << std::ifstream(CORVANE_SOURCE "/docs/check-rules.md").rdbuf();
    EXPECT_TRUE(oReference.str() == check::RulesAsMarkdown()) << "docs/check-rules.md isn't what check --rules prints";
}

// Rules that no text of one file shows.
TEST(Rules, OfTheFolder) {
    EXPECT_EQ(CheckedFolder().Text(), "");
    EXPECT_EQ(CheckedFolder().Remove("Services/Base.xml").Text(),
              "Services: warning: no active file has the ProgID \"Corvane.Framework\": add one, with the action "
              "\"Navigation\" and its procedure \"ViewNavigation\" [missing-framework]\n");
    EXPECT_EQ(CheckedFolder().Remove("Services/Service.xdr").Check().at(0).eRule, Rule::SchemaFile);
    // A schema that is stricter than the format.
    CheckedFolder oStrict;
    oStrict.Write("Services/Service.xdr", R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
<xs:element name="Service"><xs:complexType><xs:sequence><xs:any minOccurs="0" maxOccurs="2" processContents="skip"/>
</xs:sequence><xs:attribute name="Name"/><xs:attribute name="ProgID"/></xs:complexType></xs:element></xs:schema>)");
    EXPECT_EQ(oStrict.Text(),
              "Services/Base.xml:2:1: error: Element 'Service', attribute 'Active': The attribute 'Active' is not "
              "allowed: correct it, or use the Service.xdr that comes with Corvane [schema]\n");
    EXPECT_THROW((void)CheckedFolder().Remove("Services").Check(), Failure);
    // The library looks for the entry and its caption also in a file that doesn't count.
    CheckedFolder oHelp;
    oHelp.Write("Services/Help.xml", R"(<Service Name="Help" ProgID="tavelinsvc.TavelinService" Active="False">
<Menus><MenuItem Type="MenuTitle" ActionItem="About" PositionOrder="1"/></Menus></Service>)");
    EXPECT_EQ(oHelp.Text(),
              "Services/Help.xml:2:8: error: the MenuItem of the action \"About\" has no Caption: add one "
              "[help-without-about]\n");
    // Classes of one plug-in are no likelier for what stands before the point.
    CheckedFolder oClass;
    oClass.AddPlugins().Write("Services/New.xml",
                              R"(<Service Name="New" ProgID="ExampleSvc.FirstService" Active="1"/>)");
    EXPECT_EQ(oClass.Text(true),
              "Services/New.xml:1:29: error: the plug-in has no class \"ExampleSvc.FirstService\": add "
              "it to CORVANE_PLUGIN [unknown-class]\n");
    // And whether it counts at all.
    CheckedFolder oNoClass;
    oNoClass.Write("Services/None.xml", R"(<Service Name="None" Active="maybe"/>)");
    EXPECT_NE(oNoClass.Text().find("Services/None.xml:1:30: error: Active is neither true nor false: \"maybe\""),
              std::string::npos)
        << oNoClass.Text();
}

TEST(Rules, FindNothingInStudies) {
    std::vector<check::Finding> aFindings = check::Check({CORVANE_STUDIES, true});
#ifndef CORVANE_WITH_PAGES // a build without Qt has no pages
    std::erase_if(aFindings, [](const check::Finding& oFinding) {
        return oFinding.sText.find("libStudiesPages.so") != std::string::npos;
    });
#endif
    EXPECT_EQ(check::AsText(aFindings, false), "");
}

// Places are counted in characters of the file, with values behind references and over several lines.
TEST(Rules, TellThePlaceAndTheCureOfManyProblemsAtOnce) {
    CheckedFolder oFolder;
    oFolder.Write("Services/Example.xml",
                  "<?xml version='1.0'?>\r\n<!-- <Service> \xE4 -->\n"
                  "<Service Name='Ex\xE4mple&#33;'  ProgID='ExampleSvc.E' Active='ja'>\n"
                  "\t<Menus>\n\t\t<MenuItem\n Type='MenuIten' ActionItem='A' PositionOrder='1,5'\n"
                  "  Caption='&amp;'/><Menuitem/></Menus>\n<![CDATA[<a>]]></Service>");
    EXPECT_EQ(
        oFolder.Text(),
        "Services/Example.xml:3:61: error: Active is neither true nor false: \"ja\": write \"True\" [bad-value]\n"
        "Services/Example.xml:6:8: error: \"MenuIten\" is no Type: write \"MenuItem\" [bad-word]\n"
        "Services/Example.xml:6:30: error: the service \"Ex\xC3\xA4mple!\" has no action \"A\": define it there as an "
        "ActionItem [unknown-action]\n"
        "Services/Example.xml:6:48: error: PositionOrder isn't a number: \"1,5\": write \"1.5\" [bad-value]\n"
        "Services/Example.xml:7:20: error: Menus has no element \"Menuitem\": write \"MenuItem\" "
        "[unknown-element]\n");
    EXPECT_EQ(check::CheckFile(oFolder.Path(), "example.xml").size(), 5U);
    EXPECT_TRUE(check::CheckFile(oFolder.Path(), "Base.xml").empty());
}

// What others expect of a file that can't be read isn't told as well.
TEST(Rules, NameACauseAndNotItsConsequences) {
    CheckedFolder oFolder;
    oFolder.WriteExample(R"(<ActionItems><ActionItem Name="A" Action="OnA"/><ActionItem Name="B"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="1"/>
<MenuItem Type="MenuItem" ActionItem="B" Path="Tools.More" PositionOrder="2"/></Menus>
<ExplorerItems><ExplorerItem Name="I" Type="Folder" Parent="Elsewhere" Image="folder.svg"/></ExplorerItems>)");
    EXPECT_EQ(oFolder.Check().size(), 3U) << oFolder.Text();
    oFolder.Write("Services/Base.xml", "<Service><Menus></Service>");
    EXPECT_EQ(oFolder.Text().substr(0, 59), "Services/Base.xml:1:27: error: \"Menus\" of line 1 isn't clos");
    EXPECT_EQ(oFolder.Check().size(), 1U) << oFolder.Text();
    // Nor is a title without an entry, whose entry has a mistake, or a slip in its Path.
    for (const char* sEntry : {R"(Type="MenuIten" ActionItem="A" Path="Plot" PositionOrder="1")",
                               R"(Type="MenuItem" ActionItem="A" Path="Plto" PositionOrder="1")"}) {
        CheckedFolder oTitle;
        oTitle.WriteExample(
            R"(<ActionItems><ActionItem Name="Plot"/><ActionItem Name="A" Action="OnA"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Plot" PositionOrder="300" Caption="#Plot"/><MenuItem )" +
            std::string(sEntry) + "/></Menus>");
        EXPECT_EQ(oTitle.Check().size(), 1U) << oTitle.Text();
    }
    CheckedFolder oSlash;
    oSlash.WriteExample(R"(<ActionItems><ActionItem Name="A" Action="OnA"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File/Export" PositionOrder="1"/></Menus>)");
    EXPECT_NE(oSlash.Text().find("as in \"File.Export\" [path-without-title]"), std::string::npos) << oSlash.Text();
    // A file that is there twice is one mistake.
    CheckedFolder oTwice;
    for (const char* sName : {"Services/A.xml", "Services/B.xml"})
        oTwice.Write(sName, R"(<Service Name="Two" ProgID="TwoSvc.Two" Active="True" IsStartService="True">
<ActionItems><ActionItem Name="Two"/></ActionItems><Menus><MenuItem Type="MenuTitle" ActionItem="Two" PositionOrder="300"/>
</Menus><Windows><Window Name="W" Type="Window" State="Normal"/></Windows></Service>)");
    EXPECT_NE(oTwice.Text().find("Services/B.xml:1:16: error: the file is a copy of \"A.xml\""), std::string::npos)
        << oTwice.Text();
    EXPECT_EQ(oTwice.Text().find("already"), std::string::npos) << oTwice.Text();
    // What has no place has no tool either, and its shortcuts clash with nobody's.
    CheckedFolder oNowhere;
    oNowhere.WriteExample(
        R"(<ActionItems><ActionItem Name="A" Action="OnA"/><ActionItem Name="" Action="OnB"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="1e9" ShortCutKey="F2"/>
<MenuItem Type="MenuItem" ActionItem="" Path="File" PositionOrder="1e9" ShortCutKey="F2"/></Menus>)");
    EXPECT_EQ(oNowhere.Text(),
              "Services/Example.xml:1:140: warning: ActionItem has no Name: give it one [missing-name]\n"
              "Services/Example.xml:2:76: error: the rank of the entry \"File.A\" is too large with the order "
              "1E+09: write a smaller one [position-overflow]\n"
              "Services/Example.xml:3:68: error: the rank of the entry \"File.\" is too large with the order "
              "1E+09: write a smaller one [position-overflow]\n");
}

// The slips of whoever writes XML by hand, each where it is and with what to do about it.
TEST(Rules, TellWhatIsntWellFormedInWordsOfTheirOwn) {
    const std::vector<std::pair<std::string, std::string>> aSlips{
        {"", ": error: the file is empty: write a Service element"},
        {"\n<!-- later -->\n", ":3:1: error: the file has no element: write a Service element"},
        {"Service", ":1:1: error: there is text before the first element: remove what"},
        {"\xEF\xBB\xBF<Service/>", ":1:1: error: the file begins with the byte order mark of UTF-8"},
        {std::string("\xFF\xFE<\0S\0", 6), ":1:1: error: the file is UTF-16, and is read as Windows-1252: save it"},
        {"<Service>\n<Menus>\n</Service>", ":3:11: error: \"Menus\" of line 2 isn't closed before \"</Service>\""},
        {"<Service>\n</Servize>", ":2:11: error: \"</Servize>\" is to close \"Service\" of line 1: write one name"},
        {"<Service>\n",
         ":2:1: error: the file ends before \"Service\" of line 1 is closed: end it with \"</Service>\""},
        {"<Service/>\n<Service/>", ":2:1: error: there is something after the end of the root element"},
        {"<Service\n Name='a\n b/>\n<Menus/>", ":2:8: error: the value that begins here goes on up to a \"<\": end it"},
        {"<Service Name='a & b'/>", ": error: \"&\" begins a reference: write &amp;"},
        {"<Service Name='a &b c'/>", ": error: \"&\" begins a reference: write &amp;"},
        {"<Service Name='&uuml;'/>", ": error: Entity 'uuml' not defined: write the character's number"},
        {"<Service> < </Service>", ": error: \"<\" begins an element, and no name follows: write &lt;"},
        {"<Service Name='a' Name='b'/>", ": error: the attribute \"Name\" is there twice: remove one"},
        {"<Service Name/>", ": error: the attribute \"Name\" has no value: write Name=\"...\""},
        {"<Service Name=a/>", ": error: a value isn't in quotation marks: write it"},
        {"<Service Name='a'Active='1'/>", ": error: there is no space between two attributes: write one"},
        {"<Service Name='a' <Menus/>", ":1:19: error: this isn't the beginning of an attribute: remove it, or end"},
        {"<Service><!-- a -- b --></Service>", ": error: there is \"--\" in a comment: write one hyphen"},
        {"<Service><!-- a </Service>", ": error: a comment isn't closed: end it with"},
        {" <?xml version='1.0'?><Service/>", ": error: the XML declaration isn't at the very beginning"},
    };
    for (const auto& [sBytes, sExpected] : aSlips) {
        const std::string sText = CheckedFolder().Write("Services/Slip.xml", sBytes).Text();
        EXPECT_NE(sText.find(sExpected), std::string::npos) << sBytes << "\n" << sText;
        EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n'), 1) << sText;
    }
}

} // namespace corvane::testing
