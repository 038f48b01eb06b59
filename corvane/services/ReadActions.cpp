#include "corvane/services/ReadActions.h"

#include "corvane/core/Internals.h"

namespace corvane {

using CorvaneMain::AtLineOf;
using CorvaneMain::XMLAttributeText;

void ReadActionItemDefs(const Ref<IXmlNode>& oxmlDefinition, ActionItemDefCollection& colActionItemDefs) {
    const std::vector<Ref<IXmlNode>> aNodes = oxmlDefinition->SelectNodes("./ActionItems/ActionItem");
    colActionItemDefs.Reserve(aNodes.size());
    Ref<ActionItemDef> oBefore;
    for (const auto& oNode : aNodes) {
        auto oActionItemDef = New<ActionItemDef>();
        oActionItemDef->Initialize(oNode);
        if (oBefore)
            oActionItemDef->ShareTexts(*oBefore);
        AtLineOf(oNode, [&] { colActionItemDefs.AddShared(oActionItemDef, oActionItemDef->SharedName()); });
        oBefore = std::move(oActionItemDef);
    }
}

void ReadMenuItemDefs(const Ref<IXmlNode>& oxmlDefinition, const ActionItemDefCollection& colActionItemDefs,
                      MenuItemDefCollection& colMenuItemDefs, bool bWithKeys) {
    const std::vector<Ref<IXmlNode>> aNodes = oxmlDefinition->SelectNodes("./Menus/MenuItem");
    colMenuItemDefs.Reserve(aNodes.size());
    Ref<MenuItemDef> oBefore;
    for (const auto& oNode : aNodes) {
        auto oMenuItemDef = New<MenuItemDef>();
        oMenuItemDef->Initialize(oNode);
        if (oBefore)
            oMenuItemDef->ShareTexts(*oBefore);
        AtLineOf(oNode, [&] {
            oMenuItemDef->SetActionItemDef(colActionItemDefs.Item(XMLAttributeText(oNode, "ActionItem")));
            if (bWithKeys)
                colMenuItemDefs.Add(oMenuItemDef, oMenuItemDef->Key());
            else
                colMenuItemDefs.Add(oMenuItemDef);
        });
        oBefore = std::move(oMenuItemDef);
    }
}

} // namespace corvane
