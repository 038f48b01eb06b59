// Reads delimited text into a table: delimiter and types are found out, missing values are empty, "NA",
// "N/A", "#N/A", "NaN" or "null".
#pragma once

#include "Table.h"
#include "TextFile.h"
#include "corvane/author/Jobs.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

enum class ColumnReading { Automatic, Number, Text, Category, Date };

struct CsvOptions {
    char delimiter = 0; // 0: ',', ';' or tab, whichever the text is written with
    bool skipBadRows = false;
    bool header = true;        // whether the first row holds the names
    std::size_t skipLines = 0; // above it
    char point = 0;            // of numbers; 0: '.', or else ',' where that isn't the delimiter
    corvane::TextEncoding encoding = corvane::TextEncoding::Automatic;
    std::vector<std::string> missing = {}; // values that mean a missing one, beside those above
    // How columns are read, in their order; those beyond are automatic.
    std::vector<ColumnReading> columns = {};
};

struct CsvResult {
    Table table;
    char delimiter = ',';
    std::vector<std::string> skipped; // one text for each row that was left out: its line and why
    // What a user should know of a column: that it stays text though it has numbers, and why; which values become
    // missing.
    std::vector<std::string> notes;
};

// The first row holds the names of the columns. Fields may stand in double quotes, lines end in LF or CRLF, blank
// lines count for nothing. A column whose values all read as whole numbers or as numbers is one of numbers; where the
// delimiter isn't the comma, the numbers may be written with a decimal comma. A column of which a value has a leading
// zero, as identifiers have, or more digits than a double keeps, stays text. What can't be read as its column is wanted
// becomes missing. Dates may be written in the order of year, month and day, or the other way round; 3/4/2026 is in
// April unless the column says otherwise. Fails, naming the line, for a row with too few or too many fields and for a
// quote that isn't closed; with skipBadRows such a row is left out.
[[nodiscard]] CsvResult ReadCsv(std::string_view text, const CsvOptions& options = {},
                                corvane::JobProgress& progress = corvane::WithoutJob());

// The same for a file; its failures name the file too.
[[nodiscard]] CsvResult ReadCsvFile(const std::string& path, const CsvOptions& options = {},
                                    corvane::JobProgress& progress = corvane::WithoutJob());

struct CsvStyle {
    char delimiter = ',';
    char point = '.'; // of numbers
};

// The table as text with a row of names and LF; quotes stand where a field needs them.
[[nodiscard]] std::string WriteCsv(const Table& table, const CsvStyle& style = {});
// The same in pieces of about a million bytes, for a job with its progress.
void WriteCsv(const Table& table, const CsvStyle& style, const std::function<void(std::string_view)>& write,
              corvane::JobProgress& progress = corvane::WithoutJob());

// The delimiter that divides the first rows most evenly; the comma for text of one column.
[[nodiscard]] char DetectDelimiter(std::string_view text, std::size_t skipLines = 0);

} // namespace studies
