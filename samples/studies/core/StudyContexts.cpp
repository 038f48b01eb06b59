#include "StudyContexts.h"

#include "Errors.h"
#include "Report.h"
#include "Shell.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <system_error>

namespace studies {

using namespace corvane;

bool StudyContext::Exists() const {
    const std::vector<Study> aStudies = m_oWorkspace->GetStore().Studies();
    return std::any_of(aStudies.begin(), aStudies.end(), [this](const Study& o) { return o.nId == m_nStudyId; });
}

ImportJob::ImportJob(Ref<Workspace> oWorkspace, Id nProposedStudyId)
    : nStudyId(nProposedStudyId), m_oWorkspace(std::move(oWorkspace)) {
    sNewStudyName = m_oWorkspace->GetStore().FreeName("Study");
}

void ImportJob::SetPath(const std::string& sPath) {
    m_sPath = sPath;
    m_aText.clear();
    m_bRead = false;
    sName = nStudyId == 0 ? FileNameOf(sPath) : m_oWorkspace->GetStore().FreeDataSetName(FileNameOf(sPath), nStudyId);
    Changed.Raise();
}

void ImportJob::SetDelimiter(char cDelimiter) {
    m_cDelimiter = cDelimiter;
    m_aText.clear();
    m_bRead = false;
    Changed.Raise();
}

void ImportJob::SetSkipsBadRows(bool bSkip) {
    m_bSkipBadRows = bSkip;
    Changed.Raise();
}

bool ImportJob::IsText(std::size_t iColumn) const {
    return iColumn < m_aText.size() && m_aText[iColumn];
}

void ImportJob::SetText(std::size_t iColumn, bool bText) {
    m_aText.resize(std::max(m_aText.size(), iColumn + 1));
    m_aText[iColumn] = bText;
}

const CsvResult* ImportJob::Result() {
    Read();
    return m_oResult ? &*m_oResult : nullptr;
}

const std::string& ImportJob::Problem() {
    Read();
    return m_sProblem;
}

ImportJob::Stamp ImportJob::StampNow() const {
    std::error_code oError;
    const auto tWritten = std::filesystem::last_write_time(m_sPath, oError);
    if (oError)
        return {};
    const std::uintmax_t nBytes = std::filesystem::file_size(m_sPath, oError);
    return Stamp({tWritten, oError ? 0 : nBytes});
}

std::vector<std::string> ImportJob::ColumnNames() const {
    std::vector<std::string> aNames;
    if (m_oResult)
        for (const Column& oColumn : m_oResult->oTable.aColumns)
            aNames.push_back(oColumn.sName);
    return aNames;
}

void ImportJob::LookAgain() {
    const Stamp oNow = StampNow();
    if (!m_bRead || oNow == m_oStamp || (!oNow && m_oResult))
        return;
    const std::vector<std::string> aBefore = ColumnNames();
    m_bRead = false;
    Read();
    if (ColumnNames() != aBefore)
        m_aText.clear(); // was chosen for other columns
    Changed.Raise();
}

void ImportJob::Read() {
    if (m_bRead)
        return;
    m_bRead = true;
    m_oStamp = StampNow();
    m_oResult.reset();
    m_sProblem.clear();
    try {
        m_oResult = ReadCsvFile(m_sPath, {m_cDelimiter, true});
        if (m_oResult->oTable.nRows == 0)
            m_sProblem = FileNameOf(m_sPath) + " has column names, but no rows.";
    } catch (const Failure& oFailure) {
        m_sProblem = oFailure.Description;
    }
}

std::string ImportJob::TargetProblem() const {
    Store& oStore = m_oWorkspace->GetStore();
    if (nStudyId == 0)
        if (std::string sProblem = oStore.NameProblem(sNewStudyName); !sProblem.empty())
            return sProblem;
    return oStore.DataSetNameProblem(sName, nStudyId);
}

void ImportJob::Run() {
    const CsvResult* pResult = Result();
    if (!pResult)
        FailWith(m_sProblem);
    if (!pResult->aSkipped.empty() && !m_bSkipBadRows)
        FailWith(FileNameOf(m_sPath) + ": " + pResult->aSkipped.front());
    if (const std::string sProblem = TargetProblem(); !sProblem.empty())
        FailWith(sProblem);
    Table oTable = pResult->oTable;
    for (std::size_t i = 0; i < oTable.aColumns.size(); ++i)
        if (IsText(i))
            TurnToText(oTable.aColumns[i]);
    Store& oStore = m_oWorkspace->GetStore();
    if (nStudyId == 0)
        nStudyId = oStore.CreateStudy(sNewStudyName);
    nDataSetId = oStore.ImportDataSet(nStudyId, sName, m_sPath, oTable);
    m_oWorkspace->Tell(
        sName + " imported into “" + oStore.StudyOf(nStudyId).sName +
        "”: " + SizeText(oTable.nRows, oTable.aColumns.size()) +
        (pResult->aSkipped.empty() ? std::string() : ", " + CountText(pResult->aSkipped.size()) + " left out"));
}

} // namespace studies
