// Reads delimited text into a table: delimiter and types are found out, missing values are empty, "NA",
// "N/A", "#N/A", "NaN" or "null".
#pragma once

#include "Table.h"

#include <string>
#include <string_view>
#include <vector>

namespace studies {

struct CsvOptions {
    char cDelimiter = 0; // 0: ',', ';' or tab, whichever the text is written with
    bool bSkipBadRows = false;
};

struct CsvResult {
    Table oTable;
    char cDelimiter = ',';
    std::vector<std::string> aSkipped; // one text for each row that was left out: its line and why
};

// The first row holds the names of the columns. Fields may stand in double quotes, lines end in LF or CRLF, blank
// lines count for nothing. A column whose values all read as whole numbers or as numbers is one of numbers; where the
// delimiter isn't the comma, the numbers may be written with a decimal comma. Fails, naming the line, for a row with
// too few or too many fields and for a quote that isn't closed; with bSkipBadRows such a row is left out.
[[nodiscard]] CsvResult ReadCsv(std::string_view sText, const CsvOptions& oOptions = {});

// The same for a file; its failures name the file too.
[[nodiscard]] CsvResult ReadCsvFile(const std::string& sPath, const CsvOptions& oOptions = {});

// Makes a column of numbers one of text, as for numbers that only name something.
void TurnToText(Column& oColumn);

struct CsvStyle {
    char cDelimiter = ',';
    char cPoint = '.'; // of numbers
};

// The table as text with a row of names and LF; quotes stand where a field needs them.
[[nodiscard]] std::string WriteCsv(const Table& oTable, const CsvStyle& oStyle = {});

// The delimiter that divides the first rows most evenly; the comma for text of one column.
[[nodiscard]] char DetectDelimiter(std::string_view sText);

} // namespace studies
