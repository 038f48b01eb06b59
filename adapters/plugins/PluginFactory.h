// Objects from plug-ins: the ProgID "Library.Class" is a class of the shared library lib<Library>.so in the folder of
// plug-ins, or of the process that <Library>/plugin.json there describes. A library that has been loaded stays loaded.
#pragma once

#include "adapters/process/ProcessFactory.h"
#include "corvane/base/Ref.h"
#include "corvane/base/Text.h"
#include "corvane/platform/IClassFinder.h"
#include "corvane/platform/IObjectFactory.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace corvane {

struct PluginTable;

class PluginFactory final : public IObjectFactory, public IClassFinder {
public:
    struct ClassInfo {
        std::string progID;
        std::vector<MemberInfo> members; // in the order of the class's table
        // What the library can use its objects as.
        bool isService = false;
        bool isExplorerItem = false;
        bool isPage = false;
    };

    // A folder that doesn't exist is an empty one.
    explicit PluginFactory(std::string folder);

    // Library and class are found without regard to case. A failure of the constructor keeps its text, inside a 429.
    Ref<Object> Create(std::string_view progID) override;
    [[nodiscard]] bool HasClass(std::string_view progID) override;

    // For tools. Fails with 429 as Create does.
    [[nodiscard]] std::vector<ClassInfo> Classes(std::string_view library);
    // The processes of those plug-ins that have one.
    [[nodiscard]] const Ref<ProcessFactory>& Processes() const { return m_processes; }
    // The names that can be in front of a ProgID's point, in order.
    [[nodiscard]] std::vector<std::string> Libraries() const;
    // Where the library or the plugin.json is, or where the library would have to be.
    [[nodiscard]] std::string PathOf(std::string_view library) const;

private:
    struct Library {
        std::string path;
        const PluginTable* table;
    };

    const Library& Load(std::string_view libraryName, const std::string& wanted);

    [[nodiscard]] bool IsProcess(std::string_view library, const std::string& wanted) const;

    std::string m_folder;
    Ref<ProcessFactory> m_processes;
    std::unordered_map<std::string, Library, TextHash, TextEqual> m_libraries;
};

} // namespace corvane
