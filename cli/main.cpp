#include "cli/inspect/Document.h"
#include "cli/inspect/Steps.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

// How the program ends.
enum Exit { Clean = 0, Findings = 1, Usage = 2, Failed = 3 };

struct InspectArguments {
    std::string sApplication;
    std::string sSteps;
    bool bStandIns = false;
    bool bJson = false;
};

int Inspect(const InspectArguments& oArguments) {
    using namespace corvane::inspect;
    if (!std::filesystem::is_directory(oArguments.sApplication)) {
        std::cerr << oArguments.sApplication << ": error: there is no such application folder\n";
        return Exit::Failed;
    }
    std::vector<Step> aSteps;
    if (!oArguments.sSteps.empty()) {
        std::ifstream oStream(oArguments.sSteps);
        if (!oStream) {
            std::cerr << oArguments.sSteps << ": error: the file can't be read\n";
            return Exit::Failed;
        }
        aSteps = ReadSteps(oStream, oArguments.sSteps);
    }
    ModelHost oHost({oArguments.sApplication, oArguments.bStandIns, nullptr});
    DocumentOptions oOptions;
    oOptions.bStandIns = oArguments.bStandIns;
    if (oHost.Start()) {
        for (const auto& oStep : aSteps) {
            if (oHost.HasExited())
                break;
            Take(oHost, oStep);
        }
    }
    for (const auto& oStep : aSteps) {
        oOptions.bPopups |= oStep.sVerb == "rightclick";
        oOptions.bMessages |= oStep.sVerb == "rename";
        oOptions.bSizes |= oStep.sVerb == "resize";
    }
    std::cout << (oArguments.bJson ? JsonDocument(oHost, oOptions) : TextDocument(oHost, oOptions));
    return Exit::Clean;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App oApp{"Checks, inspects and builds Corvane applications", "corvane"};
    oApp.set_version_flag("--version", std::string("corvane ") + CORVANE_VERSION);
    oApp.require_subcommand(1);
    InspectArguments oInspect;
    auto* pInspect = oApp.add_subcommand(
        "inspect", "Starts an application without a display, takes steps and prints what stands on screen");
    pInspect->add_option("APP", oInspect.sApplication, "The application folder")->required();
    pInspect->add_option("--steps", oInspect.sSteps, "A file of steps to take, one a line");
    pInspect->add_flag("--stand-ins", oInspect.bStandIns, "Let stand-ins take the place of all plug-ins");
    pInspect->add_flag("--json", oInspect.bJson, "Print one JSON document");
    try {
        oApp.parse(argc, argv);
    } catch (const CLI::ParseError& oError) {
        return oApp.exit(oError) == 0 ? Exit::Clean : Exit::Usage;
    }
    try {
        return Inspect(oInspect);
    } catch (...) {
        std::cerr << "corvane: error: " << corvane::CurrentFailure().Description << "\n";
        return Exit::Failed;
    }
}
