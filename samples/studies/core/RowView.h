// Which rows of a table are meant, and in which order: what a user sorts and filters by.
#pragma once

#include "Table.h"
#include "corvane/author/Jobs.h"

#include <cstdint>
#include <string>
#include <vector>

namespace studies {

struct RowView {
    int sortColumn = -1; // -1: in order of import
    bool descending = false;
    int filterColumn = -1; // -1: in any column
    // A text that the value contains; or "=", "<>", "<", "<=", ">", ">=" and a value, where "=" alone means missing.
    std::string filter = {};

    bool operator==(const RowView&) const = default;
};

// Fails when the filter can't be read, such as ">" before no number in a column of numbers.
void CheckFilter(const std::vector<Column>& columns, const RowView& view);
// The positions of the rows, from 0. Letters count without regard to ASCII case, and what is missing comes last,
// whichever way the rows go. As a job, with a progress, on all processors. Fails as CheckFilter.
[[nodiscard]] std::vector<std::uint32_t> RowsOf(const Table& table, const RowView& view,
                                                corvane::JobProgress& progress = corvane::WithoutJob());

} // namespace studies
