// Reading of the ActionItem and MenuItem elements that services, explorer items and pages hold alike.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/services/MenuItemDef.h"

namespace corvane {

// Adds one record an element "./ActionItems/ActionItem", by its name. Fails with 457 for a name that is there twice.
void ReadActionItemDefs(const Ref<IXmlNode>& oxmlDefinition, ActionItemDefCollection& colActionItemDefs);

// Adds one record an element "./Menus/MenuItem", tied to its action, with or without its Key as key. Fails with 5
// when the action isn't among those given, with 457 for a key that is there twice.
void ReadMenuItemDefs(const Ref<IXmlNode>& oxmlDefinition, const ActionItemDefCollection& colActionItemDefs,
                      MenuItemDefCollection& colMenuItemDefs, bool bWithKeys);

} // namespace corvane
