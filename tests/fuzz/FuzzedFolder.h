// An application folder whose one service is what the fuzzer makes of it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace corvane::fuzz {

class FuzzedFolder {
public:
    FuzzedFolder() {
        std::string sTemplate = (std::filesystem::temp_directory_path() / "corvane-fuzz-XXXXXX").string();
        if (!::mkdtemp(sTemplate.data()))
            std::abort();
        m_sPath = sTemplate;
        std::filesystem::create_directory(m_sPath + "/Services");
        std::filesystem::copy_file(CORVANE_SCHEMA, m_sPath + "/Services/Service.xdr");
        Write("Base.xml", R"(<Service Name="Base" ProgID="Corvane.Framework" Active="True"><ActionItems>
<ActionItem Name="File"/><ActionItem Name="View"/><ActionItem Name="Exit" Action="AppExit"/>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="True"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="100"/>
<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="200"/>
<MenuItem Type="MenuItem" ActionItem="Navigation" Path="View" PositionOrder="10"/>
<MenuItem Type="MenuItem" ActionItem="Exit" Path="File" PositionOrder="900"/></Menus></Service>)");
    }
    ~FuzzedFolder() {
        std::error_code oError;
        std::filesystem::remove_all(m_sPath, oError);
    }
    FuzzedFolder(const FuzzedFolder&) = delete;
    FuzzedFolder& operator=(const FuzzedFolder&) = delete;

    void Write(const std::string& sFile, std::string_view sBytes) const {
        std::ofstream(m_sPath + "/Services/" + sFile, std::ios::binary) << sBytes;
    }
    [[nodiscard]] const std::string& Path() const { return m_sPath; }

private:
    std::string m_sPath;
};

} // namespace corvane::fuzz
