#include "TablePage.h"

#include "DataTableView.h"
#include "QtText.h"
#include "Report.h"
#include "Windows.h"
#include "corvane/base/Failure.h"

#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

void TablePage::OnInitialize() {
    Keep(About<DataSetContext>()->Space()->Changed.Subscribe([this](const std::string&) { FollowData(); }));
}

// What is in no study is as its file is: it has no properties of its own.
void TablePage::OnActivate() {
    EnableAction("Properties", About<DataSetContext>()->Space()->Keeps());
}

QWidget* TablePage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pModel = new DataTableModel(About<DataSetContext>(), pPage);
    m_pView = new DataTableView;
    m_pView->SetData(m_pModel);
    m_pProblem = new ProblemLabel;
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addLayout(MakeFilterRow());
    pLayout->addWidget(m_pView, 1);
    pLayout->addWidget(m_pProblem);
    QObject::connect(m_pView, &DataTableView::Refused, pPage, [this](const QString& s) { m_pProblem->Show(s); });
    QObject::connect(m_pModel, &QAbstractItemModel::dataChanged, pPage, [this] { m_pProblem->Show({}); });
    QObject::connect(m_pModel, &QAbstractItemModel::modelReset, pPage, [this] { CountRows(); });
    CountRows();
    return pPage;
}

QLayout* TablePage::MakeFilterRow() {
    auto* pRow = new QHBoxLayout;
    m_pFilterColumn = new QComboBox;
    FillColumns(*m_pFilterColumn, m_pModel->Columns(), false, "Any column");
    m_pFilter = new QLineEdit;
    m_pFilter->setPlaceholderText("Text; for one column also > 4000, <> Adelie, = (missing)");
    m_pFilter->setToolTip("Shows rows with a value that contains this text.\nFor a selected column also =, <>, <, <=, "
                          ">, >= and a value; = alone finds missing values.");
    m_pFilter->setClearButtonEnabled(true);
    m_pCount = new QLabel;
    AddLabelled(*pRow, "&Rows where", m_pFilterColumn);
    pRow->setStretch(1, 0);
    AddLabelled(*pRow, "contain&s", m_pFilter);
    pRow->addWidget(m_pCount);
    // Not with every letter: in a large table a filter takes a moment.
    auto* pPause = new QTimer(m_pFilter);
    pPause->setSingleShot(true);
    pPause->setInterval(200);
    QObject::connect(pPause, &QTimer::timeout, m_pFilter, [this] { Guarded([this] { Filter(); }); });
    QObject::connect(m_pFilter, &QLineEdit::textChanged, pPause, [pPause] { pPause->start(); });
    QObject::connect(m_pFilter, &QLineEdit::returnPressed, m_pFilter, [this] { Guarded([this] { Filter(); }); });
    QObject::connect(m_pFilterColumn, &QComboBox::currentIndexChanged, m_pFilter,
                     [this] { Guarded([this] { Filter(); }); });
    return pRow;
}

QWidget* TablePage::FirstFocus() {
    return m_pView;
}

void TablePage::Filter() {
    try {
        m_pModel->SetFilter(m_pFilterColumn->currentIndex() - 1, m_pFilter->text());
        m_pProblem->Show({});
    } catch (const Failure& oFailure) {
        m_pProblem->Show(Text(oFailure.Description));
    }
}

void TablePage::CountRows() {
    const auto nAll = static_cast<std::size_t>(About<DataSetContext>()->Info().nRows);
    const auto nShown = static_cast<std::size_t>(m_pModel->rowCount());
    m_pCount->setText(Text(nShown == nAll ? CountText(nAll) + (nAll == 1 ? " row" : " rows")
                                          : CountText(nShown) + " of " + CountText(nAll)));
}

void TablePage::FollowData() {
    if (m_pModel && About<DataSetContext>()->Exists())
        m_pModel->Reload();
}

void TablePage::OnCopy() {
    if (m_pView)
        m_pView->Copy();
}

void TablePage::OnExport() {
    AskInWindow("Export", About<DataSetContext>(), "Export " + About<DataSetContext>()->Info().sName);
}

void TablePage::OnProperties() {
    AskInWindow("DataSetProperties", About<DataSetContext>(), "Properties of " + About<DataSetContext>()->Info().sName);
}

void TablePage::OnAnalyse(const Ref<ActionItem>& oActionItem) {
    OpenNewAnalysis(About<DataSetContext>(), oActionItem->Name());
}

} // namespace studies
