// The report on a study as HTML, with its pictures beside it as charts.
#pragma once

#include "Chart.h"
#include "Figures.h"
#include "Store.h"

#include <string>
#include <vector>

namespace studies {

struct StudyReport {
    struct Picture {
        std::string name; // as the HTML refers to it: src="..."
        ChartScene scene;
    };
    std::string title;
    std::string html;
    std::vector<Picture> pictures;
};

// All data sets with their summaries, and all analyses; a bootstrap is computed again, with few enough resamples to
// wait for. Fails when there is no such study.
[[nodiscard]] StudyReport ReportOn(Store& store, Id studyId, const FigurePreferences& preferences);

} // namespace studies
