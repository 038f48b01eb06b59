// The library's half of one open window: it binds the host's form to the window manager, the pages and the exit
// handler. It holds no command logic; that is the form's.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/platform/controls/Form.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/IWindowController.h"
#include "corvane/windows/IWindowExitHandler.h"
#include "corvane/windows/IWindowForm.h"
#include "corvane/windows/IWindowFormController.h"

#include <string>

namespace corvane {

// After ExitWindow the plain values still answer; what needs the form fails with 91.
class __attribute__((visibility("default"))) Window final : public Automation<Window, IWindowFormController> {
public:
    Window();
    ~Window() override;

    // Loads, initializes, sizes and places the form, without showing it. An empty key becomes the window's identity
    // number. Fails with 13 when the form isn't a Form; after the form's load a failure leaves the window registered.
    void Initialize(const Ref<IWindowController>& oWindowController, const Ref<corvane::WindowDef>& oWindowDef,
                    const Ref<IWindowForm>& oWindowForm, const std::string& sKey, const Ref<Object>& oBusinessContext,
                    const Ref<IWindowExitHandler>& oWindowExitHandler, bool bIsModal, FormState eWindowState,
                    WindowTypeConstants eWindowType, bool bIsNewBusinessContext, bool bIsApplyCommandShown,
                    const Ref<Form>& frmOwner);

    // After Initialize.
    // Hides and unloads the form. Fails with 91 after the window's end.
    void Terminate();
    // A modal window returns when it has closed. Harmless for a window that is visible.
    void Show();
    void Hide();
    [[nodiscard]] Ref<corvane::WindowDef> WindowDef() const override { return m_oWindowDef; }
    [[nodiscard]] const std::string& Key() const { return m_sKey; }
    [[nodiscard]] const Ref<Object>& BusinessContext() const { return m_oBusinessContext; }
    [[nodiscard]] bool IsModal() const { return m_bIsModal; }
    [[nodiscard]] WindowTypeConstants WindowType() const { return m_eWindowType; }
    [[nodiscard]] bool IsNewBusinessContext() const { return m_bIsNewBusinessContext; }
    [[nodiscard]] bool IsApplyCommandShown() const { return m_bIsApplyCommandShown; }
    [[nodiscard]] FormState WindowState() const;
    void SetWindowState(FormState eState);
    [[nodiscard]] bool IsMDIChild() const;
    [[nodiscard]] std::string Caption() const;
    void SetCaption(const std::string& sCaption);
    [[nodiscard]] bool IsCommandEnabled(StandardCommandConstants eStandardButton) const;
    void SetIsCommandEnabled(StandardCommandConstants eStandardButton, bool bEnabled);
    void ClickCommand(StandardCommandConstants eStandardButton);
    [[nodiscard]] Long ActivePageIndex() const;
    void SetActivePageIndex(Long lIndex);
    void PageValidityChanged(const Ref<IPage>& oPage);
    // True until the form has said otherwise at its end.
    [[nodiscard]] bool WasWindowCancelled() const { return m_bWasWindowCancelled; }
    [[nodiscard]] bool CanBeSaved() const;
    void Save();

    // As IWindowFormController, by the form.
    void ExitWindow(bool bWasWindowCancelled) override;
    void PageInitialize(const Ref<Object>& oPageObj, const Ref<PageDef>& oPageDef) override;
    void PageTerminate(const Ref<Object>& oPageObj) override;
    void PageActivate(const Ref<Object>& oPageObj) override;
    void PageDeactivate(const Ref<Object>& oPageObj) override;

    std::string_view TypeName() const override { return "Window"; }

    static constexpr auto Members = MemberTable(
        Method("Initialize", &Window::Initialize), Method("Terminate", &Window::Terminate),
        Method("Show", &Window::Show), Method("Hide", &Window::Hide), Property("WindowDef", &Window::WindowDef),
        Property("Key", &Window::Key), Property("BusinessContext", &Window::BusinessContext),
        Property("IsModal", &Window::IsModal), Property("WindowType", &Window::WindowType),
        Property("IsNewBusinessContext", &Window::IsNewBusinessContext),
        Property("IsApplyCommandShown", &Window::IsApplyCommandShown),
        Property("WindowState", &Window::WindowState, &Window::SetWindowState),
        Property("IsMDIChild", &Window::IsMDIChild), Property("Caption", &Window::Caption, &Window::SetCaption),
        Method("IsCommandEnabled", &Window::IsCommandEnabled),
        Method("SetIsCommandEnabled", &Window::SetIsCommandEnabled), Method("ClickCommand", &Window::ClickCommand),
        Property("ActivePageIndex", &Window::ActivePageIndex, &Window::SetActivePageIndex),
        Method("PageValidityChanged", &Window::PageValidityChanged),
        Property("WasWindowCancelled", &Window::WasWindowCancelled), Property("CanBeSaved", &Window::CanBeSaved),
        Method("Save", &Window::Save));

private:
    void SubscribeToForm();
    void PlaceForm(Long lDefaultWidth, Long lDefaultHeight);
    void TellController(const char* sEvent, void (IWindowController::*fnTell)(const Ref<Window>&));
    template <class Call>
    static void CallPage(const Ref<Object>& oPageObj, const char* sProcedure, Call fnCall);

    Ref<IWindowController> m_oWindowController;
    Ref<corvane::WindowDef> m_oWindowDef;
    Ref<IWindowForm> m_oWindowForm;
    std::string m_sKey;
    Ref<Object> m_oBusinessContext;
    Ref<IWindowExitHandler> m_oWindowExitHandler;
    bool m_bIsModal = false;
    WindowTypeConstants m_eWindowType = WindowTypeConstants::cvWindow;
    bool m_bIsNewBusinessContext = false;
    bool m_bIsApplyCommandShown = false;
    Ref<Form> m_frmOwner;
    bool m_bWasWindowCancelled = false;
    Ref<Form> m_frmWindow; // the same object as m_oWindowForm
    Subscription m_oLoad;
    Subscription m_oUnload;
    Subscription m_oActivate;
    Subscription m_oDeactivate;
};

} // namespace corvane
