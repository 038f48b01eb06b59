#include "adapters/platform/ApplicationPlatform.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Preferences.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/PageDef.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/AboutDialog.h"
#include "desktop/application/Application.h"
#include "desktop/application/CommandStates.h"
#include "desktop/application/ExplorerLink.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/application/Welcome.h"
#include "desktop/blame/Blame.h"
#include "desktop/documents/Documents.h"
#include "desktop/jobs/DesktopJobs.h"
#include "desktop/platform/HostParts.h"
#include "desktop/service/AppearancePage.h"
#include "desktop/service/HostDefinitions.h"
#include "desktop/service/HostService.h"
#include "desktop/service/ProgressControl.h"
#include "desktop/service/ScreenPrinter.h"
#include "desktop/service/UnsavedDialog.h"
#include "desktop/style/ContrastStyle.h"
#include "desktop/translation/HostTranslation.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/WindowForm.h"

#include <QApplication>
#include <QStyle>
#include <set>

namespace corvane::desktop {

namespace {

constexpr const char* linkWithWindow = "LinkWithWindow"; // the action, and the value among the settings

Ref<Preferences> LinkSettings() {
    auto settings = New<Preferences>();
    settings->Initialize("Corvane.Desktop", "Explorer");
    return settings;
}

} // namespace

void Application::SetUpService() {
    // Before the library's subscription, which runs the command.
    m_toolClick = m_activeBar->ToolClick.Subscribe([this](const Ref<Tool>& tool) { PrepareCommand(*tool); });
    // Before the main window's subscription, which closes what is open.
    m_queryUnload = m_mainForm->OnQueryUnload.Subscribe([this](bool& refused) {
        if (!refused)
            refused = !SettleUnsavedWork();
    });
    m_progress->SetSources({[this] { return StatusText(); }, [this] { return RunningService(); },
                            [this] { m_barShownAt = m_failures.Depth(); }});
}

// The window's own definition holds the host's page; the services' pages join it when it first opens.
void Application::ShowPreferences() {
    const Ref<Framework> framework = Singleton::Framework();
    const auto pageDefs = framework->ServiceManager()->WindowDefs()->Item(WindowHost::ListedWindow)->PageDefs();
    std::set<const PageDef*> present;
    for (const auto& pageDef : pageDefs)
        present.insert(pageDef.Get());
    for (const auto& pageDef : framework->ServiceManager()->PreferencePageDefs()) {
        if (present.contains(pageDef.Get()))
            continue;
        std::string key = pageDef->Key();
        while (pageDefs->HasKey(key)) // two services may have a page of one class and caption
            key += "'";
        pageDefs->Add(pageDef, key);
    }
    framework->WindowManager()->OpenWindow(WindowHost::ListedWindow, nullptr);
}

void Application::ShowPalette() {
    m_personal->ShowPalette();
}

void Application::ShowShortcuts() {
    m_personal->ShowShortcuts();
}

void Application::ShowCustomize() {
    m_personal->ShowCustomize();
}

void Application::ShowInspector() {
    m_personal->ShowInspector();
}

void Application::ShowLog() {
    m_personal->ShowLog();
}

void Application::ShowJobs() {
    m_jobs->ShowView();
}

void Application::DoWithWindow(WindowCommand command) {
    Documents& documents = m_window->OpenDocuments();
    switch (command) {
    case WindowCommand::Save:
        return m_window->SaveActiveWindow();
    case WindowCommand::Close:
        return m_window->CloseActiveWindow();
    case WindowCommand::SplitRight:
        return documents.Split(Documents::Side::Right);
    case WindowCommand::SplitBelow:
        return documents.Split(Documents::Side::Below);
    case WindowCommand::MoveToNextGroup:
        return documents.MoveToNextGroup();
    case WindowCommand::GoToNextGroup:
        return documents.GoToNextGroup();
    case WindowCommand::OwnWindow:
        return documents.MoveToOwnWindow();
    case WindowCommand::Dock:
        return documents.Dock();
    case WindowCommand::Pin:
        return documents.Pin();
    case WindowCommand::CloseOthers:
        return documents.CloseOthers();
    case WindowCommand::ResetLayout:
        return m_window->ResetLayout();
    }
}

// In the user's language, if the application has it in that.
void Application::ShowManual() {
    QStringList names;
    for (const QString& language : WantedLanguages(m_identity.Settings()))
        names << "manual_" + QString(language).replace('-', '_') << "manual_" + language.left(2);
    names << "manual"
          << "index";
    if (!OpenHelp(names))
        m_messageBox->ShowInformation(
            QCoreApplication::translate("Application", "This application has no manual. Its file is expected at %1.")
                .arg(QString::fromStdString(m_platform->folder) + "/Help/manual.html")
                .toStdString(),
            QCoreApplication::translate("Application", "Manual").toStdString());
}

void Application::ToggleLink() {
    m_link->SetOn(!m_link->IsOn());
    LinkSettings()->SetValue(linkWithWindow, m_link->IsOn());
    m_hostService->Check(linkWithWindow, m_link->IsOn());
}

// As the user left it.
void Application::SetUpLink() {
    m_link->SetOn(EqualText(LinkSettings()->GetValue(linkWithWindow, true), "True"));
    m_link->Follow(m_mainForm);
    if (m_hostService)
        m_hostService->Check(linkWithWindow, m_link->IsOn());
}

void Application::ShowAbout() {
    AboutDialog(m_identity, m_window.get()).exec();
}

void Application::PrepareCommand(const Tool& tool) {
    if (m_clicks++ > 0) {
        NoteLostClick(tool, "another command is still running");
        return;
    }
    m_firstClickAt = m_failures.Depth();
    // What has been typed into a label belongs to its item; the command may choose another one.
    for (const auto& control : m_panelForm->Controls())
        if (const auto tree = control.TryAs<TreeView>(); tree && tree->IsEditingLabel())
            m_failures.Guard([&] { tree->EndLabelEdit(); });
    const auto actionItem = tool.TagVariant().TryAs<ActionItem>();
    m_runningProvider = actionItem ? actionItem->ActionsProviderObj() : nullptr;
    m_runningAction = actionItem ? actionItem->ActionItemDef() : nullptr;
    m_link->CommandBegins(m_runningProvider);
    if (actionItem)
        m_blame->CommandBegins(*actionItem);
    if (!m_runningProvider)
        NoteLostClick(tool, "nothing provides it now");
    else if (actionItem->Action().empty())
        NoteLostClick(tool, "its definition names no procedure");
}

// The library lets such a click go by without a word.
void Application::NoteLostClick(const Tool& tool, const char* reason) const {
    m_platform->utilities->LogError(
        m_platform->utilities->AppName(), "Desktop", "Click",
        Failure(FailureNumber::ObjectNotSet, "The command \"" + tool.Name() + "\" did nothing: " + reason), {}, false);
}

std::unique_ptr<PersonalDesktop> Application::MakePersonal(const ApplicationOptions& options) {
    return std::make_unique<PersonalDesktop>(PersonalDesktop::Parts{
        *m_window, m_mainForm, m_activeBar, m_panelForm, m_failures, m_platform->utilities, m_platform->folder,
        m_platform->settings->Folder(),
        [this] {
            const std::string text = QCoreApplication::translate("Application", "Text").toStdString();
            return QString::fromStdString(m_commonDialog->ShowSave(
                QCoreApplication::translate("Application", "Save Report").toStdString(), text + " (*.txt)|*.txt",
                QCoreApplication::translate("Application", "%1 report.txt")
                    .arg(QString::fromStdString(m_platform->name))
                    .toStdString()));
        },
        [this] {
            QStringList names;
            for (const std::string& name : m_blame->Filter()->Services())
                names.append(QString::fromStdString(name));
            return names;
        },
        [this](const auto& window) { return m_link->ItemOf(window); },
        [this](const auto& window, const std::string& item) { m_link->SetItem(window, item); },
        [this] { ShowLayouts(); }, options.personal && !m_blame->WithoutServices().allPlugins,
        [this](const QString& name) { return name == "Jobs" ? &m_jobs->View() : nullptr; }, options.sessionFile});
}

Ref<HostObjectFactory> Application::MakeObjectFactory() {
    Ref<IObjectFactory> objects = m_blame->Factory(m_platform->plugins);
    if (m_objects)
        objects = m_objects(objects, m_platform->plugins);
    auto factory = New<HostObjectFactory>(objects);
    HostCommands& commands = *this;
    factory->Add("CorvaneDesktop.HostService", [this, &commands] {
        auto service = New<HostService>(commands);
        m_commandStates->SetService(service);
        m_hostService = service;
        return service;
    });
    factory->Add("CorvaneDesktop.AppearancePage", [this] {
        return New<AppearancePage>([this](const Appearance& appearance) { ApplyAppearance(appearance); });
    });
    for (const auto& [progID, make] : m_classes)
        factory->Add(progID, make);
    return factory;
}

Ref<IScreenPrinter> Application::MakeScreenPrinter() {
    ScreenPrinter::Host host;
    host.mainWindow = [this] { return m_window.get(); };
    host.windowOf = [this](Long hwnd) -> ScreenPrinter::Window {
        for (const auto& frm : m_mainForm->Forms())
            if (const auto form = frm.TryAs<WindowForm>(); form && frm->HWnd() == hwnd)
                return {TitleOf(*frm), [form](IPrintout& printout) { form->Print(printout); }};
        return {};
    };
    host.file = [this](const QString& name) {
        return QString::fromStdString(
            m_commonDialog->ShowSave(QCoreApplication::translate("Application", "Print").toStdString(),
                                     "PDF (*.pdf)|*.pdf", name.toStdString()));
    };
    host.withDialogs = m_withDialogs;
    return New<ScreenPrinter>(std::move(host));
}

// In whose code the latest command is, by the name that users know: the service, or the kind of item or the page.
QString Application::RunningService() const {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!m_runningProvider || !manager)
        return {};
    for (const auto& def : *manager->ServiceDefs())
        if (manager->Services()->Item(def->Name()) == m_runningProvider)
            return QString::fromStdString(def->Name());
    if (m_runningProvider.TryAs<IExplorerItemAccess>())
        return QString::fromStdString(CorvaneMain::QueryExplorerItem(m_runningProvider)->ExplorerItemDef()->Name());
    if (m_runningProvider.TryAs<IPageAccess>()) {
        const auto def = CorvaneMain::QueryPage(m_runningProvider)->PageDef();
        return ShownPage(def->PageProgID(), def->Caption());
    }
    return QString::fromStdString(m_identity.name);
}

QString Application::StatusText() const {
    const auto band = m_activeBar->Bands()->Find("StatusBar");
    const auto status = band ? band->Tools()->Find("Status") : nullptr;
    return status ? QString::fromStdString(status->Caption()) : QString();
}

bool Application::HasUnsavedWork() {
    for (const auto& frm : m_mainForm->Forms())
        if (const auto form = frm.TryAs<WindowForm>(); form && form->HasChanges())
            return true;
    const Ref<Framework> framework = Singleton::Framework();
    return framework && framework->ServiceManager() &&
           !FindUnsavedWork(framework, {}, [this](const auto& act) { ByHost(act); }).empty();
}

// False when the application must stay open.
bool Application::SettleUnsavedWork() {
    const Ref<Framework> framework = Singleton::Framework();
    if (!framework || !framework->ServiceManager())
        return true;
    std::vector<UnsavedItem> windows;
    std::vector<Ref<WindowForm>> forms;
    for (const auto& frm : m_mainForm->Forms())
        if (const auto form = frm.TryAs<WindowForm>(); form && form->HasUnsavedChanges()) {
            forms.push_back(form);
            windows.push_back(
                {TitleOf(*form).toStdString(), form->BusinessContext(), [form] {
                     form->Save();
                     if (form->HasUnsavedChanges())
                         Fail(FailureNumber::InvalidProcedureCall,
                              QCoreApplication::translate("Application", "The window has missing or invalid entries")
                                  .toStdString());
                 }});
        }
    const std::vector<std::string> jobs = m_jobs->Running();
    bool asked = false;
    const auto ask = [&](const std::vector<UnsavedGroup>& groups) {
        asked = true;
        return AskAboutUnsavedWork(groups, jobs);
    };
    bool exit = corvane::desktop::SettleUnsavedWork(
        framework, std::move(windows), ask, [this](const std::function<void()>& act) { m_failures.Guard(act); });
    if (exit && !asked && !jobs.empty())
        exit = ask({}).what != ExitAnswer::What::Cancel;
    if (exit)
        m_jobs->CancelAll();
    if (exit)
        for (const auto& form : forms)
            form->SettleChanges(!form->HasUnsavedChanges());
    return exit;
}

// A run that no one watches is given "Save" or "Stay" beforehand; otherwise the work goes.
ExitAnswer Application::AskAboutUnsavedWork(const std::vector<UnsavedGroup>& groups,
                                            const std::vector<std::string>& jobs) {
    if (const auto answer = m_commonDialog->TakeAnswer()) {
        ExitAnswer exit;
        exit.what = EqualText(*answer, "Save")   ? ExitAnswer::What::Save
                    : EqualText(*answer, "Stay") ? ExitAnswer::What::Cancel
                                                 : ExitAnswer::What::Discard;
        if (exit.what == ExitAnswer::What::Save)
            for (const auto& group : groups)
                exit.items.insert(exit.items.end(), group.items.begin(), group.items.end());
        return exit;
    }
    UnsavedDialog dialog(groups, jobs, m_window.get());
    dialog.exec();
    return dialog.Answer();
}

void Application::ApplyAppearance(const Appearance& appearance) {
    ApplyTheme(appearance.theme);
    ContrastStyle::Follow();
    const int size = appearance.iconSize;
    const int styleSize = m_window->style()->pixelMetric(QStyle::PM_ToolBarIconSize, nullptr, m_window.get());
    m_window->setIconSize(QSize(1, 1) * (size > 0 ? size : styleSize));
    m_window->SetTabbedWindows(appearance.tabbedWindows);
    m_welcome->SetShownAtStart(appearance.startPage);
}

} // namespace corvane::desktop
