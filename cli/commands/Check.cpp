#include "analysis/Check.h"

#include "adapters/common/Nearest.h"
#include "analysis/Print.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace corvane::tool {

namespace {

struct CheckArguments {
    std::string application;
    std::string explain;
    bool plugins = false;
    bool json = false;
    bool sarif = false;
    bool rules = false;
    std::string failOn = "warning";
};

int ExplainRule(const std::string& ruleName) {
    if (const auto rule = check::RuleNamed(ruleName)) {
        std::cout << check::Explained(check::TextOf(*rule));
        return Exit::Clean;
    }
    std::vector<std::string> names;
    for (const auto& rule : check::AllRules())
        names.emplace_back(rule.name);
    const auto nearest = Nearest(names, ruleName);
    std::cerr << "corvane check: error: there is no rule \"" << ruleName << "\"; "
              << (nearest ? "did you mean \"" + *nearest + "\"?" : std::string("--rules lists them")) << "\n";
    return Exit::Usage;
}

int Check(const CheckArguments& arguments) {
    if (arguments.rules) {
        std::cout << check::RulesAsMarkdown();
        return Exit::Clean;
    }
    if (!arguments.explain.empty())
        return ExplainRule(arguments.explain);
    if (arguments.application.empty()) {
        std::cerr << "corvane check: error: name the application folder\n";
        return Exit::Usage;
    }
    const auto findings = check::Check({ApplicationFolder(arguments.application), arguments.plugins});
    if (arguments.json)
        std::cout << check::AsJson(findings);
    else if (arguments.sarif)
        std::cout << check::AsSarif(findings, CORVANE_VERSION);
    else
        std::cout << check::AsText(findings, IsColoured(STDOUT_FILENO));
    std::cout.flush();
    if (!findings.empty())
        std::cerr << check::CountText(findings) << "\n";
    else if (!arguments.json && !arguments.sarif)
        std::cerr << "no problems found\n";
    const bool fails = std::any_of(findings.begin(), findings.end(), [&](const check::Finding& finding) {
        return arguments.failOn == "warning" || check::TextOf(finding.rule).severity == check::Severity::Error;
    });
    return fails ? Exit::Findings : Exit::Clean;
}

} // namespace

void AddCheck(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<CheckArguments>();
    auto* check = app.add_subcommand("check", "Finds what is wrong with the definition files of an application");
    check->add_option("APP", arguments->application, "The application folder");
    check->add_flag("--plugins", arguments->plugins, "Also load the plug-ins and look for classes and procedures");
    auto* json = check->add_flag("--json", arguments->json, "Print one JSON document");
    check->add_flag("--sarif", arguments->sarif, "Print one SARIF document")->excludes(json);
    check->add_option("--explain", arguments->explain, "Describe a rule with an example")->type_name("RULE");
    check->add_flag("--rules", arguments->rules, "Describe all rules");
    check->add_option("--fail-on", arguments->failOn, "End with 1 on warnings too, as without it, or on errors alone")
        ->check(CLI::IsMember({"warning", "error"}));
    check->callback([arguments, &run] { run = [arguments] { return Check(*arguments); }; });
}

} // namespace corvane::tool
