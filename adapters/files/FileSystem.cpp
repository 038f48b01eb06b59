#include "adapters/files/FileSystem.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"

#include <filesystem>

namespace corvane {

namespace fs = std::filesystem;

std::vector<std::string> FileSystem::Files(std::string_view sFolder) const {
    const std::optional<std::string> oFolder = FindPath(sFolder);
    const auto aNames = oFolder ? NamesIn(*oFolder) : std::nullopt;
    if (!aNames)
        Fail(FailureNumber::PathNotFound,
             "The folder \"" + std::string(sFolder) + "\" " + (oFolder ? "can't be listed" : "doesn't exist"));
    std::vector<std::string> aPaths;
    for (const std::string& sName : *aNames) {
        std::string sPath = JoinPath(*oFolder, sName);
        std::error_code oError;
        if (fs::is_regular_file(sPath, oError))
            aPaths.push_back(std::move(sPath));
    }
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
