#include "AnalysisSettings.h"

#include "Errors.h"
#include "Table.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace studies {
namespace {

// In the order of the kinds.
constexpr std::array<std::string_view, 5> KindNames{"summary", "histogram", "scatter", "comparison", "bootstrap"};

std::string TitleOf(AnalysisKind kind, std::string_view dataSet) {
    switch (kind) {
    case AnalysisKind::Histogram:
        return Translated("Histogram of %1", {dataSet});
    case AnalysisKind::Scatter:
        return Translated("Scatter plot of %1", {dataSet});
    case AnalysisKind::Comparison:
        return Translated("Comparison of %1", {dataSet});
    case AnalysisKind::Bootstrap:
        return Translated("Bootstrap of %1", {dataSet});
    case AnalysisKind::Summary:
        break;
    }
    return Translated("Summary of %1", {dataSet});
}

} // namespace

std::string_view NameOf(AnalysisKind kind) {
    return KindNames.at(static_cast<std::size_t>(kind));
}

AnalysisKind AnalysisKindOf(std::string_view name) {
    const auto* const found = std::find(KindNames.begin(), KindNames.end(), name);
    if (found != KindNames.end())
        return static_cast<AnalysisKind>(found - KindNames.begin());
    FailWith(Translated("“%1” isn't a kind of analysis that this version supports.", {name}));
}

std::string AnalysisSettings::Title(std::string_view dataSet) const {
    std::string title = TitleOf(kind, dataSet);
    if (kind == AnalysisKind::Scatter && !columnX.empty() && !columnY.empty())
        return title + ": " + Translated("%1 over %2", {SpokenName(columnY), SpokenName(columnX)});
    if (kind != AnalysisKind::Summary && !columnX.empty())
        title += ": " + SpokenName(columnX);
    if (kind == AnalysisKind::Comparison && !firstGroup.empty() && !secondGroup.empty())
        return title + ", " + Translated("%1 and %2", {firstGroup, secondGroup});
    return groupColumn.empty() || kind == AnalysisKind::Bootstrap
               ? title
               : Translated("%1 by %2", {title, SpokenName(groupColumn)});
}

bool AnalysisSettings::operator==(const AnalysisSettings& other) const {
    return kind == other.kind && IsLike(other);
}

bool AnalysisSettings::IsLike(const AnalysisSettings& other) const {
    const auto Parts = [](const AnalysisSettings& o) {
        return std::tie(o.groupColumn, o.columnX, o.columnY, o.firstGroup, o.secondGroup, o.bins, o.bootstrap.figure,
                        o.bootstrap.resamples, o.bootstrap.confidence, o.bootstrap.seed);
    };
    return Parts(*this) == Parts(other);
}

} // namespace studies
