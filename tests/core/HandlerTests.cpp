// The error convention: what is logged, asked and raised, and what a failure says of the plug-in that it left.

#include "corvane/author/Jobs.h"
#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace corvane::testing {
namespace {

// Writes down what it is asked, and fails to log if that is set.
class AskedUtilities final : public IUtilities {
public:
    void LogError(std::string_view, std::string_view, std::string_view, const Failure&, std::string_view,
                  bool bShow) override {
        sAsked += bShow ? "show " : "log ";
        if (bFails)
            Fail(75);
    }
    std::string AppName() const override { return {}; }
    bool BreakOnError() const override {
        sAsked += "break? ";
        return bBreaks;
    }
    bool IsRunningInIDE() const override {
        sAsked += "debugger? ";
        return false;
    }
    std::string GetAppFolder(std::string_view) const override { return {}; }
    std::string LibraryFolder() const override { return {}; }

    mutable std::string sAsked;
    bool bFails = false;
    bool bBreaks = false;
};

// What a handler makes of failure 77: the number that it raises, 0 for none.
Long Handled(bool bReports) {
    return NumberOf([&] {
        try {
            Fail(77);
        } catch (...) {
            if (bReports)
                Report("M", "P");
            else
                Reraise("M", "P");
        }
    });
}

TEST(Handlers, AskWhetherToBreakAndRaiseTheFirstFailure) {
    const auto oUtilities = New<AskedUtilities>();
    const auto Asked = [&](bool bReports) {
        const Long lNumber = Handled(bReports);
        return std::exchange(oUtilities->sAsked, {}) + std::to_string(lNumber);
    };
    EXPECT_EQ(Handled(false), 77); // there are no utilities
    EXPECT_EQ(Handled(true), 0);
    Platform oPlatform;
    oPlatform.oUtilities = oUtilities;
    SetCurrentPlatform(oPlatform);
    EXPECT_EQ(Asked(false), "log break? 77");
    EXPECT_EQ(Asked(true), "show break? 0");
    oUtilities->bBreaks = true;
    EXPECT_EQ(Asked(false), "log break? debugger? 77");
    EXPECT_EQ(Asked(true), "show break? debugger? 0");
    oUtilities->bFails = true;
    EXPECT_EQ(Asked(false), "log break? debugger? 77");
    EXPECT_EQ(Asked(true), "show break? debugger? 0");
    SetCurrentPlatform({});
}

// Fails in each of its procedures in the way that is set.
std::function<void()> fnFail;

class Failing final : public Automation<Failing, IServiceAccess, IExplorerItemAccess> {
public:
    void DoFail() {
        if (fnFail)
            fnFail();
    }
    Ref<IService> Service() override { return m_oService; }
    Ref<IExplorerItem> ExplorerItem() override { return m_oItem; }
    std::string_view TypeName() const override { return "Failing"; }
    static constexpr auto Members = MemberTable(Method("DoFail", &Failing::DoFail), Method("Start", &Failing::DoFail));

private:
    Ref<ServiceBase> m_oService = New<ServiceBase>();
    Ref<ExplorerItemBase> m_oItem = New<ExplorerItemBase>();
    Subscription m_oInitialize = m_oItem->InitializeEvent.Subscribe([this](const auto&) {
        m_oItem->NameSilently("x");
        DoFail();
    });
};

class FailingFactory final : public IObjectFactory {
public:
    Ref<Object> Create(std::string_view) override { return New<Failing>(); }
};

constexpr const char* sFailing = R"(
<ActionItems><ActionItem Name="Run" Action="DoFail"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Run" Path="File" PositionOrder="1"/></Menus>
<ExplorerItems><ExplorerItem Name="Root" Type="Folder" ProgID="R">
  <ActionItems><ActionItem Name="Open" Action="DoFail"/></ActionItems>
  <Menus><MenuItem Type="MenuItem" ActionItem="Open" Path="File" PositionOrder="2"/></Menus>
</ExplorerItem></ExplorerItems>)";

TEST(Handlers, AFailureTellsWhichProcedureItLeft) {
    Application oApplication;
    oApplication.AddService("Birds", sFailing);
    oApplication.Load();
    Platform oPlatform = CurrentPlatform();
    oPlatform.oObjectFactory = New<FailingFactory>();
    SetCurrentPlatform(oPlatform);
    ASSERT_TRUE(oApplication.Host().Start());
    const auto Context = [&] { // of the last one in the log; the lines of the file are the helper's matter
        std::string sContext = oApplication.Host().Recorded().log.back().failure.Context;
        while (const std::size_t i = sContext.find(".xml:") + 1)
            sContext.erase(i + 3, sContext.find_first_not_of("0123456789", i + 4) - i - 3);
        return sContext;
    };
    const std::string sRun = "in Run (Failing.DoFail, service Birds, Services/Birds.xml)";
    const std::string sOpen = "in Open (Failing.DoFail, explorer item Root, service Birds, Services/Birds.xml)";
    for (const auto& fnHow : std::initializer_list<std::function<void()>>{
             [] { Fail(91); }, [] { throw std::runtime_error("foreign"); }, [] { throw 42; }}) {
        fnFail = fnHow;
        EXPECT_NE(oApplication.Click("File.Run"), 0);
        EXPECT_EQ(Context(), sRun);
        (void)NumberOf([] { CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate(); });
        EXPECT_EQ(Context(), "in Failing.Initialize (explorer item Root, service Birds, Services/Birds.xml)");
    }
    fnFail = nullptr;
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Refresh();
    oApplication.Take("node 0 x");
    fnFail = [] { Fail(91); };
    EXPECT_NE(oApplication.Click("File.Open"), 0);
    EXPECT_EQ(Context(), sOpen);
    // Through another procedure: both, the one that failed first.
    bool bIsOuter = true;
    fnFail = [&] {
        if (!std::exchange(bIsOuter, false))
            Fail(91);
        oApplication.MasterTool("File.Open")->TagVariant().As<ActionItem>()->OnAction();
    };
    EXPECT_NE(oApplication.Click("File.Run"), 0);
    EXPECT_EQ(Context(), sOpen + ", " + sRun);
    fnFail = nullptr;
}

#ifndef NDEBUG
TEST(DebugBuild, NamesWhatIsUsedByAnotherThread) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            Application oApplication;
            oApplication.Load();
            const auto oItem = New<ActionItem>();
            std::thread([&] { oItem->SetChecked(true); }).join();
        },
        "an object of class \"ActionItem\" is used by another thread");
    // By a pointer, which counts no reference, in a job, which is named.
    EXPECT_DEATH(
        {
            Application oApplication;
            (void)oApplication.Start();
            (void)StartJob({.title = "Import"},
                           [pForm = oApplication.Host().MainForm().Get()] { pForm->SetCaption("Imported"); });
            oApplication.RunJobs();
        },
        "an object of class \"MdiForm\" is used by the job \"Import\", which is another thread");
}

TEST(DebugBuild, NamesARingThatIsAliveAtTheEnd) {
    struct Ring final : IServiceAccess {
        Ref<IService> Service() override { return nullptr; }
        std::string_view TypeName() const override { return "Ring"; }
        Ref<Ring> oOther;
    };
    Ring* pRing = nullptr;
    ::testing::internal::CaptureStderr();
    {
        Application oApplication;
        oApplication.Load();
        const auto oRing = New<Ring>();
        oRing->oOther = New<Ring>();
        oRing->oOther->oOther = oRing;
        pRing = oRing.Get();
    }
    const std::string sSaid = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(sSaid.find("2 of class \"Ring\""), std::string::npos) << sSaid;
    pRing->oOther = nullptr; // so that nothing leaks
}

TEST(DebugBuild, SaysThatAnItemNamesItselfByARename) {
    const auto oBase = New<ExplorerItemBase>();
    const auto oInitialize = oBase->InitializeEvent.Subscribe([&](const auto&) { oBase->SetName("robin"); });
    ::testing::internal::CaptureStderr();
    oBase->Initialize(New<ExplorerItemDef>());
    oBase->SetName("wren");
    const std::string sSaid = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(sSaid.find("\"robin\" calls SetName"), std::string::npos) << sSaid;
    EXPECT_EQ(sSaid.find("wren"), std::string::npos) << sSaid;
}
#endif

} // namespace
} // namespace corvane::testing
