#include "desktop/problems/ProblemList.h"

#include "analysis/Print.h"
#include "desktop/style/QtText.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QUrl>
#include <algorithm>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr int findingRole = Qt::UserRole; // its number; -1 for what is none
constexpr int pathRole = Qt::UserRole + 1;
constexpr int groupRole = Qt::UserRole + 2; // the key of a line that counts others

// A file that is linked into the folder is reported by its own folder and its name; the tooltip has the whole path.
QString Beside(const QString& path, const QString& folder) {
    return path.startsWith(folder + "/") ? path.mid(folder.size() + 1) : path.section('/', -2);
}

QString PlaceText(const check::Place& place, const QString& folder) {
    QString text = Beside(Text(place.file), folder);
    if (place.at.line > 0)
        text += QString(":%1").arg(place.at.line);
    if (place.at.line > 0 && place.at.column > 0)
        text += QString(":%1").arg(place.at.column);
    return text;
}

// Rows as high as their texts are in the width of their columns, which the view doesn't tell.
class WrappedRows final : public QStyledItemDelegate {
public:
    explicit WrappedRows(QTreeView* view) : QStyledItemDelegate(view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        if (m_view->header()->sectionResizeMode(index.column()) != QHeaderView::Stretch)
            return size;
        const int margin = m_view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_view) + 1;
        const QRect room(0, 0, m_view->columnWidth(index.column()) - 2 * margin, 10000);
        const QRect text = option.fontMetrics.boundingRect(room, Qt::TextWordWrap, index.data().toString());
        size.setHeight(qMax(size.height(), text.height() + 2));
        return size;
    }

private:
    QTreeView* m_view;
};

} // namespace

ProblemList::ProblemList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels({tr("Location"), tr("Problem"), tr("Remedy"), tr("Rule")});
    setAccessibleName(tr("Problems"));
    setRootIsDecorated(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setWordWrap(true);
    setItemDelegate(new WrappedRows(this));
    setTextElideMode(Qt::ElideNone);
    setFrameShape(NoFrame);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(1, QHeaderView::Stretch);
    header()->setSectionResizeMode(2, QHeaderView::Stretch);
    header()->setSectionResizeMode(3, QHeaderView::ResizeToContents);
    // The height of a row comes from the width of its texts.
    connect(header(), &QHeaderView::sectionResized, this, [this] { scheduleDelayedItemsLayout(); });
    const auto keep = [this](const QTreeWidgetItem* item) {
        if (const QString key = item->data(0, groupRole).toString(); !m_isFilling && !key.isEmpty())
            m_folds[key] = !item->isExpanded();
    };
    connect(this, &QTreeWidget::itemExpanded, this, keep);
    connect(this, &QTreeWidget::itemCollapsed, this, keep);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { Open(*item); });
}

void ProblemList::Show(std::vector<check::Finding> findings, const QString& folder) {
    ShowWith({}, std::move(findings), folder);
}

QTreeWidgetItem* ProblemList::Add(QTreeWidgetItem* parent, const QStringList& texts) {
    auto* item = parent ? new QTreeWidgetItem(parent, texts) : new QTreeWidgetItem(this, texts);
    item->setData(0, findingRole, -1);
    for (int i = 0; i < texts.size(); ++i)
        item->setTextAlignment(i, Qt::AlignLeft | Qt::AlignTop);
    return item;
}

void ProblemList::ShowWith(const QStringList& others, std::vector<check::Finding> findings, const QString& folder) {
    m_isFilling = true;
    clear();
    m_findings = std::move(findings);
    m_others = others;
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const check::Finding& first, const check::Finding& second) {
                         const auto Key = [](const check::Finding& each) {
                             return std::pair(check::TextOf(each.rule).severity, each.rule);
                         };
                         return Key(first) < Key(second);
                     });
    for (const QString& other : others)
        Add(nullptr, {QString(), other, QString(), QString()})
            ->setIcon(0, style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this));
    for (std::size_t begin = 0, end = 0; begin < m_findings.size(); begin = end) {
        while (end < m_findings.size() && m_findings[end].rule == m_findings[begin].rule)
            ++end;
        AddRule(begin, end, folder);
    }
    m_isFilling = false;
}

// Few are listed as they are, more below a line of their own, and many of one file below one more.
void ProblemList::AddRule(std::size_t begin, std::size_t end, const QString& folder) {
    constexpr std::size_t few = 3;
    constexpr std::size_t many = 10;
    const check::RuleText& rule = check::TextOf(m_findings[begin].rule);
    const std::size_t count = end - begin;
    QTreeWidgetItem* group = nullptr;
    if (count > few)
        group = AddGroup(nullptr, {tr("%1 times").arg(count), Text(rule.summary), QString(), Text(rule.name)},
                         Text(rule.name));
    for (std::size_t i = begin; i < end;) {
        std::size_t behind = i;
        while (behind < end && m_findings[behind].place.file == m_findings[i].place.file)
            ++behind;
        QTreeWidgetItem* parent = group;
        if (group && behind - i > few && behind - i < count) {
            const QString file = Beside(Text(m_findings[i].place.file), folder);
            parent = AddGroup(group, {file, tr("%1 times").arg(behind - i)}, Text(rule.name) + "|" + file);
        }
        for (; i < behind; ++i)
            AddFinding(parent, i, folder);
        if (parent != group)
            Fold(*parent, false);
    }
    if (group)
        Fold(*group, rule.severity != check::Severity::Error && count > many);
}

QTreeWidgetItem* ProblemList::AddGroup(QTreeWidgetItem* parent, const QStringList& texts, const QString& key) {
    auto* group = Add(parent, texts);
    group->setData(0, groupRole, key);
    return group;
}

// As the user has left it, else as it is said.
void ProblemList::Fold(QTreeWidgetItem& group, bool isFolded) {
    group.setExpanded(!m_folds.value(group.data(0, groupRole).toString(), isFolded));
}

void ProblemList::AddFinding(QTreeWidgetItem* parent, std::size_t number, const QString& folder) {
    const check::Finding& finding = m_findings[number];
    const check::RuleText& rule = check::TextOf(finding.rule);
    const bool isError = rule.severity == check::Severity::Error;
    const QIcon icon =
        style()->standardIcon(isError ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning, nullptr, this);
    auto* item =
        Add(parent, {PlaceText(finding.place, folder), Text(finding.text), Text(finding.cure), Text(rule.name)});
    item->setIcon(0, icon);
    for (QTreeWidgetItem* group = parent; group; group = group->parent())
        group->setIcon(0, icon);
    item->setData(0, Qt::AccessibleTextRole, (isError ? tr("Error in %1") : tr("Warning in %1")).arg(item->text(0)));
    item->setToolTip(0, Text(finding.place.file));
    item->setToolTip(3, Text(rule.summary));
    item->setData(0, findingRole, static_cast<int>(number));
    item->setData(0, pathRole, Text(finding.place.file));
    for (const check::Note& note : finding.notes)
        Add(item, {PlaceText(note.place, folder), Text(note.text)})->setData(0, pathRole, Text(note.place.file));
    item->setExpanded(true);
}

const check::Finding* ProblemList::FindingOf(const QTreeWidgetItem* item) const {
    for (; item; item = item->parent()) // a second place is below the first
        if (const int number = item->data(0, findingRole).toInt(); number >= 0)
            return &m_findings[static_cast<std::size_t>(number)];
    return nullptr;
}

void ProblemList::MakeFirstErrorCurrent() {
    QTreeWidgetItem* first = topLevelItem(static_cast<int>(m_others.size()));
    while (first && first->data(0, findingRole).toInt() < 0 && first->childCount() > 0)
        first = first->child(0);
    if (first)
        setCurrentItem(first, 0, QItemSelectionModel::NoUpdate); // chosen lines alone would be copied
}

// All of them, or those that are chosen, also by the line that counts them.
void ProblemList::Copy() const {
    std::string text;
    const bool all = selectedItems().isEmpty();
    const auto add = [&](const auto& self, QTreeWidgetItem* item, bool isChosen) -> void {
        isChosen |= item->isSelected();
        const int finding = item->data(0, findingRole).toInt();
        const bool isGroup = !item->data(0, groupRole).toString().isEmpty();
        if (isChosen && finding >= 0)
            text += check::AsText({&m_findings[static_cast<std::size_t>(finding)], 1}, false);
        else if (isChosen && !isGroup)
            text += item->text(1).toStdString() + "\n";
        for (int i = 0; isGroup && i < item->childCount(); ++i)
            self(self, item->child(i), isChosen);
    };
    for (int i = 0; i < topLevelItemCount(); ++i)
        add(add, topLevelItem(i), all);
    QApplication::clipboard()->setText(QString::fromStdString(text));
}

void ProblemList::Open(const QTreeWidgetItem& item) const {
    const QString path = item.data(0, pathRole).toString();
    if (!path.isEmpty() && QFileInfo::exists(path))
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
}

void ProblemList::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        Copy();
    else
        QTreeWidget::keyPressEvent(event);
}

} // namespace corvane::desktop

#include "moc_ProblemList.cpp"
