#include "adapters/files/FileSystem.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"

namespace corvane {

std::vector<std::string> FileSystem::Files(std::string_view sFolder) const {
    const std::optional<std::string> oFolder = FindPath(sFolder);
    const auto aNames = oFolder ? NamesIn(*oFolder, true) : std::nullopt;
    if (!aNames)
        Fail(FailureNumber::PathNotFound,
             "The folder \"" + std::string(sFolder) + "\" " + (oFolder ? "can't be listed" : "doesn't exist"));
    std::vector<std::string> aPaths;
    aPaths.reserve(aNames->size());
    for (const std::string& sName : *aNames)
        aPaths.push_back(JoinPath(*oFolder, sName));
    return aPaths;
}

std::string FileSystem::FileName(std::string_view sPath) const {
    const std::size_t iSeparator = sPath.find_last_of("/\\");
    return std::string(iSeparator == std::string_view::npos ? sPath : sPath.substr(iSeparator + 1));
}

std::string FileSystem::Extension(std::string_view sPath) const {
    const std::string sName = FileName(sPath);
    const std::size_t iPoint = sName.rfind('.');
    return iPoint == std::string::npos ? std::string() : sName.substr(iPoint + 1);
}

std::string FileSystem::Join(std::string_view sFolder, std::string_view sName) const {
    return JoinPath(sFolder, sName);
}

std::string FileSystem::ReadAll(std::string_view sPath) const {
    return ReadFileOrFail(sPath);
}

} // namespace corvane
