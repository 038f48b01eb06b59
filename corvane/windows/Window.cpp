#include "corvane/windows/Window.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/ObjectKeyProvider.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/MinWindowSize.h"

namespace corvane {

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
    m_frmWindow->Load();
    m_oWindowForm->Initialize(Ref<IWindowFormController>(this), m_bIsApplyCommandShown);
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
    m_oLoad = m_frmWindow->OnLoad.Subscribe([this] { m_frmWindow_Load(); });
    m_oUnload = m_frmWindow->OnUnload.Subscribe([this](bool& bRefused) {
        if (!bRefused)
            m_frmWindow_Unload();
    });
    m_oActivate = m_frmWindow->OnActivate.Subscribe([this] { m_frmWindow_Activate(); });
    m_oDeactivate = m_frmWindow->OnDeactivate.Subscribe([this] { m_frmWindow_Deactivate(); });
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
    if (m_oWindowExitHandler)
        m_oWindowExitHandler->OnExit(oSelf, bWasWindowCancelled);
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

void Window::PageInitialize(const Ref<Object>& oPageObj, const Ref<PageDef>& oPageDef) try {
    const Entering oEntering(oPageObj);
    CorvaneMain::QueryPage(oPageObj)->Initialize(Ref<Window>(this), oPageDef, m_oBusinessContext, nullptr);
    m_oWindowController->PageInitialize(oPageObj);
} catch (...) {
    Reraise("Window", "IWindowFormController_PageInitialize");
}

void Window::PageTerminate(const Ref<Object>& oPageObj) try {
    const Entering oEntering(oPageObj);
    const Ref<IPage> oPage = CorvaneMain::QueryPage(oPageObj);
    m_oWindowController->PageTerminate(oPageObj);
    oPage->Terminate(nullptr);
} catch (...) {
    Reraise("Window", "IWindowFormController_PageTerminate");
}

void Window::PageActivate(const Ref<Object>& oPageObj) try {
    const Entering oEntering(oPageObj);
    m_oWindowController->PageActivate(oPageObj);
    CorvaneMain::QueryPage(oPageObj)->Activate();
} catch (...) {
    Reraise("Window", "IWindowFormController_PageActivate");
}

void Window::PageDeactivate(const Ref<Object>& oPageObj) try {
    const Entering oEntering(oPageObj);
    m_oWindowController->PageDeactivate(oPageObj);
    CorvaneMain::QueryPage(oPageObj)->Deactivate();
} catch (...) {
    Reraise("Window", "IWindowFormController_PageDeactivate");
}

void Window::m_frmWindow_Load() try { m_oWindowController->WindowInitialize(Ref<Window>(this)); } catch (...) {
    Reraise("Window", "m_frmWindow_Load");
}

void Window::m_frmWindow_Unload() try { m_oWindowController->WindowTerminate(Ref<Window>(this)); } catch (...) {
    Reraise("Window", "m_frmWindow_Unload");
}

void Window::m_frmWindow_Activate() try { m_oWindowController->WindowActivate(Ref<Window>(this)); } catch (...) {
    Reraise("Window", "m_frmWindow_Activate");
}

void Window::m_frmWindow_Deactivate() try { m_oWindowController->WindowDeactivate(Ref<Window>(this)); } catch (...) {
    Reraise("Window", "m_frmWindow_Deactivate");
}

} // namespace corvane
