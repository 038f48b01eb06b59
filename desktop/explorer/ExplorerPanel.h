// The explorer's panel form on the screen: the tab strip, and below it the page of the current tab's tree.
#pragma once

#include "corvane/platform/controls/PanelForm.h"
#include "desktop/explorer/ExplorerPage.h"

#include <QWidget>
#include <memory>
#include <vector>

class QLabel;
class QStackedWidget;
class QTabBar;

namespace corvane::desktop {

class ExplorerPanel final : public QWidget {
    Q_OBJECT
public:
    // Shows the trees that the form holds already and those that it gets later; the trees stand in order of the tabs.
    // Without a guard a failure is told to Qt's message log alone.
    explicit ExplorerPanel(Ref<PanelForm> oForm, GuardFunction fnGuard = {}, QWidget* pParent = nullptr);

    [[nodiscard]] QTabBar* TabBar() const { return m_pTabBar; }
    // The page of a tree, by the number of its tab; a null pointer when there is none.
    [[nodiscard]] ExplorerPage* Page(int iTab) const;
    [[nodiscard]] ExplorerPage* CurrentPage() const;
    QSize sizeHint() const override { return {260, 420}; }

Q_SIGNALS:
    // Before a menu may open from one of the trees: it belongs there, in pixels of the screen.
    void PopupPlace(const QPoint& oGlobal);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void AddPage(const Ref<Object>& oControl);
    void Strip_Changed();
    void ShowStrip();
    void TabBar_CurrentChanged(int iTab);

    Ref<PanelForm> m_oForm;
    Ref<TabStrip> m_oStrip; // nothing when the form has none
    GuardFunction m_fnGuard;
    std::shared_ptr<ImageIcons> m_pIcons = std::make_shared<ImageIcons>();
    QTabBar* m_pTabBar;
    QStackedWidget* m_pStack;
    QLabel* m_pEmpty;
    std::vector<ExplorerPage*> m_aPages;
    bool m_bScheduled = false;
    bool m_bFollowsModel = false;
    Subscription m_oForm_ControlAdded;
    Subscription m_oStrip_Changed;
};

} // namespace corvane::desktop
