// Draws the bar's model into a main window: menu bar, toolbars, pop-up menus, status bar. It decides nothing; changes
// only mark what they touch, and one pass a turn of the event loop brings the screen up to date.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/bars/BarActions.h"
#include "desktop/bars/MenuBuilder.h"
#include "desktop/bars/ShortCutTable.h"

#include <QObject>
#include <QPoint>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

class QLabel;
class QMainWindow;
class QProgressBar;
class QToolBar;

namespace corvane::desktop {

class MenuBar;
class Toolbar;

class BarRenderer final : public QObject {
    Q_OBJECT
public:
    using GuardFunction = MenuBuilder::GuardFunction;
    BarRenderer(Ref<ActiveBar> oActiveBar, QMainWindow* pWindow, GuardFunction fnGuard);
    ~BarRenderer() override;

    // What is laid over the model from now on. Whoever gives it calls Redraw when it changes.
    void SetChanges(const BarChanges& oChanges);
    void Redraw();
    // The next pass shows every toolbar as the model says, whatever has become of its widget.
    void RedrawToolbars();
    // Brings the screen up to date now.
    void Flush();
    [[nodiscard]] MenuBuilder& Menus() { return m_oMenus; }
    [[nodiscard]] const BarActions& Actions() const { return m_oActions; }
    [[nodiscard]] QToolBar* ToolbarOf(const Band& oBand) const; // a null pointer for one that hasn't been shown yet
    // Where the next pop-up menu belongs, in pixels of the screen; the pointer's place without one.
    void SetPopupPlace(const QPoint& oPlace) { m_oPopupPlace = oPlace; }
    // The widget that takes the place of the tool "ctlProgressBar" in the status bar.
    // What makes the widget when the bar is first to be seen.
    void SetProgressWidget(std::function<QWidget*()> fnMake) { m_fnMakeProgress = std::move(fnMake); }
    // The menu "SysCustomize" with an entry for each toolbar; a null pointer when there is none. The caller owns it.
    QMenu* NewCustomizeMenu();

    // Lays out what a pop-up menu of that band holds, without showing it; the caller owns it.
    QMenu* NewPopup(const Ref<Band>& oBand);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Note(const BarChange& oChange);
    void NoteState(Tool* pMaster);
    void Schedule();
    void ShowBands(const std::unordered_set<const Band*>& setBands, bool bAll);
    void ShowStates(const std::vector<Ref<Tool>>& aMasters);
    void ShowToolbar(const Ref<Band>& oBand);
    [[nodiscard]] bool HasVisibleButton(const Band& oBand) const;
    void ShowToolbarIfUsed(const Ref<Band>& oBand);
    Toolbar* NewToolbar(const Ref<Band>& oBand);
    void ShowStatusBar();
    void ShowPopup(const Ref<Band>& oBand);
    [[nodiscard]] bool IsForWindow(QObject* pWatched) const;
    bool FireShortCut(QObject* pWatched, class QKeyEvent& oEvent);

    Ref<ActiveBar> m_oActiveBar;
    QMainWindow* m_pWindow;
    GuardFunction m_fnGuard;
    BarActions m_oActions;
    MenuBuilder m_oMenus;
    ShortCutTable m_oShortCuts;
    MenuBar* m_pMenuBar;
    const BarChanges* m_pChanges = &BarChanges::None();
    QLabel* m_pStatus;
    bool m_bStatusShown = true;
    std::function<QWidget*()> m_fnMakeProgress;
    QWidget* m_pProgress = nullptr;
    struct ShownToolbar {
        Toolbar* pToolbar = nullptr;
        bool bChanged = true; // the band, since the toolbar was last given its instances
    };
    std::map<const Band*, ShownToolbar> m_mapToolbars;
    std::optional<QPoint> m_oPopupPlace;

    // What the next pass has to bring up to date.
    bool m_bScheduled = false;
    bool m_bAllBands = true;
    std::unordered_set<const Band*> m_setBands;
    std::vector<Ref<Tool>> m_aStates;           // masters, some of them twice; held, as one may go before the pass
    std::unordered_set<const Tool*> m_setTexts; // compared only, never looked into

    Subscription m_oChanged;
    Subscription m_oPopupRequested;
    Subscription m_oPaintRequested;
};

} // namespace corvane::desktop
