// A summary as rows of texts, for tables on the screen and in reports.
#pragma once

#include "Table.h"

#include <string>
#include <vector>

namespace studies {

struct SummaryBlock {
    struct Name {
        std::string sText;
        bool bFigures; // which stand on the right
    };
    std::vector<Name> aNames; // of the columns
    std::vector<std::vector<std::string>> aRows;
};

struct SummaryRows {
    SummaryBlock oNumbers; // without rows where the table has no columns of the kind
    SummaryBlock oTexts;
};

// Of all rows for "" or an unknown column, otherwise of each group.
[[nodiscard]] SummaryRows RowsOfSummary(const Table& oTable, const std::string& sGroupColumn, int nDecimals);

} // namespace studies
