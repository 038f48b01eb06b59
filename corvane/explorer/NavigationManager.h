// The switchboard between what the user navigates, explorer items and pages, and what the user can do, menus and
// toolbars. It has no state: attachments are in the tools and action items.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"

#include <string>
#include <vector>

namespace corvane {

class ExplorerManager;
class IExplorerItem;
class IPage;
class MdiForm;
class MenuManager;
class PanelForm;
class WindowManager;

class __attribute__((visibility("default"))) NavigationManager final : public Automation<NavigationManager> {
public:
    NavigationManager();
    ~NavigationManager() override;

    // Builds the menus, then the explorer, and listens to the windows from then on.
    void Initialize(const Ref<MdiForm>& frmMain, const Ref<PanelForm>& frmExplorerPanel);
    // Whether the object is an explorer item built on an ExplorerItemBase; true when it has none to show. Never fails.
    [[nodiscard]] bool IsExplorerItemAlive(const Ref<Object>& oExplorerItemSubclass) const noexcept;
    [[nodiscard]] Ref<corvane::ExplorerManager> ExplorerManager() const;
    [[nodiscard]] Ref<corvane::MenuManager> MenuManager() const;
    // Of the main form. Fails with 91 before Initialize.
    void SetCaption(const std::string& sCaption);

    std::string_view TypeName() const override { return "NavigationManager"; }

    static constexpr auto Members = MemberTable(Method("Initialize", &NavigationManager::Initialize),
                                                Method("IsExplorerItemAlive", &NavigationManager::IsExplorerItemAlive),
                                                Property("ExplorerManager", &NavigationManager::ExplorerManager),
                                                Property("MenuManager", &NavigationManager::MenuManager),
                                                Method("SetCaption", &NavigationManager::SetCaption));

private:
    using Handler = void (NavigationManager::*)(const Ref<Object>&);
    void Subscribe(Event<const Ref<Object>&>& oEvent, Handler fnHandler);
    void SubscribeToExplorer();
    void SubscribeToWindows();
    void m_oExplorerManager_onAdd(const Ref<Object>& oExplorerItemObj);
    void m_oExplorerManager_onRemove(const Ref<Object>& oExplorerItemObj);
    void m_oExplorerManager_OnOpen(const Ref<Object>& oExplorerItemObj);
    void m_oExplorerManager_OnActive(const Ref<Object>& oExplorerItemObj);
    void m_oExplorerManager_OnInactive(const Ref<Object>& oExplorerItemObj);
    void m_oExplorerManager_OnContextMenu(const Ref<Object>& oExplorerItemObj);
    void m_oWindowManager_PageInitialize(const Ref<Object>& oPageObj);
    void m_oWindowManager_PageActivate(const Ref<Object>& oPageObj);
    void m_oWindowManager_PageDeactivate(const Ref<Object>& oPageObj);

    Ref<MdiForm> m_frmMain;
    Ref<corvane::MenuManager> m_oMenuManager;
    Ref<corvane::ExplorerManager> m_oExplorerManager;
    Ref<corvane::WindowManager> m_oWindowManager;
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane
