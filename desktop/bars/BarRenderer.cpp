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
#include <array>
#include <functional>

namespace corvane::desktop {

namespace {

constexpr int messageTime = 5000; // ms

bool IsBand(const Band& band, std::string_view name) {
    return EqualText(band.Name(), name);
}

constexpr const char* statusBand = "StatusBar";
constexpr std::size_t firstStates = 256;

void DropTwins(std::vector<Ref<Tool>>& tools) {
    std::sort(tools.begin(), tools.end(),
              [](const auto& left, const auto& right) { return std::less<>()(left.Get(), right.Get()); });
    tools.erase(std::unique(tools.begin(), tools.end()), tools.end());
}

bool IsVisibleButton(const Tool& instance) {
    return instance.Visible() && !EqualText(instance.Name(), "Separator");
}

// While buttons come and go, Qt would lay out toolbar and window after each of them. The request for one layout stays.
class LayoutPause {
public:
    explicit LayoutPause(std::vector<QLayout*> layouts) : m_layouts(std::move(layouts)) { Enable(false); }
    LayoutPause(const LayoutPause&) = delete;
    LayoutPause& operator=(const LayoutPause&) = delete;
    ~LayoutPause() { Enable(true); }

private:
    void Enable(bool enable) {
        for (QLayout* layout : m_layouts)
            layout->setEnabled(enable);
    }
    std::vector<QLayout*> m_layouts;
};

// The place of a toolbar before a user has moved it: commands of files first and help last, as on a menu bar.
int RankOf(const std::string& band) {
    static constexpr std::array first{"File", "Standard", "Edit", "View"};
    static constexpr std::array last{"Tools", "Window", "Help"};
    const auto point = band.rfind('.');
    const std::string name = point == std::string::npos ? band : band.substr(point + 1);
    constexpr int between = static_cast<int>(first.size());
    for (int i = 0; i < between; ++i)
        if (EqualText(first[static_cast<std::size_t>(i)], name))
            return i;
    for (int i = 0; i < static_cast<int>(last.size()); ++i)
        if (EqualText(last[static_cast<std::size_t>(i)], name))
            return between + 1 + i;
    return between;
}

} // namespace

BarRenderer::BarRenderer(Ref<ActiveBar> activeBar, QMainWindow* window, Guard guard)
    : QObject(window), m_activeBar(std::move(activeBar)), m_window(window), m_guard(std::move(guard)),
      m_actions([this](const Ref<Tool>& tool) { Choose(tool); }), m_menus(m_activeBar, m_actions, m_guard),
      m_shortCuts(m_activeBar), m_menuBar(new MenuBar(m_menus, m_actions, window)), m_status(new QLabel) {
    m_window->setMenuBar(m_menuBar);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_status->setAccessibleName(tr("Status"));
    m_window->statusBar()->addWidget(m_status, 1);
    m_popupRequested = m_activeBar->PopupRequested.Subscribe([this](const Ref<Band>& band) { ShowPopup(band); });
    m_paintRequested = m_activeBar->PaintRequested.Subscribe([this](const Ref<Band>& band) {
        if (IsBand(*band, statusBand)) {
            ShowStatusBar();
            m_status->repaint();
        }
    });
    qApp->installEventFilter(this);
    Schedule();
}

BarRenderer::~BarRenderer() = default;

bool BarRenderer::Choose(const Ref<Tool>& tool) {
    if (const QString why = WhyNot(*tool); !why.isEmpty()) {
        Q_EMIT Refused(why);
        return false;
    }
    m_guard([&] { m_activeBar->Click(tool); });
    return true;
}

QToolBar* BarRenderer::ToolbarOf(const Band& band) const {
    const auto it = m_toolbars.find(&band);
    return it == m_toolbars.end() ? nullptr : it->second.toolbar;
}

void BarRenderer::SetChanges(const BarChanges& changes) {
    m_changes = &changes;
    m_shortCuts.SetChanges(changes);
    m_actions.SetChanges(changes);
    m_menus.SetChanges(changes);
    Redraw();
}

void BarRenderer::Redraw() {
    m_shortCuts.Invalidate();
    m_actions.ShowAllTexts();
    RedrawToolbars();
}

void BarRenderer::RedrawToolbars() {
    for (const auto& band : m_activeBar->Bands()->All())
        if (band->Kind() == BandKind::Toolbar) // one without a widget may have a button now
            m_bands.insert(band.Get());
    Schedule();
}

void BarRenderer::Note(const BarChange& change) {
    switch (change.eWhat) {
    case BarChange::What::ToolState:
        NoteState(change.pTool);
        break;
    case BarChange::What::BandAdded:
    case BarChange::What::BandLook:
    case BarChange::What::BandTools:
        m_bands.insert(change.pBand);
        break;
    case BarChange::What::ShortCuts:
        m_shortCuts.Invalidate();
        m_texts.insert(change.pTool);
        break;
    case BarChange::What::ToolTexts:
        m_texts.insert(change.pTool);
        if (change.pBand && change.pBand->Kind() == BandKind::Toolbar)
            m_bands.insert(change.pBand); // the drop-down band is one of the texts
        break;
    case BarChange::What::Layout:
    case BarChange::What::Redraw:
        return; // what differs has been noted already
    }
    Schedule();
}

// A focus switch notes a hundred tools, so that this is no more than an entry in a list. What changes over and over
// again before the next pass doesn't make the list grow.
void BarRenderer::NoteState(Tool* master) {
    if (m_states.size() == m_states.capacity()) {
        DropTwins(m_states);
        m_states.reserve(std::max<std::size_t>(firstStates, m_states.size() * 2));
    }
    m_states.emplace_back(master);
}

void BarRenderer::Schedule() {
    if (m_scheduled)
        return;
    m_scheduled = true;
    QMetaObject::invokeMethod(this, &BarRenderer::Flush, Qt::QueuedConnection);
}

void BarRenderer::Flush() {
    m_scheduled = false;
    // Before the first pass there is nothing on screen that changes could touch, and a start makes very many of them.
    if (m_allBands) {
        m_changed = m_activeBar->Changed.Subscribe([this](const BarChange& change) { Note(change); });
        m_shortCuts.Invalidate();
    }
    const bool allBands = std::exchange(m_allBands, false);
    const auto bands = std::exchange(m_bands, {});
    const auto texts = std::exchange(m_texts, {});
    std::vector<Ref<Tool>> states;
    states.reserve(m_states.capacity());
    states.swap(m_states);
    DropTwins(states);
    if (allBands || !bands.empty())
        ShowBands(bands, allBands);
    if (!states.empty())
        ShowStates(states);
    for (const Tool* tool : texts)
        m_actions.ShowTexts(tool);
    ShowStatusBar();
}

void BarRenderer::ShowBands(const std::unordered_set<const Band*>& bands, bool all) {
    for (const auto& band : m_activeBar->Bands()->All()) {
        if (!all && !bands.contains(band.Get()))
            continue;
        if (band->Kind() == BandKind::Toolbar)
            ShowToolbar(band);
        else if (band->Kind() == BandKind::MenuBar)
            m_menuBar->Show(*band);
        else if (IsBand(*band, statusBand))
            m_window->statusBar()->setVisible(band->Visible());
    }
}

void BarRenderer::ShowStates(const std::vector<Ref<Tool>>& masters) {
    std::vector<Ref<Band>> toolbars; // with a button that changes
    for (const auto& master : masters)
        for (const Tool* instance : master->Instances()) {
            Band* ownBand = instance->OwningBand();
            const bool isKnown =
                std::any_of(toolbars.begin(), toolbars.end(), [&](const auto& band) { return band.Get() == ownBand; });
            if (ownBand && ownBand->Kind() == BandKind::Toolbar && !isKnown)
                toolbars.emplace_back(ownBand);
        }
    std::vector<QLayout*> layouts{m_window->layout()};
    for (const auto& band : toolbars)
        if (const QToolBar* toolbar = ToolbarOf(*band))
            layouts.push_back(toolbar->layout());
    const LayoutPause pause(std::move(layouts));
    for (const auto& band : toolbars)
        ShowToolbarIfUsed(band); // a button that comes or goes may be the only one
    for (const auto& master : masters)
        m_actions.ShowState(*master);
}

bool BarRenderer::HasVisibleButton(const Band& band) const {
    const auto tools = m_changes->InstancesOf(band);
    return std::any_of(tools.begin(), tools.end(), [](const auto& tool) { return IsVisibleButton(*tool); });
}

void BarRenderer::ShowToolbar(const Ref<Band>& band) {
    const auto it = m_toolbars.find(band.Get());
    if (it != m_toolbars.end())
        it->second.changed = true;
    ShowToolbarIfUsed(band);
}

// A toolbar is made when it is first visible and filled then; while it is hidden nothing is drawn into it. Without a
// visible button it would be an empty strip.
void BarRenderer::ShowToolbarIfUsed(const Ref<Band>& band) {
    const auto it = m_toolbars.find(band.Get());
    if (!band->Visible() || (it == m_toolbars.end() && !HasVisibleButton(*band))) {
        if (it != m_toolbars.end())
            it->second.toolbar->hide();
        return;
    }
    ShownToolbar& shown = it != m_toolbars.end() ? it->second : m_toolbars[band.Get()];
    if (!shown.toolbar)
        shown.toolbar = NewToolbar(band);
    if (std::exchange(shown.changed, false)) {
        shown.toolbar->setWindowTitle(ShownCaption(*band));
        shown.toolbar->SetInstances(m_changes->InstancesOf(*band));
    }
    shown.toolbar->setVisible(shown.toolbar->ShowButtons());
}

void BarRenderer::ResetToolbars() {
    QList<QToolBar*> toolbars = m_window->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly);
    std::stable_sort(toolbars.begin(), toolbars.end(), [](const QToolBar* first, const QToolBar* second) {
        return RankOf(first->objectName().toStdString()) < RankOf(second->objectName().toStdString());
    });
    for (QToolBar* toolbar : toolbars) {
        m_window->removeToolBarBreak(toolbar);
        m_window->addToolBar(Qt::TopToolBarArea, toolbar); // also one that floats
    }
}

Toolbar* BarRenderer::NewToolbar(const Ref<Band>& band) {
    auto* toolbar = new Toolbar(m_menus, m_actions, m_window);
    toolbar->setObjectName(QString::fromStdString(band->Name()));
    for (QToolButton* more : toolbar->findChildren<QToolButton*>("qt_toolbar_ext_button")) // shows what doesn't fit
        more->setAccessibleName(tr("More of %1").arg(ShownCaption(*band)));
    toolbar->setMovable(true);
    toolbar->setFloatable(true);
    toolbar->toggleViewAction()->setEnabled(false); // the bar's own menu does that
    connect(toolbar->CloseAction(), &QAction::triggered, this,
            [this, band] { m_guard([&] { m_activeBar->Close(band); }); });
    connect(toolbar, &QToolBar::topLevelChanged, this, [this] { Schedule(); });
    const auto rankOf = [](const QToolBar* other) { return RankOf(other->objectName().toStdString()); };
    QToolBar* next = nullptr; // those of a rank are in the order in which they were made
    for (QToolBar* other : m_window->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
        if (rankOf(other) > rankOf(toolbar) && m_window->toolBarArea(other) == Qt::TopToolBarArea &&
            (!next || rankOf(other) < rankOf(next)))
            next = other;
    if (next)
        m_window->insertToolBar(next, toolbar);
    else
        m_window->addToolBar(toolbar);
    return toolbar;
}

void BarRenderer::ShowStatusBar() {
    const Ref<Band> band = m_activeBar->Bands()->Find(statusBand);
    if (!band)
        return;
    if (const Ref<Tool> status = band->Tools()->Find("Status")) {
        const QString text = QString::fromStdString(status->Caption());
        const bool shown = status->Visible() && m_activeBar->StatusTextShown();
        const bool turned = std::exchange(m_statusShown, shown) != shown; // a description hides the label, too
        // What is shown while the bar describes the command under the pointer would cover that; news come first.
        if (turned || m_status->text() != text) {
            m_window->statusBar()->clearMessage();
            m_status->setText(text);
            m_status->setToolTip(text);
            m_status->setVisible(shown);
        }
    }
    const Ref<Tool> progress = band->Tools()->Find("ctlProgressBar");
    const bool hasProgress = progress && progress->Visible() && progress->HWnd() != 0;
    if (hasProgress && !m_progress && m_makeProgress) {
        m_progress = m_makeProgress();
        m_window->statusBar()->addWidget(m_progress, 2);
    }
    if (m_progress && m_progress->isHidden() == hasProgress) {
        m_window->statusBar()->clearMessage();
        m_progress->setVisible(hasProgress);
    }
}

QMenu* BarRenderer::NewPopup(const Ref<Band>& band) {
    auto* menu = new QMenu(m_window);
    if (!m_menus.Fill(menu, band)) {
        delete menu;
        return nullptr;
    }
    for (QAction* action : menu->actions())
        if (action->font().bold())
            menu->setDefaultAction(action);
    // Qt reports descriptions to the window only for menus that hang on one of its bars.
    const auto describe = [window = m_window](const QString& text) {
        QStatusTipEvent event(text);
        QCoreApplication::sendEvent(window, &event);
    };
    connect(menu, &QMenu::hovered, m_window, [describe](QAction* action) { describe(action->statusTip()); });
    connect(menu, &QMenu::aboutToHide, m_window, [describe] { describe({}); });
    return menu;
}

void BarRenderer::ShowPopup(const Ref<Band>& band) {
    const QPoint place = std::exchange(m_popupPlace, std::nullopt).value_or(QCursor::pos());
    if (QMenu* menu = NewPopup(band)) {
        menu->exec(place);
        menu->deleteLater(); // a chosen entry may still be on its way
    }
}

QMenu* BarRenderer::NewCustomizeMenu() {
    const Ref<BandCollection> bands = m_activeBar->Bands();
    std::vector<Ref<Band>> toolbars;
    for (const auto& band : bands->All())
        if (band->Kind() == BandKind::Toolbar && m_activeBar->Tools()->Find(band->Name()))
            toolbars.push_back(band);
    if (toolbars.empty())
        return nullptr;
    Ref<Band> customize = bands->Find("SysCustomize");
    if (!customize) {
        customize = bands->Add("SysCustomize");
        customize->SetBandKind(BandKind::Popup);
    }
    const Ref<BandTools> tools = customize->Tools();
    while (tools->Count() > 0)
        tools->Remove(tools->Count() - 1);
    for (const auto& toolbar : toolbars)
        tools->Insert(-1, m_activeBar->Tools()->Item(toolbar->Name()))->SetCaption(toolbar->Caption());
    // Of every control's own menu the application leaves out the last two entries when it opens.
    tools->AddHostTool("SysReset")->SetCaption("Reset Toolbars");
    tools->AddHostTool("SysCustomizeDialog")->SetCaption("Customize...");
    return NewPopup(customize);
}

bool BarRenderer::IsForWindow(QObject* watched) const {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || QGuiApplication::modalWindow() || QApplication::activeModalWidget() ||
        QApplication::activePopupWidget())
        return false;
    // Docks and toolbars that float belong to the window as well.
    for (const QWidget* p = widget; p; p = p->parentWidget())
        if (p == m_window)
            return true;
    return false;
}

// What was pressed first is said in the status bar until the second stroke has come.
void BarRenderer::WaitForSecondStroke(std::optional<QKeyCombination> first) {
    m_firstStroke = first;
    if (first)
        m_window->statusBar()->showMessage(
            tr("%1, and then…").arg(QKeySequence(*first).toString(QKeySequence::NativeText)));
    else
        m_window->statusBar()->clearMessage();
}

// The second stroke belongs to the chord whatever it is; Esc, and one that no chord has, end it.
bool BarRenderer::EndChord(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Control:
    case Qt::Key_Shift:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
        return true;
    default:
        break;
    }
    const QKeyCombination first = *m_firstStroke;
    WaitForSecondStroke({});
    if (event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier)
        return true;
    if (const Ref<Tool> tool = m_shortCuts.Find(first, event.keyCombination()))
        Choose(tool);
    else
        m_window->statusBar()->showMessage(
            tr("No command has the shortcut %1.")
                .arg(QKeySequence(first, event.keyCombination()).toString(QKeySequence::NativeText)),
            messageTime);
    return true;
}

bool BarRenderer::FireShortCut(QObject* watched, QKeyEvent& event) {
    if (m_firstStroke)
        return EndChord(event);
    if (m_shortCuts.BeginsChord(event.keyCombination())) {
        if (IsKeptByEditor(watched, event))
            return false;
        WaitForSecondStroke(event.keyCombination());
        return true;
    }
    const Ref<Tool> tool = m_shortCuts.Find(event.keyCombination());
    if (!tool || IsKeptByEditor(watched, event))
        return false;
    Choose(tool);
    return true;
}

bool BarRenderer::IsKeptByEditor(QObject* watched, const QKeyEvent& event) const {
    // A widget that edits text keeps the keys that it needs itself, also one that it didn't use just now, so that the
    // key goes on to the widgets around it.
    QWidget* focus = QApplication::focusWidget();
    const bool inside = focus && qobject_cast<QWidget*>(watched)->isAncestorOf(focus);
    QKeyEvent overrideEvent(QEvent::ShortcutOverride, event.key(), event.modifiers(), event.text());
    overrideEvent.ignore();
    QCoreApplication::sendEvent(inside ? focus : watched, &overrideEvent);
    return overrideEvent.isAccepted();
}

bool BarRenderer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && IsForWindow(watched)) {
        auto& keyEvent = *static_cast<QKeyEvent*>(event);
        if (FireShortCut(watched, keyEvent))
            return true;
    }
    if (m_firstStroke && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::WindowDeactivate))
        WaitForSecondStroke({});
    return QObject::eventFilter(watched, event);
}

} // namespace corvane::desktop

#include "moc_BarRenderer.cpp"
