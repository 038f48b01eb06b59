#include "cli/commands/ApplicationFolder.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <regex>
#include <unistd.h>

namespace corvane::tool {

namespace fs = std::filesystem;

namespace {

bool IsFolder(const fs::path& oPath) {
    std::error_code oError;
    return fs::is_directory(oPath, oError);
}

bool HasServices(const std::string& sFolder) {
    const auto oServices = FindPath(JoinPath(sFolder, "Services"));
    return oServices && IsFolder(*oServices);
}

struct Project {
    fs::path oFolder;
    std::string sName;    // of the application
    fs::path oDefinition; // the folder of its files
};

// Of a folder with the build of an application.
std::optional<Project> ProjectIn(const fs::path& oFolder) {
    static const std::regex oCall(R"(corvane_add_application\(\s*([\w-]+)\s+FOLDER\s+([^\s)]+))");
    const auto oText = ReadBytes((oFolder / "CMakeLists.txt").string());
    std::smatch oMatch;
    if (!oText || !std::regex_search(*oText, oMatch, oCall))
        return std::nullopt;
    return Project{oFolder, oMatch[1], oFolder / oMatch[2].str()};
}

// The project whose sources the folder holds, as a whole or as the files of its application.
std::optional<Project> ProjectOf(const fs::path& oFolder) {
    std::error_code oError;
    if (auto oProject = ProjectIn(oFolder); oProject && !fs::equivalent(oProject->oDefinition, oFolder, oError))
        return oProject;
    for (const fs::path& oAt : {oFolder, fs::absolute(oFolder).lexically_normal().parent_path()})
        if (auto oProject = ProjectIn(oAt); oProject && fs::equivalent(oProject->oDefinition, oFolder, oError) &&
                                            !FindPath((oFolder / "Services/Service.xdr").string()))
            return oProject;
    return std::nullopt;
}

std::string AsTyped(const fs::path& oPath) {
    const fs::path oBelow = fs::absolute(oPath).lexically_normal().lexically_relative(fs::current_path());
    return oBelow.empty() || *oBelow.begin() == ".." ? oPath.lexically_normal().string() : oBelow.string();
}

std::string WhereBuilt(const Project& oProject) {
    if (const auto aNames = NamesIn(oProject.oFolder.string()))
        for (const std::string& sName : *aNames)
            if (HasServices((oProject.oFolder / sName / oProject.sName).string()))
                return "name that of its build, \"" + AsTyped(oProject.oFolder / sName / oProject.sName) + "\"";
    return "build it, and name that of the build, such as \"" + AsTyped(oProject.oFolder / "build" / oProject.sName) +
           "\"";
}

[[noreturn]] void Refuse(const std::string& sWhy) {
    Fail(FailureNumber::PathNotFound, sWhy, "corvane");
}

} // namespace

std::string PlainFolder(std::string sFolder) {
    while (sFolder.size() > 1 && sFolder.back() == '/')
        sFolder.pop_back();
    return sFolder;
}

std::string ApplicationFolder(const std::string& sFolder, Also eAlso) {
    const std::string sPlain = PlainFolder(sFolder);
    const std::string sQuoted = "\"" + sPlain + "\"";
    std::error_code oError;
    if (!fs::exists(sPlain, oError))
        Refuse("there is no application folder " + sQuoted);
    const fs::path oWhole = fs::absolute(sPlain).lexically_normal();
    if (!IsFolder(sPlain) && HasServices(oWhole.parent_path().parent_path().string()))
        Refuse(sQuoted + " is one file of an application: name the application folder, \"" +
               AsTyped(oWhole.parent_path().parent_path()) + "\"");
    if (IsFolder(sPlain) && ::access(sPlain.c_str(), R_OK | X_OK) != 0)
        Refuse("the folder " + sQuoted + " can't be read: " + std::strerror(errno));
    if (const auto oProject = ProjectOf(sPlain);
        oProject && (eAlso != Also::Sources || !fs::equivalent(oProject->oDefinition, sPlain, oError)))
        Refuse(sQuoted + " holds the sources of an application, not the application: " + WhereBuilt(*oProject));
    if (HasServices(sPlain) || eAlso == Also::Sources)
        return sPlain;
    if (EqualText(oWhole.filename().string(), "Services"))
        Refuse(sQuoted + " is the folder Services of an application: name the application folder, \"" +
               AsTyped(oWhole.parent_path()) + "\"");
    if (eAlso == Also::Incomplete)
        return sPlain;
    Refuse(sQuoted + " isn't an application folder: it has no folder \"Services\" with definition files");
}

} // namespace corvane::tool
