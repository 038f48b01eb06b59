// SQLite as Studies uses it: statements that bind and read values, transactions, and failures with the file's name.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace studies {

class Database;

// One SQL statement. Values bind in order, then Step goes through the rows.
class Statement {
public:
    Statement(Database& database, std::string_view sql);

    Statement& Bind(std::int64_t value);
    Statement& Bind(double value); // NaN binds as null
    Statement& Bind(std::string_view value);
    Statement& BindNull();

    // True while there is a row.
    bool Step();
    // Runs the statement to its end, and makes it ready to bind again.
    void Run();
    // Ready to bind again, at its end or not.
    Statement& Again();

    [[nodiscard]] std::int64_t Whole(int column) const;
    [[nodiscard]] double Number(int column) const;    // NaN for null
    [[nodiscard]] std::string Text(int column) const; // "" for null

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    Database& m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    int m_bound = 0;
};

class Database {
public:
    // Makes the file and its folder when they aren't there. Fails when the file can't be opened or is no database.
    explicit Database(std::string path);

    void Run(std::string_view sql);
    [[nodiscard]] std::int64_t WholeOf(std::string_view sql);
    [[nodiscard]] std::int64_t LastId() const;
    // How many rows the last statement has inserted, changed or deleted.
    [[nodiscard]] int ChangeCount() const;
    [[nodiscard]] const std::string& Path() const { return m_path; }

    // Fails with what SQLite says about a result that isn't success.
    void Check(int result) const;
    [[nodiscard]] sqlite3* Handle() const { return m_handle.get(); }

private:
    struct Close {
        void operator()(sqlite3* handle) const;
    };
    std::string m_path;
    std::unique_ptr<sqlite3, Close> m_handle;
};

// All or nothing: what isn't committed when it ends is undone.
class Transaction {
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

} // namespace studies
