// The menu bar on screen, which shows the titles of one band. What stands behind the first sixty titles, for which no
// screen has room, stands in a menu at the end that is filled when it opens; their mnemonics open it there.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"

#include <QMenuBar>
#include <QShortcut>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

namespace corvane::desktop {

class BarActions;
class MenuBuilder;

class MenuBar final : public QMenuBar {
public:
    MenuBar(MenuBuilder& oMenus, BarActions& oActions, QWidget* pParent);

    // Shows the band as it is now. A title that stays keeps its action and its menu, even an open one.
    void Show(const Band& oBand);

    // The height of a bar of many titles is that of any one; Qt would measure them all, and again for the width that
    // they get.
    [[nodiscard]] int heightForWidth(int nWidth) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    struct Title {
        Ref<Tool> oInstance;
        std::string sDropDownBand;
        QAction* pAction;
    };
    [[nodiscard]] Title TakeOrMake(const Ref<Tool>& oInstance, std::vector<Title>& aOld);
    void ShowRest(std::vector<Ref<Tool>> aRest);
    void TakeRestKeys();
    void OpenInRest(const Ref<Tool>& oInstance);
    [[nodiscard]] bool IsMeasuredByOneTitle() const;
    [[nodiscard]] const QMenuBar& Sample() const;

    MenuBuilder& m_oMenus;
    BarActions& m_oActions;
    std::vector<Title> m_aTitles;
    QMenu* m_pRest;
    std::vector<Ref<Tool>> m_aRest;                      // the titles in it
    std::vector<std::unique_ptr<QShortcut>> m_aRestKeys; // Alt and the letters of those titles
    QTimer m_oRestKeys;
    mutable std::unique_ptr<QMenuBar> m_pSample; // of one title, never shown
};

} // namespace corvane::desktop
