#include "cli/commands/ApplicationFolder.h"
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
    std::string sRecord;
    bool bStandIns = false;
    std::vector<std::string> aOthers;
};

// A program that was built or installed with this one, else any of that name, takes this program's place.
int Become(const char* sName, std::vector<std::string> aTexts, const std::string& sApplication) {
    (void)ApplicationFolder(sApplication);
    std::error_code oError;
    const auto oBeside = std::filesystem::read_symlink("/proc/self/exe", oError).parent_path() / sName;
    std::string sProgram = !oError && std::filesystem::exists(oBeside, oError) ? oBeside.string() : sName;
    std::vector<char*> aPointers{sProgram.data()};
    for (std::string& sText : aTexts)
        aPointers.push_back(sText.data());
    aPointers.push_back(nullptr);
    ::execvp(sProgram.c_str(), aPointers.data());
    return Fails(sProgram, std::string("it can't be started: ") + std::strerror(errno) +
                               (errno == ENOENT ? ". Install the Qt host" : ""));
}

std::vector<std::string> TextsOf(const Arguments& oArguments) {
    std::vector<std::string> aTexts{oArguments.sApplication};
    if (!oArguments.sRecord.empty())
        aTexts.insert(aTexts.end(), {"--record", oArguments.sRecord});
    if (oArguments.bStandIns)
        aTexts.emplace_back("--stand-ins");
    aTexts.insert(aTexts.end(), oArguments.aOthers.begin(), oArguments.aOthers.end());
    return aTexts;
}

void AddCommon(CLI::App& oCommand, Arguments& oArguments) {
    oCommand.add_option("APP", oArguments.sApplication, "The application folder")->required();
    oCommand.add_option("--record", oArguments.sRecord, "Record what the user does, as steps for inspect --steps")
        ->type_name("FILE");
}

} // namespace

void AddRun(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pRun = oApp.add_subcommand("run", "Starts an application on the desktop");
    AddCommon(*pRun, *pArguments);
    pRun->add_option("OPTION", pArguments->aOthers, "Options of corvane-desktop, after --");
    pRun->callback([pArguments, &fnRun] {
        fnRun = [pArguments] { return Become("corvane-desktop", TextsOf(*pArguments), pArguments->sApplication); };
    });
}

void AddPreview(CLI::App& oApp, Run& fnRun) {
    const auto pArguments = std::make_shared<Arguments>();
    auto* pPreview = oApp.add_subcommand(
        "preview", "Shows an application, with stubs for missing plug-ins, and follows its definition files");
    AddCommon(*pPreview, *pArguments);
    pPreview->add_flag("--stand-ins", pArguments->bStandIns, "Use stubs instead of all plug-ins");
    pPreview->callback([pArguments, &fnRun] {
        fnRun = [pArguments] { return Become("corvane-preview", TextsOf(*pArguments), pArguments->sApplication); };
    });
}

} // namespace corvane::tool
