#include "corvane/base/Failure.h"
#include "desktop/application/EndSignals.h"
#include "desktop/preview/PreviewWindow.h"
#include "desktop/translation/HostTranslation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
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

// The name of a file that is there for the next run alone; empty when it can't be written.
std::string WriteHandOver(const QByteArray& aHandOver) {
    QTemporaryFile oFile(QDir::tempPath() + "/corvane-preview-XXXXXX.json");
    oFile.setAutoRemove(false);
    return oFile.open() && oFile.write(aHandOver) == aHandOver.size() ? oFile.fileName().toStdString() : std::string();
}

QByteArray ReadHandOver(const QString& sFile) {
    QFile oFile(sFile);
    const QByteArray aHandOver = oFile.open(QIODevice::ReadOnly) ? oFile.readAll() : QByteArray();
    oFile.remove();
    return aHandOver;
}

// As if it had been started anew, in the same process, for whoever waits for it.
int StartAgain(std::vector<std::string> aArguments, const std::string& sHandOver) {
    if (const auto it = std::find(aArguments.begin(), aArguments.end(), sGoOn); it != aArguments.end())
        aArguments.erase(it, std::min(it + 2, aArguments.end())); // of the run before
    aArguments.insert(aArguments.begin() + 1, {sGoOn, sHandOver});
    std::vector<char*> aPointers;
    for (std::string& sArgument : aArguments)
        aPointers.push_back(sArgument.data());
    aPointers.push_back(nullptr);
    ::execv("/proc/self/exe", aPointers.data());
    std::fprintf(stderr, "corvane-preview: error: it can't be started again: %s\n", std::strerror(errno));
    return Exit::Failed;
}

int Preview(int argc, char** argv, std::string& sHandOver) {
    using namespace corvane::desktop;
    QApplication oQt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser oParser;
    oParser.setApplicationDescription("Shows a Corvane application, with stubs for plug-ins that don't exist yet, "
                                      "and follows its definition files.");
    oParser.addHelpOption();
    oParser.addPositionalArgument("APP", "The application folder.");
    oParser.addOptions(
        {{"stand-ins", "Uses stubs instead of all plug-ins."},
         {sGoOn + 2, "Goes on where the run that wrote that file was, with the file of --record too.", "FILE"},
         {"record", "Records what you do in that file, as steps for corvane inspect --steps.", "FILE"}});
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
        if (oParser.isSet(sGoOn + 2))
            oOptions.aTakenOver = ReadHandOver(oParser.value(sGoOn + 2));
        if (oParser.isSet("record"))
            oOptions.pRecorder =
                std::make_shared<StepRecorder>(oParser.value("record").toStdString(), oParser.isSet(sGoOn + 2));
        PreviewWindow oWindow(oOptions);
        const EndSignals oEndSignals(&oWindow);
        QTimer::singleShot(0, &oWindow, &PreviewWindow::Start);
        QApplication::exec();
        if (oWindow.WantsRestart()) {
            sHandOver = WriteHandOver(oWindow.HandOver());
            return Exit::Again;
        }
        return oWindow.HasErrors() ? Exit::Findings : Exit::Clean;
    } catch (...) {
        std::fprintf(stderr, "corvane-preview: error: %s\n", corvane::CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> aArguments(argv, argv + argc); // Qt takes its own away
    std::string sHandOver;
    const int nExit = Preview(argc, argv, sHandOver);
    return nExit == Exit::Again ? StartAgain(aArguments, sHandOver) : nExit;
}
