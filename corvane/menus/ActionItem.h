// The live state of one action of one provider, between the procedure behind it and the tool that shows it.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/services/ActionItemDef.h"

#include <string>

namespace corvane {

// A provider changes what the user sees by writing here and never touches the control. The state is the provider's
// own and survives while no tool is attached.
class __attribute__((visibility("default"))) ActionItem final : public Automation<ActionItem> {
public:
    ActionItem();
    ~ActionItem() override;

    void Initialize(const Ref<Object>& oActionsProviderObj, const Ref<corvane::ActionItemDef>& oActionItemDef);
    // Procedure, states and name are the definition's; nothing of the tool changes.
    void CopyFrom(const corvane::ActionItemDef& oActionItemDef);
    [[nodiscard]] std::string Name() const { return m_sName; }
    void SetName(std::string sName);
    // The procedure's name; empty for an action that fires nothing. May differ from the definition's.
    [[nodiscard]] std::string Action() const { return m_sAction; }
    void SetAction(std::string sAction);
    [[nodiscard]] bool Checked() const { return m_bChecked; }
    void SetChecked(bool bChecked);
    [[nodiscard]] bool Enabled() const { return m_bEnabled; }
    void SetEnabled(bool bEnabled);
    [[nodiscard]] bool Visible() const { return m_bVisible; }
    void SetVisible(bool bVisible);
    // The texts of the action's entry in the menu of that path, which aren't stored in the item. Nothing happens when
    // there is no such entry.
    void SetCaption(const std::string& sPath, const std::string& sCaption);
    void SetDescription(const std::string& sPath, const std::string& sDescription);
    // The tool that shows the action at present; setting it copies no state.
    void SetTool(Ref<corvane::Tool> oTool);
    [[nodiscard]] Ref<corvane::ActionItemDef> ActionItemDef() const { return m_oActionItemDef; }
    // Calls the procedure on the provider's object by name, with this item if the definition says so. Nothing without
    // a provider or a name. Fails with 438 for an unknown name, with 450 for a wrong number of parameters, and as the
    // procedure fails.
    void OnAction();
    [[nodiscard]] Ref<corvane::Tool> Tool() const { return m_oTool; }

    // The object on which the procedure is called; nothing before Initialize.
    [[nodiscard]] const Ref<Object>& ActionsProviderObj() const { return m_oActionsProviderObj; }

    // An item and its provider refer to each other; this breaks the cycles of all items, when the library is unloaded.
    static void UntieAll();

    std::string_view TypeName() const override { return "ActionItem"; }

    static constexpr auto Members = MemberTable(
        Property("Name", &ActionItem::Name, &ActionItem::SetName),
        Property("Action", &ActionItem::Action, &ActionItem::SetAction),
        Property("Checked", &ActionItem::Checked, &ActionItem::SetChecked),
        Property("Enabled", &ActionItem::Enabled, &ActionItem::SetEnabled),
        Property("Visible", &ActionItem::Visible, &ActionItem::SetVisible), Method("OnAction", &ActionItem::OnAction),
        Method("Initialize", &ActionItem::Initialize), Method("SetCaption", &ActionItem::SetCaption),
        Method("SetDescription", &ActionItem::SetDescription),
        Property("Tool", &ActionItem::Tool, &ActionItem::SetTool),
        Property("ActionItemDef", &ActionItem::ActionItemDef),
        Property("ActionsProviderObj", &ActionItem::ActionsProviderObj));

private:
    SharedText m_sName;
    SharedText m_sAction;
    bool m_bChecked = false;
    bool m_bEnabled = true;
    bool m_bVisible = true;
    Ref<corvane::ActionItemDef> m_oActionItemDef;
    Ref<corvane::Tool> m_oTool;
    Ref<Object> m_oActionsProviderObj;
    ActionItem* m_pPrevious; // all living items form a ring
    ActionItem* m_pNext;
};

} // namespace corvane
