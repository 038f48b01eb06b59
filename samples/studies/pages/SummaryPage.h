// Figures of each column, of all rows or by group: of an analysis, or of all columns of a data set beside its table.
#pragma once

#include "Choices.h"
#include "EditedText.h"
#include "Errors.h"
#include "Files.h"
#include "Report.h"
#include "SummaryRows.h"
#include "Windows.h"
#include "corvane/Jobs.h"
#include "corvane/Page.h"
#include "desktop/WholeFile.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTableView>

namespace studies {

class SummaryPage final : public corvane::Page<SummaryPage> {
    struct Figures {
        std::string groupChoices;
        SummaryRows rows;
    };

    corvane::Ref<AnalysisDocument> m_document; // nothing for a data set
    std::string m_group;                       // the column by which the rows are divided, "" for none
    std::string m_size;
    Figures m_figures;
    corvane::LatestJob m_job; // that computes what is to be shown
    bool m_hasBeenInFront = false;

    void OnInitialize() override {
        m_document = Base()->BusinessContext().TryAs<AnalysisDocument>();
        if (m_document) {
            m_group = m_document->Settings().groupColumn;
            Keep(m_document->Changed.Subscribe([this] { Follow(); }));
        }
        m_figures.groupChoices = noneChoice + m_group;
        Keep(Data()->Space()->Changed.Subscribe([this](const std::string&) { Follow(); }));
    }
    void OnActivate() override {
        EnableAction("Save", m_document && m_document->IsUnsaved());
        if (!std::exchange(m_hasBeenInFront, true))
            ShowFigures();
    }
    [[nodiscard]] bool IsChanged() override { return m_document && m_document->IsChanged(); }
    void OnSave() override {
        if (IsChanged())
            m_document->Save();
    }
    [[nodiscard]] corvane::Ref<DataSetContext> Data() const {
        return m_document ? m_document->Data() : AboutAs<DataSetContext>();
    }
    void OnGroupChanged() {
        if (!m_document)
            return ShowFigures();
        AnalysisSettings settings = m_document->Settings();
        settings.groupColumn = m_group;
        m_document->SetSettings(settings);
    }
    [[nodiscard]] const std::string& GroupChoices() const { return m_figures.groupChoices; }
    [[nodiscard]] std::string Numbers() const { return TextOf(m_figures.rows.numbers, false); }
    [[nodiscard]] bool NumbersVisible() const { return !m_figures.rows.numbers.rows.empty(); }
    [[nodiscard]] std::string Texts() const { return TextOf(m_figures.rows.texts, false); }
    [[nodiscard]] bool TextsVisible() const { return !m_figures.rows.texts.rows.empty(); }
    void Follow() {
        if (!Data()->Exists())
            return; // the window is about to close
        if (m_document) {
            m_group = m_document->Settings().groupColumn;
            EnableAction("Save", m_document->IsUnsaved());
            OwnWindow()->SetCaption(m_document->Name());
        }
        ShowFigures();
        ValidityChanged();
    }
    void ShowFigures() {
        if (!m_hasBeenInFront)
            return;
        m_job.Stop();
        Data()->WithTable(corvane::Ref<corvane::Object>(this), [this](const SharedTable& table) {
            if (table)
                ShowFigures(table);
        });
    }
    void ShowFigures(const SharedTable& table) {
        m_size = SizeText(table->rows, table->columns.size());
        OwnForm()->Refresh("Size");
        m_job.StartIf(
            !IsSmall(table->rows, table->columns.size()),
            {.title = Translated("Summary of %1", {Data()->Info().name}), .owner = corvane::Ref<corvane::Object>(this)},
            [table, group = m_group, decimals = ReadPreferences().decimals](corvane::JobProgress& progress) -> Figures {
                return {noneChoice + DividingChoices(*table), RowsOfSummary(*table, group, decimals, progress)};
            },
            [this](Figures figures) { Show(std::move(figures)); });
    }
    void Show(Figures figures) {
        m_figures = std::move(figures);
        OwnForm()->Refresh();
    }
    // A line of names and one for each row, with tabs between; for a file with numbers that are the same in each
    // language. "" without rows.
    [[nodiscard]] static std::string TextOf(const SummaryBlock& block, bool forFile) {
        if (block.rows.empty())
            return {};
        std::string text;
        for (const SummaryBlock::Name& name : block.names)
            text += AsField(name.text) + '\t';
        for (const std::vector<std::string>& row : block.rows) {
            text.back() = '\n';
            for (std::size_t i = 0; i < row.size(); ++i)
                text += AsField(forFile && block.names[i].figures ? corvane::PlainNumber(row[i]).value_or(row[i])
                                                                  : row[i]) +
                        '\t';
        }
        text.back() = '\n';
        return text;
    }

    // As by the keys: what is selected in the table that has the keyboard, or else all numbers.
    void OnCopy() {
        if (!qobject_cast<QTableView*>(QApplication::focusWidget()))
            OwnForm()->Focus("Numbers");
        QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
        if (auto* table = qobject_cast<QTableView*>(QApplication::focusWidget()))
            QCoreApplication::sendEvent(table, &copy);
    }
    void OnExport() {
        ExportAs(Translated("Text with tabs") + " (*.tsv)|*.tsv", m_document->Name() + ".tsv",
                 [this](const std::string& path) {
                     const std::string numbers = TextOf(m_figures.rows.numbers, true);
                     const std::string texts = TextOf(m_figures.rows.texts, true);
                     corvane::desktop::WriteWholeFile(path,
                                                      numbers + (numbers.empty() || texts.empty() ? "" : "\n") + texts);
                 });
    }
    void OnSaveAnalysis() { m_document->Save(); }
    void OnTable() { OpenDataWindow(Data()); }
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem) { // another one of the data, by the item's name
        OpenNewAnalysis(Data(), actionItem->Name());
    }

public:
    static constexpr auto Members =
        corvane::Fields<&SummaryPage::m_group, &SummaryPage::OnGroupChanged, &SummaryPage::GroupChoices,
                        &SummaryPage::m_size, &SummaryPage::Numbers, &SummaryPage::NumbersVisible, &SummaryPage::Texts,
                        &SummaryPage::TextsVisible, &SummaryPage::OnCopy, &SummaryPage::OnSaveAnalysis,
                        &SummaryPage::OnExport, &SummaryPage::OnTable, &SummaryPage::OnAnalyse>();
};

} // namespace studies
