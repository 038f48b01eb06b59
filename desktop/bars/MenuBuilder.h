// Fills menus from bands when they open.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/bars/BarActions.h"
#include "desktop/guard/Guard.h"

#include <QMenu>
#include <functional>
#include <vector>

namespace corvane::desktop {

// One open window, as the list of windows shows it.
struct OpenWindowEntry {
    QString caption;
    bool active;
    std::function<void()> activate;
};

class MenuBuilder {
public:
    using WindowsFunction = std::function<std::vector<OpenWindowEntry>()>;

    MenuBuilder(Ref<ActiveBar> activeBar, BarActions& actions, Guard guard)
        : m_activeBar(std::move(activeBar)), m_actions(actions), m_guard(std::move(guard)) {}

    void SetWindows(WindowsFunction windows) { m_windows = std::move(windows); }

    void SetChanges(const BarChanges& changes) { m_changes = &changes; }

    // A menu of the band of that name, which is filled each time that it opens.
    QMenu* NewMenu(const std::string& bandName, QWidget* parent);
    // Fills a menu at once. False when a handler refused the opening.
    bool Fill(QMenu* menu, const Ref<Band>& band);
    // Fills a menu that belongs to no band.
    void FillWith(QMenu* menu, const std::vector<Ref<Tool>>& instances);

private:
    static void Clear(QMenu* menu);
    void AddInstance(QMenu* menu, const Ref<Tool>& instance);
    void AddWindows(QMenu* menu);

    Ref<ActiveBar> m_activeBar;
    BarActions& m_actions;
    Guard m_guard;
    WindowsFunction m_windows;
    const BarChanges* m_changes = &BarChanges::None();
};

} // namespace corvane::desktop
