// A chart as plain data: what stands where in the units of its axes, and what is said about it. Whoever draws it
// decides on pixels, fonts and colours.
#pragma once

#include "AnalysisSettings.h"
#include "Table.h"

#include <string>
#include <utility>
#include <vector>

namespace studies {

struct ChartAxis {
    std::string sLabel;
    double dblLow = 0;
    double dblHigh = 1;
    std::vector<std::string> aNames; // of the places 0, 1, 2, … where an axis has no numbers
};

struct ChartBar {
    double dblLeft = 0;
    double dblRight = 0;
    double dblBottom = 0;
    double dblTop = 0;
    int nColor = 0; // a number of a palette
    std::string sTip;
};

struct ChartPoint {
    double x = 0;
    double y = 0;
    int nColor = 0;
    std::size_t iRow = 0; // of the table, from 0
};

struct ChartLine {
    std::vector<std::pair<double, double>> aPoints;
    int nColor = 0;
};

struct ChartBand {
    struct Edge {
        double x, dblLow, dblHigh;
    };
    std::vector<Edge> aEdges;
    int nColor = 0;
};

// A value with its interval.
struct ChartMark {
    double x = 0;
    double dblLow = 0;
    double dblMiddle = 0;
    double dblHigh = 0;
    int nColor = 0;
    std::string sTip;
};

struct ChartScene {
    ChartAxis oX;
    ChartAxis oY;
    std::vector<ChartBar> aBars;
    std::vector<ChartPoint> aPoints;
    std::vector<ChartBand> aBands;
    std::vector<ChartLine> aLines;
    std::vector<ChartMark> aMarks;
    std::vector<std::pair<std::string, int>> aLegend; // names with their colours; empty for a single series
    std::string sNote;                                // under the chart: rows that count, figures
    std::string sEmpty;                               // why there is nothing to see, in its place
};

// The most groups that a chart tells apart; a column with more values isn't divided.
constexpr std::size_t MostChartGroups = 8;

// Each says in sEmpty what is missing, and never fails.
[[nodiscard]] ChartScene HistogramScene(const Table& oTable, const AnalysisSettings& oSettings);
[[nodiscard]] ChartScene ScatterScene(const Table& oTable, const AnalysisSettings& oSettings);
// The two groups' means with their confidence intervals.
[[nodiscard]] ChartScene ComparisonScene(const Table& oTable, const AnalysisSettings& oSettings);

} // namespace studies
