#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace corvane::tool {

namespace {

struct RunArguments {
    std::string application;
    std::string record;
    bool standIns = false;
    std::vector<std::string> others;
};

// A program that was built or installed with this one, else any of that name, takes this program's place.
int Become(const char* name, std::vector<std::string> texts, const std::string& application) {
    (void)ApplicationFolder(application);
    std::error_code error;
    const auto beside = std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / name;
    std::string program = !error && std::filesystem::exists(beside, error) ? beside.string() : name;
    std::vector<char*> pointers{program.data()};
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    ::execvp(program.c_str(), pointers.data());
    return Fails(program, std::string("it can't be started: ") + std::strerror(errno) +
                              (errno == ENOENT ? ". Install the Qt host" : ""));
}

std::vector<std::string> TextsOf(const RunArguments& arguments) {
    std::vector<std::string> texts{arguments.application};
    if (!arguments.record.empty())
        texts.insert(texts.end(), {"--record", arguments.record});
    if (arguments.standIns)
        texts.emplace_back("--stand-ins");
    texts.insert(texts.end(), arguments.others.begin(), arguments.others.end());
    return texts;
}

void AddCommon(CLI::App& command, RunArguments& arguments) {
    command.add_option("APP", arguments.application, "The application folder")->required();
    command.add_option("--record", arguments.record, "Record what the user does, as steps for inspect --steps")
        ->type_name("FILE");
}

} // namespace

void AddRun(CLI::App& app, Run& runFunction) {
    const auto arguments = std::make_shared<RunArguments>();
    auto* run = app.add_subcommand("run", "Starts an application on the desktop");
    AddCommon(*run, *arguments);
    run->add_option("OPTION", arguments->others, "Options of corvane-desktop, after --");
    run->callback([arguments, &runFunction] {
        runFunction = [arguments] { return Become("corvane-desktop", TextsOf(*arguments), arguments->application); };
    });
}

void AddPreview(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<RunArguments>();
    auto* preview = app.add_subcommand(
        "preview", "Shows an application, with stubs for missing plug-ins, and follows its definition files");
    AddCommon(*preview, *arguments);
    preview->add_flag("--stand-ins", arguments->standIns, "Use stubs instead of all plug-ins");
    preview->callback([arguments, &run] {
        run = [arguments] { return Become("corvane-preview", TextsOf(*arguments), arguments->application); };
    });
}

} // namespace corvane::tool
