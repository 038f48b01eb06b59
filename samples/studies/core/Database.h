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
    Statement(Database& oDatabase, std::string_view sSql);

    Statement& Bind(std::int64_t nValue);
    Statement& Bind(double dblValue); // NaN binds as null
    Statement& Bind(std::string_view sValue);
    Statement& BindNull();

    // True while there is a row.
    bool Step();
    // Runs the statement to its end, and makes it ready to bind anew.
    void Run();

    [[nodiscard]] std::int64_t Whole(int iColumn) const;
    [[nodiscard]] double Number(int iColumn) const;    // NaN for null
    [[nodiscard]] std::string Text(int iColumn) const; // "" for null

private:
    struct Finalize {
        void operator()(sqlite3_stmt* pStatement) const;
    };
    Database& m_oDatabase;
    std::unique_ptr<sqlite3_stmt, Finalize> m_pStatement;
    int m_nBound = 0;
};

class Database {
public:
    // Makes the file and its folder when they aren't there. Fails when the file can't be opened or is no database.
    explicit Database(std::string sPath);

    void Run(std::string_view sSql);
    [[nodiscard]] std::int64_t WholeOf(std::string_view sSql);
    [[nodiscard]] std::int64_t LastId() const;
    [[nodiscard]] const std::string& Path() const { return m_sPath; }

    // Fails with what SQLite says about a result that isn't success.
    void Check(int nResult) const;
    [[nodiscard]] sqlite3* Handle() const { return m_pHandle.get(); }

private:
    struct Close {
        void operator()(sqlite3* pHandle) const;
    };
    std::string m_sPath;
    std::unique_ptr<sqlite3, Close> m_pHandle;
};

// All or nothing: what isn't committed when it ends is undone.
class Transaction {
public:
    explicit Transaction(Database& oDatabase);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    Database& m_oDatabase;
    bool m_bOpen = true;
};

} // namespace studies
