// Fills menus from bands when they open.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/bars/BarActions.h"

#include <QMenu>
#include <functional>
#include <vector>

namespace corvane::desktop {

// One open window, as the list of windows shows it.
struct OpenWindowEntry {
    QString sCaption;
    bool bActive;
    std::function<void()> fnActivate;
};

class MenuBuilder {
public:
    using GuardFunction = std::function<void(const std::function<void()>&)>;
    using WindowsFunction = std::function<std::vector<OpenWindowEntry>()>;

    MenuBuilder(Ref<ActiveBar> oActiveBar, BarActions& oActions, GuardFunction fnGuard)
        : m_oActiveBar(std::move(oActiveBar)), m_oActions(oActions), m_fnGuard(std::move(fnGuard)) {}

    void SetWindows(WindowsFunction fnWindows) { m_fnWindows = std::move(fnWindows); }

    void SetChanges(const BarChanges& oChanges) { m_pChanges = &oChanges; }

    // A menu of the band of that name, which is filled each time that it opens.
    QMenu* NewMenu(const std::string& sBand, QWidget* pParent);
    // Fills a menu at once. False when a handler refused the opening.
    bool Fill(QMenu* pMenu, const Ref<Band>& oBand);
    // Fills a menu that belongs to no band.
    void FillWith(QMenu* pMenu, const std::vector<Ref<Tool>>& aInstances);

private:
    static void Clear(QMenu* pMenu);
    void AddInstance(QMenu* pMenu, const Ref<Tool>& oInstance);
    void AddWindows(QMenu* pMenu);

    Ref<ActiveBar> m_oActiveBar;
    BarActions& m_oActions;
    GuardFunction m_fnGuard;
    WindowsFunction m_fnWindows;
    const BarChanges* m_pChanges = &BarChanges::None();
};

} // namespace corvane::desktop
