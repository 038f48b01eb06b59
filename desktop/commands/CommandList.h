// Every command of a running application, with where it is, whose it is and why it can't be chosen: what the
// palette, the shortcuts and the inspector show.
#pragma once

#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/services/ReadActions.h"

#include <QString>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace corvane::desktop {

// Who brings an action.
struct Owner {
    enum class Kind { Service, ExplorerItem, Page, Host };
    Kind kind = Kind::Host;
    std::string service; // of the definition; empty for a page, whose record doesn't tell
    std::string item;    // the explorer item, or the page's key
    std::string window;  // of a page

    // "Studies", "Studies (Study in the explorer)", "page Rows of the window DataTable", "Corvane".
    [[nodiscard]] QString Text() const;
};

// One entry of a definition, and what it belongs to.
struct Placement {
    Ref<MenuItemDef> menuItemDef;
    Owner owner;
};

struct CommandEntry {
    Ref<Tool> tool; // the master
    QString caption;
    QString original; // the caption as the definition has it
    QString path;     // the captions of the menus above, or the toolbar, or the explorer item of a context menu
    std::vector<Placement> placements;
    Owner owner; // of what the tool does at present, else of the entry that made it

    // The action at present; nothing when no one offers it.
    [[nodiscard]] Ref<ActionItem> Action() const { return tool->TagVariant().TryAs<ActionItem>(); }
    // What the user has to do first so that an explorer item or a window provides it; empty where that isn't it.
    [[nodiscard]] QString WhatFirst() const;
    // Why it can't be chosen now, that included; empty when it can.
    [[nodiscard]] QString WhyNot() const;
};

// A caption as users read it, in their language.
[[nodiscard]] QString PlainCaption(const Tool& tool);
// The same as the definition has it.
[[nodiscard]] QString OriginalCaption(const Tool& tool);

class CommandList {
public:
    // As things are now. Titles, separators and what the host shows in its bands aren't commands.
    explicit CommandList(const ActiveBar& activeBar);

    [[nodiscard]] const std::vector<CommandEntry>& All() const { return m_commands; }
    // A null pointer for a tool that isn't a command.
    [[nodiscard]] const CommandEntry* Find(const Tool& tool) const;
    // All definitions that share the tool, titles too.
    [[nodiscard]] const std::vector<Placement>& PlacementsOf(const Tool& tool) const;

private:
    void ReadPlacements();
    void ReadPaths(const ActiveBar& activeBar);
    void Add(const Ref<ActionItemDefCollection>& actionItemDefs, const Ref<MenuItemDefCollection>& menuItemDefs,
             const Owner& owner);
    [[nodiscard]] Owner OwnerOf(const Tool& tool) const;
    [[nodiscard]] QString PathOf(const Tool& tool) const;
    [[nodiscard]] QString BandPath(const std::string& band, int depth) const;

    std::vector<CommandEntry> m_commands;
    std::unordered_map<const Tool*, std::size_t> m_commandMap;
    std::unordered_map<const Tool*, std::vector<Placement>> m_placements;
    std::unordered_map<const ActionItemDef*, Owner> m_owners; // also of actions that code has added
    struct Opener {                                           // of a band
        std::string band;
        QString caption;
    };
    std::unordered_map<std::string, Opener, TextHash, TextEqual> m_openers;
};

} // namespace corvane::desktop
