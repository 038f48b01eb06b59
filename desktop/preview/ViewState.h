// What a person sees of an application beside what the session keeps: what is selected, which windows are open and how
// far, and the menu that is open just now. It outlives the application and is found again by names and keys.
#pragma once

#include "corvane/platform/controls/Form.h"
#include "desktop/application/Application.h"

#include <QJsonObject>
#include <QMenu>
#include <QPoint>
#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace corvane::desktop {

struct ViewState {
    struct Tree {
        std::string sName;
        std::string sSelected; // the node's key; empty for none
        QString sFilter;
        int nScrolled = 0;
    };
    struct OpenWindow {
        std::string sName; // of the definition
        std::string sKey;  // empty for one that the library made up
        Long lPage = 0;
        bool bModal = false;
        bool bActive = false;
        bool bChild = false;
        FormState eState = FormState::Normal;
        Single fLeft = 0, fTop = 0, fWidth = 0, fHeight = 0;
        Long lPageWidth = 0, lPageHeight = 0; // by the definition
    };
    enum class MenuRoot { None, MenuBar, Toolbar, Explorer };

    std::vector<Tree> aTrees;
    enum class Focus { Elsewhere, Tree, Filter } eFocus = Focus::Elsewhere;
    bool bExplorerIsShown = true;
    std::vector<OpenWindow> aWindows;
    MenuRoot eMenuRoot = MenuRoot::None;
    QPoint oMenuPlace;
    std::vector<std::string> aMenus; // the tools that the open menus hang on, then the tool that is lit

    // What is on screen now.
    [[nodiscard]] static ViewState Of(Application& oApplication);
    // All but the menus, for another run; what isn't there or can't be read is as in an empty state.
    [[nodiscard]] QJsonObject ToJson() const;
    [[nodiscard]] static ViewState OfJson(const QJsonObject& oJson);
    // Selects and opens again what is still there. Of the windows that no service has opened again those are opened
    // for which fnOpens says so; modal ones aren't, see OpenAgain.
    void Restore(Application& oApplication, const std::function<bool(const OpenWindow&)>& fnOpens) const;
    // Whether there is a window of that name and key.
    [[nodiscard]] static bool IsOpen(const OpenWindow& oWindow);
    // Brings the window to the front. False when there is none of that name and key.
    static bool Activate(Application& oApplication, const OpenWindow& oWindow);
    // A modal one comes back as far as it was; returns when it is closed.
    static void OpenAgain(Application& oApplication, const OpenWindow& oWindow);
    // Opens the menus again, as far as their entries are still there. Those of the explorer's node and of a toolbar's
    // button return when they are closed.
    void RestoreMenu(Application& oApplication) const;

private:
    void TakeTrees(Application& oApplication);
    void TakeWindows(Application& oApplication);
    void TakeMenu(Application& oApplication);
    void RestoreDropDown(Application& oApplication) const;
    void RestoreBelow(Application& oApplication, QMenu* pMenu) const;
    void RestoreTrees(Application& oApplication) const;
    static void Place(Application& oApplication, const OpenWindow& oOpen);
};

} // namespace corvane::desktop
