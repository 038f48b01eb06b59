#include "adapters/common/Nearest.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace {

// What would be reported as a command that is missing.
bool IsUnknown(const CLI::App& app, const std::string& commandName) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({}))
        names.push_back(command->get_name());
    if (commandName.empty() || commandName.front() == '-' ||
        std::find(names.begin(), names.end(), commandName) != names.end())
        return false;
    const auto nearest = corvane::Nearest(names, commandName);
    std::cerr << "corvane: error: there is no command \"" << commandName << "\"; "
              << (nearest ? "did you mean \"" + *nearest + "\"?" : std::string("--help lists them")) << "\n";
    return true;
}

} // namespace

int main(int argc, char** argv) {
    using namespace corvane::tool;
    CLI::App app{"Checks, inspects and builds Corvane applications", "corvane"};
    app.set_version_flag("--version", std::string("corvane ") + CORVANE_VERSION);
    app.require_subcommand(1);
    Run run;
    // In the order in which an author meets them.
    AddNew(app, run);
    AddCheck(app, run);
    AddExplain(app, run);
    AddArrange(app, run);
    AddInspect(app, run);
    AddRun(app, run);
    AddPreview(app, run);
    AddTranslate(app, run);
    AddPackage(app, run);
    AddLsp(app, run);
    AddDescribe(app, run);
    if (const std::string first = argc > 1 ? argv[1] : ""; IsUnknown(app, first))
        return Exit::Usage;
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? Exit::Clean : Exit::Usage;
    }
    try {
        return run();
    } catch (...) {
        return Fails("corvane", corvane::CurrentFailure().Description);
    }
}
