// A summary as rows of texts, for tables on the screen and in reports.
#pragma once

#include "Table.h"
#include "corvane/author/Jobs.h"

#include <string>
#include <vector>

namespace studies {

struct SummaryBlock {
    struct Name {
        std::string text;
        bool figures; // which stand on the right
    };
    std::vector<Name> names; // of the columns
    std::vector<std::vector<std::string>> rows;
};

struct SummaryRows {
    SummaryBlock numbers; // without rows where the table has no columns of the kind
    SummaryBlock texts;
};

// Of all rows for "" or an unknown column, otherwise of each group. As a job, with a progress, on all processors.
[[nodiscard]] SummaryRows RowsOfSummary(const Table& table, const std::string& groupColumn, int decimals,
                                        corvane::JobProgress& progress = corvane::WithoutJob());

} // namespace studies
