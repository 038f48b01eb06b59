// All keyboard shortcuts of the bar in one table, so that enabling an action costs nothing for the others.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/bars/BarChanges.h"

#include <QHash>
#include <QKeyCombination>
#include <QKeySequence>
#include <QString>
#include <vector>

namespace corvane::desktop {

// The key of a definition's text such as "Ctrl+Shift+O", "F5" or "Delete", without regard to case and blanks. Empty
// for a text that is none.
[[nodiscard]] QKeySequence KeyIn(const QString& sText);

class ShortCutTable {
public:
    explicit ShortCutTable(Ref<ActiveBar> oActiveBar) : m_oActiveBar(std::move(oActiveBar)) {}

    void Invalidate() { m_bValid = false; }
    void SetChanges(const BarChanges& oChanges) { m_pChanges = &oChanges; }
    // The first tool of the keys that were pressed, in order of the master list, that is visible and enabled; nothing
    // without one. A key of the keypad counts as its twin, and a sign that is typed with Shift also without it:
    // "Ctrl++" is Ctrl, Shift and the key of the equals sign on many keyboards.
    [[nodiscard]] Ref<Tool> Find(QKeyCombination oPressed);

private:
    [[nodiscard]] Ref<Tool> Exactly(QKeyCombination oKeys) const;
    void Read();

    Ref<ActiveBar> m_oActiveBar;
    QHash<int, std::vector<Tool*>> m_mapTools; // masters live as long as the bar
    const BarChanges* m_pChanges = &BarChanges::None();
    bool m_bValid = false;
};

} // namespace corvane::desktop
