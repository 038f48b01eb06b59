#include "analysis/Arrange.h"

#include "analysis/Numbers.h"
#include "tests/analysis/CheckedFolder.h"

#include <gtest/gtest.h>

namespace corvane::testing {

namespace {

// As authors number menus that they don't see together: everything by tens, the submenu like an entry.
void WriteMenus(CheckedFolder& folder) {
    folder.Write("Services/A.xml", R"(<Service Name="A" ProgID="A.A" Active="True"><ActionItems>
<ActionItem Name="Plot"/><ActionItem Name="More"/><ActionItem Name="One" Action="On1"/><ActionItem Name="Two" Action="On2"/>
<ActionItem Name="Three" Action="On3"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Plot" PositionOrder="300" Caption="Plot"/>
<MenuItem Type="MenuItem" ActionItem="One" Path="Plot" PositionOrder="10" Caption="One"/>
<MenuItem Type="MenuTitle" ActionItem="More" Path="Plot" PositionOrder="20" Caption="More"/>
<MenuItem Type="MenuItem" ActionItem="Two" Path="Plot" PositionOrder="30" Caption="Two"/>
<MenuItem Type="MenuItem" ActionItem="Three" Path="Plot.More" PositionOrder="10" Caption="Three"/></Menus></Service>)");
    folder.Write("Services/B.xml", R"(<Service Name="B" ProgID="B.B" Active="True"><ActionItems>
<ActionItem Name="Four" Action="On4"/></ActionItems><Menus>
<MenuItem  Type = 'MenuItem' ActionItem='Four' Path='Plot' PositionOrder='10' Caption='Four' /></Menus></Service>)");
}

// A menu of the outline, one key after the other.
std::string Menu(const std::string& outline, const std::string& heading) {
    std::string keys;
    std::size_t i = outline.find(heading + "\n");
    if (i == std::string::npos)
        return "none";
    for (i += heading.size() + 1; outline.substr(i, 2) == "  "; i = outline.find('\n', i) + 1)
        keys += (keys.empty() ? "" : " ") + outline.substr(i + 2, outline.find_first_of(" \n", i + 2) - i - 2);
    return keys;
}

std::string Arranged(const CheckedFolder& folder, const std::string& outline, const std::set<std::string>& only = {}) {
    check::Options options{folder.Path(), false, {}};
    for (const auto& file : check::Arrange(options, outline, only))
        options.buffers[file.path] = file.after;
    return check::Outline(options);
}

} // namespace

TEST(Arrange, BringsOutTheOutlineWithFewChanges) {
    CheckedFolder folder;
    WriteMenus(folder);
    const check::Options options{folder.Path(), false, {}};
    EXPECT_EQ(Menu(check::Outline(options), "menu Plot"), "Plot.More Plot.One Plot.Four Plot.Two");
    const std::string meant = check::MeantOutline(options);
    EXPECT_EQ(Menu(meant, "menu Plot"), "Plot.One Plot.Four Plot.More Plot.Two");
    EXPECT_EQ(Menu(Arranged(folder, meant), "menu Plot"), "Plot.One Plot.Four Plot.More Plot.Two");
    const auto files = check::Arrange(options, meant, {});
    ASSERT_EQ(files.size(), 2U);
    // Only numbers have changed, in each file's own way of writing.
    EXPECT_NE(files[0].after.find("\"One\" Path=\"Plot\" PositionOrder=\"10\""), std::string::npos) << files[0].after;
    EXPECT_NE(files[0].after.find("\"Plot.More\" PositionOrder=\"10\""), std::string::npos) << files[0].after;
    EXPECT_NE(
        files[1].after.find("Type = 'MenuItem' ActionItem='Four' Path='Plot' PositionOrder='20' Caption='Four' />"),
        std::string::npos)
        << files[1].after;
    // Nothing is found afterwards that was found before.
    check::Options arranged = options;
    for (const auto& file : files)
        arranged.buffers[file.path] = file.after;
    for (const auto& finding : check::Check(arranged))
        EXPECT_TRUE(finding.rule != check::Rule::SubmenuOrder && finding.rule != check::Rule::VanishingEntry)
            << finding.text;
}

TEST(Arrange, DrawsAndRemovesLinesAndMovesEntries) {
    CheckedFolder folder;
    WriteMenus(folder);
    const std::string outline =
        "menu Plot\n  Plot.Two\n  ---\n  Plot.Four\n  Plot.One\n  Plot.More\nmenu File\n  File.Exit\n";
    EXPECT_EQ(Menu(Arranged(folder, outline), "menu Plot"), "Plot.Two --- Plot.Four Plot.One Plot.More");
    EXPECT_EQ(Menu(Arranged(folder, "menu bar\n  Plot\n  View\n  File\n"), "menu bar"), "Plot View File");
}

TEST(Arrange, SaysWhatCantBeDone) {
    CheckedFolder folder;
    WriteMenus(folder);
    const auto Refusal = [&](const std::string& outline, const std::set<std::string>& only = {}) -> std::string {
        try {
            (void)check::Arrange({folder.Path(), false, {}}, outline, only);
        } catch (const Failure& failure) {
            return failure.Description;
        }
        return "done";
    };
    EXPECT_NE(
        Refusal("menu Plto\n").find("line 1 of the outline: there is no \"menu Plto\"; did you mean \"menu Plot\"?"),
        std::string::npos);
    EXPECT_NE(Refusal("menu File\n  Plot.One\n").find("line 2 of the outline: \"Plot.One\" belongs to \"menu Plot\""),
              std::string::npos);
    EXPECT_NE(Refusal("menu Plot\n  Plot.One\n").find("is missing in the outline"), std::string::npos);
    EXPECT_NE(Refusal("  Plot.One\n").find("a menu has to be named before"), std::string::npos);
    EXPECT_NE(Refusal("menu Plot\n  Plot.One\n  Plot.One\n").find("line 3 of the outline: \"Plot.One\" is there twice"),
              std::string::npos);
    for (const char* empty : {"", "\n  # menu Plot\n"})
        EXPECT_NE(Refusal(empty).find("the outline names no menu"), std::string::npos);
    // As editors save it.
    EXPECT_EQ(check::OutlineText("\xEF\xBB\xBFmenu \xC3\x9C"), check::OutlineText("menu \xDC"));
    EXPECT_THROW((void)check::OutlineText({"m\0e\0", 4}), Failure);
    const std::string reversed = "menu Plot\n  Plot.Two\n  Plot.More\n  Plot.Four\n  Plot.One\n";
    EXPECT_NE(Refusal(reversed, {"B.xml"}).find("can't come out without a change of other files"), std::string::npos);
    // What the other files leave room for can be done.
    CheckedFolder other;
    other.Write("Services/A.xml", R"(<Service Name="A" ProgID="A.A" Active="True"><ActionItems><ActionItem Name="Plot"/>
<ActionItem Name="One" Action="On1"/><ActionItem Name="Two" Action="On2"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Plot" PositionOrder="300" Caption="Plot"/>
<MenuItem Type="MenuItem" ActionItem="One" Path="Plot" PositionOrder="10" Caption="One"/>
<MenuItem Type="MenuItem" ActionItem="Two" Path="Plot" PositionOrder="30" Caption="Two"/></Menus></Service>)");
    other.Write("Services/B.xml", R"(<Service Name="B" ProgID="B.B" Active="True"><ActionItems>
<ActionItem Name="Four" Action="On4"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Four" Path="Plot" PositionOrder="5" Caption="Four"/></Menus></Service>)");
    EXPECT_EQ(Menu(Arranged(other, "menu Plot\n  Plot.One\n  Plot.Four\n  Plot.Two\n", {"B.xml"}), "menu Plot"),
              "Plot.One Plot.Four Plot.Two");
}

TEST(Numbers, KeepAsManyAsTheyCan) {
    const auto Numbered = [](const std::vector<int>& orders) {
        std::vector<check::NumberedPlace> places;
        for (const int order : orders) {
            check::NumberedPlace place;
            place.order = order * 100;
            places.push_back(place);
        }
        std::string text;
        const auto numbers = check::NumberPlaces(places);
        for (const std::int64_t order : numbers.value())
            text += (text.empty() ? "" : " ") + std::to_string(order);
        return text;
    };
    EXPECT_EQ(Numbered({10, 20, 30}), "1000 2000 3000");
    EXPECT_EQ(Numbered({30, 10, 20}), "500 1000 2000");
    EXPECT_EQ(Numbered({10, 10, 10}), "1000 2000 3000");
    EXPECT_EQ(Numbered({10, 99, 11}), "1000 9900 10000");
}

} // namespace corvane::testing
