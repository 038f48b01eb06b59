#include "corvane/windows/WindowManager.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/frmWindowSupport.h"

namespace corvane {

namespace {

struct Options {
    bool bIsModal;
    bool bIsMDIChild;
    bool bIsNewBusinessContext;
    bool bIsApplyCommandShown;
    WindowStateConstants eWindowState;
    WindowTypeConstants eWindowType;
};

template <class Option>
bool IsYes(Option eOption, Option eYes, bool bByDefinition) {
    return eOption == Option::cvDefinitionDefault ? bByDefinition : eOption == eYes;
}

template <class Option>
Option Given(Option eOption, Option eByDefinition) {
    return eOption == Option::cvDefinitionDefault ? eByDefinition : eOption;
}

void CheckOptions(const Options& o) {
    if (o.bIsMDIChild && o.bIsModal)
        Fail(FailureNumber::ObjectErrorBase,
             "A window was requested to be an MDIChild window, but also to be shown modally, and Windows does not "
             "allow this.",
             "Validating OpenWindow paramters");
}

} // namespace

WindowManager::WindowManager() = default;

WindowManager::~WindowManager() = default;

void WindowManager::Initialize(const Ref<MdiForm>& frmMain, const Ref<IWindowFormFactory>& oWindowFormFactory) {
    m_frmMain = frmMain;
    m_oWindowFormFactory = oWindowFormFactory;
    m_colWindows = New<KeyedCollection<Ref<Window>>>();
}

bool WindowManager::IsPageAlive(const Ref<Object>& oPageSubclass) const noexcept {
    try {
        (void)oPageSubclass.As<IPageAccess>()->Page().As<PageBase>();
        return true;
    } catch (...) {
        return false; // a test, used before a call that would fail
    }
}

Ref<Window> WindowManager::OpenWindow(const std::string& sWindowName, const Ref<Object>& oBusinessContext,
                                      const Ref<IWindowExitHandler>& oWindowExitHandler,
                                      WindowShowModeConstants eWindowShowMode, WindowStateConstants eWindowState,
                                      MDIWindowTypeConstants eMDIWindowType, WindowTypeConstants eWindowType,
                                      BusinessContextTypeConstants eBusinessContextType,
                                      ShowApplyCommandConstants eShowApplyCommand, const std::string& sKey, bool bHide,
                                      bool bOpenWindowAsync) try {
    const Ref<WindowManager> oSelf(this); // a page may end the application
    const Ref<IScreen> oScreen = CurrentPlatform().oScreen;
    oScreen->SetPointer(MousePointer::Hourglass);
    Ref<Window> oWindow;
    if (!sKey.empty() && KeyExists(m_colWindows, sKey)) {
        oWindow = m_colWindows->Item(sKey);
    } else {
        const Ref<WindowDef> oDef = CorvaneMain::Framework()->ServiceManager()->WindowDefs()->Item(sWindowName);
        // 0 says yes for MDI child and apply command, 1 for modal and new context.
        const Options o{
            IsYes(eWindowShowMode, WindowShowModeConstants::cvModal, oDef->IsModal()),
            IsYes(eMDIWindowType, MDIWindowTypeConstants::cvMDIChild, oDef->IsMDIChild()),
            IsYes(eBusinessContextType, BusinessContextTypeConstants::cvNew, oDef->IsNewBusinessContext()),
            IsYes(eShowApplyCommand, ShowApplyCommandConstants::cvShowApplyCommand, oDef->IsApplyCommandShown()),
            Given(eWindowState, oDef->WindowState()),
            Given(eWindowType, oDef->WindowType())};
        CheckOptions(o);
        oWindow = New<Window>();
        const Ref<IWindowForm> oWindowForm = m_oWindowFormFactory->NewWindowForm(o.eWindowType, o.bIsMDIChild);
        oWindow->Initialize(oSelf, oDef, oWindowForm, sKey, oBusinessContext, oWindowExitHandler, o.bIsModal,
                            static_cast<FormState>(o.eWindowState), o.eWindowType, o.bIsNewBusinessContext,
                            o.bIsApplyCommandShown, m_frmMain);
    }
    oScreen->SetPointer(MousePointer::Default);
    if (CorvaneMain::HasEnded() || !oWindow->WindowDef())
        return oWindow; // a page has ended the application or its window, of which nothing can be shown
    if (bOpenWindowAsync && !bHide)
        New<frmWindowSupport>()->OpenWindowAsync(oWindow);
    else if (!bHide)
        oWindow->Show();
    return oWindow;
} catch (...) {
    Reraise("WindowManager", "OpenWindow");
}

void WindowManager::SetActiveWindow(const Ref<Window>& oWindow) try {
    if (oWindow == m_oActiveWindow)
        return;
    const Ref<Window> oActive = oWindow; // the caller's reference may go meanwhile
    m_oActiveWindow = oActive;
    oActive->Show();
} catch (...) {
    Reraise("WindowManager", "ActiveWindow (Set)");
}

// A child that refuses to go keeps the loop running on it.
void WindowManager::CloseAll() try {
    const Ref<WindowManager> oSelf(this);
    while (const Ref<Form> frmActive = m_frmMain->ActiveForm())
        frmActive->Unload();
} catch (...) {
    Reraise("WindowManager", "CloseAll");
}

Ref<Object> WindowManager::CommonDialog() const try {
    return ToObject(m_frmMain->Invoke("CommonDialog", {}));
} catch (...) {
    Reraise("WindowManager", "CommonDialog (Get)");
}

// Whoever hears an event may end the application, or let go of the window or page that it is about: each procedure
// holds what it goes on with.
void WindowManager::WindowInitialize(const Ref<Window>& oWindow) try {
    const Ref<WindowManager> oSelf(this);
    const std::string sKey = oWindow->Key();
    if (!sKey.empty())
        m_colWindows->Add(oWindow, sKey);
    else
        m_colWindows->Add(oWindow);
    WindowInitializeEvent.Raise(oWindow);
} catch (...) {
    Reraise("WindowManager", "IWindowController_WindowInitialize");
}

void WindowManager::WindowTerminate(const Ref<Window>& oWindow) try {
    const Ref<WindowManager> oSelf(this);
    const Ref<Window> oHeld = oWindow;
    WindowTerminateEvent.Raise(oHeld);
    m_colWindows->Remove(oHeld->Key());
} catch (...) {
    Reraise("WindowManager", "IWindowController_WindowTerminate");
}

void WindowManager::WindowActivate(const Ref<Window>& oWindow) try {
    const Ref<WindowManager> oSelf(this);
    const Ref<Window> oHeld = oWindow;
    WindowActivateEvent.Raise(oHeld);
    m_oActiveWindow = oHeld;
} catch (...) {
    Reraise("WindowManager", "IWindowController_WindowActivate");
}

void WindowManager::WindowDeactivate(const Ref<Window>& oWindow) try {
    const Ref<Window> oHeld = oWindow; // it may be the member that is cleared
    m_oActiveWindow = nullptr;
    WindowDeactivateEvent.Raise(oHeld);
} catch (...) {
    Reraise("WindowManager", "IWindowController_WindowDeactivate");
}

void WindowManager::PageInitialize(const Ref<Object>& oPageObj) try {
    PageInitializeEvent.Raise(oPageObj);
} catch (...) {
    Reraise("WindowManager", "IWindowController_PageInitialize");
}

void WindowManager::PageTerminate(const Ref<Object>& oPageObj) try {
    const Ref<WindowManager> oSelf(this);
    const Ref<Object> oHeld = oPageObj;
    if (oHeld == m_oActivePage)
        PageDeactivateEvent.Raise(oHeld);
    PageTerminateEvent.Raise(oHeld);
} catch (...) {
    Reraise("WindowManager", "IWindowController_PageTerminate");
}

void WindowManager::PageActivate(const Ref<Object>& oPageObj) try {
    const Ref<WindowManager> oSelf(this);
    const Ref<Object> oHeld = oPageObj;
    if (oHeld == m_oActivePage)
        return;
    if (const Ref<Object> oPrevious = m_oActivePage) // handlers may change who is active
        PageDeactivateEvent.Raise(oPrevious);
    m_oActivePage = oHeld;
    PageActivateEvent.Raise(oHeld);
} catch (...) {
    Reraise("WindowManager", "IWindowController_PageActivate");
}

void WindowManager::PageDeactivate(const Ref<Object>& oPageObj) try {
    const Ref<WindowManager> oSelf(this);
    const Ref<Object> oHeld = oPageObj;
    if (oHeld != m_oActivePage)
        return;
    PageDeactivateEvent.Raise(oHeld);
    m_oActivePage = nullptr;
} catch (...) {
    Reraise("WindowManager", "IWindowController_PageDeactivate");
}

void WindowManager::ForgetPage(const Ref<Object>& oPageObj) {
    if (oPageObj == m_oActivePage)
        m_oActivePage = nullptr;
}

} // namespace corvane
