// How a user wants figures to be written and analyses to begin, as the preferences say.
#pragma once

#include "AnalysisSettings.h"
#include "Table.h"

#include <string>

namespace studies {

struct FigurePreferences {
    int decimals = 2;
    double confidence = 0.95;
    std::string defaultGroup = {}; // the name of a column that new analyses group by, where there is one
    bool groupByDefault = false;   // whether they group at all

    static constexpr int MostDecimals = 8;
};

// From the user's settings, as the forms of the preferences write them; a value that makes no sense there counts as the
// default.
[[nodiscard]] FigurePreferences ReadPreferences();

// How an analysis of that table begins: with the first columns that suit.
[[nodiscard]] AnalysisSettings FirstSettings(const Table& table, AnalysisKind kind,
                                             const FigurePreferences& preferences);
// The two groups that are compared at first: of those with two values at least, where there are such.
void ChooseGroups(const Table& table, AnalysisSettings& settings);
// Fills what the kind needs and no one has chosen yet, as for a new one.
void Complete(const Table& table, AnalysisSettings& settings, const FigurePreferences& preferences);

} // namespace studies
