// Studies as files: to send, and to open.
#include "Errors.h"
#include "Files.h"
#include "StudyFile.h"
#include "StudyService.h"
#include "corvane/author/Host.h"
#include "corvane/author/Jobs.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace studies {

using namespace corvane;

namespace {

// With the ending, which the user may have left out; then no one has asked yet whether an existing file goes.
std::string PathToExport(const Study& study) {
    const std::string title = Translated("Export Study");
    std::string path =
        AskForSavePath(title, Translated("Studies") + " (*.study)|*.study", study.name + std::string(StudyEnding));
    if (path.empty() || IsStudyFile(path))
        return path;
    path += StudyEnding;
    std::error_code error;
    if (std::filesystem::exists(path, error) &&
        !Ask(Translated("“%1” exists already. Replace it?", {FileNameOf(path)}), {Translated("Replace")}, title))
        return {};
    return path;
}

} // namespace

void StudyService::ExportStudy(Id studyId) {
    const std::string path = PathToExport(TheStore().StudyOf(studyId));
    if (path.empty())
        return;
    const ReportSubject subject = SubjectOf(TheStore(), studyId);
    const std::string done = Translated("%1 has been exported to %2", {subject.study.name, path});
    StartJobIf(
        !IsSmall(subject.values, 1),
        {.title = Translated("Export %1", {subject.study.name}), .owner = Ref<Object>(this), .writes = {path}},
        [subject, path](JobProgress& progress) { WriteStudyFile(subject, path, progress); },
        [done, name = subject.study.name](JobResult<void>& result) {
            if (result.WasCancelled())
                return SetStatus(Translated("Cancelled; %1 hasn't been exported", {name}));
            (void)result.Value();
            SetStatus(done);
        });
}

// A file that is opened twice makes two studies only if that is meant.
bool StudyService::WantsAnother(const std::string& name) {
    const std::vector<Study> studies = TheStore().Studies();
    const auto same =
        std::find_if(studies.begin(), studies.end(), [&](const Study& study) { return EqualText(study.name, name); });
    if (same == studies.end())
        return true;
    const std::string show = Translated("Show the Study");
    const std::string open = Translated("Open as Another");
    const std::optional<std::string> answer =
        Ask(Translated("There is a study “%1” already. Show that one, or open the file as another study?", {name}),
            {show, open}, Translated("Open Study"));
    if (answer == show)
        Select({'s', same->id});
    return answer == open;
}

void StudyService::OpenStudy(const std::string& path) {
    if (!m_workspace)
        FailWith(m_storeProblem);
    const StudyFileHead head = LookAtStudyFile(path);
    if (!WantsAnother(head.name))
        return;
    TheStore().BeginBeside();
    StartJobIf(
        !IsSmall(head.values, 1),
        {.title = Translated("Open %1", {FileNameOf(path)}), .owner = Ref<Object>(this), .writes = {"imported data"}},
        [path, store = TheStore().Path()](JobProgress& progress) { return CopyStudyFile(path, store, progress); },
        [this, path](JobResult<StudyContents>& result) {
            TheStore().EndBeside();
            if (result.WasCancelled())
                return SetStatus(Translated("Cancelled; %1 hasn't been opened", {FileNameOf(path)}));
            const Id id = TheStore().AddStudy(std::move(result.Value()));
            m_workspace->Tell(
                Translated("“%1” has been opened from %2", {TheStore().StudyOf(id).name, FileNameOf(path)}));
            Select({'s', id});
        });
}

Ref<StudyContext> StudyService::KeepsIn() const {
    if (!m_workspace)
        FailWith(m_storeProblem);
    return New<StudyContext>(m_workspace, ActiveStudy());
}

std::string StudyService::DropProblem(const Dropped& dropped, Id studyId) const {
    bool moves = !dropped.Files().empty();
    for (const Ref<Object>& item : dropped.Items()) {
        const Ref<DataSetItem> dataSet = item.TryAs<DataSetItem>();
        if (!dataSet)
            return Translated("A study takes data sets and files of data.");
        moves = moves || dropped.Copies() || dataSet->StudyId() != studyId;
    }
    return moves ? std::string() : Translated("The study has them already.");
}

void StudyService::TakeDropped(const Dropped& dropped, Id studyId) {
    for (const std::string& path : dropped.Files())
        Import(path, studyId, &StudyService::ShowImported);
    std::vector<Id> dataSets;
    for (const Ref<Object>& item : dropped.Items())
        dataSets.push_back(item.As<DataSetItem>()->Place().second);
    if (dataSets.empty())
        return;
    TheStore().MoveDataSets(dataSets, studyId, dropped.Copies());
    const std::string study = TheStore().StudyOf(studyId).name;
    const std::size_t count = dataSets.size();
    m_workspace->Tell(dropped.Copies() ? Translated(count, "%1 data set has been copied into “%2”",
                                                    "%1 data sets have been copied into “%2”", {study})
                                       : Translated(count, "%1 data set has been moved into “%2”",
                                                    "%1 data sets have been moved into “%2”", {study}));
}

} // namespace studies
