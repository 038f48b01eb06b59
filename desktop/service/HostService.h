// The service behind the host's own definition file: commands of the desktop, on the public headers like any service's.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/menus/MenuSection.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "desktop/service/HostCommands.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

class HostService final : public Automation<HostService, IServiceAccess> {
public:
    // The beginnings of the names of entries that are made while the application runs.
    static constexpr const char* recentFiles = "DesktopRecentFile";
    static constexpr const char* layouts = "DesktopLayout";

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
    void OnLinkWithWindow() { m_commands.ToggleLink(); }
    void OnWelcome() { m_commands.ShowWelcome(); }
    void OnSaveLayout() { m_commands.SaveLayout(); }
    void OnManageLayouts() { m_commands.ManageLayouts(); }
    void OnManual() { m_commands.ShowManual(); }
    void OnAbout() { m_commands.ShowAbout(); }
    void OnSave() { m_commands.DoWithWindow(WindowCommand::Save); }
    void OnClose() { m_commands.DoWithWindow(WindowCommand::Close); }
    void OnSplitRight() { m_commands.DoWithWindow(WindowCommand::SplitRight); }
    void OnSplitBelow() { m_commands.DoWithWindow(WindowCommand::SplitBelow); }
    void OnMoveToNextGroup() { m_commands.DoWithWindow(WindowCommand::MoveToNextGroup); }
    void OnGoToNextGroup() { m_commands.DoWithWindow(WindowCommand::GoToNextGroup); }
    void OnOwnWindow() { m_commands.DoWithWindow(WindowCommand::OwnWindow); }
    void OnDock() { m_commands.DoWithWindow(WindowCommand::Dock); }
    void OnPin() { m_commands.DoWithWindow(WindowCommand::Pin); }
    void OnCloseOthers() { m_commands.DoWithWindow(WindowCommand::CloseOthers); }
    void OnResetLayout() { m_commands.DoWithWindow(WindowCommand::ResetLayout); }

    void Check(const std::string& action, bool checked) const {
        if (const auto items = m_serviceBase->ActionItems(); items && items->HasKey(action))
            items->Item(action)->SetChecked(checked);
    }
    // In the menu File: the names of the files, as users read them, with an entry behind them that clears the list.
    void ShowRecentFiles(const std::vector<std::string>& names, const std::string& clear) {
        m_recentFiles.Clear();
        for (std::size_t i = 0; i < names.size(); ++i)
            m_recentFiles.Add("&" + std::to_string(i + 1) + " " + MenuSection::Verbatim(names[i]),
                              [this, place = static_cast<Long>(i + 1)] { m_commands.OpenRecentFile(place); });
        if (!names.empty())
            m_recentFiles.Add(clear, [this] { m_commands.ClearRecentFiles(); });
    }
    // In the menu Window > Layouts.
    void ShowLayouts(const std::vector<std::string>& names) {
        m_layouts.Clear();
        for (const std::string& name : names)
            m_layouts.Add(MenuSection::Verbatim(name), [this, name] { m_commands.UseLayout(name); });
    }

    // Nothing for an action that the definition hasn't, or before the service is initialized.
    void Enable(const std::string& action, bool enabled) const {
        const auto items = m_serviceBase->ActionItems();
        if (items && items->HasKey(action) && items->Item(action)->Enabled() != enabled)
            items->Item(action)->SetEnabled(enabled);
    }

    std::string_view TypeName() const override { return "HostService"; }

    static constexpr auto Members = MemberTable(
        Method("OnPreferences", &HostService::OnPreferences),
        Method("OnCommandPalette", &HostService::OnCommandPalette), Method("OnShortcuts", &HostService::OnShortcuts),
        Method("OnCustomize", &HostService::OnCustomize), Method("OnInspector", &HostService::OnInspector),
        Method("OnLog", &HostService::OnLog), Method("OnJobs", &HostService::OnJobs),
        Method("OnWelcome", &HostService::OnWelcome), Method("OnLinkWithWindow", &HostService::OnLinkWithWindow),
        Method("OnSaveLayout", &HostService::OnSaveLayout), Method("OnManageLayouts", &HostService::OnManageLayouts),
        Method("OnManual", &HostService::OnManual), Method("OnAbout", &HostService::OnAbout),
        Method("OnSave", &HostService::OnSave), Method("OnClose", &HostService::OnClose),
        Method("OnSplitRight", &HostService::OnSplitRight), Method("OnSplitBelow", &HostService::OnSplitBelow),
        Method("OnMoveToNextGroup", &HostService::OnMoveToNextGroup),
        Method("OnGoToNextGroup", &HostService::OnGoToNextGroup), Method("OnOwnWindow", &HostService::OnOwnWindow),
        Method("OnDock", &HostService::OnDock), Method("OnPin", &HostService::OnPin),
        Method("OnCloseOthers", &HostService::OnCloseOthers), Method("OnResetLayout", &HostService::OnResetLayout));

private:
    HostCommands& m_commands;
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
    MenuSection m_recentFiles{*this, "File", recentFiles, "Close", true};
    MenuSection m_layouts{*this, "Window.Layouts", layouts, "ManageLayouts", true};
};

} // namespace corvane::desktop
