#include "StudyReport.h"

#include "ComparisonText.h"
#include "Report.h"
#include "SummaryRows.h"
#include "corvane/base/Failure.h"

#include <map>

namespace studies {
namespace {

std::string Escaped(std::string_view sText) {
    std::string sEscaped;
    for (const char c : sText) {
        switch (c) {
        case '&':
            sEscaped += "&amp;";
            break;
        case '<':
            sEscaped += "&lt;";
            break;
        case '>':
            sEscaped += "&gt;";
            break;
        case '"':
            sEscaped += "&quot;";
            break;
        case '\n':
            sEscaped += "<br>";
            break;
        default:
            sEscaped += c;
        }
    }
    return sEscaped;
}

std::string Paragraph(std::string_view sText) {
    return sText.empty() ? std::string() : "<p>" + Escaped(sText) + "</p>\n";
}

std::string TableOf(const SummaryBlock& oBlock) {
    if (oBlock.aRows.empty())
        return {};
    std::string sHtml = "<table cellspacing=\"0\" cellpadding=\"4\">\n<tr>";
    const auto Side = [&](std::size_t i) { return oBlock.aNames[i].bFigures ? " align=\"right\"" : " align=\"left\""; };
    for (std::size_t i = 0; i < oBlock.aNames.size(); ++i)
        sHtml += "<th" + std::string(Side(i)) + ">" + Escaped(oBlock.aNames[i].sText) + "</th>";
    sHtml += "</tr>\n";
    for (const std::vector<std::string>& aRow : oBlock.aRows) {
        sHtml += "<tr>";
        for (std::size_t i = 0; i < aRow.size(); ++i)
            sHtml += "<td" + std::string(Side(i)) + ">" + Escaped(aRow[i]) + "</td>";
        sHtml += "</tr>\n";
    }
    return sHtml + "</table>\n";
}

class ReportWriter {
public:
    ReportWriter(Store& oStore, const FigurePreferences& oPreferences)
        : m_oStore(oStore), m_oPreferences(oPreferences) {}

    StudyReport Write(const Study& oStudy) {
        m_oReport.sTitle = "Report on " + oStudy.sName;
        m_sBody = "<h1>" + Escaped(oStudy.sName) + "</h1>\n" + Paragraph(oStudy.sNotes);
        const std::vector<DataSet> aDataSets = m_oStore.DataSets(oStudy.nId);
        if (aDataSets.empty())
            m_sBody += Paragraph("There are no data in this study yet.");
        for (const DataSet& oDataSet : aDataSets)
            AddDataSet(oDataSet);
        for (const Analysis& oAnalysis : m_oStore.Analyses(oStudy.nId))
            AddAnalysis(oAnalysis);
        m_oReport.sHtml = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + Escaped(m_oReport.sTitle) +
                          "</title>\n<style>body { font-family: sans-serif; color: #202428; } "
                          "th { border-bottom: 1px solid #202428; }</style></head>\n<body>\n" +
                          m_sBody + "</body></html>\n";
        return std::move(m_oReport);
    }

private:
    const Table& Data(Id nDataSetId) {
        const auto it = m_mapTables.find(nDataSetId);
        return it != m_mapTables.end()
                   ? it->second
                   : m_mapTables.emplace(nDataSetId, m_oStore.ReadDataSet(nDataSetId)).first->second;
    }

    void AddDataSet(const DataSet& oDataSet) {
        const Table& oTable = Data(oDataSet.nId);
        m_sBody += "<h2>" + Escaped(oDataSet.sName) + "</h2>\n" +
                   Paragraph(SizeText(oTable.nRows, oTable.aColumns.size()) + ", from " + oDataSet.sSource) +
                   Paragraph(oDataSet.sNotes);
        AddSummary(oTable, {});
    }

    void AddSummary(const Table& oTable, const std::string& sGroup) {
        const SummaryRows oRows = RowsOfSummary(oTable, sGroup, m_oPreferences.nDecimals);
        m_sBody += TableOf(oRows.oNumbers);
        if (!oRows.oNumbers.aRows.empty() && !oRows.oTexts.aRows.empty())
            m_sBody += "<br>\n";
        m_sBody += TableOf(oRows.oTexts);
    }

    void AddAnalysis(const Analysis& oAnalysis) {
        const Table& oTable = Data(oAnalysis.nDataSetId);
        const AnalysisSettings& oSettings = oAnalysis.oSettings;
        m_sBody += "<h2>" + Escaped(oAnalysis.sName) + "</h2>\n";
        switch (oSettings.eKind) {
        case AnalysisKind::Summary:
            AddSummary(oTable, oSettings.sGroupColumn);
            break;
        case AnalysisKind::Histogram:
            AddPicture(HistogramScene(oTable, oSettings));
            break;
        case AnalysisKind::Scatter:
            AddPicture(ScatterScene(oTable, oSettings));
            break;
        case AnalysisKind::Comparison:
            AddPicture(ComparisonScene(oTable, oSettings));
            m_sBody += Paragraph(ComparisonText(oTable, oSettings, m_oPreferences.nDecimals));
            break;
        case AnalysisKind::Bootstrap:
            AddBootstrap(oTable, oSettings);
            break;
        }
    }

    void AddPicture(ChartScene oScene) {
        const std::string sName = "picture" + std::to_string(m_oReport.aPictures.size() + 1);
        m_sBody += "<p><img src=\"" + sName + "\" width=\"620\" height=\"420\" alt=\"" +
                   Escaped(oScene.oY.sLabel + " over " + oScene.oX.sLabel) + "\"></p>\n";
        m_oReport.aPictures.push_back({sName, std::move(oScene)});
    }

    void AddBootstrap(const Table& oTable, AnalysisSettings oSettings) {
        constexpr double dblMostDraws = 2e7; // about a second's
        const Column* pColumn = oTable.Find(oSettings.sColumnX);
        if (!pColumn || !pColumn->IsNumeric()) {
            m_sBody += Paragraph("The data have no column “" + oSettings.sColumnX + "” of numbers any longer.");
            return;
        }
        const double dblDraws = static_cast<double>(oTable.nRows) * oSettings.oBootstrap.nResamples;
        if (dblDraws > dblMostDraws)
            oSettings.oBootstrap.nResamples =
                std::max(100, static_cast<int>(dblMostDraws / static_cast<double>(oTable.nRows)));
        try {
            if (const auto oResult = RunBootstrap(pColumn->aNumbers, oSettings.oBootstrap))
                m_sBody += Paragraph(BootstrapText(*oResult, oSettings, *pColumn, m_oPreferences.nDecimals));
        } catch (const corvane::Failure& oFailure) {
            m_sBody += Paragraph(oFailure.Description);
        }
    }

    Store& m_oStore;
    const FigurePreferences& m_oPreferences;
    std::map<Id, Table> m_mapTables;
    StudyReport m_oReport;
    std::string m_sBody;
};

} // namespace

StudyReport ReportOn(Store& oStore, Id nStudyId, const FigurePreferences& oPreferences) {
    return ReportWriter(oStore, oPreferences).Write(oStore.StudyOf(nStudyId));
}

} // namespace studies
