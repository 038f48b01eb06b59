// Dragging what is selected onto an item, by mouse and by keyboard, and dropping files. The items' classes decide.
#include "desktop/explorer/ExplorerTree.h"
#include "desktop/translation/ShownText.h"

#include <QApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QUrl>

namespace corvane::desktop {

namespace {

constexpr const char* itemsType = "application/x-corvane-items"; // the tree that is the drag's source has them

std::vector<std::string> FilesIn(const QMimeData& data) {
    std::vector<std::string> files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files.push_back(url.toLocalFile().toStdString());
    return files;
}

// A label beside the pointer.
QPixmap PictureOf(const QString& text, const QWidget& widget) {
    const QFontMetrics metrics = widget.fontMetrics();
    const QString shown = metrics.elidedText(text, Qt::ElideMiddle, 240);
    const QSize size(metrics.horizontalAdvance(shown) + 16, metrics.height() + 8);
    const qreal ratio = widget.devicePixelRatioF();
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    QPainter painter(&picture);
    painter.fillRect(QRect(QPoint(), size), widget.palette().color(QPalette::ToolTipBase));
    painter.setPen(widget.palette().color(QPalette::ToolTipText));
    painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
    painter.setFont(widget.font());
    painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, shown);
    return picture;
}

} // namespace

// The press has selected the node already; its click comes first, so that the item is the active one.
void ExplorerTree::StartDrag() {
    m_pressPending = m_becomesOne = false;
    const Ref<Node> node = std::exchange(m_pressed, nullptr);
    if (!node->IsInTree() || !m_items->TakesDrops() || !ReportNode(node))
        return;
    m_taken = nullptr;
    const auto selection = m_items->Selected();
    m_dragged = selection->Has(*node) ? selection->Nodes() : std::vector{node};
    const QString text =
        m_dragged.size() == 1 ? ShownNode(*m_treeView, *node) : tr("%n items", "", static_cast<int>(m_dragged.size()));
    const QPointer<ExplorerTree> still = this;
    auto* drag = new QDrag(this);
    auto* content = new QMimeData;
    content->setData(QLatin1String(itemsType), {});
    drag->setMimeData(content);
    drag->setPixmap(PictureOf(text, *this));
    drag->setHotSpot({-12, -12});
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    if (!still)
        return;
    m_dragged.clear();
    m_taken = nullptr;
    ForgetTarget();
    setState(NoState);
    if (const auto dropsLater = std::exchange(m_dropsLater, nullptr))
        dropsLater();
}

// The same for each row on the way, until something leaves the tree.
const Ref<Dropped>& ExplorerTree::Taken(const std::vector<Ref<Node>>& nodes, bool copies) {
    if (!m_taken || m_taken->Copies() != copies)
        m_taken = m_items->DroppedOf(nodes, copies);
    return m_taken;
}

// Nothing for what comes from elsewhere and holds no files.
Ref<Dropped> ExplorerTree::DroppedBy(const QDropEvent& event, bool copies) const {
    if (auto* source = qobject_cast<ExplorerTree*>(event.source());
        source && event.mimeData()->hasFormat(QLatin1String(itemsType)))
        return source->m_items == m_items ? source->Taken(source->m_dragged, copies) : nullptr;
    std::vector<std::string> files = FilesIn(*event.mimeData());
    return files.empty() ? nullptr : New<Dropped>(std::vector<Ref<Object>>(), std::move(files), copies);
}

// Beside all rows the one root is meant.
Ref<Node> ExplorerTree::TargetAt(const QPoint& point) const {
    if (const QModelIndex index = indexAt(point); index.isValid())
        return Ref<Node>(Shown()->NodeAt(index));
    const auto& roots = m_treeView->GetNodes()->Roots();
    return roots.size() == 1 ? Ref<Node>(roots.front()) : nullptr;
}

// Asked once for each row. What fails is a refusal that says why: a dialog has no place in a drag.
void ExplorerTree::AskTarget(const Ref<Node>& node, const Ref<Dropped>& dropped) {
    if (m_target.node == node && m_target.copies == dropped->Copies())
        return;
    RedrawTarget();
    m_target = {node, dropped->Copies()};
    try {
        if (node)
            m_target.answer = m_items->CanDrop(*node, dropped);
    } catch (const Failure& failure) {
        m_target.answer = {false, failure.Description};
    }
    const QString why = QString::fromStdString(m_target.answer.why);
    ShowNote(why, node ? visualRect(IndexOf(node.Get())) : QRect());
    RedrawTarget();
}

// Its row has a frame.
void ExplorerTree::RedrawTarget() {
    if (m_target.node)
        viewport()->update(visualRect(IndexOf(m_target.node.Get())));
}

void ExplorerTree::ForgetTarget() {
    if (!m_target.node && Note().isEmpty())
        return;
    RedrawTarget();
    m_target = {};
    ShowNote({}, {});
}

void ExplorerTree::dragEnterEvent(QDragEnterEvent* event) {
    m_target = {};
    if (!DroppedBy(*event, false)) {
        event->ignore();
        return;
    }
    setState(DraggingState);
    event->accept();
}

void ExplorerTree::dragMoveEvent(QDragMoveEvent* event) {
    QTreeView::dragMoveEvent(event); // scrolls at the edges, and opens a folder below the pointer after a while
    const Ref<Dropped> dropped = DroppedBy(*event, event->modifiers().testFlag(Qt::ControlModifier));
    if (!dropped) {
        event->ignore();
        return;
    }
    AskTarget(TargetAt(event->position().toPoint()), dropped);
    const bool toWindow = !dropped->Files().empty() && m_takesFiles && m_takesFiles();
    if (!m_target.answer.accepts && !toWindow) {
        event->ignore();
        return;
    }
    event->setDropAction(dropped->Copies() || !dropped->Files().empty() ? Qt::CopyAction : Qt::MoveAction);
    event->accept();
}

void ExplorerTree::dragLeaveEvent(QDragLeaveEvent* event) {
    QTreeView::dragLeaveEvent(event);
    setState(NoState);
    ForgetTarget();
}

// Done once the drag is over: what is called may show a dialog.
void ExplorerTree::dropEvent(QDropEvent* event) {
    const Ref<Dropped> dropped = DroppedBy(*event, event->modifiers().testFlag(Qt::ControlModifier));
    const Ref<Node> node = TargetAt(event->position().toPoint());
    stopAutoScroll();
    setState(NoState);
    ForgetTarget();
    if (!dropped) {
        event->ignore();
        return;
    }
    event->accept();
    auto drops = [tree = QPointer(this), node, dropped] {
        if (tree)
            tree->DropOn(node, dropped);
    };
    auto* source = qobject_cast<ExplorerTree*>(event->source());
    if (source && !source->m_dragged.empty())
        source->m_dropsLater = std::move(drops);
    else
        QMetaObject::invokeMethod(this, std::move(drops), Qt::QueuedConnection);
}

void ExplorerTree::DropOn(const Ref<Node>& node, const Ref<Dropped>& dropped) {
    const QPointer<ExplorerTree> still = this;
    const items::DropAnswer answer = node ? m_items->Drop(m_treeView, node, dropped) : items::DropAnswer();
    if (!still || answer.accepts)
        return;
    if (!answer.why.empty()) {
        ShowNote(QString::fromStdString(answer.why), visualRect(IndexOf(node.Get())));
    } else if (!answer.failed && !dropped->Files().empty()) {
        QStringList files;
        for (const std::string& file : dropped->Files())
            files << QString::fromStdString(file);
        Q_EMIT FilesDropped(files);
    }
}

// By keyboard.

void ExplorerTree::StartCarrying() {
    const auto selection = m_items->Selected();
    std::vector<Ref<Node>> nodes = selection->Tree() == m_treeView ? selection->Nodes() : std::vector<Ref<Node>>();
    if (nodes.empty())
        return;
    if (!m_items->TakesDrops()) {
        ShowNote(tr("Nothing here takes other items."), visualRect(currentIndex()));
        return;
    }
    m_carried = std::move(nodes);
    m_taken = nullptr;
    ShowCarried();
}

void ExplorerTree::ShowCarried() {
    const QModelIndex index = currentIndex();
    const Ref<Node> node(Shown()->NodeAt(index));
    AskTarget(node, Taken(m_carried, false));
    QString text = m_carried.size() == 1 ? ShownNode(*m_treeView, *m_carried.front())
                                         : tr("%n items", "", static_cast<int>(m_carried.size()));
    text = m_target.answer.accepts       ? tr("Return moves %1 here, Ctrl+Return copies. Esc cancels.").arg(text)
           : m_target.answer.why.empty() ? tr("Go to the target of %1 with the arrow keys. Esc cancels.").arg(text)
                                         : QString::fromStdString(m_target.answer.why);
    ShowNote(text, visualRect(index));
}

bool ExplorerTree::KeyWhileCarrying(QKeyEvent& event) {
    if (!IsCarrying()) {
        ForgetTarget(); // what was said last has been read
        return false;
    }
    const bool drops = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (event.key() == Qt::Key_Escape || drops) {
        const Ref<Node> target(Shown()->NodeAt(currentIndex()));
        const Ref<Dropped> dropped = m_items->DroppedOf(m_carried, event.modifiers().testFlag(Qt::ControlModifier));
        m_carried.clear();
        m_taken = nullptr;
        ForgetTarget();
        m_selectionMoved = true;
        m_model->Schedule();
        if (drops && target)
            DropOn(target, dropped);
        return true;
    }
    const QScopedValueRollback byKey(m_byKey, false); // the way there selects nothing
    QTreeView::keyPressEvent(&event);
    if (IsCarrying())
        ShowCarried();
    return true;
}

void ExplorerTree::focusOutEvent(QFocusEvent* event) {
    QTreeView::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason)
        return;
    m_carried.clear();
    m_taken = nullptr;
    ForgetTarget();
}

} // namespace corvane::desktop
