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

namespace corvane::desktop {

namespace {

constexpr int findingRole = Qt::UserRole; // its number; -1 for what is none
constexpr int pathRole = Qt::UserRole + 1;

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
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { Open(*item); });
}

void ProblemList::Show(std::vector<check::Finding> findings, const QString& folder) {
    ShowWith({}, std::move(findings), folder);
}

void ProblemList::ShowWith(const QStringList& others, std::vector<check::Finding> findings, const QString& folder) {
    clear();
    m_findings = std::move(findings);
    m_others = others;
    const QIcon error = style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this);
    const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this);
    const auto add = [this](auto* parent, const QStringList& texts) {
        auto* item = new QTreeWidgetItem(parent, texts);
        item->setData(0, findingRole, -1);
        for (int i = 0; i < texts.size(); ++i)
            item->setTextAlignment(i, Qt::AlignLeft | Qt::AlignTop);
        return item;
    };
    for (const QString& other : others) {
        auto* item = add(this, {QString(), other, QString(), QString()});
        item->setIcon(0, error);
    }
    for (std::size_t i = 0; i < m_findings.size(); ++i) {
        const check::Finding& finding = m_findings[i];
        const check::RuleText& rule = check::TextOf(finding.rule);
        const bool isError = rule.severity == check::Severity::Error;
        auto* item =
            add(this, {PlaceText(finding.place, folder), Text(finding.text), Text(finding.cure), Text(rule.name)});
        item->setIcon(0, isError ? error : warning);
        item->setData(0, Qt::AccessibleTextRole,
                      (isError ? tr("Error in %1") : tr("Warning in %1")).arg(item->text(0)));
        item->setToolTip(0, Text(finding.place.file));
        item->setToolTip(3, Text(rule.summary));
        item->setData(0, findingRole, static_cast<int>(i));
        item->setData(0, pathRole, Text(finding.place.file));
        for (const check::Note& note : finding.notes) {
            auto* noteItem = add(item, {PlaceText(note.place, folder), Text(note.text)});
            noteItem->setData(0, pathRole, Text(note.place.file));
        }
    }
    expandAll();
}

void ProblemList::Copy() const {
    std::string text;
    const auto items = selectedItems();
    for (int i = 0; i < topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = topLevelItem(i);
        if (!items.isEmpty() && !item->isSelected())
            continue;
        const int finding = item->data(0, findingRole).toInt();
        if (finding < 0)
            text += item->text(1).toStdString() + "\n";
        else
            text += check::AsText({&m_findings[static_cast<std::size_t>(finding)], 1}, false);
    }
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
