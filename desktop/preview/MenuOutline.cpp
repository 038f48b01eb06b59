#include "desktop/preview/MenuOutline.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"
#include "desktop/style/QtText.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMenu>
#include <QStyle>
#include <algorithm>
#include <map>

namespace corvane::desktop {

namespace {

constexpr int keyRole = Qt::UserRole;      // of an entry; empty for a line
constexpr int lineRole = Qt::UserRole + 1; // its number among all

// What a user reads of a caption.
QString WithoutMarks(const std::string& caption) {
    return Text(caption).remove('#');
}

} // namespace

MenuOutline::MenuOutline(QWidget* parent)
    : QTreeWidget(parent), m_up(AddAction(tr("Move &Up"), QKeySequence(Qt::ALT | Qt::Key_Up), [this] { Move(-1); })),
      m_down(AddAction(tr("Move &Down"), QKeySequence(Qt::ALT | Qt::Key_Down), [this] { Move(1); })),
      m_line(AddAction(tr("&Line Below"), QKeySequence(Qt::ALT | Qt::Key_Minus), [this] { ToggleLine(); })),
      m_undo(AddAction(tr("&Undo Move"), QKeySequence::Undo, [this] { Undo(); })) {
    setHeaderLabels({tr("Entry"), tr("Caption"), tr("File")});
    setAccessibleName(tr("Order of the menus"));
    setFrameShape(NoFrame);
    setDragDropMode(InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::currentItemChanged, this, &MenuOutline::UpdateActions);
    UpdateActions();
}

QAction* MenuOutline::AddAction(const QString& text, const QKeySequence& keys, std::function<void()> act) {
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, std::move(act));
    addAction(action);
    return action;
}

void MenuOutline::Show(const std::string& folder, std::vector<check::OutlineLine> lines,
                       const std::vector<check::Finding>& findings) {
    std::map<QString, bool> folded;
    for (int i = 0; i < topLevelItemCount(); ++i)
        folded[topLevelItem(i)->text(0)] = !topLevelItem(i)->isExpanded();
    const QTreeWidgetItem* current = currentItem();
    const QString currentMenu = current && current->parent() ? current->parent()->text(0) : QString();
    const QString currentKey = current ? current->data(0, keyRole).toString() : QString();
    clear();
    m_folder = folder;
    m_lines = std::move(lines);
    QTreeWidgetItem* menu = nullptr;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const check::OutlineLine& line = m_lines[i];
        if (!menu || menu->text(0) != Text(line.heading)) {
            menu = new QTreeWidgetItem(this, {Text(line.heading)});
            menu->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled);
        }
        auto* item = new QTreeWidgetItem(menu);
        item->setData(0, lineRole, static_cast<int>(i));
        SetUpItem(*item, line);
        Mark(*item, line, findings);
        if (!currentKey.isEmpty() && menu->text(0) == currentMenu && currentKey == item->data(0, keyRole).toString())
            setCurrentItem(item);
    }
    for (int i = 0; i < topLevelItemCount(); ++i)
        topLevelItem(i)->setExpanded(!folded[topLevelItem(i)->text(0)]);
    UpdateActions();
}

void MenuOutline::SetUpItem(QTreeWidgetItem& item, const check::OutlineLine& line) {
    item.setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren);
    item.setData(0, keyRole, Text(line.key));
    if (line.key.empty()) {
        item.setText(0, QString(12, QChar(0x2014)));
        item.setData(0, Qt::AccessibleTextRole, tr("Separator"));
        return;
    }
    item.setText(0, Text(line.key));
    item.setText(1,
                 line.isLost ? tr("%1 (doesn't appear)").arg(WithoutMarks(line.caption)) : WithoutMarks(line.caption));
    item.setText(2, Text(line.places.front().file).section('/', -1));
    item.setToolTip(2, Text(line.places.front().file));
}

// By the worst that is found there.
void MenuOutline::Mark(QTreeWidgetItem& item, const check::OutlineLine& line,
                       const std::vector<check::Finding>& findings) const {
    const check::Finding* worst = nullptr;
    for (const check::Finding& finding : findings)
        if (line.IsAt(finding.place) &&
            (!worst || check::TextOf(finding.rule).severity < check::TextOf(worst->rule).severity))
            worst = &finding;
    if (!worst)
        return;
    const bool isError = check::TextOf(worst->rule).severity == check::Severity::Error;
    item.setIcon(0, style()->standardIcon(isError ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning,
                                          nullptr, this));
    item.setToolTip(0, Text(worst->text));
    item.setData(0, Qt::AccessibleDescriptionRole, Text(worst->text));
}

bool MenuOutline::Select(const check::Place& place) {
    for (int i = 0; i < topLevelItemCount(); ++i)
        for (int j = 0; j < topLevelItem(i)->childCount(); ++j) {
            QTreeWidgetItem* item = topLevelItem(i)->child(j);
            if (m_lines[static_cast<std::size_t>(item->data(0, lineRole).toInt())].IsAt(place)) {
                setCurrentItem(item);
                scrollToItem(item);
                return true;
            }
        }
    return false;
}

void MenuOutline::Move(int places) {
    QTreeWidgetItem* item = currentItem();
    QTreeWidgetItem* menu = item ? item->parent() : nullptr;
    const int from = menu ? menu->indexOfChild(item) : -1;
    const int to = from + places;
    if (!menu || to < 0 || to >= menu->childCount())
        return;
    menu->insertChild(to, menu->takeChild(from));
    setCurrentItem(item);
    Write(*menu);
}

void MenuOutline::ToggleLine() {
    QTreeWidgetItem* item = currentItem();
    QTreeWidgetItem* menu = item ? item->parent() : nullptr;
    if (!menu)
        return;
    const int at = menu->indexOfChild(item);
    QTreeWidgetItem* below = menu->child(at + 1);
    if (item->data(0, keyRole).toString().isEmpty()) {
        delete menu->takeChild(at);
    } else if (below && below->data(0, keyRole).toString().isEmpty()) {
        delete menu->takeChild(at + 1);
    } else {
        auto* line = new QTreeWidgetItem;
        SetUpItem(*line, {});
        menu->insertChild(at + 1, line);
    }
    Write(*menu);
}

void MenuOutline::Undo() {
    if (m_written.empty())
        return;
    const std::vector<check::FixedFile> files = std::move(m_written.back());
    m_written.pop_back();
    try {
        for (const check::FixedFile& file : files)
            if (ReadBytes(file.path) == file.after) // else it has been edited since
                check::ReplaceFile({file.path, file.after, file.before});
        Q_EMIT Written();
    } catch (...) {
        Q_EMIT Refused(Text(CurrentFailure().Description));
    }
    UpdateActions();
}

// One menu, in the order in which it is here.
void MenuOutline::Write(const QTreeWidgetItem& menu) {
    std::string outline = menu.text(0).toStdString() + "\n";
    for (int i = 0; i < menu.childCount(); ++i) {
        const QString key = menu.child(i)->data(0, keyRole).toString();
        outline += "  " + (key.isEmpty() ? std::string("---") : key.toStdString()) + "\n";
    }
    try {
        std::vector<check::FixedFile> files = check::Arrange({m_folder, false, {}}, outline, {});
        for (const check::FixedFile& file : files)
            check::ReplaceFile(file);
        if (!files.empty())
            m_written.push_back(std::move(files));
        Q_EMIT Written();
    } catch (...) {
        Q_EMIT Refused(Text(CurrentFailure().Description));
    }
    UpdateActions();
}

// An entry stays in its menu: another one is another Path, which moving doesn't write.
void MenuOutline::dragMoveEvent(QDragMoveEvent* event) {
    QTreeWidget::dragMoveEvent(event);
    const QTreeWidgetItem* target = itemAt(event->position().toPoint());
    const QTreeWidgetItem* dragged = currentItem();
    if (!target || !dragged || !dragged->parent() ||
        (target->parent() ? target->parent() : target) != dragged->parent())
        event->ignore();
}

void MenuOutline::dropEvent(QDropEvent* event) {
    QTreeWidgetItem* item = currentItem();
    QTreeWidgetItem* target = itemAt(event->position().toPoint());
    QTreeWidgetItem* menu = item ? item->parent() : nullptr;
    event->setDropAction(Qt::IgnoreAction); // the view would take the line away that has been moved here
    event->accept();
    if (!menu || !target || (target->parent() ? target->parent() : target) != menu)
        return;
    const int from = menu->indexOfChild(item);
    int to = target == menu ? 0 : menu->indexOfChild(target);
    if (target != menu && event->position().toPoint().y() > visualItemRect(target).center().y())
        ++to;
    to -= to > from ? 1 : 0;
    if (to != from)
        Move(to - from);
}

void MenuOutline::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addActions({m_up, m_down, m_line, m_undo});
    menu.exec(event->globalPos());
}

void MenuOutline::UpdateActions() {
    QTreeWidgetItem* item = currentItem();
    QTreeWidgetItem* menu = item ? item->parent() : nullptr;
    const int at = menu ? menu->indexOfChild(item) : -1;
    m_up->setEnabled(at > 0);
    m_down->setEnabled(menu && at + 1 < menu->childCount());
    const QString heading = menu ? menu->text(0) : QString();
    m_line->setEnabled(menu && !heading.startsWith("toolbar ") && heading != "menu bar");
    m_undo->setEnabled(CanUndo());
}

} // namespace corvane::desktop

#include "moc_MenuOutline.cpp"
