// What users read of a text in the models: its translation where the text is that of a definition file, or one that
// the library itself writes, and a catalogue has it; otherwise the text. Whatever draws a model asks here; nothing else
// does, so names and keys stay as they are.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/TreeView.h"

#include <QString>
#include <string>

namespace corvane::desktop {

// With "&" before the mnemonic, as in the model.
[[nodiscard]] QString ShownCaption(const Tool& tool);
[[nodiscard]] QString ShownToolTip(const Tool& tool);
[[nodiscard]] QString ShownDescription(const Tool& tool);
[[nodiscard]] QString ShownCaption(const Band& band);
[[nodiscard]] QString ShownTab(const std::string& caption);
[[nodiscard]] QString ShownNode(const TreeView& tree, const Node& node);
[[nodiscard]] QString ShownWindow(const std::string& window, const std::string& caption);
[[nodiscard]] QString ShownPage(const std::string& progID, const std::string& caption);

// Whether there are translations at all, for searches through very much.
[[nodiscard]] bool AreTextsTranslated();

// The contexts under which a translator is asked for those texts, and what distinguishes two equal texts.
namespace TextKind {
inline constexpr const char* prefix = "corvane.definition.";
inline constexpr const char* any = "corvane.definition.any";
inline constexpr const char* caption = "corvane.definition.caption";         // the tool's name
inline constexpr const char* toolTip = "corvane.definition.tip";             // likewise
inline constexpr const char* description = "corvane.definition.description"; // likewise
inline constexpr const char* band = "corvane.definition.band";               // the band's name
inline constexpr const char* tab = "corvane.definition.tab";
inline constexpr const char* node = "corvane.definition.node";     // the name of the tree and the depth in it
inline constexpr const char* window = "corvane.definition.window"; // the window's name
inline constexpr const char* page = "corvane.definition.page";     // the ProgID
} // namespace TextKind

} // namespace corvane::desktop
