// The root object from start to stop, and its commands.

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/CVProgressBar.h"
#include "corvane/windows/WindowManager.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

TEST(StartAndStop, OneWayThroughLife) {
    Application oApplication;
    oApplication.AddService("A", "", {{"IsStartService", "true"}});
    EXPECT_FALSE(Singleton::Framework());
    oApplication.Load();
    const Ref<Framework> oFramework = Singleton::Framework();
    ASSERT_TRUE(oFramework);
    oFramework->Start(); // nothing has been read yet
    EXPECT_EQ(oApplication.TakeLog(), Lines());
    ASSERT_TRUE(oApplication.Host().Start());

    // While services end, all managers are there and know that the application closes.
    bool bHeard = false;
    const auto oTerminate = oFramework->Service().As<ServiceBase>()->TerminateEvent.Subscribe([&] {
        bHeard = true;
        EXPECT_TRUE(oFramework->WindowManager()->IsAppClosing());
        EXPECT_TRUE(oFramework->NavigationManager());
        EXPECT_TRUE(oFramework->ServiceManager());
        EXPECT_TRUE(oFramework->CVProgressBar());
    });
    oFramework->AppExit();
    EXPECT_TRUE(bHeard);
    EXPECT_TRUE(oApplication.Host().HasExited());
    EXPECT_FALSE(oFramework->NavigationManager());
    EXPECT_FALSE(oFramework->WindowManager());
    EXPECT_FALSE(oFramework->ServiceManager());
    EXPECT_FALSE(oFramework->CVProgressBar());
    EXPECT_EQ(Singleton::Framework(), oFramework);
    EXPECT_TRUE(oFramework->GetImage("open.bmp"));
    EXPECT_EQ(oApplication.TakeCalls(),
              (Lines{"A.Service#1 Initialize", "A.Service#1 Start", "A.Service#1 Terminate"}));
    EXPECT_EQ(NumberOf([&] { oFramework->Start(); }), 91);
    EXPECT_EQ(oApplication.TakeLog(), Lines{"Framework.Start 91"});
    oApplication.Stop();
    EXPECT_FALSE(Singleton::Framework());
}

TEST(StartAndStop, ASecondInitializeFails) {
    Application oApplication;
    ASSERT_EQ(oApplication.Start(), 0);
    EXPECT_EQ(NumberOf([&] {
                  Singleton::Framework()->Initialize(oApplication.Host().MainForm(), oApplication.Host().Panel(),
                                                     nullptr);
              }),
              457);
    EXPECT_EQ(oApplication.TakeLog(),
              (Lines{"ServiceManager.LoadServices 457", "ServiceManager.Initialize 457", "Framework.Initialize 457"}));
}

TEST(StartAndStop, TheHostMustOfferBarBandAndTool) {
    const auto oWithoutBand = New<ActiveBar>();
    const auto oWithoutTool = New<ActiveBar>();
    oWithoutTool->Bands()->Add("StatusBar");
    const std::pair<Ref<ActiveBar>, Long> aBars[] = {{nullptr, 438}, {oWithoutBand, 5}, {oWithoutTool, 5}};
    for (const auto& [oBar, lNumber] : aBars) {
        Application oApplication;
        oApplication.AddService("A").Load();
        const auto frmMain = New<MdiForm>();
        if (oBar)
            frmMain->AddMember("ActiveBar", oBar);
        EXPECT_EQ(NumberOf([&] { Singleton::Framework()->Initialize(frmMain, New<PanelForm>(), nullptr); }), lNumber);
        EXPECT_EQ(oApplication.TakeLog(), Lines{"Framework.Initialize " + std::to_string(lNumber)});
        EXPECT_EQ(oApplication.Services()->ServiceDefs()->Count(), 0); // nothing was read
    }
}

TEST(Images, AreKeptByNameWithoutRegardToCase) {
    Application oApplication;
    oApplication.Load();
    const auto oFramework = Singleton::Framework();
    const Ref<Picture> oPicture = oFramework->GetImage("open.bmp");
    ASSERT_TRUE(oPicture);
    oApplication.AddFile("Images/late.bmp", "no picture yet");
    EXPECT_FALSE(oFramework->GetImage("late.bmp"));
    EXPECT_FALSE(oFramework->GetImage("missing.bmp"));
    EXPECT_FALSE(oFramework->GetImage(""));
    oApplication.AddFile("Images/late.bmp", std::string("GIF89a") + std::string(7, '\0'));
    EXPECT_TRUE(oFramework->GetImage("late.bmp")); // the failure wasn't kept
    oApplication.RemoveFile("Images");
    EXPECT_EQ(oFramework->GetImage("OPEN.bmp"), oPicture);
    EXPECT_FALSE(oFramework->GetImage("GenericExplorerItem.ico"));
    EXPECT_EQ(oApplication.TakeLog(), Lines());
}

class Commands : public ::testing::Test {
protected:
    void SetUp() override {
        m_oApplication.AddService("A", "<Windows><Window Name=\"W\" Type=\"Window\" State=\"Normal\"/></Windows>");
        ASSERT_EQ(m_oApplication.Start(), 0);
        m_oFramework = Singleton::Framework();
    }
    static Ref<ActionItem> Named(const std::string& sName) {
        auto oItem = New<ActionItem>();
        oItem->SetName(sName);
        return oItem;
    }
    Application m_oApplication;
    Ref<Framework> m_oFramework;
};

TEST_F(Commands, TheStatusIsShownAtOnce) {
    const auto& oBar = m_oApplication.Host().Bar();
    Lines aPainted;
    const auto oPaint =
        oBar->PaintRequested.Subscribe([&](const Ref<Band>& oBand) { aPainted.push_back(oBand->Name()); });
    m_oFramework->SetStatus("Ready");
    EXPECT_EQ(oBar->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption(), "Ready");
    EXPECT_EQ(aPainted, Lines{"StatusBar"});
}

TEST_F(Commands, TogglesInvertTheirCheckAndFollowIt) {
    const auto& oBar = m_oApplication.Host().Bar();
    const auto oStatus = Named("StatusBar");
    for (const bool bOn : {true, false, true}) {
        m_oFramework->EnableStatusBar(oStatus);
        EXPECT_EQ(oStatus->Checked(), bOn);
        EXPECT_EQ(oBar->Bands()->Item("StatusBar")->Visible(), bOn);
        m_oFramework->ViewNavigation(oStatus); // any item is its record
        EXPECT_EQ(oBar->Bands()->Item("Explorer")->Visible(), !bOn);
        m_oFramework->ViewNavigation(oStatus);
    }
    EXPECT_EQ(NumberOf([&] { m_oFramework->ViewToolbars(Named("None")); }), 5);
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{"MenuManager.ShowToolbar 5", "Framework.ViewToolbars 5"}));
    EXPECT_EQ(NumberOf([&] { m_oFramework->EnableStatusBar(nullptr); }), 91);
    EXPECT_EQ(m_oApplication.TakeLog(), Lines()); // this one doesn't log
}

TEST_F(Commands, WindowsAreArrangedByTheActionsName) {
    std::vector<Long> aArranged;
    const auto oArranged = m_oApplication.Host().MainForm()->Arranged.Subscribe(
        [&](Arrangement eHow) { aArranged.push_back(static_cast<Long>(eHow)); });
    for (const char* sName : {"tilehorizontally", "TileVertically", "Cascade", "ArrangeIcons", "Tile", ""})
        m_oFramework->WindowAction(Named(sName));
    EXPECT_EQ(aArranged, (std::vector<Long>{1, 2, 0, 3}));
    m_oApplication.Take("open W\nopen W");
    EXPECT_EQ(m_oApplication.Windows()->Windows()->Count(), 2);
    m_oFramework->WindowAction(Named("CLOSEALL"));
    EXPECT_EQ(m_oApplication.Windows()->Windows()->Count(), 0);
}

class RecordingPrinter final : public IScreenPrinter {
public:
    void PrintWindow(Long lMode, Long lHwnd) override { aPrinted.emplace_back(lMode, lHwnd); }
    std::vector<std::pair<Long, Long>> aPrinted;
};

TEST_F(Commands, PrintingTellsWhatToPrint) {
    const auto oPrinter = New<RecordingPrinter>();
    Platform oPlatform = CurrentPlatform();
    oPlatform.oScreenPrinter = oPrinter;
    SetCurrentPlatform(oPlatform);
    const auto frmMain = m_oApplication.Host().MainForm();
    m_oFramework->PrintMainWindow(); // there is no child: nothing
    m_oFramework->PrintDesktop();
    m_oFramework->PrintAppWindow();
    m_oApplication.Take("open W");
    ASSERT_TRUE(frmMain->ActiveForm());
    m_oFramework->PrintMainWindow(); // the active child
    EXPECT_EQ(oPrinter->aPrinted,
              (std::vector<std::pair<Long, Long>>{{0, 0}, {1, frmMain->HWnd()}, {2, frmMain->ActiveForm()->HWnd()}}));
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Commands, ExpressionsChoose) {
    const auto Choose = [this](Long lExpression) {
        return m_oFramework->CVSelectCase(lExpression, "zero", "[unspecified]", "two", Framework::Unspecified, "", "5",
                                          "6", "7", "8", "9", "10", "11", "else");
    };
    const std::pair<Long, const char*> aChoices[] = {{0, "zero"}, {1, "else"}, {2, "two"},   {3, "else"},
                                                     {4, ""},     {11, "11"},  {12, "else"}, {-1, "else"}};
    for (const auto& [lExpression, sChoice] : aChoices)
        EXPECT_EQ(Choose(lExpression), sChoice) << lExpression;
    EXPECT_EQ(m_oFramework->CVSelectCase(5, "0", "1"), "");
    EXPECT_EQ(m_oFramework->CVIIf(true, "yes", "no") + m_oFramework->CVIIf(false, "yes", "no"), "yesno");
    EXPECT_EQ(m_oFramework->CVSelectYesNo(0, "zero", "else") + m_oFramework->CVSelectYesNo(-1, "zero", "else"),
              "zeroelse");
    EXPECT_EQ(m_oFramework->CVSelectYesNo(7, "zero"), "");
    // A definition can name every method, though it has no arguments for these.
    for (const char* sMember : {"cviif", "CVSelectCase", "CVSelectYesNo", "Initialize"})
        EXPECT_EQ(NumberOf([&] { (void)m_oFramework->Invoke(sMember, {}); }), 450) << sMember;
}

} // namespace
} // namespace corvane::testing
