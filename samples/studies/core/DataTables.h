// The tables with the rows of data sets: for the store, and for jobs, which read and write them through a connection
// of their own.
#pragma once

#include "Database.h"
#include "Table.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
class JobProgress;
}

namespace studies {

using Id = std::int64_t; // never given out twice in a file; 0 means none

// The table in the file with the rows of a data set. Rows have the numbers from 1 to their count.
[[nodiscard]] std::string DataTable(Id dataSetId);

void CreateDataTable(Database& database, Id dataSetId, const std::vector<Column>& columns);
// The rows from first to last, without that one.
void WriteRows(Database& database, Id dataSetId, const Table& table, std::size_t first, std::size_t last);
// Without their values.
[[nodiscard]] std::vector<Column> ColumnsOf(Database& database, Id dataSetId, std::string_view schema = {});
// Adds the rows that follow those in the table, at most so many; false when there were fewer.
bool ReadMoreRows(Database& database, Id dataSetId, Table& table, std::size_t most);

// For jobs. Between pieces of some milliseconds, others can use the file; what they change meanwhile may be in the
// table or not. Fail as Database, and for a data set that isn't there.
[[nodiscard]] Table ReadDataTable(const std::string& path, Id dataSetId, corvane::JobProgress& progress);
// Writes the whole table, or nothing when it fails or is cancelled.
void WriteDataTable(const std::string& path, Id dataSetId, const Table& table, corvane::JobProgress& progress);

} // namespace studies
