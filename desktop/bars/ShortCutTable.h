// All keyboard shortcuts of the bar in one table, so that enabling an action costs nothing for the others.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/bars/BarChanges.h"

#include <QHash>
#include <QKeyCombination>
#include <QKeySequence>
#include <QString>
#include <optional>
#include <utility>
#include <vector>

namespace corvane::desktop {

// The key of a definition's text such as "Ctrl+Shift+O", "F5" or "Delete", without regard to case and blanks. Empty
// for a text that is none.
[[nodiscard]] QKeySequence KeyIn(const QString& text);

class ShortCutTable {
public:
    explicit ShortCutTable(Ref<ActiveBar> activeBar) : m_activeBar(std::move(activeBar)) {}

    void Invalidate() { m_valid = false; }
    void SetChanges(const BarChanges& changes) { m_changes = &changes; }
    // The first tool of the keys that were pressed, in order of the master list, that is visible and enabled; nothing
    // without one. A key of the keypad counts as its twin, and a sign that is typed with Shift also without it:
    // "Ctrl++" is Ctrl, Shift and the key of the equals sign on many keyboards.
    [[nodiscard]] Ref<Tool> Find(QKeyCombination pressed) { return Find({}, pressed); }
    // The same of a chord: two strokes, one after the other.
    [[nodiscard]] Ref<Tool> Find(std::optional<QKeyCombination> before, QKeyCombination pressed);
    // Whether a tool that can be chosen has a chord that begins so.
    [[nodiscard]] bool BeginsChord(QKeyCombination pressed);

private:
    // Strokes as the table has them.
    using Strokes = std::pair<int, int>; // the second one 0 for a single key
    [[nodiscard]] Ref<Tool> Exactly(const Strokes& strokes) const;
    void Read();

    Ref<ActiveBar> m_activeBar;
    QHash<Strokes, std::vector<Tool*>> m_tools; // masters live as long as the bar
    QHash<int, std::vector<Strokes>> m_chords;  // by their first strokes
    const BarChanges* m_changes = &BarChanges::None();
    bool m_valid = false;
};

} // namespace corvane::desktop
