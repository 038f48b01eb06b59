#include "desktop/application/Application.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/controls/BarText.h"
#include "desktop/platform/WideRegisters.h"
#include "desktop/style/ContrastStyle.h"
#include "desktop/style/WidgetText.h"
#include "desktop/windows/LeaveBox.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/WindowFormFactory.h"

#include <QApplication>
#include <QDesktopServices>
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

void NodesAsText(std::string& sText, const std::vector<Node*>& aSiblings, std::size_t nDepth) {
    for (const Node* pNode : aSiblings) {
        sText += std::string(nDepth * 2, ' ') + pNode->Text() + "\n";
        NodesAsText(sText, pNode->Children(), nDepth + 1);
    }
}

std::string TextOfFrontPage(WindowForm& oForm) {
    const WindowBody* pBody = oForm.Body();
    return pBody && pBody->PageCount() > 0 ? WidgetAsText(pBody->Place(pBody->CurrentPage()), "    ") : "";
}

} // namespace

Application::Application(const ApplicationOptions& oOptions)
    : m_bWithDialogs(oOptions.bWithDialogs), m_oFailures(oOptions.bWithDialogs), m_oPlatform(oOptions.sFolder),
      m_oTranslation(oOptions.aLanguages, m_oPlatform.oUtilities->GetAppFolder("Services"),
                     [this](const std::string& sText) { Note("Translation", sText); }),
      m_oMessageBox(New<QtMessageBox>(oOptions.bWithDialogs)),
      m_oCommonDialog(New<CommonDialog>(oOptions.bWithDialogs)), m_pRecorder(oOptions.pRecorder),
      m_oTimers(New<QtTimers>([this](const std::function<void()>& fnAct) { ByHost(fnAct); })),
      m_aClasses(oOptions.aClasses), m_fnObjects(oOptions.fnObjects) {
    if (m_pRecorder)
        m_pRecorder->Follow({m_frmMain, m_oActiveBar, m_frmPanel, [this] { return m_oFailures.Entry(); }});
    m_oFailures.SetServicesFolder(QString::fromStdString(m_oPlatform.oUtilities->GetAppFolder("Services")));
    m_oFailures.SetLogFile(m_oPlatform.oUtilities->LogPath());
    m_oPlatform.oUtilities->SetShow([this](const ShownFailure& oShown) { m_oFailures.Show(oShown); });
    m_frmMain->AddMember("ActiveBar", m_oActiveBar);
    m_frmMain->AddMember("CommonDialog", m_oCommonDialog);
    m_frmMain->AddMember("ctlCVProgress", m_oProgress);
    m_frmMain->SetCaption(m_oPlatform.sName);
    SetUpService();
    m_pBlame = std::make_unique<Blame>(m_oPlatform.oUtilities,
                                       std::filesystem::path(m_oPlatform.oUtilities->LogPath()).parent_path().string(),
                                       oOptions.oLeftOut, oOptions.fnAskAfterDeath);
    m_frmMain->Load();
    m_pLibrary = std::make_unique<Library>(MakePlatform());
    m_pWindow = std::make_unique<MainWindow>(m_frmMain, m_oActiveBar, m_frmPanel, m_oFailures);
    m_pWindow->Bars().SetProgressWidget([oProgress = m_oProgress] { return oProgress->Widget(); });
    m_oFailures.SetParentWindow(m_pWindow.get());
    m_oMessageBox->SetParentWindow(m_pWindow.get());
    m_oCommonDialog->SetParentWindow(m_pWindow.get());
    SetUpWindowHost();
    m_pPersonal = std::make_unique<PersonalDesktop>(PartsOfPerson(oOptions));
    if (oOptions.bWatch)
        m_pBlame->StartWatch();
}

void Application::SetUpWindowHost() {
    m_pWindowHost->frmMain = m_frmMain.Get();
    m_pWindowHost->pArea = &m_pWindow->Area();
    m_pWindowHost->pMainWindow = m_pWindow.get();
    m_pWindowHost->oMessages = m_oPlatform.oWindowMessages;
    m_pWindowHost->fnGuard = [this](const std::function<void()>& fnAct) { m_oFailures.Guard(fnAct); };
    m_pWindowHost->fnAskToLeave = [this](const LeaveQuestion& oQuestion) { return AskToLeave(oQuestion); };
    m_pWindowHost->fnHelp = [this](Long lTopic) { ShowHelp(lTopic); };
    if (m_pRecorder)
        m_pWindowHost->fnByPerson = [this](const WindowStep& oStep, const std::function<void()>& fnDo) {
            m_pRecorder->OnWindow(oStep, fnDo);
        };
}

Application::~Application() {
    m_oRunningProvider = nullptr;
    if (m_frmMain->IsLoaded() && !m_pWindow->HasEnded())
        m_oFailures.Guard([this] { m_frmMain->Unload(); });
    m_pWindow->Bars().SetChanges(BarChanges::None());
    m_pCommandOwner.reset();
    m_pPersonal.reset();
    m_pWindow.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // widgets of plug-ins go before the library
    m_pLibrary.reset();
    if (m_pRecorder)
        m_pRecorder->Leave();
}

Platform Application::MakePlatform() {
    Platform oPlatform = m_oPlatform.MakePlatform();
    oPlatform.oScreen = New<QtScreen>();
    oPlatform.oTimers = m_oTimers;
    oPlatform.oMessageBox = m_oMessageBox;
    const std::string sServices = m_oPlatform.oUtilities->GetAppFolder("Services");
    oPlatform.oFileSystem = New<HostFileSystem>(m_pBlame->Files(oPlatform.oFileSystem, sServices), sServices);
    oPlatform.oObjectFactory = MakeObjectFactory();
    oPlatform.oScreenPrinter = MakeScreenPrinter();
    return oPlatform;
}

// A run that nobody watches is told "Save" or "Stay" beforehand; otherwise the changes go.
LeaveAnswer Application::AskToLeave(const LeaveQuestion& oQuestion) {
    const auto oAnswer = m_oCommonDialog->TakeAnswer();
    if (!oAnswer)
        return AskInBox(oQuestion);
    if (EqualText(*oAnswer, "Save"))
        return oQuestion.bCanSave ? LeaveAnswer::Save : LeaveAnswer::Stay;
    return EqualText(*oAnswer, "Stay") ? LeaveAnswer::Stay : LeaveAnswer::Discard;
}

void Application::ShowHelp(Long lTopic) {
    const QString sBase = QString::fromStdString(m_oPlatform.sFolder) + QString("/Help/%1").arg(lTopic);
    for (const char* sEnding : {".html", ".htm", ".pdf", ".txt"})
        if (m_bWithDialogs && QFile::exists(sBase + sEnding) &&
            QDesktopServices::openUrl(QUrl::fromLocalFile(sBase + sEnding)))
            return;
    m_oMessageBox->ShowInformation(
        QCoreApplication::translate("Application", "The help topic %1 can't be opened. Its file is expected at %2.")
            .arg(lTopic)
            .arg(sBase + ".html")
            .toStdString(),
        QCoreApplication::translate("Application", "Help").toStdString());
}

void Application::Note(const char* sProcedure, const std::string& sText) const {
    m_oPlatform.oUtilities->LogError(m_oPlatform.oUtilities->AppName(), "Desktop", sProcedure,
                                     Failure(FailureNumber::FileAccess, sText), {}, false);
}

bool Application::Start() {
    bool bStarted = false;
    ContrastStyle::Follow(); // a failure may be shown before the person's own theme is known
    m_oFailures.Guard([&] {
        const Ref<Framework> oFramework = CorvaneMain::Framework();
        ClearWideRegisters();
        oFramework->Initialize(m_frmMain, m_frmPanel, New<WindowFormFactory>(m_pWindowHost));
        m_pPersonal->Initialized();
        m_pCommandOwner = std::make_unique<CommandOwner>(
            m_frmMain, [this](const QWidget* pWidget) { return PartOf(pWidget); },
            [this](const std::function<void()>& fnAct) { m_oFailures.Guard(fnAct); });
        if (m_oTranslation.Begin(*oFramework->ServiceManager()))
            m_pWindow->Bars().Redraw();
        oFramework->Start();
        bStarted = true;
    });
    ApplyAppearance(Appearance::Load());
    m_pWindow->Flush();
    m_pPersonal->Restore(bStarted);
    m_pWindow->show();
    m_pPersonal->RestoreWindows();
    return bStarted;
}

bool Application::Choose(const std::string& sTool) {
    const Ref<Tool> oTool = m_oActiveBar->Tools()->Find(sTool);
    if (!oTool || !oTool->Visible() || !oTool->Enabled() || IsModalFormOpen())
        return false;
    m_oFailures.Guard([&] { m_oActiveBar->Click(oTool); });
    m_pWindow->Flush();
    return true;
}

Ref<WindowForm> Application::ActiveWindowForm() const {
    const Ref<Form> frmActive = m_frmMain->ForegroundForm();
    return frmActive && frmActive->Visible() ? frmActive.TryAs<WindowForm>() : nullptr;
}

CommandOwner::Part Application::PartOf(const QWidget* pWidget) const {
    if (m_pWindow->ExplorerDock().isAncestorOf(pWidget))
        return CommandOwner::Part::Explorer;
    const Ref<WindowForm> oForm = ActiveWindowForm();
    return oForm && oForm->Frame() && oForm->Frame()->isAncestorOf(pWidget) ? CommandOwner::Part::Window
                                                                            : CommandOwner::Part::Nowhere;
}

bool Application::ClickCommand(const std::string& sCommand) {
    using Command = StandardCommandConstants;
    static constexpr std::array<std::pair<const char*, Command>, 9> aCommands{{{"help", Command::cvHelp},
                                                                               {"ok", Command::cvOK},
                                                                               {"cancel", Command::cvCancel},
                                                                               {"apply", Command::cvApply},
                                                                               {"previous", Command::cvPrevious},
                                                                               {"next", Command::cvNext},
                                                                               {"finish", Command::cvFinish},
                                                                               {"save", Command::cvSave},
                                                                               {"saveas", Command::cvSaveAs}}};
    const Ref<WindowForm> oForm = ActiveWindowForm();
    if (!oForm)
        return false;
    if (EqualText(sCommand, "close")) {
        oForm->ByPerson(WindowStep::What::Close, 0, [&] { oForm->RequestClose(); });
        return true;
    }
    for (const auto& [sName, eCommand] : aCommands)
        if (EqualText(sCommand, sName) && oForm->IsCommandEnabled(eCommand)) {
            oForm->ByPerson(WindowStep::What::Command, static_cast<int>(eCommand),
                            [&, eCommand = eCommand] { oForm->ClickCommand(eCommand); });
            return true;
        }
    return false;
}

bool Application::ShowPage(int nPage) {
    const Ref<WindowForm> oForm = ActiveWindowForm();
    if (!oForm)
        return false;
    oForm->ByPerson(WindowStep::What::Page, nPage - 1, [&] { oForm->SetActivePageIndex(nPage - 1); });
    return oForm->ActivePageIndex() == nPage - 1;
}

bool Application::IsModalFormOpen() const {
    const auto aForms = m_frmMain->Forms();
    return std::any_of(aForms.begin(), aForms.end(), [](const auto& frm) { return frm->Visible() && frm->IsModal(); });
}

void Application::ByHost(const std::function<void()>& fnAct) {
    m_oFailures.Guard([&] {
        if (m_pRecorder)
            m_pRecorder->NotByPerson();
        fnAct();
    });
}

void Application::Settle() {
    constexpr int nLongest = 1000; // a timer may run for ever
    QElapsedTimer oElapsed;
    oElapsed.start();
    do
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    while (m_oTimers->RunningCount() > 0 && oElapsed.elapsed() < nLongest);
    m_pWindow->Flush();
}

QPixmap Application::Picture() {
    const QPixmap oMain = m_pWindow->grab();
    const QPoint oCorner = m_pWindow->geometry().topLeft();
    QRect oAll(QPoint(), m_pWindow->size());
    std::vector<QWidget*> aOver;
    for (const auto& frm : m_frmMain->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && frm->Visible() && !frm->MDIChild() && oForm->Frame())
            aOver.push_back(oForm->Frame());
    for (const QWidget* pOver : aOver)
        oAll |= pOver->geometry().translated(-oCorner);
    QPixmap oPicture(oAll.size() * oMain.devicePixelRatio());
    oPicture.setDevicePixelRatio(oMain.devicePixelRatio());
    oPicture.fill(Qt::transparent);
    QPainter oPainter(&oPicture);
    oPainter.drawPixmap(-oAll.topLeft(), oMain);
    for (QWidget* pOver : aOver) {
        const QRect oPlace = pOver->geometry().translated(-oCorner - oAll.topLeft());
        oPainter.drawPixmap(oPlace.topLeft(), pOver->grab());
        oPainter.drawRect(oPlace.adjusted(-1, -1, 0, 0)); // stands for the frame that the desktop draws
    }
    return oPicture;
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
    for (const auto& frm : m_frmMain->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && frm->Visible())
            sText += oForm->AsText() + TextOfFrontPage(*oForm);
    for (const auto& oMessage : m_oMessageBox->Shown())
        sText += "Message " + oMessage.sTitle.toStdString() + "\n" + oMessage.sText.toStdString() + "\n";
    return sText;
}

} // namespace corvane::desktop
