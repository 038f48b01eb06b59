// What people read of a text in the models: its translation where the text is that of a definition file, or one that
// the library itself writes, and a catalogue has it; otherwise the text. Whatever draws a model asks here; nothing else
// does, so names and keys stay as they are.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/TreeView.h"

#include <QString>
#include <string>

namespace corvane::desktop {

// With "&" before the mnemonic, as in the model.
[[nodiscard]] QString ShownCaption(const Tool& oTool);
[[nodiscard]] QString ShownToolTip(const Tool& oTool);
[[nodiscard]] QString ShownDescription(const Tool& oTool);
[[nodiscard]] QString ShownCaption(const Band& oBand);
[[nodiscard]] QString ShownTab(const std::string& sCaption);
[[nodiscard]] QString ShownNode(const TreeView& oTree, const Node& oNode);
[[nodiscard]] QString ShownWindow(const std::string& sWindow, const std::string& sCaption);
[[nodiscard]] QString ShownPage(const std::string& sProgID, const std::string& sCaption);

// Whether there are translations at all, for searches through very much.
[[nodiscard]] bool AreTextsTranslated();

// The contexts under which a translator is asked for those texts, and what tells two equal texts apart.
namespace TextKind {
inline constexpr const char* sPrefix = "corvane.definition.";
inline constexpr const char* sAny = "corvane.definition.any";
inline constexpr const char* sCaption = "corvane.definition.caption";         // the tool's name
inline constexpr const char* sToolTip = "corvane.definition.tip";             // likewise
inline constexpr const char* sDescription = "corvane.definition.description"; // likewise
inline constexpr const char* sBand = "corvane.definition.band";               // the band's name
inline constexpr const char* sTab = "corvane.definition.tab";
inline constexpr const char* sNode = "corvane.definition.node";     // the name of the tree and the depth in it
inline constexpr const char* sWindow = "corvane.definition.window"; // the window's name
inline constexpr const char* sPage = "corvane.definition.page";     // the ProgID
} // namespace TextKind

} // namespace corvane::desktop
