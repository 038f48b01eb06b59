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

constexpr int nLookMilliseconds = 1000; // while it is shown

} // namespace

LogView::LogView(const QString& sLogFile, QWidget* pParent)
    : QWidget(pParent), m_pModel(new LogModel(sLogFile, this)), m_pShown(new QSortFilterProxyModel(this)),
      m_pFilter(new QLineEdit), m_pTable(new QTableView), m_pLine(new QPlainTextEdit), m_pState(new QLabel) {
    m_pShown->setSourceModel(m_pModel);
    m_pShown->setFilterKeyColumn(-1);
    m_pShown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_pFilter->setPlaceholderText(tr("Show only lines with this text"));
    m_pFilter->setAccessibleName(tr("Filter"));
    AddClearButton(*m_pFilter);
    m_pTable->setModel(m_pShown);
    m_pTable->setAccessibleName(tr("Log"));
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setWordWrap(false);
    m_pTable->setShowGrid(false);
    m_pTable->setTabKeyNavigation(false);
    m_pTable->verticalHeader()->hide();
    m_pTable->verticalHeader()->setDefaultSectionSize(m_pTable->fontMetrics().height() + 6);
    m_pTable->horizontalHeader()->setStretchLastSection(true);
    m_pTable->setColumnWidth(LogModel::Time, m_pTable->fontMetrics().horizontalAdvance("0000-00-00 00:00:00") + 16);
    m_pTable->setColumnWidth(LogModel::Text, 300);
    m_pTable->setColumnWidth(LogModel::Where, 180);
    m_pTable->setColumnWidth(LogModel::Number, m_pTable->fontMetrics().horizontalAdvance("-2147221504") + 16);
    m_pLine->setReadOnly(true);
    m_pLine->setAccessibleName(tr("Full Entry"));
    auto* pSplitter = new QSplitter(Qt::Vertical);
    pSplitter->addWidget(m_pTable);
    pSplitter->addWidget(m_pLine);
    pSplitter->setStretchFactor(0, 4);
    pSplitter->setStretchFactor(1, 1);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pFilter);
    pLayout->addWidget(pSplitter, 1);
    pLayout->addWidget(m_pState);
    auto* pCopy = new QAction(tr("&Copy"), m_pTable);
    pCopy->setShortcut(QKeySequence::Copy);
    pCopy->setShortcutContext(Qt::WidgetShortcut);
    m_pTable->addAction(pCopy);
    m_pTable->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(pCopy, &QAction::triggered, this, &LogView::Copy);
    connect(m_pFilter, &QLineEdit::textChanged, this, [this](const QString& sText) {
        m_pShown->setFilterFixedString(sText);
        Update();
    });
    connect(m_pTable->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &LogView::ShowLine);
    startTimer(nLookMilliseconds);
    Update();
}

void LogView::showEvent(QShowEvent* pEvent) {
    QWidget::showEvent(pEvent);
    m_pModel->Read();
    Update();
    m_pTable->scrollToBottom();
}

void LogView::timerEvent(QTimerEvent*) {
    if (!isVisible())
        return;
    const bool bAtEnd = m_pTable->verticalScrollBar()->value() == m_pTable->verticalScrollBar()->maximum();
    m_pModel->Read();
    Update();
    if (bAtEnd)
        m_pTable->scrollToBottom();
}

void LogView::Update() {
    const int nAll = m_pModel->rowCount();
    m_pState->setText(nAll == 0 ? tr("The log is empty: there have been no errors.")
                                : tr("%1 of %2 lines").arg(m_pShown->rowCount()).arg(nAll));
}

void LogView::ShowLine() {
    const QModelIndex oCurrent = m_pShown->mapToSource(m_pTable->currentIndex());
    if (!oCurrent.isValid()) {
        m_pLine->clear();
        return;
    }
    const LogLine& oLine = m_pModel->Lines()[static_cast<std::size_t>(oCurrent.row())];
    m_pLine->setPlainText(oLine.sContext.isEmpty() ? oLine.sText : oLine.sText + "\n" + oLine.sContext);
}

QString LogView::Text() const {
    QStringList aLines;
    const QModelIndexList aSelected = m_pTable->selectionModel()->selectedRows();
    for (int i = 0; i < m_pShown->rowCount(); ++i)
        if (aSelected.isEmpty() || m_pTable->selectionModel()->isRowSelected(i, {}))
            aLines.append(
                m_pModel->Lines()[static_cast<std::size_t>(m_pShown->mapToSource(m_pShown->index(i, 0)).row())].sRaw);
    return aLines.join('\n');
}

void LogView::Copy() const {
    QApplication::clipboard()->setText(Text());
}

QStringList LogView::LatestLines(int nMost) const {
    QStringList aLines;
    const auto& aAll = m_pModel->Lines();
    const std::size_t n = std::min(aAll.size(), static_cast<std::size_t>(nMost));
    for (std::size_t i = aAll.size() - n; i < aAll.size(); ++i)
        aLines.append(aAll[i].sRaw);
    return aLines;
}

} // namespace corvane::desktop
