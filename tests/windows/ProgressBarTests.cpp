// The progress bar on a main form of a whole application.
#include "corvane/platform/controls/TreeView.h"
#include "corvane/windows/CVProgressBar.h"
#include "tests/support/Application.h"
#include "tests/windows/WindowsTest.h"

namespace corvane::testing {
namespace {

class ProgressBarTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_oApplication.AddService("A", "<ExplorerItems><ExplorerItem Name='R' Type='Folder'/></ExplorerItems>");
        ASSERT_EQ(m_oApplication.Start(), 0);
        Platform oPlatform = CurrentPlatform();
        oPlatform.oTimers = New<HeardTimers>(m_oHeard);
        SetCurrentPlatform(std::move(oPlatform));
        m_oBar = CorvaneMain::Framework()->CVProgressBar();
        m_oChanged = Bar()->Changed.Subscribe([this](const BarChange& oChange) {
            const std::string sState = State();
            if (std::exchange(m_sLastState, sState) != sState)
                m_oHeard->Add(sState);
            else if (oChange.eWhat == BarChange::What::Layout)
                m_oHeard->Add("layout");
        });
    }
    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_oApplication.Host().Bar(); }
    [[nodiscard]] Ref<Tool> StatusTool(const char* sName) const {
        return Bar()->Bands()->Item("StatusBar")->Tools()->Item(sName);
    }
    // The parts of the shell that are on.
    [[nodiscard]] std::string State() const {
        std::string sState = "[";
        for (const auto& oBand : Bar()->Bands()->All())
            for (const auto& oTool : oBand->Tools()->All())
                if (oTool->Enabled())
                    sState += "+";
        return sState + (Bar()->StatusTextShown() ? " text" : "") + (StatusTool("Status")->Visible() ? " status" : "") +
               (StatusTool("ctlProgressBar")->Visible() ? " bar]" : "]");
    }
    [[nodiscard]] std::string Shown() const {
        return ToText(m_oBar->Value()) + "/" + ToText(m_oBar->Max()) + (m_oBar->Cancel() ? " cancel" : "") +
               (m_oBar->WasCanceled() ? " canceled" : "") + (m_oBar->Visible() ? " visible" : "") +
               (m_oApplication.Host().ActiveTree()->Enabled() ? " tree" : "");
    }

    Application m_oApplication;
    Ref<Heard> m_oHeard = New<Heard>();
    Ref<CVProgressBar> m_oBar;
    std::string m_sLastState;
    Subscription m_oChanged;
};

TEST_F(ProgressBarTest, ShowAndHideTakeTheirStepsInOrder) {
    EXPECT_EQ(StatusTool("ctlProgressBar")->HWnd(), 1); // the control's
    EXPECT_EQ(State(), "[+++ text status]");
    StatusTool("ctlProgressBar")->SetEnabled(false); // which is forgotten by Hide
    m_oBar->SetMax(200);
    m_oBar->Percent(25);
    m_oBar->Increment();
    m_oBar->SetCancel(true);
    m_oBar->SetWasCanceled(true);
    EXPECT_EQ(Shown(), "51/200 cancel canceled tree");
    m_oHeard->Take();
    m_oBar->Show();
    EXPECT_EQ(m_oHeard->Take(), "[+ text status] [ text status] [ status] [] [ bar] layout pump");
    EXPECT_EQ(Shown(), "0/100 visible");
    m_oBar->Increment();
    m_oBar->Hide();
    EXPECT_EQ(m_oHeard->Take(), "[+ bar] [++ bar] [+++ bar] [+++ text bar] [+++ text status bar] [+++ text status] "
                                "layout pump");
    EXPECT_EQ(Shown(), "0/100 tree");
    m_oBar->Show(20, true);
    EXPECT_EQ(Shown(), "0/20 cancel visible");
    m_oBar->SetVisible(false); // the shell stays as it is
    EXPECT_EQ(State(), "[ text status]");
    EXPECT_EQ(Shown(), "0/20 cancel");
}

TEST_F(ProgressBarTest, WhatTheHostLacksFailsWithoutALogLine) {
    const auto oBar = New<CVProgressBar>();
    EXPECT_EQ(NumberOf([&] { oBar->Initialize(Bar(), New<MdiForm>()); }), FailureNumber::NoSuchMember);
    EXPECT_EQ(NumberOf([&] { oBar->Initialize(New<ActiveBar>(), m_oApplication.Host().MainForm()); }),
              FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(NumberOf([&] { New<CVProgressBar>()->Increment(); }), FailureNumber::ObjectNotSet);
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

} // namespace
} // namespace corvane::testing
