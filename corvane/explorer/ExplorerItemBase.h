// The base that an explorer item embeds: the library calls this object, and it notifies the item by its events.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/IActionsProvider.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/windows/IWindowExitHandler.h"

namespace corvane {

class __attribute__((visibility("default"))) ExplorerItemBase final : public IExplorerItem,
                                                                      public IActionsProvider,
                                                                      public IWindowExitHandler {
public:
    // How an item names itself, in its handler of InitializeEvent at the latest: nothing is raised. SetName is for
    // renaming by the user.
    void NameSilently(std::string sName) { m_sName = std::move(sName); }
    // Both nothing before the item has been added to the explorer.
    [[nodiscard]] Ref<ActionItemCollection> ActionItems() const override { return m_colActionItems; }
    [[nodiscard]] Ref<corvane::ExplorerItemDef> ExplorerItemDef() const override { return m_oExplorerItemDef; }
    // As ExplorerManager does, below the definition's parent.
    void AddToExplorer(const Ref<Object>& oExplorerItemObj, const std::string& sExplorerItemDefName);
    void DeleteFromExplorer(const Ref<Object>& oExplorerItemObj);

    Event<const Ref<KeyedCollection<Ref<Object>>>&> InitializeEvent; // fill the children, settle the name
    Event<std::string&> OnDisplayName;                               // replace the text that is shown
    Event<std::string&> OnBeforeRename;                              // replace the text that is edited
    Event<const std::string&> OnAfterRename;                         // the new name
    Event<const Ref<Window>&, bool> OnExitEvent;                     // the window, and whether it was cancelled

    // As IExplorerItem.
    void Initialize(const Ref<corvane::ExplorerItemDef>& oExplorerItemDef) override;
    [[nodiscard]] std::string Name() const override { return m_sName; }
    // A rename by the user: raises OnAfterRename. For naming itself an item calls NameSilently; a debug build says so
    // on standard error when an item's Initialize comes here.
    void SetName(const std::string& sName) override;
    [[nodiscard]] std::string DisplayName() override;
    [[nodiscard]] std::string EditName() override;
    [[nodiscard]] Ref<KeyedCollection<Ref<Object>>> Children() const override { return m_colChildren; }

    // As IActionsProvider and IWindowExitHandler.
    void Initialize(const Ref<ActionItemCollection>& oActionItems) override { m_colActionItems = oActionItems; }
    void OnExit(const Ref<Window>& oWindow, bool bWasCancelled) override;

    std::string_view TypeName() const override { return "ExplorerItemBase"; }

private:
    [[nodiscard]] std::string TextFrom(const Event<std::string&>& oEvent) const;

    std::string m_sName;
    bool m_bIsInitializing = false;
    Ref<corvane::ExplorerItemDef> m_oExplorerItemDef;
    Ref<KeyedCollection<Ref<Object>>> m_colChildren;
    Ref<ActionItemCollection> m_colActionItems;
};

} // namespace corvane
