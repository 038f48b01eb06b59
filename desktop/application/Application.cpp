#include "desktop/application/Application.h"

#include "adapters/platform/ApplicationPlatform.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Library.h"
#include "corvane/platform/controls/BarText.h"
#include "desktop/application/ApplicationEnd.h"
#include "desktop/application/CommandStates.h"
#include "desktop/application/ExplorerLink.h"
#include "desktop/application/FormOpener.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/NameQuestion.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/application/Welcome.h"
#include "desktop/bars/BarChanges.h"
#include "desktop/blame/Blame.h"
#include "desktop/documents/Documents.h"
#include "desktop/jobs/DesktopJobs.h"
#include "desktop/platform/HostParts.h"
#include "desktop/platform/WideRegisters.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/service/AppearancePage.h"
#include "desktop/service/HostDefinitions.h"
#include "desktop/service/HostService.h"
#include "desktop/service/ProcessWaiting.h"
#include "desktop/service/ProgressControl.h"
#include "desktop/style/ContrastStyle.h"
#include "desktop/style/WidgetText.h"
#include "desktop/windows/LeaveBox.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/WindowBody.h"
#include "desktop/windows/WindowForm.h"
#include "desktop/windows/WindowFormFactory.h"
#include "items/Items.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFile>
#include <QMdiArea>
#include <QPainter>
#include <QUrl>
#include <algorithm>
#include <array>
#include <filesystem>

namespace corvane::desktop {

namespace {

void NodesAsText(std::string& text, const std::vector<Node*>& siblings, std::size_t depth) {
    for (const Node* node : siblings) {
        text += std::string(depth * 2, ' ') + node->Text() + "\n";
        NodesAsText(text, node->Children(), depth + 1);
    }
}

std::string TextOfFrontPage(WindowForm& form) {
    const WindowBody* body = form.Body();
    return body && body->PageCount() > 0 ? WidgetAsText(body->Place(body->CurrentPage()), "    ") : "";
}

} // namespace

Application::Application(const ApplicationOptions& options)
    : m_withDialogs(options.withDialogs), m_failures(options.withDialogs), m_identity(ReadIdentity(options.folder)),
      m_platform(std::make_unique<ApplicationPlatform>(options.folder, m_identity.Settings())),
      m_translation(options.languages, m_platform->utilities->GetAppFolder("Services"),
                    [this](const std::string& text) { Note("Translation", text); }),
      m_activeBar(NewHostActiveBar()), m_mainForm(New<MdiForm>()), m_panelForm(New<PanelForm>()),
      m_messageBox(New<QtMessageBox>(options.withDialogs)), m_commonDialog(New<CommonDialog>(options.withDialogs)),
      m_recorder(options.recorder), m_waiting(New<ProcessWaiting>(options.withDialogs)),
      m_progress(New<ProgressControl>()),
      m_timers(New<QtTimers>([this](const std::function<void()>& act) { ByHost(act); })), m_screen(New<QtScreen>()),
      m_shell(m_activeBar), m_classes(options.classes), m_objects(options.objects) {
    if (m_recorder) {
        m_recorder->Follow({m_mainForm, m_activeBar, m_panelForm, [this] { return m_failures.Entry(); }});
        m_commonDialog->SetOnAnswer([recorder = m_recorder](const std::string& text) { recorder->Answer(text); });
    }
    m_failures.SetServicesFolder(QString::fromStdString(m_platform->utilities->GetAppFolder("Services")));
    m_failures.SetLogFile(m_platform->utilities->LogPath());
    m_platform->utilities->SetShow([this](const ShownFailure& shown) { m_failures.ShowReported(shown); });
    m_waiting->SetGuard([this](const std::function<void()>& act) { ByHost(act); });
    m_platform->plugins->Processes()->SetMonitor(m_waiting);
    m_platform->plugins->Processes()->SetExplorer(m_panelForm);
    m_mainForm->AddMember("ActiveBar", m_activeBar);
    m_mainForm->AddMember("CommonDialog", m_commonDialog);
    m_mainForm->AddMember("ctlCVProgress", m_progress);
    m_mainForm->SetCaption(m_identity.name);
    if (!m_identity.problem.empty())
        Note("Identity", m_identity.problem);
    SetUpService();
    m_blame = std::make_unique<Blame>(m_platform->utilities,
                                      std::filesystem::path(m_platform->utilities->LogPath()).parent_path().string(),
                                      options.leftOut, options.askAfterCrash);
    SetUpFailures();
    SetUpJobs();
    m_mainForm->Load();
    m_library = std::make_unique<Library>(MakePlatform());
    m_items = std::make_shared<items::Items>(m_panelForm,
                                             [this](const std::function<void()>& act) { m_failures.Guard(act); });
    m_window = std::make_unique<MainWindow>(m_mainForm, m_activeBar, m_panelForm, m_failures, m_items);
    m_window->Bars().SetProgressWidget([progress = m_progress] { return progress->Widget(); });
    m_jobs->SetWindow(*m_window);
    m_failures.SetParentWindow(m_window.get());
    m_messageBox->SetParentWindow(m_window.get());
    m_commonDialog->SetParentWindow(m_window.get());
    m_waiting->SetParentWindow(m_window.get());
    m_commandStates = std::make_unique<CommandStates>(*m_window);
    m_link = std::make_unique<ExplorerLink>(*m_window);
    SetUpWindowHost();
    m_windowHost->openForm =
        FormOpener(*m_windowHost, m_translation, m_platform->folder, options.isStub,
                   [dialog = m_commonDialog](const forms::FieldDef& field, const std::string& path) {
                       return AskForPath(*dialog, field, path);
                   });
    m_personal = MakePersonal(options);
    SetUpWelcome();
    SetUpItems();
    m_commonDialog->KeepFolders(m_personal->KeptFile("folders.json"));
    if (options.watch)
        m_blame->StartWatch();
}

void Application::SetUpWindowHost() {
    m_windowHost->mainForm = m_mainForm.Get();
    m_windowHost->area = &m_window->Area();
    m_windowHost->frames = &m_window->OpenDocuments();
    m_windowHost->mainWindow = m_window.get();
    m_windowHost->messages = m_platform->windowMessages;
    m_windowHost->guard = [this](const std::function<void()>& act) { m_failures.Guard(act); };
    m_windowHost->askToLeave = [this](const LeaveQuestion& question) { return AskToLeave(question); };
    m_windowHost->mayClose = [this](const auto&... question) { return m_jobs->MayClose(question...); };
    m_windowHost->inform = [this](const QString& title, const QString& text) {
        m_messageBox->ShowInformation(text.toStdString(), title.toStdString());
    };
    m_windowHost->changed = [this] { m_commandStates->Schedule(); };
    m_windowHost->help = [this](Long topic) { ShowHelp(topic); };
    if (m_recorder)
        m_windowHost->byUser = [this](const WindowStep& step, const std::function<void()>& work) {
            m_recorder->OnWindow(step, work);
        };
}

Application::~Application() {
    m_runningProvider = nullptr;
    m_runningAction = nullptr;
    if (!HasEnded())
        m_failures.Guard([this] { m_mainForm->Unload(); });
    StopJobs();
    m_window->Bars().SetChanges(BarChanges::None());
    m_window->Bars().SetWhyNot({});
    m_selectionChanged = {};
    m_itemsStepped = {};
    m_windowHost->changed = nullptr;
    m_personal->LastFiles()->SetOnChange({});
    m_welcome.reset();
    m_link.reset();
    m_commandStates.reset();
    m_hostService = nullptr;
    m_commandOwner.reset();
    m_personal.reset();
    m_window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // widgets of plug-ins go before the library
    m_library.reset();
    if (m_recorder)
        m_recorder->Leave();
}

Platform Application::MakePlatform() {
    Platform platform = m_platform->MakePlatform();
    platform.oScreen = m_screen;
    platform.oTimers = m_timers;
    platform.oMessageBox = m_messageBox;
    const std::string services = m_platform->utilities->GetAppFolder("Services");
    platform.oFileSystem = New<HostFileSystem>(m_blame->Files(platform.oFileSystem, services), services);
    platform.oObjectFactory = MakeObjectFactory();
    platform.oScreenPrinter = MakeScreenPrinter();
    return platform;
}

// A run that no one watches is given "Save" or "Stay" beforehand; otherwise the changes go.
LeaveAnswer Application::AskToLeave(const LeaveQuestion& question) {
    const auto answer = m_commonDialog->TakeAnswer();
    if (!answer)
        return AskInBox(question);
    if (EqualText(*answer, "Save"))
        return question.canSave ? LeaveAnswer::Save : LeaveAnswer::Stay;
    return EqualText(*answer, "Stay") ? LeaveAnswer::Stay : LeaveAnswer::Discard;
}

// False without such a file; which one no program opens is said here.
bool Application::OpenHelp(const QStringList& names) const {
    const QString folder = QString::fromStdString(m_platform->folder) + "/Help/";
    for (const QString& name : names)
        for (const char* ending : {".html", ".htm", ".pdf", ".txt"}) {
            const QString path = folder + name + ending;
            if (!m_withDialogs || !QFile::exists(path))
                continue;
            if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
                m_messageBox->ShowInformation(
                    QCoreApplication::translate("Application", "No program on this system opens %1.")
                        .arg(QDir::toNativeSeparators(path))
                        .toStdString(),
                    QCoreApplication::translate("Application", "Help").toStdString());
            return true;
        }
    return false;
}

void Application::ShowHelp(Long topic) {
    if (OpenHelp({QString::number(topic)}))
        return;
    m_messageBox->ShowInformation(
        QCoreApplication::translate("Application", "The help topic %1 can't be opened. Its file is expected at %2.")
            .arg(topic)
            .arg(QString::fromStdString(m_platform->folder) + QString("/Help/%1.html").arg(topic))
            .toStdString(),
        QCoreApplication::translate("Application", "Help").toStdString());
}

void Application::Note(const char* procedure, const std::string& text) const {
    m_platform->utilities->LogError(m_platform->utilities->AppName(), "Desktop", procedure,
                                    Failure(FailureNumber::FileAccess, text), {}, false);
}

bool Application::Start() {
    bool started = false;
    ContrastStyle::Follow(); // a failure may be shown before the user's own theme is known
    m_failures.Guard([&] {
        const Ref<Framework> framework = CorvaneMain::Framework();
        ClearWideRegisters();
        framework->Initialize(m_mainForm, m_panelForm, New<WindowFormFactory>(m_windowHost));
        started = HasEnded();
        if (started)
            return;
        // Behind the library's subscription, which has run the command.
        m_toolClicked = m_activeBar->ToolClick.Subscribe([this](const Ref<Tool>&) { m_clicks -= m_clicks > 0; });
        m_personal->Initialized();
        m_commandOwner = std::make_unique<CommandOwner>(
            m_mainForm, [this](const QWidget* widget) { return PartOf(widget); },
            [this](const std::function<void()>& act) { m_failures.Guard(act); });
        new NameQuestion(m_window->Explorer(), *m_mainForm, // which the panel owns
                         [this](const std::function<void()>& act) { m_failures.Guard(act); });
        if (m_translation.Begin(*framework->ServiceManager()))
            m_window->Bars().Redraw();
        SetUpLink();
        FollowItems();
        ShowLayouts();
        ShowRecentFiles();
        framework->Start();
        started = true;
    });
    if (HasEnded())
        return started; // a service has ended it, as where a login is cancelled
    ApplyAppearance(Appearance::Load());
    m_window->Flush();
    m_personal->Restore(started);
    m_window->show();
    if (!HasEnded())
        m_personal->RestoreWindows();
    if (!HasEnded())
        m_welcome->Start();
    return started;
}

bool Application::Choose(const std::string& toolName) {
    m_commandStates->Update();
    const Ref<Tool> tool = m_activeBar->Tools()->Find(toolName);
    if (HasEnded() || !tool || !tool->Visible() || !tool->Enabled() || IsModalFormOpen())
        return false;
    const bool isChosen = m_window->Bars().Choose(tool);
    m_window->Flush();
    return isChosen;
}

Ref<WindowForm> Application::ActiveWindowForm() const {
    const Ref<Form> activeForm = m_mainForm->ForegroundForm();
    return activeForm && activeForm->Visible() ? activeForm.TryAs<WindowForm>() : nullptr;
}

CommandOwner::Part Application::PartOf(const QWidget* widget) const {
    if (m_window->ExplorerDock().isAncestorOf(widget))
        return CommandOwner::Part::Explorer;
    const Ref<WindowForm> form = ActiveWindowForm();
    return form && form->Frame() && form->Frame()->isAncestorOf(widget) ? CommandOwner::Part::Window
                                                                        : CommandOwner::Part::Nowhere;
}

bool Application::ClickCommand(const std::string& command) {
    using Command = StandardCommandConstants;
    static constexpr std::array<std::pair<const char*, Command>, 9> commands{{{"help", Command::cvHelp},
                                                                              {"ok", Command::cvOK},
                                                                              {"cancel", Command::cvCancel},
                                                                              {"apply", Command::cvApply},
                                                                              {"previous", Command::cvPrevious},
                                                                              {"next", Command::cvNext},
                                                                              {"finish", Command::cvFinish},
                                                                              {"save", Command::cvSave},
                                                                              {"saveas", Command::cvSaveAs}}};
    const Ref<WindowForm> form = ActiveWindowForm();
    if (!form)
        return false;
    if (EqualText(command, "close")) {
        form->ByUser(WindowStep::What::Close, 0, [&] { form->RequestClose(); });
        return true;
    }
    for (const auto& [name, standardCommand] : commands)
        if (EqualText(command, name) && form->IsCommandEnabled(standardCommand)) {
            form->ByUser(WindowStep::What::Command, static_cast<int>(standardCommand),
                         [&, commandKind = standardCommand] { form->ClickCommand(commandKind); });
            return true;
        }
    return false;
}

bool Application::ShowPage(int page) {
    const Ref<WindowForm> form = ActiveWindowForm();
    if (!form)
        return false;
    form->ByUser(WindowStep::What::Page, page - 1, [&] { form->SetActivePageIndex(page - 1); });
    return form->ActivePageIndex() == page - 1;
}

CommonDialog& Application::Dialogs() {
    return *m_commonDialog;
}

const QtMessageBox& Application::Messages() const {
    return *m_messageBox;
}

bool Application::IsModalFormOpen() const {
    const auto forms = m_mainForm->Forms();
    return std::any_of(forms.begin(), forms.end(), [](const auto& frm) { return frm->Visible() && frm->IsModal(); });
}

void Application::ByHost(const std::function<void()>& act) {
    m_failures.Guard([&] {
        if (m_recorder)
            m_recorder->NotByUser();
        act();
    });
}

void Application::Settle() {
    constexpr int longest = 1000; // a timer may run for ever
    QElapsedTimer elapsed;
    elapsed.start();
    do
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    while (m_timers->RunningCount() > 0 && elapsed.elapsed() < longest);
    m_window->Flush();
}

QPixmap Application::Picture() {
    const QPixmap main = m_window->grab();
    const QPoint corner = m_window->geometry().topLeft();
    QRect all(QPoint(), m_window->size());
    std::vector<QWidget*> overItems;
    for (const auto& frm : m_mainForm->Forms())
        if (const auto form = frm.TryAs<WindowForm>();
            form && frm->Visible() && form->Frame() && form->Frame()->isWindow())
            overItems.push_back(form->Frame());
    for (const QWidget* over : overItems)
        all |= over->geometry().translated(-corner);
    QPixmap picture(all.size() * main.devicePixelRatio());
    picture.setDevicePixelRatio(main.devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.drawPixmap(-all.topLeft(), main);
    for (QWidget* over : overItems) {
        const QRect place = over->geometry().translated(-corner - all.topLeft());
        painter.drawPixmap(place.topLeft(), over->grab());
        painter.drawRect(place.adjusted(-1, -1, 0, 0)); // represents the frame that the desktop draws
    }
    return picture;
}

std::string Application::AsText() const {
    std::string text;
    for (const auto& band : m_activeBar->Bands()->All()) {
        if (band->Kind() == BandKind::MenuBar)
            text += "Menus\n" + BandAsText(*band, 1);
        else if (band->Kind() == BandKind::Toolbar && band->Visible())
            text += "Toolbar " + band->Caption() + "\n" + BandAsText(*band, 1);
    }
    for (const auto& control : m_panelForm->Controls())
        if (const auto tvw = control.TryAs<TreeView>()) {
            text += "Explorer " + tvw->Name() + "\n";
            NodesAsText(text, tvw->GetNodes()->Roots(), 1);
        }
    text += "Status\n  " + StatusText().toStdString() + "\n";
    for (const auto& frm : m_mainForm->Forms())
        if (const auto form = frm.TryAs<WindowForm>(); form && frm->Visible())
            text += form->AsText() + TextOfFrontPage(*form);
    for (const auto& message : m_messageBox->Shown())
        text += "Message " + message.title.toStdString() + "\n" + message.text.toStdString() + "\n";
    return text;
}

} // namespace corvane::desktop
