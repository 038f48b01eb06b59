#include "database/UndoLog.h"

#include "corvane/base/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>
#include <fstream>
#include <gtest/gtest.h>

using namespace corvane::database;

namespace {

std::string FailureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const corvane::Failure& failure) {
        return failure.Source + ": " + failure.Description;
    }
    return "none";
}

class BirdDatabase : public ::testing::Test {
protected:
    BirdDatabase() { m_database.Run("CREATE TABLE birds(id INTEGER PRIMARY KEY, name TEXT, mass REAL NOT NULL)"); }

    void Add(const std::string& name) { m_database.Run("INSERT INTO birds(name, mass) VALUES(?,?)", name, 1.5); }
    std::string Names() {
        std::string names;
        for (const std::string& name : m_database.Texts("SELECT name FROM birds ORDER BY id"))
            names += name + " ";
        return names;
    }

    corvane::test::TemporaryFolder m_folder;
    std::string m_path = m_folder.Path("folder/birds.sqlite");
    Database m_database{m_path};
};

TEST_F(BirdDatabase, StepsAreUndoneInReverseAndANewOneForgetsTheUndone) {
    bool complete = true;
    UndoLog steps(
        m_database, {"birds"},
        [&] {
            if (!complete)
                corvane::Fail(5, "incomplete", "BirdDatabase");
        },
        "changed since");
    steps.Perform("Two", [&] {
        Add("it's");
        Add("B");
    });
    steps.Perform("Rename", [&] { m_database.Run("UPDATE birds SET name=upper(name)"); });
    std::string deleted;
    steps.Perform("Delete", [&] {
        m_database.Run("UPDATE birds SET mass=2 WHERE id=1");
        (void)steps.TakeInverse();
        m_database.Run("DELETE FROM birds WHERE id=1");
        deleted = steps.TakeInverse();
    });
    EXPECT_EQ(FailureOf([&] {
                  steps.Perform("Fails", [&] {
                      Add("C");
                      Add("D");
                      m_database.Run("UPDATE birds SET mass=?", std::nan(""));
                  });
              }),
              "Database: This doesn't fit what is in the file “" + m_path + "” by now.");
    EXPECT_EQ(Names() + steps.UndoLabel(), "B Delete");
    for (const char* names : {"IT'S B ", "it's B ", "", ""}) { // once more than there are steps
        steps.Undo();
        EXPECT_EQ(Names(), names);
    }
    for (const char* names : {"it's B ", "IT'S B ", "B ", "B "}) {
        steps.Redo();
        EXPECT_EQ(Names(), names);
    }
    complete = false;
    EXPECT_EQ(FailureOf([&] { steps.Undo(); }), "BirdDatabase: incomplete");
    complete = true;
    Database(m_path).Run("UPDATE birds SET name='other'");
    steps.Undo();
    EXPECT_EQ(FailureOf([&] { steps.Undo(); }), "Database: changed since");
    EXPECT_EQ(Names() + steps.UndoLabel() + steps.RedoLabel(), "IT'S other RenameDelete");
    steps.Perform("New", [&] { Add("E"); });
    EXPECT_EQ(steps.RedoLabel(), "");
    m_database.Run("DELETE FROM birds");
    m_database.Run(deleted);
    EXPECT_EQ(Names(), "IT'S ") << "what is taken from a step restores it later";
}

TEST_F(BirdDatabase, FailuresAreSaidAsTheApplicationWants) {
    const std::string text = m_folder.Path("text.sqlite");
    std::ofstream(text) << std::string(4000, 'x');
    EXPECT_EQ(FailureOf([&] { Database(text).Run("SELECT * FROM birds"); }),
              "Database: The file “" + text + "” is damaged or isn't a database.");
    EXPECT_EQ(FailureOf([&] { Database(m_folder.Path()); }),
              "Database: The file “" + m_folder.Path() + "” can't be opened.");
    const auto report = [](Problem problem, const std::string&, const std::string& detail) {
        if (problem == Problem::Other)
            corvane::Fail(5, "Mine: " + detail, "BirdDatabase");
    };
    Database own(m_path, report);
    EXPECT_EQ(FailureOf([&] { own.Run("SELECT"); }), "BirdDatabase: Mine: incomplete input");
}

} // namespace
