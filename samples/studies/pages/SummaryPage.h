// Figures of each column, of all rows or by group: of an analysis, or of all columns of a data set beside its table.
#pragma once

#include "Choices.h"
#include "Errors.h"
#include "FigureTable.h"
#include "Files.h"
#include "QtText.h"
#include "Report.h"
#include "SummaryRows.h"
#include "WholeFile.h"
#include "Windows.h"
#include "corvane/Jobs.h"
#include "desktop/IPrintout.h"
#include "desktop/QtPage.h"

#include <QVBoxLayout>

namespace studies {

class SummaryPage final : public corvane::desktop::QtPage<SummaryPage> {
    struct Figures {
        std::string groupChoices;
        SummaryRows rows;
    };

    corvane::Ref<AnalysisDocument> m_document; // nothing for a data set
    std::string m_groupName, m_groupChoices, m_size;
    corvane::Ref<corvane::IJob> m_job; // that computes what is to be shown
    int m_number = 0;                  // of the latest figures
    QPointer<FigureTable> m_numbers;
    QPointer<FigureTable> m_texts;

    void OnInitialize() override {
        m_document = Base()->BusinessContext().TryAs<AnalysisDocument>();
        if (m_document) {
            m_groupName = m_document->Settings().groupColumn;
            Keep(m_document->Changed.Subscribe([this] { Follow(); }));
        }
        m_groupChoices = noneChoice + m_groupName;
        Keep(Data()->Space()->Changed.Subscribe([this](const std::string&) { Follow(); }));
    }
    void OnActivate() override { EnableAction("Save", m_document && m_document->IsUnsaved()); }
    [[nodiscard]] bool IsChanged() override { return m_document && m_document->IsChanged(); }
    void OnSave() override {
        if (IsChanged())
            m_document->Save();
    }
    QWidget* FirstFocus() override { return m_numbers; }
    QWidget* MakeWidget(QWidget* parent) override {
        auto* both = new QWidget(parent);
        auto* layout = new QVBoxLayout(both);
        layout->setContentsMargins(0, 0, 0, 0);
        m_numbers = new FigureTable;
        m_numbers->setAccessibleName(Text(Translated("Statistics of numeric columns")));
        m_texts = new FigureTable;
        m_texts->setAccessibleName(Text(Translated("Statistics of text columns")));
        layout->addWidget(m_numbers, 3);
        layout->addWidget(m_texts, 2);
        layout->addStretch();
        ShowFigures();
        return both;
    }
    bool Print(corvane::desktop::IPrintout& printout) override {
        printout.AddHeading(Text(m_document ? m_document->Name() : Translated("Summary of %1", {Data()->Info().name})));
        printout.AddText(Text(m_size));
        for (FigureTable* table : {m_numbers.data(), m_texts.data()})
            if (table->rowCount() > 0)
                printout.AddTable(*table->model());
        return true;
    }
    [[nodiscard]] corvane::Ref<DataSetContext> Data() const {
        return m_document ? m_document->Data() : AboutAs<DataSetContext>();
    }
    // Of the form: the column by which the rows are divided, "" for none.
    [[nodiscard]] const std::string& Group() const { return m_groupName; }
    void SetGroup(const std::string& name) {
        m_groupName = name;
        if (!m_document)
            return ShowFigures();
        AnalysisSettings settings = m_document->Settings();
        settings.groupColumn = name;
        m_document->SetSettings(settings);
    }
    [[nodiscard]] const std::string& GroupChoices() const { return m_groupChoices; }
    [[nodiscard]] const std::string& Size() const { return m_size; }
    void Follow() {
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
    [[nodiscard]] static Figures FiguresIn(const Table& table, const std::string& groupName, int decimals,
                                           corvane::JobProgress& progress) {
        return {noneChoice + DividingChoices(table), RowsOfSummary(table, groupName, decimals, progress)};
    }
    // What takes longer than a moment is a job, of which the latest counts.
    void ShowFigures() {
        if (!m_numbers)
            return;
        if (m_job)
            m_job->Cancel();
        m_job = nullptr;
        const corvane::Ref<corvane::Object> self(this);
        Data()->WithTable(self, [this, number = ++m_number](const SharedTable& table) {
            if (table && number == m_number)
                ShowFigures(table);
        });
    }
    void ShowFigures(const SharedTable& table) {
        const int decimals = ReadPreferences().decimals;
        m_size = SizeText(table->rows, table->columns.size());
        const bool takesLong = !IsSmall(table->rows, table->columns.size());
        if (takesLong)
            OwnForm()->Refresh("Size");
        m_job = corvane::StartJobIf(
            takesLong,
            {.title = Translated("Summary of %1", {Data()->Info().name}), .owner = corvane::Ref<corvane::Object>(this)},
            [table, group = m_groupName, decimals](corvane::JobProgress& progress) {
                return FiguresIn(*table, group, decimals, progress);
            },
            [this, number = m_number](corvane::JobResult<Figures>& result) {
                if (number != m_number)
                    return;
                m_job = nullptr;
                Show(result.Value());
            });
    }
    void Show(const Figures& figures) {
        m_groupChoices = figures.groupChoices;
        m_numbers->SetBlock(figures.rows.numbers);
        m_texts->SetBlock(figures.rows.texts);
        OwnForm()->Refresh();
    }

    void OnCopy() {
        if (m_texts && m_texts->hasFocus())
            m_texts->Copy();
        else if (m_numbers)
            m_numbers->Copy();
    }
    void OnExport() {
        const std::string path = AskForSavePath(Translated("Export"), Translated("Text with tabs") + " (*.tsv)|*.tsv",
                                                m_document->Name() + ".tsv");
        if (path.empty())
            return;
        const QString figures =
            m_numbers->AsText(true) + (m_texts->rowCount() > 0 ? "\n" + m_texts->AsText(true) : QString());
        WriteWholeFile(Text(path), figures.toUtf8());
        corvane::SetStatus(Translated("Exported to %1", {path}));
    }
    void OnSaveAnalysis() { m_document->Save(); }
    void OnTable() { OpenDataWindow(Data()); }
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem) { // another one of the data, by the item's name
        OpenNewAnalysis(Data(), actionItem->Name());
    }

public:
    static constexpr auto Members =
        corvane::Methods<&SummaryPage::OnCopy, &SummaryPage::OnSaveAnalysis, &SummaryPage::OnExport,
                         &SummaryPage::OnTable, &SummaryPage::OnAnalyse, &SummaryPage::GroupChoices,
                         &SummaryPage::Size>(corvane::Property("Group", &SummaryPage::Group, &SummaryPage::SetGroup));
};

} // namespace studies
