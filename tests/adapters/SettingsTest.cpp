#include "adapters/files/SettingsStore.h"
#include "corvane/base/Ref.h"
#include "tests/adapters/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using corvane::test::FailureOf;
using namespace std::string_literals;

namespace {

// A second program on the same settings.
template <class F>
pid_t Fork(F fnWork) {
    const pid_t nChild = ::fork();
    if (nChild == 0) {
        try {
            fnWork();
        } catch (...) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    return nChild;
}

int ExitOf(pid_t nChild) {
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}

} // namespace

TEST(Settings, AnyTextSurvivesTheProgram) {
    const std::string aTexts[] = {
        "",     "plain", " blanks ", "a=b",   "[a]", "# no comment",          "\\n", "\n\r\n\t", "\\",
        "ü 中", "\0x"s,  "=",        "a\\=b", "[",   std::string(100000, 'x')};
    test::TemporaryFolder oFolder;
    int n = 0;
    for (const std::string& sText : aTexts) {
        New<SettingsStore>("app", oFolder.Path())->Write("S", sText, "n" + sText, sText);
        New<SettingsStore>("app", oFolder.Path())->Write("s" + sText, "C", "n", std::to_string(++n));
    }
    const auto oStore = New<SettingsStore>("app", oFolder.Path());
    n = 0;
    for (const std::string& sText : aTexts) {
        EXPECT_EQ(oStore->Read("S", sText, "n" + sText, "default"), sText);
        EXPECT_EQ(oStore->Read("S" + sText, "c", "N", "default"), std::to_string(++n));
    }
    EXPECT_EQ(oStore->Read("S", "", "other", "default"), "default");
    EXPECT_EQ(oStore->Read("T", "", "n", "default"), "default");
}

TEST(Settings, NamesIgnoreCaseAndALaterTextReplaces) {
    test::TemporaryFolder oFolder;
    const auto oStore = New<SettingsStore>("app", oFolder.Path());
    oStore->Write("Service", "Default", "Name", "1");
    oStore->Write("SERVICE", "DEFAULT", "NAME", "2");
    EXPECT_EQ(oStore->Read("service", "default", "name", ""), "2");
}

TEST(Settings, LieInTheUsersConfigurationFolder) {
    ::setenv("HOME", "/home/somebody", 1);
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(New<SettingsStore>("My/App")->Folder(), "/home/somebody/.config/corvane/My%2FApp");
    ::setenv("XDG_CONFIG_HOME", "/conf", 1);
    EXPECT_EQ(New<SettingsStore>("..")->Folder(), "/conf/corvane/%2E.");
}

TEST(Settings, AFolderThatCannotBeMadeIsTold) {
    test::TemporaryFolder oFolder;
    const std::string sFile = oFolder.Write("file", "");
    const auto oStore = New<SettingsStore>("app", sFile + "/folder");
    EXPECT_EQ(oStore->Read("S", "C", "n", "default"), "default");
    EXPECT_EQ(FailureOf([&] { oStore->Write("S", "C", "n", "x"); }).substr(0, 3), "75:");
}

TEST(Settings, ProgramsThatWriteAtOnceLoseNothing) {
    test::TemporaryFolder oFolder;
    constexpr int nPrograms = 4;
    constexpr int nValues = 25;
    std::vector<pid_t> aChildren;
    for (int i = 0; i < nPrograms; ++i)
        aChildren.push_back(Fork([&] {
            const auto oStore = New<SettingsStore>("app", oFolder.Path());
            for (int k = 0; k < nValues; ++k)
                oStore->Write("S", "C", std::to_string(i) + "." + std::to_string(k), "v");
        }));
    for (const pid_t nChild : aChildren)
        EXPECT_EQ(ExitOf(nChild), 0);
    const auto oStore = New<SettingsStore>("app", oFolder.Path());
    for (int i = 0; i < nPrograms; ++i)
        for (int k = 0; k < nValues; ++k)
            EXPECT_EQ(oStore->Read("S", "C", std::to_string(i) + "." + std::to_string(k), ""), "v") << i << "." << k;
}

// Each program confirms what it has written; it is killed while it writes on, at a different moment each time.
TEST(Settings, AKilledProgramLosesNothingThatWasWritten) {
    test::TemporaryFolder oFolder;
    const auto oStore = New<SettingsStore>("app", oFolder.Path());
    oStore->Write("S", "C", "first", "kept");
    for (int nRound = 0; nRound < 20; ++nRound) {
        int aPipe[2];
        ASSERT_EQ(::pipe(aPipe), 0);
        const pid_t nChild = Fork([&] {
            const auto oChild = New<SettingsStore>("app", oFolder.Path());
            for (int k = 0;; ++k) {
                oChild->Write("S", "C", std::to_string(nRound) + "." + std::to_string(k), std::string(5000, 'x'));
                if (::write(aPipe[1], &k, sizeof k) != sizeof k)
                    ::_exit(1);
            }
        });
        ::close(aPipe[1]);
        int nLast = -1;
        ASSERT_EQ(::read(aPipe[0], &nLast, sizeof nLast), static_cast<ssize_t>(sizeof nLast));
        ::usleep(static_cast<useconds_t>(nRound) * 150);
        ::kill(nChild, SIGKILL);
        ExitOf(nChild);
        while (::read(aPipe[0], &nLast, sizeof nLast) == static_cast<ssize_t>(sizeof nLast)) {
        }
        ::close(aPipe[0]);
        EXPECT_EQ(oStore->Read("S", "C", "first", ""), "kept");
        for (int k = 0; k <= nLast; ++k)
            EXPECT_EQ(oStore->Read("S", "C", std::to_string(nRound) + "." + std::to_string(k), "").size(), 5000u);
    }
    oStore->Write("S", "C", "last", "works on");
    EXPECT_EQ(oStore->Read("S", "C", "last", ""), "works on");
}
