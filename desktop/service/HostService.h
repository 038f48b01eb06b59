// The service behind the host's own definition file: commands of the desktop, on the public headers like any service's.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

#include <functional>

namespace corvane::desktop {

// What the host does when a command of its service is chosen.
struct HostCommands {
    std::function<void()> preferences;
    std::function<void()> palette;
    std::function<void()> shortcuts;
    std::function<void()> customize;
    std::function<void()> inspector;
    std::function<void()> log;
};

class HostService final : public Automation<HostService, IServiceAccess> {
public:
    explicit HostService(HostCommands commands) : m_commands(std::move(commands)) {}

    Ref<IService> Service() override { return m_serviceBase; }
    void OnPreferences() { m_commands.preferences(); }
    void OnCommandPalette() { m_commands.palette(); }
    void OnShortcuts() { m_commands.shortcuts(); }
    void OnCustomize() { m_commands.customize(); }
    void OnInspector() { m_commands.inspector(); }
    void OnLog() { m_commands.log(); }

    std::string_view TypeName() const override { return "HostService"; }

    static constexpr auto Members =
        MemberTable(Method("OnPreferences", &HostService::OnPreferences),
                    Method("OnCommandPalette", &HostService::OnCommandPalette),
                    Method("OnShortcuts", &HostService::OnShortcuts), Method("OnCustomize", &HostService::OnCustomize),
                    Method("OnInspector", &HostService::OnInspector), Method("OnLog", &HostService::OnLog));

private:
    HostCommands m_commands;
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

} // namespace corvane::desktop
