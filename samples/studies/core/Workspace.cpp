#include "Workspace.h"

#include "Errors.h"
#include "Report.h"
#include "corvane/author/Host.h"
#include "corvane/author/Jobs.h"
#include "corvane/windows/Window.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

namespace studies {

using namespace corvane;

Workspace::Workspace(const std::string& path, bool keeps) : m_store(std::make_unique<Store>(path)), m_keeps(keeps) {}

Store& Workspace::GetStore() const {
    if (!m_store)
        FailWith(Translated("The studies have been closed."));
    return *m_store;
}

bool IsSmall(std::size_t rows, std::size_t columns) {
    constexpr std::size_t most = 500'000; // values, which take up to a tenth of a second to read
    return rows * columns <= most;
}

Ref<DataSetContext> Workspace::Add(Id studyId, const std::string& name, const std::string& source, SharedTable table,
                                   Id reserved) {
    Store& store = GetStore();
    auto data =
        DataSet(store.ImportDataSet(studyId, name, source, *table, m_keeps ? reserved : store.ReserveDataSet()));
    data->Take(std::move(table));
    return data;
}

// When a job has ended, a name may be taken, and the study may have gone.
void Workspace::Import(const ImportTarget& target, SharedTable table, Imported done) {
    const bool isLarge = !IsSmall(table->rows, table->columns.size());
    const Id reserved = isLarge ? GetStore().ReserveDataSet() : 0;
    StartJobIf(
        isLarge,
        {.title = Translated("Import %1", {target.name}), .owner = FindService("Studies"), .writes = {"imported data"}},
        [reserved, table, path = GetStore().Path()](JobProgress& progress) {
            if (reserved != 0)
                WriteDataTable(path, reserved, *table, progress);
        },
        [self = Ref<Workspace>(this), target, table, reserved, done](JobResult<void>& result) {
            Store& store = self->GetStore();
            if (reserved != 0)
                store.EndBeside();
            Ref<DataSetContext> data;
            try {
                (void)result.Value();
                const Id study = store.HasStudy(target.studyId)
                                     ? target.studyId
                                     : store.CreateStudy(store.FreeName(target.newStudy, false));
                data = self->Add(study, store.FreeDataSetName(target.name, study), target.source, table, reserved);
            } catch (...) {
                done(nullptr);
                if (result.WasCancelled())
                    self->Tell(Translated("Cancelled; %1 hasn't been imported", {target.name}));
                throw;
            }
            const studies::DataSet info = data->Info();
            self->Tell(
                Translated("%1 imported into “%2”: %3", {info.name, store.StudyOf(info.studyId).name,
                                                         SizeText(table->rows, table->columns.size())}) +
                (target.leftOut == 0 ? std::string() : ", " + Translated("%1 left out", {CountText(target.leftOut)})));
            done(data);
        });
    if (reserved != 0)
        GetStore().BeginBeside();
}

void Workspace::Keep(const Ref<DataSetContext>& file, Id studyId, Imported done) {
    const Id fileId = file->Number();
    if (const auto it = m_kept.find(fileId); it != m_kept.end() && GetStore().HasDataSet(it->second))
        return done(DataSet(it->second));
    std::vector<Imported>& waiting = m_keeping[fileId];
    waiting.push_back(std::move(done));
    if (waiting.size() > 1) // a job is on its way
        return;
    const studies::DataSet info = file->Info();
    Import({studyId, GetStore().FreeName(Translated("Study")), info.name, info.source}, file->Shared(),
           [this, fileId](const Ref<DataSetContext>& data) {
               const auto served = m_keeping.extract(fileId);
               if (!data)
                   return;
               m_kept[fileId] = data->Number();
               for (const Imported& each : served.mapped())
                   each(data);
           });
}

Ref<DataSetContext> Workspace::DataSet(Id dataSetId) {
    if (const auto it = m_contexts.find(dataSetId); it != m_contexts.end())
        return Ref<DataSetContext>(it->second);
    (void)GetStore().DataSetOf(dataSetId);
    auto context = New<DataSetContext>(Ref<Workspace>(this), dataSetId);
    m_contexts[dataSetId] = context.Get();
    return context;
}

// A file that is being written can be read a moment later.
void Workspace::ShowChangesOfOthers() {
    bool changed = false;
    try {
        changed = m_store && m_store->NoticeChanges();
    } catch (const Failure&) {
    }
    if (changed)
        Tell(Translated("Changes that were made in another window of Studies are shown"));
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

bool DataSetContext::IsCurrent() const {
    return m_table && (!m_workspace->Keeps() || m_revision == m_workspace->GetStore().DataRevision());
}

void DataSetContext::Take(SharedTable table) {
    m_table = std::move(table);
    m_revision = m_workspace->GetStore().DataRevision();
}

SharedTable DataSetContext::Shared() {
    if (!IsCurrent())
        Take(std::make_shared<const Table>(m_workspace->GetStore().ReadDataSet(m_dataSetId)));
    return m_table;
}

SharedTable DataSetContext::Ready() {
    if (IsCurrent())
        return m_table;
    const auto rows = static_cast<std::size_t>(Info().rows);
    return IsSmall(rows, m_workspace->GetStore().Columns(m_dataSetId).size()) ? Shared() : nullptr;
}

SharedTable DataSetContext::Latest() {
    const SharedTable ready = Ready();
    return ready ? ready : m_table ? m_table : Shared();
}

void DataSetContext::WithTable(const Ref<Object>& owner, std::function<void(const SharedTable&)> done) {
    if (const SharedTable table = Ready())
        return done(table);
    Waiting waits{owner, static_cast<bool>(WindowOfOwner(owner)), std::move(done)};
    if (const auto waiting = m_waiting.lock())
        return waiting->push_back(std::move(waits));
    const auto waiting = std::make_shared<std::vector<Waiting>>();
    waiting->push_back(std::move(waits));
    m_waiting = waiting;
    Read(waiting);
}

void DataSetContext::Read(std::shared_ptr<std::vector<Waiting>> waiting) {
    const Store& store = m_workspace->GetStore();
    StartJob(
        {.title = Translated("Read %1", {Info().name}), .owner = FindService("Studies")},
        [path = store.Path(), id = m_dataSetId](JobProgress& progress) -> SharedTable {
            return std::make_shared<const Table>(ReadDataTable(path, id, progress));
        },
        [self = Ref<DataSetContext>(this), waiting = std::move(waiting),
         revision = store.DataRevision()](JobResult<SharedTable>& result) {
            if (result.WasCancelled() || !self->Exists())
                return Serve(*waiting, nullptr);
            if (revision != self->m_workspace->GetStore().DataRevision())
                return self->Read(waiting); // what has been changed meanwhile may be missing
            try {
                self->Take(result.Value());
            } catch (...) {
                Serve(*waiting, nullptr);
                throw;
            }
            Serve(*waiting, self->m_table);
        });
}

// Those too that come meanwhile.
void DataSetContext::Serve(std::vector<Waiting>& waiting, const SharedTable& table) {
    std::exception_ptr failure;
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        const Waiting waits = waiting[i];
        try {
            if (!waits.hasWindow || WindowOfOwner(waits.owner))
                waits.done(table);
        } catch (...) {
            failure = failure ? failure : std::current_exception();
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

std::shared_ptr<const std::vector<double>> NumbersIn(const SharedTable& table, std::string_view column) {
    const Column* found = table->Find(column);
    return found ? std::shared_ptr<const std::vector<double>>(table, &found->numbers) : nullptr;
}

std::string StudyContext::Caption() const {
    return Translated("Report on %1", {m_workspace->GetStore().StudyOf(m_studyId).name});
}

AnalysisDocument::AnalysisDocument(Ref<DataSetContext> data, AnalysisSettings settings)
    : m_data(std::move(data)), m_settings(std::move(settings)), m_saved(m_settings) {}

AnalysisDocument::AnalysisDocument(Ref<DataSetContext> data, const Analysis& analysis)
    : m_data(std::move(data)), m_analysisId(analysis.id), m_settings(analysis.settings), m_saved(analysis.settings),
      m_stored(analysis.settings) {
    TakeSavedResult(analysis);
}

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
    if (const SharedTable table = m_data->Ready())
        Complete(*table, settings, ReadPreferences());
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

bool AnalysisDocument::HasUnsavedResult() {
    return (CanBeSaved() || FindService("Studies")) && Result() && !m_isResultSaved;
}

void AnalysisDocument::Save() {
    if (CanBeSaved())
        return SaveIntoStudy();
    const Ref<Object> studies = FindService("Studies");
    if (!studies)
        FailWith(Translated("These data aren't part of a study. Import the file into a study to save analyses of it."));
    const auto study = ToObject(CallByName(studies, "KeepsIn")).As<StudyContext>();
    study->Space()->Keep(m_data, study->Number(),
                         [self = Ref<AnalysisDocument>(this)](const Ref<DataSetContext>& kept) {
                             self->m_data = kept;
                             if (self->m_computed)
                                 self->m_computed->revision.reset();
                             self->SaveIntoStudy();
                         });
}

void AnalysisDocument::SaveIntoStudy() {
    const Ref<Workspace>& workspace = m_data->Space();
    const std::string name = Name();
    Store& store = workspace->GetStore();
    const BootstrapResult* current = Result();
    const auto result = current ? std::optional(*current) : std::nullopt;
    const bool isNew = m_analysisId == 0;
    const bool isOther =
        !isNew && (!store.HasAnalysis(m_analysisId) || !store.AnalysisOf(m_analysisId).settings.IsLike(m_stored));
    if (isNew || isOther)
        m_analysisId = store.AddAnalysis(m_data->Number(), name, m_settings, result);
    else
        store.ChangeAnalysis(m_analysisId, name, m_settings, result);
    m_saved = m_stored = m_settings;
    m_isResultSaved = true;
    workspace->Tell(
        isNew ? Translated("%1 has been added to the study", {name})
        : isOther
            ? Translated("%1 has been added to the study, beside the saved one, which has been changed since", {name})
            : Translated("%1 has been saved", {name}));
    Changed.Raise();
}

void AnalysisDocument::FollowStore() {
    if (m_analysisId == 0)
        return;
    Store& store = m_data->Space()->GetStore();
    if (!store.HasAnalysis(m_analysisId)) {
        if (!m_data->Exists() || !HasUnsavedResult())
            return;
        m_analysisId = 0;
        Changed.Raise();
        return;
    }
    const Analysis stored = store.AnalysisOf(m_analysisId);
    const bool isOther = !stored.settings.IsLike(m_stored);
    if (IsChanged() || HasUnsavedResult() || (!isOther && (!stored.result || Result())))
        return;
    if (isOther) {
        const AnalysisKind shown = m_settings.kind;
        m_settings = m_saved = m_stored = stored.settings;
        m_settings.kind = shown;
    }
    TakeSavedResult(stored);
    Changed.Raise();
}

void AnalysisDocument::TakeSavedResult(const Analysis& analysis) {
    const SharedTable table = analysis.result ? m_data->Latest() : nullptr;
    if (auto values = table ? NumbersIn(table, analysis.settings.columnX) : nullptr)
        m_computed = Computed{*analysis.result, analysis.settings, std::move(values), {}};
    m_isResultSaved = true;
}

void AnalysisDocument::SetResult(const BootstrapResult& result, const AnalysisSettings& settings,
                                 std::shared_ptr<const std::vector<double>> values) {
    m_computed = Computed{result, settings, std::move(values), {}};
    m_isResultSaved = false;
    Changed.Raise();
}

// Other settings hide it, and show it again when they are what they were; other data end it.
const BootstrapResult* AnalysisDocument::Result() {
    if (!m_computed || !m_computed->settings.IsLike(m_settings) || !m_data->Exists())
        return nullptr;
    const std::uint64_t revision = m_data->Space()->GetStore().DataRevision();
    const SharedTable table = m_computed->revision != revision ? m_data->Ready() : nullptr;
    if (table) {
        const auto values = NumbersIn(table, m_settings.columnX);
        const bool isSame =
            values && std::equal(values->begin(), values->end(), m_computed->values->begin(), m_computed->values->end(),
                                 [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); });
        if (!isSame) {
            m_computed.reset();
            return nullptr;
        }
        m_computed->revision = revision;
    }
    return &m_computed->result;
}

bool AnalysisDocument::Exists() const {
    return m_data->Exists() && (m_analysisId == 0 || m_data->Space()->GetStore().HasAnalysis(m_analysisId));
}

} // namespace studies
