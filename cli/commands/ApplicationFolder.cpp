#include "cli/commands/ApplicationFolder.h"

#include "adapters/common/Paths.h"
#include "adapters/common/Pattern.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <unistd.h>

namespace corvane::tool {

namespace fs = std::filesystem;

namespace {

bool IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool HasServices(const std::string& folder) {
    const auto services = FindPath(JoinPath(folder, "Services"));
    return services && IsFolder(*services);
}

struct Project {
    fs::path folder;
    std::string name;    // of the application
    fs::path definition; // the folder of its files
};

// Of a folder with the build of an application.
std::optional<Project> ProjectIn(const fs::path& folder) {
    const auto text = ReadBytes((folder / "CMakeLists.txt").string());
    const auto match = FindForm(text.value_or(""), R"(corvane_add_application\(\s*([\w-]+)\s+FOLDER\s+([^\s)]+))");
    if (!match)
        return std::nullopt;
    return Project{folder, match->at(1), folder / match->at(2)};
}

// The project whose sources the folder holds, as a whole or as the files of its application.
std::optional<Project> ProjectOf(const fs::path& folder) {
    std::error_code error;
    if (auto project = ProjectIn(folder); project && !fs::equivalent(project->definition, folder, error))
        return project;
    for (const fs::path& at : {folder, fs::absolute(folder).lexically_normal().parent_path()})
        if (auto project = ProjectIn(at); project && fs::equivalent(project->definition, folder, error) &&
                                          !FindPath((folder / "Services/Service.xdr").string()))
            return project;
    return std::nullopt;
}

std::string AsTyped(const fs::path& path) {
    const fs::path below = fs::absolute(path).lexically_normal().lexically_relative(fs::current_path());
    return below.empty() || *below.begin() == ".." ? path.lexically_normal().string() : below.string();
}

std::string WhereBuilt(const Project& project) {
    if (const auto names = NamesIn(project.folder.string()))
        for (const std::string& name : *names)
            if (HasServices((project.folder / name / project.name).string()))
                return "name that of its build, \"" + AsTyped(project.folder / name / project.name) + "\"";
    return "build it, and name that of the build, such as \"" + AsTyped(project.folder / "build" / project.name) + "\"";
}

[[noreturn]] void Refuse(const std::string& why) {
    Fail(FailureNumber::PathNotFound, why, "corvane");
}

} // namespace

std::string PlainFolder(std::string folder) {
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    return folder;
}

std::string ApplicationFolder(const std::string& folder, Also also) {
    std::string plain = PlainFolder(folder);
    const std::string quoted = "\"" + plain + "\"";
    std::error_code error;
    if (!fs::exists(plain, error))
        Refuse("there is no application folder " + quoted);
    const fs::path whole = fs::absolute(plain).lexically_normal();
    if (!IsFolder(plain) && HasServices(whole.parent_path().parent_path().string()))
        Refuse(quoted + " is one file of an application: name the application folder, \"" +
               AsTyped(whole.parent_path().parent_path()) + "\"");
    if (IsFolder(plain) && ::access(plain.c_str(), R_OK | X_OK) != 0)
        Refuse("the folder " + quoted + " can't be read: " + std::strerror(errno));
    if (const auto project = ProjectOf(plain);
        project && (also != Also::Sources || !fs::equivalent(project->definition, plain, error)))
        Refuse(quoted + " holds the sources of an application, not the application: " + WhereBuilt(*project));
    if (HasServices(plain) || also == Also::Sources)
        return plain;
    if (EqualText(whole.filename().string(), "Services"))
        Refuse(quoted + " is the folder Services of an application: name the application folder, \"" +
               AsTyped(whole.parent_path()) + "\"");
    if (also == Also::Incomplete)
        return plain;
    Refuse(quoted + " isn't an application folder: it has no folder \"Services\" with definition files");
}

} // namespace corvane::tool
