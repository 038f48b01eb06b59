// The service behind the host's own definition file: commands of the desktop, on the public headers like any service's.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

namespace corvane::desktop {

// What can be done to the active window, which is in a tab, and to all.
enum class WindowCommand {
    SplitRight,
    SplitBelow,
    MoveToNextGroup,
    GoToNextGroup,
    OwnWindow,
    Dock,
    Pin,
    CloseOthers,
    ResetLayout
};

// What the host does when a command of its service is chosen.
class HostCommands {
public:
    virtual void DoWithWindow(WindowCommand command) = 0;
    virtual void ShowManual() = 0;
    virtual void ShowAbout() = 0;
    virtual void ShowPreferences() = 0;
    virtual void ShowPalette() = 0;
    virtual void ShowShortcuts() = 0;
    virtual void ShowCustomize() = 0;
    virtual void ShowInspector() = 0;
    virtual void ShowLog() = 0;
    virtual void ShowJobs() = 0;

protected:
    ~HostCommands() = default;
};

class HostService final : public Automation<HostService, IServiceAccess> {
public:
    // The commands outlive the service.
    explicit HostService(HostCommands& commands) : m_commands(commands) {}

    Ref<IService> Service() override { return m_serviceBase; }
    void OnPreferences() { m_commands.ShowPreferences(); }
    void OnCommandPalette() { m_commands.ShowPalette(); }
    void OnShortcuts() { m_commands.ShowShortcuts(); }
    void OnCustomize() { m_commands.ShowCustomize(); }
    void OnInspector() { m_commands.ShowInspector(); }
    void OnLog() { m_commands.ShowLog(); }
    void OnJobs() { m_commands.ShowJobs(); }
    void OnManual() { m_commands.ShowManual(); }
    void OnAbout() { m_commands.ShowAbout(); }
    void OnSplitRight() { m_commands.DoWithWindow(WindowCommand::SplitRight); }
    void OnSplitBelow() { m_commands.DoWithWindow(WindowCommand::SplitBelow); }
    void OnMoveToNextGroup() { m_commands.DoWithWindow(WindowCommand::MoveToNextGroup); }
    void OnGoToNextGroup() { m_commands.DoWithWindow(WindowCommand::GoToNextGroup); }
    void OnOwnWindow() { m_commands.DoWithWindow(WindowCommand::OwnWindow); }
    void OnDock() { m_commands.DoWithWindow(WindowCommand::Dock); }
    void OnPin() { m_commands.DoWithWindow(WindowCommand::Pin); }
    void OnCloseOthers() { m_commands.DoWithWindow(WindowCommand::CloseOthers); }
    void OnResetLayout() { m_commands.DoWithWindow(WindowCommand::ResetLayout); }

    std::string_view TypeName() const override { return "HostService"; }

    static constexpr auto Members = MemberTable(
        Method("OnPreferences", &HostService::OnPreferences),
        Method("OnCommandPalette", &HostService::OnCommandPalette), Method("OnShortcuts", &HostService::OnShortcuts),
        Method("OnCustomize", &HostService::OnCustomize), Method("OnInspector", &HostService::OnInspector),
        Method("OnLog", &HostService::OnLog), Method("OnJobs", &HostService::OnJobs),
        Method("OnManual", &HostService::OnManual), Method("OnAbout", &HostService::OnAbout),
        Method("OnSplitRight", &HostService::OnSplitRight), Method("OnSplitBelow", &HostService::OnSplitBelow),
        Method("OnMoveToNextGroup", &HostService::OnMoveToNextGroup),
        Method("OnGoToNextGroup", &HostService::OnGoToNextGroup), Method("OnOwnWindow", &HostService::OnOwnWindow),
        Method("OnDock", &HostService::OnDock), Method("OnPin", &HostService::OnPin),
        Method("OnCloseOthers", &HostService::OnCloseOthers), Method("OnResetLayout", &HostService::OnResetLayout));

private:
    HostCommands& m_commands;
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

} // namespace corvane::desktop
