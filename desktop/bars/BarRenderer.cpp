#include "desktop/bars/BarRenderer.h"

#include "desktop/bars/MenuBar.h"
#include "desktop/bars/Toolbar.h"
#include "desktop/translation/ShownText.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolButton>
#include <algorithm>
#include <functional>

namespace corvane::desktop {

namespace {

bool IsBand(const Band& oBand, std::string_view sName) {
    return EqualText(oBand.Name(), sName);
}

constexpr const char* sStatusBand = "StatusBar";
constexpr std::size_t nFirstStates = 256;

void DropTwins(std::vector<Ref<Tool>>& aTools) {
    std::sort(aTools.begin(), aTools.end(),
              [](const auto& oLeft, const auto& oRight) { return std::less<>()(oLeft.Get(), oRight.Get()); });
    aTools.erase(std::unique(aTools.begin(), aTools.end()), aTools.end());
}

bool IsVisibleButton(const Tool& oInstance) {
    return oInstance.Visible() && !EqualText(oInstance.Name(), "Separator");
}

// While buttons come and go, Qt would lay out toolbar and window after each of them. The request for one layout stays.
class LayoutPause {
public:
    explicit LayoutPause(std::vector<QLayout*> aLayouts) : m_aLayouts(std::move(aLayouts)) { Enable(false); }
    LayoutPause(const LayoutPause&) = delete;
    LayoutPause& operator=(const LayoutPause&) = delete;
    ~LayoutPause() { Enable(true); }

private:
    void Enable(bool bEnable) {
        for (QLayout* pLayout : m_aLayouts)
            pLayout->setEnabled(bEnable);
    }
    std::vector<QLayout*> m_aLayouts;
};

} // namespace

BarRenderer::BarRenderer(Ref<ActiveBar> oActiveBar, QMainWindow* pWindow, GuardFunction fnGuard)
    : QObject(pWindow), m_oActiveBar(std::move(oActiveBar)), m_pWindow(pWindow), m_fnGuard(std::move(fnGuard)),
      m_oActions([this](const Ref<Tool>& oTool) { m_fnGuard([&] { m_oActiveBar->Click(oTool); }); }),
      m_oMenus(m_oActiveBar, m_oActions, m_fnGuard), m_oShortCuts(m_oActiveBar),
      m_pMenuBar(new MenuBar(m_oMenus, m_oActions, pWindow)), m_pStatus(new QLabel) {
    m_pWindow->setMenuBar(m_pMenuBar);
    m_pStatus->setTextFormat(Qt::PlainText);
    m_pStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_pStatus->setAccessibleName(tr("Status"));
    m_pWindow->statusBar()->addWidget(m_pStatus, 1);
    m_oPopupRequested = m_oActiveBar->PopupRequested.Subscribe([this](const Ref<Band>& oBand) { ShowPopup(oBand); });
    m_oPaintRequested = m_oActiveBar->PaintRequested.Subscribe([this](const Ref<Band>& oBand) {
        if (IsBand(*oBand, sStatusBand)) {
            ShowStatusBar();
            m_pStatus->repaint();
        }
    });
    qApp->installEventFilter(this);
    Schedule();
}

BarRenderer::~BarRenderer() = default;

QToolBar* BarRenderer::ToolbarOf(const Band& oBand) const {
    const auto it = m_mapToolbars.find(&oBand);
    return it == m_mapToolbars.end() ? nullptr : it->second.pToolbar;
}

void BarRenderer::SetChanges(const BarChanges& oChanges) {
    m_pChanges = &oChanges;
    m_oShortCuts.SetChanges(oChanges);
    m_oActions.SetChanges(oChanges);
    m_oMenus.SetChanges(oChanges);
    Redraw();
}

void BarRenderer::Redraw() {
    m_oShortCuts.Invalidate();
    m_oActions.ShowAllTexts();
    RedrawToolbars();
}

void BarRenderer::RedrawToolbars() {
    for (const auto& oBand : m_oActiveBar->Bands()->All())
        if (oBand->Kind() == BandKind::Toolbar) // one without a widget may have a button now
            m_setBands.insert(oBand.Get());
    Schedule();
}

void BarRenderer::Note(const BarChange& oChange) {
    switch (oChange.eWhat) {
    case BarChange::What::ToolState:
        NoteState(oChange.pTool);
        break;
    case BarChange::What::BandAdded:
    case BarChange::What::BandLook:
    case BarChange::What::BandTools:
        m_setBands.insert(oChange.pBand);
        break;
    case BarChange::What::ShortCuts:
        m_oShortCuts.Invalidate();
        m_setTexts.insert(oChange.pTool);
        break;
    case BarChange::What::ToolTexts:
        m_setTexts.insert(oChange.pTool);
        if (oChange.pBand && oChange.pBand->Kind() == BandKind::Toolbar)
            m_setBands.insert(oChange.pBand); // the drop-down band is one of the texts
        break;
    case BarChange::What::Layout:
    case BarChange::What::Redraw:
        return; // what differs has been noted already
    }
    Schedule();
}

// A focus switch notes a hundred tools, so that this is no more than an entry in a list. What changes over and over
// again before the next pass doesn't make the list grow.
void BarRenderer::NoteState(Tool* pMaster) {
    if (m_aStates.size() == m_aStates.capacity()) {
        DropTwins(m_aStates);
        m_aStates.reserve(std::max<std::size_t>(nFirstStates, m_aStates.size() * 2));
    }
    m_aStates.emplace_back(pMaster);
}

void BarRenderer::Schedule() {
    if (m_bScheduled)
        return;
    m_bScheduled = true;
    QMetaObject::invokeMethod(this, &BarRenderer::Flush, Qt::QueuedConnection);
}

void BarRenderer::Flush() {
    m_bScheduled = false;
    // Before the first pass there is nothing on screen that changes could touch, and a start makes very many of them.
    if (m_bAllBands) {
        m_oChanged = m_oActiveBar->Changed.Subscribe([this](const BarChange& oChange) { Note(oChange); });
        m_oShortCuts.Invalidate();
    }
    const bool bAllBands = std::exchange(m_bAllBands, false);
    const auto setBands = std::exchange(m_setBands, {});
    const auto setTexts = std::exchange(m_setTexts, {});
    std::vector<Ref<Tool>> aStates;
    aStates.reserve(m_aStates.capacity());
    aStates.swap(m_aStates);
    DropTwins(aStates);
    if (bAllBands || !setBands.empty())
        ShowBands(setBands, bAllBands);
    if (!aStates.empty())
        ShowStates(aStates);
    for (const Tool* pTool : setTexts)
        m_oActions.ShowTexts(pTool);
    ShowStatusBar();
}

void BarRenderer::ShowBands(const std::unordered_set<const Band*>& setBands, bool bAll) {
    for (const auto& oBand : m_oActiveBar->Bands()->All()) {
        if (!bAll && !setBands.contains(oBand.Get()))
            continue;
        if (oBand->Kind() == BandKind::Toolbar)
            ShowToolbar(oBand);
        else if (oBand->Kind() == BandKind::MenuBar)
            m_pMenuBar->Show(*oBand);
        else if (IsBand(*oBand, sStatusBand))
            m_pWindow->statusBar()->setVisible(oBand->Visible());
    }
}

void BarRenderer::ShowStates(const std::vector<Ref<Tool>>& aMasters) {
    std::vector<Ref<Band>> aToolbars; // with a button that changes
    for (const auto& oMaster : aMasters)
        for (const Tool* pInstance : oMaster->Instances()) {
            Band* pBand = pInstance->OwningBand();
            const bool bIsKnown = std::any_of(aToolbars.begin(), aToolbars.end(),
                                              [&](const auto& oBand) { return oBand.Get() == pBand; });
            if (pBand && pBand->Kind() == BandKind::Toolbar && !bIsKnown)
                aToolbars.emplace_back(pBand);
        }
    std::vector<QLayout*> aLayouts{m_pWindow->layout()};
    for (const auto& oBand : aToolbars)
        if (const QToolBar* pToolbar = ToolbarOf(*oBand))
            aLayouts.push_back(pToolbar->layout());
    const LayoutPause oPause(std::move(aLayouts));
    for (const auto& oBand : aToolbars)
        ShowToolbarIfUsed(oBand); // a button that comes or goes may be the only one
    for (const auto& oMaster : aMasters)
        m_oActions.ShowState(*oMaster);
}

bool BarRenderer::HasVisibleButton(const Band& oBand) const {
    const auto aTools = m_pChanges->InstancesOf(oBand);
    return std::any_of(aTools.begin(), aTools.end(), [](const auto& oTool) { return IsVisibleButton(*oTool); });
}

void BarRenderer::ShowToolbar(const Ref<Band>& oBand) {
    const auto it = m_mapToolbars.find(oBand.Get());
    if (it != m_mapToolbars.end())
        it->second.bChanged = true;
    ShowToolbarIfUsed(oBand);
}

// A toolbar is made when it is first visible and filled then; while it is hidden nothing is drawn into it. Without a
// visible button it would be an empty strip.
void BarRenderer::ShowToolbarIfUsed(const Ref<Band>& oBand) {
    const auto it = m_mapToolbars.find(oBand.Get());
    if (!oBand->Visible() || (it == m_mapToolbars.end() && !HasVisibleButton(*oBand))) {
        if (it != m_mapToolbars.end())
            it->second.pToolbar->hide();
        return;
    }
    ShownToolbar& oShown = it != m_mapToolbars.end() ? it->second : m_mapToolbars[oBand.Get()];
    if (!oShown.pToolbar)
        oShown.pToolbar = NewToolbar(oBand);
    if (std::exchange(oShown.bChanged, false)) {
        oShown.pToolbar->setWindowTitle(ShownCaption(*oBand));
        oShown.pToolbar->SetInstances(m_pChanges->InstancesOf(*oBand));
    }
    oShown.pToolbar->setVisible(oShown.pToolbar->ShowButtons());
}

Toolbar* BarRenderer::NewToolbar(const Ref<Band>& oBand) {
    auto* pToolbar = new Toolbar(m_oMenus, m_oActions, m_pWindow);
    pToolbar->setObjectName(QString::fromStdString(oBand->Name()));
    for (QToolButton* pMore : pToolbar->findChildren<QToolButton*>("qt_toolbar_ext_button")) // shows what doesn't fit
        pMore->setAccessibleName(tr("More of %1").arg(ShownCaption(*oBand)));
    pToolbar->setMovable(true);
    pToolbar->setFloatable(true);
    pToolbar->toggleViewAction()->setEnabled(false); // the bar's own menu does that
    connect(pToolbar->CloseAction(), &QAction::triggered, this,
            [this, oBand] { m_fnGuard([&] { m_oActiveBar->Close(oBand); }); });
    connect(pToolbar, &QToolBar::topLevelChanged, this, [this] { Schedule(); });
    m_pWindow->addToolBar(pToolbar);
    return pToolbar;
}

void BarRenderer::ShowStatusBar() {
    const Ref<Band> oBand = m_oActiveBar->Bands()->Find(sStatusBand);
    if (!oBand)
        return;
    if (const Ref<Tool> oStatus = oBand->Tools()->Find("Status")) {
        const QString sText = QString::fromStdString(oStatus->Caption());
        const bool bShown = oStatus->Visible() && m_oActiveBar->StatusTextShown();
        const bool bTurned = std::exchange(m_bStatusShown, bShown) != bShown; // a description hides the label, too
        // What is shown while the bar describes the command under the pointer would lie over that; news come first.
        if (bTurned || m_pStatus->text() != sText) {
            m_pWindow->statusBar()->clearMessage();
            m_pStatus->setText(sText);
            m_pStatus->setToolTip(sText);
            m_pStatus->setVisible(bShown);
        }
    }
    const Ref<Tool> oProgress = oBand->Tools()->Find("ctlProgressBar");
    const bool bProgress = oProgress && oProgress->Visible() && oProgress->HWnd() != 0;
    if (bProgress && !m_pProgress && m_fnMakeProgress) {
        m_pProgress = m_fnMakeProgress();
        m_pWindow->statusBar()->addWidget(m_pProgress, 2);
    }
    if (m_pProgress && m_pProgress->isHidden() == bProgress) {
        m_pWindow->statusBar()->clearMessage();
        m_pProgress->setVisible(bProgress);
    }
}

QMenu* BarRenderer::NewPopup(const Ref<Band>& oBand) {
    auto* pMenu = new QMenu(m_pWindow);
    if (!m_oMenus.Fill(pMenu, oBand)) {
        delete pMenu;
        return nullptr;
    }
    for (QAction* pAction : pMenu->actions())
        if (pAction->font().bold())
            pMenu->setDefaultAction(pAction);
    // Qt tells descriptions to the window only for menus that hang on one of its bars.
    const auto fnDescribe = [pWindow = m_pWindow](const QString& sText) {
        QStatusTipEvent oEvent(sText);
        QCoreApplication::sendEvent(pWindow, &oEvent);
    };
    connect(pMenu, &QMenu::hovered, m_pWindow, [fnDescribe](QAction* pAction) { fnDescribe(pAction->statusTip()); });
    connect(pMenu, &QMenu::aboutToHide, m_pWindow, [fnDescribe] { fnDescribe({}); });
    return pMenu;
}

void BarRenderer::ShowPopup(const Ref<Band>& oBand) {
    const QPoint oPlace = std::exchange(m_oPopupPlace, std::nullopt).value_or(QCursor::pos());
    if (QMenu* pMenu = NewPopup(oBand)) {
        pMenu->exec(oPlace);
        pMenu->deleteLater(); // a chosen entry may still be on its way
    }
}

QMenu* BarRenderer::NewCustomizeMenu() {
    const Ref<BandCollection> oBands = m_oActiveBar->Bands();
    std::vector<Ref<Band>> aToolbars;
    for (const auto& oBand : oBands->All())
        if (oBand->Kind() == BandKind::Toolbar && m_oActiveBar->Tools()->Find(oBand->Name()))
            aToolbars.push_back(oBand);
    if (aToolbars.empty())
        return nullptr;
    Ref<Band> oCustomize = oBands->Find("SysCustomize");
    if (!oCustomize) {
        oCustomize = oBands->Add("SysCustomize");
        oCustomize->SetBandKind(BandKind::Popup);
    }
    const Ref<BandTools> oTools = oCustomize->Tools();
    while (oTools->Count() > 0)
        oTools->Remove(oTools->Count() - 1);
    for (const auto& oToolbar : aToolbars)
        oTools->Insert(-1, m_oActiveBar->Tools()->Item(oToolbar->Name()))->SetCaption(oToolbar->Caption());
    // Of every control's own menu the application leaves out the last two entries when it opens.
    oTools->AddHostTool("SysReset")->SetCaption("Reset Toolbars");
    oTools->AddHostTool("SysCustomizeDialog")->SetCaption("Customize...");
    return NewPopup(oCustomize);
}

bool BarRenderer::IsForWindow(QObject* pWatched) const {
    const auto* pWidget = qobject_cast<QWidget*>(pWatched);
    if (!pWidget || QGuiApplication::modalWindow() || QApplication::activeModalWidget() ||
        QApplication::activePopupWidget())
        return false;
    // Docks and toolbars that float belong to the window as well.
    for (const QWidget* p = pWidget; p; p = p->parentWidget())
        if (p == m_pWindow)
            return true;
    return false;
}

bool BarRenderer::FireShortCut(QObject* pWatched, QKeyEvent& oEvent) {
    const Ref<Tool> oTool = m_oShortCuts.Find(oEvent.keyCombination());
    if (!oTool)
        return false;
    // A widget that edits text keeps the keys that it needs itself, also one that it didn't use just now, so that the
    // key goes on to the widgets around it.
    QWidget* pFocus = QApplication::focusWidget();
    const bool bInside = pFocus && qobject_cast<QWidget*>(pWatched)->isAncestorOf(pFocus);
    QKeyEvent oOverride(QEvent::ShortcutOverride, oEvent.key(), oEvent.modifiers(), oEvent.text());
    oOverride.ignore();
    QCoreApplication::sendEvent(bInside ? pFocus : pWatched, &oOverride);
    if (oOverride.isAccepted())
        return false;
    m_fnGuard([&] { m_oActiveBar->Click(oTool); });
    return true;
}

bool BarRenderer::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pEvent->type() == QEvent::KeyPress && IsForWindow(pWatched)) {
        auto& oKeyEvent = *static_cast<QKeyEvent*>(pEvent);
        if (FireShortCut(pWatched, oKeyEvent))
            return true;
    }
    return QObject::eventFilter(pWatched, pEvent);
}

} // namespace corvane::desktop
