#include "Chart.h"

#include "Distributions.h"
#include "Histogram.h"
#include "Inference.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cmath>

namespace studies {
namespace {

// The rows of each group, with the names to tell them apart: one nameless group where nothing divides the table.
struct Division {
    std::vector<std::string> names;
    std::vector<std::size_t> groupOf; // for each row; NoGroup where the group is missing
    static constexpr auto NoGroup = static_cast<std::size_t>(-1);
};

Division Divide(const Table& table, const std::string& groupColumn, std::string& note) {
    Division division;
    division.groupOf.assign(table.rows, 0);
    const Column* group = table.Find(groupColumn);
    if (!group)
        return division;
    const std::vector<std::string> values = ValuesOf(*group);
    if (values.size() > MostChartGroups) {
        note = group->name + " has " + CountText(values.size()) + " values; up to " + CountText(MostChartGroups) +
               " can be distinguished. ";
        return division;
    }
    division.names = values;
    for (std::size_t row = 0; row < table.rows; ++row) {
        const auto it = std::find(values.begin(), values.end(), group->Text(row));
        division.groupOf[row] = it == values.end() ? Division::NoGroup : static_cast<std::size_t>(it - values.begin());
    }
    return division;
}

const Column* NumbersIn(const Table& table, const std::string& columnName) {
    const Column* column = table.Find(columnName);
    return column && column->IsNumeric() ? column : nullptr;
}

void SetLegend(ChartScene& scene, const Division& division) {
    for (std::size_t i = 0; i < division.names.size(); ++i)
        scene.legend.emplace_back(division.names[i], static_cast<int>(i));
}

// Some room around the values.
void SpanAxis(ChartAxis& axis, double low, double high) {
    const double range = high > low ? high - low : std::max(1.0, std::abs(low) * 0.1);
    axis.low = low - 0.04 * range;
    axis.high = high + 0.04 * range;
}

std::string RowsNote(std::size_t counted, std::size_t rows) {
    if (counted == rows)
        return CountText(rows) + (rows == 1 ? " row" : " rows");
    return CountText(counted) + " of " + CountText(rows) + " rows; the others have missing values";
}

std::string SignedText(double value) {
    return (value < 0 ? " \u2212 " : " + ") + FigureText(std::abs(value), 5);
}

void AddLine(ChartScene& scene, const std::vector<double>& xs, const std::vector<double>& y, int color,
             const std::string& name, double confidence) {
    constexpr int steps = 60;
    try {
        const Regression line = FitLine(xs, y);
        const auto [low, high] = std::minmax_element(xs.begin(), xs.end());
        ChartBand band{{}, color};
        ChartLine drawn{{}, color};
        for (int n = 0; n <= steps; ++n) {
            const double x = *low + (*high - *low) * n / steps;
            const Interval interval = line.Band(x, confidence);
            band.edges.push_back({x, interval.low, interval.high});
            drawn.points.emplace_back(x, line.At(x));
        }
        scene.bands.push_back(std::move(band));
        scene.lines.push_back(std::move(drawn));
        scene.note += "\n" + (name.empty() ? std::string() : name + ": ") + "y = " + FigureText(line.intercept, 5) +
                      SignedText(line.slope) + " x, R\u00B2 = " + DecimalText(line.share, 3) + ", " +
                      ProbabilityText(line.p);
    } catch (const corvane::Failure&) {
        // Too few points for a line; the points are shown without one.
    }
}

ChartBox BoxOf(std::vector<double> values) {
    std::erase_if(values, [](double value) { return std::isnan(value); });
    std::sort(values.begin(), values.end());
    ChartBox box;
    box.q1 = Quantile(values, 0.25);
    box.median = Quantile(values, 0.5);
    box.q3 = Quantile(values, 0.75);
    const double reach = 1.5 * (box.q3 - box.q1);
    const auto first = std::lower_bound(values.begin(), values.end(), box.q1 - reach);
    const auto last = std::upper_bound(first, values.end(), box.q3 + reach);
    box.low = *first;
    box.high = *(last - 1);
    box.beyond.assign(values.begin(), first);
    box.beyond.insert(box.beyond.end(), last, values.end());
    return box;
}

} // namespace

ChartScene HistogramScene(const Table& table, const AnalysisSettings& settings) {
    ChartScene scene;
    const Column* x = NumbersIn(table, settings.columnX);
    if (!x) {
        scene.empty = "Choose a column of numbers.";
        return scene;
    }
    const Bins bins = BinsFor(x->numbers, settings.bins);
    if (bins.count == 0) {
        scene.empty = "All values of “" + x->name + "” are missing.";
        return scene;
    }
    const Division division = Divide(table, settings.groupColumn, scene.note);
    SetLegend(scene, division);
    std::vector<std::vector<double>> values(std::max<std::size_t>(1, division.names.size()));
    std::size_t counted = 0;
    for (std::size_t row = 0; row < table.rows; ++row)
        if (division.groupOf[row] != Division::NoGroup && !x->IsMissing(row)) {
            values[division.groupOf[row]].push_back(x->numbers[row]);
            ++counted;
        }
    std::vector<double> tops(bins.count);
    for (std::size_t groupIndex = 0; groupIndex < values.size(); ++groupIndex) {
        const std::vector<std::size_t> counts = CountIn(bins, values[groupIndex]);
        for (std::size_t bin = 0; bin < counts.size(); ++bin) {
            if (counts[bin] == 0)
                continue;
            const double bottom = tops[bin];
            tops[bin] += static_cast<double>(counts[bin]);
            const std::string group = division.names.empty() ? std::string() : division.names[groupIndex] + ", ";
            scene.bars.push_back({bins.Edge(bin), bins.Edge(bin + 1), bottom, tops[bin], static_cast<int>(groupIndex),
                                  group + FigureText(bins.Edge(bin)) + " to " + FigureText(bins.Edge(bin + 1)) + " " +
                                      x->unit + (x->unit.empty() ? ": " : "\n") + CountText(counts[bin]) +
                                      (counts[bin] == 1 ? " row" : " rows")});
        }
    }
    scene.x = {x->Label(), bins.Edge(0), bins.Edge(bins.count), {}};
    scene.y = {"rows", 0, 1.05 * *std::max_element(tops.begin(), tops.end()), {}};
    scene.note += RowsNote(counted, table.rows);
    return scene;
}

ChartScene ScatterScene(const Table& table, const AnalysisSettings& settings) {
    ChartScene scene;
    const Column* x = NumbersIn(table, settings.columnX);
    const Column* y = NumbersIn(table, settings.columnY);
    if (!x || !y) {
        scene.empty = "Choose two columns of numbers.";
        return scene;
    }
    const Division division = Divide(table, settings.groupColumn, scene.note);
    SetLegend(scene, division);
    std::vector<std::vector<double>> xs(std::max<std::size_t>(1, division.names.size()));
    std::vector<std::vector<double>> ys(xs.size());
    for (std::size_t row = 0; row < table.rows; ++row) {
        const std::size_t group = division.groupOf[row];
        if (group == Division::NoGroup || x->IsMissing(row) || y->IsMissing(row))
            continue;
        xs[group].push_back(x->numbers[row]);
        ys[group].push_back(y->numbers[row]);
        scene.points.push_back({x->numbers[row], y->numbers[row], static_cast<int>(group), row});
    }
    if (scene.points.empty()) {
        scene.empty = "No row has both values.";
        return scene;
    }
    const auto ByX = [](const ChartPoint& a, const ChartPoint& b) { return a.x < b.x; };
    const auto ByY = [](const ChartPoint& a, const ChartPoint& b) { return a.y < b.y; };
    const auto [left, right] = std::minmax_element(scene.points.begin(), scene.points.end(), ByX);
    const auto [low, high] = std::minmax_element(scene.points.begin(), scene.points.end(), ByY);
    scene.x.label = x->Label();
    scene.y.label = y->Label();
    SpanAxis(scene.x, left->x, right->x);
    SpanAxis(scene.y, low->y, high->y);
    scene.note += RowsNote(scene.points.size(), table.rows);
    for (std::size_t group = 0; group < xs.size(); ++group)
        AddLine(scene, xs[group], ys[group], static_cast<int>(group),
                division.names.empty() ? std::string() : division.names[group], settings.bootstrap.confidence);
    return scene;
}

ChartScene ComparisonScene(const Table& table, const AnalysisSettings& settings) {
    ChartScene scene;
    const Column* x = NumbersIn(table, settings.columnX);
    const Column* group = table.Find(settings.groupColumn);
    if (!x || !group || settings.firstGroup.empty() || settings.secondGroup.empty()) {
        scene.empty = "Choose a column of numbers and two groups.";
        return scene;
    }
    const double confidence = settings.bootstrap.confidence;
    constexpr double aside = 0.18; // the box to the left, the mean to the right of the place
    double low = 0;
    double high = 0;
    for (const std::string* name : {&settings.firstGroup, &settings.secondGroup}) {
        const std::vector<double> values = NumbersOfGroup(*x, *group, *name);
        const SampleFigures figures = FiguresOf(values);
        if (figures.count < 2) {
            scene.empty = "A group needs at least two values to be compared; “" + *name + "” has " +
                          CountText(figures.count) + ".";
            return scene;
        }
        const double reach = StudentQuantile((1 + confidence) / 2, static_cast<double>(figures.count - 1)) *
                             figures.deviation / std::sqrt(static_cast<double>(figures.count));
        const auto place = static_cast<int>(scene.marks.size());
        scene.marks.push_back({place + aside, figures.mean - reach, figures.mean, figures.mean + reach, place,
                               *name + "\nmean " + FigureText(figures.mean, 6) + " " + x->unit + "\n" +
                                   ShareText(confidence) + " from " + FigureText(figures.mean - reach, 6) + " to " +
                                   FigureText(figures.mean + reach, 6)});
        ChartBox box = BoxOf(values);
        box.x = place - aside;
        box.color = place;
        box.tip = *name + "\nmedian " + FigureText(box.median, 6) + " " + x->unit + "\nquartiles " +
                  FigureText(box.q1, 6) + " and " + FigureText(box.q3, 6);
        double least = std::min(box.low, scene.marks.back().low);
        double most = std::max(box.high, scene.marks.back().high);
        for (const double value : box.beyond) {
            least = std::min(least, value);
            most = std::max(most, value);
        }
        scene.boxes.push_back(std::move(box));
        scene.x.names.push_back(*name);
        low = place == 0 ? least : std::min(low, least);
        high = place == 0 ? most : std::max(high, most);
    }
    SpanAxis(scene.y, low, high);
    scene.x.label = group->Label();
    scene.x.low = -0.7;
    scene.x.high = 1.7;
    scene.y.label = x->Label();
    scene.note =
        "Boxes with quartiles; beside them means with their " + ShareText(confidence) + " confidence intervals";
    return scene;
}

ChartScene BootstrapScene(const BootstrapResult& result, const Column& column, const AnalysisSettings& settings) {
    ChartScene scene;
    if (result.counts.empty()) {
        scene.empty = "Run again to see the distribution.";
        return scene;
    }
    std::size_t most = 0;
    for (std::size_t bin = 0; bin < result.counts.size(); ++bin) {
        const std::size_t count = result.counts[bin];
        most = std::max(most, count);
        scene.bars.push_back({result.bins.Edge(bin), result.bins.Edge(bin + 1), 0, static_cast<double>(count), 0,
                              FigureText(result.bins.Edge(bin)) + " to " + FigureText(result.bins.Edge(bin + 1)) +
                                  ": " + CountText(count) + (count == 1 ? " resample" : " resamples")});
    }
    scene.x = {std::string(NameOf(settings.bootstrap.figure)) + " of " + column.Label(),
               result.bins.Edge(0),
               result.bins.Edge(result.bins.count),
               {}};
    scene.y = {"resamples", 0, 1.05 * static_cast<double>(most), {}};
    for (const double edge : {result.interval.low, result.figure, result.interval.high})
        scene.lines.push_back({{{edge, 0}, {edge, scene.y.high}}, edge == result.figure ? 2 : 1});
    scene.note = "Lines: the sample, and its " + ShareText(settings.bootstrap.confidence) + " confidence interval";
    return scene;
}

} // namespace studies
