#include "analysis/Arrange.h"

#include "adapters/common/Paths.h"
#include "cli/commands/ApplicationFolder.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Failure.h"
#include "headless/ModelHost.h"

#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace corvane::tool {

namespace fs = std::filesystem;

namespace {

struct ArrangeArguments {
    std::string application;
    std::string outline; // a file, or "-" for what comes in
    std::vector<std::string> only;
    bool asMeant = false;
    bool onlyShows = false;
};

// The bars of the application as the library itself builds them, on stubs, with the changes in a folder that is removed
// again.
std::string BarsOf(const std::string& folder) {
    inspect::ModelHost host({folder, true, nullptr});
    std::string text;
    if (!host.Start())
        return "the application doesn't start: " + host.FirstFailure()->Description;
    for (const auto& band : host.Bar()->Bands()->All())
        for (const auto& tool : band->Tools()->All())
            text += band->Name() + ": " + tool->Name() + "\n";
    return text;
}

class ApplicationCopy {
public:
    explicit ApplicationCopy(const std::string& application)
        : m_folder(fs::temp_directory_path() / ("corvane-arrange-" + std::to_string(::getpid()))) {
        fs::remove_all(m_folder);
        const auto services = FindPath(JoinPath(application, "Services"));
        fs::create_directories(m_folder / "Services");
        for (const auto& entry : fs::directory_iterator(*services))
            if (entry.is_regular_file())
                fs::copy_file(entry.path(), m_folder / "Services" / entry.path().filename());
        if (const auto settings = FindPath(JoinPath(application, "QRZ.INI")))
            fs::copy_file(*settings, m_folder / "QRZ.INI");
    }
    ApplicationCopy(const ApplicationCopy&) = delete;
    ApplicationCopy& operator=(const ApplicationCopy&) = delete;
    ~ApplicationCopy() {
        std::error_code error;
        fs::remove_all(m_folder, error);
    }
    [[nodiscard]] std::string Path() const { return m_folder.string(); }

private:
    fs::path m_folder;
};

// What the library builds of the changed files is what has been computed; otherwise nothing is written.
void Prove(const std::string& application, const std::vector<check::FixedFile>& files, const std::string& outline) {
    const ApplicationCopy copy(application);
    for (const check::FixedFile& file : files)
        check::WriteWhole(copy.Path() + "/Services/" + fs::path(file.path).filename().string(), file.after);
    const std::string bars = BarsOf(copy.Path());
    if (const auto missing = check::FirstOutOfOrder(outline, bars))
        Fail(FailureNumber::InvalidProcedureCall, "the library doesn't build this order: " + *missing, "corvane");
}

std::string ReadOutline(const std::string& file) {
    if (file != "-")
        return check::OutlineText(ReadFileOrFail(file));
    return check::OutlineText(std::string(std::istreambuf_iterator<char>(std::cin), {}));
}

int Arrange(const ArrangeArguments& arguments) {
    const check::Options options{ApplicationFolder(arguments.application), false, {}};
    if (arguments.outline.empty()) {
        std::cout << (arguments.asMeant ? check::MeantOutline(options) : check::Outline(options));
        return Exit::Clean;
    }
    const std::string outline = ReadOutline(arguments.outline);
    const auto files = check::Arrange(options, outline, {arguments.only.begin(), arguments.only.end()});
    if (files.empty()) {
        std::cerr << "nothing to change\n";
        return Exit::Clean;
    }
    Prove(options.application, files, outline);
    for (const check::FixedFile& file : files)
        std::cout << check::AsDiff(file);
    std::cout.flush();
    if (arguments.onlyShows)
        return Exit::Clean;
    for (const check::FixedFile& file : files)
        check::WriteFixed(file);
    std::cerr << "changed " << files.size() << (files.size() == 1 ? " file" : " files")
              << "; what they were is beside them, ending in .bak\n";
    return Exit::Clean;
}

} // namespace

void AddArrange(CLI::App& app, Run& run) {
    const auto arguments = std::make_shared<ArrangeArguments>();
    auto* arrange =
        app.add_subcommand("arrange", "Prints the order of all menus as an outline, and makes an edited one come out");
    arrange->add_option("APP", arguments->application, "The application folder")->required();
    arrange->add_option("OUTLINE", arguments->outline, "An edited outline, or - for the standard input");
    arrange->add_option("--only", arguments->only, "Change only this definition file; several may be named")
        ->type_name("FILE");
    arrange->add_flag("--as-meant", arguments->asMeant,
                      "Print each menu in the order of its own numbers, in place of the one that comes out");
    arrange->add_flag("--dry-run", arguments->onlyShows, "Show the changes and write nothing");
    arrange->callback([arguments, &run] { run = [arguments] { return Arrange(*arguments); }; });
}

} // namespace corvane::tool
