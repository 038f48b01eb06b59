#include "cli/new/New.h"

#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"

#include <iostream>
#include <memory>

namespace corvane::tool {

namespace {

struct NewArguments {
    std::string application;
    std::vector<std::string> services;
    std::string page;
    bool python = false;
};

int New(const NewArguments& arguments) {
    const bool inside = arguments.application.empty();
    const bool isPage = !arguments.page.empty();
    if (inside && arguments.services.empty() && !isPage) {
        std::cerr << "corvane new: error: name an application, or inside one a --service or a --page\n";
        return Exit::Usage;
    }
    if (isPage && (!inside || arguments.services.size() > 1)) {
        std::cerr << "corvane new: error: a --page is added inside of an application, to one --service\n";
        return Exit::Usage;
    }
    std::vector<std::string> written;
    const auto language = arguments.python ? scaffold::Language::Python : scaffold::Language::Cpp;
    try {
        if (isPage)
            written =
                scaffold::NewPage(".", arguments.page, arguments.services.empty() ? "" : arguments.services.front());
        else if (!inside)
            written = scaffold::NewApplication(arguments.application, arguments.services, CORVANE_VERSION, language);
        else
            for (const std::string& service : arguments.services)
                for (std::string& path : scaffold::NewService(".", service, language))
                    written.push_back(std::move(path));
    } catch (const Failure& failure) {
        return Fails("corvane new", failure.Description);
    }
    for (const std::string& path : written)
        std::cout << path << "\n";
    if (isPage)
        std::cout << "\nOpen it by OpenWindow(\"" << arguments.page << "\"), and draw its form in Qt Designer.\n";
    if (!inside)
        std::cout << "\nBuild and test it:\n  cd " << arguments.application
                  << " && cmake --preset dev && cmake --build --preset dev && ctest --preset dev\n";
    return Exit::Clean;
}

} // namespace

void AddNew(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<NewArguments>();
    auto* newApp =
        app.add_subcommand("new", "Writes a new application, or adds a service or a page to the one in this folder");
    newApp->add_option("APP", arguments->application,
                       "The folder of the new application; its name is the application's");
    newApp->add_option("--service", arguments->services, "A service to write; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    newApp->add_option("--page", arguments->page, "A window with a page that is a form, added to the service")
        ->type_name("NAME");
    newApp->add_flag("--python", arguments->python, "Write services in Python, which run in processes of their own");
    newApp->callback([arguments, &run] { run = [arguments] { return New(*arguments); }; });
}

} // namespace corvane::tool
