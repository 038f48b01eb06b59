// Where in the definition files something stands: the file and the line of a service, an explorer item, a window, a
// page or a menu entry.
#pragma once

#include "corvane/platform/IFileSystem.h"
#include "desktop/commands/CommandList.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

struct DefinitionPlace {
    std::string sPath;
    int nLine = 0; // 0 when it wasn't found

    [[nodiscard]] QString Text() const; // "Studies.xml, line 12"; empty when it wasn't found
};

class DefinitionPlaces {
public:
    // Reads the folder of definition files as it is now; what can't be read isn't found.
    DefinitionPlaces(const IFileSystem& oFiles, const std::string& sFolder);

    // An entry of a menu, a toolbar or a context menu.
    [[nodiscard]] DefinitionPlace Find(const Placement& oPlacement) const;
    [[nodiscard]] DefinitionPlace FindService(std::string_view sName) const { return FindNamed("Service", sName); }
    [[nodiscard]] DefinitionPlace FindExplorerItem(std::string_view sName) const {
        return FindNamed("ExplorerItem", sName);
    }
    [[nodiscard]] DefinitionPlace FindWindow(std::string_view sName) const { return FindNamed("Window", sName); }

private:
    struct Entry {
        std::string sElement;
        std::string sName; // of a menu entry its action
        std::string sType;
        std::string sPath; // of a menu entry
        std::string sService;
        std::string sItem; // the explorer item or the page's caption around it
        std::string sWindow;
        DefinitionPlace oPlace;
    };

    void Read(const std::string& sPath, std::string sText);
    [[nodiscard]] DefinitionPlace FindNamed(std::string_view sElement, std::string_view sName) const;

    std::vector<Entry> m_aEntries;
};

} // namespace corvane::desktop
