#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "headless/Document.h"
#include "headless/Steps.h"

#include <fstream>
#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

struct InspectArguments {
    std::string application;
    std::string steps;
    bool standIns = false;
    bool json = false;
    bool oneThread = false;
    int seconds = 60;
};

int Inspect(const InspectArguments& arguments) {
    using namespace corvane::inspect;
    const std::string application = ApplicationFolder(arguments.application, Also::Incomplete);
    std::vector<Step> steps;
    if (!arguments.steps.empty()) {
        std::ifstream stream(arguments.steps);
        if (!stream)
            return Fails(arguments.steps, "the file can't be read");
        steps = ReadSteps(stream, arguments.steps);
    }
    constexpr int milliseconds = 1000;
    ModelHost host({application, arguments.standIns, nullptr, arguments.oneThread, arguments.seconds * milliseconds});
    DocumentOptions options;
    options.standIns = arguments.standIns;
    const bool started = host.Start();
    if (!started) // nothing can be done, but what is expected counts
        std::erase_if(steps, [](const Step& step) { return step.verb != "expect"; });
    TakeAll(host, steps);
    for (const auto& step : steps) {
        options.popups |= step.verb == "rightclick" || step.verb == "contextmenu";
        options.messages |= step.verb == "rename";
        options.sizes |= step.verb == "resize";
    }
    std::cout << (arguments.json ? JsonDocument(host, options) : TextDocument(host, options));
    std::cout.flush();
    for (const std::string& missed : host.Recorded().missed)
        std::cerr << missed << "\n";
    for (const std::string& unmet : host.Recorded().unmet)
        std::cerr << unmet << "\n";
    if (!host.Recorded().unmet.empty())
        return Exit::Findings;
    return started ? Exit::Clean : Exit::Failed;
}

} // namespace

void AddInspect(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<InspectArguments>();
    auto* inspect = app.add_subcommand(
        "inspect", "Starts an application without a display, takes steps and prints what is on screen");
    inspect->add_option("APP", arguments->application, "The application folder")->required();
    inspect->add_option("--steps", arguments->steps, "A file of steps to take, one per line");
    inspect->add_flag("--stand-ins", arguments->standIns, "Use stubs instead of all plug-ins");
    inspect->add_flag("--json", arguments->json, "Print one JSON document");
    inspect->add_flag("--one-thread", arguments->oneThread,
                      "Let jobs do their work one after another in one thread, each time in the same order");
    inspect
        ->add_option("--time-limit", arguments->seconds,
                     "How long a service in a process of its own may let a call wait; 0 for ever")
        ->type_name("SECONDS")
        ->check(CLI::Range(0, 1000000))
        ->capture_default_str();
    inspect->callback([arguments, &run] { run = [arguments] { return Inspect(*arguments); }; });
}

} // namespace corvane::tool
