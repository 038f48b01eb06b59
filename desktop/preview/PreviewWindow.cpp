#include "desktop/preview/PreviewWindow.h"

#include "analysis/Check.h"
#include "analysis/Print.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/PageDef.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/preview/CallList.h"
#include "desktop/problems/ProblemList.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QScopeGuard>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QThread>
#include <QTime>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <filesystem>

namespace corvane::desktop {

namespace {

constexpr int nRetryMilliseconds = 40;
constexpr int nRetryUnsavedMilliseconds = 500; // services and pages are asked each time

QString Text(const std::string& sText) {
    return QString::fromStdString(sText);
}

std::string Absolute(const std::string& sFolder) {
    std::string sAbsolute = std::filesystem::absolute(sFolder).lexically_normal().string();
    while (sAbsolute.size() > 1 && sAbsolute.back() == '/')
        sAbsolute.pop_back();
    return sAbsolute;
}

bool IsError(const check::Finding& oFinding) {
    return check::TextOf(oFinding.eRule).eSeverity == check::Severity::Error;
}

} // namespace

PreviewWindow::PreviewWindow(PreviewOptions oOptions)
    : m_oOptions(std::move(oOptions)), m_oWatch(Text(Absolute(m_oOptions.sFolder))),
      m_oPlace(this, Absolute(m_oOptions.sFolder)), m_pPlace(new QWidget), m_pLayout(new QVBoxLayout(m_pPlace)),
      m_pNothing(new QLabel), m_pProblems(new ProblemList), m_pCalls(new CallList),
      m_pProblemsDock(new QDockWidget(tr("Problems"), this)), m_pCallsDock(new QDockWidget(tr("Calls"), this)),
      m_pIcon(new QLabel), m_pState(new QLabel), m_pLastCall(new QLabel), m_pAnyway(new QToolButton),
      m_pRestart(new QToolButton) {
    m_oOptions.sFolder = Absolute(m_oOptions.sFolder);
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->addWidget(m_pNothing);
    m_pNothing->setText(
        tr("There is nothing to show yet.\n\nThe application appears here as soon as the problems below are fixed."));
    m_pNothing->setAlignment(Qt::AlignCenter);
    m_pNothing->setWordWrap(true);
    setCentralWidget(m_pPlace);
    setWindowTitle(tr("%1 — Preview").arg(Text(std::filesystem::path(m_oOptions.sFolder).filename().string())));
    SetUpDocks();
    SetUpStatusBar();
    m_oRetry.setSingleShot(true);
    connect(&m_oRetry, &QTimer::timeout, this, &PreviewWindow::TryShow);
    connect(&m_oWatch, &FolderWatch::Changed, this, &PreviewWindow::Folder_Changed);
    resize(QSize(1180, 900).boundedTo(screen()->availableSize()));
    m_oPlace.Restore();
    TakeOver();
}

PreviewWindow::~PreviewWindow() {
    m_bLoading = true;
    m_pCalls->Leave();
    m_oUnloaded = {};
    m_pApplication.reset();
}

void PreviewWindow::SetUpDocks() {
    m_pProblemsDock->setObjectName("Problems");
    m_pProblemsDock->setWidget(m_pProblems);
    m_pCallsDock->setObjectName("Calls");
    m_pCallsDock->setWidget(m_pCalls);
    addDockWidget(Qt::BottomDockWidgetArea, m_pProblemsDock);
    addDockWidget(Qt::BottomDockWidgetArea, m_pCallsDock);
    tabifyDockWidget(m_pProblemsDock, m_pCallsDock);
    resizeDocks({m_pProblemsDock, m_pCallsDock}, {170, 170}, Qt::Vertical);
    m_pProblemsDock->hide();
    m_pProblemsDock->toggleViewAction()->setEnabled(false); // the list comes and goes by itself
    connect(m_pCalls, &CallList::Called, m_pLastCall, [this](const QString& sText) {
        m_pLastCall->setText(sText);
        m_pLastCall->setToolTip(sText);
    });
}

// Below the application's own status line, which is the application's.
void PreviewWindow::SetUpStatusBar() {
    for (QLabel* pLabel : {m_pState, m_pLastCall})
        pLabel->setTextFormat(Qt::PlainText);
    m_pLastCall->setIndent(2 * fontMetrics().averageCharWidth());
    m_pState->setAccessibleName(tr("Status of the preview"));
    m_pLastCall->setAccessibleName(tr("Latest call"));
    m_pLastCall->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_pAnyway->setText(tr("Show &Anyway"));
    m_pAnyway->setToolTip(tr("Shows the new definitions and discards unsaved work"));
    m_pAnyway->hide();
    connect(m_pAnyway, &QToolButton::clicked, this, [this] {
        m_bDiscards = true;
        TryShow();
    });
    m_pRestart->setText(tr("&Restart"));
    m_pRestart->setToolTip(tr("Restarts the preview to use the rebuilt plug-in"));
    m_pRestart->hide();
    connect(m_pRestart, &QToolButton::clicked, this, &PreviewWindow::Restart);
    auto* pOpen = new QToolButton;
    pOpen->setText(tr("&Open Window"));
    pOpen->setToolTip(tr("Opens a window of the definitions, even without code for it"));
    pOpen->setPopupMode(QToolButton::InstantPopup);
    pOpen->setAutoRaise(true);
    auto* pMenu = new QMenu(pOpen);
    connect(pMenu, &QMenu::aboutToShow, this, [this, pMenu] { FillWindowMenu(pMenu); });
    pOpen->setMenu(pMenu);
    auto* pCalls = new QToolButton;
    pCalls->setDefaultAction(m_pCallsDock->toggleViewAction());
    pCalls->setAutoRaise(true);
    statusBar()->addWidget(m_pIcon);
    statusBar()->addWidget(m_pState);
    statusBar()->addWidget(m_pAnyway);
    statusBar()->addWidget(m_pRestart);
    statusBar()->addWidget(m_pLastCall, 1);
    statusBar()->addPermanentWidget(pOpen);
    statusBar()->addPermanentWidget(pCalls);
}

void PreviewWindow::FillWindowMenu(QMenu* pMenu) {
    pMenu->clear();
    const Ref<Framework> oFramework = m_pApplication ? Singleton::Framework() : nullptr;
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (oManager)
        for (const auto& oWindowDef : oManager->WindowDefs()) {
            const std::string sName = oWindowDef->Name();
            if (sName == WindowHost::ListedWindow)
                continue;
            const QString sText = QString("%1  (%2)").arg(Text(oWindowDef->Caption()), Text(sName)).replace('&', "&&");
            pMenu->addAction(sText, this, [this, sName] { OpenWindow(sName); });
        }
    if (pMenu->isEmpty())
        pMenu->addAction(tr("(no windows)"))->setEnabled(false);
}

void PreviewWindow::OpenWindow(const std::string& sName) {
    if (!m_pApplication)
        return;
    m_setOpened.insert(FoldText(sName));
    ViewState::OpenWindow oOpen;
    oOpen.sName = sName;
    const bool bIsOpen = ViewState::Activate(*m_pApplication, oOpen);
    if (m_oOptions.pRecorder)
        m_oOptions.pRecorder->ByHost((bIsOpen ? "activate " : "open ") + sName);
    if (!bIsOpen)
        ViewState::OpenAgain(*m_pApplication, oOpen);
}

void PreviewWindow::Start() {
    m_nLoop = QThread::currentThread()->loopLevel();
    show();
    Folder_Changed();
}

// What has changed is looked at as a whole: an edit may be good or bad only together with another.
void PreviewWindow::Folder_Changed() {
    m_sTrouble.clear();
    m_aFindings.clear();
    if (!m_oWatch.FolderExists()) {
        m_sTrouble = tr("The folder %1 doesn't exist or has no folder “Services”.").arg(Text(m_oOptions.sFolder));
    } else {
        try {
            m_aFindings = check::Check({m_oOptions.sFolder, false});
            std::erase_if(m_aFindings, [](const auto& oFinding) { // a stand-in is there instead
                return oFinding.eRule == check::Rule::MissingPlugin;
            });
            const std::string sStandIns = m_oOptions.sFolder + "/standins.json";
            m_pStandIns = std::make_shared<const inspect::StandInFile>(
                std::filesystem::exists(sStandIns) ? inspect::ReadStandIns(sStandIns) : inspect::StandInFile());
        } catch (...) {
            m_sTrouble = Text(CurrentFailure().Description);
        }
    }
    m_bHasErrors = !m_sTrouble.isEmpty() || std::any_of(m_aFindings.begin(), m_aFindings.end(), IsError);
    m_bWanted = !m_bHasErrors;
    m_bUnsaved = m_bDiscards = m_bWaits = false;
    if (m_bWanted)
        TryShow();
    else
        ReportState();
}

bool PreviewWindow::IsBusy() const {
    return m_bLoading || (m_pApplication && m_pApplication->Failures().Entry() != 0) ||
           QThread::currentThread()->loopLevel() > m_nLoop || QApplication::mouseButtons() != Qt::NoButton;
}

// The modal window on top, if it is one of stand-ins.
Ref<WindowForm> PreviewWindow::ModalOfStandIns() {
    const QWidget* pModal = QApplication::activeModalWidget();
    for (const auto& frm : m_pApplication->MainForm()->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && pModal && oForm->Frame() == pModal)
            return IsOfStandIns(oForm->WindowName()) ? oForm : nullptr;
    return nullptr;
}

// False while something is open in which the person, or code, is at work; nothing of it may be closed, no menu either.
bool PreviewWindow::CanUnwind() {
    if (m_bLoading || QApplication::mouseButtons() != Qt::NoButton)
        return false;
    for (const auto& oControl : m_pApplication->Panel()->Controls())
        if (const auto oTree = oControl.TryAs<TreeView>(); oTree && oTree->IsEditingLabel())
            return false;
    return !QApplication::activeModalWidget() || ModalOfStandIns();
}

// A menu, or a modal window of stand-ins, is closed, to be opened again. False while the library hasn't come back yet.
bool PreviewWindow::Unwind() {
    if (!m_oView)
        m_oView = ViewState::Of(*m_pApplication);
    while (QWidget* pPopup = QApplication::activePopupWidget())
        if (!pPopup->close())
            break;
    if (const auto oForm = ModalOfStandIns())
        oForm->Abandon();
    return !IsBusy();
}

// Asking isn't among the calls that the author wants to see, and who fails to answer does so every time.
bool PreviewWindow::HasUnsavedWork() {
    m_pCalls->SetHeld(true);
    m_pApplication->Failures().SetTaker([](const ShownFailure&) { return true; });
    const bool bHas = m_pApplication->HasUnsavedWork();
    m_pApplication->Failures().SetTaker({});
    m_pCalls->SetHeld(false);
    return bHas;
}

void PreviewWindow::TryShow() {
    if (!m_bWanted)
        return;
    const auto fnWait = [this](bool bUnsaved) {
        const bool bIsNew = !std::exchange(m_bWaits, true);
        if (std::exchange(m_bUnsaved, bUnsaved) != bUnsaved || bIsNew)
            ReportState();
        m_oRetry.start(bUnsaved ? nRetryUnsavedMilliseconds : nRetryMilliseconds);
    };
    if (m_pApplication) {
        if (!CanUnwind())
            return fnWait(m_bUnsaved);
        if (!m_bDiscards && HasUnsavedWork())
            return fnWait(true);
        if (!Unwind())
            return fnWait(false); // the event loop that is in the way has to end first
    }
    ShowNow();
}

// False when the application refuses to end, as with unsaved work that nobody has told of before.
bool PreviewWindow::Unload() {
    CommonDialog& oDialogs = m_pApplication->Dialogs();
    const std::size_t nAnswers = m_bDiscards ? m_pApplication->MainForm()->Forms().size() + 2 : 1;
    for (std::size_t i = 0; i < nAnswers; ++i)
        oDialogs.AddAnswer(m_bDiscards ? "Discard" : "Stay");
    m_pApplication->Failures().Guard([this] { m_pApplication->MainForm()->Unload(); });
    if (!m_pApplication->MainForm()->IsLoaded())
        return true;
    while (oDialogs.TakeAnswer().value_or("").size() > 0) {
    }
    return false;
}

void PreviewWindow::ShowNow() {
    m_bLoading = true;
    m_pCalls->SetHeld(true);
    if (m_oOptions.pRecorder)
        m_oOptions.pRecorder->SetHeld(true);
    m_pPlace->setUpdatesEnabled(false); // the old picture stands until the new one is there
    const auto oDone = qScopeGuard([this] {
        m_pPlace->setUpdatesEnabled(true);
        m_pCalls->SetHeld(false);
        if (m_oOptions.pRecorder)
            m_oOptions.pRecorder->SetHeld(false);
        m_bLoading = false;
        ReportState();
    });
    QStringList aFailures;
    if (m_pApplication) {
        m_pApplication->Failures().SetTaker([](const ShownFailure&) { return true; }); // they are in the log
        m_pApplication->Personal().Kept().Keep();
        m_bUnsaved = !Unload();
        if (m_bUnsaved) {
            m_pApplication->Failures().SetTaker({});
            m_oView.reset();
            return;
        }
        m_pCalls->Leave();
        m_pApplication.reset();
        if (m_oOptions.pRecorder)
            m_oOptions.pRecorder->Comment("Here the definitions were changed.");
    }
    m_bWanted = m_bDiscards = false;
    AfterLoad(Load());
}

bool PreviewWindow::Load() {
    m_aFailures.clear();
    m_oRecord = New<inspect::Record>();
    const auto fnTake = [this](const ShownFailure& oShown) {
        const FailureTexts oTexts = TextsOf(oShown, Text(m_oOptions.sFolder + "/Services"));
        m_aFailures << QString("%1 (%2)").arg(oTexts.sHeadline, oTexts.sWhere);
        return true;
    };
    try {
        ApplicationOptions oOptions;
        oOptions.sFolder = m_oOptions.sFolder;
        oOptions.bWithDialogs = m_oOptions.bWithDialogs;
        oOptions.bPersonal = false;
        oOptions.sSessionFile = SessionFile().toStdString();
        oOptions.pRecorder = m_oOptions.pRecorder;
        oOptions.fnObjects = [this](Ref<IObjectFactory> oReal, Ref<PluginFactory> oPlugins) {
            m_oFactory = New<PreviewFactory>(m_oRecord, m_pStandIns, std::move(oReal), std::move(oPlugins),
                                             m_oOptions.bStandIns, m_pLoaded);
            return Ref<IObjectFactory>(m_oFactory);
        };
        m_pApplication = std::make_unique<Application>(oOptions);
        m_pApplication->Failures().SetTaker(fnTake);
        m_oUnloaded = m_pApplication->MainForm()->Changed.Subscribe([this](Form::Change eChange) {
            if (eChange == Form::Change::Unloaded && !m_bLoading)
                QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
        });
        m_pCalls->Follow(m_pApplication->Bar(), m_oRecord);
        MainWindow& oWindow = m_pApplication->Window();
        oWindow.setParent(m_pPlace, Qt::Widget);
        oWindow.statusBar()->setSizeGripEnabled(false); // this window has one
        m_pLayout->addWidget(&oWindow);
        m_pNothing->hide();
        return m_pApplication->Start();
    } catch (...) {
        m_aFailures << Text(CurrentFailure().Description);
        m_pCalls->Leave();
        m_pApplication.reset();
        m_pNothing->show();
        return false;
    }
}

void PreviewWindow::AfterLoad(bool bStarted) {
    ++m_nShown;
    m_sTime = QTime::currentTime().toString("HH:mm:ss");
    const std::optional<ViewState> oView = std::exchange(m_oView, std::nullopt);
    if (!m_pApplication)
        return;
    for (const auto& [sPath, sWhy] : m_oFactory->Unusable())
        m_aFailures << Text(sWhy);
    setWindowTitle(tr("%1 — Preview").arg(m_pApplication->Window().windowTitle()));
    if (bStarted)
        FillExplorer(!oView || oView->bExplorerIsShown);
    if (oView && bStarted)
        oView->Restore(*m_pApplication,
                       [this](const ViewState::OpenWindow& oWindow) { return IsOfStandIns(oWindow.sName); });
    m_pApplication->Window().Flush();
    m_pLayout->activate();
    // What the models have told is drawn with the first picture.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    m_pApplication->Failures().SetTaker({});
    if (!oView)
        return;
    if (std::exchange(m_bTakesOver, false))
        TellClosed(*oView);
    QTimer::singleShot(0, &m_pApplication->Window(), [this, oView = *oView] { oView.RestoreMenu(*m_pApplication); });
    for (const ViewState::OpenWindow& oOpen : oView->aWindows)
        if (oOpen.bModal && IsOfStandIns(oOpen.sName)) // each in the event loop of the one below it
            QTimer::singleShot(0, &m_pApplication->Window(),
                               [this, oOpen] { ViewState::OpenAgain(*m_pApplication, oOpen); });
}

// Filling the explorer is the start service's part, which a stand-in doesn't play.
void PreviewWindow::FillExplorer(bool bShows) {
    const ExplorerPanel& oPanel = m_pApplication->Window().Explorer();
    if (!oPanel.Page(0))
        return;
    for (int i = 0; const ExplorerPage* pPage = oPanel.Page(i); ++i)
        if (pPage->Tree()->Tree()->GetNodes()->Count() > 0)
            return;
    m_pApplication->Failures().Guard([&] {
        const auto oExplorer = Singleton::Framework()->NavigationManager()->ExplorerManager();
        oExplorer->Populate();
        if (!bShows)
            oExplorer->Hide();
    });
    if (m_oOptions.pRecorder && m_nShown == 1 && !m_oOptions.pRecorder->GoesOn())
        m_oOptions.pRecorder->ByHost("populate");
}

// Whether it can be opened without the code that opened it.
bool PreviewWindow::IsOfStandIns(const std::string& sWindow) {
    if (m_setOpened.contains(FoldText(sWindow)))
        return true;
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oManager || !m_oFactory || !oManager->WindowDefs()->HasKey(sWindow))
        return false;
    for (const auto& oPageDef : oManager->WindowDefs()->Item(sWindow)->PageDefs())
        if (!m_oFactory->IsStandIn(oPageDef->PageProgID()))
            return false;
    return true;
}

QString PreviewWindow::StateText() const {
    return m_pState->text();
}

void PreviewWindow::ReportState() {
    ShowProblems();
    QStyle::StandardPixmap eIcon = QStyle::SP_DialogApplyButton;
    QString sText = tr("As of %1").arg(m_sTime);
    if (m_bHasErrors) {
        eIcon = QStyle::SP_MessageBoxCritical;
        const QString sWhat =
            m_sTrouble.isEmpty() ? Text(check::CountText(m_aFindings)) : tr("The files can't be read");
        sText = m_nShown > 0 ? tr("%1; showing the last valid state, from %2").arg(sWhat, m_sTime) : sWhat;
    } else if (m_bUnsaved) {
        eIcon = QStyle::SP_MessageBoxWarning;
        sText = tr("The definitions have changed, but there is unsaved work");
    } else if (m_bWanted) {
        eIcon = QStyle::SP_BrowserReload;
        sText = tr("The definitions have changed and will be shown when the open dialog or editor is closed");
    } else if (m_pProblems->Count() > 0) {
        eIcon = QStyle::SP_MessageBoxWarning;
    }
    const int nSize = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_pIcon->setPixmap(style()->standardIcon(eIcon, nullptr, this).pixmap(nSize));
    const QStringList aBuilt = m_pLoaded->BuiltAnew();
    m_pState->setText(aBuilt.isEmpty() ? sText : tr("%1; rebuilt: %2").arg(sText, aBuilt.join(", ")));
    m_pState->setToolTip(m_pState->text()); // there may be too little room for it
    m_pAnyway->setVisible(m_bUnsaved);
    m_pRestart->setVisible(!aBuilt.isEmpty());
}

void PreviewWindow::ShowProblems() {
    QStringList aOthers = m_sTrouble.isEmpty() ? QStringList() : QStringList(m_sTrouble);
    if (!m_bHasErrors)
        aOthers += m_aFailures;
    m_pProblems->ShowWith(aOthers, m_aFindings, Text(m_oOptions.sFolder));
    const bool bAny = m_pProblems->Count() > 0;
    const QString sCount = m_aFindings.empty() ? QString() : ": " + Text(check::CountText(m_aFindings));
    m_pProblemsDock->setWindowTitle(tr("Problems") + sCount);
    if (bAny && m_pProblemsDock->isHidden()) {
        m_pProblemsDock->show();
        m_pProblemsDock->raise();
    } else if (!bAny) {
        m_pProblemsDock->hide();
    }
}

void PreviewWindow::closeEvent(QCloseEvent* pEvent) {
    if (m_bLoading) {
        pEvent->ignore();
        return;
    }
    if (m_pApplication && !m_pApplication->Window().HasEnded()) {
        m_pApplication->Window().close();
        if (!m_pApplication->Window().HasEnded()) {
            pEvent->ignore();
            return;
        }
    }
    m_bWanted = false;
    m_oPlace.Keep();
    pEvent->accept();
}

// Keys that nobody has are the application's, as if it had the window for itself.
void PreviewWindow::keyPressEvent(QKeyEvent* pEvent) {
    pEvent->ignore();
    if (m_bInKey || !m_pApplication || QApplication::focusWidget())
        return;
    m_bInKey = true;
    QCoreApplication::sendEvent(&m_pApplication->Window(), pEvent);
    m_bInKey = false;
}

} // namespace corvane::desktop
