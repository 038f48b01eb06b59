#include "database/Database.h"

#include "corvane/base/Failure.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>
#include <sqlite3.h>
#include <system_error>
#include <thread>

namespace corvane::database {

Statement::Statement(Database& database, std::string_view sql) : m_database(database) {
    sqlite3_stmt* statement = nullptr;
    m_database.Check(
        sqlite3_prepare_v2(database.Handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
    m_statement.reset(statement);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement& Statement::BindWhole(std::int64_t value) {
    m_database.Check(sqlite3_bind_int64(m_statement.get(), ++m_bound, value));
    return *this;
}

Statement& Statement::Bind(double value) {
    if (std::isnan(value))
        return Bind(nullptr);
    m_database.Check(sqlite3_bind_double(m_statement.get(), ++m_bound, value));
    return *this;
}

Statement& Statement::Bind(std::string_view value) {
    m_database.Check(sqlite3_bind_text64(m_statement.get(), ++m_bound, value.data() ? value.data() : "", value.size(),
                                         SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

Statement& Statement::Bind(std::nullptr_t) {
    m_database.Check(sqlite3_bind_null(m_statement.get(), ++m_bound));
    return *this;
}

bool Statement::Step() {
    const int result = sqlite3_step(m_statement.get());
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        m_database.Check(result);
    return false;
}

void Statement::Run() {
    while (Step()) {
    }
    Again();
}

Statement& Statement::Again() {
    sqlite3_reset(m_statement.get()); // says again how the last step failed
    m_bound = 0;
    return *this;
}

std::int64_t Statement::Whole(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

double Statement::Number(int column) const {
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL
               ? std::numeric_limits<double>::quiet_NaN()
               : sqlite3_column_double(m_statement.get(), column);
}

std::string Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column)))
                : std::string();
}

namespace {

// Every millisecond for about two seconds: a job of this program leaves the file free for a moment only, again and
// again.
int WaitForOthers(void*, int tries) {
    constexpr int mostTries = 2000;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return tries < mostTries ? 1 : 0;
}

} // namespace

Database::Database(std::string path, Report report) : m_path(std::move(path)), m_report(std::move(report)) {
    const std::filesystem::path folder = std::filesystem::path(m_path).parent_path();
    std::error_code error;
    if (!folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error)
        FailWith(Problem::NoFolder, error.message());
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(m_path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    m_handle.reset(handle);
    Check(result);
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_handler(handle, &WaitForOthers, nullptr);
}

void Database::Close::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

void Database::Check(int result) const {
    switch (result & 0xFF) {
    case SQLITE_OK:
        return;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        FailWith(Problem::NotADatabase);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        FailWith(Problem::InUse);
    case SQLITE_CANTOPEN:
        FailWith(Problem::NotOpened);
    case SQLITE_READONLY:
        FailWith(Problem::ReadOnly);
    case SQLITE_CONSTRAINT:
        FailWith(Problem::Constraint);
    case SQLITE_FULL:
        FailWith(Problem::NoSpace);
    default:
        FailWith(Problem::Other, sqlite3_errmsg(m_handle.get()));
    }
}

void Database::FailWith(Problem problem, const std::string& detail) const {
    if (m_report)
        m_report(problem, m_path, detail);
    std::string text;
    switch (problem) {
    case Problem::NoFolder:
        text = "The folder of “" + m_path + "” can't be created: " + detail + ".";
        break;
    case Problem::NotADatabase:
        text = "The file “" + m_path + "” is damaged or isn't a database.";
        break;
    case Problem::InUse:
        text = "The file “" + m_path + "” is in use by another program. Try again.";
        break;
    case Problem::NotOpened:
        text = "The file “" + m_path + "” can't be opened.";
        break;
    case Problem::ReadOnly:
        text = "The file “" + m_path + "” can't be written.";
        break;
    case Problem::NoSpace:
        text = "There is no space left for the file “" + m_path + "”.";
        break;
    case Problem::Constraint:
        text = "This doesn't fit what is in the file “" + m_path + "” by now.";
        break;
    case Problem::Other:
        text = "The file “" + m_path + "”: " + detail + ".";
    }
    Fail(FailureNumber::ObjectErrorBase + 1, std::move(text), "Database");
}

void Database::Run(std::string_view sql) {
    Check(sqlite3_exec(Handle(), std::string(sql).c_str(), nullptr, nullptr, nullptr));
}

Statement& Database::Prepared(std::string_view sql) {
    const auto found = m_prepared.find(sql);
    return found != m_prepared.end() ? found->second
                                     : m_prepared.try_emplace(std::string(sql), *this, sql).first->second;
}

std::int64_t Database::LastId() const {
    return sqlite3_last_insert_rowid(Handle());
}

int Database::ChangeCount() const {
    return sqlite3_changes(Handle());
}

Transaction::Transaction(Database& database, std::string_view begin) : m_database(database) {
    m_database.Run(begin);
}

Transaction::~Transaction() {
    // SQLite has rolled back by itself after some failures; then there is nothing to do.
    if (m_open && sqlite3_get_autocommit(m_database.Handle()) == 0)
        sqlite3_exec(m_database.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
    m_database.Run("COMMIT");
    m_open = false;
}

} // namespace corvane::database
