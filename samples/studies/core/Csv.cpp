#include "Csv.h"

#include "Errors.h"
#include "TextFile.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>

namespace studies {
namespace {

struct Record {
    std::vector<std::string> aFields;
    std::size_t nLine = 0;
    std::string sProblem;     // "" for a sound one
    bool bStrayQuote = false; // within a field that doesn't begin with one: hardly the right delimiter
};

class CsvScanner {
public:
    CsvScanner(std::string_view sText, char cDelimiter) : m_sText(sText), m_cDelimiter(cDelimiter) {
        if (m_sText.substr(0, 3) == "\xEF\xBB\xBF")
            m_i = 3;
    }

    // False at the end of the text.
    bool Next(Record& oRecord) {
        while (m_i < m_sText.size() && SkipBlankLine()) {
        }
        if (m_i >= m_sText.size())
            return false;
        oRecord = Record{{}, m_nLine, {}, false};
        bool bMore = true;
        while (bMore)
            bMore = ReadField(oRecord);
        return true;
    }

private:
    bool SkipBlankLine() {
        std::size_t i = m_i;
        while (i < m_sText.size() && (m_sText[i] == ' ' || m_sText[i] == '\r'))
            ++i;
        if (i < m_sText.size() && m_sText[i] != '\n')
            return false;
        m_i = std::min(i + 1, m_sText.size());
        ++m_nLine;
        return true;
    }

    // True when another field follows in the record.
    bool ReadField(Record& oRecord) {
        if (m_i < m_sText.size() && m_sText[m_i] == '"')
            ReadQuoted(oRecord);
        else
            ReadPlain(oRecord);
        if (m_i < m_sText.size() && m_sText[m_i] == m_cDelimiter) {
            ++m_i;
            return true;
        }
        if (m_i < m_sText.size()) { // the line's end
            ++m_i;
            ++m_nLine;
        }
        return false;
    }

    void ReadPlain(Record& oRecord) {
        const std::size_t iStart = m_i;
        while (m_i < m_sText.size() && m_sText[m_i] != m_cDelimiter && m_sText[m_i] != '\n')
            ++m_i;
        std::string_view sField = m_sText.substr(iStart, m_i - iStart);
        while (!sField.empty() && (sField.back() == ' ' || sField.back() == '\r'))
            sField.remove_suffix(1);
        while (!sField.empty() && sField.front() == ' ')
            sField.remove_prefix(1);
        oRecord.bStrayQuote = oRecord.bStrayQuote || sField.find('"') != std::string_view::npos;
        oRecord.aFields.emplace_back(sField);
    }

    void ReadQuoted(Record& oRecord) {
        std::string sField;
        ++m_i;
        while (m_i < m_sText.size()) {
            const char c = m_sText[m_i++];
            if (c == '"') {
                if (m_i >= m_sText.size() || m_sText[m_i] != '"') {
                    EndQuoted(oRecord);
                    oRecord.aFields.push_back(std::move(sField));
                    return;
                }
                ++m_i;
            } else if (c == '\n') {
                ++m_nLine;
            }
            sField += c;
        }
        oRecord.sProblem = "a quote isn't closed";
        oRecord.aFields.push_back(std::move(sField));
    }

    void EndQuoted(Record& oRecord) {
        const std::size_t iStart = m_i;
        while (m_i < m_sText.size() && m_sText[m_i] != m_cDelimiter && m_sText[m_i] != '\n')
            ++m_i;
        const std::string_view sBehind = m_sText.substr(iStart, m_i - iStart);
        if (sBehind.find_first_not_of(" \r") != std::string_view::npos)
            oRecord.sProblem = "text follows a closing quote";
    }

    std::string_view m_sText;
    char m_cDelimiter;
    std::size_t m_i = 0;
    std::size_t m_nLine = 1;
};

bool IsMissing(std::string_view sField) {
    static constexpr std::array<std::string_view, 5> aWords{"NA", "N/A", "#N/A", "NaN", "null"};
    return sField.empty() || std::any_of(aWords.begin(), aWords.end(),
                                         [&](std::string_view sWord) { return corvane::EqualText(sField, sWord); });
}

// Every column has a name, and no two have the same.
std::vector<Column> NamedColumns(const Record& oHeader) {
    std::vector<Column> aColumns;
    const auto IsTaken = [&](const std::string& sName) {
        return std::any_of(aColumns.begin(), aColumns.end(),
                           [&](const Column& oColumn) { return corvane::EqualText(oColumn.sName, sName); });
    };
    for (std::size_t i = 0; i < oHeader.aFields.size(); ++i) {
        const std::string sGiven = oHeader.aFields[i].empty() ? "column " + std::to_string(i + 1) : oHeader.aFields[i];
        std::string sName = sGiven;
        for (int n = 2; IsTaken(sName); ++n)
            sName = sGiven + " (" + std::to_string(n) + ")";
        aColumns.push_back({sName, ColumnType::Text, {}, {}});
    }
    return aColumns;
}

// Makes the column one of numbers when all its values are, and there is one.
bool TurnToNumbers(Column& oColumn, char cPoint) {
    std::vector<double> aNumbers;
    aNumbers.reserve(oColumn.aTexts.size());
    bool bWhole = true;
    bool bAny = false;
    for (const std::string& sText : oColumn.aTexts) {
        if (sText.empty()) {
            aNumbers.push_back(std::numeric_limits<double>::quiet_NaN());
            continue;
        }
        const std::optional<double> dblValue = NumberOf(sText, cPoint);
        if (!dblValue)
            return false;
        // Beyond 2^53 a double doesn't hold every whole number.
        bWhole = bWhole && std::abs(*dblValue) < 9007199254740992.0 &&
                 sText.find_first_not_of("+-0123456789") == std::string::npos;
        bAny = true;
        aNumbers.push_back(*dblValue);
    }
    if (!bAny)
        return false;
    oColumn.eType = bWhole ? ColumnType::Whole : ColumnType::Number;
    oColumn.aNumbers = std::move(aNumbers);
    oColumn.aTexts.clear();
    return true;
}

std::string ProblemOf(const Record& oRecord, std::size_t nColumns) {
    std::string sProblem = oRecord.sProblem;
    const std::size_t nFields = oRecord.aFields.size();
    if (sProblem.empty() && nFields != nColumns)
        sProblem = std::to_string(nFields) + (nFields == 1 ? " field" : " fields") + " where the first row has " +
                   std::to_string(nColumns);
    return sProblem.empty() ? sProblem : "Line " + std::to_string(oRecord.nLine) + ": " + sProblem + ".";
}

std::string Quoted(const std::string& sField, char cDelimiter) {
    if (sField.find_first_of("\"\r\n") == std::string::npos && sField.find(cDelimiter) == std::string::npos &&
        !IsMissing(sField) && sField.front() != ' ' && sField.back() != ' ')
        return sField;
    if (sField.empty())
        return sField;
    std::string sQuoted = "\"";
    for (const char c : sField) {
        if (c == '"')
            sQuoted += '"';
        sQuoted += c;
    }
    return sQuoted + "\"";
}

} // namespace

char DetectDelimiter(std::string_view sText) {
    constexpr int nSample = 50;
    char cBest = ',';
    std::size_t nBest = 0;
    for (const char cDelimiter : {',', ';', '\t'}) {
        CsvScanner oScanner(sText, cDelimiter);
        Record oRecord;
        if (!oScanner.Next(oRecord) || oRecord.aFields.size() < 2)
            continue;
        const std::size_t nColumns = oRecord.aFields.size();
        std::size_t nEven = 0;
        int nRead = 0;
        do
            nEven += oRecord.aFields.size() == nColumns && !oRecord.bStrayQuote ? 1U : 0U;
        while (++nRead < nSample && oScanner.Next(oRecord));
        // Even rows count first, then the number of columns.
        const std::size_t nScore = nEven * 10000 + std::min<std::size_t>(nColumns, 9999);
        if (nScore > nBest) {
            nBest = nScore;
            cBest = cDelimiter;
        }
    }
    return cBest;
}

CsvResult ReadCsv(std::string_view sText, const CsvOptions& oOptions) {
    CsvResult oResult;
    oResult.cDelimiter = oOptions.cDelimiter != 0 ? oOptions.cDelimiter : DetectDelimiter(sText);
    CsvScanner oScanner(sText, oResult.cDelimiter);
    Record oRecord;
    if (!oScanner.Next(oRecord))
        FailWith("There is no data: the text is empty.");
    if (!oRecord.sProblem.empty())
        FailWith("Line " + std::to_string(oRecord.nLine) + ": " + oRecord.sProblem + ".");

    Table& oTable = oResult.oTable;
    oTable.aColumns = NamedColumns(oRecord);
    while (oScanner.Next(oRecord)) {
        const std::string sProblem = ProblemOf(oRecord, oTable.aColumns.size());
        if (!sProblem.empty()) {
            if (!oOptions.bSkipBadRows)
                FailWith(sProblem);
            oResult.aSkipped.push_back(sProblem);
            continue;
        }
        for (std::size_t i = 0; i < oTable.aColumns.size(); ++i) {
            std::string& sField = oRecord.aFields[i];
            oTable.aColumns[i].aTexts.push_back(IsMissing(sField) ? std::string() : std::move(sField));
        }
        ++oTable.nRows;
    }
    for (Column& oColumn : oTable.aColumns) {
        if (!TurnToNumbers(oColumn, '.') && oResult.cDelimiter != ',')
            TurnToNumbers(oColumn, ',');
        if (oColumn.IsNumeric())
            oColumn.sUnit = UnitInName(oColumn.sName);
    }
    return oResult;
}

void TurnToText(Column& oColumn) {
    if (!oColumn.IsNumeric())
        return;
    for (std::size_t iRow = 0; iRow < oColumn.aNumbers.size(); ++iRow)
        oColumn.aTexts.push_back(oColumn.Text(iRow));
    oColumn.eType = ColumnType::Text;
    oColumn.aNumbers.clear();
    oColumn.sUnit.clear();
}

CsvResult ReadCsvFile(const std::string& sPath, const CsvOptions& oOptions) {
    const std::string sName = std::filesystem::path(sPath).filename().string();
    const std::string sText = ReadTextFile(sPath);
    try {
        return ReadCsv(sText, oOptions);
    } catch (const corvane::Failure& oFailure) {
        FailWith(sName + ": " + oFailure.Description);
    }
}

std::string WriteCsv(const Table& oTable, const CsvStyle& oStyle) {
    std::string sText;
    const auto FieldOf = [&](const Column& oColumn, std::size_t iRow) {
        std::string sField = oColumn.Text(iRow);
        if (oColumn.IsNumeric() && oStyle.cPoint != '.')
            std::replace(sField.begin(), sField.end(), '.', oStyle.cPoint);
        return sField;
    };
    const auto WriteRow = [&](auto fnField) {
        for (std::size_t i = 0; i < oTable.aColumns.size(); ++i)
            sText += (i > 0 ? std::string(1, oStyle.cDelimiter) : "") +
                     Quoted(fnField(oTable.aColumns[i]), oStyle.cDelimiter);
        sText += '\n';
    };
    WriteRow([](const Column& oColumn) { return oColumn.sName; });
    for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow)
        WriteRow([&](const Column& oColumn) { return FieldOf(oColumn, iRow); });
    return sText;
}

} // namespace studies
