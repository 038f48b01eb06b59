#include "Chart.h"

#include "Errors.h"
#include "Histogram.h"
#include "Inference.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace studies {
namespace {

// The rows of each group, with the names to tell them apart: one nameless group where nothing divides the table.
struct Division {
    std::vector<std::string> names;
    std::vector<std::size_t> groupOf; // for each row; NoGroup where the group is missing
    static constexpr auto NoGroup = static_cast<std::size_t>(-1);
};

Division Divide(const Table& table, const std::string& groupColumn, ChartScene& scene) {
    Division division;
    division.groupOf.assign(table.rows, 0);
    const Column* group = table.Find(groupColumn);
    if (!group)
        return division;
    const std::vector<std::string> values = ValuesOf(*group);
    if (values.size() > MostChartGroups) {
        scene.note = Translated("%1 has %2 values; up to %3 can be distinguished.",
                                {group->name, CountText(values.size()), CountText(MostChartGroups)}) +
                     " ";
        return division;
    }
    division.names = values;
    for (std::size_t i = 0; i < values.size(); ++i)
        scene.legend.emplace_back(values[i], static_cast<int>(i));
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

// Some room around the values.
void SpanAxis(ChartAxis& axis, double low, double high) {
    const double range = high > low ? high - low : std::max(1.0, std::abs(low) * 0.1);
    axis.low = low - 0.04 * range;
    axis.high = high + 0.04 * range;
}

std::string RowsNote(std::size_t counted, std::size_t rows) {
    if (counted == rows)
        return RowsText(rows);
    return Translated("%1 of %2 rows; the others have missing values", {CountText(counted), CountText(rows)});
}

std::string RangeText(const Bins& bins, std::size_t bin) {
    return Translated("%1 to %2", {FigureText(bins.Edge(bin)), FigureText(bins.Edge(bin + 1))});
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
        scene.empty = Translated("Choose a column of numbers.");
        return scene;
    }
    const Bins bins = BinsFor(x->numbers, settings.bins);
    if (bins.count == 0) {
        scene.empty = Translated("All values of “%1” are missing.", {x->name});
        return scene;
    }
    const Division division = Divide(table, settings.groupColumn, scene);
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
                                  group + RangeText(bins, bin) + " " + x->unit + (x->unit.empty() ? ": " : "\n") +
                                      RowsText(counts[bin])});
        }
    }
    scene.x = {x->Label(), bins.Edge(0), bins.Edge(bins.count), {}};
    scene.y = {Translated("rows"), 0, 1.05 * *std::max_element(tops.begin(), tops.end()), {}};
    scene.note += RowsNote(counted, table.rows);
    return scene;
}

ChartScene ScatterScene(const Table& table, const AnalysisSettings& settings) {
    ChartScene scene;
    const Column* x = NumbersIn(table, settings.columnX);
    const Column* y = NumbersIn(table, settings.columnY);
    if (!x || !y) {
        scene.empty = Translated("Choose two columns of numbers.");
        return scene;
    }
    const Division division = Divide(table, settings.groupColumn, scene);
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
        scene.empty = Translated("No row has both values.");
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
        scene.empty = Translated("Choose a column of numbers and two groups.");
        return scene;
    }
    const double confidence = settings.bootstrap.confidence;
    constexpr double aside = 0.18; // the box to the left, the mean to the right of the place
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const std::string* name : {&settings.firstGroup, &settings.secondGroup}) {
        const std::vector<double> values = NumbersOfGroup(*x, *group, *name);
        const SampleFigures figures = FiguresOf(values);
        if (figures.count < 2) {
            scene.empty = Translated("A group needs at least two values to be compared; “%1” has %2.",
                                     {*name, CountText(figures.count)});
            return scene;
        }
        const double reach = StudentQuantile((1 + confidence) / 2, static_cast<double>(figures.count - 1)) *
                             figures.deviation / std::sqrt(static_cast<double>(figures.count));
        const auto place = static_cast<int>(scene.marks.size());
        scene.marks.push_back(
            {place + aside, figures.mean - reach, figures.mean, figures.mean + reach, place,
             *name + "\n" +
                 Translated("mean %1 %2\n%3 from %4 to %5",
                            {FigureText(figures.mean, 6), x->unit, ShareText(confidence),
                             FigureText(figures.mean - reach, 6), FigureText(figures.mean + reach, 6)})});
        ChartBox box = BoxOf(values);
        box.x = place - aside;
        box.color = place;
        box.tip = *name + "\n" +
                  Translated("median %1 %2\nquartiles %3 and %4",
                             {FigureText(box.median, 6), x->unit, FigureText(box.q1, 6), FigureText(box.q3, 6)});
        for (const double value : values) { // those that are missing compare with nothing
            low = std::min(low, value);
            high = std::max(high, value);
        }
        low = std::min(low, figures.mean - reach);
        high = std::max(high, figures.mean + reach);
        scene.boxes.push_back(std::move(box));
        scene.x.names.push_back(*name);
    }
    SpanAxis(scene.y, low, high);
    scene.x.label = group->Label();
    scene.x.low = -0.7;
    scene.x.high = 1.7;
    scene.y.label = x->Label();
    scene.note = Translated("Boxes with quartiles; beside them means with their %1 confidence intervals",
                            {ShareText(confidence)});
    return scene;
}

ChartScene BootstrapScene(const BootstrapResult& result, const Column& column, const AnalysisSettings& settings) {
    ChartScene scene;
    if (result.counts.empty()) {
        scene.empty = Translated("Run again to see the distribution.");
        return scene;
    }
    std::size_t most = 0;
    for (std::size_t bin = 0; bin < result.counts.size(); ++bin) {
        const std::size_t count = result.counts[bin];
        most = std::max(most, count);
        scene.bars.push_back({result.bins.Edge(bin), result.bins.Edge(bin + 1), 0, static_cast<double>(count), 0,
                              RangeText(result.bins, bin) + ": " + Translated(count, "%1 resample", "%1 resamples")});
    }
    scene.x = {FigureOf(settings.bootstrap.figure, column.Label()),
               result.bins.Edge(0),
               result.bins.Edge(result.bins.count),
               {}};
    scene.y = {Translated("resamples"), 0, 1.05 * static_cast<double>(most), {}};
    for (const double edge : {result.interval.low, result.figure, result.interval.high})
        scene.lines.push_back({{{edge, 0}, {edge, scene.y.high}}, edge == result.figure ? 2 : 1});
    scene.note =
        Translated("Lines: the sample, and its %1 confidence interval", {ShareText(settings.bootstrap.confidence)});
    return scene;
}

} // namespace studies
