// Says of anything that stands on screen what put it there, by file and line, whose it is, and why it looks as it does.
#pragma once

#include "corvane/core/Framework.h"
#include "corvane/platform/controls/TreeView.h"
#include "corvane/windows/Window.h"
#include "desktop/commands/CommandList.h"
#include "desktop/commands/DefinitionPlaces.h"
#include "desktop/custom/PersonalBars.h"

#include <QString>
#include <map>
#include <utility>
#include <vector>

namespace corvane::desktop {

using Facts = std::vector<std::pair<QString, QString>>;
// A line a fact.
[[nodiscard]] QString TextOf(const Facts& aFacts);

// What the explorer's nodes stand for, noted while they are made.
class ExplorerItemNotes {
public:
    struct Note {
        std::string sItem; // of the definition
        std::string sClass;
    };

    // After the library is initialised, before it starts.
    void Follow();
    // A null pointer for a node whose making wasn't seen.
    [[nodiscard]] const Note* Find(const Node& oNode) const;

private:
    std::map<std::string, Note> m_mapNotes; // by the node's tag
    Subscription m_oAdd;
};

class Explainer {
public:
    // As things stand now.
    Explainer(Ref<ActiveBar> oActiveBar, const DefinitionPlaces& oPlaces, const PersonalBars& oBars,
              const ExplorerItemNotes& oNotes);
    // Of the running application.
    [[nodiscard]] static DefinitionPlaces ReadPlaces();

    [[nodiscard]] Facts OfTool(const Tool& oInstance) const; // a master too
    [[nodiscard]] Facts OfBand(const Band& oBand) const;
    [[nodiscard]] Facts OfNode(const Node& oNode) const;
    [[nodiscard]] Facts OfService(const std::string& sName) const;
    [[nodiscard]] Facts OfWindow(const Window& oWindow) const;
    // The file and the line that put the instance where it is; empty for what no file names.
    [[nodiscard]] QString PlaceOf(const Tool& oInstance) const;
    [[nodiscard]] const CommandList& Commands() const { return m_oCommands; }

private:
    void AddPlaces(Facts& aFacts, const Tool& oInstance) const;
    void AddState(Facts& aFacts, const Tool& oInstance) const;
    [[nodiscard]] const Placement* PlacementIn(const Tool& oInstance) const;
    // Of the title that opens the band, of the explorer item whose menu it is, or of the entry for which it was made.
    [[nodiscard]] QString PlaceOf(const Band& oBand) const;

    Ref<ActiveBar> m_oActiveBar;
    const DefinitionPlaces& m_oPlaces;
    const PersonalBars& m_oBars;
    const ExplorerItemNotes& m_oNotes;
    CommandList m_oCommands;
};

} // namespace corvane::desktop
