// The service behind the host's own definition file: commands of the desktop, on the public headers like any service's.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

#include <functional>

namespace corvane::desktop {

// What the host does when a command of its service is chosen.
struct HostCommands {
    std::function<void()> fnPreferences;
    std::function<void()> fnPalette;
    std::function<void()> fnShortcuts;
    std::function<void()> fnCustomize;
    std::function<void()> fnInspector;
    std::function<void()> fnLog;
};

class HostService final : public Automation<HostService, IServiceAccess> {
public:
    explicit HostService(HostCommands oCommands) : m_oCommands(std::move(oCommands)) {}

    Ref<IService> Service() override { return m_oServiceBase; }
    void OnPreferences() { m_oCommands.fnPreferences(); }
    void OnCommandPalette() { m_oCommands.fnPalette(); }
    void OnShortcuts() { m_oCommands.fnShortcuts(); }
    void OnCustomize() { m_oCommands.fnCustomize(); }
    void OnInspector() { m_oCommands.fnInspector(); }
    void OnLog() { m_oCommands.fnLog(); }

    std::string_view TypeName() const override { return "HostService"; }

    static constexpr auto Members =
        MemberTable(Method("OnPreferences", &HostService::OnPreferences),
                    Method("OnCommandPalette", &HostService::OnCommandPalette),
                    Method("OnShortcuts", &HostService::OnShortcuts), Method("OnCustomize", &HostService::OnCustomize),
                    Method("OnInspector", &HostService::OnInspector), Method("OnLog", &HostService::OnLog));

private:
    HostCommands m_oCommands;
    Ref<ServiceBase> m_oServiceBase = New<ServiceBase>();
};

} // namespace corvane::desktop
