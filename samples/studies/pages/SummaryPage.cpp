#include "SummaryPage.h"

#include "Errors.h"
#include "FigureTable.h"
#include "Files.h"
#include "QtText.h"
#include "Report.h"
#include "Statistics.h"
#include "SummaryRows.h"
#include "Windows.h"
#include "corvane/author/Host.h"

#include <QFile>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

void SummaryPage::OnInitialize() {
    m_document = Base()->BusinessContext().TryAs<AnalysisDocument>();
    if (m_document) {
        m_groupName = m_document->Settings().groupColumn;
        Keep(m_document->Changed.Subscribe([this] { Follow(); }));
    }
    Keep(Data()->Space()->Changed.Subscribe([this](const std::string&) { Follow(); }));
}

Ref<DataSetContext> SummaryPage::Data() const {
    return m_document ? m_document->Data() : AboutAs<DataSetContext>();
}

void SummaryPage::OnActivate() {
    EnableAction("Save", m_document && m_document->IsUnsaved());
}

bool SummaryPage::IsChanged() {
    return m_document && m_document->IsChanged();
}

QWidget* SummaryPage::FirstFocus() {
    return m_numbers;
}

QWidget* SummaryPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    auto* row = new QHBoxLayout;
    m_group = new QComboBox;
    FillColumns(*m_group, {}, false, "None");
    m_size = new QLabel;
    m_numbers = new FigureTable;
    m_numbers->setAccessibleName("Statistics of numeric columns");
    m_texts = new FigureTable;
    m_texts->setAccessibleName("Statistics of text columns");
    AddLabelled(*row, "&By", m_group);
    row->setStretch(1, 0);
    row->addStretch(1);
    row->addWidget(m_size);
    layout->addLayout(row);
    layout->addWidget(m_numbers, 3);
    layout->addWidget(m_texts, 2);
    layout->addStretch();
    QObject::connect(m_group, &QComboBox::currentIndexChanged, page, [this] { Guarded([this] { ChooseGroup(); }); });
    ShowFigures();
    return page;
}

void SummaryPage::ChooseGroup() {
    m_groupName = Chosen(*m_group);
    if (m_document) {
        AnalysisSettings settings = m_document->Settings();
        settings.groupColumn = m_groupName;
        m_document->SetSettings(settings);
    } else {
        ShowFigures();
    }
}

void SummaryPage::Follow() {
    if (!Data()->Exists())
        return; // the window is about to close
    if (m_document) {
        m_groupName = m_document->Settings().groupColumn;
        EnableAction("Save", m_document->IsUnsaved());
        OwnWindow()->SetCaption(m_document->Name());
    }
    ShowFigures();
    ValidityChanged();
}

SummaryPage::Figures SummaryPage::FiguresIn(const Table& table, const std::string& groupName, int decimals,
                                            JobProgress* progress) {
    return {GroupColumns(table), RowsOfSummary(table, groupName, decimals, progress)};
}

// What takes longer than a moment is a job, of which the latest counts.
void SummaryPage::ShowFigures() {
    if (!m_numbers)
        return;
    if (m_job)
        m_job->Cancel();
    m_job = nullptr;
    Data()->WithTable(Ref<Object>(this), [this, number = ++m_number](const SharedTable& table) {
        if (!table || number != m_number)
            return;
        const int decimals = ReadPreferences().decimals;
        m_size->setText(Text(SizeText(table->rows, table->columns.size())));
        if (IsSmall(table->rows, table->columns.size()))
            return Show(*table, FiguresIn(*table, m_groupName, decimals, nullptr));
        m_job = StartJob(
            {.title = "Summary of " + Data()->Info().name, .owner = Ref<Object>(this)},
            [table, group = m_groupName, decimals](JobProgress& progress) {
                return FiguresIn(*table, group, decimals, &progress);
            },
            [this, table, number](JobResult<Figures>& result) {
                if (number != m_number)
                    return;
                m_job = nullptr;
                Show(*table, result.Value());
            });
    });
}

void SummaryPage::Show(const Table& table, const Figures& figures) {
    std::vector<Column> groupColumns;
    for (const std::string& name : figures.groupColumns)
        if (const Column* column = table.Find(name))
            groupColumns.push_back({column->name, ColumnType::Text, {}, {}, {}});
    FillColumns(*m_group, groupColumns, false, "None");
    Choose(*m_group, m_groupName);
    const auto ShowBlock = [](FigureTable& view, const SummaryBlock& block) {
        std::vector<FigureColumn> names;
        for (const SummaryBlock::Name& name : block.names)
            names.push_back({Text(name.text), name.figures});
        std::vector<QStringList> lines;
        for (const std::vector<std::string>& line : block.rows) {
            lines.emplace_back();
            for (const std::string& field : line)
                lines.back().append(Text(field));
        }
        view.SetContent(names, lines);
        view.setMaximumHeight(view.HeightOfAll());
        view.setHidden(lines.empty());
    };
    ShowBlock(*m_numbers, figures.rows.numbers);
    ShowBlock(*m_texts, figures.rows.texts);
}

void SummaryPage::OnSave() {
    if (IsChanged())
        m_document->Save();
}

void SummaryPage::OnSaveAnalysis() {
    m_document->Save();
}

void SummaryPage::OnTable() {
    OpenDataWindow(Data());
}

void SummaryPage::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(Data(), actionItem->Name());
}

void SummaryPage::OnCopy() {
    if (m_texts && m_texts->hasFocus())
        m_texts->Copy();
    else if (m_numbers)
        m_numbers->Copy();
}

void SummaryPage::OnExport() {
    const std::string path = AskForSavePath("Export", "Text with tabs (*.tsv)|*.tsv", m_document->Name() + ".tsv");
    if (path.empty())
        return;
    QFile file(Text(path));
    const QByteArray text =
        (m_numbers->AsText() + (m_texts->rowCount() > 0 ? "\n" + m_texts->AsText() : QString())).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        FailWith("The file “" + path + "” can't be written.");
    SetStatus("Exported to " + path);
}

} // namespace studies
