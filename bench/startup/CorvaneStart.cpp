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
#include "desktop/FailurePresenter.h"
#include "desktop/HostParts.h"
#include "desktop/MainWindow.h"
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

class Application {
public:
    explicit Application(const std::string& sFolder) : m_oPlatform(sFolder) {
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

    void ExpectModels(const Size& oSize) const {
        const auto nMenus = static_cast<Long>(oSize.nServices) + 1;
        Expect(m_oActiveBar->Bands()->Item("Main")->Tools()->Count() >= nMenus, "a menu a file");
        for (const int i : {0, oSize.nServices - 1}) {
            const auto& oTools = m_oActiveBar->Bands()->Item(MenuName(i))->Tools();
            Expect(oTools->Count() == oSize.nActions, "an entry an action");
            Expect(m_oActiveBar->Tools()->Item(oTools->Item(Long{0})->Name())->Visible(), "visible entries");
        }
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

} // namespace

void StartModels(const Job& oJob) {
    Application oApplication(oJob.sFolder);
    oApplication.MainForm()->AddMember("ctlCVProgress", New<NoProgress>());
    oApplication.MainForm()->Load();
    const Library oLibrary(oApplication.MakePlatform());
    oApplication.Start();
    oApplication.ExpectModels(oJob.oSize);
    std::_Exit(0);
}

void ShowCorvaneWindow(const Job& oJob) {
    desktop::FailurePresenter oFailures(false);
    Application oApplication(oJob.sFolder);
    oApplication.Parts().oUtilities->SetShow([&](const ShownFailure& oShown) { oFailures.Show(oShown); });
    const auto oProgress = New<desktop::ProgressControl>();
    oApplication.MainForm()->AddMember("CommonDialog", New<desktop::CommonDialog>(false));
    oApplication.MainForm()->AddMember("ctlCVProgress", oProgress);
    oApplication.MainForm()->Load();
    Platform oPlatform = oApplication.MakePlatform();
    oPlatform.oScreen = New<desktop::QtScreen>();
    oPlatform.oTimers = New<desktop::QtTimers>([&](const std::function<void()>& fnAct) { oFailures.Guard(fnAct); });
    oPlatform.oMessageBox = New<desktop::QtMessageBox>(false);
    oPlatform.oFileSystem =
        New<desktop::HostFileSystem>(oPlatform.oFileSystem, oApplication.Parts().oUtilities->GetAppFolder("Services"));
    const Library oLibrary(oPlatform);
    desktop::MainWindow oWindow(oApplication.MainForm(), oApplication.Bar(), oApplication.Panel(), oFailures);
    oWindow.Bars().SetProgressWidget(oProgress->Widget());
    oApplication.Start();
    oWindow.Flush();
    ShowAndPaint(oWindow);
    oApplication.ExpectModels(oJob.oSize);
    // The bar shows sixty titles and keeps the others in one more.
    constexpr int nMostTitles = 61;
    Expect(oWindow.menuBar()->actions().size() >= std::min(oJob.oSize.nServices + 1, nMostTitles),
           "a menu a file in the window");
    Expect(oFailures.ShownCount() == 0, "no failures");
    std::_Exit(0);
}

} // namespace corvane::bench
