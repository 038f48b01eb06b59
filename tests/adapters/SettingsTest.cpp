#include "adapters/files/SettingsStore.h"
#include "corvane/base/Ref.h"
#include "tests/support/Failing.h"
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
pid_t Fork(F work) {
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            work();
        } catch (...) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    return child;
}

int ExitOf(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(Settings, AnyTextSurvivesTheProgram) {
    const std::string texts[] = {
        "",     "plain", " blanks ", "a=b",   "[a]", "# no comment",          "\\n", "\n\r\n\t", "\\",
        "ü 中", "\0x"s,  "=",        "a\\=b", "[",   std::string(100000, 'x')};
    test::TemporaryFolder folder;
    int n = 0;
    for (const std::string& text : texts) {
        New<SettingsStore>("app", folder.Path())->Write("S", text, "n" + text, text);
        New<SettingsStore>("app", folder.Path())->Write("s" + text, "C", "n", std::to_string(++n));
    }
    const auto store = New<SettingsStore>("app", folder.Path());
    n = 0;
    for (const std::string& text : texts) {
        EXPECT_EQ(store->Read("S", text, "n" + text, "default"), text);
        EXPECT_EQ(store->Read("S" + text, "c", "N", "default"), std::to_string(++n));
    }
    EXPECT_EQ(store->Read("S", "", "other", "default"), "default");
    EXPECT_EQ(store->Read("T", "", "n", "default"), "default");
}

TEST(Settings, NamesIgnoreCaseAndALaterTextReplaces) {
    test::TemporaryFolder folder;
    const auto store = New<SettingsStore>("app", folder.Path());
    store->Write("Service", "Default", "Name", "1");
    store->Write("SERVICE", "DEFAULT", "NAME", "2");
    store->Write("Service", "Other", "Name", "3");
    EXPECT_EQ(store->Read("service", "default", "name", ""), "2");
    EXPECT_EQ(store->Read("service", "other", "name", ""), "3");
}

TEST(Settings, LieInTheUsersConfigurationFolder) {
    ::setenv("HOME", "/home/somebody", 1);
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(New<SettingsStore>("My/App")->Folder(), "/home/somebody/.config/corvane/My%2FApp");
    ::setenv("XDG_CONFIG_HOME", "/conf", 1);
    EXPECT_EQ(New<SettingsStore>("..")->Folder(), "/conf/corvane/%2E.");
    ::unsetenv("HOME");
    ::unsetenv("XDG_CONFIG_HOME");
    const auto homeless = New<SettingsStore>("App"); // nothing is written into the current folder
    EXPECT_EQ(homeless->Read("S", "C", "n", "default"), "default");
    EXPECT_EQ(FailureOf([&] { homeless->Write("S", "C", "n", "x"); }).substr(0, 3), "75:");
}

TEST(Settings, AFolderThatCannotBeMadeIsTold) {
    test::TemporaryFolder folder;
    const std::string file = folder.Write("file", "");
    const auto store = New<SettingsStore>("app", file + "/folder");
    EXPECT_EQ(store->Read("S", "C", "n", "default"), "default");
    EXPECT_EQ(FailureOf([&] { store->Write("S", "C", "n", "x"); }).substr(0, 3), "75:");
}

TEST(Settings, ProgramsThatWriteAtOnceLoseNothing) {
    test::TemporaryFolder folder;
    constexpr int programs = 4;
    constexpr int values = 25;
    std::vector<pid_t> children;
    for (int i = 0; i < programs; ++i)
        children.push_back(Fork([&] {
            const auto store = New<SettingsStore>("app", folder.Path());
            for (int k = 0; k < values; ++k)
                store->Write("S", "C", std::to_string(i) + "." + std::to_string(k), "v");
        }));
    for (const pid_t child : children)
        EXPECT_EQ(ExitOf(child), 0);
    const auto store = New<SettingsStore>("app", folder.Path());
    for (int i = 0; i < programs; ++i)
        for (int k = 0; k < values; ++k)
            EXPECT_EQ(store->Read("S", "C", std::to_string(i) + "." + std::to_string(k), ""), "v") << i << "." << k;
}

// Each program confirms what it has written; it is killed while it writes on, at a different moment each time.
TEST(Settings, AKilledProgramLosesNothingThatWasWritten) {
    test::TemporaryFolder folder;
    const auto store = New<SettingsStore>("app", folder.Path());
    store->Write("S", "C", "first", "kept");
    for (int round = 0; round < 20; ++round) {
        int pipe[2];
        ASSERT_EQ(::pipe(pipe), 0);
        const pid_t childId = Fork([&] {
            const auto child = New<SettingsStore>("app", folder.Path());
            for (int k = 0;; ++k) {
                child->Write("S", "C", std::to_string(round) + "." + std::to_string(k), std::string(5000, 'x'));
                if (::write(pipe[1], &k, sizeof k) != sizeof k)
                    ::_exit(1);
            }
        });
        ::close(pipe[1]);
        int last = -1;
        ASSERT_EQ(::read(pipe[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));
        ::usleep(static_cast<useconds_t>(round) * 150);
        ::kill(childId, SIGKILL);
        ExitOf(childId);
        while (::read(pipe[0], &last, sizeof last) == static_cast<ssize_t>(sizeof last)) {
        }
        ::close(pipe[0]);
        EXPECT_EQ(store->Read("S", "C", "first", ""), "kept");
        for (int k = 0; k <= last; ++k)
            EXPECT_EQ(store->Read("S", "C", std::to_string(round) + "." + std::to_string(k), "").size(), 5000u);
    }
    store->Write("S", "C", "last", "works on");
    EXPECT_EQ(store->Read("S", "C", "last", ""), "works on");
}
