// What the check takes for granted of the library is what the library does.
#include "adapters/xml/XmlService.h"
#include "analysis/Application.h"
#include "analysis/MenuPlan.h"
#include "corvane/services/MenuItemDef.h"
#include "tests/analysis/CheckedFolder.h"
#include "tests/support/Application.h"

#include <gtest/gtest.h>
#include <random>

namespace corvane::testing {

using namespace check;

namespace {

// A definition file with every element and attribute of the format. One attribute may have a value of its own.
class Everything {
public:
    explicit Everything(std::size_t iWord, const AttributeFormat* pOther = nullptr, std::string sOther = {})
        : m_iWord(iWord), m_pOther(pOther), m_sOther(std::move(sOther)) {
        Add(ServiceFormat());
    }
    [[nodiscard]] const std::string& Xml() const { return m_sXml; }

private:
    void Add(const ElementFormat& oFormat) {
        m_sXml += "<" + std::string(oFormat.sName);
        for (const AttributeFormat& oAttribute : oFormat.aAttributes)
            m_sXml += " " + std::string(oAttribute.sName) + "=\"" + ValueOf(oFormat, oAttribute) + "\"";
        m_sXml += ">";
        for (const ElementFormat& oChild : oFormat.aChildren)
            Add(oChild);
        m_sXml += "</" + std::string(oFormat.sName) + ">";
    }
    [[nodiscard]] std::string ValueOf(const ElementFormat& oFormat, const AttributeFormat& oAttribute) {
        if (&oAttribute == m_pOther)
            return m_sOther;
        if (oFormat.sName == "Service" && oAttribute.eKind == ValueKind::Boolean)
            return "True";
        if (oAttribute.sName == "Parent")
            return "";
        switch (oAttribute.eKind) {
        case ValueKind::Boolean:
            return "False";
        case ValueKind::Number:
            return "1.5";
        case ValueKind::WholeNumber:
            return "7";
        case ValueKind::Word:
            return std::string(oAttribute.aWords[m_iWord % oAttribute.aWords.size()]);
        case ValueKind::Text:
            break;
        }
        const bool bAction = oFormat.sName == "ActionItem" || oAttribute.sName == "ActionItem";
        return bAction ? "Act" : "T" + std::to_string(++m_nTexts);
    }

    std::size_t m_iWord;
    const AttributeFormat* m_pOther;
    std::string m_sOther;
    std::string m_sXml;
    int m_nTexts = 0;
};

// What the library says about the file.
Lines LogOf(const std::string& sXml) {
    CheckedFolder oFolder;
    oFolder.Write("Services/Everything.xml", sXml);
    inspect::ModelHost oHost({oFolder.Path(), true, nullptr});
    oHost.Start();
    Lines aLog;
    for (const auto& oEntry : oHost.Recorded().aLog)
        if (oEntry.sProcedure == "LoadServices" && !oEntry.sContext.empty())
            aLog.push_back(oEntry.sContext);
    return aLog;
}

void ForEachAttribute(const ElementFormat& oFormat, const std::function<void(const AttributeFormat&)>& fnAct) {
    for (const AttributeFormat& oAttribute : oFormat.aAttributes)
        fnAct(oAttribute);
    for (const ElementFormat& oChild : oFormat.aChildren)
        ForEachAttribute(oChild, fnAct);
}

} // namespace

TEST(Format, IsWhatSchemaAndRecordsAccept) {
    for (std::size_t iWord = 0; iWord < 5; ++iWord)
        EXPECT_EQ(LogOf(Everything(iWord).Xml()), Lines()) << iWord;
}

TEST(Format, TellsWhichValuesTheRecordsRefuse) {
    ForEachAttribute(ServiceFormat(), [](const AttributeFormat& oAttribute) {
        if (oAttribute.eKind == ValueKind::Text)
            return;
        const bool bRefuses = oAttribute.sName != "Separator";
        EXPECT_EQ(LogOf(Everything(0, &oAttribute, "?").Xml()).size(), bRefuses ? 1U : 0U) << oAttribute.sName;
        if (oAttribute.eKind != ValueKind::Word) {
            EXPECT_EQ(LogOf(Everything(0, &oAttribute, " -1 ").Xml()).size(), 0U) << oAttribute.sName;
        }
    });
}

namespace {

// Few names, paths and orders, so that they meet.
std::string RandomCommands(std::mt19937& oRandom, bool bRepeats) {
    const auto Any = [&](const std::vector<std::string>& aTexts) { return aTexts[oRandom() % aTexts.size()]; };
    std::string sActions;
    std::string sMenus;
    for (const char* sName : {"A", "B", "File", "T"})
        sActions += "<ActionItem Name=\"" + std::string(sName) + "\" Action=\"X\"/>";
    std::set<std::string> setKeys;
    for (auto n = oRandom() % 5; n > 0; --n) {
        const std::string sType = Any({"MenuItem", "MenuItem", "MenuTitle", "ToolbarItem"});
        const std::string sAction = sType == "MenuTitle" ? Any({"File", "T"}) : Any({"A", "B"});
        const std::string sPath = sType == "MenuTitle" ? Any({"", "File", "T"}) : Any({"File", "t", "File.T", "Tools"});
        if (setKeys.insert(sType + sPath + sAction).second || bRepeats)
            sMenus += "<MenuItem Type=\"" + sType + "\" ActionItem=\"" + sAction + "\" Path=\"" + sPath +
                      "\" PositionOrder=\"" + Any({"1", "2", "9", "10", "2.5", "500"}) + "\"/>";
    }
    return "<ActionItems>" + sActions + "</ActionItems><Menus>" + sMenus + "</Menus>";
}

void FillRandomly(Application& oApplication, unsigned uSeed) {
    std::mt19937 oRandom(uSeed);
    for (const char* sName : {"S1", "S2"})
        oApplication.AddService(
            sName, RandomCommands(oRandom, true) + "<ExplorerItems><ExplorerItem Type=\"Folder\" Name=\"I" + sName +
                       "\">" + RandomCommands(oRandom, false) +
                       "</ExplorerItem></ExplorerItems><Windows><Window Name=\"W" + sName +
                       "\" Type=\"Window\" State=\"Normal\"><Page IsOptional=\"1\" IsResizable=\"1\">" +
                       RandomCommands(oRandom, false) + "</Page></Window></Windows>");
}

// The tools of a bar, in order.
std::string PlannedNames(const Bar& oBar) {
    std::string sNames;
    for (const Slot& oSlot : oBar.aSlots)
        sNames += (sNames.empty() ? "" : " ") + std::string(oSlot.pTool->sName);
    return sNames;
}

} // namespace

TEST(MenuPlan, PlacesEveryEntryWhereTheLibraryDoes) {
    int nStarted = 0;
    for (unsigned uSeed = 1; uSeed <= 200; ++uSeed) {
        Application oApplication;
        FillRandomly(oApplication, uSeed);
        Model oModel;
        Report oReport;
        ReadApplication(oModel, oApplication.Folder(), oReport);
        BuildModel(oModel, oReport);
        const check::MenuPlan oPlan(oModel);
        bool bStops = !oPlan.DoubleTitles().empty();
        for (const Placing& oPlacing : oPlan.Placings())
            bStops |= oPlacing.bWithoutRoot || oPlacing.bReserved || oPlacing.bOtherTool;
        ASSERT_EQ(oApplication.Start() != 0, bStops) << uSeed;
        if (bStops)
            continue;
        ++nStarted;
        for (const auto& [sName, oBar] : oPlan.Bars()) {
            if (!oBar.bOfHost || sName == "main") {
                ASSERT_EQ(PlannedNames(oBar), oApplication.BandNames(oBar.sName)) << uSeed << ": " << oBar.sName;
            }
        }
    }
    EXPECT_GT(nStarted, 50);
}

// The model reads values where they stand, without making the library's records.
TEST(Model, HoldsWhatTheRecordsHold) {
    std::string sMenus;
    for (const char* sType : {"MenuItem", "menutitle", "ToolbarItem", "ContextMenuItem", "CONTEXTMENUTITLE"})
        for (const char* sRest :
             {R"(PositionOrder="1.5" Path="File.New" Caption="A##b &amp;&#xE9; ##C" ShortCutKey="Ctrl+&#x41;")",
              R"(PositionOrder=" 2e2 " Path="" Caption="&#xA;")", R"(PositionOrder="-1")"})
            sMenus += "<MenuItem Type=\"" + std::string(sType) + "\" ActionItem=\"" +
                      (sMenus.size() % 2 == 0 ? "act" : "B&#x2E;c") + "\" " + sRest + "/>";
    CheckedFolder oFolder;
    oFolder.Write("Services/Example.xml",
                  R"(<Service Name="Example" ProgID="E.E" Active="1"><ActionItems><ActionItem Name="Act" Action="On")"
                  R"( PassActionItemParam="-1"/><ActionItem Name="B.c"/></ActionItems><Menus>)" +
                      sMenus + "</Menus></Service>");
    check::Model oModel;
    Report oReport;
    ReadApplication(oModel, oFolder.Path(), oReport);
    BuildModel(oModel, oReport);
    const Provider& oProvider = oModel.aServices.back();
    const Ref<IXmlDocument> oDocument = New<XmlService>()->NewDocument();
    ASSERT_TRUE(oDocument->LoadXml(oProvider.pFile->sBytes));
    std::vector<Ref<ActionItemDef>> aActions;
    for (const auto& oNode : oDocument->SelectSingleNode("Service")->SelectNodes("ActionItems/ActionItem"))
        aActions.emplace_back(New<ActionItemDef>())->Initialize(oNode);
    ASSERT_EQ(oProvider.aActions.size(), aActions.size());
    for (std::size_t i = 0; i < aActions.size(); ++i) {
        EXPECT_EQ(oProvider.aActions[i].sName, aActions[i]->Name());
        EXPECT_EQ(oProvider.aActions[i].sProcedure, aActions[i]->Action());
        EXPECT_EQ(oProvider.aActions[i].PassesItself(), aActions[i]->PassActionItemParam());
    }
    const auto aNodes = oDocument->SelectSingleNode("Service")->SelectNodes("Menus/MenuItem");
    ASSERT_EQ(oProvider.aEntries.size(), aNodes.size());
    for (std::size_t i = 0; i < aNodes.size(); ++i) {
        const Entry& oEntry = oProvider.aEntries[i];
        MenuItemDef oDef;
        oDef.Initialize(aNodes[i]);
        oDef.SetActionItemDef(aActions[static_cast<std::size_t>(oEntry.pAction - oProvider.aActions.data())]);
        EXPECT_EQ(oEntry.eType, oDef.MenuType()) << i;
        EXPECT_EQ(oEntry.fPositionOrder, oDef.PositionOrder()) << i;
        EXPECT_EQ(oEntry.sPath, oDef.Path()) << i;
        EXPECT_EQ(oEntry.sKey, oDef.Key()) << i;
        EXPECT_EQ(oEntry.PositionKey(), oDef.PositionKey()) << i;
        EXPECT_EQ(ReplaceText(oEntry.Caption(), '#', '&'), oDef.Caption()) << i;
        EXPECT_EQ(oEntry.ShortCutKey(), oDef.ShortCutKey()) << i;
    }
}

} // namespace corvane::testing
