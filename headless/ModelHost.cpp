#include "headless/ModelHost.h"

#include "adapters/files/FileSystem.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/ini/IniReader.h"
#include "adapters/messages/WindowMessages.h"
#include "adapters/plugins/PluginFactory.h"
#include "adapters/xml/XmlService.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "items/Items.h"
#include "jobs/Manager.h"

#include <chrono>
#include <filesystem>
#include <iostream>

namespace corvane::inspect {

namespace {

class NoPrinter final : public IScreenPrinter {
public:
    void PrintWindow(Long /*mode*/, Long /*hwnd*/) override {}
};

// What services in processes say goes to the error stream, and they may take their time up to a limit.
class ErrorStreamMonitor final : public LoggingMonitor {
public:
    using LoggingMonitor::LoggingMonitor;
    void Said(std::string_view service, std::string_view line) override {
        std::cerr << service << ": " << line << "\n";
    }
};

std::shared_ptr<const StandInFile> StandInsOf(const std::string& applicationFolder) {
    const std::string file = applicationFolder + "/standins.json";
    return std::make_shared<StandInFile>(std::filesystem::exists(file) ? ReadStandIns(file) : StandInFile());
}

} // namespace

Platform ModelHost::MakePlatform(const HostOptions& options) {
    Platform platform;
    platform.oUtilities = New<RecordingUtilities>(m_record, options.applicationFolder);
    platform.oXmlService = options.xml ? options.xml : Ref<IXmlService>(New<XmlService>());
    platform.oFileSystem = New<FileSystem>();
    platform.oPictureLoader = New<PictureLoader>();
    platform.oSettingsStore = New<MemorySettings>();
    platform.oScreen = New<FixedScreen>();
    platform.oTimers = m_timers;
    platform.oMessageBox = New<RecordingMessageBox>(m_record);
    platform.oWindowMessages = m_messages;
    platform.oScreenPrinter = New<NoPrinter>();
    bool reportsDeactivate = true;
    if (options.standIns) {
        const auto standIns = StandInsOf(options.applicationFolder);
        reportsDeactivate = standIns->formReportsDeactivate;
        platform.oIniReader = New<StandInIni>(standIns, New<IniReader>());
        platform.oObjectFactory = New<StandInFactory>(m_record, standIns);
    } else {
        platform.oIniReader = New<IniReader>();
        auto plugins = New<PluginFactory>(options.applicationFolder + "/plugins");
        m_processes = plugins->Processes();
        m_processes->SetExplorer(m_panelForm);
        m_processes->SetMonitor(options.processes ? options.processes
                                                  : Ref<ProcessMonitor>(New<ErrorStreamMonitor>(options.timeLimit)));
        platform.oObjectFactory = New<NamingFactory>(m_record, std::move(plugins));
    }
    m_formFactory = NewStandInFormFactory(
        m_mainForm.Get(), reportsDeactivate,
        [this](const Form& frm) {
            if (m_modalLoop)
                m_modalLoop(frm);
        },
        options.applicationFolder, options.standIns);
    return platform;
}

ModelHost::ModelHost(const HostOptions& options) {
    jobs::Host host;
    host.guard = [this](const std::function<void()>& act) {
        if (!HasExited())
            Do(act);
    };
    host.idle = [this] { ServeProcesses(); };
    host.begins = false;
    host.keepsAll = true;
    host.explorer = m_panelForm;
    if (options.oneThread)
        host.mostThreads = 0;
    m_jobs = New<jobs::Manager>(std::move(host));
    m_popupRequested = m_activeBar->PopupRequested.Subscribe(
        [this](const Ref<Band>& band) { m_record->popups.push_back(band->Name()); });
    m_childLoaded = m_mainForm->ChildLoaded.Subscribe([this](const Ref<Form>& form) { RegisterWindow(form); });
    m_mainUnload = m_mainForm->OnUnload.Subscribe([this](bool&) { m_exitBegun = true; });
    m_mainForm->AddMember("ActiveBar", m_activeBar);
    m_mainForm->AddMember("CommonDialog", m_dialogs);
    m_mainForm->AddMember("ctlCVProgress", New<ProgressModel>());
    m_mainForm->AddMember("Jobs", m_jobs);
    m_items = std::make_unique<items::Items>(m_panelForm, [this](const std::function<void()>& act) { Do(act); });
    m_mainForm->AddMember("SelectedItems", m_items->Selected());
    m_library = std::make_unique<Library>(MakePlatform(options));
    m_mainForm->Load();
}

void ModelHost::RegisterWindow(const Ref<Form>& form) {
    Form* rawForm = form.Get(); // the handle answers to it only while the form is loaded
    m_messages->RegisterWindow(form->HWnd(), [rawForm](Long, Long message, Long, std::intptr_t) -> Long {
        if (message == WindowMessage::Close)
            rawForm->Unload();
        return 0;
    });
}

// Also after AppExit, which leaves the windows as they are: a window and its form hold each other.
ModelHost::~ModelHost() {
    Exit();
    constexpr std::chrono::hours always(1000);
    (void)m_jobs->Stop(always);
}

bool ModelHost::Start() {
    Do([this] {
        const Ref<Framework> framework = CorvaneMain::Framework();
        framework->Initialize(m_mainForm, m_panelForm, m_formFactory);
        if (!CorvaneMain::HasEnded())
            m_items->Follow(m_mainForm);
        if (!CorvaneMain::HasEnded()) // a plug-in may have ended the application already
            framework->Start();
    });
    RunJobs();
    return !m_firstFailure;
}

void ModelHost::Do(const std::function<void()>& act) {
    try {
        act();
    } catch (...) {
        if (!m_firstFailure)
            m_firstFailure = CurrentFailure();
    }
}

void ModelHost::ServeProcesses() const {
    if (m_processes)
        m_processes->Pump();
}

void ModelHost::RunJobs() {
    // In a dialog that a process has opened, its jobs can't go on before the dialog has closed.
    if (m_processes && m_processes->IsAnyWaitedFor())
        return;
    Do([this] { m_jobs->RunToEnd(); });
}

void ModelHost::Wait() {
    Do([this] { m_timers->TickAll(); });
    RunJobs();
}

bool ModelHost::CancelJob(const std::string& title, std::optional<Double> part) {
    bool found = false;
    for (const auto& job : m_jobs->Active()) {
        if (!EqualText(job->Title(), title) || !job->CanCancel())
            continue;
        found = true;
        if (part)
            job->CancelAt(*part);
        else
            job->Cancel();
    }
    return found;
}

void ModelHost::Exit() {
    const std::vector<Ref<Form>> forms = m_mainForm->Forms();
    for (auto it = forms.rbegin(); it != forms.rend(); ++it)
        Do([&] { (*it)->Unload(); });
    Do([this] { m_mainForm->Unload(); });
}

std::vector<Ref<TreeView>> ModelHost::Trees() const {
    std::vector<Ref<TreeView>> trees;
    for (const auto& control : m_panelForm->Controls())
        if (const auto tvw = control.TryAs<TreeView>())
            trees.push_back(tvw);
    return trees;
}

Ref<TreeView> ModelHost::ActiveTree() const {
    for (const auto& tvw : Trees())
        if (tvw->Container() == Tabs()->Tab())
            return tvw;
    return nullptr;
}

Ref<ImageList> ModelHost::Images() const {
    for (const auto& control : m_panelForm->Controls())
        if (auto images = control.TryAs<ImageList>())
            return images;
    return nullptr;
}

} // namespace corvane::inspect
