#include "tests/analysis/CheckedFolder.h"

#include "analysis/Print.h"

#include <filesystem>

namespace corvane::testing {

namespace fs = std::filesystem;

namespace {

constexpr const char* base = R"(<?xml version="1.0"?>
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
    fs::create_directory(m_folder.Path("Services"));
    fs::copy_file(CORVANE_SOURCE "/packaging/schema/Service.xdr", m_folder.Path("Services/Service.xdr"));
    Write("Services/Base.xml", base);
    Write("Images/folder.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
    Write("Images/broken.png", "no picture");
}

CheckedFolder& CheckedFolder::Write(const std::string& path, std::string_view bytes) {
    (void)m_folder.Write(path, bytes);
    return *this;
}

CheckedFolder& CheckedFolder::WriteExample(std::string_view example) {
    if (!example.starts_with("<Service") && !example.starts_with("<service"))
        return Write("Services/Example.xml",
                     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True">)" +
                         std::string(example) + "</Service>");
    for (int n = 0; !example.empty(); ++n) {
        const std::size_t next = std::min(example.find("\n<Service"), example.size());
        Write("Services/Example" + std::to_string(n) + ".xml", example.substr(0, next));
        example.remove_prefix(std::min(next + 1, example.size()));
    }
    return *this;
}

CheckedFolder& CheckedFolder::Remove(const std::string& path) {
    fs::remove_all(m_folder.Path(path));
    return *this;
}

CheckedFolder& CheckedFolder::AddPlugins() {
    Write("plugins/libBrokenSvc.so", "no library");
    fs::create_symlink(CORVANE_EXAMPLE_PLUGIN, m_folder.Path("plugins/libExampleSvc.so"));
    return *this;
}

std::string CheckedFolder::Text(bool plugins) const {
    std::string text = check::AsText(Check(plugins), false);
    for (std::size_t i = 0; (i = text.find(Path() + "/", i)) != std::string::npos;)
        text.erase(i, Path().size() + 1);
    return text;
}

} // namespace corvane::testing
