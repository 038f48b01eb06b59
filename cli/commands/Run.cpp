#include "cli/commands/Commands.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace corvane::tool {

namespace {

struct Arguments {
    std::string sApplication;
    std::vector<std::string> aOthers;
};

// The host takes this program's place.
int RunApplication(const Arguments& oArguments) {
    std::error_code oError;
    if (!std::filesystem::is_directory(oArguments.sApplication, oError))
        return Fails(oArguments.sApplication, "there is no such application folder");
    constexpr const char* sHost = "corvane-desktop";
    // The one that was built or installed with this program, else any.
    const auto oBeside = std::filesystem::read_symlink("/proc/self/exe", oError).parent_path() / sHost;
    std::string sProgram = !oError && std::filesystem::exists(oBeside, oError) ? oBeside.string() : sHost;
    std::vector<std::string> aTexts{sProgram, oArguments.sApplication};
    aTexts.insert(aTexts.end(), oArguments.aOthers.begin(), oArguments.aOthers.end());
    std::vector<char*> aPointers;
    for (std::string& sText : aTexts)
        aPointers.push_back(sText.data());
    aPointers.push_back(nullptr);
    ::execvp(sProgram.c_str(), aPointers.data());
    return Fails(sProgram, std::string("it can't be started: ") + std::strerror(errno) +
                               (errno == ENOENT ? ". Install the Qt host" : ""));
}

} // namespace

void AddRun(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pRun = oApp.add_subcommand("run", "Starts an application on the desktop");
    pRun->add_option("APP", pArguments->sApplication, "The application folder")->required();
    pRun->add_option("OPTION", pArguments->aOthers, "Options of corvane-desktop, behind --");
    pRun->callback([pArguments, &fnRun] { fnRun = [pArguments] { return RunApplication(*pArguments); }; });
}

} // namespace corvane::tool
