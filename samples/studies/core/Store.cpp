#include "Store.h"

#include "Errors.h"
#include "StudyFile.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace studies {
namespace {

constexpr std::int64_t ApplicationId = 0x53545544;
constexpr std::ptrdiff_t LongestName = 120;

// The tables whose changes are undone. The data themselves are in a table of their own for each data set, which stays
// while a step or the bin may bring it back, so that a step costs no more for many rows than for few.
const std::vector<std::string> LoggedTables{"studies", "data_sets", "data_columns", "analyses", "bin"};

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

constexpr const char* ThirdSchema = "ALTER TABLE data_columns ADD COLUMN decimals INTEGER NOT NULL DEFAULT 0;"
                                    "PRAGMA user_version=3;";

// An entry of the bin holds the statements that bring back what was deleted, and the data sets whose data they need,
// as ",3,7,".
constexpr const char* FourthSchema = "CREATE TABLE bin(id INTEGER PRIMARY KEY AUTOINCREMENT, time INTEGER NOT NULL,"
                                     " kind TEXT NOT NULL, item_id INTEGER NOT NULL, name TEXT NOT NULL,"
                                     " data_sets TEXT NOT NULL, statements TEXT NOT NULL);"
                                     "ALTER TABLE analyses ADD COLUMN result TEXT NOT NULL DEFAULT '';"
                                     "PRAGMA user_version=4;";

// In letters.
std::ptrdiff_t LengthOf(std::string_view text) {
    return std::count_if(text.begin(), text.end(),
                         [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; });
}

} // namespace

void MakeTables(Database& database, std::int64_t version) {
    constexpr std::array<const char*, SchemaVersion> schemas{Schema, SecondSchema, ThirdSchema, FourthSchema};
    for (; version < SchemaVersion; ++version)
        database.Run(schemas[static_cast<std::size_t>(version)]);
}

Store::Store(std::string path) : m_database(std::move(path)) {
    if (m_database.Path() != InMemory)
        m_lock.emplace(m_database.Path() + ".lock");
    Prepare();
    if (!IsShared()) { // another may still undo what needs these data
        EmptyBin();
        DropOrphans();
    }
    m_steps.emplace(
        m_database, LoggedTables, [this] { CheckData(); },
        Translated("This can't be undone: it has been changed in another window of Studies since."));
    m_seenVersion = DataVersion();
}

std::int64_t Store::DataVersion() {
    return m_database.WholeOf("PRAGMA data_version");
}

bool Store::NoticeChanges() {
    const std::int64_t version = DataVersion();
    if (version == m_seenVersion || m_beside > 0)
        return false;
    m_seenVersion = version;
    ++m_dataRevision;
    return true;
}

// Others may have changed the file as well.
void Store::EndBeside() {
    --m_beside;
    m_seenVersion = DataVersion();
    ++m_dataRevision;
}

std::string Store::DefaultPath() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data && *data == '/')
        return std::string(data) + "/corvane/studies/studies.sqlite";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.local/share/corvane/studies/studies.sqlite";
}

void Store::Prepare() {
    m_database.Run("PRAGMA foreign_keys=ON");
    if (m_database.WholeOf("PRAGMA page_count") == 0) // later it would count as a change of the file
        m_database.Run("PRAGMA auto_vacuum=FULL");    // the space of what was dropped is freed
    Transaction transaction(m_database);
    const std::int64_t application = m_database.WholeOf("PRAGMA application_id");
    std::int64_t version = m_database.WholeOf("PRAGMA user_version");
    if (m_database.WholeOf("SELECT count(*) FROM sqlite_master") == 0) {
        version = 0;
    } else if (application != ApplicationId) {
        FailWith(Translated("The file “%1” belongs to another program.", {m_database.Path()}));
    } else if (version > SchemaVersion) {
        FailWith(Translated("The file “%1” was written by a later version of Studies (%2; this one knows %3).",
                            {m_database.Path(), std::to_string(version), std::to_string(SchemaVersion)}));
    }
    MakeTables(m_database, version);
    transaction.Commit();
    if (const auto check = m_database.Texts("PRAGMA quick_check(1)"); check.front() != "ok")
        FailWith(Translated("The file “%1” is damaged (%2). Move it away to start with an empty one.",
                            {m_database.Path(), check.front()}));
}

void Store::EmptyBin() {
    m_database.Run("DELETE FROM bin WHERE time < strftime('%s', 'now') - 86400 * " + std::to_string(DaysInBin));
}

// The data of data sets that are gone for good. An open store keeps them, so that an import can be redone.
void Store::DropOrphans() {
    const auto tableList =
        m_database.Texts("SELECT t.name FROM sqlite_master t WHERE t.type='table' AND t.name GLOB 'data_[0-9]*'"
                         " AND t.name NOT IN (SELECT 'data_'||id FROM data_sets) AND NOT EXISTS"
                         " (SELECT 1 FROM bin WHERE instr(data_sets, ','||substr(t.name, 6)||','))");
    if (tableList.empty())
        return;
    Transaction transaction(m_database);
    for (const std::string& table : tableList)
        m_database.Run("DROP TABLE " + table);
    transaction.Commit();
}

void Store::Undo() {
    m_steps->Undo();
    ++m_dataRevision;
}

void Store::Redo() {
    m_steps->Redo();
    ++m_dataRevision;
}

void Store::ForgetSteps() {
    m_steps->Forget();
    DropOrphans();
}

// Another program may have dropped the data of deleted data sets.
void Store::CheckData() {
    if (m_database.WholeOf("SELECT count(*) FROM data_sets WHERE 'data_'||id NOT IN"
                           " (SELECT name FROM sqlite_master)") != 0)
        FailWith(Translated("The data have been deleted for good since, by another window of Studies."));
}

bool Store::Has(const std::string& table, Id id) {
    return m_database.WholeOf("SELECT 1 FROM " + table + " WHERE id=?", id) != 0;
}

void Store::CheckExists(const std::string& table, Id id) {
    if (!Has(table, id))
        FailWith(Translated("The selection no longer exists."));
}

std::string Store::NameProblem(std::string_view name, Id studyId) {
    if (name.find_first_not_of(' ') == std::string_view::npos)
        return Translated("A study needs a name.");
    if (name.front() == ' ' || name.back() == ' ')
        return Translated("A study's name can't begin or end with a space.");
    if (name.front() == '#')
        return Translated("A study's name can't begin with “#”.");
    if (LengthOf(name) > LongestName)
        return Translated("A study's name has at most %1 letters.", {std::to_string(LongestName)});
    if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return Translated("A study's name must be on one line.");
    if (m_database.WholeOf("SELECT 1 FROM studies WHERE name_key=? AND id<>?", corvane::FoldText(name), studyId) != 0)
        return Translated("There is a study “%1” already.", {name});
    return {};
}

std::string Store::FreeName(std::string_view base, bool numberFirst) {
    std::string name(base);
    if (!numberFirst && NameProblem(name).empty())
        return name;
    const std::int64_t number =
        m_database.WholeOf("WITH RECURSIVE numbers(n) AS (SELECT ?1 UNION ALL SELECT n + 1 FROM numbers"
                           " WHERE EXISTS (SELECT 1 FROM studies WHERE name_key=?2||n)) SELECT max(n) FROM numbers",
                           numberFirst ? 1 : 2, corvane::FoldText(name + " "));
    return name + " " + std::to_string(number);
}

} // namespace studies
