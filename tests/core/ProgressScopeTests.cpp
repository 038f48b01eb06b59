// The scope of a long operation: what it shows, and what is as before at its end.

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Platform.h"
#include "corvane/windows/ProgressScope.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

class ScopeTest : public ::testing::TestWithParam<bool> { // with an explorer
protected:
    void SetUp() override {
        m_oApplication.AddService(
            "A", std::string(R"(<ActionItems><ActionItem Name="On"/><ActionItem Name="Off" Enabled="false"/>
                <ActionItem Name="Later"/></ActionItems><Menus>
                <MenuItem Type="MenuItem" ActionItem="On" Path="File" PositionOrder="1"/>
                <MenuItem Type="MenuItem" ActionItem="Off" Path="File" PositionOrder="2"/>
                <MenuItem Type="MenuItem" ActionItem="Later" Path="File" PositionOrder="3"/></Menus>)") +
                     (GetParam() ? "<ExplorerItems><ExplorerItem Name='R' Type='Folder'/></ExplorerItems>" : ""));
        ASSERT_EQ(m_oApplication.Start(), 0);
        m_oBar = CorvaneMain::Framework()->CVProgressBar();
    }
    // "+" for what is enabled: the commands On, Off and Later, and the tree; then "bar" while that is shown.
    [[nodiscard]] std::string State() const {
        std::string sState;
        for (const char* sTool : {"File.On", "File.Off", "File.Later"})
            sState += m_oApplication.MasterTool(sTool)->Enabled() ? '+' : '-';
        if (const auto tvw = m_oApplication.Host().ActiveTree())
            sState += tvw->Enabled() ? '+' : '-';
        else
            sState += '+';
        return sState + (m_oBar->Visible() ? " bar" : "");
    }
    [[nodiscard]] std::string Shown() const {
        return ToText(m_oBar->Value()) + "/" + ToText(m_oBar->Max()) + (m_oBar->Cancel() ? " cancel" : "");
    }

    Application m_oApplication;
    Ref<CVProgressBar> m_oBar;
};

TEST_P(ScopeTest, PutsCommandsBackHoweverItEnds) {
    EXPECT_EQ(State(), "+-++");
    const std::string sBusy = GetParam() ? "---- bar" : "---+ bar";
    for (int i = 0; i < 2; ++i) {
        try {
            ProgressScope oProgress(20, true);
            oProgress.Increment();
            EXPECT_EQ(State(), sBusy);
            EXPECT_EQ(Shown(), "1/20 cancel");
            if (i == 1)
                Fail(77);
        } catch (const Failure&) {
        }
        EXPECT_EQ(State(), "+-++");
    }
    {
        // Their owner changes his mind meanwhile.
        const ProgressScope oProgress;
        for (const auto& [sTool, bEnabled] : {std::pair("File.Off", true), std::pair("File.Later", false)})
            m_oApplication.MasterTool(sTool)->TagVariant().As<ActionItem>()->SetEnabled(bEnabled);
    }
    EXPECT_EQ(State(), "++-+");
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_P(ScopeTest, OneWithinAnotherGivesTheBarBack) {
    {
        ProgressScope oOuter(10, true);
        oOuter.SetValue(4);
        {
            ProgressScope oInner(3);
            oInner.Increment();
            EXPECT_EQ(Shown(), "1/3");
            EXPECT_FALSE(oInner.WasCanceled());
        }
        EXPECT_EQ(Shown(), "4/10 cancel");
        EXPECT_FALSE(oOuter.WasCanceled());
        {
            const ProgressScope oInner(3, true);
            m_oBar->SetWasCanceled(true); // the user
        }
        EXPECT_TRUE(oOuter.WasCanceled()); // as a whole
        EXPECT_TRUE(m_oBar->Visible());
    }
    EXPECT_EQ(State(), "+-++");
}

TEST_P(ScopeTest, LeavesNothingBehindWhereItCantBegin) {
    Platform oPlatform = CurrentPlatform();
    const Ref<ITimers> oTimers = std::exchange(oPlatform.oTimers, nullptr);
    SetCurrentPlatform(oPlatform);
    EXPECT_EQ(NumberOf([] { const ProgressScope oProgress; }), 91);
    EXPECT_EQ(State(), "+-++");
    oPlatform.oTimers = oTimers;
    SetCurrentPlatform(oPlatform);
    m_oApplication.Stop();
    EXPECT_EQ(NumberOf([] { const ProgressScope oProgress; }), 91);
}

INSTANTIATE_TEST_SUITE_P(Explorer, ScopeTest, ::testing::Bool());

} // namespace
} // namespace corvane::testing
