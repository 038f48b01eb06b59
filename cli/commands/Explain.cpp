#include "analysis/Explain.h"

#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"

#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

struct Arguments {
    std::string sApplication;
    std::string sItem;
};

int Explain(const Arguments& oArguments) {
    const auto oExplanation = check::Explain(ApplicationFolder(oArguments.sApplication), oArguments.sItem);
    std::cout << oExplanation.sText;
    if (!oExplanation.sText.empty())
        return Exit::Clean;
    std::string sHint;
    for (const std::string& sName : oExplanation.aNearest)
        sHint += (sHint.empty() ? "; did you mean " : " or ") + ("\"" + sName + "\"");
    return Fails(oArguments.sApplication,
                 "there is nothing of the name \"" + oArguments.sItem + "\"" + sHint + (sHint.empty() ? "" : "?"));
}

} // namespace

void AddExplain(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pExplain = oApp.add_subcommand("explain", "Shows where an entry, bar, window or explorer item is defined");
    pExplain->add_option("APP", pArguments->sApplication, "The application folder")->required();
    pExplain
        ->add_option(
            "ITEM", pArguments->sItem,
            "A key such as File.Open, or the name of a tool, action, bar, window, explorer item, service or class")
        ->required();
    pExplain->callback([pArguments, &fnRun] { fnRun = [pArguments] { return Explain(*pArguments); }; });
}

} // namespace corvane::tool
