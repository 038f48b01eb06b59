// The one place through which windows are opened, and the registry of the open ones. It reports what happens to
// windows and pages by its events and doesn't know commands.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/windows/IWindowController.h"
#include "corvane/windows/IWindowExitHandler.h"
#include "corvane/windows/IWindowFormFactory.h"

#include <string>

namespace corvane {

class Window;

class __attribute__((visibility("default"))) WindowManager final : public Automation<WindowManager, IWindowController> {
public:
    WindowManager();
    ~WindowManager() override;

    void Initialize(const Ref<MdiForm>& frmMain, const Ref<IWindowFormFactory>& oWindowFormFactory);
    // Whether the object is a page built on a PageBase; true when it has none to show. Never fails.
    [[nodiscard]] bool IsPageAlive(const Ref<Object>& oPageSubclass) const noexcept;

    // After Initialize.
    // Opens a window of that definition, or shows the open one of that key, whatever the other arguments say. -1
    // means that the definition decides. With bHide nothing is shown; with bOpenWindowAsync the call returns first
    // and the window comes 50 ms later. A modal window has ended when the call returns. Nothing is shown when a page
    // has ended the application. Fails with ObjectErrorBase for
    // a modal MDI child, with 5 for an unknown definition; the hourglass stays then.
    Ref<Window>
    OpenWindow(const std::string& sWindowName, const Ref<Object>& oBusinessContext,
               const Ref<IWindowExitHandler>& oWindowExitHandler = nullptr,
               WindowShowModeConstants eWindowShowMode = WindowShowModeConstants::cvDefinitionDefault,
               WindowStateConstants eWindowState = WindowStateConstants::cvDefinitionDefault,
               MDIWindowTypeConstants eMDIWindowType = MDIWindowTypeConstants::cvDefinitionDefault,
               WindowTypeConstants eWindowType = WindowTypeConstants::cvDefinitionDefault,
               BusinessContextTypeConstants eBusinessContextType = BusinessContextTypeConstants::cvDefinitionDefault,
               ShowApplyCommandConstants eShowApplyCommand = ShowApplyCommandConstants::cvDefinitionDefault,
               const std::string& sKey = {}, bool bHide = false, bool bOpenWindowAsync = false);
    // From their form's load to its unload, by key; the collection itself.
    [[nodiscard]] const Ref<KeyedCollection<Ref<Window>>>& Windows() const { return m_colWindows; }
    // The window that last reported activation, or nothing. Setting shows it; fails with 91 for nothing when one is
    // active.
    [[nodiscard]] const Ref<Window>& ActiveWindow() const { return m_oActiveWindow; }
    void SetActiveWindow(const Ref<Window>& oWindow);
    // Unloads the main form's active child until there is none.
    void CloseAll();
    // The main form's member of that name. Fails with 438 when there is none.
    [[nodiscard]] Ref<Object> CommonDialog() const;
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_frmMain; }
    // Whether the main form is going away.
    [[nodiscard]] bool IsAppClosing() const { return m_bIsAppClosing; }
    void SetIsAppClosing(bool bIsAppClosing) { m_bIsAppClosing = bIsAppClosing; }

    Event<const Ref<Window>&> WindowInitializeEvent;
    Event<const Ref<Window>&> WindowTerminateEvent;
    Event<const Ref<Window>&> WindowActivateEvent;   // ActiveWindow is still the old one
    Event<const Ref<Window>&> WindowDeactivateEvent; // ActiveWindow is nothing
    Event<const Ref<Object>&> PageInitializeEvent;   // the page's own object, each time
    Event<const Ref<Object>&> PageTerminateEvent;
    Event<const Ref<Object>&> PageActivateEvent; // these two strictly alternate
    Event<const Ref<Object>&> PageDeactivateEvent;

    // As IWindowController, by the windows.
    void WindowInitialize(const Ref<Window>& oWindow) override;
    void WindowTerminate(const Ref<Window>& oWindow) override;
    void WindowActivate(const Ref<Window>& oWindow) override;
    void WindowDeactivate(const Ref<Window>& oWindow) override;
    void PageInitialize(const Ref<Object>& oPageObj) override;
    void PageTerminate(const Ref<Object>& oPageObj) override;
    void PageActivate(const Ref<Object>& oPageObj) override;
    void PageDeactivate(const Ref<Object>& oPageObj) override;

    // By a form whose reports of a page's deactivation fail again and again: the page isn't the active one any more,
    // and nobody hears of it. Otherwise it would stay the active page after its end, and fail every activation.
    void ForgetPage(const Ref<Object>& oPageObj);

    std::string_view TypeName() const override { return "WindowManager"; }

    static constexpr auto Members = MemberTable(
        Method("Initialize", &WindowManager::Initialize), Method("IsPageAlive", &WindowManager::IsPageAlive),
        Method("OpenWindow", &WindowManager::OpenWindow), Property("Windows", &WindowManager::Windows),
        Property("ActiveWindow", &WindowManager::ActiveWindow, &WindowManager::SetActiveWindow),
        Method("CloseAll", &WindowManager::CloseAll), Property("CommonDialog", &WindowManager::CommonDialog),
        Property("MainForm", &WindowManager::MainForm),
        Property("IsAppClosing", &WindowManager::IsAppClosing, &WindowManager::SetIsAppClosing));

private:
    Ref<MdiForm> m_frmMain;
    Ref<IWindowFormFactory> m_oWindowFormFactory;
    Ref<KeyedCollection<Ref<Window>>> m_colWindows;
    Ref<Window> m_oActiveWindow;
    Ref<Object> m_oActivePage;
    bool m_bIsAppClosing = false;
};

} // namespace corvane
