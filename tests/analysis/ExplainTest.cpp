#include "analysis/Explain.h"

#include "tests/analysis/CheckedFolder.h"

#include <gtest/gtest.h>

namespace corvane::testing {

namespace {

// Paths below the folder.
std::string TextOf(const CheckedFolder& folder, const std::string& item) {
    std::string text = check::Explain(folder.Path(), item).text;
    for (std::size_t i = 0; (i = text.find(folder.Path() + "/Services/", i)) != std::string::npos;)
        text.erase(i, folder.Path().size() + 10);
    return text;
}

} // namespace

TEST(Explain, TellsWhyAnEntryStandsWhereItStandsOrNowhere) {
    CheckedFolder folder;
    folder.WriteExample(
        R"(<ActionItems><ActionItem Name="A" Action="OnA" Visible="0"/><ActionItem Name="B"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="file" PositionOrder="9.5"/>
<MenuItem Type="MenuItem" ActionItem="B" Path="File" PositionOrder="900"/>
<MenuItem Type="ToolbarItem" ActionItem="A" Path="Standard" PositionOrder="1"/></Menus>
<ExplorerItems><ExplorerItem Name="I" Type="Folder" Image="folder.svg">
<ActionItems><ActionItem Name="C" Action="OnC" Enabled="0"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="C" Path="Tools" PositionOrder="1"/>
<MenuItem Type="ContextMenuItem" ActionItem="C" PositionOrder="2"/></Menus></ExplorerItem></ExplorerItems>)");
    EXPECT_EQ(
        TextOf(folder, "FILE.A"),
        "entry \"file.A\"\n"
        "  defined     Example.xml:2:8, by the service \"Example\"\n"
        "  action      \"A\", Example.xml:1:87, calls OnA\n"
        "  position    9.5, position key \"file.9.5\"\n"
        "  rank        100000950 = 100 x 1000000 + 9.5 x 100; 100 is the order of the title \"File\", Base.xml:10:65\n"
        "  place       1st of 2 in the menu \"File\", before \"File.Exit\"\n"
        "  shown       from the start, once a procedure calls SetVisible(true): the definition says Visible=\"False\"\n"
        "\n"
        "button \"Tool.Standard.A\"\n"
        "  defined     Example.xml:4:1, by the service \"Example\"\n"
        "  action      \"A\", Example.xml:1:87, calls OnA\n"
        "  tool        \"file.A\", under which it is found and chosen\n"
        "  position    1, position key \"Standard.1\"\n"
        "  order       by the text \"Standard.1\"\n"
        "  place       1st of 1 in the toolbar \"Standard\"\n"
        "  shown       from the start, once a procedure calls SetVisible(true): the definition says "
        "Visible=\"False\"\n");
    EXPECT_EQ(
        TextOf(folder, "B"),
        "entry \"File.B\"\n"
        "  defined     Example.xml:3:1, by the service \"Example\"\n"
        "  action      \"B\", Example.xml:1:134, calls nothing\n"
        "  position    900, position key \"File.900\"\n"
        "  rank        100090000 = 100 x 1000000 + 900 x 100; 100 is the order of the title \"File\", Base.xml:10:65\n"
        "  place       nowhere, because the entry \"File.Exit\" has the same rank, Base.xml:13:76; corvane check says "
        "more\n"
        "  shown       from the start\n");
    // A toolbar is called what people see.
    EXPECT_EQ(TextOf(folder, "standard"), TextOf(folder, "Toolbars.Standard"));
    EXPECT_EQ(TextOf(folder, "standard").substr(0, 19), "toolbar \"Standard\"\n");
    EXPECT_EQ(TextOf(folder, "Tools"),
              "menu \"Tools\"\n"
              "  created     for the entry \"Tools.C\", Example.xml:7:55; its title isn't defined\n"
              "  1           \"Tools.C\", rank 500000100, Example.xml:7:77\n");
    EXPECT_EQ(TextOf(folder, "Context.I"), "context menu of the explorer item \"I\"\n"
                                           "  defined     Example.xml:5:16\n"
                                           "  200         \"C\", Example.xml:8:46\n");
    EXPECT_EQ(check::Explain(folder.Path(), "File.Exti").nearest, std::vector<std::string>{"File.Exit"});
}

} // namespace corvane::testing
