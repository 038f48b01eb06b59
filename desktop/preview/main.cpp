#include "corvane/base/Failure.h"
#include "desktop/EndSignals.h"
#include "desktop/preview/PreviewWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTimer>
#include <cstdio>

namespace {

enum Exit { Clean = 0, Findings = 1, Usage = 2, Failed = 3 };

} // namespace

int main(int argc, char** argv) {
    using namespace corvane::desktop;
    QApplication oQt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser oParser;
    oParser.setApplicationDescription("Shows a Corvane application, with stand-ins for plug-ins that don't exist yet, "
                                      "and follows its definition files.");
    oParser.addHelpOption();
    oParser.addPositionalArgument("APP", "The application folder.");
    oParser.addOptions({{"stand-ins", "Lets stand-ins take the place of all plug-ins."},
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
    try {
        PreviewOptions oOptions;
        oOptions.sFolder = sFolder.toStdString();
        oOptions.bStandIns = oParser.isSet("stand-ins");
        if (oParser.isSet("record"))
            oOptions.pRecorder = std::make_shared<StepRecorder>(oParser.value("record").toStdString());
        PreviewWindow oWindow(oOptions);
        const EndSignals oEndSignals(&oWindow);
        QTimer::singleShot(0, &oWindow, &PreviewWindow::Start);
        QApplication::exec();
        return oWindow.HasErrors() ? Exit::Findings : Exit::Clean;
    } catch (...) {
        std::fprintf(stderr, "corvane-preview: error: %s\n", corvane::CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}
