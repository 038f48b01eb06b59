#include "desktop/Application.h"

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>

namespace {

enum Exit { Clean = 0, Usage = 2, Failed = 3 };

} // namespace

int main(int argc, char** argv) {
    using namespace corvane::desktop;
    QApplication oQt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser oParser;
    oParser.setApplicationDescription("Runs a Corvane application.");
    oParser.addHelpOption();
    oParser.addPositionalArgument("APP", "The application folder.");
    oParser.addOptions({{"choose", "Chooses the tool of that name after the start; may stand several times.", "TOOL"},
                        {"answer", "Answers the next dialog with that text; may stand several times.", "TEXT"},
                        {"screenshot", "Saves a picture of the window to that file.", "FILE"},
                        {"print", "Prints what the window shows as text."},
                        {"quit", "Ends after that, without asking anybody anything."}});
    oParser.process(oQt);
    if (oParser.positionalArguments().size() != 1) {
        std::fputs("corvane-desktop: error: name one application folder\n", stderr);
        return Exit::Usage;
    }
    try {
        const bool bUnwatched = oParser.isSet("quit");
        Application oApplication({oParser.positionalArguments().front().toStdString(), !bUnwatched});
        for (const QString& sAnswer : oParser.values("answer"))
            oApplication.Dialogs().AddAnswer(sAnswer.toStdString());
        const bool bStarted = oApplication.Start();
        int nExit = bStarted ? Exit::Clean : Exit::Failed;
        QApplication::processEvents();
        for (const QString& sTool : oParser.values("choose"))
            if (!oApplication.Choose(sTool.toStdString())) {
                std::fprintf(stderr, "corvane-desktop: error: %s can't be chosen\n", qUtf8Printable(sTool));
                nExit = Exit::Failed;
            }
        QApplication::processEvents();
        if (oParser.isSet("screenshot") && !oApplication.Window().grab().save(oParser.value("screenshot")))
            nExit = Exit::Failed;
        if (oParser.isSet("print"))
            std::fputs(oApplication.AsText().c_str(), stdout);
        if (bUnwatched)
            return nExit;
        QApplication::exec();
        return nExit;
    } catch (...) {
        std::fprintf(stderr, "corvane-desktop: error: %s\n", corvane::CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}
