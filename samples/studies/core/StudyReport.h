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
        std::string sName; // as the HTML refers to it: src="..."
        ChartScene oScene;
    };
    std::string sTitle;
    std::string sHtml;
    std::vector<Picture> aPictures;
};

// All data sets with their summaries, and all analyses; a bootstrap is computed anew, with few enough resamples to
// wait for. Fails when there is no such study.
[[nodiscard]] StudyReport ReportOn(Store& oStore, Id nStudyId, const FigurePreferences& oPreferences);

} // namespace studies
