// A file of steps of any bytes, taken in an application with an explorer and windows.
#include "headless/Document.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"
#include "tests/fuzz/FuzzedFolder.h"

#include <cstdint>
#include <sstream>

using namespace corvane;

namespace {

constexpr const char* sService = R"(<Service Name="S" ProgID="P.S" Active="True" IsStartService="True">
<ActionItems><ActionItem Name="A" Action="OnA"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="10"/>
<MenuItem Type="ToolbarItem" ActionItem="A" Path="T" PositionOrder="10"/></Menus>
<ExplorerItems><ExplorerItem Name="R" Type="Folder" ProgID="P.R"><ActionItems><ActionItem Name="O" Action="OnO"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="O" PositionOrder="1"/></Menus></ExplorerItem>
<ExplorerItem Name="C" Type="Default" Parent="R" CanRename="True" DefaultAction="O"><ActionItems><ActionItem Name="O" Action="OnO"/>
</ActionItems></ExplorerItem><ExplorerItem Name="R2" Type="Folder"/></ExplorerItems>
<Windows><Window Name="W" Type="Wizard" State="Normal"><Page PageProgID="P.P" IsOptional="0" IsResizable="1"/>
<Page PageProgID="P.Q" IsOptional="0" IsResizable="1"/></Window>
<Window Name="D" Type="Dialog" State="Normal" IsModal="True" IsMDIChild="False"/></Windows></Service>)";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    static const fuzz::FuzzedFolder oFolder;
    static const bool bWritten = [] {
        oFolder.Write("S.xml", sService);
        std::ofstream(oFolder.Path() + "/standins.json")
            << R"({"objects": {"P.R": {"name": "R", "children": [{"name": "a"}, {"name": "b"}]}}})";
        return true;
    }();
    (void)bWritten;
    std::istringstream oStream(std::string(reinterpret_cast<const char*>(pData), nSize));
    std::vector<inspect::Step> aSteps;
    try {
        aSteps = inspect::ReadSteps(oStream, "steps");
    } catch (const Failure&) {
        return -1; // not worth keeping
    }
    if (aSteps.size() > 50)
        return -1;
    inspect::ModelHost oHost({oFolder.Path(), true, nullptr});
    if (!oHost.Start())
        std::abort();
    inspect::TakeAll(oHost, aSteps);
    (void)inspect::JsonDocument(oHost, {true, true, true, true});
    (void)inspect::TextDocument(oHost, {});
    return 0;
}
