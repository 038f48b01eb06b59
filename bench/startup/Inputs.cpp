#include "bench/startup/Inputs.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace corvane::bench {

namespace fs = std::filesystem;

namespace {

constexpr const char* frameworkXml = R"(<?xml version="1.0"?>
<Service Name="Framework" ProgID="Corvane.Framework" Active="true">
  <ActionItems>
    <ActionItem Name="View"/>
    <ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="true" Description="Shows or hides the explorer"/>
  </ActionItems>
  <Menus>
    <MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="1" Caption="#View"/>
    <MenuItem Type="MenuItem" ActionItem="Navigation" Path="View" PositionOrder="1" Caption="#Explorer"/>
  </Menus>
</Service>
)";

void Write(const fs::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    if (!stream.flush())
        throw std::runtime_error("can't write " + file.string());
}

std::string ServiceText(int serviceIndex, int actions) {
    const std::string service = std::to_string(serviceIndex);
    const std::string menu = MenuName(serviceIndex);
    std::string text = "<?xml version=\"1.0\"?>\n<Service Name=\"Service" + service + "\" ProgID=\"" +
                       ServiceClass(serviceIndex) + "\" Active=\"true\">\n  <ActionItems>\n    <ActionItem Name=\"" +
                       menu + "\"/>\n";
    for (int i = 0; i < actions; ++i)
        text += "    <ActionItem Name=\"" + ActionName(serviceIndex, i) +
                "\" Action=\"OnAction\" Description=\"Does what service " + service + " does under number " +
                std::to_string(i) + "\"/>\n";
    // The framework's menu is in the first place.
    text += "  </ActionItems>\n  <Menus>\n    <MenuItem Type=\"MenuTitle\" ActionItem=\"" + menu +
            "\" PositionOrder=\"" + std::to_string(serviceIndex + 2) + "\" Caption=\"Menu " + service + "\"/>\n";
    for (int i = 0; i < actions; ++i)
        text += "    <MenuItem Type=\"MenuItem\" ActionItem=\"" + ActionName(serviceIndex, i) + "\" Path=\"" + menu +
                "\" PositionOrder=\"" + std::to_string(i + 1) + "\" Caption=\"Action " + std::to_string(i) +
                " of service " + service + "\"/>\n";
    return text + "  </Menus>\n</Service>\n";
}

} // namespace

std::string ServiceClass(int service) {
    return "BenchSvc.Service" + std::to_string(service);
}

std::string MenuName(int service) {
    return "Menu" + std::to_string(service);
}

std::string ActionName(int service, int action) {
    return "Action" + std::to_string(service) + "_" + std::to_string(action);
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "corvane-startup-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("can't make a temporary folder");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(m_path, error);
}

fs::path WriteApplication(const fs::path& below, const Size& size) {
    fs::path folder = below / size.Text();
    const fs::path services = folder / "Services";
    fs::create_directories(services);
    fs::create_directory(folder / "plugins");
    fs::copy_file(CORVANE_SCHEMA, services / "Service.xdr");
    Write(services / "Framework.xml", frameworkXml);
    for (int i = 0; i < size.services; ++i)
        Write(services / ("Service" + std::to_string(i) + ".xml"), ServiceText(i, size.actions));
    return folder;
}

} // namespace corvane::bench
