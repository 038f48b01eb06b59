#include "cli/package/Package.h"

#include "analysis/Check.h"
#include "analysis/Print.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace corvane::tool {

namespace {

struct PackageArguments {
    std::string application;
    std::string prefix;
};

int Package(const PackageArguments& arguments) {
    const std::string application = ApplicationFolder(arguments.application);
    auto findings = check::Check({application, true});
    std::erase_if(findings,
                  [](const check::Finding& o) { return check::TextOf(o.rule).severity != check::Severity::Error; });
    if (!findings.empty()) {
        std::cout << check::AsText(findings, IsColoured(STDOUT_FILENO));
        std::cerr << "corvane package: error: correct these first\n";
        return Exit::Findings;
    }
    const auto packed = package::Install(application, arguments.prefix);
    for (const std::string& file : packed.files)
        std::cout << arguments.prefix << "/" << file << "\n";
    for (const std::string& program : packed.missing)
        std::cerr << "corvane package: note: " << program << " isn't installed, so what it checks is unchecked\n";
    for (const std::string& problem : packed.problems)
        std::cerr << problem;
    return packed.problems.empty() ? Exit::Clean : Exit::Findings;
}

} // namespace

void AddPackage(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<PackageArguments>();
    auto* package = app.add_subcommand(
        "package", "Installs an application with launcher, desktop entry, metadata, icon and man page");
    package->add_option("APP", arguments->application, "The application folder, with a file about.json")->required();
    package->add_option("--prefix", arguments->prefix, "The folder to install into, such as debian/birds/usr")
        ->type_name("FOLDER")
        ->required();
    package->callback([arguments, &run] { run = [arguments] { return Package(*arguments); }; });
}

} // namespace corvane::tool
