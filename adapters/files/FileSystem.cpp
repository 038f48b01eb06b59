#include "adapters/files/FileSystem.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"

namespace corvane {

std::vector<std::string> FileSystem::Files(std::string_view folderPath) const {
    const std::optional<std::string> folder = FindPath(folderPath);
    const auto names = folder ? NamesIn(*folder, true) : std::nullopt;
    if (!names)
        Fail(FailureNumber::PathNotFound,
             "The folder \"" + std::string(folderPath) + "\" " + (folder ? "can't be listed" : "doesn't exist"));
    std::vector<std::string> paths;
    paths.reserve(names->size());
    for (const std::string& name : *names)
        paths.push_back(JoinPath(*folder, name));
    return paths;
}

std::string FileSystem::FileName(std::string_view path) const {
    const std::size_t separator = path.find_last_of("/\\");
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string FileSystem::Extension(std::string_view path) const {
    const std::string name = FileName(path);
    const std::size_t point = name.rfind('.');
    return point == std::string::npos ? std::string() : name.substr(point + 1);
}

std::string FileSystem::Join(std::string_view folder, std::string_view name) const {
    return JoinPath(folder, name);
}

std::string FileSystem::ReadAll(std::string_view path) const {
    return ReadFileOrFail(path);
}

} // namespace corvane
