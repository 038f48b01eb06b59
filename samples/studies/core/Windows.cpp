#include "Windows.h"

#include "Errors.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/author/Host.h"
#include "corvane/base/Text.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/windows/WindowManager.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

namespace studies {

using namespace corvane;

namespace {

// Windows are found again by these and the number in the store behind them, also at the next start.
const std::string dataKey = "data ";
const std::string analysisKey = "analysis ";
const std::string reportKey = "report ";

// The number in a key that begins so; 0 for another key.
Id NumberIn(const std::string& key, const std::string& begin) {
    Id number = 0;
    if (key.compare(0, begin.size(), begin) == 0)
        std::from_chars(key.data() + begin.size(), key.data() + key.size(), number);
    return number;
}

struct Place {
    const char* window;
    Long page; // -1: the first
};

// In the order of the kinds.
constexpr std::array<Place, 5> places{
    {{"Summary", -1}, {"Chart", -1}, {"Chart", 1}, {"Comparison", -1}, {"Comparison", 1}}};

Ref<Window> OpenDocument(const Ref<AnalysisDocument>& document) {
    const Place& place = places.at(static_cast<std::size_t>(document->Settings().kind));
    const std::string key = document->Number() == 0 ? std::string() : analysisKey + std::to_string(document->Number());
    return OpenWindow(place.window, document, {.key = key, .caption = document->Caption(), .page = place.page});
}

// Loops go over a copy: what is done to one window may end others.
std::vector<Ref<Window>> OpenWindows() {
    std::vector<Ref<Window>> windows;
    for (const Ref<Window>& window : *Singleton::Framework()->WindowManager()->Windows())
        windows.push_back(window);
    return windows;
}

void CheckColumns(const Table& table, AnalysisKind kind) {
    const auto numeric = std::count_if(table.columns.begin(), table.columns.end(),
                                       [](const Column& column) { return column.IsNumeric(); });
    if (kind != AnalysisKind::Summary && numeric == 0)
        FailWith(Translated("The data have no column of numbers."));
    if (kind == AnalysisKind::Scatter && numeric < 2)
        FailWith(Translated("A scatter plot needs two columns of numbers; the data have one."));
    if (kind == AnalysisKind::Comparison && GroupColumns(table).empty())
        FailWith(Translated("The data have no column to group by."));
}

} // namespace

Ref<Window> OpenDataWindow(const Ref<DataSetContext>& data) {
    const std::string key = (data->Space()->Keeps() ? dataKey : "file ") + std::to_string(data->Number());
    return OpenWindow("Data", data, {.key = key, .caption = data->Caption()});
}

void OpenNewAnalysis(const Ref<DataSetContext>& data, AnalysisKind kind) {
    data->WithTable(nullptr, [data, kind](const SharedTable& table) {
        if (!table)
            return;
        CheckColumns(*table, kind);
        OpenDocument(New<AnalysisDocument>(data, FirstSettings(*table, kind, ReadPreferences())));
        if (kind == AnalysisKind::Summary && IsSmall(table->rows, table->columns.size()))
            SetStatus(Translated("Summary of %1: %2", {data->Info().name, LineText(Summarize(*table))}));
    });
}

void OpenNewAnalysis(const Ref<DataSetContext>& data, const std::string& command) {
    OpenNewAnalysis(data, AnalysisKindOf(FoldText(command)));
}

// A new analysis is known by its window's own key, so an open one is found by what it is about.
void OpenAnalysis(const Ref<Workspace>& workspace, const Analysis& analysis) {
    for (const Ref<Window>& window : OpenWindows()) {
        const Ref<AnalysisDocument> document = window->BusinessContext().TryAs<AnalysisDocument>();
        if (document && document->Data()->Space() == workspace && document->Number() == analysis.id) {
            window->Show();
            return;
        }
    }
    const Ref<DataSetContext> data = workspace->DataSet(analysis.dataSetId);
    data->WithTable(nullptr, [data, analysis](const SharedTable& table) {
        if (table)
            OpenDocument(New<AnalysisDocument>(data, analysis));
    });
}

void OpenReport(const Ref<Workspace>& workspace, Id studyId) {
    const auto study = New<StudyContext>(workspace, studyId);
    OpenWindow("Report", study, {.key = reportKey + std::to_string(studyId), .caption = study->Caption()});
}

bool OpenByKey(const Ref<Workspace>& workspace, const std::string& key) {
    Store& store = workspace->GetStore();
    if (const Id data = NumberIn(key, dataKey); data != 0 && store.HasDataSet(data))
        OpenDataWindow(workspace->DataSet(data));
    else if (const Id analysis = NumberIn(key, analysisKey); analysis != 0 && store.HasAnalysis(analysis))
        OpenAnalysis(workspace, store.AnalysisOf(analysis));
    else if (const Id study = NumberIn(key, reportKey); study != 0 && store.HasStudy(study))
        OpenReport(workspace, study);
    else
        return false;
    return true;
}

void WindowsFollow() {
    for (const Ref<Window>& window : OpenWindows()) {
        const Ref<Subject> about = window->BusinessContext().TryAs<Subject>();
        if (!about)
            continue;
        about->FollowStore();
        if (!about->Exists())
            window->Terminate();
        else if (!window->IsModal())
            window->SetCaption(about->Caption());
    }
}

void TellAllWindows(const std::string& what) {
    std::set<Workspace*> notified;
    for (const Ref<Window>& window : OpenWindows())
        if (const Ref<Subject> about = window->BusinessContext().TryAs<Subject>())
            if (notified.insert(about->Space().Get()).second)
                about->Space()->Tell(what);
}

std::vector<Ref<AnalysisDocument>> UnsavedAnalyses() {
    std::vector<Ref<AnalysisDocument>> unsaved;
    for (const Ref<Window>& window : OpenWindows())
        if (const Ref<AnalysisDocument> document = window->BusinessContext().TryAs<AnalysisDocument>())
            if (document->HasUnsavedResult())
                unsaved.push_back(document);
    return unsaved;
}

} // namespace studies
