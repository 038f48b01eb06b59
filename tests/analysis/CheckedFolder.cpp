#include "tests/analysis/CheckedFolder.h"

#include "analysis/Print.h"

#include <filesystem>

namespace corvane::testing {

namespace fs = std::filesystem;

namespace {

constexpr const char* sBase = R"(<?xml version="1.0"?>
<Service Name="Base" ProgID="Corvane.Framework" Active="True">
  <ActionItems>
    <ActionItem Name="File"/>
    <ActionItem Name="View"/>
    <ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="True"/>
    <ActionItem Name="Exit" Action="AppExit"/>
  </ActionItems>
  <Menus>
    <MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="100" Caption="#File"/>
    <MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="200" Caption="#View"/>
    <MenuItem Type="MenuItem" ActionItem="Navigation" Path="View" PositionOrder="10" Caption="#Explorer"/>
    <MenuItem Type="MenuItem" ActionItem="Exit" Path="File" PositionOrder="900" Caption="E#xit" ShortCutKey="Ctrl+Q"/>
  </Menus>
</Service>
)";

} // namespace

CheckedFolder::CheckedFolder() {
    fs::create_directory(m_oFolder.Path("Services"));
    fs::copy_file(CORVANE_SOURCE "/packaging/schema/Service.xdr", m_oFolder.Path("Services/Service.xdr"));
    Write("Services/Base.xml", sBase);
    Write("Images/folder.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
    Write("Images/broken.png", "no picture");
}

CheckedFolder& CheckedFolder::Write(const std::string& sPath, std::string_view sBytes) {
    (void)m_oFolder.Write(sPath, sBytes);
    return *this;
}

CheckedFolder& CheckedFolder::WriteExample(std::string_view sExample) {
    if (!sExample.starts_with("<Service") && !sExample.starts_with("<service"))
        return Write("Services/Example.xml",
                     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True">)" +
                         std::string(sExample) + "</Service>");
    for (int n = 0; !sExample.empty(); ++n) {
        const std::size_t iNext = std::min(sExample.find("\n<Service"), sExample.size());
        Write("Services/Example" + std::to_string(n) + ".xml", sExample.substr(0, iNext));
        sExample.remove_prefix(std::min(iNext + 1, sExample.size()));
    }
    return *this;
}

CheckedFolder& CheckedFolder::Remove(const std::string& sPath) {
    fs::remove_all(m_oFolder.Path(sPath));
    return *this;
}

CheckedFolder& CheckedFolder::AddPlugins() {
    Write("plugins/libBrokenSvc.so", "no library");
    fs::create_symlink(CORVANE_EXAMPLE_PLUGIN, m_oFolder.Path("plugins/libExampleSvc.so"));
    return *this;
}

std::string CheckedFolder::Text(bool bPlugins) const {
    std::string sText = check::AsText(Check(bPlugins), false);
    for (std::size_t i = 0; (i = sText.find(Path() + "/", i)) != std::string::npos;)
        sText.erase(i, Path().size() + 1);
    return sText;
}

} // namespace corvane::testing
