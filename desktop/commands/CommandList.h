// Every command of a running application, with where it stands, whose it is and why it can't be chosen: what the
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
    Kind eKind = Kind::Host;
    std::string sService; // of the definition; empty for a page, whose record doesn't tell
    std::string sItem;    // the explorer item, or the page's key
    std::string sWindow;  // of a page

    // "Studies", "Studies (Study in the explorer)", "page Rows of the window DataTable", "Corvane".
    [[nodiscard]] QString Text() const;
};

// One entry of a definition, and what it belongs to.
struct Placement {
    Ref<MenuItemDef> oMenuItemDef;
    Owner oOwner;
};

struct CommandEntry {
    Ref<Tool> oTool; // the master
    QString sCaption;
    QString sOriginal; // the caption as the definition has it
    QString sPath;     // the captions of the menus above, or the toolbar, or the explorer item of a context menu
    std::vector<Placement> aPlacements;
    Owner oOwner; // of what the tool does at present, else of the entry that made it

    // The action at present; nothing when nobody offers it.
    [[nodiscard]] Ref<ActionItem> Action() const { return oTool->TagVariant().TryAs<ActionItem>(); }
    // Why it can't be chosen now; empty when it can.
    [[nodiscard]] QString WhyNot() const;
};

// A caption as people read it, in their language.
[[nodiscard]] QString PlainCaption(const Tool& oTool);
// The same as the definition has it.
[[nodiscard]] QString OriginalCaption(const Tool& oTool);

class CommandList {
public:
    // As things stand now. Titles, separators and what the host shows in its bands are no commands.
    explicit CommandList(const ActiveBar& oActiveBar);

    [[nodiscard]] const std::vector<CommandEntry>& All() const { return m_aCommands; }
    // A null pointer for a tool that is no command.
    [[nodiscard]] const CommandEntry* Find(const Tool& oTool) const;
    // All definitions that share the tool, titles too.
    [[nodiscard]] const std::vector<Placement>& PlacementsOf(const Tool& oTool) const;

private:
    void ReadPlacements();
    void ReadPaths(const ActiveBar& oActiveBar);
    void Add(const Ref<ActionItemDefCollection>& colActionItemDefs, const Ref<MenuItemDefCollection>& colMenuItemDefs,
             const Owner& oOwner);
    [[nodiscard]] Owner OwnerOf(const Tool& oTool) const;
    [[nodiscard]] QString PathOf(const Tool& oTool) const;
    [[nodiscard]] QString BandPath(const std::string& sBand, int nDepth) const;

    std::vector<CommandEntry> m_aCommands;
    std::unordered_map<const Tool*, std::size_t> m_mapCommands;
    std::unordered_map<const Tool*, std::vector<Placement>> m_mapPlacements;
    std::unordered_map<const ActionItemDef*, Owner> m_mapOwners; // also of actions that code has added
    struct Opener {                                              // of a band
        std::string sBand;
        QString sCaption;
    };
    std::unordered_map<std::string, Opener, TextHash, TextEqual> m_mapOpeners;
};

} // namespace corvane::desktop
