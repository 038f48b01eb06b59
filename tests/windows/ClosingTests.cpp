// The end of windows: from the form, from code, from CloseAll, and refused.
#include "corvane/windows/IWindowExitHandler.h"
#include "tests/windows/WindowsTest.h"

namespace corvane {
namespace {

using testing::FormHabits;
using testing::Heard;
using testing::NumberOf;
using testing::WindowsTest;

class ExitHandler final : public IWindowExitHandler {
public:
    explicit ExitHandler(Ref<Heard> oHeard) : m_oHeard(std::move(oHeard)) {}
    // What the window still knows is part of what is reported.
    void OnExit(const Ref<Window>& oWindow, bool bWasCancelled) override {
        m_oHeard->Add(std::string("exit(") + (bWasCancelled ? "cancelled" : "done") +
                      (oWindow->WasWindowCancelled() == bWasCancelled ? "" : "?") +
                      (oWindow->BusinessContext() && oWindow->IsMDIChild() && oWindow->WindowDef() ? ",whole)" : ")"));
    }

private:
    Ref<Heard> m_oHeard;
};

TEST_F(WindowsTest, TheExitHandlerHearsWhatTheFormTells) {
    struct Case {
        FormHabits::Exit eExit;
        bool bCancelled;
        const char* sExpected;
        Long lRegistered;
        bool bWasCancelled;
    };
    using Exit = FormHabits::Exit;
    const std::vector<Case> aCases{
        {Exit::AfterUnload, false, "WindowTerminate(k of 1) unload exit(done,whole)", 0, false},
        {Exit::AfterUnload, true, "WindowTerminate(k of 1) unload exit(cancelled,whole)", 0, true},
        {Exit::Never, false, "WindowTerminate(k of 1) unload", 0, true},
        // The window has let go of its form, so that it never hears of the unload and stays registered.
        {Exit::BeforeUnloadArrives, false, "exit(done,whole) unload", 1, false},
    };
    Define("Edit");
    Listen();
    for (const auto& oCase : aCases) {
        m_oFactory->oHabits.eExit = oCase.eExit;
        m_oFactory->oHabits.bCancelled = oCase.bCancelled;
        const auto oWindow =
            OpenWindow("Edit", m_oContext, {.key = "k", .hidden = true, .exit = New<ExitHandler>(m_oHeard)});
        EXPECT_TRUE(oWindow->WasWindowCancelled()); // until it has ended
        m_oHeard->Take();
        LastForm().Unload();
        EXPECT_EQ(m_oHeard->Take(), oCase.sExpected);
        EXPECT_EQ(Manager().Windows()->Count(), oCase.lRegistered);
        EXPECT_EQ(oWindow->WasWindowCancelled(), oCase.bWasCancelled);
    }
}

TEST_F(WindowsTest, AnExitedWindowAnswersForItsPlainValuesAlone) {
    Define("Edit");
    const auto oWindow = OpenHidden("Edit", "k");
    oWindow->Show();
    m_oHeard->Take();
    oWindow->Terminate();
    EXPECT_EQ(m_oHeard->Take(), "hide unload");
    EXPECT_EQ(oWindow->Key(), "k");
    EXPECT_FALSE(oWindow->IsModal() || oWindow->WasWindowCancelled());
    EXPECT_FALSE(oWindow->BusinessContext() || oWindow->WindowDef());
    EXPECT_FALSE(LastForm().OnLoad.HasSubscribers() || LastForm().OnDeactivate.HasSubscribers());
    EXPECT_EQ(Manager().Windows()->Count(), 0);
    (void)m_oUtilities->TakeLines();
    const auto oCommand = StandardCommandConstants::cvOK;
    const std::vector<std::pair<std::function<void()>, std::string>> aCases{
        {[&] { oWindow->Terminate(); }, "Window.Terminate 91"},
        {[&] { oWindow->Hide(); }, "Window.Hide 91"},
        {[&] { (void)oWindow->Caption(); }, "Window.Caption (Get) 91"},
        {[&] { oWindow->SetWindowState(FormState::Normal); }, "Window.WindowState (Let) 91"},
        {[&] { (void)oWindow->ActivePageIndex(); }, "Window.ActivePageIndex (Get) 91"},
        {[&] { oWindow->PageActivate(nullptr); }, "Window.IWindowFormController_PageActivate 91"},
        {[&] { (void)oWindow->IsCommandEnabled(oCommand); }, ""}, // these forward without a handler
        {[&] { oWindow->SetIsCommandEnabled(oCommand, true); }, ""},
        {[&] { oWindow->ClickCommand(oCommand); }, ""},
    };
    for (const auto& [fnCall, sLogged] : aCases) {
        EXPECT_EQ(NumberOf(fnCall), FailureNumber::ObjectNotSet) << sLogged;
        EXPECT_EQ(m_oUtilities->TakeLines(), sLogged.empty() ? std::vector<std::string>{} : std::vector{sLogged});
    }
}

TEST_F(WindowsTest, CommandsTravelAsNumbers) {
    Define("Save", "Type='SaveDialog'");
    const auto oWindow = OpenHidden("Save");
    oWindow->SetIsCommandEnabled(StandardCommandConstants::cvSaveAs, true);
    EXPECT_TRUE(oWindow->IsCommandEnabled(StandardCommandConstants::cvApply));
    EXPECT_FALSE(oWindow->IsCommandEnabled(StandardCommandConstants::cvNext));
    m_oHeard->Take();
    for (const auto eCommand : {StandardCommandConstants::cvFinish, StandardCommandConstants::cvSaveAs,
                                StandardCommandConstants::cvPrevious, StandardCommandConstants::cvHelp})
        oWindow->ClickCommand(eCommand);
    EXPECT_TRUE(oWindow->CanBeSaved());
    oWindow->Save();
    EXPECT_EQ(m_oHeard->Take(), "click(1) click(3) click(4) click(0) save");
    m_oFactory->aForms.clear(); // the window alone holds the form, until the command ends it
    oWindow->ClickCommand(StandardCommandConstants::cvCancel);
    EXPECT_EQ(m_oHeard->Take(), "click(2) unload");
}

TEST_F(WindowsTest, CloseAllEndsChildrenUntilOneRefuses) {
    Define("Edit");
    Define("Dialog", "IsMDIChild='false'");
    Listen();
    Manager().CloseAll();
    for (const char* sKey : {"a", "b"})
        OpenHidden("Edit", sKey)->Show();
    OpenHidden("Dialog", "d")->Show();
    auto& oFirst = *m_oFactory->aForms.front();
    oFirst.oHabits.bRefuses = true;
    m_oHeard->Take();
    Manager().CloseAll();
    EXPECT_EQ(m_oHeard->Take(), "WindowTerminate(b active=d of 3) unload refuse");
    EXPECT_TRUE(oFirst.IsLoaded() && Manager().Windows()->HasKey("a"));
    m_frmMain->SetRefusesToTellChild(false);
    oFirst.oHabits.bRefuses = false;
    Manager().CloseAll();
    EXPECT_EQ(m_oHeard->Take(), "WindowTerminate(a active=d of 2) unload");
    EXPECT_EQ(Manager().Windows()->KeyAt(1), "d");
}

TEST_F(WindowsTest, CloseAllPassesOverAChildThatIsBeingUnloaded) {
    Define("Edit");
    for (const char* sKey : {"a", "b", "c"})
        OpenHidden("Edit", sKey)->Show();
    int nTimes = 0;
    const auto oTerminate = Manager().WindowTerminateEvent.Subscribe([&](const Ref<Window>&) {
        ++nTimes;
        Manager().CloseAll();
    });
    LastForm().Unload();
    EXPECT_EQ(nTimes, 3);
    EXPECT_EQ(Manager().Windows()->Count(), 0);
}

TEST_F(WindowsTest, AModalWindowHasEndedWhenItsOpeningReturns) {
    Define("Ask", "IsMDIChild='false' IsModal='true'");
    Define("Edit");
    // From within the modal loop another window is opened and everything closed.
    const auto oLoaded = m_frmMain->ChildLoaded.Subscribe([this](const Ref<Form>& oForm) {
        if (!oForm->MDIChild())
            m_aSubscriptions.push_back(oForm->ModalLoop.Subscribe([this, pForm = oForm.Get()] {
                Manager().OpenWindow("Edit", m_oContext);
                Manager().CloseAll();
                pForm->Unload();
            }));
    });
    const auto oWindow = Manager().OpenWindow("Ask", m_oContext);
    EXPECT_FALSE(oWindow->WasWindowCancelled());
    EXPECT_FALSE(oWindow->BusinessContext());
    EXPECT_EQ(Manager().Windows()->Count(), 0);
    EXPECT_EQ(m_oScreen->Pointer(), MousePointer::Default);
}

TEST_F(WindowsTest, ByNameReachesTheMainFormsDialog) {
    EXPECT_EQ(NumberOf([&] { (void)Manager().CommonDialog(); }), FailureNumber::NoSuchMember);
    EXPECT_EQ(m_oUtilities->TakeLines(), std::vector<std::string>{"WindowManager.CommonDialog (Get) 438"});
    EXPECT_EQ(NumberOf([] { (void)AskText("Name?"); }), FailureNumber::NoSuchMember);
    m_frmMain->AddMember("commondialog", m_oContext);
    EXPECT_TRUE(Manager().CommonDialog() == m_oContext);
    EXPECT_EQ(NumberOf([] { (void)AskText("Name?"); }), FailureNumber::NoSuchMember) << "it has no such member";
}

} // namespace
} // namespace corvane
