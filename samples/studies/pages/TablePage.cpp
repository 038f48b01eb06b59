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
    Keep(About()->Space()->Changed.Subscribe([this](const std::string&) { FollowData(); }));
}

// What is in no study is as its file is: it has no properties of its own.
void TablePage::OnActivate() {
    EnableAction("Properties", About()->Space()->Keeps());
    EnableAction("Delete", About()->Space()->Keeps());
}

QWidget* TablePage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_model = new DataTableModel(About(), Ref<Object>(this), page);
    m_view = new DataTableView;
    m_view->SetData(m_model);
    m_problem = new ProblemLabel;
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(MakeFilterRow());
    layout->addWidget(m_view, 1);
    layout->addWidget(m_problem);
    QObject::connect(m_view, &DataTableView::Refused, page, [this](const QString& s) { m_problem->Show(s); });
    QObject::connect(m_model, &QAbstractItemModel::dataChanged, page, [this] { m_problem->Show({}); });
    QObject::connect(m_model, &QAbstractItemModel::modelReset, page, [this] { CountRows(); });
    Connect(m_view.data(), &DataTableView::EditingEnded, [this] {
        if (!m_isBehind)
            return;
        const QString problem = m_problem->isVisible() ? m_problem->text() : QString(); // of what was typed
        FollowData();
        m_problem->Show(problem);
    });
    CountRows();
    return page;
}

QLayout* TablePage::MakeFilterRow() {
    auto* row = new QHBoxLayout;
    m_filterColumn = new QComboBox;
    FillColumns(*m_filterColumn, m_model->Columns(), false, "Any column");
    m_filter = new QLineEdit;
    m_filter->setPlaceholderText("Text; for one column also > 4000, <> Adelie, = (missing)");
    m_filter->setToolTip("Shows rows with a value that contains this text.\nFor a selected column also =, <>, <, <=, "
                         ">, >= and a value; = alone finds missing values.");
    m_filter->setClearButtonEnabled(true);
    m_count = new QLabel;
    AddLabelled(*row, "&Rows where", m_filterColumn);
    row->setStretch(1, 0);
    AddLabelled(*row, "contain&s", m_filter);
    row->addWidget(m_count);
    // Not with every letter: in a large table a filter takes a moment.
    auto* pause = new QTimer(m_filter);
    pause->setSingleShot(true);
    pause->setInterval(200);
    QObject::connect(pause, &QTimer::timeout, m_filter, [this] { Guarded([this] { Filter(); }); });
    QObject::connect(m_filter, &QLineEdit::textChanged, pause, [pause] { pause->start(); });
    QObject::connect(m_filter, &QLineEdit::returnPressed, m_filter, [this] { Guarded([this] { Filter(); }); });
    QObject::connect(m_filterColumn, &QComboBox::currentIndexChanged, m_filter,
                     [this] { Guarded([this] { Filter(); }); });
    return row;
}

QWidget* TablePage::FirstFocus() {
    return m_view;
}

void TablePage::Filter() {
    try {
        m_model->SetFilter(m_filterColumn->currentIndex() - 1, m_filter->text());
        m_problem->Show({});
    } catch (const Failure& failure) {
        m_problem->Show(Text(failure.Description));
    }
}

void TablePage::CountRows() {
    const auto all = static_cast<std::size_t>(About()->Info().rows);
    const auto shown = static_cast<std::size_t>(m_model->rowCount());
    m_count->setText(Text(shown == all ? CountText(all) + (all == 1 ? " row" : " rows")
                                       : CountText(shown) + " of " + CountText(all)));
}

void TablePage::FollowData() {
    m_isBehind = m_view && m_view->IsEditing();
    if (m_model && !m_isBehind && About()->Exists())
        m_model->Reload();
}

void TablePage::OnDelete() {
    if (m_view)
        m_view->ClearCells();
}

void TablePage::OnCopy() {
    if (m_view)
        m_view->Copy();
}

void TablePage::OnExport() {
    OpenWindow("Export", About(), {.caption = "Export " + About()->Info().name});
}

void TablePage::OnProperties() {
    OpenWindow("DataSetProperties", About(), {.caption = "Properties of " + About()->Info().name});
}

void TablePage::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(About(), actionItem->Name());
}

} // namespace studies
