// The life of services, and what their records say.

#include "adapters/xml/XmlService.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/services/ServiceManager.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

TEST(Life, AllAreInitializedThenTheLastStartServiceStarts) {
    Application oApplication;
    oApplication.AddService("A", "", {{"IsStartService", "True"}});
    oApplication.AddService("B", "", {{"IsStartService", "1"}}).AddService("C");
    ASSERT_EQ(oApplication.Start(), 0);
    EXPECT_EQ(oApplication.TakeCalls(), (Lines{"A.Service#1 Initialize", "B.Service#1 Initialize",
                                               "C.Service#1 Initialize", "B.Service#1 Start"}));
    oApplication.Take("exit");
    EXPECT_EQ(oApplication.TakeCalls(),
              (Lines{"A.Service#1 Terminate", "B.Service#1 Terminate", "C.Service#1 Terminate"}));
}

TEST(Life, OneObjectOfTwoServicesHearsEverythingTwice) {
    Application oApplication;
    oApplication.AddService("A", "", {{"ProgID", "One"}}).AddService("B", "", {{"ProgID", "one"}});
    ASSERT_EQ(oApplication.Start(), 0);
    oApplication.Take("exit");
    EXPECT_EQ(oApplication.TakeCalls(),
              (Lines{"One#1 Initialize", "One#1 Initialize", "One#1 Terminate", "One#1 Terminate"}));
}

struct Stop {
    const char* sStandIns;
    Long lNumber;
    Lines aCalls;
    Lines aLog;
};

TEST(Life, TheFirstFailureEndsTheStart) {
    const Stop aStops[] = {
        {R"({"objects": {"B.Service": {"access": false}}})",
         13,
         {"A.Service#1 Initialize"},
         {"CorvaneMain.QueryService 13", "ServiceManager.Start 13", "Framework.Start 13"}},
        {R"({"objects": {"B.Service": {"fail": {"Initialize": {"number": 77}}}}})",
         77,
         {"A.Service#1 Initialize", "B.Service#1 Initialize"},
         {"ServiceBase.IService_Initialize 77", "ServiceManager.Start 77", "Framework.Start 77"}},
        {R"({"objects": {"C.Service": {"missing": ["start"]}}})",
         438,
         {"A.Service#1 Initialize", "B.Service#1 Initialize", "C.Service#1 Initialize"},
         {"ServiceManager.Start 438", "Framework.Start 438"}},
    };
    for (const auto& oStop : aStops) {
        SCOPED_TRACE(oStop.sStandIns);
        Application oApplication;
        oApplication.SetStandIns(oStop.sStandIns);
        oApplication.AddService("A").AddService("B").AddService("C", "", {{"IsStartService", "true"}});
        EXPECT_EQ(oApplication.Start(), oStop.lNumber);
        EXPECT_EQ(oApplication.TakeCalls(), oStop.aCalls);
        EXPECT_EQ(oApplication.TakeLog(), oStop.aLog);
    }
}

TEST(Life, AStartWithoutEndIsToldOfWhileThereIsStack) {
    Application oApplication;
    oApplication.AddService("Again", R"(<ActionItems><ActionItem Name="Navigation"/></ActionItems>)",
                            {{"ProgID", "Corvane.Framework"}, {"IsStartService", "true"}});
    EXPECT_EQ(oApplication.Start(), 28);
    const Lines aLog = oApplication.TakeLog();
    ASSERT_GE(aLog.size(), 2U);
    EXPECT_EQ(aLog.front(), "ServiceManager.Start 28");
    EXPECT_EQ(aLog.back(), "Framework.Start 28");
}

TEST(Life, AHostEndsTheRestAfterAFailure) {
    Application oApplication;
    oApplication.SetStandIns(R"({"objects": {"A.Service": {"fail": {"Terminate": {"number": 78}}},
                                             "B.Service": {"fail": {"Terminate": {"number": 79}}}}})");
    oApplication.AddService("A").AddService("B").AddService("C");
    ASSERT_EQ(oApplication.Start(), 0);
    (void)oApplication.TakeCalls();
    const auto frmMain = oApplication.Host().MainForm();
    EXPECT_EQ(NumberOf([&] { frmMain->Unload(); }), 78); // the first failure ends the termination
    EXPECT_EQ(oApplication.TakeLog(), (Lines{"ServiceBase.IService_Terminate 78", "ServiceManager.Terminate 78"}));
    const auto oFramework = CorvaneMain::Framework();
    oFramework->EndAfterFailure();
    EXPECT_EQ(oApplication.TakeCalls(),
              (Lines{"A.Service#1 Terminate", "B.Service#1 Terminate", "C.Service#1 Terminate"}));
    EXPECT_EQ(oApplication.TakeLog(), (Lines{"ServiceBase.IService_Terminate 79", "ServiceManager.Terminate 79"}));
    EXPECT_TRUE(CorvaneMain::HasEnded());
    EXPECT_TRUE(frmMain->Unload());
    oFramework->EndAfterFailure(); // harmless
    EXPECT_EQ(oApplication.TakeCalls(), Lines());
}

TEST(Life, OnlyAServiceOnAServiceBaseIsAlive) {
    Application oApplication;
    oApplication.AddService("A");
    ASSERT_EQ(oApplication.Start(), 0);
    const auto oServices = oApplication.Services();
    EXPECT_TRUE(oServices->IsServiceAlive(oServices->Services()->Item("A")));
    EXPECT_TRUE(oServices->IsServiceAlive(oServices->Services()->Item("Shell")));
    EXPECT_FALSE(oServices->IsServiceAlive(nullptr));
    EXPECT_FALSE(oServices->IsServiceAlive(New<ServiceBase>()));
    struct Bare final : IServiceAccess {
        Ref<IService> Service() override { return nullptr; }
    };
    EXPECT_TRUE(oServices->IsServiceAlive(New<Bare>())); // it has nothing to show
}

TEST(ServiceBase, AnswersForAServiceThatHandlesNothing) {
    const RecordingPlatform oPlatform;
    const auto oBase = New<ServiceBase>();
    Double dblOrder = 9;
    EXPECT_EQ(oBase->UnsavedItems(dblOrder)->Count(), 0);
    EXPECT_EQ(dblOrder, 2);
    EXPECT_EQ(oBase->ReportContextTypes()->Count(), 0);
    EXPECT_EQ(oBase->ReportContexts(3)->Count(), 0);
    EXPECT_FALSE(oBase->ActionItems());
}

TEST(ServiceBase, LogsFailuresOfItsLifeAlone) {
    const RecordingPlatform oPlatform;
    const auto oBase = New<ServiceBase>();
    const auto fnFail = [] { Fail(99); };
    const auto oInitialize = oBase->InitializeEvent.Subscribe(fnFail);
    const auto oUnsaved = oBase->GetUnsavedItems.Subscribe([](const Ref<Dictionary>&, Double& dblOrder) {
        dblOrder = 7;
        Fail(98);
    });
    EXPECT_EQ(NumberOf([&] { oBase->Initialize(); }), 99);
    EXPECT_EQ(oPlatform.TakeLines(), Lines{"ServiceBase.IService_Initialize 99"});
    Double dblOrder = 0;
    EXPECT_EQ(NumberOf([&] { (void)oBase->UnsavedItems(dblOrder); }), 98);
    EXPECT_EQ(oPlatform.TakeLines(), Lines());
    EXPECT_EQ(dblOrder, 7);
}

TEST(MenuItemDef, KeysFollowTypePathAndAction) {
    const RecordingPlatform oPlatform;
    struct Case {
        MenuType eType;
        const char* sPath;
        Single fOrder;
        const char* sKey;
        const char* sPositionKey;
    };
    using enum MenuType;
    const Case aCases[] = {
        {fwMenuTitle, "", 20, "Act", "20"},
        {fwMenuTitle, "View", 1.25F, "View.Act", "1.25"},
        {fwMenuItem, "File", 2.5F, "File.Act", "File.2.5"},
        {fwMenuItem, "", 1, "Act", ".1"},
        {fwToolbarItem, "View", 10, "Tool.View.Act", "View.10"},
        {fwToolbarItem, "", 10, "Tool.Act", ".10"},
        {fwContextMenuItem, "Sub", 3, "Sub.Act", "3"},
        {fwContextMenuTitle, "", 0.1F, "Act", "0.1"},
        {MenuType{300}, "File", 1, "File.Act", ""},
    };
    auto oActionItemDef = New<ActionItemDef>();
    oActionItemDef->Init("Act");
    for (const auto& oCase : aCases) {
        auto oDef = New<MenuItemDef>();
        oDef->Init("ignored", oCase.sPath, oCase.fOrder, oCase.eType, "#Caption");
        EXPECT_EQ(NumberOf([&] { (void)oDef->Key(); }), 91);
        oDef->SetActionItemDef(oActionItemDef);
        EXPECT_EQ(oDef->Key(), oCase.sKey);
        EXPECT_EQ(oDef->PositionKey(), oCase.sPositionKey);
        EXPECT_EQ(oDef->Caption(), "#Caption"); // the mark is a matter of files
        EXPECT_EQ(oDef->MenuType(), oCase.eType);
    }
}

TEST(ActionItemDef, IsReadAgainWhole) {
    const auto oDocument = New<XmlService>()->NewDocument();
    const auto oDef = New<ActionItemDef>();
    for (const char* sImage : {"open.bmp", ""}) {
        ASSERT_TRUE(oDocument->LoadXml(std::string("\n<A Name='A' ") + (*sImage ? "Image='open.bmp'/>" : "/>")));
        oDef->Initialize(oDocument->SelectSingleNode("A"));
        EXPECT_EQ(oDef->Image(), sImage);
        EXPECT_EQ(oDef->Line(), 2);
    }
}

} // namespace
} // namespace corvane::testing
