#include "desktop/application/MainWindow.h"

#include "desktop/documents/Documents.h"
#include "desktop/documents/WindowSwitcher.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/explorer/ExplorerTree.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/style/Contrast.h"
#include "desktop/style/ContrastStyle.h"
#include "desktop/style/ViewDock.h"
#include "desktop/translation/ShownText.h"
#include "desktop/welcome/StartPage.h"
#include "desktop/windows/ArrangeWindows.h"
#include "desktop/windows/Twips.h"
#include "desktop/windows/WindowForm.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr const char* explorerBand = "Explorer";

QStringList FilesOf(const QDropEvent& event) {
    QStringList files;
    for (const QUrl& url : event.mimeData()->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

// Says where one is while no window is open, once the application has shown itself: what it opens at its start needs no
// such text before.
class WindowArea final : public QMdiArea {
public:
    WindowArea() { setBackground(palette().brush(QPalette::Window)); }

protected:
    void changeEvent(QEvent* event) override {
        QMdiArea::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            setBackground(palette().brush(QPalette::Window));
    }
    void paintEvent(QPaintEvent* event) override {
        QMdiArea::paintEvent(event);
        if (!std::exchange(m_hasShown, true)) {
            QTimer::singleShot(0, viewport(), qOverload<>(&QWidget::update));
            return;
        }
        const auto windows = subWindowList();
        if (std::any_of(windows.begin(), windows.end(), [](const auto* window) { return !window->isHidden(); }))
            return;
        QPainter painter(viewport());
        const QRect rect = viewport()->rect().adjusted(24, 24, -24, -24);
        painter.setPen(Paler(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.55F));
        // The font is drawn larger: one of another size would have to be looked up and loaded first.
        const QTransform doubled = QTransform::fromScale(2, 2);
        QRect used;
        painter.setTransform(doubled);
        painter.drawText(doubled.inverted().mapRect(rect.adjusted(0, 0, 0, -rect.height() / 5)),
                         Qt::AlignCenter | Qt::TextWordWrap, window()->windowTitle(), &used);
        painter.resetTransform();
        painter.drawText(
            QRect(rect.left(), doubled.mapRect(used).bottom() + 12, rect.width(), 80),
            Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
            MainWindow::tr("To begin, select an item in the explorer or choose a command from the menus."));
    }

private:
    bool m_hasShown = false;
};

// Qt's own reports the windows alone, and neither their tabs nor the start page.
QAccessibleInterface* ReadArea(const QString&, QObject* object) {
    auto* area = dynamic_cast<WindowArea*>(object);
    return area ? new QAccessibleWidget(area, QAccessible::LayeredPane) : nullptr;
}

class ExplorerDockWidget final : public QDockWidget {
public:
    ExplorerDockWidget(std::function<void()> close, QWidget* parent) : QDockWidget(parent), m_close(std::move(close)) {}

    // The content takes its place when it is to be seen: until then no title with its buttons has to be laid out.
    void SetContent(QWidget* content) { m_content = content; }
    // Whether commands go to an item in it: its title has a line in the accent's colour then.
    void SetActive(bool active) {
        if (std::exchange(m_isActive, active) != active)
            update();
    }
    void setVisible(bool visible) override {
        if (visible && !widget())
            setWidget(m_content);
        QDockWidget::setVisible(visible);
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore(); // the model hides the band, and the dock follows
        m_close();
    }

    void paintEvent(QPaintEvent* event) override {
        QDockWidget::paintEvent(event);
        if (m_isActive)
            QPainter(this).fillRect(0, 0, width(), 2, palette().color(QPalette::Active, QPalette::Highlight));
    }

private:
    std::function<void()> m_close;
    QWidget* m_content = nullptr;
    bool m_isActive = false;
};

} // namespace

MainWindow::MainWindow(Ref<MdiForm> mainForm, Ref<ActiveBar> activeBar, Ref<PanelForm> panelForm,
                       FailurePresenter& failures, std::shared_ptr<items::Items> items)
    : m_mainForm(std::move(mainForm)), m_activeBar(std::move(activeBar)), m_failures(failures), m_area(new WindowArea),
      m_documents(new Documents(*m_area)), m_bars(nullptr) {
    QAccessible::installFactory(&ReadArea); // once, however often
    setCentralWidget(m_area);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setAccessibleName(tr("Windows"));
    m_area->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    m_area->installEventFilter(this);
    connect(m_area, &QMdiArea::subWindowActivated, m_area->viewport(), qOverload<>(&QWidget::update));
    connect(m_documents, &Documents::OwnWindowMade, this, [this](QWidget* window) {
        AddWindowKeys(*window);
        window->setAcceptDrops(true);
        window->installEventFilter(this);
    });
    connect(m_documents, &Documents::SaveWanted, this, [this](const QWidget* window) {
        for (const auto& frm : Children())
            if (const auto form = frm.TryAs<WindowForm>(); form && form->Frame() == window)
                form->SaveByUser();
    });
    m_bars = new BarRenderer(m_activeBar, this, [this](const std::function<void()>& act) { m_failures.Guard(act); });
    m_bars->Menus().SetWindows([this] { return OpenWindows(); });
    SetUpDock(panelForm, std::move(items));
    setAcceptDrops(true);
    setWindowTitle(QString::fromStdString(m_mainForm->Caption()));
    m_mainChanged = m_mainForm->Changed.Subscribe([this](Form::Change change) { m_frmMain_Changed(change); });
    m_barChanged = m_activeBar->Changed.Subscribe([this](const BarChange& change) {
        const bool look = change.eWhat == BarChange::What::BandLook || change.eWhat == BarChange::What::BandAdded;
        if (look && EqualText(change.pBand->Name(), explorerBand))
            QMetaObject::invokeMethod(this, &MainWindow::ShowDock, Qt::QueuedConnection);
    });
    m_mainQueryUnload = m_mainForm->OnQueryUnload.Subscribe([this](bool& refused) { m_frmMain_QueryUnload(refused); });
    m_mainArranged = m_mainForm->Arranged.Subscribe([this](Arrangement how) {
        if (m_documents->IsTabbed())
            m_documents->Arrange(how);
        else
            ArrangeWindows(*m_area, how);
    });
    AddWindowKeys(*this);
    resize(1100, 720);
    ReportSizes();
}

MainWindow::~MainWindow() {
    disconnect(qApp, nullptr, m_dock, nullptr);
    delete std::exchange(m_documents, nullptr); // its windows go one by one, each time another one comes up
    delete m_bars;                              // before the widgets whose actions it follows
}

void MainWindow::SetUpDock(const Ref<PanelForm>& panelForm, std::shared_ptr<items::Items> items) {
    const auto guard = [this](const std::function<void()>& act) { m_failures.Guard(act); };
    auto* dock = new ExplorerDockWidget(
        [this] {
            m_failures.Guard([this] {
                if (const auto band = m_activeBar->Bands()->Find(explorerBand))
                    m_activeBar->Close(band);
            });
        },
        this);
    m_dock = dock;
    connect(qApp, &QApplication::focusChanged, dock, [this, dock](QWidget*, QWidget* to) {
        const bool isInDock = to && dock->isAncestorOf(to);
        const QWidget* front = m_documents->Active();
        if (!isInDock && !(to && front && front->isAncestorOf(to)))
            return; // a menu or a dialog changes nothing
        dock->SetActive(isInDock);
        m_documents->SetMarked(!isInDock);
    });
    m_dock->setObjectName(explorerBand);
    m_explorer = new ExplorerPanel(panelForm, guard, m_dock, std::move(items));
    connect(m_explorer, &ExplorerPanel::PopupPlace, this,
            [this](const QPoint& place) { m_bars->SetPopupPlace(place); });
    dock->SetContent(m_explorer);
    addDockWidget(Qt::LeftDockWidgetArea, m_dock);
    m_dock->hide();
}

void MainWindow::SetFiles(std::function<bool()> takes, std::function<void(const QStringList&)> open) {
    m_takesFiles = std::move(takes);
    m_openFiles = std::move(open);
    m_explorer->SetTakesFiles([this] { return m_takesFiles(); });
    connect(m_explorer, &ExplorerPanel::FilesDropped, this, [this](const QStringList& files) { m_openFiles(files); });
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    event->setAccepted(!FilesOf(*event).empty() && m_takesFiles && m_takesFiles());
}

// Once the drag is over: what opens a file may ask.
void MainWindow::dropEvent(QDropEvent* event) {
    const QStringList files = FilesOf(*event);
    event->setAccepted(!files.empty() && m_openFiles);
    if (event->isAccepted())
        QMetaObject::invokeMethod(
            this, [this, files] { m_openFiles(files); }, Qt::QueuedConnection);
}

void MainWindow::ShowDock() {
    const auto band = m_activeBar->Bands()->Find(explorerBand);
    if (!band)
        return;
    m_dock->setWindowTitle(ShownCaption(*band));
    m_dock->setVisible(band->Visible() && band->WasVisibleSet());
}

void MainWindow::Flush() {
    m_bars->Flush();
    ShowDock();
}

void MainWindow::m_frmMain_Changed(Form::Change change) {
    switch (change) {
    case Form::Change::Caption:
        setWindowTitle(QString::fromStdString(m_mainForm->Caption()));
        m_area->viewport()->update();
        break;
    case Form::Change::Unloaded:
        // Whoever unloaded the form may still be inside one of this window's own events.
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
        break;
    default:
        break;
    }
}

std::vector<Ref<Form>> MainWindow::Children() const {
    std::vector<Ref<Form>> forms = m_mainForm->Forms();
    std::erase_if(forms, [](const auto& frm) { return !frm->MDIChild() || !frm->Visible(); });
    const auto frames = m_documents->Frames();
    const auto place = [&](const Ref<Form>& frm) {
        const auto form = frm.TryAs<WindowForm>();
        const auto it = std::find(frames.begin(), frames.end(), form ? form->Frame() : nullptr);
        return std::pair(it - frames.begin(), frm->HWnd());
    };
    std::sort(forms.begin(), forms.end(), [&](const auto& a, const auto& b) { return place(a) < place(b); });
    return forms;
}

std::vector<OpenWindowEntry> MainWindow::OpenWindows() const {
    std::vector<OpenWindowEntry> entries;
    const Ref<Form> activeForm = m_mainForm->ActiveForm();
    for (const auto& frm : Children())
        entries.push_back({TitleOf(*frm), frm == activeForm, [frm] {
                               if (!frm->IsLoaded())
                                   return; // it has gone while the menu was open
                               if (frm->WindowState() == FormState::Minimized)
                                   frm->SetWindowState(FormState::Normal);
                               frm->Activate();
                           }});
    return entries;
}

void MainWindow::ActivateNeighbour(int step) {
    const auto forms = Children();
    const auto it = std::find(forms.begin(), forms.end(), m_mainForm->ActiveForm());
    if (it == forms.end())
        return;
    const auto formCount = static_cast<int>(forms.size());
    const auto next = (static_cast<int>(it - forms.begin()) + step + formCount) % formCount;
    m_failures.Guard([&] { forms[static_cast<std::size_t>(next)]->Activate(); });
}

// The keys that a page would otherwise take for its own tabs.
void MainWindow::AddWindowKeys(QWidget& window) {
    for (const WindowKey& key : FixedWindowKeys())
        if (key.comesFirst)
            connect(new QShortcut(key.keys, &window), &QShortcut::activated, this, [this, use = key.use] { Use(use); });
}

// Through the windows in the order of their use.
void MainWindow::SwitchWindow(int step) {
    if (!m_documents->IsTabbed())
        return ActivateNeighbour(step);
    if (m_switcher)
        return m_switcher->Step(step);
    const std::vector<Ref<Form>> children = Children();
    std::vector<WindowSwitcher::Entry> entries;
    const auto forms = m_mainForm->Forms();
    for (auto it = forms.rbegin(); it != forms.rend(); ++it) {
        const auto form = it->TryAs<WindowForm>();
        if (form && form->Frame() && std::find(children.begin(), children.end(), *it) != children.end())
            entries.push_back({TabTitle(*form->Frame()), form->Frame()->windowIcon(), [this, form] {
                                   m_failures.Guard([&] {
                                       if (form->IsLoaded())
                                           form->Activate();
                                   });
                               }});
    }
    QWidget* const over = m_documents->Active() ? m_documents->Active()->window() : this;
    if (!entries.empty())
        m_switcher = new WindowSwitcher(std::move(entries), step, *over,
                                        QApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier));
}

void MainWindow::Use(WindowKey::Use use) {
    switch (use) {
    case WindowKey::Use::LastUsedWindow:
        SwitchWindow(1);
        break;
    case WindowKey::Use::FirstUsedWindow:
        SwitchWindow(-1);
        break;
    case WindowKey::Use::NextWindow:
        ActivateNeighbour(1);
        break;
    case WindowKey::Use::PreviousWindow:
        ActivateNeighbour(-1);
        break;
    case WindowKey::Use::CloseWindow:
        CloseActiveWindow();
        break;
    case WindowKey::Use::SaveWindow:
        SaveActiveWindow();
        break;
    case WindowKey::Use::FirstMenu:
        for (QAction* title : menuBar()->actions())
            if (title->isVisible() && title->isEnabled()) {
                menuBar()->setActiveAction(title);
                break;
            }
        break;
    case WindowKey::Use::OtherPart:
        GoToOtherPart(1);
        break;
    case WindowKey::Use::PreviousPart:
        GoToOtherPart(-1);
        break;
    case WindowKey::Use::Title:
    case WindowKey::Use::Other:
        break;
    }
}

Ref<WindowForm> MainWindow::ActiveForm() const {
    const Ref<Form> form = m_mainForm->ActiveForm();
    return form && form->Visible() ? form.TryAs<WindowForm>() : nullptr;
}

void MainWindow::SaveActiveWindow() {
    if (const auto form = ActiveForm())
        form->SaveByUser();
}

void MainWindow::CloseActiveWindow() {
    if (QWidget* active = m_documents->Active())
        active->close();
}

// The keyboard goes where it was in the active window or, without one, to the start page.
void MainWindow::GoToWindow() {
    QWidget* active = m_documents->Active();
    if (!active) {
        if (auto* page = m_area->viewport()->findChild<StartPage*>(); page && page->isVisible())
            page->Focus();
        return;
    }
    if (active->isWindow())
        active->activateWindow();
    QWidget* inside = active->isWindow() ? active->focusWidget() : nullptr;
    if (const auto* child = qobject_cast<QMdiSubWindow*>(active); child && child->widget())
        inside = child->widget()->focusWidget();
    (inside ? inside : active)->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::GoToOtherPart(int step) {
    const QWidget* focus = QApplication::focusWidget();
    std::vector<std::pair<const QWidget*, std::function<void()>>> parts;
    parts.emplace_back(nullptr, [this] { GoToWindow(); });
    if (ExplorerPage* page = m_explorer->CurrentPage(); page && m_dock->isVisible())
        parts.emplace_back(m_dock, [page] {
            page->Tree()->setFocus(Qt::ShortcutFocusReason);
            page->Tree()->ChooseSelected();
        });
    for (ViewDock* view : ViewDock::AllOf(*this))
        if (view->IsOpen())
            parts.emplace_back(view, [view] { view->Open(); });
    std::size_t now = 0;
    for (std::size_t i = 1; i < parts.size(); ++i)
        if (focus && parts[i].first->isAncestorOf(focus))
            now = i;
    parts[(now + parts.size() + static_cast<std::size_t>(step)) % parts.size()].second();
}

void MainWindow::childEvent(QChildEvent* event) {
    QMainWindow::childEvent(event);
    if (event->type() == QEvent::ChildPolished)
        if (auto* view = qobject_cast<ViewDock*>(event->child()))
            connect(view, &ViewDock::Left, this, &MainWindow::GoToWindow, Qt::UniqueConnection);
}

// What neither a command nor a widget has taken.
void MainWindow::keyPressEvent(QKeyEvent* event) {
    for (const WindowKey& key : FixedWindowKeys())
        if (!key.comesFirst && key.use != WindowKey::Use::Other && key.keys[0] == event->keyCombination()) {
            Use(key.use);
            return;
        }
    QMainWindow::keyPressEvent(event);
}

void MainWindow::SetTabbedWindows(bool tabbed) {
    if (tabbed == m_documents->IsTabbed())
        return;
    struct Free {
        Ref<WindowForm> form;
        QRect place;
        FormState state;
    };
    std::vector<Free> all; // as they were when they were free last; the frames' own places are followed from then on
    for (const auto& frm : Children())
        if (const auto form = frm.TryAs<WindowForm>(); form && !tabbed)
            all.push_back({form, form->Placement().NormalPlace(), form->WindowState()});
    const Ref<Form> active = m_mainForm->ActiveForm(); // windows that get another frame come to the front meanwhile
    m_documents->SetTabbed(tabbed);
    for (const auto& [form, place, state] : all)
        form->PlaceAgain(place, state == FormState::Maximized ? FormState::Normal : state);
    for (const auto& [form, place, state] : all)
        if (active && form.Get() == active.Get() && form->Frame()) {
            m_area->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(form->Frame()));
            if (state == FormState::Maximized) // last: a child that comes to the front would take it over
                form->SetWindowState(state);
        }
}

void MainWindow::ResetLayout() {
    m_documents->ResetLayout();
    m_bars->ResetToolbars();
    m_dock->setFloating(false);
    addDockWidget(Qt::LeftDockWidgetArea, m_dock);
    ViewDock::ResetPlaces(*this);
}

QMenu* MainWindow::createPopupMenu() {
    return m_bars->NewCustomizeMenu();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    bool ended = !m_mainForm->IsLoaded();
    if (!ended && !m_hasEnded)
        m_failures.Guard([&] { ended = m_mainForm->Unload(); });
    m_hasEnded = m_hasEnded || ended; // by a failure at the end, too, once that has been seen
    event->setAccepted(m_hasEnded);
    if (m_hasEnded)
        Q_EMIT Ended();
}

void MainWindow::EndNow() {
    m_hasEnded = true;
    close();
}

// What is open goes first, the window that was active last at first, and each may refuse.
void MainWindow::m_frmMain_QueryUnload(bool& refused) {
    const auto forms = m_mainForm->Forms();
    for (auto it = forms.rbegin(); it != forms.rend() && !refused; ++it)
        m_failures.Guard([&] { refused = !(*it)->Unload(); });
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    ReportSizes();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_area && event->type() == QEvent::Resize && isVisible())
        ReportSizes();
    if (watched != m_area && event->type() == QEvent::DragEnter) {
        dragEnterEvent(static_cast<QDragEnterEvent*>(event));
        return event->isAccepted();
    }
    if (watched != m_area && event->type() == QEvent::DragMove)
        return MainWindow::event(event);
    if (watched != m_area && event->type() == QEvent::Drop) {
        dropEvent(static_cast<QDropEvent*>(event));
        return event->isAccepted();
    }
    return QMainWindow::eventFilter(watched, event);
}

// Whoever comes back to the main window comes back to the child in front.
bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::DragMove) {
        event->setAccepted(!FilesOf(*static_cast<QDragMoveEvent*>(event)).empty());
        return true;
    }
    const bool done = QMainWindow::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        QMetaObject::invokeMethod(this, &ContrastStyle::Follow, Qt::QueuedConnection);
    const QWidget* front =
        m_documents ? m_documents->Active() : nullptr; // where it is a window of its own it stays the active one
    if (event->type() == QEvent::WindowActivate && !QApplication::activeModalWidget() && !(front && front->isWindow()))
        m_failures.Guard([this] {
            const Ref<Form> activeForm = m_mainForm->ActiveForm();
            if (activeForm && activeForm->Visible())
                activeForm->Activate();
        });
    return done;
}

// In twips, as the windows are placed in them; until the area is laid out it is taken to be the whole window.
void MainWindow::ReportSizes() {
    m_mainForm->Move(0, 0, TwipsX(width()), TwipsY(height()));
    if (isVisible())
        m_mainForm->SetFrame(TwipsX(width() - m_area->width()), TwipsY(height() - m_area->height()));
}

} // namespace corvane::desktop

#include "moc_MainWindow.cpp"
