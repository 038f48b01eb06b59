// When the start page is shown, and what is on it: first steps and samples of the application's file "welcome.xml",
// files and windows that were open last. It is in the main window's area while no window is there, and in a dialog when
// it is asked for otherwise.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/windows/Window.h"
#include "desktop/application/MainWindow.h"
#include "desktop/platform/Identity.h"
#include "desktop/session/RecentFiles.h"
#include "desktop/state/StateFile.h"
#include "desktop/welcome/StartPage.h"
#include "forms/WelcomeFile.h"

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace corvane::desktop {

class Welcome final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        MainWindow& window;
        Ref<ActiveBar> activeBar;
        Ref<RecentFiles> recentFiles;
        std::string folder; // the application's
        Identity identity;
        StateFile file; // what has been done, and which windows were open
        Guard guard;
        std::function<bool(const std::string& tool)> choose;
        // The path of a file, and the command that would ask for it; false when the file can't be opened.
        std::function<bool(const std::string& path, const std::string& command)> open;
        std::function<bool()> canOpen; // whether a service opens files
        std::function<bool(const std::string& name, const std::string& key)> openWindow;
        std::function<const std::string*(const std::string& key, const std::string& text)> translated;
        std::function<void(const std::string&)> note; // in the log
    };

    explicit Welcome(Parts parts);
    ~Welcome() override;

    // Once the main window is shown, with the windows that were open.
    void Start();
    // Whether the page comes up by itself while no window is open.
    void SetShownAtStart(bool shown);
    // Help > Welcome.
    void ShowAgain();
    // Shows or hides the page, by the windows that there are now.
    void Update();
    // The command by which the application opens files; empty when its file names none.
    [[nodiscard]] const std::string& OpenCommand() const { return m_def.open; }
    [[nodiscard]] StartPage* Page() const { return m_page; } // in the area; null until it was first shown

Q_SIGNALS:
    void ShownAtStartChanged(bool shown);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct LastWindow {
        std::string name;
        std::string key;
        std::string title;
    };

    void Follow();
    void Read();
    void Save();
    void NoteClick(const Tool& tool);
    void NoteWindow(const Window& window);
    [[nodiscard]] bool ShowsOwnWindow();
    [[nodiscard]] StartPage* NewPage(QWidget* parent);
    void ShowContent();
    [[nodiscard]] StartPage::Content NewContent();
    [[nodiscard]] QString Shown(const std::string& entry, const std::string& text) const;
    [[nodiscard]] StartPage::Section Steps();
    [[nodiscard]] StartPage::Section Files();
    [[nodiscard]] StartPage::Section Windows();
    [[nodiscard]] StartPage::Section Samples();
    [[nodiscard]] StartPage::Section CommandsOfHost();
    [[nodiscard]] StartPage::Entry EntryOf(const std::string& tool, const QString& text);
    void Do(const std::function<void()>& act);
    void OpenLast(const LastWindow& window);

    Parts m_parts;
    forms::WelcomeDef m_def;
    std::set<std::string> m_done; // commands
    std::vector<LastWindow> m_windows;
    QTimer m_saveSoon;
    bool m_wasShown = false; // the page, or the application's window, at an earlier start
    bool m_hasStarted = false;
    bool m_isShownAtStart = true;
    bool m_isAskedFor = false; // until a window comes
    QPointer<StartPage> m_page;
    QPointer<QDialog> m_dialog;
    QPointer<StartPage> m_dialogPage;
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
