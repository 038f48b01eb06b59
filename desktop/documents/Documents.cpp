#include "desktop/documents/Documents.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int handleWidth = 5;
constexpr QSize ownSize(720, 520);

void CollectGroups(const QWidget* cell, std::vector<TabGroup*>& groups) {
    if (const auto* splitter = qobject_cast<const QSplitter*>(cell))
        for (int i = 0; i < splitter->count(); ++i) {
            QWidget* part = splitter->widget(i);
            if (auto* group = qobject_cast<TabGroup*>(part))
                groups.push_back(group);
            else
                CollectGroups(part, groups);
        }
}

bool HasShown(const QWidget* cell) {
    if (const auto* group = qobject_cast<const TabGroup*>(cell))
        return group->HasShown();
    std::vector<TabGroup*> groups;
    CollectGroups(cell, groups);
    return std::any_of(groups.begin(), groups.end(), [](const TabGroup* group) { return group->HasShown(); });
}

} // namespace

Documents::Documents(QMdiArea& area) : QObject(&area), m_area(area) {
    area.viewport()->installEventFilter(this);
    connect(&area, &QMdiArea::subWindowActivated, this, &Documents::SubWindowActivated);
    // A click into a window that the area believes to be active already, as where the active one is a window of its
    // own.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* to) {
        for (const QWidget* widget = to; widget; widget = widget->parentWidget())
            if (WindowFrame* frame = FrameOf(widget)) {
                if (frame != m_active && m_isTabbed)
                    Activate(*frame);
                return;
            }
    });
}

Documents::~Documents() {
    for (WindowFrame* frame : m_frames)
        frame->Forget(*this);
    delete m_root;
}

// Frames.

WindowFrame* Documents::FrameOf(const QWidget* window) const {
    const auto it =
        std::find_if(m_frames.begin(), m_frames.end(), [&](const auto* frame) { return frame->Widget() == window; });
    return window && it != m_frames.end() ? *it : nullptr;
}

std::vector<QWidget*> Documents::Frames() const {
    std::vector<WindowFrame*> frames;
    for (const TabGroup* group : Groups())
        for (const auto& entry : group->Entries())
            frames.push_back(entry.frame);
    for (WindowFrame* frame : m_frames)
        if (!GroupOf(frame))
            frames.push_back(frame);
    std::vector<QWidget*> widgets;
    for (const WindowFrame* frame : frames)
        widgets.push_back(frame->Widget());
    return widgets;
}

WindowFrame* Documents::ActiveFrame() const {
    if (m_active && m_active->Widget() && m_active->Widget()->isVisible())
        return m_active;
    return FrameOf(m_area.activeSubWindow());
}

QWidget* Documents::Active() const {
    const WindowFrame* frame = ActiveFrame();
    return frame ? frame->Widget() : nullptr;
}

void Documents::SetMarked(bool marked) {
    if (std::exchange(m_isMarked, marked) != marked)
        ShowGroups();
}

bool Documents::IsOwn(const QWidget* window) const {
    const WindowFrame* frame = FrameOf(window);
    return frame && frame->Held() == WindowFrame::Holding::Own;
}

void Documents::FrameMade(WindowFrame& frame) {
    m_frames.push_back(&frame);
    if (!m_isTabbed)
        return;
    if (IsDocument(frame))
        frame.Hold(WindowFrame::Holding::InTab);
    else
        frame.StayOnTop(true);
}

void Documents::FrameShown(WindowFrame& frame) {
    if (!m_isTabbed || !IsDocument(frame) || frame.Held() == WindowFrame::Holding::Own)
        return;
    if (TabGroup* group = GroupOf(&frame)) {
        group->SetShown(&frame, true);
        ShowGroups();
    } else {
        TabGroup& current = *ActiveGroup();
        Add(frame, current, static_cast<int>(current.Entries().size()), false);
    }
}

void Documents::FrameHidden(WindowFrame& frame) {
    if (TabGroup* group = GroupOf(&frame)) {
        group->SetShown(&frame, false);
        ShowGroups();
    }
}

void Documents::FrameRaised(WindowFrame& frame) {
    if (m_isTabbed && m_active && m_active != &frame)
        Activate(frame);
}

// What was behind it in its tabs comes to the front, before the area chooses another one.
void Documents::FrameClosed(WindowFrame& frame) {
    const bool wasActive = m_active == &frame;
    TabGroup* const group = GroupOf(&frame);
    if (group)
        group->Take(&frame);
    std::erase(m_frames, &frame);
    if (wasActive)
        m_active = nullptr;
    if (!group)
        return;
    WindowFrame* next = wasActive ? group->Front() : nullptr;
    RemoveIfEmpty(group);
    if (next)
        Activate(*next);
    Q_EMIT Changed();
}

void Documents::FrameChanged(WindowFrame& frame) {
    if (TabGroup* group = GroupOf(&frame))
        group->ShowTabs();
    else if (auto* bar =
                 frame.Widget() ? frame.Widget()->findChild<DocumentBar*>({}, Qt::FindDirectChildrenOnly) : nullptr)
        bar->Show({{TabTitle(*frame.Widget()), frame.Widget()->windowIcon()}}, 0);
}

// The area says nothing when a window comes back to the front that was active in it before one of its own was.
void Documents::Activate(WindowFrame& frame) {
    if (m_isTabbed) {
        m_active = &frame;
        if (TabGroup* group = GroupOf(&frame))
            group->SetFront(&frame);
        ShowGroups();
    }
    frame.Activate();
}

void Documents::SubWindowActivated(QMdiSubWindow* window) {
    WindowFrame* frame = FrameOf(window);
    if (!frame || !m_isTabbed)
        return;
    m_active = frame;
    if (TabGroup* group = GroupOf(frame))
        group->SetFront(frame);
    ShowGroups();
}

// Groups.

TabGroup* Documents::GroupOf(const WindowFrame* frame) const {
    for (TabGroup* group : Groups())
        if (group->IndexOf(frame) >= 0)
            return group;
    return nullptr;
}

std::vector<TabGroup*> Documents::Groups() const {
    std::vector<TabGroup*> groups;
    CollectGroups(m_root, groups);
    return groups;
}

TabGroup* Documents::ActiveGroup() {
    if (TabGroup* group = GroupOf(ActiveFrame()))
        return group;
    if (TabGroup* group = GroupOf(FrameOf(m_area.activeSubWindow())))
        return group;
    if (const auto groups = Groups(); !groups.empty())
        return groups.front();
    TabGroup* group = NewGroup();
    m_root->addWidget(group);
    return group;
}

TabGroup* Documents::NewGroup() {
    auto* group = new TabGroup;
    group->installEventFilter(this);
    ConnectBar(group->Bar(), [group](int tab) -> WindowFrame* {
        const auto& entries = group->Entries();
        return tab >= 0 && static_cast<std::size_t>(tab) < entries.size() ? entries[static_cast<std::size_t>(tab)].frame
                                                                          : nullptr;
    });
    return group;
}

QSplitter* Documents::NewPart(Qt::Orientation orientation) {
    auto* splitter = new QSplitter(orientation);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(handleWidth);
    splitter->installEventFilter(this);
    connect(splitter, &QSplitter::splitterMoved, this, &Documents::Changed);
    return splitter;
}

void Documents::MakeRoot() {
    m_root = NewPart(Qt::Horizontal);
    m_root->setParent(m_area.viewport());
    m_root->lower();
}

TabGroup* Documents::NewGroupBeside(TabGroup& group, Side side) {
    const auto orientation = side == Side::Left || side == Side::Right ? Qt::Horizontal : Qt::Vertical;
    const bool isBefore = side == Side::Left || side == Side::Above;
    TabGroup* added = NewGroup();
    auto* parent = qobject_cast<QSplitter*>(group.parentWidget());
    const int place = parent->indexOf(&group);
    const int length = (orientation == Qt::Horizontal ? group.width() : group.height()) / 2;
    if (parent->count() == 1)
        parent->setOrientation(orientation);
    QList<int> sizes = parent->sizes();
    if (parent->orientation() == orientation) {
        sizes[place] = length;
        sizes.insert(place, length);
        parent->insertWidget(isBefore ? place : place + 1, added);
        parent->setSizes(sizes);
        return added;
    }
    QSplitter* inner = NewPart(orientation);
    parent->insertWidget(place, inner);
    inner->addWidget(&group);
    inner->insertWidget(isBefore ? 0 : 1, added);
    parent->setSizes(sizes);
    inner->setSizes({length, length});
    return added;
}

void Documents::RemoveIfEmpty(TabGroup* group) {
    if (group->Entries().empty()) {
        auto* parent = qobject_cast<QSplitter*>(group->parentWidget());
        group->hide();
        group->setParent(nullptr);
        group->deleteLater(); // one of its events may be the reason
        Tidy(parent);
    }
    ShowGroups();
}

// A splitter with one part is replaced by that.
void Documents::Tidy(QSplitter* splitter) {
    if (!splitter || splitter->count() > 1)
        return;
    if (splitter != m_root) {
        auto* parent = qobject_cast<QSplitter*>(splitter->parentWidget());
        const QList<int> sizes = parent->sizes();
        const int place = parent->indexOf(splitter);
        QWidget* part = splitter->count() == 1 ? splitter->widget(0) : nullptr;
        if (part)
            parent->insertWidget(place, part);
        splitter->hide();
        splitter->setParent(nullptr);
        splitter->deleteLater();
        if (part)
            parent->setSizes(sizes);
        else
            Tidy(parent);
        return;
    }
    auto* only = splitter->count() == 1 ? qobject_cast<QSplitter*>(splitter->widget(0)) : nullptr;
    if (!only)
        return;
    const QList<int> sizes = only->sizes();
    splitter->setOrientation(only->orientation());
    while (only->count() > 0)
        splitter->addWidget(only->widget(0));
    only->hide();
    only->setParent(nullptr);
    only->deleteLater();
    splitter->setSizes(sizes);
}

void Documents::Add(WindowFrame& frame, TabGroup& group, int index, bool isPinned) {
    frame.Hold(WindowFrame::Holding::InTab);
    group.Insert(index, {&frame, isPinned, true});
    if (!group.Front() || m_active == &frame)
        group.SetFront(&frame);
    ShowGroups();
    Q_EMIT Changed();
}

void Documents::TakeOut(WindowFrame& frame) {
    if (TabGroup* group = GroupOf(&frame)) {
        group->Take(&frame);
        RemoveIfEmpty(group);
    }
}

void Documents::ShowGroups() {
    Q_EMIT ActsChanged();
    if (!m_root)
        return;
    const QScopedValueRollback laysOut(m_laysOut, true); // once, behind all
    const WindowFrame* active = ActiveFrame();
    for (TabGroup* group : Groups()) {
        group->setVisible(group->HasShown());
        for (QWidget* cell = group->parentWidget(); cell && cell != m_root; cell = cell->parentWidget())
            cell->setVisible(HasShown(cell));
        group->Bar().SetActive(m_isMarked && group->IndexOf(active) >= 0);
    }
    m_root->setVisible(HasShown(m_root));
    m_laysOut = false;
    LayOut();
    for (const TabGroup* group : Groups())
        if (WindowFrame* front = group->Front(); front && front != active && front->Widget())
            front->Widget()->raise();
    if (active && active->Widget() && !active->Widget()->isWindow())
        active->Widget()->raise();
    for (const WindowFrame* frame : m_frames)
        if (!IsDocument(*frame) && frame->Widget())
            frame->Widget()->raise();
}

void Documents::LayOut() {
    if (!m_root || !m_isTabbed || m_laysOut)
        return;
    const QScopedValueRollback laysOut(m_laysOut, true);
    m_root->setGeometry(m_area.viewport()->rect());
    for (const TabGroup* group : Groups()) {
        group->layout()->activate();
        group->Place(*m_area.viewport());
    }
}

bool Documents::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::LayoutRequest:
        LayOut();
        break;
    case QEvent::WindowActivate: // of a window of its own
        if (WindowFrame* frame = FrameOf(qobject_cast<QWidget*>(watched));
            frame && frame->Held() == WindowFrame::Holding::Own) {
            m_active = frame;
            ShowGroups();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// Free or in tabs.

void Documents::SetTabbed(bool tabbed) {
    if (tabbed == m_isTabbed)
        return;
    WindowFrame* const active = ActiveFrame();
    m_isTabbed = tabbed;
    if (tabbed) {
        MakeRoot();
        m_active = active;
        for (WindowFrame* frame : m_frames) {
            if (IsDocument(*frame))
                frame->Hold(WindowFrame::Holding::InTab);
            else
                frame->StayOnTop(true);
            if (IsDocument(*frame) && frame->Widget() && !frame->Widget()->isHidden())
                FrameShown(*frame);
        }
        m_area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_area.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    } else {
        for (WindowFrame* frame : m_frames) {
            frame->StayOnTop(false);
            frame->Hold(WindowFrame::Holding::Free);
        }
        delete m_root;
        m_area.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_area.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }
    if (active)
        Activate(*active);
    ShowGroups();
    Q_EMIT Changed();
}

// What a user does to the active window.

Documents::Acts Documents::PossibleActs() const {
    Acts acts;
    const WindowFrame* frame = ActiveFrame();
    if (!m_isTabbed || !frame)
        return acts;
    const auto groups = Groups();
    const TabGroup* own = GroupOf(frame);
    const auto shown = std::count_if(groups.begin(), groups.end(), [](const auto* group) { return group->HasShown(); });
    const bool hasOthers = own && own->Entries().size() > 1;
    acts.split = hasOthers;
    acts.moveToNextGroup = own && (hasOthers || groups.size() > 1);
    acts.goToNextGroup = shown > (own ? 1 : 0);
    acts.moveToOwnWindow = acts.pin = own;
    acts.dock = frame->Held() == WindowFrame::Holding::Own;
    acts.closeOthers = own && !Others(*frame, false).empty();
    return acts;
}

void Documents::Split(Side side) {
    WindowFrame* frame = ActiveFrame();
    TabGroup* group = GroupOf(frame);
    if (group && group->Entries().size() > 1)
        MoveTo(*frame, {group, -1, side, false, {}});
}

void Documents::MoveToNextGroup() {
    WindowFrame* frame = ActiveFrame();
    TabGroup* group = GroupOf(frame);
    const auto groups = Groups();
    if (!group)
        return;
    if (groups.size() == 1)
        return Split(Side::Right);
    const auto place = std::find(groups.begin(), groups.end(), group) - groups.begin();
    TabGroup* next = groups[static_cast<std::size_t>(place + 1) % groups.size()];
    MoveTo(*frame, {next, static_cast<int>(next->Entries().size()), {}, false, {}});
}

void Documents::GoToNextGroup() {
    const auto groups = Groups();
    const auto it = std::find(groups.begin(), groups.end(), GroupOf(ActiveFrame()));
    const auto place = it == groups.end() ? groups.size() - 1 : static_cast<std::size_t>(it - groups.begin());
    for (std::size_t i = 1; i <= groups.size(); ++i)
        if (WindowFrame* front = groups[(place + i) % groups.size()]->Front()) {
            Activate(*front);
            return;
        }
}

void Documents::MoveToOwnWindow() {
    MoveToOwnWindow(Active());
}

bool Documents::MoveToOwnWindow(QWidget* window) {
    WindowFrame* frame = FrameOf(window);
    if (!GroupOf(frame))
        return false;
    ToOwn(*frame, m_area.mapToGlobal(QPoint(48, 48)));
    return true;
}

void Documents::Dock() {
    WindowFrame* frame = ActiveFrame();
    if (!m_isTabbed || !frame || frame->Held() != WindowFrame::Holding::Own)
        return;
    TabGroup* group = ActiveGroup();
    MoveTo(*frame, {group, static_cast<int>(group->Entries().size()), {}, false, {}});
}

void Documents::Pin() {
    WindowFrame* frame = ActiveFrame();
    if (TabGroup* group = GroupOf(frame)) {
        group->SetPinned(frame, !group->Entries()[static_cast<std::size_t>(group->IndexOf(frame))].isPinned);
        Q_EMIT Changed();
    }
}

void Documents::CloseOthers() {
    if (WindowFrame* frame = ActiveFrame())
        Close(Others(*frame, false));
}

void Documents::ToOwn(WindowFrame& frame, const QPoint& corner) {
    const QSize size = frame.Widget()->size();
    TakeOut(frame);
    frame.Hold(WindowFrame::Holding::Own);
    QWidget* window = frame.Widget();
    auto* bar = new DocumentBar(window);
    static_cast<QVBoxLayout*>(window->layout())->insertWidget(0, bar);
    bar->SetActive(true);
    ConnectBar(*bar, [&frame](int) { return &frame; });
    FrameChanged(frame);
    window->installEventFilter(this);
    QRect place(corner, (size.isEmpty() ? ownSize : size) + QSize(0, bar->sizeHint().height()));
    if (const QScreen* screen = QGuiApplication::screenAt(corner)) { // all of it can be seen, as far as there is space
        const QRect room = screen->availableGeometry().adjusted(8, 32, -8, -8);
        place.setSize(place.size().boundedTo(room.size()));
        place.moveTo(qBound(room.left(), place.left(), room.right() + 1 - place.width()),
                     qBound(room.top(), place.top(), room.bottom() + 1 - place.height()));
    }
    window->setGeometry(place);
    window->show();
    m_active = &frame;
    Activate(frame);
    ShowGroups();
    Q_EMIT OwnWindowMade(window);
    Q_EMIT Changed();
}

void Documents::MoveTo(WindowFrame& frame, const DropPlace& place) {
    TabGroup* const from = GroupOf(&frame);
    TabGroup* target = place.group ? place.group : ActiveGroup();
    int index = place.index < 0 ? static_cast<int>(target->Entries().size()) : place.index;
    const QScopedValueRollback laysOut(m_laysOut, true);
    const bool isPinned = from && from->Entries()[static_cast<std::size_t>(from->IndexOf(&frame))].isPinned;
    if (from == target && from->IndexOf(&frame) < index)
        --index;
    if (place.side)
        target = NewGroupBeside(*target, *place.side);
    if (from)
        from->Take(&frame);
    m_active = &frame;
    Add(frame, *target, place.side ? 0 : index, isPinned && from == target);
    if (from)
        RemoveIfEmpty(from);
    m_laysOut = false;
    ShowGroups();
    if (QWidget* window = frame.Widget())
        window->show();
    Activate(frame);
    Q_EMIT Changed();
}

} // namespace corvane::desktop

#include "moc_Documents.cpp"
