#include "bench/startup/Inputs.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace corvane::bench {

namespace fs = std::filesystem;

namespace {

constexpr const char* sFramework = R"(<?xml version="1.0"?>
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

void Write(const fs::path& oFile, const std::string& sText) {
    std::ofstream oStream(oFile, std::ios::binary);
    oStream << sText;
    if (!oStream.flush())
        throw std::runtime_error("can't write " + oFile.string());
}

std::string ServiceText(int iService, int nActions) {
    const std::string sService = std::to_string(iService);
    const std::string sMenu = MenuName(iService);
    std::string sText = "<?xml version=\"1.0\"?>\n<Service Name=\"Service" + sService + "\" ProgID=\"" +
                        ServiceClass(iService) + "\" Active=\"true\">\n  <ActionItems>\n    <ActionItem Name=\"" +
                        sMenu + "\"/>\n";
    for (int i = 0; i < nActions; ++i)
        sText += "    <ActionItem Name=\"" + ActionName(iService, i) +
                 "\" Action=\"OnAction\" Description=\"Does what service " + sService + " does under number " +
                 std::to_string(i) + "\"/>\n";
    // The framework's menu stands in the first place.
    sText += "  </ActionItems>\n  <Menus>\n    <MenuItem Type=\"MenuTitle\" ActionItem=\"" + sMenu +
             "\" PositionOrder=\"" + std::to_string(iService + 2) + "\" Caption=\"Menu " + sService + "\"/>\n";
    for (int i = 0; i < nActions; ++i)
        sText += "    <MenuItem Type=\"MenuItem\" ActionItem=\"" + ActionName(iService, i) + "\" Path=\"" + sMenu +
                 "\" PositionOrder=\"" + std::to_string(i + 1) + "\" Caption=\"Action " + std::to_string(i) +
                 " of service " + sService + "\"/>\n";
    return sText + "  </Menus>\n</Service>\n";
}

} // namespace

std::string ServiceClass(int iService) {
    return "BenchSvc.Service" + std::to_string(iService);
}

std::string MenuName(int iService) {
    return "Menu" + std::to_string(iService);
}

std::string ActionName(int iService, int iAction) {
    return "Action" + std::to_string(iService) + "_" + std::to_string(iAction);
}

TemporaryFolder::TemporaryFolder() {
    std::string sPattern = (fs::temp_directory_path() / "corvane-startup-XXXXXX").string();
    if (!::mkdtemp(sPattern.data()))
        throw std::runtime_error("can't make a temporary folder");
    m_oPath = sPattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code oError;
    fs::remove_all(m_oPath, oError);
}

fs::path WriteApplication(const fs::path& oBelow, const Size& oSize) {
    const fs::path oFolder = oBelow / oSize.Text();
    const fs::path oServices = oFolder / "Services";
    fs::create_directories(oServices);
    fs::create_directory(oFolder / "plugins");
    fs::copy_file(CORVANE_SCHEMA, oServices / "Service.xdr");
    Write(oServices / "Framework.xml", sFramework);
    for (int i = 0; i < oSize.nServices; ++i)
        Write(oServices / ("Service" + std::to_string(i) + ".xml"), ServiceText(i, oSize.nActions));
    return oFolder;
}

} // namespace corvane::bench
