// An application as its definition files say at present: they are followed, and every state of them that the library
// can start is shown at once, beside a list of problems. A state that it can't start, or of which it leaves out a file,
// doesn't take the place of a better one. The window stays while the application in it is created again.
#pragma once

#include "analysis/Findings.h"
#include "desktop/application/Application.h"
#include "desktop/preview/FolderWatch.h"
#include "desktop/preview/PreviewObjects.h"
#include "desktop/preview/SavedPlace.h"
#include "desktop/preview/ViewState.h"
#include "headless/Recording.h"

#include <QMainWindow>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>
#include <optional>
#include <set>
#include <vector>

class QDockWidget;
class QLabel;
class QToolButton;
class QVBoxLayout;

namespace corvane::desktop {

class CallList;
class MenuOutline;
class ProblemList;

struct PreviewOptions {
    std::string folder;
    bool standIns = false; // also for plug-ins that are there
    bool withDialogs = true;
    std::shared_ptr<StepRecorder> recorder = {};
    QByteArray takenOver = {}; // what PreviewWindow::HandOver gave in another run; empty for a fresh start
};

class PreviewWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit PreviewWindow(PreviewOptions options);
    ~PreviewWindow() override;

    // Shows the application and follows its files from here on. To be called at the depth of event loops at which the
    // application may be created again.
    void Start();

    // The application that is shown; a null pointer as long as there has been no good state.
    [[nodiscard]] Application* Shown() const { return m_application.get(); }
    // How often a state has been shown.
    [[nodiscard]] int ShownCount() const { return m_shown; }
    // How often it has been looked whether a state can be shown.
    [[nodiscard]] int TryCount() const { return m_tryCount; }
    // All that has changed in the folder is shown, or says why it can't be.
    [[nodiscard]] bool IsAtRest() const { return m_watch.IsAtRest() && !IsToBeShown() && !m_loading; }
    [[nodiscard]] bool HasErrors() const { return m_hasErrors; }
    // It was closed to be started again, with the same arguments, as a plug-in has been rebuilt.
    [[nodiscard]] bool WantsRestart() const { return m_restarts; }
    // What was on screen when a restart was wanted, for the run to come.
    [[nodiscard]] QByteArray HandOver() const;
    [[nodiscard]] ProblemList& Problems() { return *m_problems; }
    [[nodiscard]] QDockWidget& ProblemsDock() { return *m_problemsDock; }
    [[nodiscard]] CallList& Calls() { return *m_calls; }
    [[nodiscard]] MenuOutline& Outline() { return *m_outline; }
    [[nodiscard]] QString StateText() const;
    // Opens a window of that definition, as there may be no code yet that does so.
    void OpenWindow(const std::string& name);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Of the files as they are now.
    enum class State {
        Settled,    // they are shown, or never will be
        Invalid,    // they have errors that keep the state before on screen, if there is one
        Wanted,     // they are to be shown
        Waits,      // likewise, when what is open and in the way has been closed; which has been said
        Unsaved,    // likewise, when the unsaved work in the way has been saved
        Discarding, // they are to be shown though unsaved work goes with the old ones
    };

    void SetUpDocks();
    void SetUpStatusBar();
    void FillWindowMenu(QMenu* menu);
    void Restart();
    [[nodiscard]] QString SessionFile() const;
    void TakeOver();
    void ReportClosedWindows(const ViewState& view) const;

    void Folder_Changed();
    [[nodiscard]] bool RestartsProcesses();
    // Asks for a state to be shown as soon as nothing is open that would be torn down with the old one.
    void TryShow();
    void Wait(State state);
    [[nodiscard]] bool IsToBeShown() const { return m_state != State::Settled && m_state != State::Invalid; }
    [[nodiscard]] bool IsBusy() const;
    [[nodiscard]] Ref<WindowForm> ModalOfStandIns();
    [[nodiscard]] bool CanUnwind();
    [[nodiscard]] bool HasUnsavedWork();
    [[nodiscard]] bool Unwind();
    [[nodiscard]] bool Unload();
    void ShowNow();
    bool Load();
    void AfterLoad(bool started);
    void FillExplorer(bool shows);
    void ReportState();
    void ShowProblems();
    void ShowOutline();
    void Problems_Current();
    [[nodiscard]] bool IsOfStandIns(const std::string& window); // by the name of its definition

    PreviewOptions m_options;
    QTemporaryDir m_kept; // the session
    FolderWatch m_watch;
    SavedPlace m_place;
    QTimer m_retry;
    int m_loop = 0;

    std::unique_ptr<Application> m_application;
    Ref<inspect::Record> m_record;
    Ref<PreviewFactory> m_factory;
    std::shared_ptr<LoadedPlugins> m_loaded = std::make_shared<LoadedPlugins>();
    std::shared_ptr<const inspect::StandInFile> m_standIns;
    Subscription m_unloaded;

    std::vector<check::Finding> m_findings;
    QStringList m_failures; // of the latest start
    QString m_trouble;      // why the files can't be read at all; empty when they can
    State m_state = State::Settled;
    bool m_hasErrors = false;
    bool m_leavesOut = false;  // of a file at least
    bool m_showsWhole = false; // the state on screen has all files
    QString m_refused;         // why an entry can't be moved; empty when it could
    bool m_loading = false;
    bool m_inKey = false;
    bool m_restarts = false;
    int m_shown = 0;
    int m_tryCount = 0;
    QString m_time; // of the state that is shown
    std::optional<ViewState> m_view;
    bool m_isOtherUnsaved = false;  // than entries into forms
    bool m_takesOver = false;       // m_view is another run's
    std::set<std::string> m_opened; // windows that the user opened here

    QWidget* m_placeWidget;
    QVBoxLayout* m_layout;
    QLabel* m_nothing;
    ProblemList* m_problems;
    CallList* m_calls;
    MenuOutline* m_outline;
    QDockWidget* m_problemsDock;
    QDockWidget* m_callsDock;
    QDockWidget* m_outlineDock;
    QLabel* m_icon;
    QLabel* m_stateLabel;
    QLabel* m_lastCall;
    QToolButton* m_anyway;
    QToolButton* m_restart;
};

} // namespace corvane::desktop
