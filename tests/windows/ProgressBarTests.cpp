// The progress bar on a main form of a whole application.
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/controls/TreeView.h"
#include "corvane/windows/CVProgressBar.h"
#include "headless/ModelHost.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/WindowsTest.h"

#include <filesystem>

namespace corvane {
namespace {

using testing::Heard;
using testing::HeardTimers;
using testing::NumberOf;

// The host's control: it tells what is written to it.
class Progress final : public Automation<Progress> {
public:
    explicit Progress(Ref<Heard> oHeard) : m_oHeard(std::move(oHeard)) {}
    Long HWnd() const { return 77; }
    bool Cancel() const { return m_bCancel; }
    void SetCancel(bool bCancel) { Tell("Cancel", m_bCancel = bCancel); }
    bool WasCanceled() const { return m_bWasCanceled; }
    void SetWasCanceled(bool bWasCanceled) { Tell("WasCanceled", m_bWasCanceled = bWasCanceled); }
    Double Max() const { return m_dblMax; }
    void SetMax(Double dblMax) { Tell("Max", m_dblMax = dblMax); }
    Double Value() const { return m_dblValue; }
    void SetValue(Double dblValue) { Tell("Value", m_dblValue = dblValue); }
    void Increment() { m_dblValue += 1; }
    void Percent(Double dblPercent) { m_dblValue = m_dblMax * dblPercent / 100; }
    Long Pixels() const { return 12; }

    static constexpr auto Members =
        MemberTable(Property("hwnd", &Progress::HWnd), Property("Cancel", &Progress::Cancel, &Progress::SetCancel),
                    Property("WasCanceled", &Progress::WasCanceled, &Progress::SetWasCanceled),
                    Property("Max", &Progress::Max, &Progress::SetMax),
                    Property("Value", &Progress::Value, &Progress::SetValue), Method("Increment", &Progress::Increment),
                    Method("Percent", &Progress::Percent), Property("Pixels", &Progress::Pixels));

private:
    void Tell(const std::string& sName, const Variant& vValue) { m_oHeard->Add(sName + "=" + ToText(vValue)); }

    Ref<Heard> m_oHeard;
    bool m_bCancel = false;
    bool m_bWasCanceled = true;
    Double m_dblMax = 0;
    Double m_dblValue = 50;
};

class ProgressBarTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(m_oFolder.Path() + "/Services");
        std::filesystem::copy_file(CORVANE_SHIPPED_SCHEMA, m_oFolder.Path() + "/Services/Service.xdr");
        m_oFolder.Write("Services/00-shell.xml",
                        "<Service Name='Shell' ProgID='Corvane.Framework' Active='true'><ActionItems>"
                        "<ActionItem Name='Navigation' Action='ViewNavigation' PassActionItemParam='true'/>"
                        "</ActionItems></Service>");
        m_oFolder.Write("Services/10-a.xml", "<Service Name='A' ProgID='P.A' Active='true'><ExplorerItems>"
                                             "<ExplorerItem Name='R' Type='Folder' ProgID='P.R'/></ExplorerItems>"
                                             "</Service>");
        inspect::HostOptions oOptions;
        oOptions.applicationFolder = m_oFolder.Path();
        oOptions.standIns = true;
        m_oHost.emplace(oOptions);
        ASSERT_TRUE(m_oHost->Start());
        Platform oPlatform = CurrentPlatform();
        oPlatform.oTimers = New<HeardTimers>(m_oHeard);
        SetCurrentPlatform(std::move(oPlatform));

        // A bar of its own, whose changes are heard beside what is written to the control.
        m_frmMain->AddMember("ctlCVProgress", New<Progress>(m_oHeard));
        m_oStatus = m_oActiveBar->Bands()->Item("StatusBar")->Tools()->Item("Status");
        m_oBarTool = m_oActiveBar->Bands()->Item("StatusBar")->Tools()->Item("ctlProgressBar");
        m_oBar->Initialize(m_oActiveBar, m_frmMain);
        m_oChanged = m_oActiveBar->Changed.Subscribe([this](const BarChange& oChange) { OnFormChanged(oChange); });
    }
    void OnFormChanged(const BarChange& oChange) {
        const std::string sState = State();
        if (std::exchange(m_sLastState, sState) != sState)
            m_oHeard->Add(sState);
        else if (oChange.eWhat == BarChange::What::Layout)
            m_oHeard->Add("layout");
    }
    // The parts of the shell that are on.
    std::string State() const {
        std::string sState = "[";
        for (const auto& oBand : m_oActiveBar->Bands()->All())
            for (const auto& oTool : oBand->Tools()->All())
                if (oTool->Enabled())
                    sState += "+";
        if (m_oActiveBar->StatusTextShown())
            sState += " text";
        if (m_oStatus->Visible())
            sState += " status";
        if (m_oBarTool->Visible())
            sState += " bar";
        return sState + "]";
    }
    Ref<TreeView> Tree() const { return m_oHost->ActiveTree(); }

    test::TemporaryFolder m_oFolder;
    std::optional<inspect::ModelHost> m_oHost;
    Ref<Heard> m_oHeard = New<Heard>();
    Ref<MdiForm> m_frmMain = New<MdiForm>();
    Ref<ActiveBar> m_oActiveBar = NewHostActiveBar();
    Ref<CVProgressBar> m_oBar = New<CVProgressBar>();
    Ref<Tool> m_oStatus;
    Ref<Tool> m_oBarTool;
    std::string m_sLastState;
    Subscription m_oChanged;
};

TEST_F(ProgressBarTest, ShowAndHideTakeTheirStepsInOrder) {
    EXPECT_EQ(m_oBarTool->HWnd(), 77);
    EXPECT_EQ(State(), "[+++ text status]");
    EXPECT_FALSE(m_oBar->Visible());
    m_oBarTool->SetEnabled(false); // which is forgotten by Hide
    EXPECT_EQ(State(), "[++ text status]");
    m_oHeard->Take();
    m_oBar->Show();
    EXPECT_EQ(m_oHeard->Take(), "[+ text status] [ text status] Cancel=False WasCanceled=False Max=100 Value=0 "
                                "[ status] [] [ bar] layout pump");
    EXPECT_TRUE(m_oBar->Visible());
    EXPECT_FALSE(Tree()->Enabled());
    m_oBar->Hide();
    EXPECT_EQ(m_oHeard->Take(), "[+ bar] [++ bar] [+++ bar] [+++ text bar] [+++ text status bar] [+++ text status] "
                                "layout pump Value=0");
    EXPECT_TRUE(Tree()->Enabled());
    m_oBar->Show(20, true);
    m_oHeard->Take();
    m_oBar->SetVisible(false); // the shell stays as it is
    EXPECT_EQ(State(), "[ text status]");
    EXPECT_FALSE(Tree()->Enabled());
    EXPECT_TRUE(m_oBar->Cancel());
}

TEST_F(ProgressBarTest, MembersAreTheControls) {
    m_oBar->SetMax(200);
    m_oBar->Percent(25);
    m_oBar->Increment();
    EXPECT_EQ(m_oBar->Value(), 51);
    m_oBar->SetWasCanceled(true);
    EXPECT_TRUE(m_oBar->WasCanceled());
    EXPECT_EQ(m_oBar->Pixels(), 12);
}

TEST_F(ProgressBarTest, WhatTheHostLacksFailsWithoutALogLine) {
    const auto oWithout = New<MdiForm>();
    const auto oBar = New<CVProgressBar>();
    EXPECT_EQ(NumberOf([&] { oBar->Initialize(m_oActiveBar, oWithout); }), FailureNumber::NoSuchMember);
    EXPECT_EQ(NumberOf([&] { oBar->Initialize(New<ActiveBar>(), m_frmMain); }), FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(NumberOf([&] { New<CVProgressBar>()->Increment(); }), FailureNumber::ObjectNotSet);
    EXPECT_TRUE(m_oHost->Recorded().log.empty());
}

} // namespace
} // namespace corvane
