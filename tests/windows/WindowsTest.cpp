#include "tests/windows/WindowsTest.h"

#include "corvane/windows/IWindowFormController.h"

namespace corvane::testing {

TestForm::TestForm(MdiForm* frmMain, bool bMDIChild, Ref<Heard> oHeard, FormHabits oFormHabits)
    : Form(frmMain, bMDIChild), FormlessWindow(std::move(oHeard)), oHabits(oFormHabits) {
    // Before the window's own subscription, so that the pages go first.
    m_aSubscriptions.push_back(OnUnload.Subscribe([this](bool& bRefused) { BeforeUnload(bRefused); }));
    m_aSubscriptions.push_back(Changed.Subscribe([this](Change eChange) { OnFormChanged(eChange); }));
}

void TestForm::Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) {
    m_oController = oWindowFormController;
    m_oHeard->Add(bIsApplyCommandShown ? "initialize(apply)" : "initialize");
    if (oHabits.bFailsInInitialize)
        Fail(1000, "The form can't");
    for (const auto& oPageDef : m_oController->WindowDef()->PageDefs()) {
        aPages.push_back(New<TestPage>(oPageDef->Caption(), m_oHeard));
        m_oController->PageInitialize(aPages.back(), oPageDef);
    }
    m_aSubscriptions.push_back(OnActivate.Subscribe([this] {
        if (!aPages.empty())
            m_oController->PageActivate(aPages[static_cast<std::size_t>(m_lIndex)]);
    }));
}

void TestForm::BeforeUnload(bool& bRefused) {
    if (oHabits.bRefuses) {
        m_oHeard->Add("refuse");
        bRefused = true;
        if (Application())
            Application()->SetRefusesToTellChild(true);
        return;
    }
    for (const auto& oPage : std::exchange(aPages, {})) {
        if (oHabits.bReportsDeactivate)
            m_oController->PageDeactivate(oPage);
        m_oController->PageTerminate(oPage);
    }
    if (oHabits.eExit == FormHabits::Exit::BeforeUnloadArrives)
        ExitWindow();
}

void TestForm::OnFormChanged(Change eChange) {
    switch (eChange) {
    case Change::Loaded:
        m_oHeard->Add("load");
        break;
    case Change::Unloaded:
        m_oHeard->Add("unload");
        if (oHabits.eExit == FormHabits::Exit::AfterUnload)
            ExitWindow();
        break;
    case Change::Shown:
        m_oHeard->Add(std::string(IsModal() ? "show modal" : "show") + (ShowOwner() ? " owned" : ""));
        break;
    case Change::Hidden:
        m_oHeard->Add("hide");
        break;
    case Change::Moved:
        m_oHeard->Add("move(" + ToText(Left()) + "," + ToText(Top()) + "," + ToText(Width()) + "," + ToText(Height()) +
                      ")");
        break;
    case Change::State:
        m_oHeard->Add("state=" + std::to_string(static_cast<Long>(WindowState())));
        break;
    case Change::Caption:
        break;
    case Change::Repaint:
        m_oHeard->Add("repaint");
        break;
    }
}

void TestForm::ExitWindow() {
    if (const auto oController = std::exchange(m_oController, nullptr))
        oController->ExitWindow(oHabits.bCancelled);
}

Ref<IWindowForm> TestFactory::NewWindowForm(WindowTypeConstants eWindowType, bool bIsMDIChild) {
    m_oHeard->Add("new(" + std::to_string(static_cast<Long>(eWindowType)) + (bIsMDIChild ? ",mdi)" : ")"));
    if (bMakesNoForm)
        return New<FormlessWindow>(m_oHeard);
    return aForms.emplace_back(New<TestForm>(m_frmMain, bIsMDIChild, m_oHeard, oHabits));
}

WindowsTest::WindowsTest() {
    Platform oPlatform;
    oPlatform.oUtilities = m_oUtilities;
    oPlatform.oScreen = m_oScreen;
    oPlatform.oTimers = m_oTimers;
    oPlatform.oWindowMessages = m_oMessages;
    m_oLibrary.emplace(std::move(oPlatform));
    m_aSubscriptions.push_back(m_frmMain->ChildLoaded.Subscribe([this](const Ref<Form>& oForm) {
        m_oMessages->RegisterWindow(oForm->HWnd(), [p = oForm.Get()](Long, Long uMsg, Long, std::intptr_t) -> Long {
            if (uMsg == WindowMessage::Close)
                p->Unload();
            return 7;
        });
    }));
    m_frmMain->Load();
    m_frmMain->Move(0, 0, 12300, 9600);
    m_frmMain->SetFrame(300, 600);
    m_oManager = CorvaneMain::Framework()->WindowManager();
    m_oManager->Initialize(m_frmMain, m_oFactory);
}

WindowsTest::~WindowsTest() {
    // What a test has left open or broken is ended here, so that nothing stays behind.
    m_aSubscriptions.clear();
    for (const auto& oForm : m_oFactory->aForms) {
        oForm->oHabits = {};
        oForm->Unload();
        oForm->ExitWindow();
    }
    EndLibrary();
}

void WindowsTest::EndLibrary() {
    m_oManager = nullptr;
    m_oLibrary.reset();
}

void WindowsTest::Define(const std::string& sName, const std::string& sAttributes, const std::string& sPages) {
    const auto With = [&sAttributes](const char* sAttribute, const char* sDefault) {
        return sAttributes.find(sAttribute) == std::string::npos ? " " + std::string(sAttribute) + "='" + sDefault + "'"
                                                                 : std::string();
    };
    const auto oDocument = m_oXml->NewDocument();
    ASSERT_TRUE(oDocument->LoadXml("<Window Name='" + sName + "'" + With("Type", "Window") + With("State", "Normal") +
                                   " " + sAttributes + ">" + sPages + "</Window>"));
    auto oDef = New<WindowDef>();
    oDef->Initialize(oDocument->SelectSingleNode("/Window"));
    CorvaneMain::Framework()->ServiceManager()->WindowDefs()->Add(oDef, sName);
}

Ref<Window> WindowsTest::OpenHidden(const std::string& sName, const std::string& sKey) {
    return OpenWindow(sName, m_oContext, {.key = sKey, .hidden = true});
}

std::string WindowsTest::NameOf(const Ref<Object>& oPageObj) const {
    return oPageObj ? oPageObj.As<TestPage>()->sName : "none";
}

void WindowsTest::Listen() {
    const auto HearWindow = [this](auto& oEvent, const std::string& sEvent) {
        m_aSubscriptions.push_back(oEvent.Subscribe([this, sEvent](const Ref<Window>& oWindow) {
            const auto& oActive = Manager().ActiveWindow();
            m_oHeard->Add(sEvent + "(" + oWindow->Key() + (oActive ? " active=" + oActive->Key() : "") + " of " +
                          std::to_string(Manager().Windows()->Count()) + ")");
        }));
    };
    const auto HearPage = [this](auto& oEvent, const std::string& sEvent) {
        m_aSubscriptions.push_back(oEvent.Subscribe(
            [this, sEvent](const Ref<Object>& oPageObj) { m_oHeard->Add(sEvent + "(" + NameOf(oPageObj) + ")"); }));
    };
    HearWindow(Manager().WindowInitializeEvent, "WindowInitialize");
    HearWindow(Manager().WindowTerminateEvent, "WindowTerminate");
    HearWindow(Manager().WindowActivateEvent, "WindowActivate");
    HearWindow(Manager().WindowDeactivateEvent, "WindowDeactivate");
    HearPage(Manager().PageInitializeEvent, "PageInitialize");
    HearPage(Manager().PageTerminateEvent, "PageTerminate");
    HearPage(Manager().PageActivateEvent, "PageActivate");
    HearPage(Manager().PageDeactivateEvent, "PageDeactivate");
}

} // namespace corvane::testing
