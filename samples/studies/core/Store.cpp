#include "Store.h"

#include "Errors.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace studies {
namespace {

constexpr std::int64_t ApplicationId = 0x53545544;
constexpr std::int64_t SchemaVersion = 2;
constexpr std::size_t LongestName = 120;

// The tables whose changes are undone. The data themselves stand in a table of their own for each data set and stay
// until the file is next opened, so that a step costs no more for many rows than for few.
constexpr std::array<const char*, 4> LoggedTables{"studies", "data_sets", "data_columns", "analyses"};

constexpr const char* Schema =
    "PRAGMA application_id=1398035780;"
    "CREATE TABLE studies(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, name_key TEXT NOT NULL UNIQUE);"
    "CREATE TABLE data_sets(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " study_id INTEGER NOT NULL REFERENCES studies(id) DEFERRABLE INITIALLY DEFERRED,"
    " name TEXT NOT NULL, source TEXT NOT NULL, row_count INTEGER NOT NULL);"
    "CREATE TABLE data_columns(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " data_set_id INTEGER NOT NULL REFERENCES data_sets(id) DEFERRABLE INITIALLY DEFERRED,"
    " position INTEGER NOT NULL, name TEXT NOT NULL, type TEXT NOT NULL);"
    "CREATE TABLE analyses(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " study_id INTEGER NOT NULL REFERENCES studies(id) DEFERRABLE INITIALLY DEFERRED,"
    " data_set_id INTEGER NOT NULL REFERENCES data_sets(id) DEFERRABLE INITIALLY DEFERRED,"
    " name TEXT NOT NULL, group_column TEXT NOT NULL);"
    "CREATE INDEX data_sets_by_study ON data_sets(study_id);"
    "CREATE INDEX data_columns_by_set ON data_columns(data_set_id);"
    "CREATE INDEX analyses_by_study ON analyses(study_id);"
    "CREATE INDEX analyses_by_set ON analyses(data_set_id);"
    "PRAGMA user_version=1;";

// What the second version brought. A new file goes through both, so that there is one way to what is used today.
constexpr const char* SecondSchema = "ALTER TABLE studies ADD COLUMN notes TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE data_sets ADD COLUMN notes TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE data_columns ADD COLUMN unit TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE analyses ADD COLUMN kind TEXT NOT NULL DEFAULT 'summary';"
                                     "ALTER TABLE analyses ADD COLUMN x_column TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE analyses ADD COLUMN y_column TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE analyses ADD COLUMN first_group TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE analyses ADD COLUMN second_group TEXT NOT NULL DEFAULT '';"
                                     "ALTER TABLE analyses ADD COLUMN figure TEXT NOT NULL DEFAULT 'mean';"
                                     "ALTER TABLE analyses ADD COLUMN bins INTEGER NOT NULL DEFAULT 0;"
                                     "ALTER TABLE analyses ADD COLUMN confidence REAL NOT NULL DEFAULT 0.95;"
                                     "ALTER TABLE analyses ADD COLUMN resamples INTEGER NOT NULL DEFAULT 1000;"
                                     "ALTER TABLE analyses ADD COLUMN seed INTEGER NOT NULL DEFAULT 1;"
                                     "PRAGMA user_version=2;";

// The trigger's SQL that writes the statement which undoes one row's change.
std::string InverseOf(std::string_view sChange, const std::string& sTable, const std::vector<std::string>& aColumns) {
    std::string sNames;
    std::string sValues;
    std::string sSettings;
    for (const std::string& sColumn : aColumns) {
        const std::string sBetween = sNames.empty() ? "" : ",";
        sNames += sBetween + sColumn;
        sValues += (sValues.empty() ? "" : "||','||") + ("quote(OLD." + sColumn + ")");
        sSettings += "||'" + sBetween + sColumn + "='||quote(OLD." + sColumn + ")";
    }
    if (sChange == "INSERT")
        return "'DELETE FROM " + sTable + " WHERE id='||NEW.id";
    if (sChange == "DELETE")
        return "'INSERT INTO " + sTable + "(" + sNames + ") VALUES('||" + sValues + "||')'";
    return "'UPDATE " + sTable + " SET '" + sSettings + "||' WHERE id='||OLD.id";
}

} // namespace

Store::Store(std::string sPath) : m_oDatabase(std::move(sPath)) {
    Prepare();
    DropOrphans();
    Record();
}

std::string Store::DefaultPath() {
    const char* sData = std::getenv("XDG_DATA_HOME");
    if (sData && *sData == '/')
        return std::string(sData) + "/corvane/studies/studies.sqlite";
    const char* sHome = std::getenv("HOME");
    return std::string(sHome ? sHome : "") + "/.local/share/corvane/studies/studies.sqlite";
}

void Store::Prepare() {
    m_oDatabase.Run("PRAGMA foreign_keys=ON");
    // Takes effect in a new file: what was dropped gives its room back.
    m_oDatabase.Run("PRAGMA auto_vacuum=FULL");
    Transaction oTransaction(m_oDatabase);
    const std::int64_t nApplication = m_oDatabase.WholeOf("PRAGMA application_id");
    std::int64_t nVersion = m_oDatabase.WholeOf("PRAGMA user_version");
    if (m_oDatabase.WholeOf("SELECT count(*) FROM sqlite_master") == 0) {
        m_oDatabase.Run(Schema);
        nVersion = 1;
    } else if (nApplication != ApplicationId) {
        FailWith("The file “" + m_oDatabase.Path() + "” belongs to another program.");
    } else if (nVersion > SchemaVersion) {
        FailWith("The file “" + m_oDatabase.Path() + "” was written by a later version of Studies (" +
                 std::to_string(nVersion) + "; this one knows " + std::to_string(SchemaVersion) + ").");
    }
    if (nVersion == 1)
        m_oDatabase.Run(SecondSchema);
    oTransaction.Commit();
    Statement oCheck(m_oDatabase, "PRAGMA quick_check(1)");
    if (oCheck.Step() && oCheck.Text(0) != "ok")
        FailWith("The file “" + m_oDatabase.Path() + "” is damaged (" + oCheck.Text(0) +
                 "). Move it away to start with an empty one.");
}

// Temporary triggers, of this connection alone, write what undoes each change of a row.
void Store::Record() {
    m_oDatabase.Run("CREATE TEMP TABLE undo_log(position INTEGER PRIMARY KEY, statement TEXT NOT NULL)");
    for (const std::string sTable : LoggedTables) {
        std::vector<std::string> aColumns;
        Statement oColumns(m_oDatabase, "SELECT name FROM pragma_table_info('" + sTable + "')");
        while (oColumns.Step())
            aColumns.push_back(oColumns.Text(0));
        for (const std::string sChange : {"INSERT", "UPDATE", "DELETE"})
            m_oDatabase.Run("CREATE TEMP TRIGGER log_" + sTable + "_" + sChange + " AFTER " + sChange + " ON main." +
                            sTable + " BEGIN INSERT INTO undo_log(statement) VALUES(" +
                            InverseOf(sChange, sTable, aColumns) + "); END");
    }
}

// The data of data sets that are gone. An open store keeps them, so that the deletion can be undone.
void Store::DropOrphans() {
    std::vector<std::string> aTables;
    Statement oTables(m_oDatabase, "SELECT name FROM sqlite_master WHERE type='table' AND name GLOB 'data_[0-9]*'"
                                   " AND name NOT IN (SELECT 'data_'||id FROM data_sets)");
    while (oTables.Step())
        aTables.push_back(oTables.Text(0));
    if (aTables.empty())
        return;
    Transaction oTransaction(m_oDatabase);
    for (const std::string& sTable : aTables)
        m_oDatabase.Run("DROP TABLE " + sTable);
    oTransaction.Commit();
}

std::vector<std::string> Store::TakeLog() {
    std::vector<std::string> aStatements;
    Statement oLog(m_oDatabase, "SELECT statement FROM undo_log ORDER BY position DESC");
    while (oLog.Step())
        aStatements.push_back(oLog.Text(0));
    return aStatements;
}

void Store::Perform(std::string sLabel, const std::function<void()>& fnChange) {
    Transaction oTransaction(m_oDatabase);
    m_oDatabase.Run("DELETE FROM undo_log");
    fnChange();
    Step oStep{std::move(sLabel), TakeLog()};
    oTransaction.Commit();
    m_aUndo.push_back(std::move(oStep));
    m_aRedo.clear();
}

void Store::TakeBack(std::vector<Step>& aFrom, std::vector<Step>& aTo) {
    if (aFrom.empty())
        return;
    Transaction oTransaction(m_oDatabase);
    m_oDatabase.Run("DELETE FROM undo_log");
    for (const std::string& sStatement : aFrom.back().aStatements)
        m_oDatabase.Run(sStatement);
    CheckData();
    Step oInverse{aFrom.back().sLabel, TakeLog()};
    oTransaction.Commit();
    ++m_nDataRevision;
    aTo.push_back(std::move(oInverse));
    aFrom.pop_back();
}

void Store::Undo() {
    TakeBack(m_aUndo, m_aRedo);
}

void Store::Redo() {
    TakeBack(m_aRedo, m_aUndo);
}

void Store::ForgetSteps() {
    m_aUndo.clear();
    m_aRedo.clear();
    DropOrphans();
}

// Another program that opened the file meanwhile has dropped the data of deleted data sets.
void Store::CheckData() {
    if (m_oDatabase.WholeOf("SELECT count(*) FROM data_sets WHERE 'data_'||id NOT IN"
                            " (SELECT name FROM sqlite_master)") != 0)
        FailWith("This can't be undone: the data have been deleted since the file was opened elsewhere.");
}

void Store::CheckExists(std::string_view sTable, Id nId) {
    Statement oFound(m_oDatabase, "SELECT 1 FROM " + std::string(sTable) + " WHERE id=?");
    if (!oFound.Bind(nId).Step())
        FailWith("The selection no longer exists.");
}

std::string Store::NameProblem(std::string_view sName, Id nStudyId) {
    if (sName.find_first_not_of(' ') == std::string_view::npos)
        return "A study needs a name.";
    if (sName.front() == ' ' || sName.back() == ' ')
        return "A study's name can't begin or end with a space.";
    if (sName.front() == '#')
        return "A study's name can't begin with “#”.";
    if (sName.size() > LongestName)
        return "A study's name has at most " + std::to_string(LongestName) + " letters.";
    if (std::any_of(sName.begin(), sName.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return "A study's name must be on one line.";
    Statement oTaken(m_oDatabase, "SELECT 1 FROM studies WHERE name_key=? AND id<>?");
    if (oTaken.Bind(corvane::FoldText(sName)).Bind(nStudyId).Step())
        return "There is a study “" + std::string(sName) + "” already.";
    return {};
}

std::string Store::FreeName(std::string_view sBase, bool bNumberFirst) {
    const std::string sName(sBase);
    if (!bNumberFirst && NameProblem(sName).empty())
        return sName;
    for (int n = bNumberFirst ? 1 : 2;; ++n) {
        const std::string sNumbered = sName + " " + std::to_string(n);
        Statement oTaken(m_oDatabase, "SELECT 1 FROM studies WHERE name_key=?");
        if (!oTaken.Bind(corvane::FoldText(sNumbered)).Step())
            return sNumbered;
    }
}

} // namespace studies
