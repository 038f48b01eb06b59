#include "corvane/windows/Window.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/ObjectKeyProvider.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/MinWindowSize.h"

namespace corvane {

// Here, where everything that the table of members names is complete.
Window::Window() = default;
Window::~Window() = default;

void Window::Initialize(const Ref<IWindowController>& oWindowController, const Ref<corvane::WindowDef>& oWindowDef,
                        const Ref<IWindowForm>& oWindowForm, const std::string& sKey,
                        const Ref<Object>& oBusinessContext, const Ref<IWindowExitHandler>& oWindowExitHandler,
                        bool bIsModal, FormState eWindowState, WindowTypeConstants eWindowType,
                        bool bIsNewBusinessContext, bool bIsApplyCommandShown, const Ref<Form>& frmOwner) try {
    m_oWindowController = oWindowController;
    m_oWindowDef = oWindowDef;
    m_sKey = sKey.empty() ? ToText(New<ObjectKeyProvider>()->ObjectKey(Ref<Window>(this))) : sKey;
    m_oBusinessContext = oBusinessContext;
    m_oWindowExitHandler = oWindowExitHandler;
    m_bIsModal = bIsModal;
    m_eWindowType = eWindowType;
    m_bIsNewBusinessContext = bIsNewBusinessContext;
    m_bIsApplyCommandShown = bIsApplyCommandShown;
    m_frmOwner = frmOwner;
    m_oWindowForm = oWindowForm;
    m_frmWindow = m_oWindowForm.As<Form>();
    SubscribeToForm();
    const Ref<Window> oSelf(this);
    const Ref<Form> frmWindow = m_frmWindow;
    frmWindow->Load();
    oWindowForm->Initialize(oSelf, m_bIsApplyCommandShown);
    if (!m_frmWindow)
        return; // a page has closed the window, or ended the application
    const Long lMinWidth = m_oWindowForm->MinWindowWidth(m_oWindowDef->PageWidth());
    const Long lMinHeight = m_oWindowForm->MinWindowHeight(m_oWindowDef->PageHeight());
    const Long lDefaultWidth = m_oWindowForm->MinWindowWidth(m_oWindowDef->DefPageWidth());
    const Long lDefaultHeight = m_oWindowForm->MinWindowHeight(m_oWindowDef->DefPageHeight());
    PlaceForm(lDefaultWidth, lDefaultHeight);
    MinWindowSize::SetMinWindowSize(m_frmWindow->HWnd(), lMinWidth, lMinHeight);
    m_frmWindow->SetWindowState(eWindowState);
    m_bWasWindowCancelled = true;
} catch (...) {
    Reraise("Window", "Initialize");
}

void Window::SubscribeToForm() {
    m_oLoad = m_frmWindow->OnLoad.Subscribe([this] { TellController("Load", &IWindowController::WindowInitialize); });
    m_oUnload = m_frmWindow->OnUnload.Subscribe([this](bool& bRefused) {
        if (!bRefused)
            TellController("Unload", &IWindowController::WindowTerminate);
    });
    m_oActivate =
        m_frmWindow->OnActivate.Subscribe([this] { TellController("Activate", &IWindowController::WindowActivate); });
    m_oDeactivate = m_frmWindow->OnDeactivate.Subscribe(
        [this] { TellController("Deactivate", &IWindowController::WindowDeactivate); });
}

// The origin is 0 in either case, so a window that isn't an MDI child is placed as if its owner began at the screen's
// corner.
void Window::PlaceForm(Long lDefaultWidth, Long lDefaultHeight) {
    const bool bIsMDIChild = m_frmWindow->MDIChild();
    const Long lWidth = RoundToLong(bIsMDIChild ? m_frmOwner->ScaleWidth() : m_frmOwner->Width());
    const Long lHeight = RoundToLong(bIsMDIChild ? m_frmOwner->ScaleHeight() : m_frmOwner->Height());
    m_frmWindow->Move(static_cast<Single>(CorvaneMain::CenteredLeft(lDefaultWidth, lWidth, 0)),
                      static_cast<Single>(CorvaneMain::CenteredTop(lDefaultHeight, lHeight, 0)),
                      static_cast<Single>(lDefaultWidth), static_cast<Single>(lDefaultHeight));
}

void Window::Terminate() try {
    if (m_frmWindow)
        Hide();
    const Ref<Form> frmWindow = m_frmWindow; // goes with the unload
    frmWindow->Unload();
} catch (...) {
    Reraise("Window", "Terminate");
}

void Window::Show() try {
    const Ref<Window> oSelf(this);
    const Ref<Form> frmWindow = m_frmWindow;
    if (frmWindow->MDIChild()) {
        frmWindow->Show(ShowMode::Modeless, nullptr);
        frmWindow->Refresh();
    } else if (m_bIsModal) {
        frmWindow->Show(ShowMode::Modal, m_frmOwner);
    } else {
        frmWindow->Show(ShowMode::Modeless, m_frmOwner);
        frmWindow->Refresh();
    }
} catch (...) {
    Reraise("Window", "Show");
}

void Window::Hide() try { m_frmWindow->Hide(); } catch (...) {
    Reraise("Window", "Hide");
}

FormState Window::WindowState() const try { return m_frmWindow->WindowState(); } catch (...) {
    Reraise("Window", "WindowState (Get)");
}

void Window::SetWindowState(FormState eState) try { m_frmWindow->SetWindowState(eState); } catch (...) {
    Reraise("Window", "WindowState (Let)");
}

bool Window::IsMDIChild() const try { return m_frmWindow->MDIChild(); } catch (...) {
    Reraise("Window", "IsMDIChild (Get)");
}

std::string Window::Caption() const try { return m_frmWindow->Caption(); } catch (...) {
    Reraise("Window", "Caption (Get)");
}

void Window::SetCaption(const std::string& sCaption) try { m_frmWindow->SetCaption(sCaption); } catch (...) {
    Reraise("Window", "Caption (Let)");
}

bool Window::IsCommandEnabled(StandardCommandConstants eStandardButton) const {
    return m_oWindowForm->IsCommandEnabled(eStandardButton);
}

// What the form does in the following may end the window, which releases the form, so it is held while it runs.
void Window::SetIsCommandEnabled(StandardCommandConstants eStandardButton, bool bEnabled) {
    const Ref<IWindowForm> oWindowForm = m_oWindowForm;
    oWindowForm->SetIsCommandEnabled(eStandardButton, bEnabled);
}

void Window::ClickCommand(StandardCommandConstants eStandardButton) {
    const Ref<IWindowForm> oWindowForm = m_oWindowForm;
    oWindowForm->ClickCommand(eStandardButton);
}

Long Window::ActivePageIndex() const try { return m_oWindowForm->ActivePageIndex(); } catch (...) {
    Reraise("Window", "ActivePageIndex (Get)");
}

void Window::SetActivePageIndex(Long lIndex) try {
    const Ref<IWindowForm> oWindowForm = m_oWindowForm;
    oWindowForm->SetActivePageIndex(lIndex);
} catch (...) {
    Reraise("Window", "ActivePageIndex (Let)");
}

void Window::PageValidityChanged(const Ref<IPage>& oPage) try {
    const Ref<IWindowForm> oWindowForm = m_oWindowForm;
    oWindowForm->PageValidityChanged(oPage);
} catch (...) {
    Reraise("Window", "PageValidityChanged");
}

bool Window::CanBeSaved() const try { return m_oWindowForm->CanBeSaved(); } catch (...) {
    Reraise("Window", "CanBeSaved (Get)");
}

void Window::Save() try {
    const Ref<IWindowForm> oWindowForm = m_oWindowForm;
    oWindowForm->Save();
} catch (...) {
    Reraise("Window", "Save");
}

void Window::ExitWindow(bool bWasWindowCancelled) try {
    const Ref<Window> oSelf(this);
    m_bWasWindowCancelled = bWasWindowCancelled;
    if (const Ref<IWindowExitHandler> oWindowExitHandler = m_oWindowExitHandler)
        oWindowExitHandler->OnExit(oSelf, bWasWindowCancelled);
    for (Subscription* pSubscription : {&m_oLoad, &m_oUnload, &m_oActivate, &m_oDeactivate})
        pSubscription->Cancel();
    m_frmWindow = nullptr;
    m_oWindowForm = nullptr;
    m_frmOwner = nullptr;
    m_oWindowExitHandler = nullptr;
    m_oBusinessContext = nullptr;
    m_oWindowDef = nullptr;
    m_oWindowController = nullptr;
} catch (...) {
    Reraise("Window", "IWindowFormController_ExitWindow");
}

// The calls below hold all that they use: a page may end its window or the application, and the form's own reference
// to the page may be the one that goes. What a page's procedure fails with says whose it was.
template <class Call>
void Window::CallPage(const Ref<Object>& oPageObj, const char* sProcedure, Call fnCall) {
    try {
        fnCall();
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(oPageObj, sProcedure));
    }
}

void Window::PageInitialize(const Ref<Object>& oPageObj, const Ref<PageDef>& oPageDef) try {
    const Ref<Window> oSelf(this);
    const Ref<Object> oPage = oPageObj;
    const Ref<IWindowController> oController = m_oWindowController;
    const Entering oEntering(oPage);
    const Ref<IPage> oInner = CorvaneMain::QueryPage(oPage);
    CallPage(oPage, "Initialize", [&] { oInner->Initialize(oSelf, oPageDef, m_oBusinessContext, nullptr); });
    oController->PageInitialize(oPage);
} catch (...) {
    Reraise("Window", "IWindowFormController_PageInitialize");
}

void Window::PageTerminate(const Ref<Object>& oPageObj) try {
    const Ref<Window> oSelf(this);
    const Ref<Object> oPage = oPageObj;
    const Ref<IWindowController> oController = m_oWindowController;
    const Entering oEntering(oPage);
    const Ref<IPage> oInner = CorvaneMain::QueryPage(oPage);
    oController->PageTerminate(oPage);
    CallPage(oPage, "Terminate", [&] { oInner->Terminate(nullptr); });
} catch (...) {
    Reraise("Window", "IWindowFormController_PageTerminate");
}

void Window::PageActivate(const Ref<Object>& oPageObj) try {
    const Ref<Window> oSelf(this);
    const Ref<Object> oPage = oPageObj;
    const Ref<IWindowController> oController = m_oWindowController;
    const Entering oEntering(oPage);
    oController->PageActivate(oPage);
    const Ref<IPage> oInner = CorvaneMain::QueryPage(oPage);
    CallPage(oPage, "Activate", [&] { oInner->Activate(); });
} catch (...) {
    Reraise("Window", "IWindowFormController_PageActivate");
}

void Window::PageDeactivate(const Ref<Object>& oPageObj) try {
    const Ref<Window> oSelf(this);
    const Ref<Object> oPage = oPageObj;
    const Ref<IWindowController> oController = m_oWindowController;
    const Entering oEntering(oPage);
    oController->PageDeactivate(oPage);
    const Ref<IPage> oInner = CorvaneMain::QueryPage(oPage);
    CallPage(oPage, "Deactivate", [&] { oInner->Deactivate(); });
} catch (...) {
    Reraise("Window", "IWindowFormController_PageDeactivate");
}

// The form's events.
void Window::TellController(const char* sEvent, void (IWindowController::*fnTell)(const Ref<Window>&)) try {
    const Ref<Window> oSelf(this);
    const Ref<IWindowController> oController = m_oWindowController;
    ((*oController).*fnTell)(oSelf);
} catch (...) {
    Reraise("Window", std::string("m_frmWindow_") + sEvent);
}

} // namespace corvane
