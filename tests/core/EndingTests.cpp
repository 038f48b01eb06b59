// An application that is ended from inside a procedure that the library has called: at every place where it calls a
// plug-in or raises an event.

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuSection.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/ProgressScope.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "tests/support/Application.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace corvane::testing {
namespace {

// What has been reached, in order, and where the application ends or a procedure fails.
struct Road {
    void Reach(const std::string& sPlace) {
        const bool bEnds = sPlace == sEnd && !bEnded;
        (bEnded ? aAfterEnd : aReached).push_back(sPlace);
        if (sPlace == sFailure)
            Fail(77);
        if (!bEnds)
            return;
        CorvaneMain::Framework()->AppExit();
        bEnded = true;
    }
    std::string sEnd;
    std::string sFailure;
    bool bEnded = false;
    Lines aReached;
    Lines aAfterEnd;
    int nObjects = 0;
};

Road* pRoad = nullptr;

// A plug-in's object of any kind, which reaches a place with each of its procedures.
class Traveller final : public Automation<Traveller, IServiceAccess, IExplorerItemAccess, IPageAccess> {
public:
    explicit Traveller(std::string sName) : m_sName(std::move(sName)) {
        ++pRoad->nObjects;
        m_oItem->NameSilently(m_sName);
        Hear(m_oService->InitializeEvent, "Initialize");
        Hear(m_oService->TerminateEvent, "Terminate");
        m_aSubscriptions.push_back(
            m_oItem->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& colChildren) {
                Reach("Initialize");
                if (m_sName == "Root" && !pRoad->bEnded)
                    for (const char* sChild : {"a", "b"})
                        colChildren->Add(New<Traveller>(sChild));
            }));
        Hear(m_oItem->OnDisplayName, "OnDisplayName");
        Hear(m_oItem->OnBeforeRename, "OnBeforeRename");
        Hear(m_oItem->OnAfterRename, "OnAfterRename");
        Hear(m_oService->OnExitEvent, "OnExit");
        Hear(m_oPage->InitializeEvent, "Initialize");
        Hear(m_oPage->TerminateEvent, "Terminate");
        Hear(m_oPage->ActivateEvent, "Activate");
        Hear(m_oPage->DeactivateEvent, "Deactivate");
        Hear(m_oPage->SaveEvent, "Save");
        Hear(m_oPage->ValidateEvent, "Validate");
        Hear(m_oPage->CommandClickEvent, "CommandClick");
    }
    ~Traveller() override { --pRoad->nObjects; }
    Ref<IService> Service() override { return m_oService; }
    Ref<IExplorerItem> ExplorerItem() override { return m_oItem; }
    Ref<IPage> Page() override { return m_oPage; }

    void Start() { Reach("Start"); }
    void DoOpen() { Reach("DoOpen"); }
    void DoWork() {
        {
            ProgressScope oProgress(10, true);
            Reach("DoWork");
            oProgress.Increment();
        }
        if (CorvaneMain::HasEnded())
            return;
        m_oRecent.Clear();
        m_oRecent.Add("recent", [this] { Reach("recent"); });
    }
    void DoAsk() {
        CorvaneMain::Framework()->WindowManager()->OpenWindow("Ask", nullptr, m_oService);
        Reach("DoAsk");
    }

    static constexpr auto Members =
        MemberTable(Method("Start", &Traveller::Start), Method("DoOpen", &Traveller::DoOpen),
                    Method("DoWork", &Traveller::DoWork), Method("DoAsk", &Traveller::DoAsk));

private:
    void Reach(const std::string& sPlace) const { pRoad->Reach(m_sName + "." + sPlace); }
    template <class... Args>
    void Hear(Event<Args...>& oEvent, const char* sPlace) {
        m_aSubscriptions.push_back(oEvent.Subscribe([this, sPlace](auto&&...) { Reach(sPlace); }));
    }

    std::string m_sName;
    Ref<ServiceBase> m_oService = New<ServiceBase>();
    Ref<ExplorerItemBase> m_oItem = New<ExplorerItemBase>();
    Ref<PageBase> m_oPage = New<PageBase>();
    MenuSection m_oRecent{*this, "File", "Recent"};
    std::vector<Subscription> m_aSubscriptions;
};

class TravellerFactory final : public IObjectFactory {
public:
    Ref<Object> Create(std::string_view sProgID) override {
        pRoad->Reach(std::string(sProgID) + ".constructor");
        return New<Traveller>(std::string(sProgID));
    }
};

class PumpedTimers final : public ITimers {
public:
    explicit PumpedTimers(Ref<ITimers> oTimers) : m_oTimers(std::move(oTimers)) {}
    Ref<ITimer> NewTimer() override { return m_oTimers->NewTimer(); }
    void DoEvents() override { pRoad->Reach("message loop"); }

private:
    Ref<ITimers> m_oTimers;
};

constexpr const char* sTwoCommands = R"(
  <ActionItems><ActionItem Name="Work" Action="DoWork"/><ActionItem Name="Ask" Action="DoAsk"/></ActionItems>
  <Menus><MenuItem Type="MenuItem" ActionItem="Work" Path="File" PositionOrder="1"/>
         <MenuItem Type="MenuItem" ActionItem="Ask" Path="File" PositionOrder="2"/></Menus>
  <ExplorerItems>
    <ExplorerItem Name="Root" Type="Folder" ProgID="Root"/>
    <ExplorerItem Name="Leaf" Type="Default" Parent="Root" CanRename="true" DefaultAction="Open">
      <ActionItems><ActionItem Name="Open" Action="DoOpen"/></ActionItems>
      <Menus><MenuItem Type="ContextMenuItem" ActionItem="Open" PositionOrder="1"/></Menus></ExplorerItem>
    <ExplorerItem Name="Other" Type="Folder" ProgID="Other"/>
  </ExplorerItems>
  <Windows>
    <Window Name="Edit" Type="Window" State="Normal"><Page PageProgID="Page1" IsOptional="0" IsResizable="1"/>
      <Page PageProgID="Page2" IsOptional="0" IsResizable="1"/></Window>
    <Window Name="Ask" Type="Dialog" State="Normal" IsMDIChild="false" IsModal="true">
      <Page PageProgID="Page3" IsOptional="0" IsResizable="1"/></Window>
  </Windows>)";

// What a user does; a step that finds the application ended isn't taken.
constexpr const char* sSteps =
    "populate, node 0 Leaf.a, node 0 Leaf.b, treeclick, dblclick, rightclick, rename z, click File.Work, click "
    "File.Recent1, click File.Ask, open Edit one, open Edit two, refresh, clear";

class Ending : public ::testing::Test {
protected:
    // One way through the application, up to where it ends.
    void Travel(const std::string& sEnd, const std::string& sFailure = {}) {
        m_oRoad = {};
        m_oRoad.sEnd = sEnd;
        m_oRoad.sFailure = sFailure;
        pRoad = &m_oRoad;
        Application oApplication;
        oApplication.AddService("A", sTwoCommands, {{"ProgID", "A"}}).AddService("B", "", {{"ProgID", "B"}});
        oApplication.AddService("C", "", {{"ProgID", "C"}, {"IsStartService", "true"}});
        oApplication.Load();
        Platform oPlatform = CurrentPlatform();
        oPlatform.oObjectFactory = New<TravellerFactory>();
        oPlatform.oTimers = New<PumpedTimers>(oPlatform.oTimers);
        SetCurrentPlatform(oPlatform);
        m_aSubscriptions.push_back(
            oApplication.Host().MainForm()->ChildLoaded.Subscribe([this](const Ref<Form>& oForm) {
                m_aSubscriptions.push_back(oForm->ModalLoop.Subscribe([] { pRoad->Reach("modal loop"); }));
            }));
        Listen();
        EXPECT_TRUE(oApplication.Host().Start());
        for (const std::string& sStep : Split(sSteps))
            if (!m_oRoad.bEnded)
                oApplication.Take(sStep);
        EXPECT_EQ(CorvaneMain::HasEnded(), m_oRoad.bEnded);
        EXPECT_EQ(oApplication.TakeLog(), Lines());
        EXPECT_FALSE(oApplication.Host().FirstFailure());
        m_aSubscriptions.clear();
        oApplication.Stop();
        EXPECT_EQ(m_oRoad.nObjects, 0);
        EXPECT_EQ(m_oRoad.bEnded, !sEnd.empty());
    }
    void Listen() {
        const auto Hear = [this](auto& oEvent, const char* sPlace) {
            m_aSubscriptions.push_back(oEvent.Subscribe([sPlace](auto&&...) { pRoad->Reach(sPlace); }));
        };
        const auto oFramework = CorvaneMain::Framework();
        ExplorerManager& oExplorer = *oFramework->NavigationManager()->ExplorerManager();
        Hear(oExplorer.onAdd, "onAdd");
        Hear(oExplorer.onRemove, "onRemove");
        Hear(oExplorer.OnOpen, "OnOpen");
        Hear(oExplorer.OnActive, "OnActive");
        Hear(oExplorer.OnInactive, "OnInactive");
        Hear(oExplorer.OnContextMenu, "OnContextMenu");
        WindowManager& oWindows = *oFramework->WindowManager();
        Hear(oWindows.WindowInitializeEvent, "WindowInitialize");
        Hear(oWindows.WindowTerminateEvent, "WindowTerminate");
        Hear(oWindows.WindowActivateEvent, "WindowActivate");
        Hear(oWindows.WindowDeactivateEvent, "WindowDeactivate");
        Hear(oWindows.PageInitializeEvent, "PageInitialize");
        Hear(oWindows.PageTerminateEvent, "PageTerminate");
        Hear(oWindows.PageActivateEvent, "PageActivate");
        Hear(oWindows.PageDeactivateEvent, "PageDeactivate");
    }
    // Windows end after the application, which leaves them open, and what was running goes on to its end; so does an
    // event, whose other listeners are still called.
    static bool MayComeAfterTheEnd(const std::string& sPlace) {
        return sPlace.starts_with("Window") || sPlace.starts_with("Page") || sPlace.ends_with(".Terminate") ||
               std::set<std::string>{"A.OnExit", "A.DoAsk", "A.DoWork", "OnOpen", "modal loop", "message loop"}
                   .contains(sPlace);
    }

    Road m_oRoad;
    std::vector<Subscription> m_aSubscriptions;
};

TEST_F(Ending, FromEveryPlaceThatTheLibraryCalls) {
    Travel("");
    const std::set<std::string> setPlaces(m_oRoad.aReached.begin(), m_oRoad.aReached.end());
    // The walk passes everything that a plug-in can be called for.
    for (const std::string& sPlace :
         Split("A.constructor, A.Initialize, C.Start, Root.constructor, Root.Initialize, a.Initialize, onAdd, "
               "a.OnDisplayName, OnActive, OnInactive, OnOpen, b.DoOpen, OnContextMenu, b.OnBeforeRename, "
               "b.OnAfterRename, onRemove, A.DoWork, A.recent, message loop, A.DoAsk, modal loop, A.OnExit, "
               "WindowInitialize, WindowActivate, WindowDeactivate, WindowTerminate, PageInitialize, PageActivate, "
               "PageDeactivate, PageTerminate, Page1.constructor, Page1.Initialize, Page1.Activate, Page1.Deactivate, "
               "Page1.Terminate"))
        EXPECT_TRUE(setPlaces.contains(sPlace)) << sPlace;
    for (const auto& sPlace : setPlaces) {
        SCOPED_TRACE(sPlace);
        Travel(sPlace);
        const auto Times = [this](const std::string& sReached) {
            return std::count(m_oRoad.aReached.begin(), m_oRoad.aReached.end(), sReached) +
                   std::count(m_oRoad.aAfterEnd.begin(), m_oRoad.aAfterEnd.end(), sReached);
        };
        for (const std::string sService : {"A", "B", "C"}) {
            EXPECT_LE(Times(sService + ".Terminate"), 1);
            EXPECT_GE(Times(sService + ".Terminate"), Times(sService + ".Initialize"));
        }
        std::erase_if(m_oRoad.aAfterEnd, MayComeAfterTheEnd);
        EXPECT_EQ(m_oRoad.aAfterEnd, Lines());
    }
}

TEST_F(Ending, LeavesNothingBehindAlsoWhenAServiceFailsToEnd) {
    Travel("", "A.Terminate");
    EXPECT_EQ(std::count(m_oRoad.aReached.begin(), m_oRoad.aReached.end(), "A.Terminate"), 1);
}

} // namespace
} // namespace corvane::testing
