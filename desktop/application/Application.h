// One application in the Qt host: its models, its platform, the loaded library and the main window.
#pragma once

#include "adapters/platform/ApplicationPlatform.h"
#include "corvane/core/Library.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/application/CommandOwner.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/blame/Blame.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/platform/HostParts.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/service/AppearancePage.h"
#include "desktop/service/HostDefinitions.h"
#include "desktop/service/ProgressControl.h"
#include "desktop/service/UnsavedWork.h"
#include "desktop/translation/DefinitionTranslation.h"
#include "desktop/windows/WindowForm.h"

#include <QPixmap>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvane::desktop {

struct ApplicationOptions {
    std::string sFolder;
    bool bWithDialogs = true; // false where nobody watches: failures go to the error stream, messages are kept
    // Classes that are part of the program itself, by their ProgIDs, beside those of the application's plug-ins.
    std::vector<std::pair<std::string, HostObjectFactory::Maker>> aClasses = {};
    bool bPersonal = true; // false: neither the session nor the person's own keys, toolbars and menus are used
    LeftOut oLeftOut = {}; // services that aren't started; the mode without plug-ins is without the above as well
    bool bWatch = false;   // name services that keep the user interface busy, in the log
    Blame::AskFunction fnAskAfterDeath = {}; // asked when a service ended the program the last time
    QStringList aLanguages = {};             // for the texts of definitions, the most wanted first; none for their own
    // Where the session is kept, for hosts that keep one of their own; the window's place isn't part of it then.
    std::string sSessionFile = {};
    std::shared_ptr<StepRecorder> pRecorder = {}; // follows what the person does
    // What makes the objects in place of the plug-ins' factory, which it gets, with the plug-ins.
    std::function<Ref<IObjectFactory>(Ref<IObjectFactory>, Ref<PluginFactory>)> fnObjects = {};
};

class Application {
public:
    // Fails with 76 when there is no such application folder.
    explicit Application(const ApplicationOptions& oOptions);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Initialises and starts the library and shows the window. False when the library couldn't be started; the window
    // is shown all the same, with what came up, once the failure has been seen.
    bool Start();
    // The user chooses the tool of that name. False when there is none, it is hidden or disabled, or a modal window is
    // open.
    bool Choose(const std::string& sTool);
    // The user clicks a command of the active window: help, ok, cancel, apply, previous, next, finish, save, saveas, or
    // the close box: close. False when there is none or it is disabled.
    bool ClickCommand(const std::string& sCommand);
    // The user brings a page of the active window to the front, from 1. False when that can't be.
    bool ShowPage(int nPage);
    [[nodiscard]] bool IsModalFormOpen() const;
    // Whether something would be lost if the application ended now. Services and pages are asked, and no person.
    [[nodiscard]] bool HasUnsavedWork();
    // Runs what the host does of itself; a failure that leaves the library is shown, and nothing is recorded as a step.
    void ByHost(const std::function<void()>& fnAct);
    // Lets everything happen that is due, such as windows that open a moment later.
    void Settle();
    // Runs instead of the event loop while a modal window is open.
    using ModalLoopFunction = decltype(WindowHost::fnModalLoop);
    void SetModalLoop(ModalLoopFunction fnModalLoop) { m_pWindowHost->fnModalLoop = std::move(fnModalLoop); }

    [[nodiscard]] MainWindow& Window() { return *m_pWindow; }
    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_oActiveBar; }
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_frmMain; }
    [[nodiscard]] const Ref<PanelForm>& Panel() const { return m_frmPanel; }
    [[nodiscard]] CommonDialog& Dialogs() { return *m_oCommonDialog; }
    [[nodiscard]] const QtMessageBox& Messages() const { return *m_oMessageBox; }
    [[nodiscard]] Blame& Blamed() { return *m_pBlame; }
    [[nodiscard]] PersonalDesktop& Personal() { return *m_pPersonal; }
    [[nodiscard]] FailurePresenter& Failures() { return m_oFailures; }
    // Menus, toolbars, explorer, windows, status and messages as an indented text.
    [[nodiscard]] std::string AsText() const;
    // The main window with the windows over it.
    [[nodiscard]] QPixmap Picture();

private:
    [[nodiscard]] Platform MakePlatform();

    // ApplicationService.cpp: what the host's own service does.
    void SetUpService();
    [[nodiscard]] PersonalDesktop::Parts PartsOfPerson(const ApplicationOptions& oOptions);
    [[nodiscard]] Ref<HostObjectFactory> MakeObjectFactory();
    [[nodiscard]] Ref<IScreenPrinter> MakeScreenPrinter();
    [[nodiscard]] QString RunningService() const;
    [[nodiscard]] QString StatusText() const;
    [[nodiscard]] bool SettleUnsavedWork();
    [[nodiscard]] ExitAnswer AskAboutUnsavedWork(const std::vector<UnsavedGroup>& aGroups);
    void ApplyAppearance(const Appearance& oAppearance);

    void SetUpWindowHost();
    void Note(const char* sProcedure, const std::string& sText) const; // in the log
    [[nodiscard]] LeaveAnswer AskToLeave(const LeaveQuestion& oQuestion);
    void ShowHelp(Long lTopic);
    [[nodiscard]] Ref<WindowForm> ActiveWindowForm() const;
    [[nodiscard]] CommandOwner::Part PartOf(const QWidget* pWidget) const;

    bool m_bWithDialogs;
    FailurePresenter m_oFailures;
    ApplicationPlatform m_oPlatform;
    DefinitionTranslation m_oTranslation;
    Ref<ActiveBar> m_oActiveBar = NewHostActiveBar();
    Ref<MdiForm> m_frmMain = New<MdiForm>();
    Ref<PanelForm> m_frmPanel = New<PanelForm>();
    Ref<QtMessageBox> m_oMessageBox;
    Ref<CommonDialog> m_oCommonDialog;
    std::shared_ptr<StepRecorder> m_pRecorder;
    Ref<ProgressControl> m_oProgress = New<ProgressControl>();
    Ref<QtTimers> m_oTimers;
    std::shared_ptr<WindowHost> m_pWindowHost = std::make_shared<WindowHost>();
    std::unique_ptr<Blame> m_pBlame; // ends last: services may die at their end
    std::unique_ptr<Library> m_pLibrary;
    std::unique_ptr<MainWindow> m_pWindow;
    std::unique_ptr<PersonalDesktop> m_pPersonal;
    std::unique_ptr<CommandOwner> m_pCommandOwner;
    std::vector<std::pair<std::string, HostObjectFactory::Maker>> m_aClasses;
    decltype(ApplicationOptions::fnObjects) m_fnObjects;
    Subscription m_oToolClick;
    Subscription m_oQueryUnload;
    Ref<Object> m_oRunningProvider; // whose command was chosen last
};

} // namespace corvane::desktop
