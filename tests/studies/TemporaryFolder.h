// A folder that goes with all that is in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string sPath = (std::filesystem::temp_directory_path() / "studies-XXXXXX").string();
        m_sPath = ::mkdtemp(sPath.data());
    }
    ~TemporaryFolder() {
        std::error_code oIgnored;
        std::filesystem::remove_all(m_sPath, oIgnored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string Path(const std::string& sName) const { return m_sPath + "/" + sName; }
    [[nodiscard]] const std::string& Path() const { return m_sPath; }

private:
    std::string m_sPath;
};
