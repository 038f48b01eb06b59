// The parts of a check, each of which looks at the whole model for one theme. Only sources of this folder include it.
#pragma once

#include "analysis/Code.h"
#include "analysis/Edits.h"
#include "analysis/MenuPlan.h"

#include <string>

namespace corvane::check {

inline constexpr const char* frameworkProgID = "Corvane.Framework";

// Whether the service's file is meant to be that of the root object and has another ProgID by mistake.
[[nodiscard]] bool IsMeantAsFramework(const Model& model, const Provider& service);

// Services, explorer items and windows, and how they refer to one another.
void CheckNames(Model& model, const std::string& application, Report& report);
// What becomes of the entries of menus, toolbars and context menus.
void CheckMenus(Model& model, const MenuPlan& plan, Report& report);
// What can never be seen or reached.
void CheckReach(Model& model, const MenuPlan& plan, const Code& code, Report& report);
// Attributes without effect where they stand, and commands of the root object that do nothing.
void CheckEffects(Model& model, const MenuPlan& plan, const Code& code, Report& report);
// Captions, tips and names as people read and write them.
void CheckTexts(Model& model, const MenuPlan& plan, Report& report);
// Names that meet by accident.
void CheckCollisions(Model& model, const MenuPlan& plan, Report& report);
// Files that nothing reads, or whose names differ in case alone.
void CheckFiles(const Model& model, const std::string& application, Report& report);
// Shortcuts and mnemonics.
void CheckKeys(Model& model, const MenuPlan& plan, Report& report);
// Pictures, and whether the plug-ins are there.
void CheckFolder(Model& model, const std::string& application, bool plugins, Report& report);
// Whether classes have the members that actions call: the root object always, plug-ins if they are to be loaded.
void CheckPlugins(Model& model, const std::string& application, bool load, Report& report);
// What the code of the plug-ins and the definitions expect of one another.
void CheckCode(Model& model, const Code& code, const std::string& application, Report& report);

// The forms of pages, and whether they fit their classes.
void CheckForms(Model& model, const std::string& application, bool plugins, const Buffers& buffers, Report& report);
// What the start page of the application offers.
void CheckWelcome(Model& model, const std::string& application, const Buffers& buffers, Report& report);
// Whether it is a page of the preferences that has a form, and so needs no class.
[[nodiscard]] bool IsFormAlone(const Provider& provider, const std::string& application);

// The place of a title, an entry or an explorer item in a file that doesn't count, when it would help if it did.
struct InactivePlace {
    const File* file;
    const Element* element;
};
[[nodiscard]] std::optional<InactivePlace> InactiveTitle(const Model& model, std::string_view key);
[[nodiscard]] std::optional<InactivePlace> InactiveEntryOf(const Model& model, std::string_view path);
[[nodiscard]] std::optional<InactivePlace> InactiveItem(const Model& model, std::string_view name);

} // namespace corvane::check
