// An application folder with a definition of the shell in it.
#pragma once

#include "tests/desktop/AppFolder.h"

namespace corvane::desktop {

class ApplicationFolder {
public:
    // Begins with a definition of the shell: the title View with Explorer, Status Bar and Bad, whose procedure doesn't
    // exist, and one explorer item.
    ApplicationFolder() { Write("shell.xml", shell); }

    void Write(const QString& name, const char* text) const { m_folder.Write("App/Services/" + name, text); }
    [[nodiscard]] QString Services() const { return m_folder.Path("App/Services"); }
    [[nodiscard]] std::string App() const { return m_folder.App(); }

private:
    static constexpr const char* shell =
        R"(<Service Name="Shell" ProgID="Corvane.Framework" Active="true"><ActionItems>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="true" Checked="false"/>
<ActionItem Name="View"/>
<ActionItem Name="Bar" Action="EnableStatusBar" PassActionItemParam="true" Checked="true"/>
<ActionItem Name="Bad" Action="NoSuchProcedure"/>
</ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="1" Caption="#View"/>
<MenuItem Type="MenuItem" ActionItem="Navigation" PositionOrder="1" Path="View" Caption="#Explorer"/>
<MenuItem Type="MenuItem" ActionItem="Bar" PositionOrder="2" Path="View" Caption="#Status Bar"/>
<MenuItem Type="MenuItem" ActionItem="Bad" PositionOrder="3" Path="View" Caption="#Bad"/>
</Menus><ExplorerItems><ExplorerItem Name="Root" Type="Folder"/></ExplorerItems></Service>)";
    AppFolder m_folder;
};

} // namespace corvane::desktop
