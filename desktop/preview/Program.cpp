#include "desktop/preview/Program.h"

#include "corvane/base/Failure.h"
#include "desktop/application/Display.h"
#include "desktop/application/EndSignals.h"
#include "desktop/failures/GuardedApplication.h"
#include "desktop/platform/Identity.h"
#include "desktop/preview/PreviewWindow.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/translation/HostTranslation.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QTimer>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace corvane::desktop {

namespace {

constexpr const char* goOn = "--go-on";

namespace Exit {
enum { Clean = 0, Findings = 1, Usage = 2, Failed = 3, Again = -1 };
}

// The name of a file that is there for the next run alone; empty when it can't be written.
std::string WriteHandOver(const QByteArray& handOver) {
    QTemporaryFile file(QDir::tempPath() + "/corvane-preview-XXXXXX.json");
    file.setAutoRemove(false);
    return file.open() && file.write(handOver) == handOver.size() ? file.fileName().toStdString() : std::string();
}

QByteArray ReadHandOver(const QString& filePath) {
    QFile file(filePath);
    QByteArray handOver = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    file.remove();
    return handOver;
}

// As if it had been started again, in the same process, for what waits for it.
int StartAgain(std::vector<std::string> arguments, const std::string& handOver) {
    if (const auto it = std::find(arguments.begin(), arguments.end(), goOn); it != arguments.end())
        arguments.erase(it, std::min(it + 2, arguments.end())); // of the run before
    arguments.insert(arguments.begin() + 1, {goOn, handOver});
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    ::execv("/proc/self/exe", pointers.data());
    std::fprintf(stderr, "corvane-preview: error: it can't be started again: %s\n", std::strerror(errno));
    return Exit::Failed;
}

int Preview(int argc, char** argv, std::string& handOver) {
    std::unique_ptr<QCoreApplication> help; // it needs no display
    std::unique_ptr<GuardedApplication> qt;
    if (IsHelpWanted(argc, argv)) {
        help = std::make_unique<QCoreApplication>(argc, argv);
    } else {
        const DisplayWatch watch("corvane-preview");
        qt = std::make_unique<GuardedApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName("Corvane");
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows a Corvane application, with stubs for plug-ins that don't exist yet, "
                                     "and follows its definition files.");
    parser.addHelpOption();
    parser.addPositionalArgument("APP", "The application folder.");
    parser.addOptions(
        {{"stand-ins", "Uses stubs instead of all plug-ins."},
         {goOn + 2, "Goes on where the run that wrote that file was, with the file of --record too.", "FILE"},
         {"record", "Records what you do in that file, as steps for corvane inspect --steps.", "FILE"}});
    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "corvane-preview: error: %s\n", qUtf8Printable(parser.errorText()));
        return Exit::Usage;
    }
    if (parser.isSet("help")) {
        std::fputs(qUtf8Printable(parser.helpText()), stdout);
        return Exit::Clean;
    }
    if (parser.positionalArguments().size() != 1) {
        std::fputs("corvane-preview: error: name one application folder\n", stderr);
        return Exit::Usage;
    }
    const QString folder = parser.positionalArguments().front();
    if (!QFileInfo(folder).isDir()) {
        std::fprintf(stderr, "%s: error: there is no such application folder\n", qUtf8Printable(folder));
        return Exit::Failed;
    }
    const HostTranslation translation(WantedLanguages());
    try {
        PreviewOptions options;
        options.folder = folder.toStdString();
        ReadIdentity(options.folder).Announce();
        options.standIns = parser.isSet("stand-ins");
        if (parser.isSet(goOn + 2))
            options.takenOver = ReadHandOver(parser.value(goOn + 2));
        if (parser.isSet("record"))
            options.recorder =
                std::make_shared<StepRecorder>(parser.value("record").toStdString(), parser.isSet(goOn + 2));
        PreviewWindow window(options);
        const EndSignals endSignals(&window);
        QTimer::singleShot(0, &window, &PreviewWindow::Start);
        qt->Run();
        if (window.WantsRestart()) {
            handOver = WriteHandOver(window.HandOver());
            return Exit::Again;
        }
        return window.HasErrors() ? Exit::Findings : Exit::Clean;
    } catch (...) {
        std::fprintf(stderr, "corvane-preview: error: %s\n", CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}

} // namespace

int RunPreview(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc); // Qt takes its own away
    std::string handOver;
    const int exit = Preview(argc, argv, handOver);
    return exit == Exit::Again ? StartAgain(arguments, handOver) : exit;
}

} // namespace corvane::desktop
