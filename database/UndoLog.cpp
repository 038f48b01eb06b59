#include "database/UndoLog.h"

#include "corvane/base/Failure.h"

#include <utility>

namespace corvane::database {
namespace {

// The trigger's SQL that writes the statement which undoes one row's change. It finds no row once another program has
// changed that row, too.
std::string InverseOf(std::string_view change, const std::string& table, const std::vector<std::string>& columns) {
    std::string names;
    std::string values;
    std::string settings;
    std::string asChanged;
    for (const std::string& column : columns) {
        const std::string between = names.empty() ? "" : ",";
        names += between + column;
        values += (values.empty() ? "" : "||','||") + ("quote(OLD." + column + ")");
        settings += "||'" + between + column + "='||quote(OLD." + column + ")";
        asChanged += (asChanged.empty() ? "||'" : "||' AND ") + column + " IS '||quote(NEW." + column + ")";
    }
    if (change == "INSERT")
        return "'DELETE FROM " + table + " WHERE '" + asChanged;
    if (change == "DELETE")
        return "'INSERT INTO " + table + "(" + names + ") VALUES('||" + values + "||')'";
    return "'UPDATE " + table + " SET '" + settings + "||' WHERE '" + asChanged;
}

} // namespace

// The triggers are temporary, of this connection alone.
UndoLog::UndoLog(Database& database, const std::vector<std::string>& tables, std::function<void()> check,
                 std::string changedSince)
    : m_database(database), m_check(std::move(check)), m_changedSince(std::move(changedSince)) {
    m_database.Run("CREATE TEMP TABLE undo_log(position INTEGER PRIMARY KEY, statement TEXT NOT NULL)");
    for (const std::string& table : tables) {
        const auto columns = m_database.Texts("SELECT name FROM pragma_table_info(?)", table);
        for (const std::string change : {"INSERT", "UPDATE", "DELETE"})
            m_database.Run("CREATE TEMP TRIGGER log_" + table + "_" + change + " AFTER " + change + " ON main." +
                           table + " BEGIN INSERT INTO undo_log(statement) VALUES(" +
                           InverseOf(change, table, columns) + "); END");
    }
}

void UndoLog::Watch(const std::string& table, const std::string& column) {
    m_database.Run("CREATE TEMP TRIGGER IF NOT EXISTS log_" + table + "_" + column + " AFTER UPDATE OF " + column +
                   " ON main." + table + " BEGIN INSERT INTO undo_log(statement) VALUES('UPDATE " + table + " SET " +
                   column + "='||quote(OLD." + column + ")||' WHERE id='||OLD.id||' AND " + column +
                   " IS '||quote(NEW." + column + ")); END");
}

std::vector<std::string> UndoLog::StatementsAfter(std::int64_t position) {
    return m_database.Texts("SELECT statement FROM undo_log WHERE position>? ORDER BY position DESC", position);
}

void UndoLog::Begin() {
    m_database.Run("DELETE FROM undo_log");
    m_taken = 0;
}

void UndoLog::Perform(std::string label, const std::function<void()>& change) {
    Transaction transaction(m_database);
    Begin();
    change();
    Recorded step{std::move(label), StatementsAfter(0)};
    transaction.Commit();
    m_undo.push_back(std::move(step));
    m_redo.clear();
}

std::string UndoLog::TakeInverse() {
    std::string inverse;
    for (const std::string& statement : StatementsAfter(m_taken))
        inverse += statement + ";\n";
    m_taken = m_database.WholeOf("SELECT max(position) FROM undo_log");
    return inverse;
}

void UndoLog::TakeBack(std::vector<Recorded>& from, std::vector<Recorded>& to) {
    if (from.empty())
        return;
    Transaction transaction(m_database);
    Begin();
    for (const std::string& statement : from.back().statements) {
        m_database.Run(statement);
        if (m_database.ChangeCount() == 0)
            Fail(FailureNumber::ObjectErrorBase + 1, m_changedSince, "Database");
    }
    if (m_check)
        m_check();
    Recorded inverse{from.back().label, StatementsAfter(0)};
    transaction.Commit();
    to.push_back(std::move(inverse));
    from.pop_back();
}

void UndoLog::Forget() {
    m_undo.clear();
    m_redo.clear();
}

} // namespace corvane::database
