#include "desktop/preview/PreviewWindow.h"

#include "analysis/Check.h"
#include "analysis/Print.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/PageDef.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "desktop/application/MainWindow.h"
#include "desktop/preview/CallList.h"
#include "desktop/preview/MenuOutline.h"
#include "desktop/problems/ProblemList.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/style/QtText.h"
#include "desktop/windows/WindowForm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QThread>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <filesystem>

namespace corvane::desktop {

namespace {

constexpr int retryMilliseconds = 40;
constexpr int retryUnsavedMilliseconds = 500; // services and pages are asked each time

std::string Absolute(const std::string& folder) {
    std::string absolute = std::filesystem::absolute(folder).lexically_normal().string();
    while (absolute.size() > 1 && absolute.back() == '/')
        absolute.pop_back();
    return absolute;
}

bool IsError(const check::Finding& finding) {
    return check::TextOf(finding.rule).severity == check::Severity::Error;
}

bool StopsTheStart(const check::Finding& finding) {
    return check::StopsTheStart(finding.rule);
}

bool LeavesOutTheFile(const check::Finding& finding) {
    return check::LeavesOutTheFile(finding.rule);
}

} // namespace

PreviewWindow::PreviewWindow(PreviewOptions options)
    : m_options(std::move(options)), m_watch(Text(Absolute(m_options.folder))),
      m_place(this, Absolute(m_options.folder)), m_placeWidget(new QWidget), m_layout(new QVBoxLayout(m_placeWidget)),
      m_nothing(new QLabel), m_problems(new ProblemList), m_calls(new CallList), m_outline(new MenuOutline),
      m_problemsDock(new QDockWidget(tr("Problems"), this)), m_callsDock(new QDockWidget(tr("Calls"), this)),
      m_outlineDock(new QDockWidget(tr("Menus"), this)), m_icon(new QLabel), m_stateLabel(new QLabel),
      m_lastCall(new QLabel), m_anyway(new QToolButton), m_restart(new QToolButton) {
    m_options.folder = Absolute(m_options.folder);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_nothing);
    m_nothing->setText(
        tr("There is nothing to show yet.\n\nThe application appears here as soon as the problems below are fixed."));
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setWordWrap(true);
    setCentralWidget(m_placeWidget);
    setWindowTitle(tr("%1 — Preview").arg(Text(std::filesystem::path(m_options.folder).filename().string())));
    SetUpDocks();
    SetUpStatusBar();
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &PreviewWindow::TryShow);
    connect(&m_watch, &FolderWatch::Changed, this, &PreviewWindow::Folder_Changed);
    resize(QSize(1180, 900).boundedTo(screen()->availableSize()));
    m_place.Restore();
    TakeOver();
}

PreviewWindow::~PreviewWindow() {
    m_loading = true;
    m_calls->Leave();
    m_unloaded = {};
    m_application.reset();
}

void PreviewWindow::SetUpDocks() {
    m_problemsDock->setObjectName("Problems");
    m_problemsDock->setWidget(m_problems);
    m_callsDock->setObjectName("Calls");
    m_callsDock->setWidget(m_calls);
    addDockWidget(Qt::BottomDockWidgetArea, m_problemsDock);
    m_outlineDock->setObjectName("Menus");
    m_outlineDock->setWidget(m_outline);
    addDockWidget(Qt::BottomDockWidgetArea, m_callsDock);
    addDockWidget(Qt::RightDockWidgetArea, m_outlineDock);
    tabifyDockWidget(m_problemsDock, m_callsDock);
    m_outlineDock->hide();
    connect(m_outlineDock, &QDockWidget::visibilityChanged, this, [this](bool isVisible) {
        if (!isVisible)
            return;
        ShowOutline();
        Problems_Current();
    });
    connect(m_problems, &QTreeWidget::currentItemChanged, this, &PreviewWindow::Problems_Current);
    connect(m_outline, &MenuOutline::Written, this, [this] { m_refused.clear(); }); // the files are followed
    connect(m_outline, &MenuOutline::Refused, this, [this](const QString& why) {
        m_refused = why;
        ReportState();
        QTimer::singleShot(0, this, &PreviewWindow::ShowOutline); // as it is in the files
    });
    resizeDocks({m_problemsDock, m_callsDock}, {170, 170}, Qt::Vertical);
    m_problemsDock->hide();
    m_problemsDock->toggleViewAction()->setEnabled(false); // the list comes and goes by itself
    connect(m_calls, &CallList::Called, m_lastCall, [this](const QString& text) {
        m_lastCall->setText(text);
        m_lastCall->setToolTip(text);
    });
}

// Below the application's own status line, which is the application's.
void PreviewWindow::SetUpStatusBar() {
    for (QLabel* label : {m_stateLabel, m_lastCall})
        label->setTextFormat(Qt::PlainText);
    m_lastCall->setIndent(2 * fontMetrics().averageCharWidth());
    m_stateLabel->setAccessibleName(tr("Status of the preview"));
    m_lastCall->setAccessibleName(tr("Latest call"));
    m_lastCall->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_anyway->setText(tr("Show &Anyway"));
    m_anyway->setToolTip(tr("Shows the new definitions and discards unsaved work"));
    m_anyway->hide();
    connect(m_anyway, &QToolButton::clicked, this, [this] {
        m_state = State::Discarding;
        TryShow();
        if (IsToBeShown())
            ReportState(); // it waits for something else
    });
    m_restart->setText(tr("&Restart"));
    m_restart->setToolTip(tr("Restarts the preview to use the rebuilt plug-in"));
    m_restart->hide();
    connect(m_restart, &QToolButton::clicked, this, &PreviewWindow::Restart);
    auto* open = new QToolButton;
    open->setText(tr("&Open Window"));
    open->setToolTip(tr("Opens a window of the definitions, even without code for it"));
    open->setPopupMode(QToolButton::InstantPopup);
    open->setAutoRaise(true);
    auto* menu = new QMenu(open);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { FillWindowMenu(menu); });
    open->setMenu(menu);
    auto* calls = new QToolButton;
    calls->setDefaultAction(m_callsDock->toggleViewAction());
    calls->setAutoRaise(true);
    statusBar()->addWidget(m_icon);
    statusBar()->addWidget(m_stateLabel);
    statusBar()->addWidget(m_anyway);
    statusBar()->addWidget(m_restart);
    statusBar()->addWidget(m_lastCall, 1);
    auto* menus = new QToolButton;
    menus->setDefaultAction(m_outlineDock->toggleViewAction());
    menus->setAutoRaise(true);
    menus->setToolTip(tr("Lists the entries of all menus, to be moved to other places"));
    statusBar()->addPermanentWidget(open);
    statusBar()->addPermanentWidget(menus);
    statusBar()->addPermanentWidget(calls);
}

void PreviewWindow::FillWindowMenu(QMenu* menu) {
    menu->clear();
    const Ref<Framework> framework = m_application ? Singleton::Framework() : nullptr;
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (manager)
        for (const auto& windowDef : manager->WindowDefs()) {
            const std::string name = windowDef->Name();
            if (name == WindowHost::ListedWindow)
                continue;
            const QString text = QString("%1  (%2)").arg(Text(windowDef->Caption()), Text(name)).replace('&', "&&");
            menu->addAction(text, this, [this, name] { OpenWindow(name); });
        }
    if (menu->isEmpty())
        menu->addAction(tr("(no windows)"))->setEnabled(false);
}

void PreviewWindow::OpenWindow(const std::string& name) {
    if (!m_application)
        return;
    m_opened.insert(FoldText(name));
    ViewState::OpenWindow open;
    open.name = name;
    const bool isOpen = ViewState::Activate(*m_application, open);
    if (m_options.recorder)
        m_options.recorder->ByHost((isOpen ? "activate " : "open ") + name);
    if (!isOpen)
        ViewState::OpenAgain(*m_application, open);
}

void PreviewWindow::Start() {
    m_loop = QThread::currentThread()->loopLevel();
    show();
    Folder_Changed();
}

// Programs of services alone have changed: nothing but their processes needs to begin again.
bool PreviewWindow::RestartsProcesses() {
    const QString plugins = Text(Absolute(m_options.folder)) + "/plugins/";
    QStringList names;
    for (const QString& path : m_watch.ChangedFiles()) {
        const QString rest = path.startsWith(plugins) ? path.mid(plugins.size()) : QString();
        if (!rest.contains('/') || rest.endsWith("/plugin.json"))
            return false;
        names << rest.section('/', 0, 0);
    }
    names.removeDuplicates();
    if (names.isEmpty() || !m_application || !m_factory || IsBusy() || m_state == State::Invalid)
        return false;
    bool isEnough = true;
    m_application->ByHost([&] {
        for (const QString& name : names)
            isEnough = m_factory->RestartProcess(name.toStdString()) && isEnough;
    });
    return isEnough;
}

// What has changed is looked at as a whole: an edit may be good or bad only together with another.
void PreviewWindow::Folder_Changed() {
    if (RestartsProcesses())
        return;
    m_trouble.clear();
    m_refused.clear();
    m_findings.clear();
    if (!m_watch.FolderExists()) {
        m_trouble = tr("The folder %1 doesn't exist or has no folder “Services”.").arg(Text(m_options.folder));
    } else {
        try {
            m_findings = check::Check({m_options.folder, false});
            std::erase_if(m_findings, [](const auto& finding) { // a stand-in is there instead; notes are about style
                return finding.rule == check::Rule::MissingPlugin ||
                       check::TextOf(finding.rule).severity == check::Severity::Note;
            });
            const std::string standIns = m_options.folder + "/standins.json";
            m_standIns = std::make_shared<const inspect::StandInFile>(
                std::filesystem::exists(standIns) ? inspect::ReadStandIns(standIns) : inspect::StandInFile());
        } catch (...) {
            m_trouble = Text(CurrentFailure().Description);
        }
    }
    m_hasErrors = !m_trouble.isEmpty() || std::any_of(m_findings.begin(), m_findings.end(), IsError);
    m_leavesOut = std::any_of(m_findings.begin(), m_findings.end(), LeavesOutTheFile);
    const bool keepsOld = !m_trouble.isEmpty() || std::any_of(m_findings.begin(), m_findings.end(), StopsTheStart) ||
                          (m_leavesOut && m_showsWhole);
    m_state = keepsOld ? State::Invalid : State::Wanted;
    m_isOtherUnsaved = false;
    if (IsToBeShown())
        TryShow();
    else
        ReportState();
}

bool PreviewWindow::IsBusy() const {
    return m_loading || (m_application && m_application->Failures().Entry() != 0) ||
           QThread::currentThread()->loopLevel() > m_loop || QApplication::mouseButtons() != Qt::NoButton;
}

// The modal window on top, if it is one of stand-ins.
Ref<WindowForm> PreviewWindow::ModalOfStandIns() {
    const QWidget* modal = QApplication::activeModalWidget();
    for (const auto& frm : m_application->MainForm()->Forms())
        if (const auto form = frm.TryAs<WindowForm>(); form && modal && form->Frame() == modal)
            return IsOfStandIns(form->WindowName()) ? form : nullptr;
    return nullptr;
}

// False while something is open in which the user, or code, is at work; nothing of it may be closed, no menu either.
bool PreviewWindow::CanUnwind() {
    if (m_loading || QApplication::mouseButtons() != Qt::NoButton)
        return false;
    for (const auto& control : m_application->Panel()->Controls())
        if (const auto tree = control.TryAs<TreeView>(); tree && tree->IsEditingLabel())
            return false;
    return !QApplication::activeModalWidget() || ModalOfStandIns();
}

// A menu, or a modal window of stand-ins, is closed, to be opened again. False while the library hasn't come back yet.
bool PreviewWindow::Unwind() {
    if (!m_view)
        m_view = ViewState::Of(*m_application);
    while (QWidget* popup = QApplication::activePopupWidget())
        if (!popup->close())
            break;
    if (const auto form = ModalOfStandIns())
        form->Abandon();
    return !IsBusy();
}

// Asking isn't among the calls that the author wants to see, and who fails to answer does so every time. What is
// entered into forms whose windows are opened again is entered again, and in no one's way; it is set aside to see what
// else is unsaved, once for each change of the definitions.
bool PreviewWindow::HasUnsavedWork() {
    m_calls->SetHeld(true);
    m_application->Failures().SetTaker([](const ShownFailure&) { return true; });
    bool has = m_application->HasUnsavedWork();
    if (has && !std::exchange(m_isOtherUnsaved, true)) {
        const ViewState view = ViewState::Of(*m_application);
        const auto opens = [this](const ViewState::OpenWindow& window) { return IsOfStandIns(window.name); };
        if (view.SetEntriesAside(*m_application, opens)) {
            has = m_application->HasUnsavedWork();
            if (has)
                view.EnterAgain(*m_application, opens);
            else
                m_view = view;
        }
    }
    m_application->Failures().SetTaker({});
    m_calls->SetHeld(false);
    return has;
}

void PreviewWindow::Wait(State state) {
    if (std::exchange(m_state, state) != state)
        ReportState();
    m_retry.start(state == State::Unsaved ? retryUnsavedMilliseconds : retryMilliseconds);
}

void PreviewWindow::TryShow() {
    if (!IsToBeShown())
        return;
    ++m_tryCount;
    if (m_application) {
        if (!CanUnwind())
            return Wait(m_state == State::Wanted ? State::Waits : m_state);
        if (m_state != State::Discarding && HasUnsavedWork())
            return Wait(State::Unsaved);
        if (!Unwind()) // the event loop that is in the way has to end first
            return Wait(m_state == State::Discarding ? m_state : State::Waits);
    }
    ShowNow();
}

// Whether it can be opened without the code that opened it.
bool PreviewWindow::IsOfStandIns(const std::string& window) {
    if (m_opened.contains(FoldText(window)))
        return true;
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!manager || !m_factory || !manager->WindowDefs()->HasKey(window))
        return false;
    for (const auto& pageDef : manager->WindowDefs()->Item(window)->PageDefs())
        if (!m_factory->IsStandIn(pageDef->PageProgID()))
            return false;
    return true;
}

QString PreviewWindow::StateText() const {
    return m_stateLabel->text();
}

void PreviewWindow::ReportState() {
    ShowProblems();
    QStyle::StandardPixmap icon = QStyle::SP_DialogApplyButton;
    QString text = tr("As of %1").arg(m_time);
    if (m_state == State::Invalid) {
        icon = QStyle::SP_MessageBoxCritical;
        const QString what = m_trouble.isEmpty() ? Text(check::CountText(m_findings)) : tr("The files can't be read");
        text = m_shown > 0 ? tr("%1; showing the last valid state, from %2").arg(what, m_time) : what;
    } else if (m_state == State::Unsaved) {
        icon = QStyle::SP_MessageBoxWarning;
        text = tr("The definitions have changed, but there is unsaved work");
    } else if (IsToBeShown()) {
        icon = QStyle::SP_BrowserReload;
        text = tr("The definitions have changed and will be shown when the open dialog or editor is closed");
    } else if (m_hasErrors) {
        icon = QStyle::SP_MessageBoxCritical;
        text = tr("As of %1: %2").arg(m_time, Text(check::CountText(m_findings)));
    } else if (m_problems->Count() > 0) {
        icon = QStyle::SP_MessageBoxWarning;
    }
    if (!m_refused.isEmpty()) {
        icon = QStyle::SP_MessageBoxWarning;
        text = tr("The entry can't be moved: %1").arg(m_refused);
    }
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setPixmap(style()->standardIcon(icon, nullptr, this).pixmap(size));
    const QStringList built = m_loaded->Rebuilt();
    m_stateLabel->setText(built.isEmpty() ? text : tr("%1; rebuilt: %2").arg(text, built.join(", ")));
    m_stateLabel->setToolTip(m_stateLabel->text()); // there may be too little space for it
    m_anyway->setVisible(m_state == State::Unsaved);
    m_restart->setVisible(!built.isEmpty());
}

void PreviewWindow::ShowProblems() {
    QStringList others = m_trouble.isEmpty() ? QStringList() : QStringList(m_trouble);
    if (m_state != State::Invalid && !m_leavesOut) // whose failure is among the findings
        others += m_failures;
    m_problems->ShowWith(others, m_findings, Text(m_options.folder));
    const bool any = m_problems->Count() > 0;
    const QString count = m_findings.empty() ? QString() : ": " + Text(check::CountText(m_findings));
    m_problemsDock->setWindowTitle(tr("Problems") + count);
    if (any && m_problemsDock->isHidden()) {
        m_problemsDock->show();
        m_problemsDock->raise();
    } else if (!any) {
        m_problemsDock->hide();
    }
    if (m_outlineDock->isVisible())
        ShowOutline();
}

// Nothing while the files can't be read.
void PreviewWindow::ShowOutline() {
    try {
        m_outline->Show(m_options.folder, check::OutlineLines({m_options.folder, false, {}}), m_findings);
    } catch (...) {
        m_outline->Show(m_options.folder, {}, {});
    }
}

// An entry of a menu that has the problem is shown where it is.
void PreviewWindow::Problems_Current() {
    if (const check::Finding* finding = m_problems->FindingOf(m_problems->currentItem());
        finding && m_outlineDock->isVisible())
        m_outline->Select(finding->place);
}

void PreviewWindow::closeEvent(QCloseEvent* event) {
    if (m_loading) {
        event->ignore();
        return;
    }
    if (m_application && !m_application->Window().HasEnded()) {
        m_application->Window().close();
        if (!m_application->Window().HasEnded()) {
            event->ignore();
            return;
        }
    }
    if (IsToBeShown())
        m_state = State::Settled;
    m_place.Save();
    event->accept();
}

// Keys that no one has are the application's, as if it had the window for itself.
void PreviewWindow::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (m_inKey || !m_application || QApplication::focusWidget())
        return;
    m_inKey = true;
    QCoreApplication::sendEvent(&m_application->Window(), event);
    m_inKey = false;
}

} // namespace corvane::desktop

#include "moc_PreviewWindow.cpp"
