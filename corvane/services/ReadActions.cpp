#include "corvane/services/ReadActions.h"

#include "corvane/core/CorvaneMain.h"

namespace corvane {

using CorvaneMain::AtLineOf;
using CorvaneMain::XMLAttributeValue;

void ReadActionItemDefs(const Ref<IXmlNode>& oxmlDefinition, ActionItemDefCollection& colActionItemDefs) {
    for (const auto& oNode : oxmlDefinition->SelectNodes("./ActionItems/ActionItem")) {
        auto oActionItemDef = New<ActionItemDef>();
        oActionItemDef->Initialize(oNode);
        AtLineOf(oNode, [&] { colActionItemDefs.Add(oActionItemDef, oActionItemDef->Name()); });
    }
}

void ReadMenuItemDefs(const Ref<IXmlNode>& oxmlDefinition, const ActionItemDefCollection& colActionItemDefs,
                      MenuItemDefCollection& colMenuItemDefs, bool bWithKeys) {
    for (const auto& oNode : oxmlDefinition->SelectNodes("./Menus/MenuItem")) {
        auto oMenuItemDef = New<MenuItemDef>();
        oMenuItemDef->Initialize(oNode);
        AtLineOf(oNode, [&] {
            oMenuItemDef->SetActionItemDef(colActionItemDefs.Item(ToText(XMLAttributeValue(oNode, "ActionItem"))));
            if (bWithKeys)
                colMenuItemDefs.Add(oMenuItemDef, oMenuItemDef->Key());
            else
                colMenuItemDefs.Add(oMenuItemDef);
        });
    }
}

} // namespace corvane
