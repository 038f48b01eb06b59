#include "DataService.h"

#include "Csv.h"
#include "LibraryItems.h"
#include "Report.h"
#include "Shell.h"
#include "Statistics.h"
#include "corvane/base/PluginExport.h"
#include "corvane/menus/ActionItem.h"

#include <optional>

namespace studies {

using namespace corvane;

DataService::DataService() {
    m_oInitialize = m_oServiceBase->InitializeEvent.Subscribe([this] { OnInitialize(); });
}

void DataService::OnInitialize() {
    if (ServiceByName("Studies"))
        LibraryFile::OfferImport();
}

void DataService::OnOpen() {
    if (const std::optional<std::string> sPath = AskForDataFile("Open Data File"))
        OpenFile(*sPath);
}

void DataService::OpenFile(const std::string& sPath) {
    SetData(FileNameOf(sPath), ReadCsvFile(sPath).oTable);
}

void DataService::OpenText(const std::string& sName, const std::string& sText) {
    SetData(sName, ReadCsv(sText).oTable);
}

void DataService::SetData(std::string sName, Table oTable) {
    m_sName = std::move(sName);
    m_oTable = std::move(oTable);
    const auto colActionItems = m_oServiceBase->ActionItems();
    colActionItems->Item("Summary")->SetEnabled(true);
    colActionItems->Item("SummaryByGroup")->SetEnabled(!GroupColumns(m_oTable).empty());
    ShowStatus(m_sName + ": " + SizeText(m_oTable.nRows, m_oTable.aColumns.size()));
}

void DataService::OnSummary() {
    const TableSummary oSummary = Summarize(m_oTable);
    ShowStatus("Summary of " + m_sName + ": " + LineText(oSummary));
    ShowMessage(ReportText(oSummary), "Summary of " + m_sName);
}

void DataService::OnSummaryByGroup() {
    const std::optional<std::string> sColumn =
        AskForChoice("Summary of " + m_sName + " by", JoinLines(GroupColumns(m_oTable)));
    if (!sColumn)
        return;
    const std::vector<GroupSummary> aGroups = SummarizeByGroup(m_oTable, *sColumn);
    const std::string sTitle = "Summary of " + m_sName + " by " + *sColumn;
    ShowStatus(sTitle + ": " + std::to_string(aGroups.size()) + " groups");
    ShowMessage(ReportText(aGroups, *sColumn), sTitle);
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::DataService>("DataSvc.DataService"), Class<studies::LibraryRoot>("DataSvc.LibraryRoot"))
