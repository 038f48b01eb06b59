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
        std::string templateText = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
        if (!::mkdtemp(templateText.data()))
            throw std::runtime_error("no temporary folder");
        m_path = templateText;
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] std::string Path(std::string_view name) const { return m_path + "/" + std::string(name); }
    // Writes a file, with the folders above it, and gives its path.
    std::string Write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path path = Path(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }

private:
    std::string m_path;
};

} // namespace corvane::test
