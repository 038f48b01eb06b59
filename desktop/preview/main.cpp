#include "corvane/base/Failure.h"
#include "desktop/EndSignals.h"
#include "desktop/preview/PreviewWindow.h"
#include "desktop/translation/HostTranslation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char* sGoOn = "--go-on";

enum Exit { Clean = 0, Findings = 1, Usage = 2, Failed = 3, Again = -1 };

// As if it had been started anew, in the same process, for whoever waits for it.
int StartAgain(std::vector<std::string> aArguments) {
    if (std::find(aArguments.begin(), aArguments.end(), sGoOn) == aArguments.end())
        aArguments.insert(aArguments.begin() + 1, sGoOn);
    std::vector<char*> aPointers;
    for (std::string& sArgument : aArguments)
        aPointers.push_back(sArgument.data());
    aPointers.push_back(nullptr);
    ::execv("/proc/self/exe", aPointers.data());
    std::fprintf(stderr, "corvane-preview: error: it can't be started again: %s\n", std::strerror(errno));
    return Exit::Failed;
}

int Preview(int argc, char** argv) {
    using namespace corvane::desktop;
    QApplication oQt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser oParser;
    oParser.setApplicationDescription("Shows a Corvane application, with stand-ins for plug-ins that don't exist yet, "
                                      "and follows its definition files.");
    oParser.addHelpOption();
    oParser.addPositionalArgument("APP", "The application folder.");
    oParser.addOptions({{"stand-ins", "Lets stand-ins take the place of all plug-ins."},
                        {sGoOn + 2, "Goes on with the file of --record instead of beginning it anew."},
                        {"record", "Writes what you do to that file, as steps for corvane inspect --steps.", "FILE"}});
    if (!oParser.parse(QApplication::arguments())) {
        std::fprintf(stderr, "corvane-preview: error: %s\n", qUtf8Printable(oParser.errorText()));
        return Exit::Usage;
    }
    if (oParser.isSet("help")) {
        std::fputs(qUtf8Printable(oParser.helpText()), stdout);
        return Exit::Clean;
    }
    if (oParser.positionalArguments().size() != 1) {
        std::fputs("corvane-preview: error: name one application folder\n", stderr);
        return Exit::Usage;
    }
    const QString sFolder = oParser.positionalArguments().front();
    if (!QFileInfo(sFolder).isDir()) {
        std::fprintf(stderr, "%s: error: there is no such application folder\n", qUtf8Printable(sFolder));
        return Exit::Failed;
    }
    const HostTranslation oTranslation(WantedLanguages());
    try {
        PreviewOptions oOptions;
        oOptions.sFolder = sFolder.toStdString();
        oOptions.bStandIns = oParser.isSet("stand-ins");
        if (oParser.isSet("record"))
            oOptions.pRecorder =
                std::make_shared<StepRecorder>(oParser.value("record").toStdString(), oParser.isSet(sGoOn + 2));
        PreviewWindow oWindow(oOptions);
        const EndSignals oEndSignals(&oWindow);
        QTimer::singleShot(0, &oWindow, &PreviewWindow::Start);
        QApplication::exec();
        if (oWindow.WantsRestart())
            return Exit::Again;
        return oWindow.HasErrors() ? Exit::Findings : Exit::Clean;
    } catch (...) {
        std::fprintf(stderr, "corvane-preview: error: %s\n", corvane::CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> aArguments(argv, argv + argc); // Qt takes its own away
    const int nExit = Preview(argc, argv);
    return nExit == Exit::Again ? StartAgain(aArguments) : nExit;
}
