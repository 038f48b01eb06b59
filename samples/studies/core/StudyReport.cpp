#include "StudyReport.h"

#include "ComparisonText.h"
#include "Errors.h"
#include "Report.h"
#include "SummaryRows.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <utility>

namespace studies {
namespace {

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\n':
            escaped += "<br>";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string Paragraph(std::string_view text) {
    return text.empty() ? std::string() : "<p>" + Escaped(text) + "</p>\n";
}

std::string TableOf(const SummaryBlock& block) {
    if (block.rows.empty())
        return {};
    std::string html = "<table cellspacing=\"0\" cellpadding=\"4\">\n<tr>";
    const auto Side = [&](std::size_t i) { return block.names[i].figures ? " align=\"right\"" : " align=\"left\""; };
    for (std::size_t i = 0; i < block.names.size(); ++i)
        html += "<th" + std::string(Side(i)) + ">" + Escaped(block.names[i].text) + "</th>";
    html += "</tr>\n";
    for (const std::vector<std::string>& row : block.rows) {
        html += "<tr>";
        for (std::size_t i = 0; i < row.size(); ++i)
            html += "<td" + std::string(Side(i)) + ">" + Escaped(row[i]) + "</td>";
        html += "</tr>\n";
    }
    return html + "</table>\n";
}

// Of a section: 'n' the notes, 'd' a data set, 'a' an analysis.
std::string SectionKey(char kind, Id id) {
    return kind + std::to_string(id);
}

using ReadTable = std::function<Table(Id, corvane::JobProgress&)>;

class ReportWriter {
public:
    ReportWriter(const FigurePreferences& preferences, const ReadTable& read)
        : m_preferences(preferences), m_read(read) {}

    StudyReport Write(const ReportSubject& subject, corvane::JobProgress& progress) {
        std::vector<double> weights;
        for (const DataSet& dataSet : subject.dataSets) {
            const auto rows = static_cast<double>(dataSet.rows);
            weights.insert(weights.end(), {2 * rows + 1, rows + 1}); // is read, and summarized
        }
        weights.insert(weights.end(), subject.analyses.size(),
                       static_cast<double>(subject.values) / static_cast<double>(subject.dataSets.size() + 1));
        const auto steps = progress.Split(weights);
        m_report.title = Translated("Report on %1", {subject.study.name});
        m_report.date = corvane::ShownTime(std::time(nullptr));
        m_body =
            "<h1>" + Escaped(subject.study.name) + "</h1>\n" + Paragraph(Translated("Report of %1", {m_report.date}));
        const auto has = [&](char kind, Id id = 0) { return !subject.leftOut.contains(SectionKey(kind, id)); };
        if (has('n'))
            m_body += Paragraph(subject.study.notes);
        if (subject.dataSets.empty())
            m_body += Paragraph(Translated("There are no data in this study yet."));
        std::size_t step = 0;
        const auto next = [&]() -> corvane::JobProgress& {
            progress.StopIfCancelled();
            return steps[step++];
        };
        for (const DataSet& dataSet : subject.dataSets) {
            const bool isShown = has('d', dataSet.id);
            const bool isNeeded =
                isShown || std::any_of(subject.analyses.begin(), subject.analyses.end(), [&](const Analysis& analysis) {
                    return analysis.dataSetId == dataSet.id && has('a', analysis.id);
                });
            auto& reads = next();
            auto& summarizes = next();
            if (isNeeded)
                m_tables.emplace(dataSet.id, m_read(dataSet.id, reads));
            if (isShown)
                AddDataSet(dataSet, summarizes);
        }
        for (const Analysis& analysis : subject.analyses)
            if (auto& own = next(); has('a', analysis.id))
                AddAnalysis(analysis, own);
        m_report.html = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + Escaped(m_report.title) +
                        "</title>\n<style>body { font-family: sans-serif; color: #202428; } "
                        "th { border-bottom: 1px solid #202428; }</style></head>\n<body>\n" +
                        m_body + "</body></html>\n";
        return std::move(m_report);
    }

private:
    void AddDataSet(const DataSet& dataSet, corvane::JobProgress& progress) {
        const Table& table = m_tables.at(dataSet.id);
        m_body += "<h2>" + Escaped(dataSet.name) + "</h2>\n" +
                  Paragraph(Translated("%1, from %2", {SizeText(table.rows, table.columns.size()), dataSet.source})) +
                  Paragraph(dataSet.notes);
        AddSummary(table, {}, progress);
    }

    void AddSummary(const Table& table, const std::string& group, corvane::JobProgress& progress) {
        const SummaryRows rows = RowsOfSummary(table, group, m_preferences.decimals, progress);
        m_body += TableOf(rows.numbers);
        if (!rows.numbers.rows.empty() && !rows.texts.rows.empty())
            m_body += "<br>\n";
        m_body += TableOf(rows.texts);
    }

    void AddAnalysis(const Analysis& analysis, corvane::JobProgress& progress) {
        const Table& table = m_tables.at(analysis.dataSetId);
        const AnalysisSettings& settings = analysis.settings;
        m_body += "<h2>" + Escaped(analysis.name) + "</h2>\n";
        switch (settings.kind) {
        case AnalysisKind::Summary:
            AddSummary(table, settings.groupColumn, progress);
            break;
        case AnalysisKind::Histogram:
            AddPicture(HistogramScene(table, settings));
            break;
        case AnalysisKind::Scatter:
            AddPicture(ScatterScene(table, settings));
            break;
        case AnalysisKind::Comparison:
            AddPicture(ComparisonScene(table, settings));
            m_body += Paragraph(ComparisonText(table, settings, m_preferences.decimals));
            break;
        case AnalysisKind::Bootstrap:
            AddBootstrap(table, settings, analysis.result, progress);
            break;
        }
    }

    void AddPicture(ChartScene scene) {
        const std::string name = "picture" + std::to_string(m_report.pictures.size() + 1);
        m_body += "<p><img src=\"" + name + "\" width=\"620\" height=\"420\" alt=\"" +
                  Escaped(Translated("%1 over %2", {scene.y.label, scene.x.label})) + "\"></p>\n";
        m_report.pictures.push_back({name, std::move(scene)});
    }

    void AddBootstrap(const Table& table, const AnalysisSettings& settings, const std::optional<BootstrapResult>& saved,
                      corvane::JobProgress& progress) {
        const Column* column = table.Find(settings.columnX);
        if (!column || !column->IsNumeric()) {
            m_body += Paragraph(Translated("The data have no column “%1” of numbers any longer.", {settings.columnX}));
            return;
        }
        try {
            const BootstrapResult result = saved ? *saved : RunBootstrap(column->numbers, settings.bootstrap, progress);
            if (ChartScene scene = BootstrapScene(result, *column, settings); scene.empty.empty())
                AddPicture(std::move(scene));
            m_body += Paragraph(BootstrapText(result, settings, *column, m_preferences.decimals));
        } catch (const corvane::Failure& failure) {
            m_body += Paragraph(failure.Description);
        }
    }

    const FigurePreferences& m_preferences;
    const ReadTable& m_read;
    std::map<Id, Table> m_tables;
    StudyReport m_report;
    std::string m_body;
};

} // namespace

std::vector<ReportSection> SectionsOf(const ReportSubject& subject) {
    std::vector<ReportSection> sections;
    if (!subject.study.notes.empty())
        sections.push_back({SectionKey('n', 0), Translated("Notes")});
    for (const DataSet& dataSet : subject.dataSets)
        sections.push_back({SectionKey('d', dataSet.id), dataSet.name});
    for (const Analysis& analysis : subject.analyses)
        sections.push_back({SectionKey('a', analysis.id), analysis.name});
    return sections;
}

ReportSubject SubjectOf(Store& store, Id studyId) {
    ReportSubject subject{store.StudyOf(studyId), store.DataSets(studyId), store.Analyses(studyId), 0, store.Path()};
    for (const DataSet& dataSet : subject.dataSets) { // 40 draws take as long as a value
        std::size_t passes = store.Columns(dataSet.id).size();
        for (const Analysis& analysis : subject.analyses)
            if (analysis.dataSetId == dataSet.id && analysis.settings.kind == AnalysisKind::Bootstrap)
                passes += analysis.result ? 0U : static_cast<unsigned>(analysis.settings.bootstrap.resamples) / 40;
        subject.values += static_cast<std::size_t>(dataSet.rows) * passes;
    }
    return subject;
}

StudyReport ReportOn(const ReportSubject& subject, const FigurePreferences& preferences, const ReadTable& read,
                     corvane::JobProgress& progress) {
    return ReportWriter(preferences, read).Write(subject, progress);
}

} // namespace studies
