#include "Workspace.h"

#include "Errors.h"

namespace studies {

using namespace corvane;

Workspace::Workspace(const std::string& path, bool keeps) : m_store(std::make_unique<Store>(path)), m_keeps(keeps) {}

Store& Workspace::GetStore() const {
    if (!m_store)
        FailWith("The studies have been closed.");
    return *m_store;
}

Ref<DataSetContext> Workspace::DataSet(Id dataSetId) {
    if (const auto it = m_contexts.find(dataSetId); it != m_contexts.end())
        return Ref<DataSetContext>(it->second);
    (void)GetStore().DataSetOf(dataSetId);
    auto context = New<DataSetContext>(Ref<Workspace>(this), dataSetId);
    m_contexts[dataSetId] = context.Get();
    return context;
}

void Workspace::Close() {
    m_store.reset();
}

DataSetContext::DataSetContext(Ref<Workspace> workspace, Id dataSetId)
    : m_workspace(std::move(workspace)), m_dataSetId(dataSetId) {}

DataSetContext::~DataSetContext() {
    m_workspace->Forget(m_dataSetId);
}

bool DataSetContext::Exists() const {
    return m_workspace->GetStore().HasDataSet(m_dataSetId);
}

const Table& DataSetContext::Data() {
    const Store& store = m_workspace->GetStore();
    if (!m_table || m_revision != store.DataRevision()) {
        m_table = std::make_unique<Table>(m_workspace->GetStore().ReadDataSet(m_dataSetId));
        m_revision = store.DataRevision();
    }
    return *m_table;
}

AnalysisDocument::AnalysisDocument(Ref<DataSetContext> data, AnalysisSettings settings)
    : m_data(std::move(data)), m_settings(std::move(settings)), m_saved(m_settings) {}

AnalysisDocument::AnalysisDocument(Ref<DataSetContext> data, const Analysis& analysis)
    : m_data(std::move(data)), m_analysisId(analysis.id), m_settings(analysis.settings), m_saved(analysis.settings) {}

void AnalysisDocument::SetSettings(const AnalysisSettings& settings) {
    if (settings == m_settings)
        return;
    m_settings = settings;
    Changed.Raise();
}

void AnalysisDocument::Look(AnalysisKind kind) {
    const bool touched = IsChanged();
    AnalysisSettings settings = m_settings;
    settings.kind = kind;
    Complete(m_data->Data(), settings, ReadPreferences());
    if (settings == m_settings)
        return;
    m_settings = settings;
    if (!touched && !settings.IsLike(m_saved))
        m_saved = settings;
    Changed.Raise();
}

std::string AnalysisDocument::Name() const {
    return m_settings.Title(m_data->Info().name);
}

void AnalysisDocument::Save() {
    if (!CanBeSaved())
        FailWith("These data aren't part of a study. Import the file into a study to save analyses of it.");
    const Ref<Workspace>& workspace = m_data->Space();
    const std::string name = Name();
    if (m_analysisId == 0) {
        m_analysisId = workspace->GetStore().AddAnalysis(m_data->Number(), name, m_settings);
        m_saved = m_settings;
        workspace->Tell(name + " has been added to the study");
    } else {
        workspace->GetStore().ChangeAnalysis(m_analysisId, name, m_settings);
        m_saved = m_settings;
        workspace->Tell(name + " has been saved");
    }
    Changed.Raise();
}

void AnalysisDocument::FollowStore() {
    if (m_analysisId == 0)
        return;
    const AnalysisSettings stored = m_data->Space()->GetStore().AnalysisOf(m_analysisId).settings;
    if (stored.IsLike(m_saved))
        return;
    const bool touched = IsChanged();
    m_saved = stored;
    if (!touched) {
        const AnalysisKind shown = m_settings.kind;
        m_settings = stored;
        m_settings.kind = shown;
    }
    Changed.Raise();
}

bool AnalysisDocument::Exists() const {
    return m_data->Exists() && (m_analysisId == 0 || m_data->Space()->GetStore().HasAnalysis(m_analysisId));
}

} // namespace studies
