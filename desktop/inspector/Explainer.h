// Says of anything that is on screen what put it there, by file and line, whose it is, and why it looks as it does.
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
[[nodiscard]] QString TextOf(const Facts& facts);

// What the explorer's nodes represent, noted while they are made.
class ExplorerItemNotes {
public:
    struct Note {
        std::string item; // of the definition
        std::string className;
    };

    // After the library is initialized, before it starts.
    void Follow();
    // A null pointer for a node whose making wasn't seen.
    [[nodiscard]] const Note* Find(const Node& node) const;

private:
    std::map<std::string, Note> m_notes; // by the node's tag
    Subscription m_add;
};

class Explainer {
public:
    // As things are now.
    Explainer(Ref<ActiveBar> activeBar, const DefinitionPlaces& places, const PersonalBars& bars,
              const ExplorerItemNotes& notes);
    // Of the running application.
    [[nodiscard]] static DefinitionPlaces ReadPlaces();

    [[nodiscard]] Facts OfTool(const Tool& instance) const; // a master too
    [[nodiscard]] Facts OfBand(const Band& band) const;
    [[nodiscard]] Facts OfNode(const Node& node) const;
    [[nodiscard]] Facts OfService(const std::string& name) const;
    [[nodiscard]] Facts OfWindow(const Window& window) const;
    // The file and the line that put the instance where it is; empty for what no file names.
    [[nodiscard]] QString PlaceOf(const Tool& instance) const;
    [[nodiscard]] const CommandList& Commands() const { return m_commands; }

private:
    void AddPlaces(Facts& facts, const Tool& instance) const;
    void AddState(Facts& facts, const Tool& instance) const;
    [[nodiscard]] const Placement* PlacementIn(const Tool& instance) const;
    // Of the title that opens the band, of the explorer item whose menu it is, or of the entry for which it was made.
    [[nodiscard]] QString PlaceOf(const Band& band) const;

    Ref<ActiveBar> m_activeBar;
    const DefinitionPlaces& m_places;
    const PersonalBars& m_bars;
    const ExplorerItemNotes& m_notes;
    CommandList m_commands;
};

} // namespace corvane::desktop
