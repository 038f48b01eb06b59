#include "analysis/Check.h"

#include "adapters/common/Nearest.h"
#include "analysis/Fix.h"
#include "analysis/Print.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "cli/commands/FindingsJson.h"

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
    bool fixes = false;
    bool asks = true; // before it writes, where someone can answer
    bool onlyShows = false;
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

bool MayWrite(const CheckArguments& arguments) {
    if (arguments.onlyShows)
        return false;
    if (!arguments.asks || ::isatty(STDIN_FILENO) == 0)
        return true;
    std::cerr << "Write these changes? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

// What is found in the files as they are afterwards.
std::vector<check::Finding> FixAll(const check::Options& options, const CheckArguments& arguments) {
    const check::Fixes fixes = check::Fix(options);
    std::ostream& stream = arguments.json || arguments.sarif ? std::cerr : std::cout;
    for (const check::FixedFile& file : fixes.files)
        stream << check::AsDiff(file);
    stream.flush();
    if (fixes.files.empty()) {
        std::cerr << "nothing to fix\n";
        return fixes.left;
    }
    if (!MayWrite(arguments))
        return check::Check(options);
    for (const check::FixedFile& file : fixes.files)
        check::WriteFixed(file);
    std::cerr << "changed " << fixes.files.size() << (fixes.files.size() == 1 ? " file" : " files")
              << "; what they were is beside them, ending in .bak\n";
    return fixes.left;
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
    const check::Options options{ApplicationFolder(arguments.application), arguments.plugins, {}};
    const auto findings = arguments.fixes ? FixAll(options, arguments) : check::Check(options);
    if (arguments.json)
        std::cout << AsJson(findings);
    else if (arguments.sarif)
        std::cout << AsSarif(findings, CORVANE_VERSION);
    else
        std::cout << check::AsText(findings, IsColoured(STDOUT_FILENO));
    std::cout.flush();
    if (!findings.empty())
        std::cerr << check::CountText(findings) << "\n";
    else if (!arguments.json && !arguments.sarif)
        std::cerr << "no problems found\n";
    // Notes are about style: nothing is wrong.
    const bool fails = std::any_of(findings.begin(), findings.end(), [&](const check::Finding& finding) {
        const check::Severity severity = check::TextOf(finding.rule).severity;
        return severity == check::Severity::Error ||
               (severity == check::Severity::Warning && arguments.failOn == "warning");
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
    auto* fix = check->add_flag("--fix", arguments->fixes, "Write the cures that are certain, after showing them");
    auto* dryRun =
        check->add_flag("--dry-run", arguments->onlyShows, "Show what --fix would change, and write nothing");
    dryRun->needs(fix);
    check->add_flag("!--yes", arguments->asks, "Let --fix write without asking")->needs(fix);
    check->add_flag("--rules", arguments->rules, "Describe all rules");
    check->add_option("--fail-on", arguments->failOn, "End with 1 on warnings too, as without it, or on errors alone")
        ->check(CLI::IsMember({"warning", "error"}));
    check->callback([arguments, &run] { run = [arguments] { return Check(*arguments); }; });
}

} // namespace corvane::tool
