// An open store and what windows show of it. Services and pages share these objects, and each is notified of what
// another changes.
#pragma once

#include "Figures.h"
#include "Store.h"
#include "corvane/base/Event.h"
#include "corvane/base/Object.h"
#include "corvane/base/Ref.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace studies {

class DataSetContext;

using SharedTable = std::shared_ptr<const Table>; // for jobs, too

// Where data go.
struct ImportTarget {
    Id studyId = 0;          // 0, or a study that has gone: a new one
    std::string newStudy;    // its name; where it is taken, with a number
    std::string name;        // of the data set, likewise
    std::string source;      // the file's path
    std::size_t leftOut = 0; // rows of the file
};

// Whether work on the whole table takes no longer than a moment. What takes longer is a job.
[[nodiscard]] bool IsSmall(std::size_t rows, std::size_t columns);

class Workspace final : public corvane::Object {
public:
    using Imported = std::function<void(const corvane::Ref<DataSetContext>&)>;

    // As Store. What isn't kept is gone with the program, so no analysis is saved in it.
    Workspace(const std::string& path, bool keeps);

    // Fails once the workspace has been closed.
    [[nodiscard]] Store& GetStore() const;
    [[nodiscard]] bool Keeps() const { return m_keeps; }
    // The one object for that data set. Fails when there is none.
    [[nodiscard]] corvane::Ref<DataSetContext> DataSet(Id dataSetId);
    // A new data set of a study. In a workspace that keeps nothing, the table is in that object alone. A reserved
    // number is that of a table that a job has written.
    [[nodiscard]] corvane::Ref<DataSetContext> Add(Id studyId, const std::string& name, const std::string& source,
                                                   SharedTable table, Id reserved = 0);
    // The same, a large table by a job, and told. Calls done with the data set, or with nothing after a failure, which
    // is raised, or a cancellation.
    void Import(const ImportTarget& target, SharedTable table, Imported done);
    // Imports a data set of another workspace, which keeps nothing, once, and calls done with what it is here.
    void Keep(const corvane::Ref<DataSetContext>& file, Id studyId, Imported done);
    // Whether a window shows that data set.
    [[nodiscard]] bool IsInUse(Id dataSetId) const { return m_contexts.contains(dataSetId); }
    // Shows what another program has changed in the file since the last call; to be called again and again.
    void ShowChangesOfOthers();
    // The store has changed; says what, for the status line.
    void Tell(const std::string& what) { Changed.Raise(what); }
    void Close();

    corvane::Event<const std::string&> Changed;

    // By DataSetContext, at its end.
    void Forget(Id dataSetId) { m_contexts.erase(dataSetId); }

    std::string_view TypeName() const override { return "Workspace"; }

private:
    std::unique_ptr<Store> m_store;
    bool m_keeps;
    std::map<Id, DataSetContext*> m_contexts;      // the living ones
    std::map<Id, std::vector<Imported>> m_keeping; // of files that are on their way
    std::map<Id, Id> m_kept;                       // what data sets of files have become
};

// The numbers of a column of the table, which stays as long as they do; a null pointer for no such column.
[[nodiscard]] std::shared_ptr<const std::vector<double>> NumbersIn(const SharedTable& table, std::string_view column);

// What a window is about: something in a workspace, which may go while the window is open.
class Subject : public corvane::Object {
public:
    [[nodiscard]] virtual const corvane::Ref<Workspace>& Space() const = 0;
    [[nodiscard]] virtual bool Exists() const = 0;
    // Of a window that isn't modal; fails when it doesn't exist any more.
    [[nodiscard]] virtual std::string Caption() const = 0;
    // The store has changed.
    virtual void FollowStore() {}
};

// What a window about a data set is about.
class DataSetContext final : public Subject {
public:
    DataSetContext(corvane::Ref<Workspace> workspace, Id dataSetId);
    ~DataSetContext() override;

    [[nodiscard]] const corvane::Ref<Workspace>& Space() const override { return m_workspace; }
    [[nodiscard]] Id Number() const { return m_dataSetId; }
    [[nodiscard]] bool Exists() const override;
    [[nodiscard]] std::string Caption() const override { return Info().name; }
    // As it is now. Fails when it doesn't exist any more.
    [[nodiscard]] DataSet Info() const { return m_workspace->GetStore().DataSetOf(m_dataSetId); }
    // The whole table; read once, and again after a change. Valid until then.
    [[nodiscard]] const Table& Data() { return *Shared(); }
    [[nodiscard]] SharedTable Shared();
    // The same, but a null pointer when it would have to be read and isn't small.
    [[nodiscard]] SharedTable Ready();
    // The same, but as it was read last, while a job reads it again.
    [[nodiscard]] SharedTable Latest();
    // Calls done with it: at once when it is ready, or else when a job has read it, which is one for all that wait;
    // with a null pointer when the user has cancelled that. Nothing is called once the window of the owner, a page, has
    // closed.
    void WithTable(const corvane::Ref<corvane::Object>& owner, std::function<void(const SharedTable&)> done);
    // It is known already.
    void Take(SharedTable table);

    std::string_view TypeName() const override { return "DataSetContext"; }

private:
    struct Waiting {
        corvane::Ref<corvane::Object> owner;
        bool hasWindow;
        std::function<void(const SharedTable&)> done;
    };

    [[nodiscard]] bool IsCurrent() const;
    void Read(std::shared_ptr<std::vector<Waiting>> waiting);
    static void Serve(std::vector<Waiting>& waiting, const SharedTable& table);

    corvane::Ref<Workspace> m_workspace;
    Id m_dataSetId;
    SharedTable m_table;
    std::uint64_t m_revision = 0;
    std::weak_ptr<std::vector<Waiting>> m_waiting; // for the job that reads, which has it
};

// What a window about a whole study is about.
class StudyContext final : public Subject {
public:
    StudyContext(corvane::Ref<Workspace> workspace, Id studyId)
        : m_workspace(std::move(workspace)), m_studyId(studyId) {}

    [[nodiscard]] const corvane::Ref<Workspace>& Space() const override { return m_workspace; }
    [[nodiscard]] Id Number() const { return m_studyId; }
    [[nodiscard]] bool Exists() const override { return m_workspace->GetStore().HasStudy(m_studyId); }
    [[nodiscard]] std::string Caption() const override; // of its report

    std::string_view TypeName() const override { return "StudyContext"; }

private:
    corvane::Ref<Workspace> m_workspace;
    Id m_studyId;
};

// What a window about an analysis is about: its settings as they are in the window and as they are in the store, and
// the result of what takes time to compute.
class AnalysisDocument final : public Subject {
public:
    // A new one, which isn't in the store.
    AnalysisDocument(corvane::Ref<DataSetContext> data, AnalysisSettings settings);
    AnalysisDocument(corvane::Ref<DataSetContext> data, const Analysis& analysis);

    [[nodiscard]] const corvane::Ref<DataSetContext>& Data() const { return m_data; }
    [[nodiscard]] const AnalysisSettings& Settings() const { return m_settings; }
    void SetSettings(const AnalysisSettings& settings);
    // Looks at it as that kind. What the kind needs and no one has selected is filled in, which isn't a change.
    void Look(AnalysisKind kind);
    // 0 for one that isn't in the store.
    [[nodiscard]] Id Number() const { return m_analysisId; }
    [[nodiscard]] std::string Name() const;
    [[nodiscard]] std::string Caption() const override { return Name(); }
    [[nodiscard]] const corvane::Ref<Workspace>& Space() const override { return m_data->Space(); }
    [[nodiscard]] bool CanBeSaved() const { return m_data->Space()->Keeps(); }
    // Whether settings are others than the saved ones, or than the first ones of a new analysis. The kind alone is what
    // page was looked at last.
    [[nodiscard]] bool IsChanged() const { return CanBeSaved() && !m_settings.IsLike(m_saved); }
    // The result of a bootstrap with the settings and the data as they are; a null pointer before it has run. While the
    // data are being read, it counts as that of the data.
    [[nodiscard]] const BootstrapResult* Result();
    // It was computed with these settings from the values of that column.
    void SetResult(const BootstrapResult& result, const AnalysisSettings& settings,
                   std::shared_ptr<const std::vector<double>> values);
    // Whether closing would lose what took time to compute. Settings are a matter of a click and don't count.
    [[nodiscard]] bool HasUnsavedResult();
    // Whether Save would do something that is worth it.
    [[nodiscard]] bool IsUnsaved() {
        return HasUnsavedResult() || (CanBeSaved() && (m_analysisId == 0 || IsChanged()));
    }
    // Puts it into the study, or what has been changed; data that are in none go into one before, for which there may
    // be a job. What another window of Studies has saved of the same analysis stays, and this one becomes one of its
    // own. Fails when the data set isn't there any more.
    void Save();
    // The store has changed: what is saved may be another by undo. Settings that no one has touched follow it. An
    // analysis that has gone from the study becomes a new one if its result would be lost.
    void FollowStore() override;
    // False when its data set or its entry in the store has gone.
    [[nodiscard]] bool Exists() const override;

    corvane::Event<> Changed; // its settings, or whether they are saved

    std::string_view TypeName() const override { return "AnalysisDocument"; }

private:
    corvane::Ref<DataSetContext> m_data;
    Id m_analysisId = 0;
    struct Computed {
        BootstrapResult result;
        AnalysisSettings settings;
        std::shared_ptr<const std::vector<double>> values;
        std::optional<std::uint64_t> revision; // of the store's data, for which it is known to hold
    };

    void SaveIntoStudy();
    void TakeSavedResult(const Analysis& analysis);

    AnalysisSettings m_settings;
    AnalysisSettings m_saved;  // with what Look has filled in
    AnalysisSettings m_stored; // as they were in the store when m_settings were last the same
    std::optional<Computed> m_computed;
    bool m_isResultSaved = true;
};

} // namespace studies
