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
    explicit Everything(std::size_t word, const AttributeFormat* other = nullptr, std::string otherText = {})
        : m_word(word), m_other(other), m_otherText(std::move(otherText)) {
        Add(ServiceFormat());
    }
    [[nodiscard]] const std::string& Xml() const { return m_xml; }

private:
    void Add(const ElementFormat& format) {
        m_xml += "<" + std::string(format.name);
        for (const AttributeFormat& attribute : format.attributes)
            m_xml += " " + std::string(attribute.name) + "=\"" + ValueOf(format, attribute) + "\"";
        m_xml += ">";
        for (const ElementFormat& child : format.children)
            Add(child);
        m_xml += "</" + std::string(format.name) + ">";
    }
    [[nodiscard]] std::string ValueOf(const ElementFormat& format, const AttributeFormat& attribute) {
        if (&attribute == m_other)
            return m_otherText;
        if (format.name == "Service" && attribute.kind == ValueKind::Boolean)
            return "True";
        if (attribute.name == "Parent")
            return "";
        switch (attribute.kind) {
        case ValueKind::Boolean:
            return "False";
        case ValueKind::Number:
            return "1.5";
        case ValueKind::WholeNumber:
            return "7";
        case ValueKind::Word:
            return std::string(attribute.words[m_word % attribute.words.size()]);
        case ValueKind::Text:
            break;
        }
        const bool action = format.name == "ActionItem" || attribute.name == "ActionItem";
        return action ? "Act" : "T" + std::to_string(++m_texts);
    }

    std::size_t m_word;
    const AttributeFormat* m_other;
    std::string m_otherText;
    std::string m_xml;
    int m_texts = 0;
};

// What the library says about the file.
Lines LogOf(const std::string& xml) {
    CheckedFolder folder;
    folder.Write("Services/Everything.xml", xml);
    inspect::ModelHost host({folder.Path(), true, nullptr});
    host.Start();
    Lines log;
    for (const auto& entry : host.Recorded().log)
        if (entry.procedure == "LoadServices" && !entry.context.empty())
            log.push_back(entry.context);
    return log;
}

void ForEachAttribute(const ElementFormat& format, const std::function<void(const AttributeFormat&)>& act) {
    for (const AttributeFormat& attribute : format.attributes)
        act(attribute);
    for (const ElementFormat& child : format.children)
        ForEachAttribute(child, act);
}

} // namespace

TEST(Format, IsWhatSchemaAndRecordsAccept) {
    for (std::size_t word = 0; word < 5; ++word)
        EXPECT_EQ(LogOf(Everything(word).Xml()), Lines()) << word;
}

TEST(Format, TellsWhichValuesTheRecordsRefuse) {
    ForEachAttribute(ServiceFormat(), [](const AttributeFormat& attribute) {
        if (attribute.kind == ValueKind::Text)
            return;
        const bool refuses = attribute.name != "Separator";
        EXPECT_EQ(LogOf(Everything(0, &attribute, "?").Xml()).size(), refuses ? 1U : 0U) << attribute.name.text;
        if (attribute.kind != ValueKind::Word) {
            EXPECT_EQ(LogOf(Everything(0, &attribute, " -1 ").Xml()).size(), 0U) << attribute.name.text;
        }
    });
}

namespace {

// Few names, paths and orders, so that they meet.
std::string RandomCommands(std::mt19937& random, bool repeats) {
    const auto Any = [&](const std::vector<std::string>& texts) { return texts[random() % texts.size()]; };
    std::string actions;
    std::string menus;
    for (const char* name : {"A", "B", "File", "T"})
        actions += "<ActionItem Name=\"" + std::string(name) + "\" Action=\"X\"/>";
    std::set<std::string> keys;
    for (auto n = random() % 5; n > 0; --n) {
        const std::string type = Any({"MenuItem", "MenuItem", "MenuTitle", "ToolbarItem"});
        const std::string action = type == "MenuTitle" ? Any({"File", "T"}) : Any({"A", "B"});
        const std::string path = type == "MenuTitle" ? Any({"", "File", "T"}) : Any({"File", "t", "File.T", "Tools"});
        if (keys.insert(type + path + action).second || repeats)
            menus += "<MenuItem Type=\"" + type + "\" ActionItem=\"" + action + "\" Path=\"" + path +
                     "\" PositionOrder=\"" + Any({"1", "2", "9", "10", "2.5", "500"}) + "\"/>";
    }
    return "<ActionItems>" + actions + "</ActionItems><Menus>" + menus + "</Menus>";
}

void FillRandomly(Application& application, unsigned seed) {
    std::mt19937 random(seed);
    for (const char* name : {"S1", "S2"})
        application.AddService(name,
                               RandomCommands(random, true) + "<ExplorerItems><ExplorerItem Type=\"Folder\" Name=\"I" +
                                   name + "\">" + RandomCommands(random, false) +
                                   "</ExplorerItem></ExplorerItems><Windows><Window Name=\"W" + name +
                                   "\" Type=\"Window\" State=\"Normal\"><Page IsOptional=\"1\" IsResizable=\"1\">" +
                                   RandomCommands(random, false) + "</Page></Window></Windows>");
}

// The tools of a bar, in order.
std::string PlannedNames(const Bar& bar) {
    std::string names;
    for (const Slot& slot : bar.slots)
        names += (names.empty() ? "" : " ") + std::string(slot.tool->name);
    return names;
}

} // namespace

TEST(MenuPlan, PlacesEveryEntryWhereTheLibraryDoes) {
    int started = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Application application;
        FillRandomly(application, seed);
        Model model;
        Report report;
        ReadApplication(model, application.Folder(), report);
        BuildModel(model, report);
        const check::MenuPlan plan(model);
        bool stops = !plan.DoubleTitles().empty();
        for (const Placing& placing : plan.Placings())
            stops |= placing.withoutRoot || placing.reserved || placing.otherTool;
        ASSERT_EQ(application.Start() != 0, stops) << seed;
        if (stops)
            continue;
        ++started;
        for (const auto& [name, bar] : plan.Bars()) {
            if (!bar.ofHost || name == "main") {
                ASSERT_EQ(PlannedNames(bar), application.BandNames(bar.name)) << seed << ": " << bar.name;
            }
        }
    }
    EXPECT_GT(started, 50);
}

// The model reads values where they stand, without making the library's records.
TEST(Model, HoldsWhatTheRecordsHold) {
    std::string menus;
    for (const char* type : {"MenuItem", "menutitle", "ToolbarItem", "ContextMenuItem", "CONTEXTMENUTITLE"})
        for (const char* rest :
             {R"(PositionOrder="1.5" Path="File.New" Caption="A##b &amp;&#xE9; ##C" ShortCutKey="Ctrl+&#x41;")",
              R"(PositionOrder=" 2e2 " Path="" Caption="&#xA;")", R"(PositionOrder="-1")"})
            menus += "<MenuItem Type=\"" + std::string(type) + "\" ActionItem=\"" +
                     (menus.size() % 2 == 0 ? "act" : "B&#x2E;c") + "\" " + rest + "/>";
    CheckedFolder folder;
    folder.Write("Services/Example.xml",
                 R"(<Service Name="Example" ProgID="E.E" Active="1"><ActionItems><ActionItem Name="Act" Action="On")"
                 R"( PassActionItemParam="-1"/><ActionItem Name="B.c"/></ActionItems><Menus>)" +
                     menus + "</Menus></Service>");
    check::Model model;
    Report report;
    ReadApplication(model, folder.Path(), report);
    BuildModel(model, report);
    const Provider& provider = model.services.back();
    const Ref<IXmlDocument> document = New<XmlService>()->NewDocument();
    ASSERT_TRUE(document->LoadXml(provider.file->bytes));
    std::vector<Ref<ActionItemDef>> actions;
    for (const auto& node : document->SelectSingleNode("Service")->SelectNodes("ActionItems/ActionItem"))
        actions.emplace_back(New<ActionItemDef>())->Initialize(node);
    ASSERT_EQ(provider.actions.size(), actions.size());
    for (std::size_t i = 0; i < actions.size(); ++i) {
        EXPECT_EQ(provider.actions[i].name, actions[i]->Name());
        EXPECT_EQ(provider.actions[i].procedure, actions[i]->Action());
        EXPECT_EQ(provider.actions[i].PassesItself(), actions[i]->PassActionItemParam());
    }
    const auto nodes = document->SelectSingleNode("Service")->SelectNodes("Menus/MenuItem");
    ASSERT_EQ(provider.entries.size(), nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Entry& entry = provider.entries[i];
        MenuItemDef def;
        def.Initialize(nodes[i]);
        def.SetActionItemDef(actions[static_cast<std::size_t>(entry.action - provider.actions.data())]);
        EXPECT_EQ(entry.type, def.MenuType()) << i;
        EXPECT_EQ(entry.positionOrder, def.PositionOrder()) << i;
        EXPECT_EQ(entry.path, def.Path()) << i;
        EXPECT_EQ(entry.key, def.Key()) << i;
        EXPECT_EQ(entry.PositionKey(), def.PositionKey()) << i;
        EXPECT_EQ(ReplaceText(entry.Caption(), '#', '&'), def.Caption()) << i;
        EXPECT_EQ(entry.ShortCutKey(), def.ShortCutKey()) << i;
    }
}

} // namespace corvane::testing
