#include "Database.h"

#include "Errors.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>
#include <sqlite3.h>
#include <system_error>
#include <thread>

namespace studies {

Statement::Statement(Database& database, std::string_view sql) : m_database(database) {
    sqlite3_stmt* statement = nullptr;
    m_database.Check(
        sqlite3_prepare_v2(database.Handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
    m_statement.reset(statement);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement& Statement::Bind(std::int64_t value) {
    m_database.Check(sqlite3_bind_int64(m_statement.get(), ++m_bound, value));
    return *this;
}

Statement& Statement::Bind(double value) {
    if (std::isnan(value))
        return BindNull();
    m_database.Check(sqlite3_bind_double(m_statement.get(), ++m_bound, value));
    return *this;
}

Statement& Statement::Bind(std::string_view value) {
    m_database.Check(sqlite3_bind_text64(m_statement.get(), ++m_bound, value.data() ? value.data() : "", value.size(),
                                         SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

Statement& Statement::BindNull() {
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
    m_database.Check(sqlite3_reset(m_statement.get()));
    m_bound = 0;
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

Database::Database(std::string path) : m_path(std::move(path)) {
    const std::filesystem::path folder = std::filesystem::path(m_path).parent_path();
    std::error_code error;
    if (!folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error)
        FailWith(Translated("The folder “%1” can't be created: %2.", {folder.string(), error.message()}));
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
        FailWith(Translated(
            "The file “%1” is damaged or isn't a file of studies. Move it away to start with an empty one.", {m_path}));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        FailWith(Translated("The file “%1” is in use by another program. Try again.", {m_path}));
    case SQLITE_CANTOPEN:
        FailWith(Translated("The file “%1” can't be opened.", {m_path}));
    case SQLITE_READONLY:
        FailWith(Translated("The file “%1” can't be written.", {m_path}));
    case SQLITE_CONSTRAINT:
        FailWith(Translated(
            "This doesn't fit what the studies are by now: they may have been changed in another window of Studies."));
    case SQLITE_FULL:
        FailWith(Translated("There is no space left for the file “%1”.", {m_path}));
    default:
        FailWith(Translated("The file “%1”: %2.", {m_path, sqlite3_errmsg(m_handle.get())}));
    }
}

void Database::Run(std::string_view sql) {
    Check(sqlite3_exec(Handle(), std::string(sql).c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::WholeOf(std::string_view sql) {
    Statement statement(*this, sql);
    return statement.Step() ? statement.Whole(0) : 0;
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

} // namespace studies
