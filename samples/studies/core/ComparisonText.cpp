#include "ComparisonText.h"

#include "Errors.h"
#include "Inference.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"

namespace studies {
namespace {

std::string WithUnit(double value, const Column& column, int decimals) {
    return DecimalText(value, decimals) + (column.unit.empty() ? "" : " " + column.unit);
}

std::string GroupLine(const std::string& group, const SampleFigures& figures, const Column& column, int decimals) {
    return Translated(figures.count, "%2: %3 (standard deviation %4, %1 value)",
                      "%2: %3 (standard deviation %4, %1 values)",
                      {group, WithUnit(figures.mean, column, decimals), DecimalText(figures.deviation, decimals)}) +
           "\n";
}

} // namespace

std::string ComparisonText(const Table& table, const AnalysisSettings& settings, int decimals) {
    const Column* x = table.Find(settings.columnX);
    const Column* group = table.Find(settings.groupColumn);
    if (!x || !x->IsNumeric() || !group || settings.firstGroup.empty() || settings.secondGroup.empty())
        return {};
    if (settings.firstGroup == settings.secondGroup)
        return Translated("Choose two different groups.");
    const double confidence = settings.bootstrap.confidence;
    try {
        const WelchTest test = TestMeans(NumbersOfGroup(*x, *group, settings.firstGroup),
                                         NumbersOfGroup(*x, *group, settings.secondGroup), confidence);
        return GroupLine(settings.firstGroup, test.first, *x, decimals) +
               GroupLine(settings.secondGroup, test.second, *x, decimals) +
               Translated("%1 less %2: %3, %4 confidence from %5 to %6",
                          {settings.firstGroup, settings.secondGroup, WithUnit(test.differenceValue, *x, decimals),
                           ShareText(confidence), DecimalText(test.difference.low, decimals),
                           DecimalText(test.difference.high, decimals)}) +
               "\n" + Translated("Effect size: Cohen's d = %1", {DecimalText(test.effect, 2)}) + "\n" +
               Translated("Welch's t-test: t = %1 with %2 degrees of freedom, %3",
                          {DecimalText(test.t, 3), DecimalText(test.freedom, 1), ProbabilityText(test.p)});
    } catch (const corvane::Failure& failure) {
        return failure.Description;
    }
}

std::string BootstrapText(const BootstrapResult& result, const AnalysisSettings& settings, const Column& column,
                          int decimals) {
    const BootstrapOptions& options = settings.bootstrap;
    return FigureOf(options.figure, SpokenName(column.name)) + ": " + WithUnit(result.figure, column, decimals) + "\n" +
           Translated("%1 confidence from %2 to %3",
                      {ShareText(options.confidence), DecimalText(result.interval.low, decimals),
                       DecimalText(result.interval.high, decimals)}) +
           "\n" +
           Translated("standard error %1, %2 values, %3 resamples, seed %4",
                      {DecimalText(result.error, decimals), CountText(result.count),
                       CountText(static_cast<std::size_t>(options.resamples)), std::to_string(options.seed)});
}

} // namespace studies
