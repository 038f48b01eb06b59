#include "desktop/log/LogView.h"

#include "desktop/style/ClearButton.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int lookMilliseconds = 1000; // while it is shown

} // namespace

LogView::LogView(const QString& logFile, QWidget* parent)
    : QWidget(parent), m_model(new LogModel(logFile, this)), m_shown(new QSortFilterProxyModel(this)),
      m_filter(new QLineEdit), m_table(new QTableView), m_line(new QPlainTextEdit), m_halves(new QSplitter),
      m_state(new QLabel) {
    m_shown->setSourceModel(m_model);
    m_shown->setFilterKeyColumn(-1);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setPlaceholderText(tr("Show only lines with this text"));
    m_filter->setAccessibleName(tr("Filter"));
    AddClearButton(*m_filter);
    m_table->setModel(m_shown);
    m_table->setAccessibleName(tr("Log"));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setWordWrap(false);
    m_table->setShowGrid(false);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setColumnWidth(LogModel::Time, m_table->fontMetrics().horizontalAdvance("0000-00-00 00:00:00") + 16);
    m_table->setColumnWidth(LogModel::Text, 300);
    m_table->setColumnWidth(LogModel::Where, 180);
    m_table->setColumnWidth(LogModel::Number, m_table->fontMetrics().horizontalAdvance("-2147221504") + 16);
    m_line->setReadOnly(true);
    m_line->setAccessibleName(tr("Full Entry"));
    m_halves->addWidget(m_table);
    m_halves->addWidget(m_line);
    m_halves->setStretchFactor(0, 4);
    m_halves->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_filter);
    layout->addWidget(m_halves, 1);
    layout->addWidget(m_state);
    auto* copy = new QAction(tr("&Copy"), m_table);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copy);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(copy, &QAction::triggered, this, &LogView::Copy);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_shown->setFilterFixedString(text);
        Update();
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &LogView::ShowLine);
    startTimer(lookMilliseconds);
    Update();
}

// The full entry is beside the table where it is wider than high, as at the bottom of the window.
void LogView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_halves->setOrientation(width() > 2 * height() ? Qt::Horizontal : Qt::Vertical);
}

void LogView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    m_model->Read();
    Update();
    m_table->scrollToBottom();
}

void LogView::timerEvent(QTimerEvent*) {
    if (!isVisible())
        return;
    const bool atEnd = m_table->verticalScrollBar()->value() == m_table->verticalScrollBar()->maximum();
    m_model->Read();
    Update();
    if (atEnd)
        m_table->scrollToBottom();
}

void LogView::Update() {
    const int all = m_model->rowCount();
    m_state->setText(all == 0 ? tr("The log is empty: there have been no errors.")
                              : tr("%1 of %2 lines").arg(m_shown->rowCount()).arg(all));
}

void LogView::ShowLine() {
    const QModelIndex current = m_shown->mapToSource(m_table->currentIndex());
    if (!current.isValid()) {
        m_line->clear();
        return;
    }
    const LogLine& line = m_model->Lines()[static_cast<std::size_t>(current.row())];
    m_line->setPlainText(line.context.isEmpty() ? line.text : line.text + "\n" + line.context);
}

QString LogView::Text() const {
    QStringList lines;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    for (int i = 0; i < m_shown->rowCount(); ++i)
        if (selected.isEmpty() || m_table->selectionModel()->isRowSelected(i, {}))
            lines.append(
                m_model->Lines()[static_cast<std::size_t>(m_shown->mapToSource(m_shown->index(i, 0)).row())].raw);
    return lines.join('\n');
}

void LogView::Copy() const {
    QApplication::clipboard()->setText(Text());
}

QStringList LogView::LatestLines(int most) const {
    QStringList lines;
    const auto& all = m_model->Lines();
    const std::size_t n = std::min(all.size(), static_cast<std::size_t>(most));
    for (std::size_t i = all.size() - n; i < all.size(); ++i)
        lines.append(all[i].raw);
    return lines;
}

} // namespace corvane::desktop

#include "moc_LogView.cpp"
