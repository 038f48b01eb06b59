#include "AnalysisSettings.h"

#include "Errors.h"
#include "Table.h"

#include <array>
#include <tuple>
#include <utility>

namespace studies {
namespace {

struct KindWords {
    AnalysisKind kind;
    std::string_view name;
    std::string_view title;
};

constexpr std::array<KindWords, 5> Kinds{{{AnalysisKind::Summary, "summary", "Summary"},
                                          {AnalysisKind::Histogram, "histogram", "Histogram"},
                                          {AnalysisKind::Scatter, "scatter", "Scatter plot"},
                                          {AnalysisKind::Comparison, "comparison", "Comparison"},
                                          {AnalysisKind::Bootstrap, "bootstrap", "Bootstrap"}}};

const KindWords& WordsOf(AnalysisKind kind) {
    return Kinds[static_cast<std::size_t>(kind)];
}

} // namespace

std::string_view NameOf(AnalysisKind kind) {
    return WordsOf(kind).name;
}

AnalysisKind AnalysisKindOf(std::string_view name) {
    for (const KindWords& words : Kinds)
        if (words.name == name)
            return words.kind;
    FailWith("“" + std::string(name) + "” isn't a kind of analysis that this version supports.");
}

std::string AnalysisSettings::Title(std::string_view dataSet) const {
    std::string title = std::string(WordsOf(kind).title) + " of " + std::string(dataSet);
    if (kind == AnalysisKind::Scatter && !columnX.empty() && !columnY.empty())
        return title + ": " + SpokenName(columnY) + " over " + SpokenName(columnX);
    if (kind != AnalysisKind::Summary && !columnX.empty())
        title += ": " + SpokenName(columnX);
    if (kind == AnalysisKind::Comparison && !firstGroup.empty() && !secondGroup.empty())
        return title + ", " + firstGroup + " and " + secondGroup;
    return groupColumn.empty() || kind == AnalysisKind::Bootstrap ? title : title + " by " + SpokenName(groupColumn);
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
