// How a state takes the place of the one before: the old application ends, and the new one starts in the same window.
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/platform/HostParts.h"
#include "desktop/preview/CallList.h"
#include "desktop/preview/PreviewWindow.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/style/QtText.h"

#include <QCoreApplication>
#include <QLabel>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTime>
#include <QVBoxLayout>

namespace corvane::desktop {

// False when the application refuses to end, as with unsaved work that hasn't been reported before.
bool PreviewWindow::Unload() {
    CommonDialog& dialogs = m_application->Dialogs();
    const bool discards = m_state == State::Discarding;
    const std::size_t answers = discards ? m_application->MainForm()->Forms().size() + 2 : 1;
    for (std::size_t i = 0; i < answers; ++i)
        dialogs.AddAnswer(discards ? "Discard" : "Stay");
    m_application->Failures().Guard([this] { m_application->MainForm()->Unload(); });
    if (m_application->HasEnded())
        return true;
    while (dialogs.TakeAnswer().value_or("").size() > 0) {
    }
    return false;
}

void PreviewWindow::ShowNow() {
    m_loading = true;
    m_calls->SetHeld(true);
    if (m_options.recorder)
        m_options.recorder->SetHeld(true);
    m_placeWidget->setUpdatesEnabled(false); // the old picture stays until the new one is there
    const auto done = qScopeGuard([this] {
        m_placeWidget->setUpdatesEnabled(true);
        m_calls->SetHeld(false);
        if (m_options.recorder)
            m_options.recorder->SetHeld(false);
        m_loading = false;
        ReportState();
    });
    QStringList failures;
    if (m_application) {
        m_application->Failures().SetTaker([](const ShownFailure&) { return true; }); // they are in the log
        m_application->Personal().UserSession().Save();
        if (!Unload()) {
            m_state = State::Unsaved;
            m_application->Failures().SetTaker({});
            m_view.reset();
            return;
        }
        m_calls->Leave();
        m_application.reset();
        if (m_options.recorder)
            m_options.recorder->Comment("Here the definitions were changed.");
    }
    m_state = State::Settled;
    AfterLoad(Load());
}

bool PreviewWindow::Load() {
    m_failures.clear();
    m_record = New<inspect::Record>();
    const auto take = [this](const ShownFailure& shown) {
        const FailureTexts texts = TextsOf(shown, Text(m_options.folder + "/Services"));
        m_failures << QString("%1 (%2)").arg(texts.headline, texts.where);
        return true;
    };
    try {
        ApplicationOptions options;
        options.folder = m_options.folder;
        options.withDialogs = m_options.withDialogs;
        options.personal = false;
        options.sessionFile = SessionFile().toStdString();
        options.recorder = m_options.recorder;
        options.objects = [this](Ref<IObjectFactory> real, Ref<PluginFactory> plugins) {
            m_factory = New<PreviewFactory>(m_record, m_standIns, std::move(real), std::move(plugins),
                                            m_options.standIns, m_loaded);
            return Ref<IObjectFactory>(m_factory);
        };
        options.isStub = [this](const std::string& progID) { return m_factory->IsStandIn(progID); };
        m_application = std::make_unique<Application>(options);
        m_application->Failures().SetTaker(take);
        m_unloaded = m_application->MainForm()->Changed.Subscribe([this](Form::Change change) {
            if (change == Form::Change::Unloaded && !m_loading)
                QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
        });
        // Whose end was broken off keeps its form loaded.
        connect(&m_application->Window(), &MainWindow::Ended, this, [this] {
            if (!m_loading && m_application->MainForm()->IsLoaded())
                QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
        });
        m_calls->Follow(m_application->Bar(), m_record);
        MainWindow& window = m_application->Window();
        window.setParent(m_placeWidget, Qt::Widget);
        window.statusBar()->setSizeGripEnabled(false); // this window has one
        m_layout->addWidget(&window);
        m_nothing->hide();
        return m_application->Start();
    } catch (...) {
        m_failures << Text(CurrentFailure().Description);
        m_calls->Leave();
        m_application.reset();
        m_nothing->show();
        return false;
    }
}

void PreviewWindow::AfterLoad(bool started) {
    ++m_shown;
    m_showsWhole = !m_leavesOut;
    m_time = QTime::currentTime().toString("HH:mm:ss");
    const std::optional<ViewState> view = std::exchange(m_view, std::nullopt);
    if (!m_application)
        return;
    for (const auto& [path, why] : m_factory->Unusable())
        m_failures << Text(why);
    setWindowTitle(tr("%1 — Preview").arg(m_application->Window().windowTitle()));
    if (started)
        FillExplorer(!view || view->explorerIsShown);
    if (view && started)
        view->Restore(*m_application,
                      [this](const ViewState::OpenWindow& window) { return IsOfStandIns(window.name); });
    m_application->Window().Flush();
    m_layout->activate();
    // What the models have told is drawn with the first picture.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    m_application->Failures().SetTaker({});
    if (!view)
        return;
    if (std::exchange(m_takesOver, false))
        ReportClosedWindows(*view);
    QTimer::singleShot(0, &m_application->Window(),
                       [this, viewState = *view] { viewState.RestoreMenu(*m_application); });
    for (const ViewState::OpenWindow& open : view->windows)
        if (open.modal && IsOfStandIns(open.name)) // each in the event loop of the one below it
            QTimer::singleShot(0, &m_application->Window(),
                               [this, open] { ViewState::OpenAgain(*m_application, open); });
}

// Filling the explorer is the start service's part, which a stand-in doesn't play.
void PreviewWindow::FillExplorer(bool shows) {
    const ExplorerPanel& panel = m_application->Window().Explorer();
    if (!panel.Page(0))
        return;
    for (int i = 0; const ExplorerPage* page = panel.Page(i); ++i)
        if (page->Tree()->Tree()->GetNodes()->Count() > 0)
            return;
    m_application->Failures().Guard([&] {
        const auto explorer = Singleton::Framework()->NavigationManager()->ExplorerManager();
        explorer->Populate();
        if (!shows)
            explorer->Hide();
    });
    if (m_options.recorder && m_shown == 1 && !m_options.recorder->GoesOn())
        m_options.recorder->ByHost("populate");
}

} // namespace corvane::desktop
