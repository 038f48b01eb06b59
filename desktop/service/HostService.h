// The service behind the host's own definition file: commands of the desktop, on the public headers like any service's.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

namespace corvane::desktop {

// What the host does when a command of its service is chosen.
class HostCommands {
public:
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

    std::string_view TypeName() const override { return "HostService"; }

    static constexpr auto Members = MemberTable(
        Method("OnPreferences", &HostService::OnPreferences),
        Method("OnCommandPalette", &HostService::OnCommandPalette), Method("OnShortcuts", &HostService::OnShortcuts),
        Method("OnCustomize", &HostService::OnCustomize), Method("OnInspector", &HostService::OnInspector),
        Method("OnLog", &HostService::OnLog), Method("OnJobs", &HostService::OnJobs));

private:
    HostCommands& m_commands;
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

} // namespace corvane::desktop
