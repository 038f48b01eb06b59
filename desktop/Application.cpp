#include "desktop/Application.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/windows/IWindowFormFactory.h"

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
    : m_oFailures(oOptions.bWithDialogs), m_oPlatform(oOptions.sFolder),
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
    m_frmMain->Load();
    m_pLibrary = std::make_unique<Library>(MakePlatform());
    m_pWindow = std::make_unique<MainWindow>(m_frmMain, m_oActiveBar, m_frmPanel, m_oFailures);
    m_pWindow->Bars().SetProgressWidget(m_oProgress->Widget());
    m_oFailures.SetParentWindow(m_pWindow.get());
    m_oMessageBox->SetParentWindow(m_pWindow.get());
    m_oCommonDialog->SetParentWindow(m_pWindow.get());
}

Application::~Application() {
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
    return oPlatform;
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
    if (const auto oStatus = m_oActiveBar->Bands()->Item("StatusBar")->Tools()->Find("Status"))
        sText += "Status\n  " + oStatus->Caption() + "\n";
    for (const auto& oMessage : m_oMessageBox->Shown())
        sText += "Message " + oMessage.sTitle.toStdString() + "\n" + oMessage.sText.toStdString() + "\n";
    return sText;
}

} // namespace corvane::desktop
