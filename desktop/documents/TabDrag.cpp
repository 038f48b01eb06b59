#include "desktop/documents/Documents.h"

#include <QMdiArea>
#include <QMenu>
#include <QRubberBand>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int outermost = 4; // a quarter of a cell along its sides splits it

std::optional<Documents::Side> SideAt(const QRect& cell, const QPoint& place) {
    const int left = place.x() - cell.left();
    const int right = cell.right() - place.x();
    const int above = place.y() - cell.top();
    const int below = cell.bottom() - place.y();
    // In relation to the cell's size, so that its corners belong to the nearer side.
    const std::pair<double, Documents::Side> sides[] = {
        {static_cast<double>(left) / cell.width(), Documents::Side::Left},
        {static_cast<double>(right) / cell.width(), Documents::Side::Right},
        {static_cast<double>(above) / cell.height(), Documents::Side::Above},
        {static_cast<double>(below) / cell.height(), Documents::Side::Below}};
    const auto nearest = *std::min_element(std::begin(sides), std::end(sides));
    return nearest.first < 1.0 / outermost ? std::optional(nearest.second) : std::nullopt;
}

QRect HalfOf(const QRect& cell, Documents::Side side) {
    switch (side) {
    case Documents::Side::Left:
        return {cell.left(), cell.top(), cell.width() / 2, cell.height()};
    case Documents::Side::Right:
        return {cell.left() + cell.width() / 2, cell.top(), cell.width() / 2, cell.height()};
    case Documents::Side::Above:
        return {cell.left(), cell.top(), cell.width(), cell.height() / 2};
    case Documents::Side::Below:
        break;
    }
    return {cell.left(), cell.top() + cell.height() / 2, cell.width(), cell.height() / 2};
}

} // namespace

void Documents::ConnectBar(DocumentBar& bar, const std::function<WindowFrame*(int)>& frameAt) {
    const auto on = [this, &bar, frameAt](auto signal, auto act) {
        connect(&bar, signal, this, [frameAt, act](int tab, const auto&... more) {
            if (WindowFrame* frame = frameAt(tab))
                act(*frame, more...);
        });
    };
    on(&DocumentBar::Chosen, [this](WindowFrame& frame) { Activate(frame); });
    on(&DocumentBar::CloseWanted, [this](WindowFrame& frame) { Close({&frame}); });
    on(&DocumentBar::MenuWanted, [this](WindowFrame& frame, const QPoint& global) { ShowMenu(frame, global); });
    on(&DocumentBar::Dragged, [this](WindowFrame& frame, const QPoint& global) { Drag(frame, global); });
    on(&DocumentBar::Dropped, [this](WindowFrame& frame, const QPoint& global) { Drop(frame, global); });
    connect(&bar, &DocumentBar::DragEnded, this, [this] { delete m_band; });
}

// As a click on the close box of each; one of them may ask, and stay.
void Documents::Close(const std::vector<WindowFrame*>& frames) {
    for (WindowFrame* frame : frames)
        if (std::find(m_frames.begin(), m_frames.end(), frame) != m_frames.end() && frame->Widget())
            frame->Widget()->close();
}

std::vector<WindowFrame*> Documents::Others(const WindowFrame& frame, bool onlyRight) const {
    std::vector<WindowFrame*> others;
    const TabGroup* group = GroupOf(&frame);
    if (!group)
        return others;
    const int place = group->IndexOf(&frame);
    for (int i = onlyRight ? place + 1 : 0; i < static_cast<int>(group->Entries().size()); ++i)
        if (const auto& entry = group->Entries()[static_cast<std::size_t>(i)];
            i != place && !entry.isPinned && entry.isShown)
            others.push_back(entry.frame);
    return others;
}

void Documents::ShowMenu(WindowFrame& frame, const QPoint& global) {
    Activate(frame);
    TabGroup* const group = GroupOf(&frame);
    auto* menu = new QMenu(frame.Widget()->window());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString& text, bool isEnabled, auto act) {
        QAction* action = menu->addAction(text);
        action->setEnabled(isEnabled);
        // Behind the menu's end, as the window may go with what it does.
        connect(action, &QAction::triggered, this, [this, held = &frame, act] {
            if (std::find(m_frames.begin(), m_frames.end(), held) != m_frames.end())
                act(*held);
        });
        return action;
    };
    const bool hasOthers = group && group->Entries().size() > 1;
    add(tr("Sa&ve"), frame.Widget()->isWindowModified(),
        [this](WindowFrame& held) { Q_EMIT SaveWanted(held.Widget()); });
    add(tr("&Close"), true, [this](WindowFrame& held) { Close({&held}); });
    if (!group) {
        add(tr("&Dock"), true, [this](WindowFrame&) { Dock(); });
        menu->popup(global);
        return;
    }
    const bool isPinned = group->Entries()[static_cast<std::size_t>(group->IndexOf(&frame))].isPinned;
    for (const bool onlyRight : {false, true})
        add(onlyRight ? tr("Close to the &Right") : tr("Close &Others"), !Others(frame, onlyRight).empty(),
            [this, onlyRight](WindowFrame& held) { Close(Others(held, onlyRight)); });
    menu->addSeparator();
    QAction* pin = add(tr("&Pin"), true, [this](WindowFrame&) { Pin(); });
    pin->setCheckable(true);
    pin->setChecked(isPinned);
    menu->addSeparator();
    add(tr("&Split Right"), hasOthers, [this](WindowFrame&) { Split(Side::Right); });
    add(tr("Split &Below"), hasOthers, [this](WindowFrame&) { Split(Side::Below); });
    add(tr("Move to &Next Group"), hasOthers || Groups().size() > 1, [this](WindowFrame&) { MoveToNextGroup(); });
    add(tr("Move to Own &Window"), true, [this](WindowFrame&) { MoveToOwnWindow(); });
    menu->popup(global);
}

Documents::DropPlace Documents::PlaceAt(const WindowFrame& frame, const QPoint& global) const {
    DropPlace place;
    const QWidget* viewport = m_area.viewport();
    const QPoint inArea = viewport->mapFromGlobal(global);
    place.isOutside = !m_area.window()->frameGeometry().contains(global);
    if (place.isOutside || !viewport->rect().contains(inArea))
        return place;
    const TabGroup* const own = GroupOf(&frame);
    bool anyShown = false;
    for (TabGroup* group : Groups()) {
        const QRect cell(group->mapTo(viewport, QPoint()), group->size());
        anyShown |= group->isVisible();
        if (!group->isVisible() || !cell.contains(inArea))
            continue;
        const QPoint inBar = group->Bar().mapFromGlobal(global);
        if (group->Bar().rect().contains(inBar)) {
            place.group = group;
            place.index = group->Bar().IndexFor(inBar);
            place.shown = group->Bar().GapAt(place.index).translated(group->Bar().mapTo(viewport, QPoint()));
            return place;
        }
        const bool isAlone = group == own && group->Entries().size() == 1;
        const QRect room = cell.adjusted(0, group->Bar().height(), 0, 0);
        if (isAlone)
            return place;
        place.side = SideAt(room, inArea);
        if (!place.side && group == own)
            return place;
        place.group = group;
        place.shown = place.side ? HalfOf(cell, *place.side) : cell;
        return place;
    }
    if (!anyShown) { // every window is one of its own
        place.shown = viewport->rect();
        place.index = 0;
    }
    return place;
}

void Documents::Drag(WindowFrame& frame, const QPoint& global) {
    const DropPlace place = PlaceAt(frame, global);
    if (place.shown.isEmpty()) {
        delete m_band;
        return;
    }
    if (!m_band)
        m_band = new QRubberBand(QRubberBand::Rectangle, m_area.viewport());
    m_band->setGeometry(place.shown);
    m_band->raise();
    m_band->show();
}

void Documents::Drop(WindowFrame& frame, const QPoint& global) {
    delete m_band;
    const DropPlace place = PlaceAt(frame, global);
    const bool isOwn = frame.Held() == WindowFrame::Holding::Own;
    if (place.isOutside) {
        if (isOwn)
            frame.Widget()->move(global - QPoint(40, 12));
        else
            ToOwn(frame, global - QPoint(40, 12));
    } else if (!place.shown.isEmpty()) {
        MoveTo(frame, place);
    }
}

} // namespace corvane::desktop
