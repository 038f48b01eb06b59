#include "analysis/Explain.h"

#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"

#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

struct ExplainArguments {
    std::string application;
    std::string item;
};

int Explain(const ExplainArguments& arguments) {
    const auto explanation = check::Explain(ApplicationFolder(arguments.application), arguments.item);
    std::cout << explanation.text;
    if (!explanation.text.empty())
        return Exit::Clean;
    std::string hint;
    for (const std::string& name : explanation.nearest)
        hint += (hint.empty() ? "; did you mean " : " or ") + ("\"" + name + "\"");
    (void)Fails(arguments.application,
                "there is nothing named \"" + arguments.item + "\"" + hint + (hint.empty() ? "" : "?"));
    return Exit::Usage;
}

} // namespace

void AddExplain(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<ExplainArguments>();
    auto* explain = app.add_subcommand("explain", "Shows where an entry, bar, window or explorer item is defined");
    explain->add_option("APP", arguments->application, "The application folder")->required();
    explain
        ->add_option(
            "ITEM", arguments->item,
            "A key such as File.Open, the name of a tool, action, bar, window, explorer item, service or class, or "
            "Forms/PROGID.FIELD")
        ->required();
    explain->callback([arguments, &run] { run = [arguments] { return Explain(*arguments); }; });
}

} // namespace corvane::tool
