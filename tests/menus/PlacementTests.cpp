// Where the entries of definition files come to stand.

#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "tests/support/Entries.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

struct Placement {
    const char* sWhat;
    const char* sFirst;  // the entries of one service
    const char* sSecond; // of another
    const char* sMain;   // the menu bar
};

const Placement aPlacements[] = {
    {"an entry without a title waits under a hidden one", "item A File 1", "", "File  (hidden)\n  A\n"},
    {"a title of another service shows it", "item A File 1", "title File - 10", "File\n  A\n"},
    {"a path of two parts stands below its first", "title View - 1; item A View.Bars 1", "",
     "View\n  View.Bars  (hidden)\n    A\n"},
    {"and so does a path of three", "title View - 1; title Bars View 1; item A View.Bars.More 1", "",
     "View\n  Bars\n  View.Bars.More  (hidden)\n    A\n"},
    {"a title stays where an earlier entry has put it",
     "title View - 5; item B View 0.5; title Bars View 1; item A View.Bars 1", "", "View\n  Bars\n    A\n  B\n"},
    {"its leading separator, for want of a place, comes last",
     "title View - 5; item B View 0.5; title Bars View 1 before; item A View.Bars 1", "",
     "View\n  Bars\n    A\n  B\n  --------\n"},
    {"its trailing separator follows it",
     "title View - 5; item B View 0.5; title Bars View 1 After; item A View.Bars 1", "",
     "View\n  Bars\n    A\n  --------\n  B\n"},
    {"and a leading one stands one place too early",
     "title View - 5; title X View 0.5; title Y View 0.6; title Bars View 1 before; item A View.X 1; item B View.Y 1; "
     "item C View.Bars 1",
     "", "View\n  X\n    A\n  --------\n  Y\n    B\n  Bars\n    C\n"},
    {"separators of neighbours are both there", "title File - 1 before; item A File 1 After; item B File 2 before", "",
     "--------\nFile\n  A\n  --------\n  --------\n  B\n"},
    {"a shared entry leaves its trailing separator at the end, and no second entry",
     "title File - 1; item A File 1; item B File 2", "item A File 1 After", "File\n  A\n  B\n  --------\n"},
    {"another action at a position that is taken is nowhere", "title File - 1; item A File 1.5",
     "item B File 1.504; item C File 1.51", "File\n  A\n  C\n"},
    {"one action at two positions stands twice", "title File - 1; item A File 1; item A File 2", "",
     "File\n  A\n  A\n"},
    {"titles are rounded to whole numbers, and the second of one number comes last",
     "title P - 1.4; title Q - 1.2; title R - 3", "", "P\nR\nQ\n"},
    {"halves to the even number", "title P - 2.5; title Q - 1.5; title R - 3; title S - 3.5", "", "P\nR\nS\nQ\n"},
    {"a path without a title comes after titles below 500 and before those above",
     "title P - 499; item A P 1; title Q - 501; item B Q 1; item C X 1", "", "P\n  A\nQ\n  B\nX  (hidden)\n  C\n"},
    {"the list of windows is last in the menu of that name", "title Window - 1; item A Window 99", "",
     "Window\n  A\n  (list of open windows)\n"},
};

TEST(Placement, OfMenus) {
    for (const auto& oPlacement : aPlacements) {
        SCOPED_TRACE(oPlacement.sWhat);
        Application oApplication;
        oApplication.AddService("One", Groups(Entries(oPlacement.sFirst)))
            .AddService("Two", Groups(Entries(oPlacement.sSecond)));
        ASSERT_EQ(oApplication.Start(), 0);
        EXPECT_EQ(oApplication.BandText("Main"), oPlacement.sMain);
        EXPECT_EQ(oApplication.TakeLog(), Lines());
    }
}

struct Refusal {
    const char* sWhat;
    const char* sFirst;
    const char* sSecond;
    Long lNumber;
    Lines aProcedures; // of the menu manager, as they log
};

TEST(Placement, FailuresEndTheStart) {
    const Refusal aRefusals[] = {
        {"a position beyond the range",
         "title File - 2148; item A File 1",
         "",
         6,
         {"MenuPositionKey", "AddMenuItems", "Initialize"}},
        {"two titles of one key", "title File - 1", "title FILE - 2", 457, {"SetupMenuTitlePositions", "Initialize"}},
        {"a path whose first part is nowhere",
         "item A View.Bars 1",
         "",
         91,
         {"CreatePlaceHolderMenuTitle", "AddMenuItem", "PrepareForDisplay", "Initialize"}},
    };
    for (const auto& oRefusal : aRefusals) {
        SCOPED_TRACE(oRefusal.sWhat);
        Application oApplication;
        oApplication.AddService("One", Groups(Entries(oRefusal.sFirst)))
            .AddService("Two", Groups(Entries(oRefusal.sSecond)));
        EXPECT_EQ(oApplication.Start(), oRefusal.lNumber);
        const std::string sNumber = " " + std::to_string(oRefusal.lNumber);
        Lines aLog;
        for (const auto& sProcedure : oRefusal.aProcedures)
            aLog.push_back("MenuManager." + sProcedure + sNumber);
        aLog.insert(aLog.end(), {"NavigationManager.Initialize" + sNumber, "Framework.Initialize" + sNumber});
        EXPECT_EQ(oApplication.TakeLog(), aLog);
    }
}

TEST(Placement, ToolsAreHiddenUntilTheirProviderComes) {
    Application oApplication;
    oApplication.AddService(
        "One", "<Windows><Window Name=\"W\" Type=\"Window\" State=\"Normal\"><Page PageProgID=\"P\" "
               "IsOptional=\"0\" IsResizable=\"1\">" +
                   Groups({{"MenuTitle", "Page", "", "1"}, {"MenuItem", "A", "Page", "1", "ShortCutKey=\"F5\""}}) +
                   "</Page></Window></Windows>");
    ASSERT_EQ(oApplication.Start(), 0);
    EXPECT_EQ(oApplication.BandText("Main"), "Page  (hidden)\n  A  [F5]  (hidden)\n");
    EXPECT_EQ(oApplication.MasterTool("Page")->ToolId(), 4);
    EXPECT_EQ(oApplication.MasterTool("Page")->Category(), "Menus");
    EXPECT_EQ(oApplication.MasterTool("Page")->DropDownBand(), "Page");
    oApplication.Take("open W");
    EXPECT_EQ(oApplication.BandText("Main"), "Page\n  A  [F5]\n");
}

TEST(Toolbars, ButtonsStandByTextAndSharedOnesFirst) {
    struct Case {
        const char* sEntries;
        Lines aTools; // in order of their identifiers, which begin with 4
        std::string sStandard;
        std::string sMenu;
    };
    const Case aCases[] = {
        {"button B Std 9; button A Std 10 before; button C Alpha 1",
         {"Tool.Alpha.C", "View.Toolbars", "View", "Toolbars.Alpha", "Tool.Std.A", "Toolbars.Std", "Tool.Std.B"},
         "Tool.Std.A Tool.Std.B",
         "Toolbars.Alpha Toolbars.Std"},
        {"button B Std 9; button C Alpha 1; button D std 9",
         {"Tool.std.D", "View.Toolbars", "View", "Toolbars.std", "Tool.Alpha.C", "Toolbars.Alpha", "Tool.Std.B"},
         "Tool.std.D Tool.Std.B",
         "Toolbars.std Toolbars.Alpha"},
    };
    for (const auto& oCase : aCases) {
        Application oApplication;
        oApplication.AddService("One", Groups(Entries(oCase.sEntries)));
        ASSERT_EQ(oApplication.Start(), 0);
        Long lId = 4;
        for (const auto& sTool : oCase.aTools)
            EXPECT_EQ(oApplication.MasterTool(sTool)->ToolId(), lId++) << sTool;
        EXPECT_EQ(oApplication.BandNames("Toolbars.Std"), oCase.sStandard);
        EXPECT_EQ(oApplication.BandNames("View.Toolbars"), oCase.sMenu);
    }
}

TEST(Toolbars, AButtonIsAnInstanceOfItsMenuEntry) {
    Application oApplication;
    oApplication.AddService(
        "One", Groups({{"MenuItem", "Open", "File", "1"}, {"ToolbarItem", "Open", "Std", "1", "Tip=\"Opens\""}},
                      "Description=\"All\" Image=\"open.bmp\" ImagePressed=\"OPEN.bmp\" "
                      "ImageDisabled=\"missing.bmp\""));
    ASSERT_EQ(oApplication.Start(), 0);
    EXPECT_EQ(oApplication.BandNames("Toolbars.Std"), "File.Open");
    const Ref<Tool> oButton = oApplication.Host().Bar()->Bands()->Item("Toolbars.Std")->Tools()->Item(0);
    EXPECT_EQ(oButton->ToolTip(), "Opens");
    EXPECT_EQ(oButton->Description(), "All");
    const auto& aPictures = oButton->Pictures();
    ASSERT_EQ(aPictures.size(), 3U);
    EXPECT_EQ(aPictures[0].first, Tool::Normal);
    EXPECT_EQ(aPictures[1].first, Tool::Disabled);
    EXPECT_EQ(aPictures[2].first, Tool::Pressed);
    EXPECT_TRUE(aPictures[0].second);
    EXPECT_FALSE(aPictures[1].second); // can't be loaded: set to nothing all the same
    EXPECT_EQ(aPictures[2].second, aPictures[0].second);
}

TEST(Toolbars, AreMadeShownAndHiddenByName) {
    Application oApplication;
    oApplication.AddService("One", Groups(Entries("title View - 1")));
    ASSERT_EQ(oApplication.Start(), 0);
    const auto oMenus = oApplication.Menus();
    const Ref<Band> oBand = oMenus->CreateToolbar("Extra");
    EXPECT_EQ(oApplication.BandText("Main"), "View\n  Toolbars\n    Extra  (checked)\n");
    const auto oItem = oMenus->ToolbarActionItems()->Item("Toolbars.Extra");
    EXPECT_EQ(oItem->Name(), "Extra");
    oMenus->HideToolbar("extra");
    EXPECT_FALSE(oBand->Visible());
    EXPECT_TRUE(oItem->Checked()); // the entry isn't notified
    oMenus->ShowToolbar("extra");
    EXPECT_TRUE(oBand->Visible());
    EXPECT_EQ(NumberOf([&] { oMenus->ShowToolbar("None"); }), 5);
    EXPECT_EQ(NumberOf([&] { (void)oMenus->CreateToolbar("EXTRA"); }), 457);
    EXPECT_EQ(oApplication.TakeLog(), (Lines{"MenuManager.ShowToolbar 5", "MenuManager.CreateToolbar 457"}));
    EXPECT_EQ(oApplication.Host().Bar()->Bands()->Item(oApplication.Host().Bar()->Bands()->Count() - 1)->Name(),
              "Toolbars.EXTRA"); // the bar has it all the same
}

std::string ItemType(const std::string& sName, const std::vector<Entry>& aEntries) {
    return "<ExplorerItem Name=\"" + sName + "\" Type=\"Folder\" DefaultAction=\"MAIN\" ProgID=\"" + sName +
           ".Item\">" + Groups(aEntries) + "</ExplorerItem>";
}

TEST(ContextMenus, OrderAndDefaultMark) {
    struct Case {
        const char* sWhat;
        const char* sEntries;
        const char* sText; // a null pointer for no menu
    };
    const Case aCases[] = {
        {"a title's order isn't a hundredfold", "context B - 3; context A - 2; sub More - 40", "More\nA\nB\n"},
        {"the default action is marked", "context Main - 2; context A - 1", "A\nMain  (default)\n"},
        {"a separator may come first", "context A - 1 before; context B - 2 After", "--------\nA\nB\n--------\n"},
        {"a path chooses no band", "context A Deep 1", "A\n"},
        {"an action of the menu bar has its tool already", "item A File 1; context A - 1", "A  (hidden)\n"},
        {"entries of the menu bar make no context menu", "item A File 1; button B Std 1", nullptr},
    };
    for (const auto& oCase : aCases) {
        SCOPED_TRACE(oCase.sWhat);
        Application oApplication;
        oApplication.AddService("One", "<ExplorerItems>" + ItemType("T", Entries(oCase.sEntries)) + "</ExplorerItems>");
        ASSERT_EQ(oApplication.Start(), 0);
        if (oCase.sText)
            EXPECT_EQ(oApplication.BandText("Context.T"), oCase.sText);
        else
            EXPECT_FALSE(oApplication.Host().Bar()->Bands()->Find("Context.T"));
        oApplication.Take("populate\nnode 0 T\nrightclick");
        EXPECT_EQ(oApplication.Host().Recorded().popups, oCase.sText ? Lines{"Context.T"} : Lines());
    }
}

TEST(ContextMenus, AddedEntries) {
    Application oApplication;
    oApplication.AddService("One", "<ExplorerItems>" + ItemType("T", Entries("context Z - 9; sub Sub - 1")) +
                                       ItemType("Bare", {}) + "</ExplorerItems>");
    ASSERT_EQ(oApplication.Start(), 0);
    Ref<Object> oItem;
    Ref<Object> oBare;
    const auto oAdd =
        oApplication.Explorer()->onAdd.Subscribe([&](const Ref<Object>& o) { (oItem ? oBare : oItem) = o; });
    oApplication.Take("populate\nnode 0 T");
    const auto oMenus = oApplication.Menus();
    using enum MenuType;
    oMenus->AddContextMenu(oItem, "New", "", 1, fwContextMenuItem, "New", "DoNew");
    oMenus->AddContextMenu(oItem, "Title", "", 1, fwContextMenuTitle, "Title");
    oMenus->AddContextMenu(oItem, "Below", "Sub", 1, fwContextMenuItem, "Below");
    oMenus->AddContextMenu(oItem, "New", "", 1, fwContextMenuItem, "Again");
    // The second caption reaches the first instance, which is the one that is found by name.
    EXPECT_EQ(oApplication.BandText("Context.T"), "Sub\n  Below\nZ\nAgain\nTitle\nNew\n");
    EXPECT_EQ(oApplication.MasterTool("Context.T.Title")->DropDownBand(), ""); // a plain entry

    // A type without a menu gets none, but keeps the action.
    EXPECT_EQ(NumberOf([&] { oMenus->AddContextMenu(oBare, "New", "", 1, fwContextMenuItem, "New"); }), 91);
    EXPECT_TRUE(KeyExists(CorvaneMain::QueryExplorerItem(oBare)->ExplorerItemDef()->ActionItemDefs(), "New"));
    EXPECT_EQ(oApplication.TakeLog(), Lines{"MenuManager.AddContextMenu 91"});

    // The new action is tied to its tool when the item next becomes active.
    (void)oApplication.TakeCalls();
    EXPECT_EQ(oApplication.Click("Context.T.New"), 0);
    EXPECT_EQ(oApplication.TakeCalls(), Lines());
    oMenus->OnActionsProviderActive(oItem, CorvaneMain::QueryExplorerItem(oItem).As<IActionsProvider>(),
                                    CorvaneMain::QueryExplorerItem(oItem)->ExplorerItemDef()->ActionItemDefs());
    EXPECT_EQ(oApplication.Click("Context.T.New"), 0);
    EXPECT_EQ(oApplication.TakeCalls(), Lines{"T.Item#1 DoNew"});
}

} // namespace
} // namespace corvane::testing
