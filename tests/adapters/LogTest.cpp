#include "adapters/common/Paths.h"
#include "adapters/log/Utilities.h"
#include "corvane/base/Ref.h"
#include "tests/support/TemporaryFolder.h"

#include <cctype>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;

namespace {

// Every digit of a line's first field as 9, and its last sign as +.
std::string WithoutTimes(std::string sLog) {
    bool bInTime = true;
    for (std::size_t i = 0; i < sLog.size(); ++i) {
        if (sLog[i] == '\n')
            bInTime = true;
        else if (sLog[i] == '\t')
            bInTime = false;
        else if (bInTime && std::isdigit(static_cast<unsigned char>(sLog[i])))
            sLog[i] = '9';
        else if (bInTime && sLog[i] == '-' && i + 5 < sLog.size() && sLog[i + 5] == '\t')
            sLog[i] = '+';
    }
    return sLog;
}

std::string ReadOf(const std::string& sPath) {
    return ReadBytes(sPath).value_or("no file");
}

} // namespace

TEST(Log, AFailureIsOneLineOfEscapedFields) {
    test::TemporaryFolder oFolder;
    const auto oUtilities = New<Utilities>("App", "/app", oFolder.Path() + "/made/on/the/way");
    EXPECT_FALSE(FindPath(oUtilities->LogPath()));
    oUtilities->LogError("App", "Module", "Name (Get)", Failure(-1, "two\nlines\tand \\", "Source"), "ü\r\x1B", false);
    oUtilities->LogError("App", "Module", "Second", Failure(5), "", false);
    const std::string sLog = ReadOf(oUtilities->LogPath());
    EXPECT_EQ(WithoutTimes(sLog),
              "9999-99-99T99:99:99.999+9999\tApp\tModule\tName (Get)\t-1\tSource\ttwo\\nlines\\tand \\\\\tü\\r?\n"
              "9999-99-99T99:99:99.999+9999\tApp\tModule\tSecond\t5\tCorvane\tInvalid procedure call or argument\t\n");
}

TEST(Log, IsTurnedOverAndKeepsFiveFiles) {
    test::TemporaryFolder oFolder;
    const auto oUtilities = New<Utilities>("App", "/app", oFolder.Path());
    const std::string sText(64 * 1024, 'x');
    for (int i = 0; i < 7 * 16; ++i)
        oUtilities->LogError("App", "M", "P", Failure(i, sText), "", false);
    const auto aNames = NamesIn(oFolder.Path()).value();
    EXPECT_EQ(aNames.size(), LogFile::FileCount);
    for (const std::string& sName : aNames)
        EXPECT_LE(ReadOf(oFolder.Path() + "/" + sName).size(), LogFile::FileBytes);
    EXPECT_NE(ReadOf(oUtilities->LogPath()).find("\t111\t"), std::string::npos);
}

TEST(Log, AFolderThatCannotBeWrittenCostsOnlyTheLog) {
    test::TemporaryFolder oFolder;
    const std::string sFile = oFolder.Write("file", "");
    const auto oUtilities = New<Utilities>("App", "/app", sFile + "/folder");
    testing::internal::CaptureStderr();
    oUtilities->LogError("App", "M", "First", Failure(5), "", false);
    oUtilities->LogError("App", "M", "Second", Failure(5), "", false);
    const std::string sError = testing::internal::GetCapturedStderr();
    EXPECT_EQ(sError.find("can't be written"), sError.rfind("can't be written"));
    EXPECT_LT(sError.find("can't be written"), sError.find("\tFirst\t"));
    EXPECT_NE(sError.find("\tSecond\t"), std::string::npos);
}

TEST(Log, LiesInTheUsersStateFolder) {
    ::setenv("HOME", "/home/somebody", 1);
    ::unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(New<Utilities>("App", "/app")->LogPath(), "/home/somebody/.local/state/corvane/App/errors.log");
    ::setenv("XDG_STATE_HOME", "/state", 1);
    EXPECT_EQ(New<Utilities>("App", "/app")->LogPath(), "/state/corvane/App/errors.log");
}

TEST(Log, WhatIsToBeShownReachesTheHostOnceItIsLogged) {
    test::TemporaryFolder oFolder;
    const auto oUtilities = New<Utilities>("App", "/app", oFolder.Path());
    std::string sShown;
    oUtilities->SetShow([&](const ShownFailure& oShown) {
        EXPECT_NE(ReadOf(oShown.sLogFile).find("\tP\t13\t"), std::string::npos);
        sShown += oShown.sModule + "." + oShown.sProcedure + ": " + oShown.oFailure.Description + " " + oShown.sContext;
    });
    oUtilities->LogError("App", "M", "Quiet", Failure(13), "", false);
    oUtilities->LogError("App", "M", "P", Failure(13, "why"), "where", true);
    EXPECT_EQ(sShown, "M.P: why where");
}

TEST(Log, ADebuggerIsNoticed) {
    const auto oUtilities = New<Utilities>("App", "/app", "/nowhere");
    const pid_t nChild = ::fork();
    if (nChild == 0) {
        const bool bBefore = oUtilities->IsRunningInIDE();
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(2);
        ::_exit(!bBefore && oUtilities->IsRunningInIDE() ? 0 : 1);
    }
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    ASSERT_TRUE(WIFEXITED(nStatus));
    if (WEXITSTATUS(nStatus) == 2)
        GTEST_SKIP() << "this machine allows no tracing";
    EXPECT_EQ(WEXITSTATUS(nStatus), 0);
}
