#include "adapters/common/Paths.h"
#include "adapters/common/Pattern.h"
#include "adapters/log/Utilities.h"
#include "corvane/base/Ref.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;

namespace {

std::string ReadOf(const std::string& path) {
    return ReadBytes(path).value_or("no file");
}

} // namespace

TEST(Log, AFailureIsOneLineOfEscapedFields) {
    test::TemporaryFolder folder;
    const auto utilities = New<Utilities>("App", "/app", folder.Path() + "/made/on/the/way");
    EXPECT_FALSE(FindPath(utilities->LogPath()));
    utilities->LogError("App", "Module", "Name (Get)", Failure(-1, "two\nlines\tand \\", "Source"), "ü\r\x1B", false);
    Failure failure(5);
    utilities->LogError("App", "Module", "Second", failure, "", false);
    failure.Context = "in Open (Bird.OnOpen)"; // where in a plug-in, behind the context or instead of it
    utilities->LogError("App", "Module", "Third", failure, "", false);
    utilities->LogError("App", "Module", "Fourth", failure, "Class", false);
    const std::string begin = "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}[+-]\\d{4}\tApp\tModule";
    EXPECT_EQ(ReplaceForm(ReadOf(utilities->LogPath()), begin, "TIME"),
              "TIME\tName (Get)\t-1\tSource\ttwo\\nlines\\tand \\\\\tü\\r?\n"
              "TIME\tSecond\t5\tCorvane\tInvalid procedure call or argument\t\n"
              "TIME\tThird\t5\tCorvane\tInvalid procedure call or argument\tin Open (Bird.OnOpen)\n"
              "TIME\tFourth\t5\tCorvane\tInvalid procedure call or argument\tClass; in Open (Bird.OnOpen)\n");
}

TEST(Log, TheEnvironmentSaysWhetherToBreakOnErrors) {
    for (const auto& [value, breaks] : {std::pair("1", true), std::pair("0", false), std::pair("", false)}) {
        ::setenv("CORVANE_BREAK_ON_ERROR", value, 1);
        EXPECT_EQ(New<Utilities>("App", "/app", "/nowhere")->BreakOnError(), breaks) << value;
    }
    ::unsetenv("CORVANE_BREAK_ON_ERROR");
    EXPECT_FALSE(New<Utilities>("App", "/app", "/nowhere")->BreakOnError());
}

TEST(Log, IsTurnedOverAndKeepsFiveFiles) {
    test::TemporaryFolder folder;
    const auto utilities = New<Utilities>("App", "/app", folder.Path());
    const std::string text(64 * 1024, 'x');
    for (int i = 0; i < 7 * 16; ++i)
        utilities->LogError("App", "M", "P", Failure(i, text), "", false);
    const auto names = NamesIn(folder.Path()).value();
    EXPECT_EQ(names.size(), LogFile::FileCount);
    for (const std::string& name : names)
        EXPECT_LE(ReadOf(folder.Path() + "/" + name).size(), LogFile::FileBytes);
    EXPECT_NE(ReadOf(utilities->LogPath()).find("\t111\t"), std::string::npos);
}

TEST(Log, AFolderThatCannotBeWrittenCostsOnlyTheLog) {
    test::TemporaryFolder folder;
    const std::string file = folder.Write("file", "");
    const auto utilities = New<Utilities>("App", "/app", file + "/folder");
    testing::internal::CaptureStderr();
    utilities->LogError("App", "M", "First", Failure(5), "", false);
    utilities->LogError("App", "M", "Second", Failure(5), "", false);
    const std::string error = testing::internal::GetCapturedStderr();
    EXPECT_EQ(error.find("can't be written"), error.rfind("can't be written"));
    EXPECT_LT(error.find("can't be written"), error.find("\tFirst\t"));
    EXPECT_NE(error.find("\tSecond\t"), std::string::npos);
}

TEST(Log, LiesInTheUsersStateFolder) {
    ::setenv("HOME", "/home/somebody", 1);
    ::unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(New<Utilities>("App", "/app")->LogPath(), "/home/somebody/.local/state/corvane/App/errors.log");
    ::setenv("XDG_STATE_HOME", "/state", 1);
    EXPECT_EQ(New<Utilities>("App", "/app")->LogPath(), "/state/corvane/App/errors.log");
}

TEST(Log, WhatIsToBeShownReachesTheHostOnceItIsLogged) {
    test::TemporaryFolder folder;
    const auto utilities = New<Utilities>("App", "/app", folder.Path());
    std::string shownText;
    utilities->SetShow([&](const ShownFailure& shown) {
        EXPECT_NE(ReadOf(shown.logFile).find("\tP\t13\t"), std::string::npos);
        shownText += shown.module + "." + shown.procedure + ": " + shown.failure.Description + " " + shown.context;
    });
    utilities->LogError("App", "M", "Quiet", Failure(13), "", false);
    utilities->LogError("App", "M", "P", Failure(13, "why"), "where", true);
    EXPECT_EQ(shownText, "M.P: why where");
}

TEST(Log, ADebuggerIsNoticed) {
    const auto utilities = New<Utilities>("App", "/app", "/nowhere");
    const pid_t child = ::fork();
    if (child == 0) {
        const bool before = utilities->IsRunningInIDE();
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(2);
        ::_exit(!before && utilities->IsRunningInIDE() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 2)
        GTEST_SKIP() << "this machine allows no tracing";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
