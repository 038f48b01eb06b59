// One application in the Qt host: its models, its platform, the loaded library and the main window.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "corvane/platform/Platform.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/application/CommandOwner.h"
#include "desktop/blame/LeftOutServices.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/failures/GuardedApplication.h"
#include "desktop/jobs/JobQuestion.h"
#include "desktop/platform/Identity.h"
#include "desktop/service/HeldShell.h"
#include "desktop/service/HostCommands.h"
#include "desktop/translation/DefinitionTranslation.h"
#include "desktop/windows/WindowHost.h"

#include <QPixmap>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
class ActionItemDef;
class Library;
class MdiForm;
class PanelForm;
class PluginFactory;
struct ApplicationPlatform;
} // namespace corvane

namespace corvane::items {
class Items;
}

namespace corvane::desktop {

class ApplicationEnd;
class Blame;
class CommandStates;
class CommonDialog;
class DesktopJobs;
class ExplorerLink;
class HostObjectFactory;
class HostService;
class MainWindow;
class PersonalDesktop;
class ProcessWaiting;
class ProgressControl;
class QtMessageBox;
class QtScreen;
class QtTimers;
class StepRecorder;
class Welcome;
class WindowForm;
enum class CrashAnswer;
struct Appearance;
struct CrashRecord;
struct ExitAnswer;
struct UnsavedGroup;

struct ApplicationOptions {
    std::string folder;
    bool withDialogs = true; // false where no one watches: failures go to the error stream, messages are kept
    // Classes that are part of the program itself, by their ProgIDs, beside those of the application's plug-ins.
    std::vector<std::pair<std::string, std::function<Ref<Object>()>>> classes = {};
    bool personal = true; // false: neither the session nor the user's own keys, toolbars and menus are used
    LeftOut leftOut = {}; // services that aren't started; the mode without plug-ins is without the above as well
    bool watch = false;   // name services that keep the user interface busy, in the log
    // Asked when a service ended the program the last time; see Blame.
    std::function<CrashAnswer(const CrashRecord&, const std::string& who)> askAfterCrash = {};
    QStringList languages = {}; // for the texts of definitions, the most wanted first; none for their own
    // Where the session is kept, for hosts that keep one of their own; the window's place isn't part of it then.
    std::string sessionFile = {};
    std::shared_ptr<StepRecorder> recorder = {}; // follows what the user does
    // What makes the objects in place of the plug-ins' factory, which it gets, with the plug-ins.
    std::function<Ref<IObjectFactory>(Ref<IObjectFactory>, Ref<PluginFactory>)> objects = {};
    // Whether the objects of a ProgID are stubs, which take any name; without it none are.
    std::function<bool(const std::string&)> isStub = {};
};

class Application final : private FailurePresenter::Observer, private HostCommands {
public:
    // Fails with 76 when there is no such application folder.
    explicit Application(const ApplicationOptions& options);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Initializes and starts the library and shows the window. False when the library couldn't be started; the window
    // is shown all the same, with what came up, once the failure has been seen.
    bool Start();
    // The user chooses the tool of that name. False when there is none, it is hidden or disabled, or a modal window is
    // open.
    bool Choose(const std::string& toolName);
    // The user clicks a command of the active window: help, ok, cancel, apply, previous, next, finish, save, saveas, or
    // the close box: close. False when there is none or it is disabled.
    bool ClickCommand(const std::string& command);
    // The user brings a page of the active window to the front, from 1. False when that can't be.
    bool ShowPage(int page);
    [[nodiscard]] bool IsModalFormOpen() const;
    // It has been ended, maybe while it started: no event loop is to wait for it, and nothing can be done to it.
    [[nodiscard]] bool HasEnded() const;
    // Whether something would be lost if the application ended now. Services and pages are asked, and no user.
    [[nodiscard]] bool HasUnsavedWork();
    // Runs what the host does of itself; a failure that leaves the library is shown, and nothing is recorded as a step.
    void ByHost(const std::function<void()>& act);
    // Lets everything happen that is due, such as windows that open a moment later.
    void Settle();
    // Runs instead of the event loop while a modal window is open.
    void SetModalLoop(decltype(WindowHost::modalLoop) modalLoop) { m_windowHost->modalLoop = std::move(modalLoop); }

    // Has a service open the file by its member OpenFile, or chooses the command and answers its question for a file.
    // False when neither is there or the command can't be chosen now.
    bool OpenFile(const std::string& path, const std::string& command = {});

    [[nodiscard]] MainWindow& Window() { return *m_window; }
    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_activeBar; }
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_mainForm; }
    [[nodiscard]] const Ref<PanelForm>& Panel() const { return m_panelForm; }
    [[nodiscard]] CommonDialog& Dialogs();
    [[nodiscard]] const QtMessageBox& Messages() const;
    [[nodiscard]] DesktopJobs& Jobs() { return *m_jobs; }
    [[nodiscard]] Blame& Blamed() { return *m_blame; }
    [[nodiscard]] PersonalDesktop& Personal() { return *m_personal; }
    [[nodiscard]] FailurePresenter& Failures() { return m_failures; }
    // Menus, toolbars, explorer, windows, status and messages as an indented text.
    [[nodiscard]] std::string AsText() const;
    // The main window with the windows over it.
    [[nodiscard]] QPixmap Picture();

private:
    [[nodiscard]] Platform MakePlatform();

    // ApplicationService.cpp: what the host's own service does.
    void SetUpService();
    void ShowPreferences() override;
    void ShowPalette() override;
    void ShowShortcuts() override;
    void ShowCustomize() override;
    void ShowInspector() override;
    void ShowLog() override;
    void ShowJobs() override;
    void DoWithWindow(WindowCommand command) override;
    void ShowManual() override;
    // ApplicationFiles.cpp: what was open before, and how it was arranged.
    void SetUpWelcome();
    void ShowWelcome() override;
    void OpenRecentFile(Long place) override;
    void ClearRecentFiles() override;
    void UseLayout(const std::string& name) override;
    void SaveLayout() override;
    void ManageLayouts() override;
    void ShowRecentFiles();
    void ShowLayouts();
    [[nodiscard]] std::vector<Ref<Object>> FileServices() const; // that open files
    void NoteOpened(const std::string& path);
    // ApplicationItems.cpp: several items, drops, files.
    void SetUpItems();
    void FollowItems();
    [[nodiscard]] QString WhyNotSeveral(const Tool& tool) const;
    [[nodiscard]] bool TakesFiles() const;
    void OpenDropped(const QStringList& files);
    void ToggleLink() override;
    void SetUpLink();
    void ShowAbout() override;
    // The first of these files that is there, shown by the desktop; false when none is.
    [[nodiscard]] bool OpenHelp(const QStringList& names) const;
    void PrepareCommand(const Tool& tool);
    void NoteLostClick(const Tool& tool, const char* reason) const;
    [[nodiscard]] std::unique_ptr<PersonalDesktop> MakePersonal(const ApplicationOptions& options);
    [[nodiscard]] Ref<HostObjectFactory> MakeObjectFactory();
    [[nodiscard]] Ref<IScreenPrinter> MakeScreenPrinter();
    [[nodiscard]] QString RunningService() const;
    [[nodiscard]] QString StatusText() const;
    [[nodiscard]] bool SettleUnsavedWork();
    [[nodiscard]] ExitAnswer AskAboutUnsavedWork(const std::vector<UnsavedGroup>& groups,
                                                 const std::vector<std::string>& jobs);
    void ApplyAppearance(const Appearance& appearance);
    void SetUpJobs();
    [[nodiscard]] JobAnswer AskAboutJobs(const JobQuestion& question);
    void StopJobs();

    // ApplicationFailures.cpp: what follows a failure.
    void SetUpFailures();
    void Failed(int depth) override;
    void Seen() override;
    void Returned() override;
    void ShowUncaught(const UncaughtFailure& uncaught);
    [[nodiscard]] std::string PlaceOf(const UncaughtFailure& uncaught) const; // empty when it is unknown

    void SetUpWindowHost();
    void Note(const char* procedure, const std::string& text) const; // in the log
    [[nodiscard]] LeaveAnswer AskToLeave(const LeaveQuestion& question);
    void ShowHelp(Long topic);
    [[nodiscard]] Ref<WindowForm> ActiveWindowForm() const;
    [[nodiscard]] CommandOwner::Part PartOf(const QWidget* widget) const;

    bool m_withDialogs;
    FailurePresenter m_failures;
    Identity m_identity;
    std::unique_ptr<ApplicationPlatform> m_platform;
    DefinitionTranslation m_translation;
    Ref<ActiveBar> m_activeBar;
    Ref<MdiForm> m_mainForm;
    Ref<PanelForm> m_panelForm;
    std::shared_ptr<items::Items> m_items;
    Subscription m_selectionChanged;
    Subscription m_itemsStepped;
    Ref<QtMessageBox> m_messageBox;
    Ref<CommonDialog> m_commonDialog;
    std::shared_ptr<StepRecorder> m_recorder;
    Ref<ProcessWaiting> m_waiting;
    Ref<ProgressControl> m_progress;
    Ref<QtTimers> m_timers;
    Ref<QtScreen> m_screen;
    HeldShell m_shell;
    std::optional<int> m_barShownAt; // the depth of the code that showed the progress bar last
    std::shared_ptr<WindowHost> m_windowHost = std::make_shared<WindowHost>();
    std::unique_ptr<Blame> m_blame; // ends last: services may die at their end
    std::unique_ptr<DesktopJobs> m_jobs;
    std::unique_ptr<Library> m_library;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<PersonalDesktop> m_personal;
    std::unique_ptr<CommandOwner> m_commandOwner;
    std::unique_ptr<CommandStates> m_commandStates;
    std::unique_ptr<Welcome> m_welcome;
    std::unique_ptr<ExplorerLink> m_link;
    Ref<HostService> m_hostService;     // nothing without its definition
    Ref<ActionItemDef> m_runningAction; // of the command that was chosen last
    decltype(ApplicationOptions::classes) m_classes;
    decltype(ApplicationOptions::objects) m_objects;
    Subscription m_toolClick;
    Subscription m_toolClicked;
    int m_clicks = 0;       // that are being handled, each within the one before
    int m_firstClickAt = 0; // the depth of the code that the first of them runs
    Subscription m_queryUnload;
    Ref<Object> m_runningProvider; // whose command was chosen last
    std::unique_ptr<ApplicationEnd> m_end;
    bool m_endIsBrokenOff = false;
    std::unique_ptr<GuardedApplication::Catcher> m_catcher;
};

} // namespace corvane::desktop
