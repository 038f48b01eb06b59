#include "DataTables.h"

#include "Errors.h"
#include "corvane/author/Jobs.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace studies {

std::string DataTable(Id dataSetId) {
    return "data_" + std::to_string(dataSetId);
}

void CreateDataTable(Database& database, Id dataSetId, const std::vector<Column>& columns) {
    std::string sql = "CREATE TABLE " + DataTable(dataSetId) + "(id INTEGER PRIMARY KEY";
    for (std::size_t i = 0; i < columns.size(); ++i)
        sql += ", c" + std::to_string(i) + (columns[i].IsNumeric() ? " REAL" : " TEXT");
    database.Run(sql + ")");
}

void WriteRows(Database& database, Id dataSetId, const Table& table, std::size_t first, std::size_t last) {
    std::string places;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        places += ",?";
    Statement insert(database, "INSERT INTO " + DataTable(dataSetId) + " VALUES(NULL" + places + ")");
    for (std::size_t row = first; row < last; ++row) {
        for (const Column& column : table.columns) {
            if (column.IsMissing(row))
                insert.Bind(nullptr);
            else if (column.IsNumeric())
                insert.Bind(column.numbers[row]);
            else
                insert.Bind(column.texts[row]);
        }
        insert.Run();
    }
}

std::vector<Column> ColumnsOf(Database& database, Id dataSetId, std::string_view schema) {
    return database.All(
        "SELECT name, type, unit, decimals FROM " + std::string(schema) +
            "data_columns WHERE data_set_id=? ORDER BY position",
        [](const Statement& row) {
            const auto decimals = static_cast<int>(row.Whole(3));
            return Column{row.Text(0), ColumnTypeOf(row.Text(1)), {}, {}, row.Text(2), decimals};
        },
        dataSetId);
}

bool ReadMoreRows(Database& database, Id dataSetId, Table& table, std::size_t most) {
    Statement rows(database, "SELECT * FROM " + DataTable(dataSetId) + " WHERE id>? ORDER BY id LIMIT ?");
    rows.With(table.rows, most);
    std::size_t read = 0;
    for (; rows.Step(); ++read) {
        int columnIndex = 0;
        for (Column& column : table.columns) {
            if (column.IsNumeric())
                column.numbers.push_back(rows.Number(++columnIndex));
            else
                column.texts.push_back(rows.Text(++columnIndex));
        }
        ++table.rows;
    }
    return read == most;
}

Table ReadDataTable(const std::string& path, Id dataSetId, corvane::JobProgress& progress) {
    constexpr std::size_t inOnePiece = 2000; // rows
    Database database(path);
    if (database.WholeOf("SELECT count(*) FROM data_sets WHERE id=?", dataSetId) == 0)
        FailWith(Translated("The selection no longer exists."));
    const auto rows =
        static_cast<std::size_t>(database.WholeOf("SELECT row_count FROM data_sets WHERE id=?", dataSetId));
    Table table;
    table.columns = ColumnsOf(database, dataSetId);
    for (Column& column : table.columns) {
        column.numbers.reserve(column.IsNumeric() ? rows : 0);
        column.texts.reserve(column.IsNumeric() ? 0 : rows);
    }
    while (ReadMoreRows(database, dataSetId, table, inOnePiece)) {
        progress.StopIfCancelled();
        progress.SetPart(table.rows, rows);
    }
    return table;
}

void WriteDataTable(const std::string& path, Id dataSetId, const Table& table, corvane::JobProgress& progress) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds longest(40); // that others wait for the file
    constexpr std::chrono::milliseconds pause(2);    // in which one that waits finds it free
    constexpr std::size_t inOnePiece = 200;          // rows
    Database database(path);
    const auto change = [&](const auto& act) {
        Transaction transaction(database);
        act();
        transaction.Commit();
    };
    change([&] { CreateDataTable(database, dataSetId, table.columns); });
    try {
        for (std::size_t row = 0; row < table.rows;) {
            change([&] {
                for (const auto begin = Clock::now(); row < table.rows && Clock::now() - begin < longest;) {
                    const std::size_t last = std::min(row + inOnePiece, table.rows);
                    WriteRows(database, dataSetId, table, row, last);
                    row = last;
                }
            });
            progress.SetPart(row, table.rows);
            progress.StopIfCancelled();
            std::this_thread::sleep_for(pause);
        }
    } catch (...) {
        database.Run("DROP TABLE IF EXISTS " + DataTable(dataSetId));
        throw;
    }
}

} // namespace studies
