// Application folders of any size, generated: one definition file a service, each with a menu of its own.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace corvane::bench {

struct Size {
    int nServices;
    int nActions; // of each service; each has an entry in the service's menu

    [[nodiscard]] std::size_t Entries() const {
        return static_cast<std::size_t>(nServices) * static_cast<std::size_t>(nActions);
    }
    [[nodiscard]] std::string Text() const { return std::to_string(nServices) + "x" + std::to_string(nActions); }
};

[[nodiscard]] std::string ServiceClass(int iService);
[[nodiscard]] std::string MenuName(int iService);
[[nodiscard]] std::string ActionName(int iService, int iAction);

// A temporary folder that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    [[nodiscard]] const std::filesystem::path& Path() const { return m_oPath; }

private:
    std::filesystem::path m_oPath;
};

// Writes the application into a new folder below: Services with the schema, the framework's file and the services'.
// Returns the application's folder.
std::filesystem::path WriteApplication(const std::filesystem::path& oBelow, const Size& oSize);

} // namespace corvane::bench
