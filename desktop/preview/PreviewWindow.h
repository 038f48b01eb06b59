// An application as its definition files say at present: they are followed, and every good state of them is shown at
// once. A bad one is shown as a list of problems, over the last good state. The window stays while the application in
// it is made anew.
#pragma once

#include "analysis/Findings.h"
#include "desktop/application/Application.h"
#include "desktop/preview/FolderWatch.h"
#include "desktop/preview/KeptPlace.h"
#include "desktop/preview/PreviewObjects.h"
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
class ProblemList;

struct PreviewOptions {
    std::string sFolder;
    bool bStandIns = false; // also for plug-ins that are there
    bool bWithDialogs = true;
    std::shared_ptr<StepRecorder> pRecorder = {};
    QByteArray aTakenOver = {}; // what PreviewWindow::HandOver gave in another run; empty for a fresh start
};

class PreviewWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit PreviewWindow(PreviewOptions oOptions);
    ~PreviewWindow() override;

    // Shows the application and follows its files from here on. To be called at the depth of event loops at which the
    // application may be made anew.
    void Start();

    // The application that is shown; a null pointer as long as there has been no good state.
    [[nodiscard]] Application* Shown() const { return m_pApplication.get(); }
    // How often a state has been shown.
    [[nodiscard]] int ShownCount() const { return m_nShown; }
    [[nodiscard]] bool HasErrors() const { return m_bHasErrors; }
    // It was closed to be started again, with the same arguments, as a plug-in has been built anew.
    [[nodiscard]] bool WantsRestart() const { return m_bRestarts; }
    // What was on screen when a restart was wanted, for the run to come.
    [[nodiscard]] QByteArray HandOver() const;
    [[nodiscard]] ProblemList& Problems() { return *m_pProblems; }
    [[nodiscard]] QDockWidget& ProblemsDock() { return *m_pProblemsDock; }
    [[nodiscard]] CallList& Calls() { return *m_pCalls; }
    [[nodiscard]] QString StateText() const;
    // Opens a window of that definition, as there may be no code yet that does so.
    void OpenWindow(const std::string& sName);

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void SetUpDocks();
    void SetUpStatusBar();
    void FillWindowMenu(QMenu* pMenu);
    void Restart();
    [[nodiscard]] QString SessionFile() const;
    void TakeOver();
    void TellClosed(const ViewState& oView) const;

    void Folder_Changed();
    // Asks for a state to be shown as soon as nothing is open that would be torn down with the old one.
    void TryShow();
    [[nodiscard]] bool IsBusy() const;
    [[nodiscard]] Ref<WindowForm> ModalOfStandIns();
    [[nodiscard]] bool CanUnwind();
    [[nodiscard]] bool HasUnsavedWork();
    [[nodiscard]] bool Unwind();
    [[nodiscard]] bool Unload();
    void ShowNow();
    bool Load();
    void AfterLoad(bool bStarted);
    void FillExplorer(bool bShows);
    void ReportState();
    void ShowProblems();
    [[nodiscard]] bool IsOfStandIns(const std::string& sWindow); // by the name of its definition

    PreviewOptions m_oOptions;
    QTemporaryDir m_oKept; // the session
    FolderWatch m_oWatch;
    KeptPlace m_oPlace;
    QTimer m_oRetry;
    int m_nLoop = 0;

    std::unique_ptr<Application> m_pApplication;
    Ref<inspect::Record> m_oRecord;
    Ref<PreviewFactory> m_oFactory;
    std::shared_ptr<LoadedPlugins> m_pLoaded = std::make_shared<LoadedPlugins>();
    std::shared_ptr<const inspect::StandInFile> m_pStandIns;
    Subscription m_oUnloaded;

    std::vector<check::Finding> m_aFindings;
    QStringList m_aFailures; // of the latest start
    QString m_sTrouble;      // why the files can't be read at all; empty when they can
    bool m_bHasErrors = false;
    bool m_bWanted = false;   // a state is to be shown
    bool m_bDiscards = false; // also when unsaved work goes with the old one
    bool m_bUnsaved = false;  // stands in the way
    bool m_bWaits = false;    // and says so
    bool m_bLoading = false;
    bool m_bInKey = false;
    bool m_bRestarts = false;
    int m_nShown = 0;
    QString m_sTime; // of the state that is shown
    std::optional<ViewState> m_oView;
    bool m_bTakesOver = false;         // m_oView is another run's
    std::set<std::string> m_setOpened; // windows that the person opened here

    QWidget* m_pPlace;
    QVBoxLayout* m_pLayout;
    QLabel* m_pNothing;
    ProblemList* m_pProblems;
    CallList* m_pCalls;
    QDockWidget* m_pProblemsDock;
    QDockWidget* m_pCallsDock;
    QLabel* m_pIcon;
    QLabel* m_pState;
    QLabel* m_pLastCall;
    QToolButton* m_pAnyway;
    QToolButton* m_pRestart;
};

} // namespace corvane::desktop
