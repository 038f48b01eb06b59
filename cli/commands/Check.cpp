#include "analysis/Check.h"

#include "adapters/common/Nearest.h"
#include "analysis/Print.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"

#include <iostream>
#include <memory>
#include <unistd.h>

namespace corvane::tool {

namespace {

struct Arguments {
    std::string sApplication;
    std::string sExplain;
    bool bPlugins = false;
    bool bJson = false;
    bool bSarif = false;
    bool bRules = false;
};

int Explain(const std::string& sRule) {
    if (const auto oRule = check::RuleNamed(sRule)) {
        std::cout << check::Explained(check::TextOf(*oRule));
        return Exit::Clean;
    }
    std::vector<std::string> aNames;
    for (const auto& oRule : check::AllRules())
        aNames.emplace_back(oRule.sName);
    const auto oNearest = Nearest(aNames, sRule);
    std::cerr << "corvane check: error: there is no rule \"" << sRule << "\"; "
              << (oNearest ? "did you mean \"" + *oNearest + "\"?" : std::string("--rules lists them")) << "\n";
    return Exit::Usage;
}

int Check(const Arguments& oArguments) {
    if (oArguments.bRules) {
        std::cout << check::RulesAsMarkdown();
        return Exit::Clean;
    }
    if (!oArguments.sExplain.empty())
        return Explain(oArguments.sExplain);
    if (oArguments.sApplication.empty()) {
        std::cerr << "corvane check: error: name the application folder\n";
        return Exit::Usage;
    }
    const auto aFindings = check::Check({ApplicationFolder(oArguments.sApplication), oArguments.bPlugins});
    if (oArguments.bJson)
        std::cout << check::AsJson(aFindings);
    else if (oArguments.bSarif)
        std::cout << check::AsSarif(aFindings, CORVANE_VERSION);
    else
        std::cout << check::AsText(aFindings, IsColoured(STDOUT_FILENO));
    std::cout.flush();
    if (!aFindings.empty())
        std::cerr << check::CountText(aFindings) << "\n";
    else if (!oArguments.bJson && !oArguments.bSarif)
        std::cerr << "no problems found\n";
    return aFindings.empty() ? Exit::Clean : Exit::Findings;
}

} // namespace

void AddCheck(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pCheck = oApp.add_subcommand("check", "Finds what is wrong with the definition files of an application");
    pCheck->add_option("APP", pArguments->sApplication, "The application folder");
    pCheck->add_flag("--plugins", pArguments->bPlugins, "Also load the plug-ins and look for classes and procedures");
    auto* pJson = pCheck->add_flag("--json", pArguments->bJson, "Print one JSON document");
    pCheck->add_flag("--sarif", pArguments->bSarif, "Print one SARIF document")->excludes(pJson);
    pCheck->add_option("--explain", pArguments->sExplain, "Describe a rule with an example")->type_name("RULE");
    pCheck->add_flag("--rules", pArguments->bRules, "Describe all rules");
    pCheck->callback([pArguments, &fnRun] { fnRun = [pArguments] { return Check(*pArguments); }; });
}

} // namespace corvane::tool
