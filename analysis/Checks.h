// The parts of a check, each of which looks at the whole model for one theme. Only sources of this folder include it.
#pragma once

#include "analysis/MenuPlan.h"

#include <string>

namespace corvane::check {

inline constexpr const char* frameworkProgID = "Corvane.Framework";

// Services, explorer items and windows, and how they refer to one another.
void CheckNames(Model& model, const std::string& application, Report& report);
// What becomes of the entries of menus, toolbars and context menus.
void CheckMenus(Model& model, const MenuPlan& plan, Report& report);
// Shortcuts and mnemonics.
void CheckKeys(Model& model, const MenuPlan& plan, Report& report);
// Pictures, and whether the plug-ins are there.
void CheckFolder(Model& model, const std::string& application, bool plugins, Report& report);
// Whether classes have the members that actions call: the root object always, plug-ins if they are to be loaded.
void CheckPlugins(Model& model, const std::string& application, bool load, Report& report);

} // namespace corvane::check
