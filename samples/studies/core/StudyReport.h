// The report on a study as HTML, with its pictures beside it as charts.
#pragma once

#include "Chart.h"
#include "Figures.h"
#include "Store.h"
#include "corvane/author/Jobs.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace studies {

struct StudyReport {
    struct Picture {
        std::string name; // as the HTML refers to it: src="..."
        ChartScene scene;
    };
    std::string title;
    std::string date; // as users read it
    std::string html;
    std::vector<Picture> pictures;
};

// What a report is about, as it is in the store; for jobs, too.
struct ReportSubject {
    Study study;
    std::vector<DataSet> dataSets;
    std::vector<Analysis> analyses;
    std::size_t values = 0;             // that are read, or take as long to draw
    std::string path;                   // of the store
    std::set<std::string> leftOut = {}; // sections, by their keys
};

struct ReportSection {
    std::string key;
    std::string title;
};
// The notes, where there are some, the data sets and the analyses.
[[nodiscard]] std::vector<ReportSection> SectionsOf(const ReportSubject& subject);

// Fails when there is no such study.
[[nodiscard]] ReportSubject SubjectOf(Store& store, Id studyId);

// All data sets with their summaries, and all analyses, but for what is left out; with the date of today. Tables come
// from that function, each once. A bootstrap that isn't saved with its result is computed again.
[[nodiscard]] StudyReport ReportOn(const ReportSubject& subject, const FigurePreferences& preferences,
                                   const std::function<Table(Id dataSetId, corvane::JobProgress& progress)>& read,
                                   corvane::JobProgress& progress = corvane::WithoutJob());

} // namespace studies
