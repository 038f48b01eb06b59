#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "headless/Document.h"
#include "headless/Steps.h"

#include <fstream>
#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

struct Arguments {
    std::string sApplication;
    std::string sSteps;
    bool bStandIns = false;
    bool bJson = false;
};

int Inspect(const Arguments& oArguments) {
    using namespace corvane::inspect;
    const std::string sApplication = ApplicationFolder(oArguments.sApplication, Also::Incomplete);
    std::vector<Step> aSteps;
    if (!oArguments.sSteps.empty()) {
        std::ifstream oStream(oArguments.sSteps);
        if (!oStream)
            return Fails(oArguments.sSteps, "the file can't be read");
        aSteps = ReadSteps(oStream, oArguments.sSteps);
    }
    ModelHost oHost({sApplication, oArguments.bStandIns, nullptr});
    DocumentOptions oOptions;
    oOptions.bStandIns = oArguments.bStandIns;
    if (!oHost.Start()) // nothing can be done, but what is expected counts
        std::erase_if(aSteps, [](const Step& oStep) { return oStep.sVerb != "expect"; });
    TakeAll(oHost, aSteps);
    for (const auto& oStep : aSteps) {
        oOptions.bPopups |= oStep.sVerb == "rightclick" || oStep.sVerb == "contextmenu";
        oOptions.bMessages |= oStep.sVerb == "rename";
        oOptions.bSizes |= oStep.sVerb == "resize";
    }
    std::cout << (oArguments.bJson ? JsonDocument(oHost, oOptions) : TextDocument(oHost, oOptions));
    std::cout.flush();
    for (const std::string& sMissed : oHost.Recorded().aMissed)
        std::cerr << sMissed << "\n";
    for (const std::string& sUnmet : oHost.Recorded().aUnmet)
        std::cerr << sUnmet << "\n";
    return oHost.Recorded().aUnmet.empty() ? Exit::Clean : Exit::Findings;
}

} // namespace

void AddInspect(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pInspect = oApp.add_subcommand(
        "inspect", "Starts an application without a display, takes steps and prints what is on screen");
    pInspect->add_option("APP", pArguments->sApplication, "The application folder")->required();
    pInspect->add_option("--steps", pArguments->sSteps, "A file of steps to take, one per line");
    pInspect->add_flag("--stand-ins", pArguments->bStandIns, "Use stubs instead of all plug-ins");
    pInspect->add_flag("--json", pArguments->bJson, "Print one JSON document");
    pInspect->callback([pArguments, &fnRun] { fnRun = [pArguments] { return Inspect(*pArguments); }; });
}

} // namespace corvane::tool
