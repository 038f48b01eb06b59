#include "Workspace.h"

#include "Errors.h"

namespace studies {

using namespace corvane;

Workspace::Workspace(const std::string& sPath, bool bKeeps)
    : m_pStore(std::make_unique<Store>(sPath)), m_bKeeps(bKeeps) {}

Store& Workspace::GetStore() const {
    if (!m_pStore)
        FailWith("The studies have been closed.");
    return *m_pStore;
}

Ref<DataSetContext> Workspace::DataSet(Id nDataSetId) {
    if (const auto it = m_mapContexts.find(nDataSetId); it != m_mapContexts.end())
        return Ref<DataSetContext>(it->second);
    (void)GetStore().DataSetOf(nDataSetId);
    auto oContext = New<DataSetContext>(Ref<Workspace>(this), nDataSetId);
    m_mapContexts[nDataSetId] = oContext.Get();
    return oContext;
}

void Workspace::Close() {
    m_pStore.reset();
}

DataSetContext::DataSetContext(Ref<Workspace> oWorkspace, Id nDataSetId)
    : m_oWorkspace(std::move(oWorkspace)), m_nDataSetId(nDataSetId) {}

DataSetContext::~DataSetContext() {
    m_oWorkspace->Forget(m_nDataSetId);
}

bool DataSetContext::Exists() const {
    return m_oWorkspace->GetStore().HasDataSet(m_nDataSetId);
}

const Table& DataSetContext::Data() {
    const Store& oStore = m_oWorkspace->GetStore();
    if (!m_pTable || m_nRevision != oStore.DataRevision()) {
        m_pTable = std::make_unique<Table>(m_oWorkspace->GetStore().ReadDataSet(m_nDataSetId));
        m_nRevision = oStore.DataRevision();
    }
    return *m_pTable;
}

AnalysisDocument::AnalysisDocument(Ref<DataSetContext> oData, AnalysisSettings oSettings)
    : m_oData(std::move(oData)), m_oSettings(std::move(oSettings)), m_oSaved(m_oSettings) {}

AnalysisDocument::AnalysisDocument(Ref<DataSetContext> oData, const Analysis& oAnalysis)
    : m_oData(std::move(oData)), m_nAnalysisId(oAnalysis.nId), m_oSettings(oAnalysis.oSettings),
      m_oSaved(oAnalysis.oSettings) {}

void AnalysisDocument::SetSettings(const AnalysisSettings& oSettings) {
    if (oSettings == m_oSettings)
        return;
    m_oSettings = oSettings;
    Changed.Raise();
}

void AnalysisDocument::Look(AnalysisKind eKind) {
    const bool bTouched = IsChanged();
    AnalysisSettings oSettings = m_oSettings;
    oSettings.eKind = eKind;
    Complete(m_oData->Data(), oSettings, ReadPreferences());
    if (oSettings == m_oSettings)
        return;
    m_oSettings = oSettings;
    if (!bTouched && !oSettings.IsLike(m_oSaved))
        m_oSaved = oSettings;
    Changed.Raise();
}

std::string AnalysisDocument::Name() const {
    return m_oSettings.Title(m_oData->Info().sName);
}

void AnalysisDocument::Save() {
    if (!CanBeSaved())
        FailWith("These data aren't part of a study. Import the file into a study to save analyses of it.");
    const Ref<Workspace>& oWorkspace = m_oData->Space();
    const std::string sName = Name();
    if (m_nAnalysisId == 0) {
        m_nAnalysisId = oWorkspace->GetStore().AddAnalysis(m_oData->Number(), sName, m_oSettings);
        m_oSaved = m_oSettings;
        oWorkspace->Tell(sName + " has been added to the study");
    } else {
        oWorkspace->GetStore().ChangeAnalysis(m_nAnalysisId, sName, m_oSettings);
        m_oSaved = m_oSettings;
        oWorkspace->Tell(sName + " has been saved");
    }
    Changed.Raise();
}

void AnalysisDocument::FollowStore() {
    if (m_nAnalysisId == 0)
        return;
    const AnalysisSettings oStored = m_oData->Space()->GetStore().AnalysisOf(m_nAnalysisId).oSettings;
    if (oStored.IsLike(m_oSaved))
        return;
    const bool bTouched = IsChanged();
    m_oSaved = oStored;
    if (!bTouched) {
        const AnalysisKind eShown = m_oSettings.eKind;
        m_oSettings = oStored;
        m_oSettings.eKind = eShown;
    }
    Changed.Raise();
}

bool AnalysisDocument::Exists() const {
    return m_oData->Exists() && (m_nAnalysisId == 0 || m_oData->Space()->GetStore().HasAnalysis(m_nAnalysisId));
}

} // namespace studies
