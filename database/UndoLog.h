// Undo and Redo for what an application keeps in a database: each change of watched rows is recorded by SQLite itself,
// as the statement that takes it back.
#pragma once

#include "database/Database.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::database {

class __attribute__((visibility("default"))) UndoLog {
public:
    // Watches all columns of these tables, which have one named id as their key, for as long as the connection lasts;
    // changes by others aren't recorded. The check is called before Undo and Redo are committed, and may fail. The text
    // is that of the failure of Undo and Redo when another program has changed the same since.
    UndoLog(Database& database, const std::vector<std::string>& tables, std::function<void()> check,
            std::string changedSince);

    // Watches one column of another table, from now on: one for all would be longer than SQLite takes where there are
    // hundreds.
    void Watch(const std::string& table, const std::string& column);

    // A step: the change as a whole, or nothing when it fails. The label says what it is, such as "Delete Study".
    void Perform(std::string label, const std::function<void()>& change);
    // Within a step: what takes back what it has changed since the last call, as SQL that may be stored.
    [[nodiscard]] std::string TakeInverse();

    // The last step is taken back, or done again; nothing when there is none. They fail, and change nothing, when a row
    // isn't as the step has left it, with the number ObjectErrorBase + 1 and the source "Database".
    void Undo() { TakeBack(m_undo, m_redo); }
    void Redo() { TakeBack(m_redo, m_undo); }
    // What they are about; "" for nothing.
    [[nodiscard]] std::string UndoLabel() const { return m_undo.empty() ? std::string() : m_undo.back().label; }
    [[nodiscard]] std::string RedoLabel() const { return m_redo.empty() ? std::string() : m_redo.back().label; }
    // There is nothing to undo any more.
    void Forget();

private:
    struct Recorded {
        std::string label;
        std::vector<std::string> statements; // which take it back, in their order
    };

    [[nodiscard]] std::vector<std::string> StatementsAfter(std::int64_t position);
    void Begin();
    void TakeBack(std::vector<Recorded>& from, std::vector<Recorded>& to);

    Database& m_database;
    std::function<void()> m_check;
    std::string m_changedSince;
    std::int64_t m_taken = 0; // the position in the log up to which TakeInverse has been
    std::vector<Recorded> m_undo;
    std::vector<Recorded> m_redo;
};

} // namespace corvane::database
