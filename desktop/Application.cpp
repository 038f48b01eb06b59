#include "desktop/Application.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IWindowFormFactory.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/service/HostService.h"
#include "desktop/service/ScreenPrinter.h"

#include <QGuiApplication>

namespace corvane::desktop {

namespace {

void NodesAsText(std::string& sText, const std::vector<Node*>& aSiblings, std::size_t nDepth) {
    for (const Node* pNode : aSiblings) {
        sText += std::string(nDepth * 2, ' ') + pNode->Text() + "\n";
        NodesAsText(sText, pNode->Children(), nDepth + 1);
    }
}

} // namespace

Application::Application(const ApplicationOptions& oOptions)
    : m_bWithDialogs(oOptions.bWithDialogs), m_oFailures(oOptions.bWithDialogs), m_oPlatform(oOptions.sFolder),
      m_oMessageBox(New<QtMessageBox>(oOptions.bWithDialogs)),
      m_oCommonDialog(New<CommonDialog>(oOptions.bWithDialogs)) {
    m_oFailures.SetServicesFolder(QString::fromStdString(m_oPlatform.oUtilities->GetAppFolder("Services")));
    m_oFailures.SetLogFile(m_oPlatform.oUtilities->LogPath());
    m_oPlatform.oUtilities->SetShow([this](const ShownFailure& oShown) { m_oFailures.Show(oShown); });
    m_frmMain->AddMember("ActiveBar", m_oActiveBar);
    m_frmMain->AddMember("CommonDialog", m_oCommonDialog);
    m_frmMain->AddMember("ctlCVProgress", m_oProgress);
    m_frmMain->SetCaption(m_oPlatform.sName);
    m_oChildLoaded = m_frmMain->ChildLoaded.Subscribe([this](const Ref<Form>& oForm) { RegisterWindow(oForm); });
    m_oToolClick = m_oActiveBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) {
        const auto oActionItem = oTool->TagVariant().TryAs<ActionItem>();
        m_oRunningProvider = oActionItem ? oActionItem->ActionsProviderObj() : nullptr;
    });
    m_oProgress->SetSources({[this] { return StatusText(); }, [this] { return RunningService(); }});
    m_frmMain->Load();
    m_pLibrary = std::make_unique<Library>(MakePlatform());
    m_pWindow = std::make_unique<MainWindow>(m_frmMain, m_oActiveBar, m_frmPanel, m_oFailures);
    m_pWindow->Bars().SetProgressWidget(m_oProgress->Widget());
    m_oFailures.SetParentWindow(m_pWindow.get());
    m_oMessageBox->SetParentWindow(m_pWindow.get());
    m_oCommonDialog->SetParentWindow(m_pWindow.get());
}

Application::~Application() {
    m_oRunningProvider = nullptr;
    if (m_frmMain->IsLoaded() && !m_pWindow->HasEnded())
        m_oFailures.Guard([this] { m_frmMain->Unload(); });
    m_pWindow.reset();
    m_pLibrary.reset();
}

Platform Application::MakePlatform() {
    Platform oPlatform = m_oPlatform.MakePlatform();
    oPlatform.oScreen = New<QtScreen>();
    oPlatform.oTimers = New<QtTimers>([this](const std::function<void()>& fnAct) { m_oFailures.Guard(fnAct); });
    oPlatform.oMessageBox = m_oMessageBox;
    oPlatform.oFileSystem =
        New<HostFileSystem>(oPlatform.oFileSystem, m_oPlatform.oUtilities->GetAppFolder("Services"));
    oPlatform.oObjectFactory = MakeObjectFactory();
    oPlatform.oScreenPrinter = New<ScreenPrinter>(ScreenPrinter::Host{
        [this] { return m_pWindow.get(); }, [](Long) { return nullptr; },
        [this] { return QString::fromStdString(m_oCommonDialog->ShowSave("Print", "PDF (*.pdf)|*.pdf", "")); },
        m_bWithDialogs});
    return oPlatform;
}

Ref<HostObjectFactory> Application::MakeObjectFactory() {
    auto oFactory = New<HostObjectFactory>(m_oPlatform.oPlugins);
    oFactory->Add("CorvaneDesktop.HostService", [] {
        return New<HostService>(
            HostCommands{[] { Singleton::Framework()->WindowManager()->OpenWindow("Corvane.Preferences", nullptr); }});
    });
    return oFactory;
}

// The service in whose code the latest command is; an explorer item or a page is told by its kind.
QString Application::RunningService() const {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!m_oRunningProvider || !oManager)
        return {};
    for (const auto& oDef : *oManager->ServiceDefs())
        if (oManager->Services()->Item(oDef->Name()) == m_oRunningProvider)
            return QString::fromStdString(oDef->Name());
    return QString::fromUtf8(m_oRunningProvider->TypeName().data(),
                             static_cast<qsizetype>(m_oRunningProvider->TypeName().size()));
}

void Application::RegisterWindow(const Ref<Form>& oForm) {
    Form* pForm = oForm.Get(); // the handle answers to it only while the form is loaded
    m_oPlatform.oWindowMessages->RegisterWindow(oForm->HWnd(), [pForm](Long, Long uMsg, Long, std::intptr_t) -> Long {
        if (uMsg == WindowMessage::Close)
            pForm->Unload();
        return 0;
    });
}

bool Application::Start() {
    bool bStarted = false;
    m_oFailures.Guard([&] {
        const Ref<Framework> oFramework = CorvaneMain::Framework();
        oFramework->Initialize(m_frmMain, m_frmPanel, nullptr);
        oFramework->Start();
        bStarted = true;
    });
    m_pWindow->Flush();
    m_pWindow->show();
    return bStarted;
}

bool Application::Choose(const std::string& sTool) {
    const Ref<Tool> oTool = m_oActiveBar->Tools()->Find(sTool);
    if (!oTool || !oTool->Visible() || !oTool->Enabled())
        return false;
    m_oFailures.Guard([&] { m_oActiveBar->Click(oTool); });
    m_pWindow->Flush();
    return true;
}

QString Application::StatusText() const {
    const auto oBand = m_oActiveBar->Bands()->Find("StatusBar");
    const auto oStatus = oBand ? oBand->Tools()->Find("Status") : nullptr;
    return oStatus ? QString::fromStdString(oStatus->Caption()) : QString();
}

std::string Application::AsText() const {
    std::string sText;
    for (const auto& oBand : m_oActiveBar->Bands()->All()) {
        if (oBand->Kind() == BandKind::MenuBar)
            sText += "Menus\n" + BandAsText(*oBand, 1);
        else if (oBand->Kind() == BandKind::Toolbar && oBand->Visible())
            sText += "Toolbar " + oBand->Caption() + "\n" + BandAsText(*oBand, 1);
    }
    for (const auto& oControl : m_frmPanel->Controls())
        if (const auto tvw = oControl.TryAs<TreeView>()) {
            sText += "Explorer " + tvw->Name() + "\n";
            NodesAsText(sText, tvw->GetNodes()->Roots(), 1);
        }
    sText += "Status\n  " + StatusText().toStdString() + "\n";
    for (const auto& oMessage : m_oMessageBox->Shown())
        sText += "Message " + oMessage.sTitle.toStdString() + "\n" + oMessage.sText.toStdString() + "\n";
    return sText;
}

} // namespace corvane::desktop
