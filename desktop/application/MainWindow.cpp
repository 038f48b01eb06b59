#include "desktop/application/MainWindow.h"

#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/explorer/ExplorerTree.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/style/Contrast.h"
#include "desktop/style/ContrastStyle.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/ArrangeWindows.h"
#include "desktop/windows/Twips.h"
#include "desktop/windows/WindowForm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr const char* sExplorerBand = "Explorer";

// Says where one is while no window is open, once the application has shown itself: what it opens at its start needs no
// such text before.
class WindowArea final : public QMdiArea {
public:
    WindowArea() { setBackground(palette().brush(QPalette::Window)); }

protected:
    void changeEvent(QEvent* pEvent) override {
        QMdiArea::changeEvent(pEvent);
        if (pEvent->type() == QEvent::PaletteChange)
            setBackground(palette().brush(QPalette::Window));
    }
    void paintEvent(QPaintEvent* pEvent) override {
        QMdiArea::paintEvent(pEvent);
        if (!std::exchange(m_bHasShown, true)) {
            QTimer::singleShot(0, viewport(), qOverload<>(&QWidget::update));
            return;
        }
        const auto aWindows = subWindowList();
        if (std::any_of(aWindows.begin(), aWindows.end(), [](const auto* pWindow) { return !pWindow->isHidden(); }))
            return;
        QPainter oPainter(viewport());
        const QRect oRect = viewport()->rect().adjusted(24, 24, -24, -24);
        oPainter.setPen(Paler(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.55F));
        // The font is drawn larger: one of another size would have to be looked up and loaded first.
        const QTransform oDouble = QTransform::fromScale(2, 2);
        QRect oUsed;
        oPainter.setTransform(oDouble);
        oPainter.drawText(oDouble.inverted().mapRect(oRect.adjusted(0, 0, 0, -oRect.height() / 5)),
                          Qt::AlignCenter | Qt::TextWordWrap, window()->windowTitle(), &oUsed);
        oPainter.resetTransform();
        oPainter.drawText(
            QRect(oRect.left(), oDouble.mapRect(oUsed).bottom() + 12, oRect.width(), 80),
            Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
            MainWindow::tr("To begin, select an item in the explorer or choose a command from the menus."));
    }

private:
    bool m_bHasShown = false;
};

class ExplorerDockWidget final : public QDockWidget {
public:
    ExplorerDockWidget(std::function<void()> fnClose, QWidget* pParent)
        : QDockWidget(pParent), m_fnClose(std::move(fnClose)) {}

    // The content takes its place when it is to be seen: until then no title with its buttons has to be laid out.
    void SetContent(QWidget* pContent) { m_pContent = pContent; }
    void setVisible(bool bVisible) override {
        if (bVisible && !widget())
            setWidget(m_pContent);
        QDockWidget::setVisible(bVisible);
    }

protected:
    void closeEvent(QCloseEvent* pEvent) override {
        pEvent->ignore(); // the model hides the band, and the dock follows
        m_fnClose();
    }

private:
    std::function<void()> m_fnClose;
    QWidget* m_pContent = nullptr;
};

} // namespace

MainWindow::MainWindow(Ref<MdiForm> frmMain, Ref<ActiveBar> oActiveBar, Ref<PanelForm> frmPanel,
                       FailurePresenter& oFailures)
    : m_frmMain(std::move(frmMain)), m_oActiveBar(std::move(oActiveBar)), m_oFailures(oFailures),
      m_pArea(new WindowArea), m_pBars(nullptr) {
    setCentralWidget(m_pArea);
    m_pArea->setFrameShape(QFrame::NoFrame);
    m_pArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_pArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_pArea->setAccessibleName(tr("Windows"));
    m_pArea->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    m_pArea->installEventFilter(this);
    connect(m_pArea, &QMdiArea::subWindowActivated, m_pArea->viewport(), qOverload<>(&QWidget::update));
    connect(m_pArea, &QMdiArea::subWindowActivated, this, &MainWindow::FillTab);
    m_pBars =
        new BarRenderer(m_oActiveBar, this, [this](const std::function<void()>& fnAct) { m_oFailures.Guard(fnAct); });
    m_pBars->Menus().SetWindows([this] { return OpenWindows(); });
    SetUpDock(frmPanel);
    setWindowTitle(QString::fromStdString(m_frmMain->Caption()));
    m_oMainChanged = m_frmMain->Changed.Subscribe([this](Form::Change eChange) { m_frmMain_Changed(eChange); });
    m_oBarChanged = m_oActiveBar->Changed.Subscribe([this](const BarChange& oChange) {
        const bool bLook = oChange.eWhat == BarChange::What::BandLook || oChange.eWhat == BarChange::What::BandAdded;
        if (bLook && EqualText(oChange.pBand->Name(), sExplorerBand))
            QMetaObject::invokeMethod(this, &MainWindow::ShowDock, Qt::QueuedConnection);
    });
    m_oMainQueryUnload =
        m_frmMain->OnQueryUnload.Subscribe([this](bool& bRefused) { m_frmMain_QueryUnload(bRefused); });
    m_oMainArranged = m_frmMain->Arranged.Subscribe([this](Arrangement eHow) { ArrangeWindows(*m_pArea, eHow); });
    SetUpWindowKeys();
    resize(1100, 720);
    TellSizes();
}

MainWindow::~MainWindow() {
    disconnect(m_pArea, nullptr, this, nullptr); // its windows go one by one, each time another one comes up
    delete m_pBars;                              // before the widgets whose actions it follows
}

void MainWindow::SetUpDock(const Ref<PanelForm>& frmPanel) {
    const auto fnGuard = [this](const std::function<void()>& fnAct) { m_oFailures.Guard(fnAct); };
    auto* pDock = new ExplorerDockWidget(
        [this] {
            m_oFailures.Guard([this] {
                if (const auto oBand = m_oActiveBar->Bands()->Find(sExplorerBand))
                    m_oActiveBar->Close(oBand);
            });
        },
        this);
    m_pDock = pDock;
    m_pDock->setObjectName(sExplorerBand);
    m_pDock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_pExplorer = new ExplorerPanel(frmPanel, fnGuard, m_pDock);
    connect(m_pExplorer, &ExplorerPanel::PopupPlace, this,
            [this](const QPoint& oPlace) { m_pBars->SetPopupPlace(oPlace); });
    pDock->SetContent(m_pExplorer);
    addDockWidget(Qt::LeftDockWidgetArea, m_pDock);
    m_pDock->hide();
}

void MainWindow::ShowDock() {
    const auto oBand = m_oActiveBar->Bands()->Find(sExplorerBand);
    if (!oBand)
        return;
    m_pDock->setWindowTitle(ShownCaption(*oBand));
    m_pDock->setVisible(oBand->Visible() && oBand->WasVisibleSet());
}

void MainWindow::Flush() {
    m_pBars->Flush();
    ShowDock();
}

void MainWindow::m_frmMain_Changed(Form::Change eChange) {
    switch (eChange) {
    case Form::Change::Caption:
        setWindowTitle(QString::fromStdString(m_frmMain->Caption()));
        m_pArea->viewport()->update();
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
    std::vector<Ref<Form>> aForms = m_frmMain->Forms();
    std::erase_if(aForms, [](const auto& frm) { return !frm->MDIChild() || !frm->Visible(); });
    const auto aFrames = m_pArea->subWindowList();
    const auto fnPlace = [&](const Ref<Form>& frm) {
        const auto oForm = frm.TryAs<WindowForm>();
        return std::pair(oForm ? aFrames.indexOf(qobject_cast<QMdiSubWindow*>(oForm->Frame())) : aFrames.size(),
                         frm->HWnd());
    };
    std::sort(aForms.begin(), aForms.end(), [&](const auto& a, const auto& b) { return fnPlace(a) < fnPlace(b); });
    return aForms;
}

std::vector<OpenWindowEntry> MainWindow::OpenWindows() const {
    std::vector<OpenWindowEntry> aEntries;
    const Ref<Form> frmActive = m_frmMain->ActiveForm();
    for (const auto& frm : Children())
        aEntries.push_back({TitleOf(*frm), frm == frmActive, [frm] {
                                if (!frm->IsLoaded())
                                    return; // it has gone while the menu was open
                                if (frm->WindowState() == FormState::Minimized)
                                    frm->SetWindowState(FormState::Normal);
                                frm->Activate();
                            }});
    return aEntries;
}

void MainWindow::ActivateNeighbour(int nStep) {
    const auto aForms = Children();
    const auto it = std::find(aForms.begin(), aForms.end(), m_frmMain->ActiveForm());
    if (it == aForms.end())
        return;
    const auto nForms = static_cast<int>(aForms.size());
    const auto iNext = (static_cast<int>(it - aForms.begin()) + nStep + nForms) % nForms;
    m_oFailures.Guard([&] { aForms[static_cast<std::size_t>(iNext)]->Activate(); });
}

// The keys that a page would otherwise take for its own tabs.
void MainWindow::SetUpWindowKeys() {
    for (const WindowKey& oKey : FixedWindowKeys())
        if (oKey.bComesFirst)
            connect(new QShortcut(oKey.oKeys, this), &QShortcut::activated, this,
                    [this, eUse = oKey.eUse] { Use(eUse); });
}

void MainWindow::Use(WindowKey::Use eUse) {
    switch (eUse) {
    case WindowKey::Use::NextWindow:
        ActivateNeighbour(1);
        break;
    case WindowKey::Use::PreviousWindow:
        ActivateNeighbour(-1);
        break;
    case WindowKey::Use::CloseWindow:
        if (QMdiSubWindow* pActive = m_pArea->activeSubWindow())
            pActive->close();
        break;
    case WindowKey::Use::FirstMenu:
        for (QAction* pTitle : menuBar()->actions())
            if (pTitle->isVisible() && pTitle->isEnabled()) {
                menuBar()->setActiveAction(pTitle);
                break;
            }
        break;
    case WindowKey::Use::OtherPart:
        GoToOtherPart();
        break;
    case WindowKey::Use::Title:
    case WindowKey::Use::Other:
        break;
    }
}

void MainWindow::GoToOtherPart() {
    const QWidget* pFocus = QApplication::focusWidget();
    QMdiSubWindow* pActive = m_pArea->activeSubWindow();
    if (pFocus && m_pDock->isAncestorOf(pFocus) && pActive) {
        QWidget* pInside = pActive->widget() ? pActive->widget()->focusWidget() : nullptr;
        (pInside ? pInside : pActive)->setFocus(Qt::ShortcutFocusReason);
    } else if (ExplorerPage* pPage = m_pExplorer->CurrentPage(); pPage && m_pDock->isVisible()) {
        pPage->Tree()->setFocus(Qt::ShortcutFocusReason);
        pPage->Tree()->ChooseSelected();
    }
}

// What neither a command nor a widget has taken.
void MainWindow::keyPressEvent(QKeyEvent* pEvent) {
    for (const WindowKey& oKey : FixedWindowKeys())
        if (!oKey.bComesFirst && oKey.eUse != WindowKey::Use::Other && oKey.oKeys[0] == pEvent->keyCombination()) {
            Use(oKey.eUse);
            return;
        }
    QMainWindow::keyPressEvent(pEvent);
}

bool MainWindow::HasTabbedWindows() const {
    return m_pArea->viewMode() == QMdiArea::TabbedView;
}

void MainWindow::SetTabbedWindows(bool bTabbed) {
    if (bTabbed == HasTabbedWindows())
        return;
    std::vector<std::pair<Ref<WindowForm>, QRect>> aPlaces; // as they were when they were free last
    for (const auto& frm : Children())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && !bTabbed)
            aPlaces.emplace_back(oForm, oForm->NormalPlace());
    QMdiSubWindow* const pActive = m_pArea->activeSubWindow();
    m_pArea->setViewMode(bTabbed ? QMdiArea::TabbedView : QMdiArea::SubWindowView);
    m_pArea->setTabsClosable(true);
    m_pArea->setTabsMovable(true);
    m_pArea->setDocumentMode(true);
    for (const auto& [oForm, oPlace] : aPlaces)
        oForm->PlaceAgain(oPlace, FormState::Normal);
    if (!bTabbed && pActive)
        m_pArea->setActiveSubWindow(pActive);
}

// The area leaves the window free that comes up when the one in front closes.
void MainWindow::FillTab(QMdiSubWindow* pWindow) {
    if (pWindow && HasTabbedWindows() && !pWindow->isMaximized())
        pWindow->showMaximized();
}

QMenu* MainWindow::createPopupMenu() {
    return m_pBars->NewCustomizeMenu();
}

void MainWindow::closeEvent(QCloseEvent* pEvent) {
    bool bRefused = false;
    if (m_frmMain->IsLoaded() && !m_bHasEnded)
        m_oFailures.Guard([&] { bRefused = !m_frmMain->Unload(); });
    // A service that fails at its end doesn't keep the application open, and the others aren't told twice.
    m_bHasEnded = !bRefused;
    pEvent->setAccepted(!bRefused);
}

// What is open goes first, the window that was active last at first, and each may refuse.
void MainWindow::m_frmMain_QueryUnload(bool& bRefused) {
    const auto aForms = m_frmMain->Forms();
    for (auto it = aForms.rbegin(); it != aForms.rend() && !bRefused; ++it)
        m_oFailures.Guard([&] { bRefused = !(*it)->Unload(); });
}

void MainWindow::resizeEvent(QResizeEvent* pEvent) {
    QMainWindow::resizeEvent(pEvent);
    TellSizes();
}

bool MainWindow::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pWatched == m_pArea && pEvent->type() == QEvent::Resize && isVisible())
        TellSizes();
    return QMainWindow::eventFilter(pWatched, pEvent);
}

// Whoever comes back to the main window comes back to the child in front.
bool MainWindow::event(QEvent* pEvent) {
    const bool bDone = QMainWindow::event(pEvent);
    if (pEvent->type() == QEvent::ApplicationPaletteChange)
        QMetaObject::invokeMethod(this, &ContrastStyle::Follow, Qt::QueuedConnection);
    if (pEvent->type() == QEvent::WindowActivate && !QApplication::activeModalWidget())
        m_oFailures.Guard([this] {
            const Ref<Form> frmActive = m_frmMain->ActiveForm();
            if (frmActive && frmActive->Visible())
                frmActive->Activate();
        });
    return bDone;
}

// In twips, as the windows are placed in them; until the area is laid out it is taken to be the whole window.
void MainWindow::TellSizes() {
    m_frmMain->Move(0, 0, TwipsX(width()), TwipsY(height()));
    if (isVisible())
        m_frmMain->SetFrame(TwipsX(width() - m_pArea->width()), TwipsY(height() - m_pArea->height()));
}

} // namespace corvane::desktop
