// An application whose explorer has two tabs, with what its events say among the calls that its items hear.
#pragma once

#include "corvane/explorer/ExplorerManager.h"
#include "corvane/platform/Platform.h"
#include "tests/support/Application.h"

#include <gtest/gtest.h>

namespace corvane::testing {

class ExplorerTest : public ::testing::Test {
protected:
    static constexpr const char* sItems = R"(<ExplorerItems>
        <ExplorerItem Name="Other" Type="Folder" ProgID="E.Other" PositionOrder="2"/>
        <ExplorerItem Name="Root" Type="Folder" ProgID="E.Root" PositionOrder="1" Image="open.bmp"/>
        <ExplorerItem Name="Leaf" Type="Default" Parent="Root" CanRename="true" DefaultAction="Open">
          <ActionItems>
            <ActionItem Name="Open" Action="DoOpen" Enabled="false" PassActionItemParam="true"/>
            <ActionItem Name="Print" Action="DoPrint"/>
          </ActionItems>
          <Menus>
            <MenuItem Type="ContextMenuItem" ActionItem="Open" PositionOrder="1" Caption="Open"/>
            <MenuItem Type="MenuItem" ActionItem="Print" PositionOrder="1" Caption="Print" Path="File"/>
          </Menus>
        </ExplorerItem>
        <ExplorerItem Name="Fixed" Type="Default" Parent="Other" DefaultAction="Nowhere"/>
      </ExplorerItems>
      <Windows><Window Name="W" Type="Window" State="Normal">
        <Page PageProgID="Hiding" IsOptional="0" IsResizable="1" HideExplorer="1"/>
      </Window></Windows>)";
    static constexpr const char* sStandIns = R"({"objects": {
        "E.Root": {"children": [{"name": "a"}, {"name": "b"}]},
        "E.Other": {"children": [{"name": "x"}]},
        "E.Folder": {"name": "Other"},
        "E.New": {"name": "n"}}})";

    // Again, without populating.
    void Start(const std::string& sContent = sItems, const std::string& sObjects = sStandIns) {
        m_aSubscriptions.clear();
        m_oApplication.Stop();
        m_oApplication.SetStandIns(sObjects).AddService("S", sContent);
        ASSERT_EQ(m_oApplication.Start(), 0);
        const auto oExplorer = m_oApplication.Explorer();
        Hear(oExplorer->onAdd, "onAdd");
        Hear(oExplorer->onRemove, "onRemove");
        Hear(oExplorer->OnOpen, "OnOpen");
        Hear(oExplorer->OnActive, "OnActive");
        Hear(oExplorer->OnInactive, "OnInactive");
        Hear(oExplorer->OnContextMenu, "OnContextMenu");
        (void)m_oApplication.TakeCalls();
    }
    void Populate() {
        Start();
        m_oApplication.Take("populate");
        (void)m_oApplication.TakeCalls();
    }
    // What the explorer's events and the items have heard; the navigation hears each event before this fixture does.
    Lines After(const std::string& sSteps) {
        m_oApplication.Take(sSteps);
        return m_oApplication.TakeCalls();
    }
    [[nodiscard]] Ref<TreeView> Tree(std::size_t iTab = 0) const { return m_oApplication.Host().Trees().at(iTab); }
    [[nodiscard]] std::string Selected() const {
        const Ref<Node> nod = Tree()->SelectedItem();
        return nod ? nod->Key() : "";
    }
    [[nodiscard]] bool BandVisible() const { return m_oApplication.Host().Bar()->Bands()->Item("Explorer")->Visible(); }
    [[nodiscard]] static Ref<Object> NewItem(const std::string& sProgID = "E.New") {
        return CurrentPlatform().oObjectFactory->Create(sProgID);
    }

    Application m_oApplication;

private:
    void Hear(Event<const Ref<Object>&>& oEvent, const std::string& sName) {
        m_aSubscriptions.push_back(oEvent.Subscribe([this, sName](const Ref<Object>& oItem) {
            auto& oRecord = m_oApplication.Host().Recorded();
            oRecord.calls.push_back({"Explorer", sName, {Variant(oRecord.IdOf(oItem))}, true});
        }));
    }

    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::testing
