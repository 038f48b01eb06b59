#include "desktop/application/Application.h"
#include "desktop/application/EndSignals.h"
#include "desktop/application/UnwatchedRun.h"
#include "desktop/translation/HostTranslation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <deque>
#include <map>
#include <utility>

namespace {

enum Exit { Clean = 0, Usage = 2, Failed = 3 };

// In the order of the command line.
std::deque<corvane::desktop::RunStep> StepsOf(const QCommandLineParser& oParser) {
    using Kind = corvane::desktop::RunStep::Kind;
    std::deque<corvane::desktop::RunStep> aSteps;
    const std::map<QString, Kind> mapKinds{{"choose", Kind::Choose}, {"click", Kind::Click}, {"page", Kind::Page}};
    std::map<QString, qsizetype> mapTaken;
    for (const QString& sOption : oParser.optionNames())
        if (const auto it = mapKinds.find(sOption); it != mapKinds.end())
            aSteps.push_back({it->second, oParser.values(sOption).at(mapTaken[sOption]++)});
    return aSteps;
}

} // namespace

int main(int argc, char** argv) {
    using namespace corvane::desktop;
    QApplication oQt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser oParser;
    oParser.setApplicationDescription("Runs a Corvane application.");
    oParser.addHelpOption();
    oParser.addPositionalArgument("APP", "The application folder.");
    oParser.addOptions(
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
         {"quit", "Ends after that, without asking any question."}});
    oParser.process(oQt);
    if (oParser.positionalArguments().size() != 1) {
        std::fputs("corvane-desktop: error: name one application folder\n", stderr);
        return Exit::Usage;
    }
    const QStringList aLanguages = WantedLanguages();
    const HostTranslation oTranslation(aLanguages);
    try {
        const bool bUnwatched = oParser.isSet("quit");
        ApplicationOptions oOptions;
        oOptions.sFolder = oParser.positionalArguments().front().toStdString();
        oOptions.bWithDialogs = !bUnwatched;
        oOptions.bPersonal = !bUnwatched;
        if (oParser.isSet("record")) { // steps are taken again from a fresh start, so they begin with one
            oOptions.pRecorder =
                std::make_shared<corvane::desktop::StepRecorder>(oParser.value("record").toStdString());
            oOptions.bPersonal = false;
        }
        for (const QString& sName : oParser.values("without"))
            oOptions.oLeftOut.aNames.push_back(sName.toStdString());
        oOptions.oLeftOut.bAllPlugins = oParser.isSet("safe");
        oOptions.bWatch = !bUnwatched;
        oOptions.aLanguages = aLanguages;
        if (!bUnwatched)
            oOptions.fnAskAfterDeath = &Blame::AskInBox;
        Application oApplication(oOptions);
        for (const QString& sAnswer : oParser.values("answer"))
            oApplication.Dialogs().AddAnswer(sAnswer.toStdString());
        const auto fnLook = [&] {
            if (oParser.isSet("print"))
                std::fputs(oApplication.AsText().c_str(), stdout);
            return !oParser.isSet("screenshot") || oApplication.Picture().save(oParser.value("screenshot"));
        };
        UnwatchedRun oRun(oApplication, StepsOf(oParser), fnLook);
        if (!bUnwatched)
            oApplication.SetModalLoop({}); // somebody is there to close it
        const bool bStarted = oApplication.Start();
        for (const std::string& sName : oApplication.Blamed().Filter()->Unknown())
            std::fprintf(stderr, "corvane-desktop: warning: there is no service \"%s\" to leave out\n", sName.c_str());
        const int nExit = oRun.Run() && bStarted ? Exit::Clean : Exit::Failed;
        if (bUnwatched)
            return nExit;
        const EndSignals oEndSignals(&oApplication.Window());
        QApplication::exec();
        return nExit;
    } catch (...) {
        std::fprintf(stderr, "corvane-desktop: error: %s\n", corvane::CurrentFailure().Description.c_str());
        return Exit::Failed;
    }
}
