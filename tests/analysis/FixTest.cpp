#include "analysis/Fix.h"

#include "analysis/Arrange.h"
#include "analysis/Print.h"
#include "tests/analysis/CheckedFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace corvane::testing {

namespace {

std::string Read(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

constexpr const char* soundEntry = R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/></Menus>)";

std::string With(const std::string& what, const std::string& by) {
    std::string text = soundEntry;
    return text.replace(text.find(what), what.size(), by);
}

} // namespace

// Each slip, and the file as it comes out; what it writes checks clean.
TEST(Fix, WritesTheCuresThatAreCertain) {
    const std::string sound = "<Service Name=\"Example\" ProgID=\"ExampleSvc.ExampleService\" Active=\"True\">";
    for (const auto& [spoilt, cured] : std::vector<std::pair<std::string, std::string>>{
             {With("\"Greet\" Path", "\"Gret\" Path"), soundEntry},
             {With("\"Greet\" Action", "\" Greet\" Action"), soundEntry},
             {With("\"File\"", "\"Fiel\""), soundEntry},
             {With("\"10\"", "\"10,0\""), With("\"10\"", "\"10.0\"")},
             {With("PositionOrder", "positionOrder"), soundEntry},
             {With("#Greet", "##Greet"), soundEntry},
             {With("\"MenuItem\"", "\"MenuIten\""), soundEntry},
             {With("PositionOrder", "Tip=\"Says hello\" PositionOrder"),
              With("\"OnGreet\"", "\"OnGreet\" Description=\"Says hello\"")},
             {With("PositionOrder", "ShortCutKey=\"Strg+Entf\" PositionOrder"),
              With("PositionOrder", "ShortCutKey=\"Control+Delete\" PositionOrder")},
             {With("#Greet", "Gr\xC3\xBC\xC3\x9F"), With("#Greet", "Gr&#xFC;&#xDF;")},
             {With("\"10\"", "\"900\""), With("\"10\"", "\"910\"")},
         }) {
        CheckedFolder folder;
        folder.WriteExample(spoilt);
        const check::Fixes fixes = check::Fix({folder.Path(), false, {}});
        ASSERT_EQ(fixes.files.size(), 1U) << spoilt << "\n" << folder.Text();
        EXPECT_EQ(fixes.files[0].after, sound + cured + "</Service>");
        EXPECT_TRUE(fixes.left.empty()) << folder.Text();
    }
}

// Menus that were numbered each by itself: their submenus come before what they were to follow, and entries vanish.
TEST(Fix, ArrangesMenusAsTheirNumbersMean) {
    CheckedFolder folder;
    folder.WriteExample(
        R"(<ActionItems><ActionItem Name="Plot"/><ActionItem Name="More"/><ActionItem Name="One" Action="On1"/>
<ActionItem Name="Two" Action="On2"/><ActionItem Name="Three" Action="On3"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Plot" PositionOrder="300" Caption="Plot"/>
<MenuItem Type="MenuItem" ActionItem="One" Path="Plot" PositionOrder="10" Caption="One"/>
<MenuItem Type="MenuTitle" ActionItem="More" Path="Plot" PositionOrder="20" Caption="More"/>
<MenuItem Type="MenuItem" ActionItem="Two" Path="Plot" PositionOrder="10" Caption="Two"/>
<MenuItem Type="MenuItem" ActionItem="Three" Path="Plot.More" PositionOrder="10" Caption="Three"/></Menus>)");
    ASSERT_EQ(folder.Check().size(), 2U) << folder.Text();
    const check::Fixes fixes = check::Fix({folder.Path(), false, {}});
    EXPECT_EQ(check::AsText(fixes.left, false), "");
    ASSERT_EQ(fixes.files.size(), 1U);
    const check::Options fixed{folder.Path(), false, {{fixes.files[0].path, fixes.files[0].after}}};
    std::string keys;
    for (const check::OutlineLine& line : check::OutlineLines(fixed)) {
        EXPECT_TRUE(line.key != "Plot.One" || line.IsAt({line.places[0].file, {1, 1}})); // where its action is
        keys += line.heading == "menu Plot" ? line.key + " " : "";
    }
    EXPECT_EQ(keys, "Plot.One Plot.Two Plot.More ");
}

TEST(Fix, LeavesWhatAnAuthorHasToDecideAndWhatIsSound) {
    CheckedFolder folder;
    EXPECT_TRUE(check::Fix({folder.Path(), false, {}}).files.empty());
    folder.WriteExample(With("\"OnGreet\"", "\"\""));
    const check::Fixes fixes = check::Fix({folder.Path(), false, {}});
    EXPECT_TRUE(fixes.files.empty());
    EXPECT_EQ(fixes.left.size(), 1U);
}

TEST(Fix, CorrectsNamesInTheStartPage) {
    CheckedFolder folder;
    folder.WriteExample(soundEntry).Write("Data/a.csv", "a").Write("welcome.xml", R"(<Welcome Open="File.Greet">
<Step Command='File.Gret' Text="Go"/><Sample File="Data/a.cvs" Command="File.Greet" Text="File.Gret"/></Welcome>)");
    const check::Fixes fixes = check::Fix({folder.Path(), false, {}});
    ASSERT_EQ(fixes.files.size(), 1U) << folder.Text();
    EXPECT_EQ(fixes.files[0].after, R"(<Welcome Open="File.Greet">
<Step Command='File.Greet' Text="Go"/><Sample File="Data/a.csv" Command="File.Greet" Text="File.Gret"/></Welcome>)");
}

TEST(Fix, KeepsTheFileAsItWasAndShowsTheDifference) {
    CheckedFolder folder;
    folder.WriteExample(With("\"File\"", "\"Fiel\""));
    const auto files = check::Fix({folder.Path(), false, {}}).files;
    ASSERT_EQ(files.size(), 1U);
    const std::string diff = check::AsDiff(files[0]);
    EXPECT_NE(diff.find("@@ -1,2 +1,2 @@\n <Service"), std::string::npos) << diff;
    EXPECT_NE(diff.find("\n-<Menus><MenuItem Type=\"MenuItem\" ActionItem=\"Greet\" Path=\"Fiel\""), std::string::npos);
    check::WriteFixed(files[0]);
    EXPECT_EQ(Read(files[0].path), files[0].after);
    EXPECT_EQ(Read(files[0].path + ".bak"), files[0].before);
    check::WriteFixed(files[0]);
    EXPECT_TRUE(std::filesystem::exists(files[0].path + ".bak2"));
    EXPECT_EQ(folder.Text(), ""); // the copies are no findings
    EXPECT_THROW(check::WriteFixed({folder.Path() + "/nowhere/a.xml", "", ""}), Failure);
}

TEST(Diff, JoinsChangesThatAreNearAndDividesThoseThatAreNot) {
    std::string before;
    for (int line = 1; line <= 40; ++line)
        before += std::to_string(line) + "\n";
    std::string after = before;
    after.replace(after.find("\n5\n"), 3, "\nfive\n");
    after.replace(after.find("\n8\n"), 3, "\n");
    after.replace(after.find("\n30\n"), 4, "\n30\nnew\n");
    const std::string diff = check::AsDiff({"a", before, after});
    EXPECT_NE(diff.find("@@ -2,10 +2,9 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n-8\n 9\n 10\n 11\n@@ -28,6 +27,7 @@\n"),
              std::string::npos)
        << diff;
    EXPECT_EQ(check::AsDiff({"a", before, before}), "");
}

} // namespace corvane::testing
