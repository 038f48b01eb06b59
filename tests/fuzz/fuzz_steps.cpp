// A file of steps of any bytes, taken in an application with an explorer and windows.
#include "headless/Document.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"
#include "tests/fuzz/FuzzedFolder.h"

#include <cstdint>
#include <sstream>

using namespace corvane;

namespace {

constexpr const char* service = R"(<Service Name="S" ProgID="P.S" Active="True" IsStartService="True">
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::FuzzedFolder folder;
    static const bool written = [] {
        folder.Write("S.xml", service);
        std::ofstream(folder.Path() + "/standins.json")
            << R"({"objects": {"P.R": {"name": "R", "children": [{"name": "a"}, {"name": "b"}]}}})";
        return true;
    }();
    (void)written;
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<inspect::Step> steps;
    try {
        steps = inspect::ReadSteps(stream, "steps");
    } catch (const Failure&) {
        return -1; // not worth keeping
    }
    if (steps.size() > 50)
        return -1;
    inspect::ModelHost host({folder.Path(), true, nullptr});
    if (!host.Start())
        std::abort();
    inspect::TakeAll(host, steps);
    (void)inspect::JsonDocument(host, {true, true, true, true});
    (void)inspect::TextDocument(host, {});
    return 0;
}
