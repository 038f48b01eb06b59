// The programs where there is no display.
#include "tests/desktop/ApplicationFolder.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

struct ProgramRun {
    int exitCode = -1;
    QString out;
    QString errors;
};

ProgramRun RunWithoutDisplay(const QStringList& arguments, const QString& platform = {}) {
    QProcess program;
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_SESSION_TYPE"})
        environment.remove(name);
    if (!platform.isEmpty())
        environment.insert("QT_QPA_PLATFORM", platform);
    program.setProcessEnvironment(environment);
    program.start(CORVANE_DESKTOP_PROGRAM, arguments);
    EXPECT_TRUE(program.waitForFinished(120000));
    return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
            QString::fromUtf8(program.readAllStandardOutput()), QString::fromUtf8(program.readAllStandardError())};
}

TEST(Program, NeedsNoDisplayForHelpAndForRunsThatEndByThemselves) {
    const ApplicationFolder folder;
    const QString app = QString::fromStdString(folder.App());
    struct Case {
        QStringList arguments;
        int exitCode;
        const char* out;    // contained
        const char* errors; // likewise
    };
    for (const Case& each : {Case{{"--help"}, 0, "--screenshot", ""}, Case{{app, "-h"}, 0, "Usage", ""},
                             Case{{app, "--print", "--quit"}, 0, "Menus\n", ""},
                             Case{{app}, 3, "", "corvane-desktop: error: there is no display"}}) {
        const ProgramRun run = RunWithoutDisplay(each.arguments);
        EXPECT_EQ(run.exitCode, each.exitCode) << run.errors.toStdString();
        EXPECT_TRUE(run.out.contains(each.out)) << run.out.toStdString();
        EXPECT_TRUE(run.errors.contains(each.errors)) << run.errors.toStdString();
        EXPECT_EQ(run.errors.contains("corvane-desktop:"), *each.errors != 0) << run.errors.toStdString();
    }
    EXPECT_EQ(RunWithoutDisplay({app, "--quit"}, "nowhere").exitCode, 3) << "the environment's choice holds";
}

} // namespace
} // namespace corvane::desktop
