#include "Database.h"

#include "Errors.h"

#include <cmath>
#include <filesystem>
#include <limits>
#include <sqlite3.h>
#include <system_error>

namespace studies {

Statement::Statement(Database& oDatabase, std::string_view sSql) : m_oDatabase(oDatabase) {
    sqlite3_stmt* pStatement = nullptr;
    m_oDatabase.Check(
        sqlite3_prepare_v2(oDatabase.Handle(), sSql.data(), static_cast<int>(sSql.size()), &pStatement, nullptr));
    m_pStatement.reset(pStatement);
}

void Statement::Finalize::operator()(sqlite3_stmt* pStatement) const {
    sqlite3_finalize(pStatement);
}

Statement& Statement::Bind(std::int64_t nValue) {
    m_oDatabase.Check(sqlite3_bind_int64(m_pStatement.get(), ++m_nBound, nValue));
    return *this;
}

Statement& Statement::Bind(double dblValue) {
    if (std::isnan(dblValue))
        return BindNull();
    m_oDatabase.Check(sqlite3_bind_double(m_pStatement.get(), ++m_nBound, dblValue));
    return *this;
}

Statement& Statement::Bind(std::string_view sValue) {
    m_oDatabase.Check(sqlite3_bind_text64(m_pStatement.get(), ++m_nBound, sValue.data() ? sValue.data() : "",
                                          sValue.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

Statement& Statement::BindNull() {
    m_oDatabase.Check(sqlite3_bind_null(m_pStatement.get(), ++m_nBound));
    return *this;
}

bool Statement::Step() {
    const int nResult = sqlite3_step(m_pStatement.get());
    if (nResult == SQLITE_ROW)
        return true;
    if (nResult != SQLITE_DONE)
        m_oDatabase.Check(nResult);
    return false;
}

void Statement::Run() {
    while (Step()) {
    }
    m_oDatabase.Check(sqlite3_reset(m_pStatement.get()));
    m_nBound = 0;
}

std::int64_t Statement::Whole(int iColumn) const {
    return sqlite3_column_int64(m_pStatement.get(), iColumn);
}

double Statement::Number(int iColumn) const {
    return sqlite3_column_type(m_pStatement.get(), iColumn) == SQLITE_NULL
               ? std::numeric_limits<double>::quiet_NaN()
               : sqlite3_column_double(m_pStatement.get(), iColumn);
}

std::string Statement::Text(int iColumn) const {
    const auto* pText = reinterpret_cast<const char*>(sqlite3_column_text(m_pStatement.get(), iColumn));
    return pText ? std::string(pText, static_cast<std::size_t>(sqlite3_column_bytes(m_pStatement.get(), iColumn)))
                 : std::string();
}

Database::Database(std::string sPath) : m_sPath(std::move(sPath)) {
    const std::filesystem::path oFolder = std::filesystem::path(m_sPath).parent_path();
    std::error_code oError;
    if (!oFolder.empty())
        std::filesystem::create_directories(oFolder, oError);
    if (oError)
        FailWith("The folder “" + oFolder.string() + "” can't be created: " + oError.message() + ".");
    sqlite3* pHandle = nullptr;
    const int nResult = sqlite3_open_v2(m_sPath.c_str(), &pHandle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    m_pHandle.reset(pHandle);
    Check(nResult);
    sqlite3_extended_result_codes(pHandle, 1);
    sqlite3_busy_timeout(pHandle, 2000);
}

void Database::Close::operator()(sqlite3* pHandle) const {
    sqlite3_close_v2(pHandle);
}

void Database::Check(int nResult) const {
    switch (nResult & 0xFF) {
    case SQLITE_OK:
        return;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        FailWith("The file “" + m_sPath +
                 "” is damaged or isn't a file of studies. Move it away to start with an empty one.");
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        FailWith("The file “" + m_sPath + "” is in use by another program. Try again.");
    case SQLITE_CANTOPEN:
        FailWith("The file “" + m_sPath + "” can't be opened.");
    case SQLITE_READONLY:
        FailWith("The file “" + m_sPath + "” can't be written.");
    case SQLITE_FULL:
        FailWith("There is no space left for the file “" + m_sPath + "”.");
    default:
        FailWith("The file “" + m_sPath + "”: " + sqlite3_errmsg(m_pHandle.get()) + ".");
    }
}

void Database::Run(std::string_view sSql) {
    Check(sqlite3_exec(Handle(), std::string(sSql).c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::WholeOf(std::string_view sSql) {
    Statement oStatement(*this, sSql);
    return oStatement.Step() ? oStatement.Whole(0) : 0;
}

std::int64_t Database::LastId() const {
    return sqlite3_last_insert_rowid(Handle());
}

Transaction::Transaction(Database& oDatabase) : m_oDatabase(oDatabase) {
    m_oDatabase.Run("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
    // SQLite has rolled back by itself after some failures; then there is nothing to do.
    if (m_bOpen && sqlite3_get_autocommit(m_oDatabase.Handle()) == 0)
        sqlite3_exec(m_oDatabase.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
    m_oDatabase.Run("COMMIT");
    m_bOpen = false;
}

} // namespace studies
