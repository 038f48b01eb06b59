#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace corvane::tool;
    CLI::App oApp{"Checks, inspects and builds Corvane applications", "corvane"};
    oApp.set_version_flag("--version", std::string("corvane ") + CORVANE_VERSION);
    oApp.require_subcommand(1);
    Run fnRun;
    AddInspect(oApp, fnRun);
    AddCheck(oApp, fnRun);
    AddNew(oApp, fnRun);
    AddRun(oApp, fnRun);
    AddPreview(oApp, fnRun);
    AddPackage(oApp, fnRun);
    AddExplain(oApp, fnRun);
    AddTranslate(oApp, fnRun);
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
