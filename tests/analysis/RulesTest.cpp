#include "adapters/common/Pattern.h"
#include "analysis/Print.h"
#include "tests/analysis/CheckedFolder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace corvane::check {

void PrintTo(const RuleText& rule, std::ostream* stream) {
    *stream << rule.name;
}

} // namespace corvane::check

namespace corvane::testing {

using check::Rule;

namespace {

bool LooksIntoPlugins(Rule rule) {
    return rule >= Rule::MissingPlugin || rule == Rule::UnreachableWindow;
}

class RuleExample : public ::testing::TestWithParam<check::RuleText> {};

} // namespace

// The examples that the reference shows. Each differs from its neighbour in what the rule is about.
TEST_P(RuleExample, IsFoundAndItsNeighbourIsLeftAlone) {
    const check::RuleText& rule = GetParam();
    const bool plugins = LooksIntoPlugins(rule.rule);
    CheckedFolder bad;
    CheckedFolder good;
    bad.WriteExample(rule.bad);
    good.WriteExample(rule.good);
    if (plugins) {
        bad.AddPlugins();
        good.AddPlugins();
    }
    const auto findings = bad.Check(plugins);
    ASSERT_EQ(findings.size(), 1U) << bad.Text(plugins);
    EXPECT_EQ(check::TextOf(findings[0].rule).name, rule.name) << bad.Text(plugins);
    EXPECT_GT(findings[0].place.at.line, 0);
    EXPECT_GT(findings[0].place.at.column, 0);
    EXPECT_EQ(good.Text(plugins), "");
}

namespace {

std::vector<check::RuleText> RulesWithExamples() {
    std::vector<check::RuleText> rules(check::AllRules().begin(), check::AllRules().end());
    std::erase_if(rules, [](const check::RuleText& o) { return o.bad.empty(); });
    return rules;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(All, RuleExample, ::testing::ValuesIn(RulesWithExamples()), [](const auto& testInfo) {
    std::string name(testInfo.param.name);
    std::erase(name, '-');
    return name;
});

TEST(Rules, StandInOrderAndTheReferenceShowsThem) {
    int ruleNumber = 0;
    for (const auto& rule : check::AllRules()) {
        EXPECT_EQ(static_cast<int>(rule.rule), ruleNumber++) << rule.name;
        EXPECT_EQ(check::RuleNamed(rule.name), rule.rule);
    }
    std::stringstream reference;
    reference << std::ifstream(CORVANE_SOURCE "/docs/check-rules.md").rdbuf();
    EXPECT_TRUE(reference.str() == check::RulesAsMarkdown()) << "docs/check-rules.md isn't what check --rules prints";
}

// Rules that no text of one file shows.
TEST(Rules, OfTheFolder) {
    EXPECT_EQ(CheckedFolder().Text(), "");
    EXPECT_EQ(
        CheckedFolder().Remove("Services/Base.xml").Text(),
        "Services: warning: no active file has the ProgID \"Corvane.Framework\", so only a host that brings one can "
        "start the application: add one, with <ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" "
        "PassActionItemParam=\"True\"/> [missing-framework]\n");
    EXPECT_EQ(CheckedFolder().Remove("Services/Service.xdr").Check().at(0).rule, Rule::SchemaFile);
    // A schema that is stricter than the format.
    CheckedFolder strict;
    strict.Write("Services/Service.xdr", R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
<xs:element name="Service"><xs:complexType><xs:sequence><xs:any minOccurs="0" maxOccurs="2" processContents="skip"/>
</xs:sequence><xs:attribute name="Name"/><xs:attribute name="ProgID"/></xs:complexType></xs:element></xs:schema>)");
    EXPECT_EQ(strict.Text(),
              "Services/Base.xml:2:1: error: Element 'Service', attribute 'Active': The attribute 'Active' is not "
              "allowed: correct it, or use the Service.xdr that comes with Corvane [schema]\n");
    EXPECT_THROW((void)CheckedFolder().Remove("Services").Check(), Failure);
    // The library looks for the entry and its caption also in a file that doesn't count.
    CheckedFolder help;
    help.Write("Services/Help.xml", R"(<Service Name="Help" ProgID="tavelinsvc.TavelinService" Active="False">
<Menus><MenuItem Type="MenuTitle" ActionItem="About" PositionOrder="1"/></Menus></Service>)");
    EXPECT_EQ(help.Text(),
              "Services/Help.xml:2:8: error: the MenuItem \"About\" has no Caption for the product's name, "
              "so the file is left out (91): write Caption=\"...\", with the name of the application "
              "[help-without-about]\n");
    // Classes of one plug-in are no likelier for what stands before the point.
    CheckedFolder classFolder;
    classFolder.AddPlugins().Write("Services/New.xml",
                                   R"(<Service Name="New" ProgID="ExampleSvc.Report" Active="1"/>)");
    EXPECT_EQ(classFolder.Text(true),
              "Services/New.xml:1:29: error: the plug-in has no class \"ExampleSvc.Report\", so the service \"New\" "
              "can't be made (429): add Class<...>(\"ExampleSvc.Report\") to CORVANE_PLUGIN [unknown-class]\n");
    // And whether it counts at all.
    CheckedFolder noClass;
    noClass.Write("Services/None.xml", R"(<Service Name="None" Active="maybe"/>)");
    EXPECT_NE(noClass.Text().find("Services/None.xml:1:30: error: Active \"maybe\" is neither true nor false"),
              std::string::npos)
        << noClass.Text();
}

// The application's own file of the root object, by which it starts or doesn't.
TEST(Rules, OfTheFileOfTheRootObject) {
    std::stringstream text;
    text << std::ifstream(CheckedFolder().Path() + "/Services/Base.xml").rdbuf();
    const auto With = [&](const std::string& what, const std::string& by) {
        std::string changed = text.str();
        return changed.replace(changed.find(what), what.size(), by);
    };
    struct Row {
        const char* path;
        std::string bytes;
        const char* found; // the place, or nothing
    };
    for (const Row& row :
         {Row{"Services/Base.xml", With(" Active=\"True\"", ""), "Services/Base.xml:2:1: error"},
          Row{"Services/Base.xml", With("\"Corvane.Framework\"", "\"\""), "Services/Base.xml:2:1: error"},
          Row{"Services/Base.xml", With("Corvane.Framework", "Corvane.Framwork"), "Services/Base.xml:2:30: error"},
          Row{"Services/Base.xml", With("Corvane.Framework", "BaseSvc.Base"), "Services/Base.xml:2:30: error"},
          Row{"Services/Base.xml.txt", text.str(), "Services/Base.xml.txt: error"},
          Row{"Services/more/Base.xml", text.str(), "Services/more/Base.xml: error"},
          Row{"Images/Base.xml", text.str(), "Images/Base.xml: error"}}) {
        CheckedFolder folder;
        folder.Remove("Services/Base.xml").Write(row.path, row.bytes);
        const std::string found = folder.Text();
        EXPECT_TRUE(found.starts_with(row.found)) << row.path << "\n" << found;
        EXPECT_NE(found.find("[framework-left-out]"), std::string::npos) << found;
        EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), 1) << found;
    }
    // One that is switched off is its author's affair.
    CheckedFolder off;
    off.Write("Services/Base.xml", With("\"True\"", "\"False\""));
    EXPECT_EQ(off.Check().at(0).rule, Rule::MissingFramework);
}

// Neighbours of the examples: what is found, by the rule at the end, and what a sound application may do.
TEST(Rules, FindTheNeighboursOfTheirExamplesToo) {
    const std::string greet = R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems><Menus>)";
    const std::string page = R"(<Windows><Window Name="W" Type="Window" State="Normal"><Page )";
    struct Row {
        std::string content;
        const char* found; // what is in the text, which is all; "" where nothing is found
    };
    for (
        const Row& row : std::vector<Row>{
            // Two entries agree on another name than their action has.
            {R"(<ActionItems><ActionItem Name="Gret" Action="OnGreet"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Bar" PositionOrder="10" Caption="Greet"/></Menus>)",
             "write Name=\"Greet\" at the ActionItem \"Gret\""},
            // A button makes no menu.
            {R"(<ActionItems><ActionItem Name="Plot"/><ActionItem Name="Greet" Action="OnGreet"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Plot" PositionOrder="300" Caption="#Plot"/>
<MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Plot" PositionOrder="10" Caption="Greet"/></Menus>)",
             "write Type=\"MenuItem\" for the button"},
            // Neither of two toolbars is the likelier one, unless one is what nearly all have.
            {greet +
                 R"(<MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Charts" PositionOrder="10" Caption="G"/></Menus>
<ExplorerItems><ExplorerItem Name="I" Type="Folder" ProgID="E.I" Image="folder.svg"><ActionItems><ActionItem Name="Go" Action="X"/>
</ActionItems><Menus><MenuItem Type="ToolbarItem" ActionItem="Go" Path="Chrats" PositionOrder="10" Caption="Go"/></Menus>
</ExplorerItem></ExplorerItems>)",
             "write one name for both, \"Chrats\" or \"Charts\""},
            {page + R"(Caption="P" IsOptional="False" IsResizable="True"/></Window></Windows>)", "[bad-progid]"},
            {page + R"(ProgID="E.P" Caption="P" IsOptional="False" IsResizable="True"/></Window></Windows>)",
             "write \"PageProgID\" [unknown-attribute]"},
            {R"(<Preferences><Page PageProgID="E.P" Caption="P" IsOptional="False" IsResizable="True" PositionOrder="1"/>
<Page PageProgID="E.Q" Caption="p" IsOptional="False" IsResizable="True" PositionOrder="2"/></Preferences>)",
             "[same-caption]"},
            {greet +
                 R"(<MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standart" PositionOrder="10" Caption="Greet"/></Menus>)",
             "write \"Standard\" [similar-name]"},
            {greet +
                 R"(<MenuItem Type="ToolbarItem" ActionItem="Greet" Path="File.Text" PositionOrder="10" Caption="Greet"/></Menus>)",
             "write \"Text\", or"},
            {greet +
                 R"(<MenuItem Type="MenuItem" ActionItem="gre-et" Path="File" PositionOrder="10" Caption="#Greet"/></Menus>)",
             "write \"Greet\" [unknown-action]"},
            // Two are as near, but to one nothing refers.
            {R"(<ActionItems><ActionItem Name="Edit"/><ActionItem Name="Eixt" Action="OnExit"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Edit" PositionOrder="300" Caption="#Edit"/>
<MenuItem Type="MenuItem" ActionItem="Exit" Path="Edit" PositionOrder="10" Caption="#Out"/></Menus>)",
             "write \"Eixt\" [unknown-action]"},
            {page + R"(PageProgId="E.P" Caption="P" IsOptional="False" IsResizable="True"/></Window></Windows>)",
             "write \"PageProgID\" [unknown-attribute]"},
            // A command opens no menu.
            {greet +
                 R"(<MenuItem Type="MenuItem" ActionItem="Greet" Path="File.Exit" PositionOrder="10" Caption="#Greet"/></Menus>)",
             "write Path=\"File\", the menu of that command"},
            {R"(<ActionItems><Action Name="Greet" Action="OnGreet"/></ActionItems>)", "write \"ActionItem\", the one"},
            {greet +
                 R"(<MenuItem Type="ToolBar" ActionItem="Greet" Path="B" PositionOrder="10" Caption="Greet"/></Menus>)",
             "write \"ToolbarItem\" [bad-word]"},
            {greet +
                 R"(<MenuItem Type="ToolbarItem" ActionItem="Greet" Path="B" PositionOrder="10" Caption="Greet" Tip="#Says hello"/></Menus>)",
             "write \"Says hello\" [bad-mnemonic]"},
            {R"(<ActionItems><ActionItem Name="Window"/></ActionItems><Menus><MenuItem Type="MenuTitle" ActionItem="Window"
PositionOrder="900" Caption="#Window" Separator="Before"/></Menus>)",
             "a menu bar has no separators"},
            {R"(<Windows><Window Name="W" Type="Dialog" State="Normal" IsMDIChild="False" IsModal="True">
<Page PageProgID="E.P" Caption="P" IsOptional="False" IsResizable="True">)" +
                 greet +
                 R"(<MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/></Menus>
</Page></Window></Windows>)",
             "as it is modal"},
            {R"(<Windows><Window Name="W" Type="Wizard" State="Normal" IsMDIChild="False">
<Page PageProgID="E.P" Caption="P" IsOptional="False" IsResizable="True"/>
<Page PageProgID="E.Q" Caption="Q" IsOptional="False" IsResizable="True"/></Window></Windows>)",
             "[no-order]"},
            {R"(<Preferences><Page PageProgID="E.P" Caption="P" IsOptional="False" IsResizable="True"/>
<Page PageProgID="E.Q" IsOptional="False" IsResizable="True"/></Preferences>)",
             "[missing-caption]"},
            {R"(<Windows><Window Name="W" Type="Window" State="Normal" Caption="W">
<Page PageProgID="E.P" Caption="P" IsOptional="False" IsResizable="True" PositionOrder="1"/>
<Page PageProgID="E.Q" Caption="P" IsOptional="False" IsResizable="True" PositionOrder="2"/></Window></Windows>)",
             "[same-caption]"},
            {page +
                 R"(PageProgID="ExampleSvc.ExampleService" Caption="P" IsOptional="False" IsResizable="True"/></Window></Windows>)",
             "write the ProgID of the page's own class [shared-class]"},
            // Who reads the same, but by another letter, and is named otherwise, has the wrong Caption.
            {R"(<ActionItems><ActionItem Name="GreetAll" Action="OnGreet"/><ActionItem Name="Part" Action="OnPart"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="GreetAll" Path="File" PositionOrder="10" Caption="P#art"/>
<MenuItem Type="MenuItem" ActionItem="Part" Path="File" PositionOrder="20" Caption="#Part"/></Menus>)",
             "write another Caption, such as \"#Greet All\" [same-caption]"},
            // The order of what is in one file is that of the file.
            {R"(<ExplorerItems><ExplorerItem Name="A" Type="Folder" Image="folder.svg"/>
<ExplorerItem Name="B" Type="Folder" Image="folder.svg"/></ExplorerItems>)",
             ""},
            {R"(<ExplorerItems><ExplorerItem Type="Default" Parent="A" Image="folder.svg"/>
<ExplorerItem Name="A" Type="Folder" Image="folder.svg"/></ExplorerItems>)",
             "[missing-name]"},
        }) {
        CheckedFolder folder;
        folder.WriteExample(row.content);
        std::string text = folder.Text();
        for (std::size_t i; (i = text.find("Services/Base.xml:")) != std::string::npos;)
            text.erase(i, text.find('\n', i) - i + 1); // second places
        const std::size_t notes = text.find(": note: no file has a menu");
        if (notes != std::string::npos) { // about the window list, which no example has
            const std::size_t begin = text.rfind('\n', notes) + 1;
            text.erase(begin, text.find('\n', notes) - begin + 1);
        }
        EXPECT_NE(text.find(row.found), std::string::npos) << row.content << "\n" << text;
        EXPECT_TRUE(*row.found || text.empty()) << text;
    }
    CheckedFolder lock;
    std::filesystem::create_symlink("user@machine.123", lock.Path() + "/Services/.#Base.xml");
    EXPECT_EQ(lock.Text(), "");
}

// However long the names and texts in the examples are: what is found, with its cure, has 240 characters at most.
TEST(Rules, SpeakInShort) {
    const std::string value =
        R"re((\b(Name|ActionItem|Action|Path|Caption|Tip|Parent|DefaultAction|Image|ShortCutKey)="[^"]+)")re";
    int found = 0;
    for (const check::RuleText& rule : check::AllRules()) {
        CheckedFolder folder;
        folder.WriteExample(ReplaceForm(std::string(rule.bad), value, "$1" + std::string(2000, 'x') + "\""));
        for (const check::Finding& finding : folder.Check()) {
            const std::string text = finding.text + ": " + finding.cure;
            EXPECT_LE(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }), 240) << text;
            ++found;
        }
    }
    EXPECT_GT(found, 80);
}

// What lies where nothing looks for it.
TEST(Rules, FindWhatIsInAWrongFolder) {
    const std::string service = R"(<Service Name="S" ProgID="E.S" Active="True"><ActionItems>
<ActionItem Name="Go" Action="OnGo" Image="go.svg"/></ActionItems><Menus><MenuItem Type="ToolbarItem" ActionItem="Go"
Path="B" PositionOrder="10" Caption="Go"/></Menus><Windows><Window Name="W" Type="Window" State="Normal" IsMDIChild="False">
<Page PageProgID="E.P" Caption="P" IsOptional="False" IsResizable="True"/></Window></Windows></Service>)";
    const std::string form = "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"P\"/></ui>";
    const std::string picture = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";
    for (const auto& [path, bytes, found] : std::vector<std::array<std::string, 3>>{
             {"Forms/S.xml", service, "move it to Services/S.xml [unread-file]"},
             {"Services/E.P.ui", form, "move it to Forms/E.P.ui [unread-file]"},
             {"Form/E.P.ui", form, "move it to Forms/E.P.ui [unread-file]"},
             {"Forms/old/E.P.ui", form, "move it to Forms/E.P.ui [unread-file]"},
             {"Forms/E.P.xml", form, "rename it to \"E.P.ui\" [unread-file]"},
             {"Forms/E.Q.xml", form, ""}, // of no page
             {"Services/de.po", "", "move it to Services/translations/de.po [unread-file]"},
             {"Services/translation/de.po", "", "move it to Services/translations/de.po [unread-file]"},
             {"Services/translations/de.po", "", ""},
             {"Services/qrz.ini", "", "move it to QRZ.INI [unread-file]"},
             {"Images/libE.so", "", "move it to plugins/libE.so [unread-file]"},
             {"QRZ.INI.txt", "", "rename it to \"QRZ.INI\" [unread-file]"},
             {"standin.json", "{}", "rename it to \"standins.json\" [unread-file]"},
             {"standins.json.bak", "{}", ""},
             {"Images/icons/go.svg", picture, "move it there from Images/icons [missing-image]"},
             {"Pictures/go.svg", picture, "move it there from Pictures [missing-image]"}}) {
        CheckedFolder folder;
        folder.Write("Services/S.xml", service).Write("Images/go.svg", picture);
        if (path.ends_with("go.svg"))
            folder.Remove("Images/go.svg");
        if (path == "Forms/S.xml")
            folder.Remove("Services/S.xml");
        const std::string text = folder.Write(path, bytes).Text();
        EXPECT_NE(text.find(found), std::string::npos) << path << "\n" << text;
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), found.empty() ? 0 : 1) << path << "\n" << text;
    }
}

// The file of the start page: what is named there has to be there.
TEST(Rules, OfTheStartPage) {
    CheckedFolder folder;
    folder.Write("Services/S.xml", R"(<Service Name="S" ProgID="E.S" Active="True"><ActionItems>
<ActionItem Name="Salute" Action="OnSalute"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Salute" Path="File" PositionOrder="10" Caption="#Salute"/></Menus></Service>)");
    folder.Write("Data/birds.csv", "a,b\n");
    for (const auto& [line, found] : std::vector<std::pair<std::string, std::string>>{
             {R"(<Step Command="File.Salute" Text="Go"/><Step Command="help.manual" Text="Read"/>)", ""},
             {R"(<Sample File="data/Birds.csv" Text="Birds"/>)", ""},
             {R"(<Step Command="File.Salut" Text="Go"/>)", "write \"File.Salute\""},
             {R"(<Step Command="File.Salute"/>)", "a Step has no Text"},
             {R"(<Step Text="Go"/>)", "write its Command"},
             {R"(<Step Comand="File.Salute" Command="File.Salute" Text="Go"/>)", "write \"Command\""},
             {R"(<Sample File="Data/brids.csv" Text="Birds"/>)", "write \"Data/birds.csv\""},
             {R"(<Sample File="../birds.csv" Text="Birds"/>)", "isn't below the application's folder"},
             {R"(<Sampel File="Data/birds.csv" Text="Birds"/>)", "write \"Sample\""},
             {R"(<Empty Tab="Birds" Command="File.Salute" Text="None"/>)", "the explorer has no tab \"Birds\""},
             {R"(<Empty Command="File.Salute" Text="None"/>)", "write the name of a tab"},
             {"<Step", "so the start page has nothing of it"}}) {
        const std::string text = folder.Write("welcome.xml", "<Welcome>\n" + line + "\n</Welcome>").Text();
        EXPECT_NE(text.find(found), std::string::npos) << line << "\n" << text;
        EXPECT_EQ(text.find("welcome.xml:") != std::string::npos, !found.empty()) << text;
    }
    const std::string root = R"(<Welcome Window="Startt" Open="File.Salut"/>)";
    const std::string text = folder.Write("welcome.xml", root).Text();
    EXPECT_NE(text.find("welcome.xml:1:1: warning: there is no window \"Startt\""), std::string::npos) << text;
    EXPECT_NE(text.find("write \"File.Salute\""), std::string::npos) << text;
}

// Found by a look into plug-ins.
TEST(Rules, OfProceduresAndTheirArguments) {
    const auto Action = [](const std::string& procedure, bool passes) {
        return R"(<ActionItems><ActionItem Name="A" Action=")" + procedure + "\" PassActionItemParam=\"" +
               (passes ? "True" : "False") + "\"/></ActionItems>";
    };
    const auto Kind = [&](const std::string& procedure) {
        return R"(<ExplorerItems><ExplorerItem Name="I" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg"/>
<ExplorerItem Name="K" Type="Default" Parent="I" DefaultAction="A" Image="folder.svg">)" +
               Action(procedure, false) + "</ExplorerItem></ExplorerItems>";
    };
    for (const auto& [content, found] : std::vector<std::pair<std::string, std::string>>{
             {Action("OnAction", true), ""},
             {Action("OnAny", true), ""},
             {Action("OnCount", true),
              "takes a whole number and is given the ActionItem, so choosing the command fails (13)"},
             {Action("OnText", true), "takes a text and is given the ActionItem"},
             {Action("OnPage", true), "takes a corvane::IPage and is given the ActionItem"},
             {Action("OnAction", false), "takes one argument and is given none"},
             {Kind("open"), ""}, // any class may have it
             {Kind("OnOpn"),
              "no class of a plug-in has a procedure \"OnOpn\", so choosing \"A\" of the explorer item \"K\""},
         }) {
        CheckedFolder folder;
        folder.AddPlugins().WriteExample(content);
        std::string text = folder.Text(true);
        std::erase_if(text, [](char c) { return c == '\0'; });
        if (const std::size_t begin = text.find("children-never-added"); begin != std::string::npos)
            text.erase(text.rfind("Services/", text.rfind("nothing of", begin)), text.find("above\n") + 6);
        EXPECT_NE(text.find(found), std::string::npos) << content << "\n" << text;
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), found.empty() ? 0 : 1) << content << "\n" << text;
    }
}

// Code may show or enable an action that begins without; where none calls what does it, none will.
TEST(Rules, OfActionsThatNoPlugInShows) {
    for (const std::string property : {"Visible", "Enabled"})
        for (const bool isSet : {false, true}) {
            CheckedFolder folder;
            folder.AddPlugins().WriteExample(
                "<ActionItems><ActionItem Name=\"A\" Action=\"OnGreet\" " + property +
                "=\"False\"/></ActionItems><Menus><MenuItem Type=\"MenuItem\" ActionItem=\"A\" Path=\"File\" "
                "PositionOrder=\"10\" Caption=\"#Act\"/></Menus>");
            folder.Write("plugins/P/plugin.json", R"({"run": ["python3", "p.py"]})");
            folder.Write("plugins/P/p.py", isSet ? "self.action('A')." + property + " = True" : "");
            EXPECT_EQ(folder.Text().find("[hidden-action]") == std::string::npos, isSet) << folder.Text();
        }
}

// The progress bar disables the tree of an explorer tab, which has to be there.
TEST(Rules, OfAPlugInThatShowsProgress) {
    for (const bool hasTab : {false, true}) {
        CheckedFolder folder;
        folder.Write("Services/Recent.xml",
                     R"(<Service Name="Recent" ProgID="RecentSvc.RecentService" Active="True"><ExplorerItems>)" +
                         std::string(hasTab ? R"(<ExplorerItem Name="I" Type="Folder" Image="folder.svg"/>)" : "") +
                         "</ExplorerItems></Service>");
        std::filesystem::create_directory(folder.Path() + "/plugins");
        std::filesystem::create_symlink(CORVANE_PROGRESS_PLUGIN, folder.Path() + "/plugins/libRecentSvc.so");
        const std::string text = folder.Text(true);
        EXPECT_EQ(text.find("error: the plug-in \"RecentSvc\" shows the progress bar") == std::string::npos, hasTab)
            << text;
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), hasTab ? 0 : 1) << text;
    }
}

TEST(Rules, FindNothingInStudies) {
    std::vector<check::Finding> findings = check::Check({CORVANE_STUDIES, true});
#ifndef CORVANE_WITH_PAGES // a build without Qt has no pages
    std::erase_if(findings, [](const check::Finding& finding) {
        return finding.text.find("libStudiesPages.so") != std::string::npos;
    });
#endif
    EXPECT_EQ(check::AsText(findings, false), "");
}

// Places are counted in characters of the file, with values behind references and over several lines.
TEST(Rules, TellThePlaceAndTheCureOfManyProblemsAtOnce) {
    CheckedFolder folder;
    folder.Write("Services/Example.xml",
                 "<?xml version='1.0'?>\r\n<!-- <Service> \xE4 -->\n"
                 "<Service Name='Ex\xE4mple&#33;'  ProgID='ExampleSvc.E' Active='ja'>\n"
                 "\t<Menus>\n\t\t<MenuItem\n Type='MenuIten' ActionItem='A' PositionOrder='1,5'\n"
                 "  Caption='&amp;'/><Menuitem/></Menus>\n<![CDATA[<a>]]></Service>");
    EXPECT_EQ(
        folder.Text(),
        "Services/Example.xml:3:61: error: Active \"ja\" is neither true nor false, so the whole file is left out: "
        "write "
        "\"True\" [bad-value]\n"
        "Services/Example.xml:6:8: error: \"MenuIten\" isn't a Type that is known, so the whole file is left out: "
        "write \"MenuItem\" [bad-word]\n"
        "Services/Example.xml:6:30: error: the service \"Ex\xC3\xA4mple!\" has no action \"A\" for this MenuItem, "
        "so the whole file is left out (5): add <ActionItem Name=\"A\" Action=\"...\"/> there [unknown-action]\n"
        "Services/Example.xml:6:48: error: PositionOrder \"1,5\" isn't a number, so the whole file is left out: write "
        "\"1.5\" [bad-value]\n"
        "Services/Example.xml:7:20: error: Menus has no element \"Menuitem\", so the whole file is left out: write "
        "\"MenuItem\" [unknown-element]\n");
    EXPECT_EQ(check::CheckFile(folder.Path(), "example.xml").size(), 5U);
    EXPECT_TRUE(check::CheckFile(folder.Path(), "Base.xml").empty());
}

// What others expect of a file that can't be read isn't told as well.
TEST(Rules, NameACauseAndNotItsConsequences) {
    CheckedFolder folder;
    folder.WriteExample(R"(<ActionItems><ActionItem Name="A" Action="OnA"/><ActionItem Name="B"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="1" Caption="A"/>
<MenuItem Type="MenuItem" ActionItem="B" Path="Tools.More" PositionOrder="2" Caption="B"/></Menus>
<ExplorerItems><ExplorerItem Name="I" Type="Folder" Parent="Elsewhere" Image="folder.svg"/></ExplorerItems>)");
    EXPECT_EQ(folder.Check().size(), 3U) << folder.Text();
    folder.Write("Services/Base.xml", "<Service><Menus></Service>");
    EXPECT_EQ(folder.Text().substr(0, 59), "Services/Base.xml:1:27: error: \"Menus\" of line 1 isn't clos");
    EXPECT_EQ(folder.Check().size(), 1U) << folder.Text();
    // Nor is a title without an entry, whose entry has a mistake, or a slip in its Path.
    for (const char* entry : {R"(Type="MenuIten" ActionItem="A" Path="Plot" PositionOrder="1" Caption="A")",
                              R"(Type="MenuItem" ActionItem="A" Path="Plto" PositionOrder="1" Caption="A")"}) {
        CheckedFolder title;
        title.WriteExample(
            R"(<ActionItems><ActionItem Name="Plot"/><ActionItem Name="A" Action="OnA"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Plot" PositionOrder="300" Caption="#Plot"/><MenuItem )" +
            std::string(entry) + "/></Menus>");
        EXPECT_EQ(title.Check().size(), 1U) << title.Text();
    }
    CheckedFolder slash;
    slash.WriteExample(R"(<ActionItems><ActionItem Name="A" Action="OnA"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File/View" PositionOrder="1" Caption="A"/></Menus>)");
    EXPECT_NE(slash.Text().find(": write \"View\" [path-without-title]"), std::string::npos) << slash.Text();
    // A file that is there twice is one mistake.
    CheckedFolder twice;
    for (const char* name : {"Services/A.xml", "Services/B.xml"})
        twice.Write(name, R"(<Service Name="Two" ProgID="TwoSvc.Two" Active="True" IsStartService="True">
<ActionItems><ActionItem Name="Two"/></ActionItems><Menus><MenuItem Type="MenuTitle" ActionItem="Two" PositionOrder="300"
Caption="Two"/></Menus></Service>)");
    EXPECT_NE(twice.Text().find("Services/B.xml:1:16: error: the file is a copy of \"A.xml\""), std::string::npos)
        << twice.Text();
    EXPECT_EQ(twice.Text().find("already"), std::string::npos) << twice.Text();
    // What has no place has no tool either, and its shortcuts clash with nobody's.
    CheckedFolder nowhere;
    nowhere.WriteExample(
        R"(<ActionItems><ActionItem Name="A" Action="OnA"/><ActionItem Name="" Action="OnB"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="1e9" ShortCutKey="F2" Caption="A"/>
<MenuItem Type="MenuItem" ActionItem="" Path="File" PositionOrder="1e9" ShortCutKey="F2" Caption="B"/></Menus>)");
    EXPECT_EQ(
        nowhere.Text(),
        "Services/Example.xml:1:140: warning: ActionItem has no Name, so nothing can refer to it: write Name=\"...\" "
        "[missing-name]\n"
        "Services/Example.xml:2:76: error: the PositionOrder 1E+09 of the entry \"File.A\" makes its rank too large, "
        "so the application doesn't start (6): write a smaller number, below 10000 [position-overflow]\n"
        "Services/Example.xml:3:68: error: the PositionOrder 1E+09 of the entry \"File.\" makes its rank too large, "
        "so the application doesn't start (6): write a smaller number, below 10000 [position-overflow]\n");
}

// The slips of whoever writes XML by hand, each where it is and with what to do about it.
TEST(Rules, TellWhatIsntWellFormedInWordsOfTheirOwn) {
    const std::vector<std::pair<std::string, std::string>> slips{
        {"", ": error: the file is empty, so the whole file is left out: write a Service element"},
        {"\n<!-- later -->\n",
         ":3:1: error: the file has no element, so the whole file is left out: write a Service element"},
        {"Service",
         ":1:1: error: there is text before the first element, so the whole file is left out: remove everything"},
        {"\xEF\xBB\xBF<Service/>", ":1:1: error: the file begins with the byte order mark of UTF-8"},
        {std::string("\xFF\xFE<\0S\0", 6),
         ":1:1: error: the file is UTF-16, and is read as Windows-1252, so the whole file is left out: save it"},
        {"<Service>\n<Menus>\n</Service>", ":3:11: error: \"Menus\" of line 2 isn't closed before \"</Service>\""},
        {"<Service>\n</Servize>", ":2:11: error: \"</Servize>\" is to close \"Service\" of line 1, so the whole file "
                                  "is left out: write one name"},
        {"<Service>\n", ":2:1: error: the file ends before \"Service\" of line 1 is closed, so the whole file is left "
                        "out: end it with \"</Service>\""},
        {"<Service/>\n<Service/>", ":2:1: error: there is something after the end of the root element"},
        {"<Service\n Name='a\n b/>\n<Menus/>",
         ":2:8: error: the value that begins here goes on up to a \"<\", so the whole file is left out: end it"},
        {"<Service Name='a & b'/>", ": error: \"&\" begins a reference, so the whole file is left out: write &amp;"},
        {"<Service Name='a &b c'/>", ": error: \"&\" begins a reference, so the whole file is left out: write &amp;"},
        {"<Service Name='&uuml;'/>",
         ": error: Entity 'uuml' not defined, so the whole file is left out: write the character's number"},
        {"<Service> < </Service>",
         ": error: \"<\" begins an element, and no name follows, so the whole file is left out: write &lt;"},
        {"<Service Name='a' Name='b'/>",
         ": error: the attribute \"Name\" is there twice, so the whole file is left out: remove one"},
        {"<Service Name/>",
         ": error: the attribute \"Name\" has no value, so the whole file is left out: write Name=\"...\""},
        {"<Service Name=a/>", ": error: a value isn't in quotation marks, so the whole file is left out: write it"},
        {"<Service Name='a Active='1'/>", ":1:16: error: the value that begins here goes on up to the next attribute, "
                                          "so the whole file is left out: end"},
        {"<Service Name='a'Active='1'/>",
         ": error: there is no space between two attributes, so the whole file is left out: write one"},
        {"<Service Name='a' <Menus/>",
         ":1:19: error: this isn't the beginning of an attribute, so the whole file is left out: remove it, or end"},
        {"<Service><!-- a -- b --></Service>",
         ": error: there is \"--\" in a comment, so the whole file is left out: write one hyphen"},
        {"<Service><!-- a </Service>", ": error: a comment isn't closed, so the whole file is left out: end it with"},
        {" <?xml version='1.0'?><Service/>", ": error: the XML declaration isn't at the very beginning"},
    };
    for (const auto& [bytes, expected] : slips) {
        const std::string text = CheckedFolder().Write("Services/Slip.xml", bytes).Text();
        EXPECT_NE(text.find(expected), std::string::npos) << bytes << "\n" << text;
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
}

} // namespace corvane::testing
