// Where in the definition files something is: the file and the line of a service, an explorer item, a window, a
// page or a menu entry.
#pragma once

#include "corvane/platform/IFileSystem.h"
#include "desktop/commands/CommandList.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

struct DefinitionPlace {
    std::string path;
    int line = 0; // 0 when it wasn't found

    [[nodiscard]] QString Text() const; // "Studies.xml, line 12"; empty when it wasn't found
};

class DefinitionPlaces {
public:
    // Reads the folder of definition files as it is now; what can't be read isn't found.
    DefinitionPlaces(const IFileSystem& files, const std::string& folder);

    // An entry of a menu, a toolbar or a context menu.
    [[nodiscard]] DefinitionPlace Find(const Placement& placement) const;
    [[nodiscard]] DefinitionPlace FindService(std::string_view name) const { return FindNamed("Service", name); }
    [[nodiscard]] DefinitionPlace FindExplorerItem(std::string_view name) const {
        return FindNamed("ExplorerItem", name);
    }
    [[nodiscard]] DefinitionPlace FindWindow(std::string_view name) const { return FindNamed("Window", name); }

private:
    struct Entry {
        std::string element;
        std::string name; // of a menu entry its action
        std::string type;
        std::string path; // of a menu entry
        std::string service;
        std::string item; // the explorer item or the page's caption around it
        std::string window;
        DefinitionPlace place;
    };

    void Read(const std::string& path, std::string text);
    [[nodiscard]] DefinitionPlace FindNamed(std::string_view element, std::string_view name) const;

    std::vector<Entry> m_entries;
};

} // namespace corvane::desktop
