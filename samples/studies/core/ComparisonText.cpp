#include "ComparisonText.h"

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
    return group + ": " + WithUnit(figures.mean, column, decimals) + " (standard deviation " +
           DecimalText(figures.deviation, decimals) + ", " + CountText(figures.count) + " values)\n";
}

} // namespace

std::string ComparisonText(const Table& table, const AnalysisSettings& settings, int decimals) {
    const Column* x = table.Find(settings.columnX);
    const Column* group = table.Find(settings.groupColumn);
    if (!x || !x->IsNumeric() || !group || settings.firstGroup.empty() || settings.secondGroup.empty())
        return {};
    if (settings.firstGroup == settings.secondGroup)
        return "Choose two different groups.";
    const double confidence = settings.bootstrap.confidence;
    try {
        const WelchTest test = TestMeans(NumbersOfGroup(*x, *group, settings.firstGroup),
                                         NumbersOfGroup(*x, *group, settings.secondGroup), confidence);
        return GroupLine(settings.firstGroup, test.first, *x, decimals) +
               GroupLine(settings.secondGroup, test.second, *x, decimals) + settings.firstGroup + " less " +
               settings.secondGroup + ": " + WithUnit(test.differenceValue, *x, decimals) + ", " +
               ShareText(confidence) + " confidence from " + DecimalText(test.difference.low, decimals) + " to " +
               DecimalText(test.difference.high, decimals) +
               "\nEffect size: Cohen's d = " + DecimalText(test.effect, 2) +
               "\nWelch's t-test: t = " + DecimalText(test.t, 3) + " with " + DecimalText(test.freedom, 1) +
               " degrees of freedom, " + ProbabilityText(test.p);
    } catch (const corvane::Failure& failure) {
        return failure.Description;
    }
}

std::string BootstrapText(const BootstrapResult& result, const AnalysisSettings& settings, const Column& column,
                          int decimals) {
    const BootstrapOptions& options = settings.bootstrap;
    return std::string(NameOf(options.figure)) + " of " + SpokenName(column.name) + ": " +
           WithUnit(result.figure, column, decimals) + "\n" + ShareText(options.confidence) + " confidence from " +
           DecimalText(result.interval.low, decimals) + " to " + DecimalText(result.interval.high, decimals) +
           "\nstandard error " + DecimalText(result.error, decimals) + ", " + CountText(result.count) + " values, " +
           CountText(static_cast<std::size_t>(options.resamples)) + " resamples, seed " + std::to_string(options.seed);
}

} // namespace studies
