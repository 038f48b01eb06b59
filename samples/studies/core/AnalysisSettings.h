// What an analysis is about, without the data.
#pragma once

#include "Bootstrap.h"

#include <string>
#include <string_view>

namespace studies {

enum class AnalysisKind { Summary, Histogram, Scatter, Comparison, Bootstrap };

// "summary" and so on, as files have it.
[[nodiscard]] std::string_view NameOf(AnalysisKind kind);
// Fails for a word that NameOf doesn't give.
[[nodiscard]] AnalysisKind AnalysisKindOf(std::string_view name);

// Columns are named; "" for none. What a kind has no use for keeps what it was.
struct AnalysisSettings {
    AnalysisKind kind = AnalysisKind::Summary;
    std::string groupColumn;
    std::string columnX; // what is counted, compared or resampled, too
    std::string columnY;
    std::string firstGroup; // the groups that are compared
    std::string secondGroup;
    int bins = 0;               // 0: by the data
    BootstrapOptions bootstrap; // its confidence is that of all kinds

    // "Histogram of penguins.csv", or with what it is by.
    [[nodiscard]] std::string Title(std::string_view dataSet) const;
    [[nodiscard]] bool operator==(const AnalysisSettings& other) const;
    // The same but for the kind: pages of one window show the same settings as different kinds.
    [[nodiscard]] bool IsLike(const AnalysisSettings& other) const;
};

} // namespace studies
