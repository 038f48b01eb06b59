// A folder that is gone after the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::test {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string sTemplate = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
        if (!::mkdtemp(sTemplate.data()))
            throw std::runtime_error("no temporary folder");
        m_sPath = sTemplate;
    }
    ~TemporaryFolder() {
        std::error_code oError;
        std::filesystem::remove_all(m_sPath, oError);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return m_sPath; }
    [[nodiscard]] std::string Path(std::string_view sName) const { return m_sPath + "/" + std::string(sName); }
    // Writes a file, with the folders above it, and gives its path.
    std::string Write(std::string_view sName, std::string_view sBytes) const {
        const std::filesystem::path oPath = Path(sName);
        std::filesystem::create_directories(oPath.parent_path());
        std::ofstream(oPath, std::ios::binary) << sBytes;
        return oPath.string();
    }

private:
    std::string m_sPath;
};

} // namespace corvane::test
