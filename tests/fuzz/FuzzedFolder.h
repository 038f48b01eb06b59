// An application folder whose one service is what the fuzzer makes of it.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane::fuzz {

class FuzzedFolder {
public:
    FuzzedFolder() {
        std::filesystem::create_directory(m_folder.Path("Services"));
        std::filesystem::copy_file(CORVANE_SCHEMA, m_folder.Path("Services/Service.xdr"));
        Write("Base.xml", R"(<Service Name="Base" ProgID="Corvane.Framework" Active="True"><ActionItems>
<ActionItem Name="File"/><ActionItem Name="View"/><ActionItem Name="Exit" Action="AppExit"/>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="True"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="100"/>
<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="200"/>
<MenuItem Type="MenuItem" ActionItem="Navigation" Path="View" PositionOrder="10"/>
<MenuItem Type="MenuItem" ActionItem="Exit" Path="File" PositionOrder="900"/></Menus></Service>)");
    }

    void Write(const std::string& file, std::string_view bytes) const {
        (void)m_folder.Write("Services/" + file, bytes);
    }
    [[nodiscard]] const std::string& Path() const { return m_folder.Path(); }

private:
    test::TemporaryFolder m_folder;
};

} // namespace corvane::fuzz
