#include "Csv.h"

#include "EditedText.h"
#include "Errors.h"
#include "TextFile.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>

namespace studies {
namespace {

struct Record {
    std::vector<std::string> fields;
    std::size_t line = 0;
    std::string problem;     // "" for a sound one
    bool strayQuote = false; // within a field that doesn't begin with one: hardly the right delimiter
};

class CsvScanner {
public:
    CsvScanner(std::string_view text, char delimiter, std::size_t skipLines = 0)
        : m_text(text), m_delimiter(delimiter) {
        if (m_text.substr(0, 3) == "\xEF\xBB\xBF")
            m_i = 3;
        for (; skipLines > 0 && m_i < m_text.size(); --skipLines, ++m_line)
            m_i = std::min(m_text.find('\n', m_i), m_text.size() - 1) + 1;
    }

    [[nodiscard]] std::size_t Read() const { return m_i; } // bytes

    // False at the end of the text.
    bool Next(Record& record) {
        while (m_i < m_text.size() && SkipBlankLine()) {
        }
        if (m_i >= m_text.size())
            return false;
        record.fields.clear(); // and keeps its memory for the next one
        record.line = m_line;
        record.problem.clear();
        record.strayQuote = false;
        bool more = true;
        while (more)
            more = ReadField(record);
        return true;
    }

private:
    bool SkipBlankLine() {
        std::size_t i = m_i;
        while (i < m_text.size() && (m_text[i] == ' ' || m_text[i] == '\r'))
            ++i;
        if (i < m_text.size() && m_text[i] != '\n')
            return false;
        m_i = std::min(i + 1, m_text.size());
        ++m_line;
        return true;
    }

    // True when another field follows in the record.
    bool ReadField(Record& record) {
        if (m_i < m_text.size() && m_text[m_i] == '"')
            ReadQuoted(record);
        else
            ReadPlain(record);
        if (m_i < m_text.size() && m_text[m_i] == m_delimiter) {
            ++m_i;
            return true;
        }
        if (m_i < m_text.size()) { // the line's end
            ++m_i;
            ++m_line;
        }
        return false;
    }

    void ReadPlain(Record& record) {
        const std::size_t start = m_i;
        while (m_i < m_text.size() && m_text[m_i] != m_delimiter && m_text[m_i] != '\n')
            ++m_i;
        std::string_view field = m_text.substr(start, m_i - start);
        while (!field.empty() && (field.back() == ' ' || field.back() == '\r'))
            field.remove_suffix(1);
        while (!field.empty() && field.front() == ' ')
            field.remove_prefix(1);
        record.strayQuote = record.strayQuote || field.find('"') != std::string_view::npos;
        record.fields.emplace_back(field);
    }

    void ReadQuoted(Record& record) {
        std::string field;
        ++m_i;
        while (m_i < m_text.size()) {
            const char c = m_text[m_i++];
            if (c == '"') {
                if (m_i >= m_text.size() || m_text[m_i] != '"') {
                    EndQuoted(record);
                    record.fields.push_back(std::move(field));
                    return;
                }
                ++m_i;
            } else if (c == '\n') {
                ++m_line;
            }
            field += c;
        }
        record.problem = Translated("a quote isn't closed");
        record.fields.push_back(std::move(field));
    }

    void EndQuoted(Record& record) {
        const std::size_t start = m_i;
        while (m_i < m_text.size() && m_text[m_i] != m_delimiter && m_text[m_i] != '\n')
            ++m_i;
        const std::string_view behind = m_text.substr(start, m_i - start);
        if (behind.find_first_not_of(" \r") != std::string_view::npos)
            record.problem = Translated("text follows a closing quote");
    }

    std::string_view m_text;
    char m_delimiter;
    std::size_t m_i = 0;
    std::size_t m_line = 1;
};

bool IsMissing(std::string_view field) {
    static constexpr std::array<std::string_view, 5> words{"NA", "N/A", "#N/A", "NaN", "null"};
    constexpr std::size_t longest = 4;
    if (field.size() > longest || (!field.empty() && field[0] >= '0' && field[0] <= '9'))
        return false; // most are no word at all
    return field.empty() || std::any_of(words.begin(), words.end(),
                                        [&](std::string_view word) { return corvane::EqualText(field, word); });
}

// Every column has a name, and no two have the same.
std::vector<Column> NamedColumns(const std::vector<std::string>& given) {
    std::vector<Column> columns;
    const auto IsTaken = [&](const std::string& name) {
        return std::any_of(columns.begin(), columns.end(),
                           [&](const Column& column) { return corvane::EqualText(column.name, name); });
    };
    for (std::size_t i = 0; i < given.size(); ++i) {
        const std::string wanted = given[i].empty() ? Translated("column %1", {std::to_string(i + 1)}) : given[i];
        columns.push_back({FreeText(wanted, IsTaken), ColumnType::Text, {}, {}});
    }
    return columns;
}

// Why a number can't stand for the text that it was read from; "" when it can. Zeros at the end of decimals may go.
std::string LossOf(std::string_view text, double value) {
    const std::string_view digits = text.substr(text.find_first_not_of("+-"));
    if (digits.size() > 1 && digits[0] == '0' && digits[1] >= '0' && digits[1] <= '9')
        return Translated("“%1” begins with a zero", {text});
    if (LosesDigits(text, value))
        return Translated("“%1” has more digits than a number keeps", {text});
    return {};
}

int DecimalsOf(std::string_view text, char point) {
    const std::size_t at = text.find(point);
    return at == std::string_view::npos || text.find_first_of("eE") != std::string_view::npos
               ? 0
               : static_cast<int>(text.size() - at - 1);
}

// The texts of a column as numbers.
struct NumbersRead {
    std::vector<double> values;
    std::size_t others = 0; // texts that aren't numbers
    const std::string* firstOther = nullptr;
    std::string loss; // of the first number that can't stand for its text
    bool whole = true;
    int decimals = -1; // of all numbers; -1: there is none, -2: not all have as many
};

// All of them, or as far as they are numbers.
NumbersRead ReadNumbers(const Column& column, char point, bool all) {
    NumbersRead read;
    read.values.reserve(column.texts.size());
    for (const std::string& text : column.texts) {
        const std::optional<double> value = text.empty() ? std::nullopt : NumberOf(text, point);
        read.values.push_back(value.value_or(std::numeric_limits<double>::quiet_NaN()));
        if (!value) {
            if (!text.empty() && read.others++ == 0)
                read.firstOther = &text;
            if (!text.empty() && !all)
                return read;
            continue;
        }
        if (read.loss.empty())
            read.loss = LossOf(text, *value);
        read.whole = read.whole && text.find_first_not_of("+-0123456789") == std::string::npos;
        const int own = DecimalsOf(text, point);
        read.decimals = read.decimals == -1 || read.decimals == own ? own : -2;
    }
    return read;
}

void Take(Column& column, NumbersRead read) {
    column.type = read.whole ? ColumnType::Whole : ColumnType::Number;
    column.decimals = std::max(read.decimals, 0);
    column.numbers = std::move(read.values);
    column.texts.clear();
}

// Of values that don't fit the type that the user wants.
void NoteOthers(const Column& column, std::size_t others, const std::string* first, const std::string& sentence,
                std::vector<std::string>& notes) {
    if (first)
        notes.push_back(Translated(sentence, {column.name, corvane::ShownNumber(std::to_string(others)), *first}));
}

void ForceNumbers(Column& column, char point, std::vector<std::string>& notes) {
    NumbersRead read = ReadNumbers(column, point, true);
    NoteOthers(column, read.others, read.firstOther,
               Translated("“%1”: values that aren't numbers become missing (%2), the first is “%3”."), notes);
    Take(column, std::move(read));
}

// In the order that suits most values.
void ForceDates(Column& column, std::vector<std::string>& notes) {
    std::vector<std::string> best;
    std::size_t fewest = column.texts.size() + 1;
    const std::string* firstOther = nullptr;
    for (const std::string_view order : {"ymd", "dmy", "mdy"}) {
        std::vector<std::string> dates;
        std::size_t others = 0;
        const std::string* first = nullptr;
        for (const std::string& text : column.texts) {
            dates.push_back(DateOf(text, order).value_or(""));
            if (dates.back().empty() && !text.empty() && others++ == 0)
                first = &text;
        }
        if (others < fewest) {
            fewest = others;
            firstOther = first;
            best = std::move(dates);
        }
    }
    NoteOthers(column, fewest, firstOther,
               Translated("“%1”: values that aren't dates become missing (%2), the first is “%3”."), notes);
    column.type = ColumnType::Date;
    column.texts = std::move(best);
}

bool HasCommas(const Column& column) {
    return std::any_of(column.texts.begin(), column.texts.end(), [](const std::string& text) {
        return text.find(',') != std::string::npos && NumberOf(text, ',');
    });
}

// Of a column that would be one of numbers but for a few values, such as "<0.5".
void NoteFewTexts(const Column& column, char point, std::vector<std::string>& notes) {
    constexpr std::size_t sample = 1000;
    std::size_t numbers = 0;
    std::size_t seen = 0;
    const std::string* first = nullptr;
    for (std::size_t row = 0; row < std::min(sample, column.texts.size()); ++row)
        if (const std::string& text = column.texts[row]; !text.empty()) {
            ++seen;
            if (NumberOf(text, point))
                ++numbers;
            else if (!first)
                first = &text;
        }
    if (first && numbers * 5 >= seen * 4)
        notes.push_back(
            Translated("“%1” stays text: “%2” isn't a number. Read it as numbers to make such values missing.",
                       {column.name, *first}));
}

void ReadAutomatically(Column& column, char point, char delimiter, std::vector<std::string>& notes) {
    const char first = point != 0 ? point : '.';
    NumbersRead read = ReadNumbers(column, first, false);
    if (read.others > 0 && point == 0 && delimiter != ',')
        read = ReadNumbers(column, ',', false);
    if (read.others > 0)
        NoteFewTexts(column, point == 0 && delimiter != ',' && HasCommas(column) ? ',' : first, notes);
    else if (!read.loss.empty())
        notes.push_back(Translated("“%1” stays text: %2.", {column.name, read.loss}));
    else if (read.decimals != -1)
        Take(column, std::move(read));
}

void ReadColumn(Column& column, ColumnReading reading, const CsvOptions& options, CsvResult& result) {
    switch (reading) {
    case ColumnReading::Automatic:
        ReadAutomatically(column, options.point, result.delimiter, result.notes);
        break;
    case ColumnReading::Number:
        ForceNumbers(column, options.point != 0 ? options.point : HasCommas(column) ? ',' : '.', result.notes);
        break;
    case ColumnReading::Category:
        column.type = ColumnType::Category;
        break;
    case ColumnReading::Date:
        ForceDates(column, result.notes);
        break;
    case ColumnReading::Text:
        break;
    }
    if (column.IsNumeric())
        column.unit = UnitInName(column.name);
}

std::string ProblemOf(const Record& record, std::size_t columns) {
    std::string problem = record.problem;
    const std::size_t fields = record.fields.size();
    if (problem.empty() && fields != columns)
        problem = Translated(fields, "%1 field where the first row has %2", "%1 fields where the first row has %2",
                             {std::to_string(columns)});
    return problem.empty() ? problem : Translated("Line %1: %2.", {std::to_string(record.line), problem});
}

std::string Quoted(const std::string& field, char delimiter) {
    if (field.find_first_of("\"\r\n") == std::string::npos && field.find(delimiter) == std::string::npos &&
        !IsMissing(field) && field.front() != ' ' && field.back() != ' ')
        return field;
    if (field.empty())
        return field;
    std::string quoted = "\"";
    for (const char c : field) {
        if (c == '"')
            quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

} // namespace

char DetectDelimiter(std::string_view text, std::size_t skipLines) {
    constexpr int sample = 50;
    char bestCharacter = ',';
    std::size_t best = 0;
    for (const char delimiter : {',', ';', '\t'}) {
        CsvScanner scanner(text, delimiter, skipLines);
        Record record;
        if (!scanner.Next(record) || record.fields.size() < 2)
            continue;
        const std::size_t columns = record.fields.size();
        std::size_t even = 0;
        int read = 0;
        do
            even += record.fields.size() == columns && !record.strayQuote ? 1U : 0U;
        while (++read < sample && scanner.Next(record));
        // Even rows count first, then the number of columns.
        const std::size_t score = even * 10000 + std::min<std::size_t>(columns, 9999);
        if (score > best) {
            best = score;
            bestCharacter = delimiter;
        }
    }
    return bestCharacter;
}

CsvResult ReadCsv(std::string_view text, const CsvOptions& options, corvane::JobProgress& progress) {
    CsvResult result;
    result.delimiter = options.delimiter != 0 ? options.delimiter : DetectDelimiter(text, options.skipLines);
    CsvScanner scanner(text, result.delimiter, options.skipLines);
    Record record;
    if (!scanner.Next(record))
        FailWith(Translated("There is no data: the text is empty."));
    if (!record.problem.empty())
        FailWith(Translated("Line %1: %2.", {std::to_string(record.line), record.problem}));

    Table& table = result.table;
    table.columns = NamedColumns(options.header ? record.fields : std::vector<std::string>(record.fields.size()));
    const auto IsCode = [&](const std::string& field) {
        return std::find(options.missing.begin(), options.missing.end(), field) != options.missing.end();
    };
    constexpr double rowsShare = 0.7; // of the time; the rest goes into numbers
    for (bool more = !options.header || scanner.Next(record); more; more = scanner.Next(record)) {
        if (table.rows % 1000 == 0) {
            progress.StopIfCancelled();
            progress.SetPart(rowsShare * static_cast<double>(scanner.Read()) / static_cast<double>(text.size()));
        }
        const std::string problem = ProblemOf(record, table.columns.size());
        if (!problem.empty()) {
            if (!options.skipBadRows)
                FailWith(problem);
            result.skipped.push_back(problem);
            continue;
        }
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            std::string& field = record.fields[i];
            table.columns[i].texts.push_back(IsMissing(field) || IsCode(field) ? std::string() : std::move(field));
        }
        ++table.rows;
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        Column& column = table.columns[i];
        progress.StopIfCancelled();
        progress.SetPart(rowsShare +
                         (1 - rowsShare) * static_cast<double>(i) / static_cast<double>(table.columns.size()));
        ReadColumn(column, i < options.columns.size() ? options.columns[i] : ColumnReading::Automatic, options, result);
    }
    return result;
}

CsvResult ReadCsvFile(const std::string& path, const CsvOptions& options, corvane::JobProgress& progress) {
    const std::string name = std::filesystem::path(path).filename().string();
    const std::string text = ReadTextFile(path, options.encoding);
    try {
        return ReadCsv(text, options, progress);
    } catch (const corvane::Failure& failure) {
        FailWith(name + ": " + failure.Description);
    }
}

void WriteCsv(const Table& table, const CsvStyle& style, const std::function<void(std::string_view)>& write,
              corvane::JobProgress& progress) {
    constexpr std::size_t inOnePiece = 1'000'000; // bytes
    std::string text;
    const auto AddField = [&](std::size_t i, const std::string& field) {
        if (i > 0)
            text += style.delimiter;
        text += Quoted(field, style.delimiter);
    };
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        AddField(i, table.columns[i].name);
    text += '\n';
    for (std::size_t row = 0; row < table.rows; ++row) {
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            const Column& column = table.columns[i];
            std::string field = column.Text(row);
            if (column.IsNumeric() && style.point != '.')
                std::replace(field.begin(), field.end(), '.', style.point);
            AddField(i, field);
        }
        text += '\n';
        if (row % 1000 == 0) {
            progress.StopIfCancelled();
            progress.SetPart(row, table.rows);
        }
        if (text.size() >= inOnePiece) {
            write(text);
            text.clear();
        }
    }
    write(text);
}

std::string WriteCsv(const Table& table, const CsvStyle& style) {
    std::string text;
    WriteCsv(table, style, [&](std::string_view piece) { text += piece; });
    return text;
}

} // namespace studies
