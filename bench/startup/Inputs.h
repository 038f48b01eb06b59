// Application folders of any size, generated: one definition file a service, each with a menu of its own.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace corvane::bench {

struct Size {
    int services;
    int actions; // of each service; each has an entry in the service's menu

    [[nodiscard]] std::size_t Entries() const {
        return static_cast<std::size_t>(services) * static_cast<std::size_t>(actions);
    }
    [[nodiscard]] std::string Text() const { return std::to_string(services) + "x" + std::to_string(actions); }
};

[[nodiscard]] std::string ServiceClass(int service);
[[nodiscard]] std::string MenuName(int service);
[[nodiscard]] std::string ActionName(int service, int action);

// A temporary folder that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

// Writes the application into a new folder below: Services with the schema, the framework's file and the services'.
// Returns the application's folder.
std::filesystem::path WriteApplication(const std::filesystem::path& below, const Size& size);

} // namespace corvane::bench
