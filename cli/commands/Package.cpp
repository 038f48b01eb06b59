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

struct Arguments {
    std::string sApplication;
    std::string sPrefix;
};

int Package(const Arguments& oArguments) {
    const std::string sApplication = ApplicationFolder(oArguments.sApplication);
    auto aFindings = check::Check({sApplication, true});
    std::erase_if(aFindings,
                  [](const check::Finding& o) { return check::TextOf(o.eRule).eSeverity != check::Severity::Error; });
    if (!aFindings.empty()) {
        std::cout << check::AsText(aFindings, IsColoured(STDOUT_FILENO));
        std::cerr << "corvane package: error: correct these first\n";
        return Exit::Findings;
    }
    const auto oPacked = package::Install(sApplication, oArguments.sPrefix);
    for (const std::string& sFile : oPacked.aFiles)
        std::cout << oArguments.sPrefix << "/" << sFile << "\n";
    for (const std::string& sProgram : oPacked.aMissing)
        std::cerr << "corvane package: note: " << sProgram << " isn't installed, so what it checks is unchecked\n";
    for (const std::string& sProblem : oPacked.aProblems)
        std::cerr << sProblem;
    return oPacked.aProblems.empty() ? Exit::Clean : Exit::Findings;
}

} // namespace

void AddPackage(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pPackage = oApp.add_subcommand(
        "package", "Installs an application with launcher, desktop entry, metadata, icon and man page");
    pPackage->add_option("APP", pArguments->sApplication, "The application folder, with a file about.json")->required();
    pPackage->add_option("--prefix", pArguments->sPrefix, "The folder to install into, such as debian/birds/usr")
        ->type_name("FOLDER")
        ->required();
    pPackage->callback([pArguments, &fnRun] { fnRun = [pArguments] { return Package(*pArguments); }; });
}

} // namespace corvane::tool
