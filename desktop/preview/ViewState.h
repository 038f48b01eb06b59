// What a user sees of an application beside what the session keeps: what is selected, which windows are open and how
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
        std::string name;
        std::string selected; // the node's key; empty for none
        QString filter;
        int scrolled = 0;
    };
    // What is entered into a form and isn't saved.
    struct Entry {
        std::string page; // the ProgID
        std::string field;
        std::string text; // as typed
    };
    struct OpenWindow {
        std::string name; // of the definition
        std::string key;  // empty for one that the library made up
        Long page = 0;
        bool modal = false;
        bool active = false;
        bool child = false;
        FormState state = FormState::Normal;
        Single left = 0, top = 0, width = 0, height = 0;
        Long pageWidth = 0, pageHeight = 0; // by the definition
        std::vector<Entry> entries;
    };
    enum class MenuRoot { None, MenuBar, Toolbar, Explorer };

    std::vector<Tree> trees;
    enum class Focus { Elsewhere, Tree, Filter } focus = Focus::Elsewhere;
    bool explorerIsShown = true;
    std::vector<OpenWindow> windows;
    MenuRoot menuRoot = MenuRoot::None;
    QPoint menuPlace;
    std::vector<std::string> menus; // the tools that the open menus hang on, then the tool that is lit

    // What is on screen now.
    [[nodiscard]] static ViewState Of(Application& application);
    // All but the menus, for another run; what isn't there or can't be read is as in an empty state.
    [[nodiscard]] QJsonObject ToJson() const;
    [[nodiscard]] static ViewState OfJson(const QJsonObject& json);
    // Selects and opens again what is still there. Of the windows that no service has opened again those are opened
    // for which opens says so; modal ones aren't, see OpenAgain.
    void Restore(Application& application, const std::function<bool(const OpenWindow&)>& opens) const;
    // Takes back what is entered into the forms of the windows for which opens says so. False when there is nothing.
    bool SetEntriesAside(Application& application, const std::function<bool(const OpenWindow&)>& opens) const;
    void EnterAgain(Application& application, const std::function<bool(const OpenWindow&)>& opens) const;
    // Whether there is a window of that name and key.
    [[nodiscard]] static bool IsOpen(const OpenWindow& window);
    // Brings the window to the front. False when there is none of that name and key.
    static bool Activate(Application& application, const OpenWindow& window);
    // A modal one comes back as far as it was; returns when it is closed.
    static void OpenAgain(Application& application, const OpenWindow& window);
    // Opens the menus again, as far as their entries are still there. Those of the explorer's node and of a toolbar's
    // button return when they are closed.
    void RestoreMenu(Application& application) const;

private:
    void TakeTrees(Application& application);
    void TakeWindows(Application& application);
    void TakeMenu(Application& application);
    void RestoreDropDown(Application& application) const;
    void RestoreBelow(Application& application, QMenu* menu) const;
    void RestoreTrees(Application& application) const;
    static void Place(Application& application, const OpenWindow& open);
};

} // namespace corvane::desktop
