#include "adapters/common/Nearest.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace {

// What would be told as a command that is missing.
bool IsUnknown(const CLI::App& oApp, const std::string& sCommand) {
    std::vector<std::string> aNames;
    for (const CLI::App* pCommand : oApp.get_subcommands({}))
        aNames.push_back(pCommand->get_name());
    if (sCommand.empty() || sCommand.front() == '-' ||
        std::find(aNames.begin(), aNames.end(), sCommand) != aNames.end())
        return false;
    const auto oNearest = corvane::Nearest(aNames, sCommand);
    std::cerr << "corvane: error: there is no command \"" << sCommand << "\"; "
              << (oNearest ? "did you mean \"" + *oNearest + "\"?" : std::string("--help lists them")) << "\n";
    return true;
}

} // namespace

int main(int argc, char** argv) {
    using namespace corvane::tool;
    CLI::App oApp{"Checks, inspects and builds Corvane applications", "corvane"};
    oApp.set_version_flag("--version", std::string("corvane ") + CORVANE_VERSION);
    oApp.require_subcommand(1);
    Run fnRun;
    // In the order in which an author meets them.
    AddNew(oApp, fnRun);
    AddCheck(oApp, fnRun);
    AddExplain(oApp, fnRun);
    AddInspect(oApp, fnRun);
    AddRun(oApp, fnRun);
    AddPreview(oApp, fnRun);
    AddTranslate(oApp, fnRun);
    AddPackage(oApp, fnRun);
    if (const std::string sFirst = argc > 1 ? argv[1] : ""; IsUnknown(oApp, sFirst))
        return Exit::Usage;
    try {
        oApp.parse(argc, argv);
    } catch (const CLI::ParseError& oError) {
        return oApp.exit(oError) == 0 ? Exit::Clean : Exit::Usage;
    }
    try {
        return fnRun();
    } catch (...) {
        return Fails("corvane", corvane::CurrentFailure().Description);
    }
}
