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

class QKeyEvent;
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
    BarRenderer(Ref<ActiveBar> activeBar, QMainWindow* window, Guard guard);
    ~BarRenderer() override;

    // What is laid over the model from now on. Whoever gives it calls Redraw when it changes.
    void SetChanges(const BarChanges& changes);
    void Redraw();
    // Tools that it has a reason for are drawn disabled and can't be chosen, whatever the model says; empty for none.
    // Whoever gives it calls RedrawStates when an answer changes.
    void SetWhyNot(std::function<QString(const Tool&)> whyNot) { m_actions.SetWhyNot(std::move(whyNot)); }
    [[nodiscard]] QString WhyNot(const Tool& tool) const { return m_actions.WhyNot(tool); }
    void RedrawStates() { m_actions.ShowAllStates(); }
    // The user chooses the tool, by whatever way. False when there is a reason against it, which is reported.
    bool Choose(const Ref<Tool>& tool);
    // The next pass shows every toolbar as the model says, whatever has become of its widget.
    void RedrawToolbars();
    // Brings the screen up to date now.
    void Flush();
    [[nodiscard]] MenuBuilder& Menus() { return m_menus; }
    [[nodiscard]] const BarActions& Actions() const { return m_actions; }
    [[nodiscard]] QToolBar* ToolbarOf(const Band& band) const; // a null pointer for one that hasn't been shown yet
    // Puts every toolbar where it is before a user moves it.
    void ResetToolbars();
    // Where the next pop-up menu belongs, in pixels of the screen; the pointer's place without one.
    void SetPopupPlace(const QPoint& place) { m_popupPlace = place; }
    // The widget that takes the place of the tool "ctlProgressBar" in the status bar.
    // What makes the widget when the bar is first to be seen.
    void SetProgressWidget(std::function<QWidget*()> make) { m_makeProgress = std::move(make); }
    // The menu "SysCustomize" with an entry for each toolbar; a null pointer when there is none. The caller owns it.
    QMenu* NewCustomizeMenu();

    // Lays out what a pop-up menu of that band holds, without showing it; the caller owns it.
    QMenu* NewPopup(const Ref<Band>& band);

Q_SIGNALS:
    void Refused(const QString& why);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Note(const BarChange& change);
    void NoteState(Tool* master);
    void Schedule();
    void ShowBands(const std::unordered_set<const Band*>& bands, bool all);
    void ShowStates(const std::vector<Ref<Tool>>& masters);
    void ShowToolbar(const Ref<Band>& band);
    [[nodiscard]] bool HasVisibleButton(const Band& band) const;
    void ShowToolbarIfUsed(const Ref<Band>& band);
    Toolbar* NewToolbar(const Ref<Band>& band);
    void ShowStatusBar();
    void ShowPopup(const Ref<Band>& band);
    [[nodiscard]] bool IsForWindow(QObject* watched) const;
    bool FireShortCut(QObject* watched, QKeyEvent& event);
    [[nodiscard]] bool IsKeptByEditor(QObject* watched, const QKeyEvent& event) const;
    bool EndChord(const QKeyEvent& event);
    void WaitForSecondStroke(std::optional<QKeyCombination> first);

    Ref<ActiveBar> m_activeBar;
    QMainWindow* m_window;
    Guard m_guard;
    BarActions m_actions;
    MenuBuilder m_menus;
    ShortCutTable m_shortCuts;
    std::optional<QKeyCombination> m_firstStroke; // of a chord, until the second comes
    MenuBar* m_menuBar;
    const BarChanges* m_changes = &BarChanges::None();
    QLabel* m_status;
    bool m_statusShown = true;
    std::function<QWidget*()> m_makeProgress;
    QWidget* m_progress = nullptr;
    struct ShownToolbar {
        Toolbar* toolbar = nullptr;
        bool changed = true; // the band, since the toolbar was last given its instances
    };
    std::map<const Band*, ShownToolbar> m_toolbars;
    std::optional<QPoint> m_popupPlace;

    // What the next pass has to bring up to date.
    bool m_scheduled = false;
    bool m_allBands = true;
    std::unordered_set<const Band*> m_bands;
    std::vector<Ref<Tool>> m_states;         // masters, some of them twice; held, as one may go before the pass
    std::unordered_set<const Tool*> m_texts; // compared only, never looked into

    Subscription m_changed;
    Subscription m_popupRequested;
    Subscription m_paintRequested;
};

} // namespace corvane::desktop
