// The menu bar on screen, which shows the titles of one band. What is behind the first sixty titles, for which no
// screen has space, is in a menu at the end that is filled when it opens; their mnemonics open it there.
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
    MenuBar(MenuBuilder& menus, BarActions& actions, QWidget* parent);

    // Shows the band as it is now. A title that stays keeps its action and its menu, even an open one.
    void Show(const Band& band);

    // The height of a bar of many titles is that of any one; Qt would measure them all, and again for the width that
    // they get.
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    struct Title {
        Ref<Tool> instance;
        std::string dropDownBand;
        QAction* action;
    };
    [[nodiscard]] Title TakeOrMake(const Ref<Tool>& instance, std::vector<Title>& old);
    void ShowRest(std::vector<Ref<Tool>> rest);
    void TakeRestKeys();
    void OpenInRest(const Ref<Tool>& instance);
    [[nodiscard]] bool IsMeasuredByOneTitle() const;
    [[nodiscard]] const QMenuBar& Sample() const;

    MenuBuilder& m_menus;
    BarActions& m_actions;
    std::vector<Title> m_titles;
    QMenu* m_rest;
    std::vector<Ref<Tool>> m_restItems;                      // the titles in it
    std::vector<std::unique_ptr<QShortcut>> m_restShortcuts; // Alt and the letters of those titles
    QTimer m_restKeys;
    mutable std::unique_ptr<QMenuBar> m_sample; // of one title, never shown
};

} // namespace corvane::desktop
