// What loading makes of definition files, good and bad.

#include "corvane/services/ServiceManager.h"
#include "tests/support/Application.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

const inspect::LoggedFailure* ShownBy(const inspect::Record& oRecord, const std::string& sProcedure) {
    const inspect::LoggedFailure* pFound = nullptr;
    for (const auto& oEntry : oRecord.log)
        if (oEntry.shown && oEntry.procedure == sProcedure) {
            EXPECT_EQ(pFound, nullptr) << "shown twice";
            pFound = &oEntry;
        }
    return pFound;
}

struct BrokenFile {
    const char* sWhat;
    std::string sXml;
    const char* sStage;
    Long lNumber; // 0 for one that the XML service chooses
    const char* sSource;
    const char* sDescription; // how it begins
    Long lLine;
};

const char* const sGood = R"(<Windows><Window Name="Known" Type="Window" State="Normal"/></Windows>)";

std::string Bad(const std::string& sContent) {
    return ServiceXml("Bad", "\n" + sContent); // so that the content begins in line 2
}

const BrokenFile aBrokenFiles[] = {
    {"not well formed", "<Service>\n<ActionItems>\n</Service>", "Loading XML", -1, "XML Parser", "", 3},
    {"another root", "<Other/>", "Loading XML", -1, "XML Parser", "No Service Element found", 0},
    {"against the schema", Bad("<Forbidden/>"), "Validating XML", 0, "Service Manager", "", 2},
    {"help without its entry", ServiceXml("Help", "", {{"ProgID", "tavelinsvc.TAVELINSERVICE"}}), "Validating XML", 91,
     "Corvane", "", 0},
    {"Active is no truth value", ServiceXml("Bad", "", {{"Active", "maybe"}}), "Validating XML", 13, "Corvane", "", 0},
    {"no such component", ServiceXml("Bad", "", {{"ProgID", "Not.There"}}), "Creating Service Instance", 429, "Factory",
     "Can't create", 0},
    {"unknown type of a menu entry",
     Bad("<ActionItems><ActionItem Name=\"A\"/></ActionItems>\n<Menus>\n"
         "<MenuItem Type=\"Menu\" ActionItem=\"A\" PositionOrder=\"1\"/></Menus>"),
     "Initializing Service Definition", -2147221504, "Determining menu item type", "Invalid menu item type: Menu", 4},
    {"unknown type of an explorer item", Bad("<ExplorerItems>\n\n<ExplorerItem Name=\"A\" Type=\"\"/></ExplorerItems>"),
     "Initializing Service Definition", -2147221504, "Determining explorer item type",
     "Invalid explorer item type: ", 4},
    {"unknown type of a window", Bad("<Windows><Window Name=\"W\" Type=\"Tool\" State=\"Normal\"/></Windows>"),
     "Initializing Service Definition", -2147221504, "Setting WindowType", "Invalid WindowType: Tool", 2},
    {"unknown state of a window", Bad("<Windows><Window Name=\"W\" Type=\"Wizard\" State=\"Big\"/></Windows>"),
     "Initializing Service Definition", -2147221504, "Setting WindowState", "Invalid WindowState: Big", 2},
    {"a position that is no number",
     Bad("<ActionItems><ActionItem Name=\"A\"/></ActionItems>\n"
         "<Menus><MenuItem Type=\"MenuItem\" ActionItem=\"A\" PositionOrder=\"first\"/></Menus>"),
     "Initializing Service Definition", 13, "Corvane", "", 3},
    {"no position at all",
     Bad("<ActionItems><ActionItem Name=\"A\"/></ActionItems>\n"
         "<Menus><MenuItem Type=\"MenuItem\" ActionItem=\"A\"/></Menus>"),
     "Initializing Service Definition", 13, "Corvane", "", 3},
    {"a page that doesn't say whether it is resizable",
     Bad("<Windows><Window Name=\"W\" Type=\"Window\" State=\"Normal\">\n<Page IsOptional=\"0\"/></Window></Windows>"),
     "Initializing Service Definition", 13, "Corvane", "", 3},
    {"two actions of one name", Bad("<ActionItems><ActionItem Name=\"A\"/>\n<ActionItem Name=\"a\"/></ActionItems>"),
     "Initializing Service Definition", 457, "Corvane", "", 3},
    {"an action that isn't there",
     Bad("<Menus>\n<MenuItem Type=\"MenuItem\" ActionItem=\"A\" PositionOrder=\"1\"/></Menus>"),
     "Initializing Service Definition", 5, "Corvane", "", 3},
    {"the service's action in an explorer item",
     Bad("<ActionItems><ActionItem Name=\"A\"/></ActionItems>\n<ExplorerItems><ExplorerItem Name=\"I\" "
         "Type=\"Folder\">\n"
         "<Menus><MenuItem Type=\"ContextMenuItem\" ActionItem=\"A\" PositionOrder=\"1\"/></Menus>"
         "</ExplorerItem></ExplorerItems>"),
     "Initializing Service Definition", 5, "Corvane", "", 4},
    {"a window that another file has", Bad(sGood), "Initializing Service Definition", 457, "Corvane", "", 2},
    {"a service that another file has", ServiceXml("GOOD"), "Initializing Service Definition", -1, "Service Manager",
     "Service Name GOOD is not unique", 1},
};

TEST(Loading, ABrokenFileIsShownOnceAndSkipped) {
    for (const auto& oBroken : aBrokenFiles) {
        SCOPED_TRACE(oBroken.sWhat);
        Application oApplication;
        oApplication.SetStandIns(R"({"objects": {"Not.There": {"create":
            {"number": 429, "source": "Factory", "description": "Can't create"}}}})");
        oApplication.AddService("Good", sGood).AddDefinition("Late.xml", oBroken.sXml).AddService("Later");
        ASSERT_EQ(oApplication.Start(), 0);

        const inspect::LoggedFailure* pShown = ShownBy(oApplication.Host().Recorded(), "LoadServices");
        ASSERT_NE(pShown, nullptr);
        EXPECT_EQ(pShown->module, "ServiceManager");
        if (oBroken.lNumber)
            EXPECT_EQ(pShown->failure.Number, oBroken.lNumber);
        else
            EXPECT_NE(pShown->failure.Number, 0);
        EXPECT_EQ(pShown->failure.Source, oBroken.sSource);
        EXPECT_EQ(pShown->failure.Description.find(oBroken.sDescription), 0U) << pShown->failure.Description;
        EXPECT_FALSE(pShown->failure.Description.empty());
        EXPECT_EQ(pShown->context,
                  std::string("Context: ") + oBroken.sStage + ", File: Late.xml, Desc: " + pShown->failure.Description);
        EXPECT_EQ(pShown->failure.Line, oBroken.lLine);

        Lines aServices;
        for (const auto& oServiceDef : oApplication.Services()->ServiceDefs())
            aServices.push_back(oServiceDef->Name());
        EXPECT_EQ(aServices, (Lines{"Shell", "Good", "Later"}));
        EXPECT_EQ(oApplication.TakeCalls(), (Lines{"Good.Service#1 Initialize", "Later.Service#1 Initialize"}));
    }
}

TEST(Loading, WhatARejectedFileHasLeftStays) {
    Application oApplication;
    oApplication.AddService("Good");
    oApplication.AddDefinition(
        "Late.xml", ServiceXml("Good", R"(<Windows><Window Name="Left" Type="Window" State="Normal"/></Windows>
            <Preferences><Page PageProgID="P" IsOptional="0" IsResizable="0"/></Preferences>)",
                               {{"ProgID", "Shared.Object"}}));
    oApplication.AddService("User", "", {{"ProgID", "shared.object"}});
    ASSERT_EQ(oApplication.Start(), 0);
    EXPECT_TRUE(KeyExists(oApplication.Services()->WindowDefs(), "Left"));
    EXPECT_EQ(oApplication.Services()->PreferencePageDefs()->Count(), 1);
    // The rejected file's object serves the file that comes later, under its first name.
    EXPECT_EQ(oApplication.TakeCalls(), (Lines{"Good.Service#1 Initialize", "Shared.Object#1 Initialize"}));
}

TEST(Loading, FilesThatTakeNoPart) {
    Application oApplication;
    oApplication.AddService("Off", "", {{"Active", "False"}});
    oApplication.AddDefinition("Silent.xml", "<Service Name=\"Silent\" ProgID=\"Silent.Service\"/>");
    oApplication.AddService("NoProgID", "", {{"ProgID", ""}});
    oApplication.AddDefinition("Named.xml.bak", "no XML at all");
    oApplication.AddDefinition("Capitals.XML", ServiceXml("Capitals"));
    ASSERT_EQ(oApplication.Start(), 0);
    EXPECT_EQ(oApplication.TakeLog(), Lines());
    EXPECT_EQ(oApplication.TakeCalls(), Lines{"Capitals.Service#1 Initialize"});
}

TEST(Loading, OneFileWaitsForItsSetting) {
    const std::pair<const char*, bool> aSettings[] = {
        {"{}", true},
        {R"({"ini": {"QRZVGEnabled": 1}})", true},
        {R"({"ini": {"QRZVGEnabled": 0}})", false},
        {R"({"ini": {"QRZVGEnabled": 2}})", false},
    };
    for (const auto& [sSettings, bLoads] : aSettings) {
        SCOPED_TRACE(sSettings);
        Application oApplication;
        oApplication.SetStandIns(sSettings).AddDefinition("mirelonSVC.xml", ServiceXml("Gated"));
        ASSERT_EQ(oApplication.Start(), 0);
        EXPECT_EQ(KeyExists(oApplication.Services()->ServiceDefs(), "Gated"), bLoads);
        EXPECT_EQ(oApplication.TakeLog(), Lines());
    }
}

TEST(Loading, TheAboutEntryNamesTheProduct) {
    const struct {
        std::string sSettings;
        std::string sAttribute;
        std::string sExpected; // nothing for a file that isn't loaded
    } aCases[] = {
        {"{}", R"(Caption="#Corvane")", "About &Corvane"},
        {"{}", R"(Caption="")", "About "}, // there must be a caption to write into, also when it is empty
        {"{}", "", ""},
        {R"({"ini": {"QRZProductName": "Studies"}})", R"(Caption="#Corvane")", "About Studies"},
        {R"({"ini": {"QRZProductName": ")" + std::string(300, 'x') + R"("}})", R"(Caption="#Corvane")",
         "About " + std::string(255, 'x')},
        {R"({"ini": {"QRZProductName": "ä)" + std::string(300, 'x') + R"("}})", R"(Caption="#Corvane")",
         "About ä" + std::string(254, 'x')},
    };
    for (const auto& [sSettings, sAttribute, sExpected] : aCases) {
        Application oApplication;
        oApplication.SetStandIns(sSettings);
        oApplication.AddService("Help",
                                R"(<ActionItems><ActionItem Name="About"/></ActionItems><Menus><MenuItem
            Type="MenuTitle" ActionItem="About" PositionOrder="1" )" +
                                    sAttribute + "/></Menus>",
                                {{"ProgID", "TavelinSvc.TavelinService"}});
        ASSERT_EQ(oApplication.Start(), 0);
        EXPECT_EQ(oApplication.TakeLog(), sExpected.empty() ? Lines{"ServiceManager.LoadServices 91"} : Lines());
        const auto colDefs = oApplication.Services()->ServiceDefs();
        ASSERT_EQ(KeyExists(colDefs, "Help"), !sExpected.empty());
        if (!sExpected.empty()) {
            EXPECT_EQ(colDefs->Item("Help")->MenuItemDefs()->Item(1)->Caption(), sExpected);
        }
    }
}

TEST(Loading, FailuresThatStopStartUp) {
    struct Case {
        const char* sWhat;
        std::function<void(Application&)> fnSpoil;
        Long lNumber;
        Lines aLog;
    };
    const auto Items = [](const std::string& sItem) {
        return "<ExplorerItems><ExplorerItem Type=\"Folder\" " + sItem + "/></ExplorerItems>";
    };
    const std::string sLoad = "ServiceManager.LoadServices ", sInitialize = "ServiceManager.Initialize ",
                      sFramework = "Framework.Initialize ",
                      sResolve = "ServiceManager.ResolveExplorerItemDefReferences ";
    const Case aCases[] = {
        {"no folder",
         [](Application& o) { o.RemoveFile("Services"); },
         76,
         {sLoad + "76", sInitialize + "76", sFramework + "76"}},
        {"no schema",
         [](Application& o) { o.RemoveFile("Services/Service.xdr"); },
         53,
         {sLoad + "53", sInitialize + "53", sFramework + "53"}},
        {"a parent that isn't there",
         [&](Application& o) { o.AddService("A", Items("Name=\"I\" Parent=\"P\"")); },
         5,
         {sResolve + "5", sLoad + "5", sInitialize + "5", sFramework + "5"}},
        {"an item in two files",
         [&](Application& o) { o.AddService("A", Items("Name=\"I\"")).AddService("B", Items("Name=\"i\"")); },
         457,
         {sResolve + "457", sLoad + "457", sInitialize + "457", sFramework + "457"}},
    };
    for (const auto& oCase : aCases) {
        SCOPED_TRACE(oCase.sWhat);
        Application oApplication;
        oCase.fnSpoil(oApplication);
        EXPECT_EQ(oApplication.Start(), oCase.lNumber);
        EXPECT_EQ(oApplication.TakeLog(), oCase.aLog);
        EXPECT_EQ(oApplication.Host().Bar()->Bands()->Find("Main").Get(), nullptr); // nothing was built
        EXPECT_EQ(oApplication.TakeCalls(), Lines());                               // and no one started
    }
}

TEST(Loading, ParentsAreFoundAcrossFiles) {
    Application oApplication;
    oApplication.AddService("A", R"(<ExplorerItems><ExplorerItem Name="Child" Type="Default" Parent="ROOT"
        PositionOrder="2.5"/></ExplorerItems>)");
    oApplication.AddService("B", R"(<ExplorerItems><ExplorerItem Name="Root" Type="Folder"
        PositionOrder="3"/></ExplorerItems>)");
    ASSERT_EQ(oApplication.Start(), 0);
    const auto colDefs = oApplication.Services()->ExplorerItemDefs();
    EXPECT_EQ(colDefs->Item("Child")->ParentExplorerItemDef(), colDefs->Item("Root"));
    EXPECT_EQ(colDefs->Item("Root")->ChildExplorerItemDefs()->Count(), 1);
    EXPECT_EQ(colDefs->Item("Root")->PositionKey(), 300);
    EXPECT_EQ(colDefs->Item("Child")->PositionKey(), 3000250);
}

} // namespace
} // namespace corvane::testing
