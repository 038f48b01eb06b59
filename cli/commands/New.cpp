#include "cli/new/New.h"

#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"

#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

struct Arguments {
    std::string sApplication;
    std::vector<std::string> aServices;
};

int New(const Arguments& oArguments) {
    const bool bInside = oArguments.sApplication.empty();
    if (bInside && oArguments.aServices.empty()) {
        std::cerr << "corvane new: error: name an application, or inside one a --service\n";
        return Exit::Usage;
    }
    std::vector<std::string> aWritten;
    try {
        if (!bInside)
            aWritten = scaffold::NewApplication(oArguments.sApplication, oArguments.aServices, CORVANE_VERSION);
        else
            for (const std::string& sService : oArguments.aServices)
                for (std::string& sPath : scaffold::NewService(".", sService))
                    aWritten.push_back(std::move(sPath));
    } catch (const Failure& oFailure) {
        return Fails("corvane new", oFailure.Description);
    }
    for (const std::string& sPath : aWritten)
        std::cout << sPath << "\n";
    if (!bInside)
        std::cout << "\nBuild and test it:\n  cd " << oArguments.sApplication
                  << " && cmake --preset dev && cmake --build --preset dev && ctest --preset dev\n";
    return Exit::Clean;
}

} // namespace

void AddNew(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pNew = oApp.add_subcommand("new", "Writes a new application, or adds a service to the one in this folder");
    pNew->add_option("APP", pArguments->sApplication,
                     "The folder of the new application; its name is the application's");
    pNew->add_option("--service", pArguments->aServices, "A service to write; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    pNew->callback([pArguments, &fnRun] { fnRun = [pArguments] { return New(*pArguments); }; });
}

} // namespace corvane::tool
