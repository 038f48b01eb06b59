// Reads delimited text into a table: delimiter and types are found out, missing values are empty, "NA",
// "N/A", "#N/A", "NaN" or "null".
#pragma once

#include "Table.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
class JobProgress;
}

namespace studies {

struct CsvOptions {
    char delimiter = 0; // 0: ',', ';' or tab, whichever the text is written with
    bool skipBadRows = false;
    std::vector<bool> text = {}; // true for columns that are read as text whatever their values are
};

struct CsvResult {
    Table table;
    char delimiter = ',';
    std::vector<std::string> skipped; // one text for each row that was left out: its line and why
    // For each column of numbers that remains text, since numbers couldn't give its values back: its name and why.
    std::vector<std::string> keptAsText;
};

// The first row holds the names of the columns. Fields may stand in double quotes, lines end in LF or CRLF, blank
// lines count for nothing. A column whose values all read as whole numbers or as numbers is one of numbers; where the
// delimiter isn't the comma, the numbers may be written with a decimal comma. A column of which a value has a leading
// zero, as identifiers have, or more digits than a double keeps, stays text. Fails, naming the line, for a row with
// too few or too many fields and for a quote that isn't closed; with skipBadRows such a row is left out.
[[nodiscard]] CsvResult ReadCsv(std::string_view text, const CsvOptions& options = {},
                                corvane::JobProgress* progress = nullptr);

// The same for a file; its failures name the file too.
[[nodiscard]] CsvResult ReadCsvFile(const std::string& path, const CsvOptions& options = {},
                                    corvane::JobProgress* progress = nullptr);

struct CsvStyle {
    char delimiter = ',';
    char point = '.'; // of numbers
};

// The table as text with a row of names and LF; quotes stand where a field needs them.
[[nodiscard]] std::string WriteCsv(const Table& table, const CsvStyle& style = {});
// The same in pieces of about a million bytes, for a job with its progress.
void WriteCsv(const Table& table, const CsvStyle& style, const std::function<void(std::string_view)>& write,
              corvane::JobProgress* progress = nullptr);

// The delimiter that divides the first rows most evenly; the comma for text of one column.
[[nodiscard]] char DetectDelimiter(std::string_view text);

} // namespace studies
