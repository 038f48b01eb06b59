// From the call of OpenWindow to the window on the screen.
#include "tests/windows/WindowsTest.h"

namespace corvane {
namespace {

using testing::NumberOf;
using testing::WindowsTest;

const char* const sTwoPages = "<Page PageProgID='P.A' Caption='a' IsOptional='false' IsResizable='true'/>"
                              "<Page PageProgID='P.B' Caption='b' IsOptional='false' IsResizable='true'/>";

TEST_F(WindowsTest, EverybodyHearsOfAWindowsLifeInOrder) {
    Define("Edit", "PageWidth='600' PageHeight='400' DefPageWidth='3000' DefPageHeight='2000' State='Maximized'",
           sTwoPages);
    Listen();
    const auto oWindow = OpenHidden("Edit", "k");
    EXPECT_EQ(m_oHeard->Take(), "pointer=11 new(0,mdi) WindowInitialize(k of 1) load initialize(apply) "
                                "a.Initialize PageInitialize(a) b.Initialize PageInitialize(b) "
                                "width(600) height(400) width(3000) height(2000) move(4450,2381,3100,2200) state=2 "
                                "pointer=0");
    oWindow->Show();
    EXPECT_EQ(m_oHeard->Take(), "show WindowActivate(k of 1) PageActivate(a) a.Activate repaint");
    m_oFactory->oHabits.bReportsDeactivate = false;
    OpenHidden("Edit", "l")->Show();
    m_oHeard->Take();
    LastForm().Unload(); // it leaves the deactivation of its page to the manager, who goes on taking it for active
    EXPECT_EQ(m_oHeard->Take(), "PageDeactivate(a) PageTerminate(a) a.Terminate PageTerminate(b) b.Terminate "
                                "WindowTerminate(l active=l of 2) unload");
    m_oFactory->aForms.front()->Unload();
    EXPECT_EQ(m_oHeard->Take(), "a.Deactivate PageTerminate(a) a.Terminate b.Deactivate PageTerminate(b) b.Terminate "
                                "WindowTerminate(k active=l of 1) unload");
    EXPECT_EQ(Manager().Windows()->Count(), 0);
}

TEST_F(WindowsTest, TheActiveWindowChangesAfterActivateAndBeforeDeactivate) {
    Define("Edit");
    const auto a = OpenHidden("Edit", "a");
    const auto b = OpenHidden("Edit", "b");
    Listen();
    m_oHeard->Take();
    Manager().SetActiveWindow(a);
    EXPECT_EQ(m_oHeard->Take(), "show WindowActivate(a active=a of 2) repaint"); // the setter stores before it shows
    Manager().SetActiveWindow(a);
    EXPECT_EQ(m_oHeard->Take(), "");
    b->Show();
    EXPECT_EQ(m_oHeard->Take(), "show WindowDeactivate(a of 2) WindowActivate(b of 2) repaint");
    EXPECT_TRUE(Manager().ActiveWindow() == b);
    EXPECT_EQ(NumberOf([&] { Manager().SetActiveWindow(nullptr); }), FailureNumber::ObjectNotSet);
    EXPECT_EQ(NumberOf([&] { Manager().SetActiveWindow(nullptr); }), 0); // nothing is active by now
}

TEST_F(WindowsTest, OptionsAreTheCallersOrElseTheDefinitions) {
    struct Case {
        const char* sDefinition;
        std::vector<Long> aOptions; // show mode, state, MDI, type, context, apply
        const char* sExpected;
    };
    const char* const sOne = "Type='SaveDialog' State='Minimized' IsMDIChild='true' IsModal='false' "
                             "IsNewBusinessContext='true' IsApplyCommandShown='false'";
    const char* const sOther = "Type='Wizard' State='Normal' IsMDIChild='false' IsModal='true' "
                               "IsNewBusinessContext='false' IsApplyCommandShown='true'";
    const std::vector<Case> aCases{
        {sOne, {-1, -1, -1, -1, -1, -1}, "new(3,mdi) state=1 modeless type=3 new"},
        {sOther, {-1, -1, -1, -1, -1, -1}, "new(1) state=0 modal type=1 existing apply"},
        // The zero of show mode and context says no, that of MDI child and apply command says yes.
        {sOne, {0, 0, 0, 0, 0, 0}, "new(0,mdi) state=0 modeless type=0 existing apply"},
        {sOther, {0, 0, 0, 0, 0, 0}, "new(0,mdi) state=0 modeless type=0 existing apply"},
        {sOne, {1, 2, 1, 2, 1, 1}, "new(2) state=2 modal type=2 new"},
        {sOther, {1, 2, 1, 2, 1, 1}, "new(2) state=2 modal type=2 new"},
        // Any other number is a no.
        {sOther, {5, -1, 5, -1, 5, 5}, "new(1) state=0 modeless type=1 existing"},
    };
    int nCase = 0;
    for (const auto& [sDefinition, aOptions, sExpected] : aCases) {
        const std::string sName = "W" + std::to_string(++nCase);
        Define(sName, sDefinition);
        const auto oWindow = Manager().OpenWindow(
            sName, m_oContext, nullptr, WindowShowModeConstants{aOptions[0]}, WindowStateConstants{aOptions[1]},
            MDIWindowTypeConstants{aOptions[2]}, WindowTypeConstants{aOptions[3]},
            BusinessContextTypeConstants{aOptions[4]}, ShowApplyCommandConstants{aOptions[5]}, "", true);
        const std::string sHeard = m_oHeard->Take();
        const auto Word = [&sHeard](const char* sWord) {
            const auto i = sHeard.find(sWord);
            return i == std::string::npos ? std::string() : sHeard.substr(i, sHeard.find(' ', i) - i);
        };
        EXPECT_EQ(Word("new(") + " " + Word("state=") + (oWindow->IsModal() ? " modal" : " modeless") +
                      " type=" + std::to_string(static_cast<Long>(oWindow->WindowType())) +
                      (oWindow->IsNewBusinessContext() ? " new" : " existing") +
                      (oWindow->IsApplyCommandShown() ? " apply" : ""),
                  sExpected)
            << sName;
        EXPECT_EQ(oWindow->IsApplyCommandShown(), Word("initialize") == "initialize(apply)");
    }
}

TEST_F(WindowsTest, AKeyStandsForOneWindow) {
    Define("Edit");
    Define("Other", "IsModal='true'"); // which a child of the main form can't be
    const auto oFirst = Manager().OpenWindow("Edit", m_oContext);
    const auto oSecond = Manager().OpenWindow("Edit", m_oContext);
    EXPECT_EQ(oFirst->Key(), std::to_string(oFirst->ObjectKey()));
    EXPECT_EQ(oSecond->Key(), std::to_string(oSecond->ObjectKey()));
    const auto oKeyed = OpenHidden("Edit", "Grün");
    m_oHeard->Take();
    const auto Again = [this](const std::string& sKey, bool bHide) {
        return Manager().OpenWindow("Other", nullptr, nullptr, WindowShowModeConstants::cvModal,
                                    WindowStateConstants::cvMaximized, MDIWindowTypeConstants::cvMDIChild,
                                    WindowTypeConstants::cvWizard, BusinessContextTypeConstants::cvNew,
                                    ShowApplyCommandConstants::cvHideApplyCommand, sKey, bHide);
    };
    EXPECT_TRUE(Again("GRÜN", false) == oKeyed);
    EXPECT_EQ(m_oHeard->Take(), "pointer=11 pointer=0 show repaint");
    EXPECT_TRUE(Again("grün", true) == oKeyed);
    EXPECT_EQ(m_oHeard->Take(), "pointer=11 pointer=0");
    EXPECT_TRUE(Again(oFirst->Key(), true) == oFirst); // a number that was given out is a key too
    EXPECT_TRUE(oKeyed->BusinessContext() == m_oContext);
    EXPECT_EQ(Manager().Windows()->Count(), 3);
    LastForm().Unload();
    EXPECT_FALSE(OpenHidden("Edit", "grün") == oKeyed);
}

TEST_F(WindowsTest, AFailureKeepsTheHourglass) {
    const Long lMDIAndModal = FailureNumber::ObjectErrorBase;
    struct Case {
        const char* sWhat;
        const char* sDefinition;
        WindowShowModeConstants eShowMode;
        MDIWindowTypeConstants eMDI;
        Long lNumber;
        const char* sHeard;
        const char* sLogged;
        Long lRegistered;
    };
    using Mode = WindowShowModeConstants;
    using MDI = MDIWindowTypeConstants;
    const std::vector<Case> aCases{
        {"MDI and modal by the caller", "Plain", Mode::cvModal, MDI::cvMDIChild, lMDIAndModal, "", "", 0},
        {"MDI and modal by the definition", "Both", Mode::cvDefinitionDefault, MDI::cvDefinitionDefault, lMDIAndModal,
         "", "", 0},
        {"MDI and modal by both", "Plain", Mode::cvModal, MDI::cvDefinitionDefault, lMDIAndModal, "", "", 0},
        {"Unknown", "None", Mode::cvModal, MDI::cvMDIChild, 5, "", "", 0},
        {"No form", "Plain", Mode::cvModeless, MDI::cvMDIChild, 13, " new(0,mdi)", "Window.Initialize 13", 0},
        // The window is registered by its form's load and stays.
        {"Failing form", "Plain", Mode::cvModeless, MDI::cvMDIChild, 1000, " new(0,mdi) load initialize(apply)",
         "Window.Initialize 1000", 1},
    };
    Define("Plain");
    Define("Both", "IsModal='true'");
    for (const auto& oCase : aCases) {
        SCOPED_TRACE(oCase.sWhat);
        m_oFactory->bMakesNoForm = oCase.lNumber == 13;
        m_oFactory->oHabits.bFailsInInitialize = oCase.lNumber == 1000;
        const auto Open = [&] {
            Manager().OpenWindow(oCase.sDefinition, m_oContext, nullptr, oCase.eShowMode,
                                 WindowStateConstants::cvNormal, oCase.eMDI);
        };
        EXPECT_EQ(NumberOf(Open), oCase.lNumber);
        EXPECT_EQ(m_oHeard->Take(), std::string("pointer=11") + oCase.sHeard);
        std::vector<std::string> aExpected{"WindowManager.OpenWindow " + std::to_string(oCase.lNumber)};
        if (*oCase.sLogged)
            aExpected.insert(aExpected.begin(), oCase.sLogged);
        EXPECT_EQ(m_oUtilities->TakeLines(), aExpected);
        EXPECT_EQ(Manager().Windows()->Count(), oCase.lRegistered);
    }
    EXPECT_TRUE(LastForm().IsLoaded());
    EXPECT_EQ(
        test::FailureOf([&] { Manager().OpenWindow("Both", m_oContext); }, true),
        "-2147221504 (Validating OpenWindow paramters): A window was requested to be an MDIChild window, but also "
        "to be shown modally, and Windows does not allow this.");
}

TEST_F(WindowsTest, WindowsArePlacedAndShownByTheirKind) {
    struct Case {
        bool bIsMDIChild;
        bool bIsModal;
        const char* sExpected; // the main form is 12300 by 9600 outside, 12000 by 9000 inside
    };
    const std::vector<Case> aCases{
        {true, false, "move(4950,2731,2100,1200) state=0|show repaint"},
        {true, true, "move(4950,2731,2100,1200) state=0|show repaint"}, // by a direct Initialize alone
        {false, false, "move(5100,2941,2100,1200) state=0|show owned repaint"},
        {false, true, "move(5100,2941,2100,1200) state=0|show modal owned hide"},
    };
    Define("Edit", "PageWidth='2000' PageHeight='1000'");
    const auto oDef = CorvaneMain::Framework()->ServiceManager()->WindowDefs()->Item("Edit");
    for (const auto& [bIsMDIChild, bIsModal, sExpected] : aCases) {
        const auto oForm = m_oFactory->NewWindowForm(WindowTypeConstants::cvWindow, bIsMDIChild);
        const auto frmForm = oForm.As<Form>();
        const auto oLoop = frmForm->ModalLoop.Subscribe([&] { frmForm->Hide(); });
        const auto oWindow = New<Window>();
        oWindow->Initialize(m_oManager, oDef, oForm, "", m_oContext, nullptr, bIsModal, FormState::Normal,
                            WindowTypeConstants::cvWindow, false, true, m_frmMain);
        std::string sHeard = m_oHeard->Take();
        sHeard.erase(0, sHeard.find("move"));
        oWindow->Show();
        EXPECT_EQ(sHeard + "|" + m_oHeard->Take(), sExpected);
        oWindow->Show(); // shows it again, which is harmless
        EXPECT_TRUE(frmForm->Visible() || bIsModal);
        m_oHeard->Take();
    }
}

TEST_F(WindowsTest, ADeferredWindowComesWithTheTimersTick) {
    Define("Edit", "IsMDIChild='false' IsModal='true'");
    const auto Open = [this](bool bHide) {
        auto oWindow = OpenWindow("Edit", m_oContext, {.hidden = bHide, .later = true});
        m_oHeard->Take();
        return oWindow;
    };
    Open(true);
    EXPECT_TRUE(m_oTimers->aTimers.empty());
    const auto oWindow = Open(false);
    EXPECT_FALSE(LastForm().Visible());
    EXPECT_EQ(m_oTimers->Running(), "50 ");
    bool bInLoop = false;
    const auto oLoop = LastForm().ModalLoop.Subscribe([&] {
        bInLoop = true;
        EXPECT_EQ(m_oTimers->Running(), "");
        LastForm().ClickCommand(StandardCommandConstants::cvCancel);
    });
    m_oTimers->TickAll();
    EXPECT_TRUE(bInLoop);
    EXPECT_EQ(m_oHeard->Take(), "show modal owned click(2) unload");
    m_oTimers->TickAll();
    EXPECT_EQ(m_oHeard->Take(), "");

    Open(false);
    LastForm().Unload(); // the window is gone when the tick comes
    (void)m_oUtilities->TakeLines();
    EXPECT_EQ(NumberOf([&] { m_oTimers->TickAll(); }), FailureNumber::ObjectNotSet);
    EXPECT_EQ(m_oUtilities->TakeLines(),
              (std::vector<std::string>{"Window.Show 91", "frmWindowSupport.tmWindowSupport_Timer 91"}));

    Open(false);
    LastForm().Unload();
    EndLibrary(); // within the 50 ms
    EXPECT_EQ(m_oTimers->Running(), "");
}

} // namespace
} // namespace corvane
