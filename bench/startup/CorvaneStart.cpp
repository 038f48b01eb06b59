// The same application on Corvane, up to its models and up to its window.

#include "adapters/platform/ApplicationPlatform.h"
#include "bench/startup/Starts.h"
#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Library.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IWindowFormFactory.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/blame/Blame.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/platform/HostParts.h"
#include "desktop/platform/WideRegisters.h"
#include "desktop/service/HostDefinitions.h"
#include "desktop/service/ProgressControl.h"

#include <QMenuBar>
#include <algorithm>
#include <cstdlib>

namespace corvane::bench {

namespace {

class BenchService final : public Automation<BenchService, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_serviceBase; }
    std::string_view TypeName() const override { return "BenchService"; }
    void OnAction() { ++m_chosen; }

    static constexpr auto Members = MemberTable(Method("OnAction", &BenchService::OnAction));

private:
    int m_chosen = 0;
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

// In a start without a window no one draws progress, but the main form has its control.
class NoProgress final : public Automation<NoProgress> {
public:
    [[nodiscard]] Long HWnd() const { return 1; }
    std::string_view TypeName() const override { return "NoProgress"; }

    static constexpr auto Members = MemberTable(Property("hwnd", &NoProgress::HWnd));
};

// The services without plug-in files, whose loading is the system's work.
class BenchFactory final : public IObjectFactory {
public:
    Ref<Object> Create(std::string_view) override { return New<BenchService>(); }
    std::string_view TypeName() const override { return "BenchFactory"; }
};

void ExpectModels(const ActiveBar& bar, const Size& size) {
    const auto menus = static_cast<Long>(size.services) + 1;
    Expect(bar.Bands()->Item("Main")->Tools()->Count() >= menus, "a menu a file");
    for (const int i : {0, size.services - 1}) {
        const auto& tools = bar.Bands()->Item(MenuName(i))->Tools();
        Expect(tools->Count() == size.actions, "an entry an action");
        Expect(bar.Tools()->Item(tools->Item(Long{0})->Name())->Visible(), "visible entries");
    }
}

void ExpectWindow(const desktop::MainWindow& window, const Size& size) {
    // The bar shows sixty titles and keeps the others in one more.
    constexpr int mostTitles = 61;
    Expect(window.menuBar()->actions().size() >= std::min(size.services + 1, mostTitles),
           "a menu a file in the window");
}

// The models and what a host of them must have.
class ModelsAlone {
public:
    explicit ModelsAlone(const std::string& folder) : m_platform(folder) {
        m_mainForm->AddMember("ActiveBar", m_activeBar);
        m_mainForm->SetCaption(m_platform.name);
    }

    // The platform of a host without a window, to which one may add.
    [[nodiscard]] Platform MakePlatform() const {
        Platform platform = m_platform.MakePlatform();
        platform.oObjectFactory = New<BenchFactory>();
        return platform;
    }

    void Start() {
        const Ref<Framework> framework = CorvaneMain::Framework();
        framework->Initialize(m_mainForm, m_panelForm, nullptr);
        framework->Start();
    }

    [[nodiscard]] const ApplicationPlatform& Parts() const { return m_platform; }
    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_activeBar; }
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_mainForm; }
    [[nodiscard]] const Ref<PanelForm>& Panel() const { return m_panelForm; }

private:
    ApplicationPlatform m_platform;
    Ref<ActiveBar> m_activeBar = NewHostActiveBar();
    Ref<MdiForm> m_mainForm = New<MdiForm>();
    Ref<PanelForm> m_panelForm = New<PanelForm>();
};

// As corvane-desktop makes it for a user, whose session and settings are in the folders that the environment names.
// Failures go to the error stream: a dialog would wait for ever.
desktop::ApplicationOptions WholeApplication(const Job& job) {
    desktop::ApplicationOptions options;
    options.folder = job.folder;
    options.withDialogs = false;
    for (int i = 0; i < job.size.services; ++i)
        options.classes.emplace_back(ServiceClass(i), [] { return New<BenchService>(); });
    options.watch = true;
    options.askAfterCrash = &desktop::Blame::AskInBox;
    return options;
}

} // namespace

void StartModels(const Job& job) {
    ModelsAlone models(job.folder);
    models.MainForm()->AddMember("ctlCVProgress", New<NoProgress>());
    models.MainForm()->Load();
    const Library library(models.MakePlatform());
    models.Start();
    ExpectModels(*models.Bar(), job.size);
    std::_Exit(0);
}

void ShowCorvaneWindow(const Job& job) {
    desktop::FailurePresenter failures(false);
    ModelsAlone models(job.folder);
    models.Parts().utilities->SetShow([&](const ShownFailure& shown) { failures.Show(shown); });
    const auto progress = New<desktop::ProgressControl>();
    models.MainForm()->AddMember("CommonDialog", New<desktop::CommonDialog>(false));
    models.MainForm()->AddMember("ctlCVProgress", progress);
    models.MainForm()->Load();
    Platform platform = models.MakePlatform();
    platform.oScreen = New<desktop::QtScreen>();
    platform.oTimers = New<desktop::QtTimers>([&](const std::function<void()>& act) { failures.Guard(act); });
    platform.oMessageBox = New<desktop::QtMessageBox>(false);
    platform.oFileSystem =
        New<desktop::HostFileSystem>(platform.oFileSystem, models.Parts().utilities->GetAppFolder("Services"));
    const Library library(platform);
    desktop::MainWindow window(models.MainForm(), models.Bar(), models.Panel(), failures);
    window.Bars().SetProgressWidget([&] { return progress->Widget(); });
    PaintWatch watch(window);
    desktop::ClearWideRegisters(); // as the application does there
    models.Start();
    window.Flush();
    window.show();
    watch.Await();
    ExpectModels(*models.Bar(), job.size);
    ExpectWindow(window, job.size);
    Expect(failures.ShownCount() == 0, "no failures");
    std::_Exit(0);
}

void ShowWholeApplication(const Job& job) {
    desktop::Application application(WholeApplication(job));
    PaintWatch watch(application.Window());
    Expect(application.Start(), "a start");
    watch.Await();
    ExpectModels(*application.Bar(), job.size);
    ExpectWindow(application.Window(), job.size);
    Expect(application.Failures().ShownCount() == 0, "no failures");
    std::_Exit(0);
}

void KeepSession(const Job& job) {
    desktop::Application application(WholeApplication(job));
    Expect(application.Start(), "a start");
    PaintWatch(application.Window()).Await();
    Expect(application.Window().close(), "an end");
}

} // namespace corvane::bench
