// A run without a user, which ends when everything has: also the jobs that its steps have started.
#include <QProcess>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

TEST(Quit, WaitsForJobs) {
    struct Case {
        const char* tool;
        const char* out;
        const char* errors;
    };
    for (const Case& each : {Case{"File.Fly", "landed in Africa", ""}, Case{"File.Fall", "", "The wing is broken"},
                             Case{"File.Crash", "", "was killed by signal 6 (Aborted) (so sudden)"}}) {
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program.setProcessEnvironment(environment);
        program.start(CORVANE_DESKTOP_PROGRAM, {"--choose", each.tool, "--print", "--quit", CORVANE_AVIARY});
        ASSERT_TRUE(program.waitForFinished(120000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << each.tool;
        EXPECT_EQ(program.exitCode(), 0) << each.tool;
        const QString out = QString::fromUtf8(program.readAllStandardOutput());
        const QString errors = QString::fromUtf8(program.readAllStandardError());
        EXPECT_TRUE(out.contains("Status\n") && out.contains(each.out)) << out.toStdString();
        EXPECT_TRUE(errors.contains(each.errors)) << errors.toStdString();
    }
}

} // namespace
} // namespace corvane::desktop
