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
    Ref<IService> Service() override { return m_oServiceBase; }
    std::string_view TypeName() const override { return "BenchService"; }
    void OnAction() { ++m_nChosen; }

    static constexpr auto Members = MemberTable(Method("OnAction", &BenchService::OnAction));

private:
    int m_nChosen = 0;
    Ref<ServiceBase> m_oServiceBase = New<ServiceBase>();
};

// In a start without a window nobody draws progress, but the main form has its control.
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

void ExpectModels(const ActiveBar& oBar, const Size& oSize) {
    const auto nMenus = static_cast<Long>(oSize.nServices) + 1;
    Expect(oBar.Bands()->Item("Main")->Tools()->Count() >= nMenus, "a menu a file");
    for (const int i : {0, oSize.nServices - 1}) {
        const auto& oTools = oBar.Bands()->Item(MenuName(i))->Tools();
        Expect(oTools->Count() == oSize.nActions, "an entry an action");
        Expect(oBar.Tools()->Item(oTools->Item(Long{0})->Name())->Visible(), "visible entries");
    }
}

void ExpectWindow(const desktop::MainWindow& oWindow, const Size& oSize) {
    // The bar shows sixty titles and keeps the others in one more.
    constexpr int nMostTitles = 61;
    Expect(oWindow.menuBar()->actions().size() >= std::min(oSize.nServices + 1, nMostTitles),
           "a menu a file in the window");
}

// The models and what a host of them must have.
class Models {
public:
    explicit Models(const std::string& sFolder) : m_oPlatform(sFolder) {
        m_frmMain->AddMember("ActiveBar", m_oActiveBar);
        m_frmMain->SetCaption(m_oPlatform.sName);
    }

    // The platform of a host without a window, to which one may add.
    [[nodiscard]] Platform MakePlatform() const {
        Platform oPlatform = m_oPlatform.MakePlatform();
        oPlatform.oObjectFactory = New<BenchFactory>();
        return oPlatform;
    }

    void Start() {
        const Ref<Framework> oFramework = CorvaneMain::Framework();
        oFramework->Initialize(m_frmMain, m_frmPanel, nullptr);
        oFramework->Start();
    }

    [[nodiscard]] const ApplicationPlatform& Parts() const { return m_oPlatform; }
    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_oActiveBar; }
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_frmMain; }
    [[nodiscard]] const Ref<PanelForm>& Panel() const { return m_frmPanel; }

private:
    ApplicationPlatform m_oPlatform;
    Ref<ActiveBar> m_oActiveBar = NewHostActiveBar();
    Ref<MdiForm> m_frmMain = New<MdiForm>();
    Ref<PanelForm> m_frmPanel = New<PanelForm>();
};

// As corvane-desktop makes it for a person, whose session and settings lie in the folders that the environment names.
// Failures go to the error stream: a dialog would wait for ever.
desktop::ApplicationOptions WholeApplication(const Job& oJob) {
    desktop::ApplicationOptions oOptions;
    oOptions.sFolder = oJob.sFolder;
    oOptions.bWithDialogs = false;
    for (int i = 0; i < oJob.oSize.nServices; ++i)
        oOptions.aClasses.emplace_back(ServiceClass(i), [] { return New<BenchService>(); });
    oOptions.bWatch = true;
    oOptions.fnAskAfterDeath = &desktop::Blame::AskInBox;
    return oOptions;
}

} // namespace

void StartModels(const Job& oJob) {
    Models oModels(oJob.sFolder);
    oModels.MainForm()->AddMember("ctlCVProgress", New<NoProgress>());
    oModels.MainForm()->Load();
    const Library oLibrary(oModels.MakePlatform());
    oModels.Start();
    ExpectModels(*oModels.Bar(), oJob.oSize);
    std::_Exit(0);
}

void ShowCorvaneWindow(const Job& oJob) {
    desktop::FailurePresenter oFailures(false);
    Models oModels(oJob.sFolder);
    oModels.Parts().oUtilities->SetShow([&](const ShownFailure& oShown) { oFailures.Show(oShown); });
    const auto oProgress = New<desktop::ProgressControl>();
    oModels.MainForm()->AddMember("CommonDialog", New<desktop::CommonDialog>(false));
    oModels.MainForm()->AddMember("ctlCVProgress", oProgress);
    oModels.MainForm()->Load();
    Platform oPlatform = oModels.MakePlatform();
    oPlatform.oScreen = New<desktop::QtScreen>();
    oPlatform.oTimers = New<desktop::QtTimers>([&](const std::function<void()>& fnAct) { oFailures.Guard(fnAct); });
    oPlatform.oMessageBox = New<desktop::QtMessageBox>(false);
    oPlatform.oFileSystem =
        New<desktop::HostFileSystem>(oPlatform.oFileSystem, oModels.Parts().oUtilities->GetAppFolder("Services"));
    const Library oLibrary(oPlatform);
    desktop::MainWindow oWindow(oModels.MainForm(), oModels.Bar(), oModels.Panel(), oFailures);
    oWindow.Bars().SetProgressWidget([&] { return oProgress->Widget(); });
    PaintWatch oWatch(oWindow);
    desktop::ClearWideRegisters(); // as the application does there
    oModels.Start();
    oWindow.Flush();
    oWindow.show();
    oWatch.Await();
    ExpectModels(*oModels.Bar(), oJob.oSize);
    ExpectWindow(oWindow, oJob.oSize);
    Expect(oFailures.ShownCount() == 0, "no failures");
    std::_Exit(0);
}

void ShowWholeApplication(const Job& oJob) {
    desktop::Application oApplication(WholeApplication(oJob));
    PaintWatch oWatch(oApplication.Window());
    Expect(oApplication.Start(), "a start");
    oWatch.Await();
    ExpectModels(*oApplication.Bar(), oJob.oSize);
    ExpectWindow(oApplication.Window(), oJob.oSize);
    Expect(oApplication.Failures().ShownCount() == 0, "no failures");
    std::_Exit(0);
}

void KeepSession(const Job& oJob) {
    desktop::Application oApplication(WholeApplication(oJob));
    Expect(oApplication.Start(), "a start");
    PaintWatch(oApplication.Window()).Await();
    Expect(oApplication.Window().close(), "an end");
}

} // namespace corvane::bench
