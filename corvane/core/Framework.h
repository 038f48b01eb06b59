// The root object: it owns the managers, starts and ends the application, and provides the commands that
// every application of this kind has.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/IPictureLoader.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/services/IServiceAccess.h"

#include <string>

namespace corvane {

class ActionItem;
class CVProgressBar;
class IWindowFormFactory;
class MdiForm;
class NavigationManager;
class PanelForm;
class ServiceBase;
class ServiceManager;
class WindowManager;

// A definition file whose ProgID is "Corvane.Framework" makes the commands menu entries. Once the main form has
// unloaded, the managers and the progress bar are nothing.
class __attribute__((visibility("default"))) Framework final : public Automation<Framework, IServiceAccess> {
public:
    Framework();
    ~Framework() override;

    [[nodiscard]] Ref<corvane::ServiceManager> ServiceManager() const;
    [[nodiscard]] Ref<corvane::WindowManager> WindowManager() const;
    [[nodiscard]] Ref<corvane::NavigationManager> NavigationManager() const;
    // The status line's text; empty before Initialize.
    [[nodiscard]] std::string Status() const;
    void SetStatus(const std::string& sStatus);

    // By the host, once: reads the definitions, creates the services, builds menus, toolbars and explorer. The main
    // form has a member "ActiveBar" whose band "StatusBar" holds the tool "Status".
    void Initialize(const Ref<MdiForm>& frmMain, const Ref<PanelForm>& frmExplorerPanel,
                    const Ref<IWindowFormFactory>& oWindowFormFactory);
    // By the host, once, after Initialize: starts the services. Both end at once, without a failure, when a plug-in
    // ends the application; the main form isn't loaded then, and the host doesn't enter its message loop.
    void Start();

    // After Initialize. The toggles invert the item's check mark and show or hide accordingly.
    void EnableStatusBar(const Ref<ActionItem>& oActionItem);
    // The picture of that file in the folder "Images", kept from then on; nothing when it can't be loaded.
    [[nodiscard]] Ref<Picture> GetImage(const std::string& sImageName);
    // The item's name is the toolbar's.
    void ViewToolbars(const Ref<ActionItem>& oActionItem);
    // By the item's name: TileHorizontally, TileVertically, Cascade, ArrangeIcons, CloseAll; another does nothing.
    void WindowAction(const Ref<ActionItem>& oActionItem);
    // Unloads the main form.
    void AppExit();
    void ViewNavigation(const Ref<ActionItem>& oActionItem);
    [[nodiscard]] Ref<corvane::CVProgressBar> CVProgressBar() const;
    void PrintDesktop();
    // Prints the active child form, if there is one.
    void PrintMainWindow();
    // Prints the main form.
    void PrintAppWindow();
    [[nodiscard]] std::string CVIIf(bool Expression, const std::string& TruePart, const std::string& FalsePart) const;
    // The case of that number from 0 to 11, else CaseElse, also for a case that is "[Unspecified]".
    [[nodiscard]] std::string
    CVSelectCase(Long Expression, const std::string& Case0, const std::string& Case1,
                 const std::string& Case2 = Unspecified, const std::string& Case3 = Unspecified,
                 const std::string& Case4 = Unspecified, const std::string& Case5 = Unspecified,
                 const std::string& Case6 = Unspecified, const std::string& Case7 = Unspecified,
                 const std::string& Case8 = Unspecified, const std::string& Case9 = Unspecified,
                 const std::string& Case10 = Unspecified, const std::string& Case11 = Unspecified,
                 const std::string& CaseElse = {}) const;
    // Case0 for 0, else CaseElse.
    [[nodiscard]] std::string CVSelectYesNo(Long Expression, const std::string& Case0,
                                            const std::string& CaseElse = {}) const;

    // Called when the library is unloaded: releases what is left if services failed to terminate. No effect afterwards.
    void LetGo();
    // By the host, when the main form's unload has failed because a service failed to end: the services that haven't
    // been reached end, too, each failure being shown, and everything is let go, so that the form's next unload takes
    // it away. Harmless otherwise.
    void EndAfterFailure();

    Ref<IService> Service() override;

    std::string_view TypeName() const override { return "Framework"; }

    static constexpr const char* Unspecified = "[Unspecified]";
    static constexpr auto Members = MemberTable(
        Property("ServiceManager", &Framework::ServiceManager), Property("WindowManager", &Framework::WindowManager),
        Property("NavigationManager", &Framework::NavigationManager),
        Property("Status", &Framework::Status, &Framework::SetStatus), Method("Initialize", &Framework::Initialize),
        Method("Start", &Framework::Start), Method("EnableStatusBar", &Framework::EnableStatusBar),
        Method("GetImage", &Framework::GetImage), Method("ViewToolbars", &Framework::ViewToolbars),
        Method("WindowAction", &Framework::WindowAction), Method("AppExit", &Framework::AppExit),
        Method("ViewNavigation", &Framework::ViewNavigation), Property("CVProgressBar", &Framework::CVProgressBar),
        Method("PrintDesktop", &Framework::PrintDesktop), Method("PrintMainWindow", &Framework::PrintMainWindow),
        Method("PrintAppWindow", &Framework::PrintAppWindow), Method("CVIIf", &Framework::CVIIf),
        Method("CVSelectCase", &Framework::CVSelectCase), Method("CVSelectYesNo", &Framework::CVSelectYesNo));

private:
    void m_frmMain_Unload();
    [[nodiscard]] Ref<ActiveBar> MainActiveBar() const;

    Ref<Tool> m_oStatusTool;
    Ref<corvane::ServiceManager> m_oServiceManager;
    Ref<corvane::WindowManager> m_oWindowManager;
    Ref<corvane::NavigationManager> m_oNavigationManager;
    Ref<corvane::CVProgressBar> m_oCVProgressBar;
    Ref<KeyedCollection<Ref<Picture>>> m_colImages; // by file name
    Ref<MdiForm> m_frmMain;
    Subscription m_oMainUnload;
    Ref<ServiceBase> m_oServiceBase;
};

} // namespace corvane
