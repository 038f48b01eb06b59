#include "desktop/application/Program.h"

#include "desktop/application/Application.h"
#include "desktop/application/Display.h"
#include "desktop/application/EndSignals.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/UnwatchedRun.h"
#include "desktop/blame/Blame.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/failures/GuardedApplication.h"
#include "desktop/platform/HostParts.h"
#include "desktop/platform/Identity.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/translation/HostTranslation.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <utility>

namespace corvane::desktop {

namespace {

namespace Exit {
enum { Clean = 0, Usage = 2, Failed = 3 };
}

// In the order of the command line.
std::deque<RunStep> StepsOf(const QCommandLineParser& parser) {
    using Kind = RunStep::Kind;
    std::deque<RunStep> steps;
    const std::map<QString, Kind> kinds{{"choose", Kind::Choose}, {"click", Kind::Click}, {"page", Kind::Page}};
    std::map<QString, qsizetype> taken;
    for (const QString& option : parser.optionNames())
        if (const auto it = kinds.find(option); it != kinds.end())
            steps.push_back({it->second, parser.values(option).at(taken[option]++)});
    return steps;
}

} // namespace

int RunDesktop(int argc, char** argv) {
    std::unique_ptr<QCoreApplication> help; // it needs no display
    std::unique_ptr<GuardedApplication> qt;
    if (IsHelpWanted(argc, argv)) {
        help = std::make_unique<QCoreApplication>(argc, argv);
    } else {
        ChooseDisplay(argc, argv);
        const DisplayWatch watch("corvane-desktop");
        qt = std::make_unique<GuardedApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName("Corvane");
    QCommandLineParser parser;
    parser.setApplicationDescription("Runs a Corvane application.");
    parser.addHelpOption();
    parser.addPositionalArgument("APP", "The application folder.");
    parser.addPositionalArgument("FILE", "Files to open after the start.", "[FILE...]");
    parser.addOptions(
        {{"choose", "Chooses the tool of that name after the start; may be given several times.", "TOOL"},
         {"click",
          "Clicks a command of the active window: help, ok, cancel, apply, previous, next, finish, save, "
          "saveas, close. May be given several times, mixed with --choose.",
          "COMMAND"},
         {"page", "Brings that page of the active window to the front, from 1, likewise.", "NUMBER"},
         {"answer", "Answers the next dialog with that text; may be given several times.", "TEXT"},
         {"screenshot", "Saves a picture of the window to that file.", "FILE"},
         {"print", "Prints what the window shows as text."},
         {"without", "Leaves out that service, or all services of that plug-in; may be given several times.", "NAME"},
         {"safe", "Leaves out all plug-ins and your customizations of the desktop."},
         {"record", "Records what you do in that file, as steps for corvane inspect --steps.", "FILE"},
         {"break-on-error", "Stops in the debugger, if one is attached, at each failure that the library logs."},
         {"quit", "Ends after that, without asking any question."}});
    parser.process(*QCoreApplication::instance()); // ends the program when help is wanted
    if (parser.positionalArguments().empty()) {
        std::fputs("corvane-desktop: error: name one application folder\n", stderr);
        return Exit::Usage;
    }
    if (parser.isSet("break-on-error"))
        ::setenv("CORVANE_BREAK_ON_ERROR", "1", 1);
    const Identity identity = ReadIdentity(parser.positionalArguments().front().toStdString());
    const QStringList languages = WantedLanguages(identity.Settings());
    const HostTranslation translation(languages);
    try {
        const bool unwatched = parser.isSet("quit");
        ApplicationOptions options;
        options.folder = parser.positionalArguments().front().toStdString();
        options.withDialogs = !unwatched;
        options.personal = !unwatched;
        if (parser.isSet("record")) { // steps are taken again from a fresh start, so they begin with one
            options.recorder = std::make_shared<StepRecorder>(parser.value("record").toStdString());
            options.personal = false;
        }
        for (const QString& name : parser.values("without"))
            options.leftOut.names.push_back(name.toStdString());
        options.leftOut.allPlugins = parser.isSet("safe");
        options.watch = !unwatched;
        options.languages = languages;
        if (!unwatched)
            options.askAfterCrash = &Blame::AskInBox;
        identity.Announce();
        Application application(options);
        for (const QString& answer : parser.values("answer"))
            application.Dialogs().AddAnswer(answer.toStdString());
        const auto look = [&] {
            if (parser.isSet("print"))
                std::fputs(application.AsText().c_str(), stdout);
            return !parser.isSet("screenshot") || application.Picture().save(parser.value("screenshot"));
        };
        UnwatchedRun run(application, StepsOf(parser), look);
        if (!unwatched)
            application.SetModalLoop({}); // someone is there to close it
        const bool started = application.Start();
        QStringList files;
        for (const QString& file : parser.positionalArguments().mid(1))
            files << QFileInfo(file).absoluteFilePath();
        if (started && !files.empty() && !application.HasEnded())
            Q_EMIT application.Window().Explorer().FilesDropped(files); // the same as by a drop
        for (const std::string& name : application.Blamed().Filter()->Unknown())
            std::fprintf(stderr, "corvane-desktop: warning: there is no service \"%s\" to leave out\n", name.c_str());
        const int exit = run.Run() && started ? Exit::Clean : Exit::Failed;
        if (unwatched || application.HasEnded())
            return exit;
        const EndSignals endSignals(&application.Window());
        qt->Run();
        return exit;
    } catch (...) {
        std::fprintf(stderr, "corvane-desktop: error: %s\n", CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}

} // namespace corvane::desktop
