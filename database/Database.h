// SQLite for the plug-ins of an application: statements that bind and read values, transactions, and failures that name
// the file. Of the thread that makes it; a job has a connection of its own.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace corvane::database {

class Database;

// One SQL statement. Values bind in order, then Step goes through the rows. Ends before its database.
class __attribute__((visibility("default"))) Statement {
public:
    Statement(Database& database, std::string_view sql);

    Statement& Bind(double value); // NaN binds as null
    Statement& Bind(std::string_view value);
    Statement& Bind(std::nullptr_t null);
    Statement& Bind(std::integral auto value) { return BindWhole(static_cast<std::int64_t>(value)); }
    // All of these, from the first place on.
    template <class... Values>
    Statement& With(const Values&... values) {
        Again();
        (Bind(values), ...);
        return *this;
    }

    // True while there is a row.
    bool Step();
    // Runs the statement to its end, and makes it ready to bind again.
    void Run();
    // Ready to bind again, at its end or not.
    Statement& Again();

    // Of the row, by the column's number from 0.
    [[nodiscard]] std::int64_t Whole(int column) const;
    [[nodiscard]] double Number(int column) const;    // NaN for null
    [[nodiscard]] std::string Text(int column) const; // "" for null

private:
    Statement& BindWhole(std::int64_t value);

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    Database& m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    int m_bound = 0;
};

enum class Problem {
    NoFolder,     // it can't be created; the detail says why
    NotOpened,    // no permission, or a folder
    NotADatabase, // another kind of file, or damaged
    InUse,        // by another program, for longer than two seconds
    ReadOnly,
    Constraint, // what is written doesn't fit what is there by now
    NoSpace,
    Other // the detail is SQLite's text
};

class __attribute__((visibility("default"))) Database {
public:
    // How failures are reported: raises a failure of the application's own, or leaves it to the database, whose
    // failures have the number ObjectErrorBase + 1, the source "Database" and an English text.
    using Report = std::function<void(Problem problem, const std::string& path, const std::string& detail)>;

    // Makes the file and its folder when they aren't there; the path ":memory:" makes one that ends with the object.
    // Fails when the file can't be opened. That it is no database, the first statement says.
    explicit Database(std::string path, Report report = {});

    // One statement with values, or any number of them without.
    void Run(std::string_view sql);
    template <class... Values>
    void Run(std::string_view sql, const Values&... values) {
        Prepared(sql).With(values...).Run();
    }
    // What row(statement) makes of each row that is found.
    template <class Row, class... Values>
    auto All(std::string_view sql, const Row& row, const Values&... values) {
        std::vector<std::invoke_result_t<const Row&, const Statement&>> found;
        Statement& rows = Prepared(sql).With(values...);
        try {
            while (rows.Step())
                found.push_back(row(rows));
        } catch (...) {
            rows.Again();
            throw;
        }
        return found;
    }
    // The texts of the first column.
    template <class... Values>
    [[nodiscard]] std::vector<std::string> Texts(std::string_view sql, const Values&... values) {
        return All(
            sql, [](const Statement& row) { return row.Text(0); }, values...);
    }
    // The first number that is found; 0 for none.
    template <class... Values>
    [[nodiscard]] std::int64_t WholeOf(std::string_view sql, const Values&... values) {
        const auto found = All(
            sql, [](const Statement& row) { return row.Whole(0); }, values...);
        return found.empty() ? 0 : found.front();
    }
    // Compiled once, and kept: the same object for the same text, not to be used within itself.
    [[nodiscard]] Statement& Prepared(std::string_view sql);

    // The number that the last row got.
    [[nodiscard]] std::int64_t LastId() const;
    // How many rows the last statement has inserted, changed or deleted.
    [[nodiscard]] int ChangeCount() const;
    [[nodiscard]] const std::string& Path() const { return m_path; }

    // Fails with what SQLite says about a result that isn't success.
    void Check(int result) const;
    [[nodiscard]] sqlite3* Handle() const { return m_handle.get(); }

private:
    [[noreturn]] void FailWith(Problem problem, const std::string& detail = {}) const;

    struct Close {
        void operator()(sqlite3* handle) const;
    };
    std::string m_path;
    Report m_report;
    std::unique_ptr<sqlite3, Close> m_handle;
    std::map<std::string, Statement, std::less<>> m_prepared;
};

// All or nothing: what isn't committed when it ends is undone.
class __attribute__((visibility("default"))) Transaction {
public:
    // As it begins, no other can write any more, unless it is to read only, by "BEGIN".
    explicit Transaction(Database& database, std::string_view begin = "BEGIN IMMEDIATE");
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    Database& m_database;
    bool m_open = true;
};

} // namespace corvane::database
