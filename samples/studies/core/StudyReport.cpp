#include "StudyReport.h"

#include "ComparisonText.h"
#include "Report.h"
#include "SummaryRows.h"
#include "corvane/base/Failure.h"

#include <map>

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

class ReportWriter {
public:
    ReportWriter(Store& store, const FigurePreferences& preferences) : m_store(store), m_preferences(preferences) {}

    StudyReport Write(const Study& study) {
        m_report.title = "Report on " + study.name;
        m_body = "<h1>" + Escaped(study.name) + "</h1>\n" + Paragraph(study.notes);
        const std::vector<DataSet> dataSets = m_store.DataSets(study.id);
        if (dataSets.empty())
            m_body += Paragraph("There are no data in this study yet.");
        for (const DataSet& dataSet : dataSets)
            AddDataSet(dataSet);
        for (const Analysis& analysis : m_store.Analyses(study.id))
            AddAnalysis(analysis);
        m_report.html = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + Escaped(m_report.title) +
                        "</title>\n<style>body { font-family: sans-serif; color: #202428; } "
                        "th { border-bottom: 1px solid #202428; }</style></head>\n<body>\n" +
                        m_body + "</body></html>\n";
        return std::move(m_report);
    }

private:
    const Table& Data(Id dataSetId) {
        const auto it = m_tables.find(dataSetId);
        return it != m_tables.end() ? it->second
                                    : m_tables.emplace(dataSetId, m_store.ReadDataSet(dataSetId)).first->second;
    }

    void AddDataSet(const DataSet& dataSet) {
        const Table& table = Data(dataSet.id);
        m_body += "<h2>" + Escaped(dataSet.name) + "</h2>\n" +
                  Paragraph(SizeText(table.rows, table.columns.size()) + ", from " + dataSet.source) +
                  Paragraph(dataSet.notes);
        AddSummary(table, {});
    }

    void AddSummary(const Table& table, const std::string& group) {
        const SummaryRows rows = RowsOfSummary(table, group, m_preferences.decimals);
        m_body += TableOf(rows.numbers);
        if (!rows.numbers.rows.empty() && !rows.texts.rows.empty())
            m_body += "<br>\n";
        m_body += TableOf(rows.texts);
    }

    void AddAnalysis(const Analysis& analysis) {
        const Table& table = Data(analysis.dataSetId);
        const AnalysisSettings& settings = analysis.settings;
        m_body += "<h2>" + Escaped(analysis.name) + "</h2>\n";
        switch (settings.kind) {
        case AnalysisKind::Summary:
            AddSummary(table, settings.groupColumn);
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
            AddBootstrap(table, settings);
            break;
        }
    }

    void AddPicture(ChartScene scene) {
        const std::string name = "picture" + std::to_string(m_report.pictures.size() + 1);
        m_body += "<p><img src=\"" + name + "\" width=\"620\" height=\"420\" alt=\"" +
                  Escaped(scene.y.label + " over " + scene.x.label) + "\"></p>\n";
        m_report.pictures.push_back({name, std::move(scene)});
    }

    void AddBootstrap(const Table& table, AnalysisSettings settings) {
        constexpr double mostDraws = 2e7; // about a second's
        const Column* column = table.Find(settings.columnX);
        if (!column || !column->IsNumeric()) {
            m_body += Paragraph("The data have no column “" + settings.columnX + "” of numbers any longer.");
            return;
        }
        const double draws = static_cast<double>(table.rows) * settings.bootstrap.resamples;
        if (draws > mostDraws)
            settings.bootstrap.resamples = std::max(100, static_cast<int>(mostDraws / static_cast<double>(table.rows)));
        try {
            const BootstrapResult result = RunBootstrap(column->numbers, settings.bootstrap);
            m_body += Paragraph(BootstrapText(result, settings, *column, m_preferences.decimals));
        } catch (const corvane::Failure& failure) {
            m_body += Paragraph(failure.Description);
        }
    }

    Store& m_store;
    const FigurePreferences& m_preferences;
    std::map<Id, Table> m_tables;
    StudyReport m_report;
    std::string m_body;
};

} // namespace

StudyReport ReportOn(Store& store, Id studyId, const FigurePreferences& preferences) {
    return ReportWriter(store, preferences).Write(store.StudyOf(studyId));
}

} // namespace studies
