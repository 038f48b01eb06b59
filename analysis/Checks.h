// The parts of a check, each of which looks at the whole model for one theme. Only sources of this folder include it.
#pragma once

#include "analysis/MenuPlan.h"

#include <string>

namespace corvane::check {

// Services, explorer items and windows, and how they refer to one another.
void CheckNames(Model& oModel, const std::string& sApplication, Report& oReport);
// What becomes of the entries of menus, toolbars and context menus.
void CheckMenus(Model& oModel, const MenuPlan& oPlan, Report& oReport);
// Shortcuts and mnemonics.
void CheckKeys(Model& oModel, const MenuPlan& oPlan, Report& oReport);
// Pictures, and whether the plug-ins are there.
void CheckFolder(Model& oModel, const std::string& sApplication, bool bPlugins, Report& oReport);
// Whether classes have the members that actions call: the root object always, plug-ins if they are to be loaded.
void CheckPlugins(Model& oModel, const std::string& sApplication, bool bLoad, Report& oReport);

} // namespace corvane::check
