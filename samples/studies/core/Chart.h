// A chart as plain data: what stands where in the units of its axes, and what is said about it. What draws it
// decides on pixels, fonts and colours.
#pragma once

#include "AnalysisSettings.h"
#include "Table.h"

#include <string>
#include <utility>
#include <vector>

namespace studies {

struct ChartAxis {
    std::string label;
    double low = 0;
    double high = 1;
    std::vector<std::string> names; // of the places 0, 1, 2, … where an axis has no numbers
};

struct ChartBar {
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    int color = 0; // a number of a palette
    std::string tip;
};

struct ChartPoint {
    double x = 0;
    double y = 0;
    int color = 0;
    std::size_t row = 0; // of the table, from 0
};

struct ChartLine {
    std::vector<std::pair<double, double>> points;
    int color = 0;
};

struct ChartBand {
    struct Edge {
        double x, low, high;
    };
    std::vector<Edge> edges;
    int color = 0;
};

// A value with its interval.
struct ChartMark {
    double x = 0;
    double low = 0;
    double middle = 0;
    double high = 0;
    int color = 0;
    std::string tip;
};

// A box from the first to the third quartile, with the median in it; whiskers to the furthest values within one and a
// half times its height, and what is beyond them.
struct ChartBox {
    double x = 0;
    double low = 0;
    double q1 = 0;
    double median = 0;
    double q3 = 0;
    double high = 0;
    int color = 0;
    std::vector<double> beyond = {};
    std::string tip = {};
};

struct ChartScene {
    ChartAxis x;
    ChartAxis y;
    std::vector<ChartBar> bars;
    std::vector<ChartPoint> points;
    std::vector<ChartBand> bands;
    std::vector<ChartLine> lines;
    std::vector<ChartBox> boxes;
    std::vector<ChartMark> marks;
    std::vector<std::pair<std::string, int>> legend; // names with their colours; empty for a single series
    std::string note;                                // under the chart: rows that count, figures
    std::string empty;                               // why there is nothing to see, in its place
};

// The most groups that a chart tells apart; a column with more values isn't divided.
constexpr std::size_t MostChartGroups = 8;

// Each says in empty what is missing, and never fails.
[[nodiscard]] ChartScene HistogramScene(const Table& table, const AnalysisSettings& settings);
[[nodiscard]] ChartScene ScatterScene(const Table& table, const AnalysisSettings& settings);
// The two groups' values as boxes, and beside them their means with confidence intervals.
[[nodiscard]] ChartScene ComparisonScene(const Table& table, const AnalysisSettings& settings);
// How the figures of the resamples are distributed; empty for a result that doesn't know.
[[nodiscard]] ChartScene BootstrapScene(const BootstrapResult& result, const Column& column,
                                        const AnalysisSettings& settings);

} // namespace studies
