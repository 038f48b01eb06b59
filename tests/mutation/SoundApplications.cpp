#include "tests/mutation/SoundApplications.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <regex>
#include <sstream>

namespace corvane::mutation {

namespace fs = std::filesystem;

namespace {

constexpr const char* anyPicture = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";

std::string TextOf(const fs::path& path) {
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

void AddFolder(SoundApplication& application, const fs::path& folder, const std::string& below) {
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file())
            application.files[below + "/" + entry.path().filename().string()] = TextOf(entry.path());
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t i = 0; (i = text.find(what, i)) != std::string::npos; i += by.size())
        text.replace(i, what.size(), by);
    return text;
}

SoundApplication Studies() {
    SoundApplication application{"Studies", {}};
    const fs::path folder = CORVANE_SOURCE "/samples/studies/app";
    AddFolder(application, folder / "Services", "Services");
    AddFolder(application, folder / "Images", "Images");
    return application;
}

SoundApplication OfTemplates() {
    SoundApplication application{"Templates", {}};
    const fs::path templates = CORVANE_SOURCE "/cli/new/templates";
    AddFolder(application, templates / "application/app/Services", "Services");
    AddFolder(application, templates / "application/app/Images", "Images");
    int order = 300;
    for (const char* name : {"Birds", "Nests"}) {
        std::string text = TextOf(templates / "service/app/Services/@Name@.xml");
        text = Replaced(text, "@Name@", name);
        text = Replaced(text, "@order@", std::to_string(order));
        text = Replaced(text, "@caption@", "#" + std::string(name));
        text = Replaced(text, "@start@", order == 300 ? " IsStartService=\"True\"" : "");
        application.files["Services/" + std::string(name) + ".xml"] = text;
        order += 10;
    }
    return application;
}

class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    SoundApplication Run() {
        SoundApplication application{"Generated", {}};
        application.files["Images/item.svg"] = anyPicture;
        std::string titles;
        std::string places;
        for (const char* name : {"File", "Edit", "View", "Window"}) {
            titles += "    <ActionItem Name=\"" + std::string(name) + "\"/>\n";
            places += Place("MenuTitle", name, "", m_title += 10, "#" + std::string(name));
        }
        application.files["Services/Framework.xml"] =
            File("Framework", "Corvane.Framework", "",
                 Group("ActionItems", titles + "    <ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" "
                                               "PassActionItemParam=\"True\"/>\n    <ActionItem Name=\"Exit\" "
                                               "Action=\"AppExit\"/>\n") +
                     Group("Menus", places + Place("MenuItem", "Navigation", "View", 10, "#Explorer") +
                                        Place("MenuItem", "Exit", "File", 900, "E#xit")));
        const auto count = 2 + m_random() % 3;
        for (unsigned service = 1; service <= count; ++service)
            application.files["Services/S" + std::to_string(service) + ".xml"] = Service(service);
        return application;
    }

private:
    static std::string File(const std::string& name, const std::string& progId, const std::string& more,
                            const std::string& content) {
        return "<?xml version=\"1.0\"?>\n<Service Name=\"" + name + "\" ProgID=\"" + progId + "\" Active=\"True\"" +
               more + ">\n" + content + "</Service>\n";
    }

    static std::string Group(const std::string& name, const std::string& content) {
        return content.empty() ? content : "  <" + name + ">\n" + content + "  </" + name + ">\n";
    }

    static std::string Place(const std::string& type, const std::string& action, const std::string& path, int order,
                             const std::string& caption, const std::string& more = {}) {
        return "    <MenuItem Type=\"" + type + "\" ActionItem=\"" + action + "\"" +
               (path.empty() ? "" : " Path=\"" + path + "\"") + " PositionOrder=\"" + std::to_string(order) +
               "\" Caption=\"" + caption + "\"" + more + "/>\n";
    }

    std::string Service(unsigned number) {
        const std::string own = std::to_string(number);
        const std::string title = "Menu" + own;
        std::string actions = "    <ActionItem Name=\"" + title + "\"/>\n    <ActionItem Name=\"More" + own + "\"/>\n";
        m_title += 10;
        const int order = m_title;
        std::string places = Place("MenuTitle", title, "", order, "Menu #" + own);
        // A menu below it comes behind the entries in front of it: its order is above that of the title.
        places += Place("MenuTitle", "More" + own, title, 1000 + order, "#More");
        const auto commands = 3 + m_random() % 4;
        for (unsigned command = 1; command <= commands; ++command) {
            const std::string name = "Do" + own + std::to_string(command);
            actions += "    <ActionItem Name=\"" + name + "\" Action=\"On" + name +
                       "\" Image=\"item.svg\" Description=\"Does it\"/>\n";
            const bool isBelow = command > 2;
            places += Place("MenuItem", name, title + (isBelow ? ".More" + own : ""), static_cast<int>(command) * 10,
                            "Do #" + std::to_string(command),
                            command == 1   ? " ShortCutKey=\"Ctrl+Shift+" + own + "\""
                            : command == 4 ? " Separator=\"Before\""
                                           : "");
            if (command <= 2)
                places += Place("ToolbarItem", name, "Bar" + own, static_cast<int>(command) * 10, "Do it",
                                " Tip=\"Does what it does\"");
        }
        return File("S" + own, "Lib" + own + ".Service", number == 1 ? " IsStartService=\"True\"" : "",
                    Group("ActionItems", actions) + Group("Menus", places) + Group("ExplorerItems", Items(own)) +
                        Group("Windows", Windows(own)));
    }

    std::string Items(const std::string& own) {
        const std::string root = "Root" + own;
        std::string items = "    <ExplorerItem Name=\"" + root + "\" Type=\"Folder\" ProgID=\"Lib" + own +
                            ".Root\" PositionOrder=\"" + own + "0\" Image=\"item.svg\"/>\n";
        std::string parent = root;
        if (m_random() % 2 == 0) {
            parent = "Group" + own;
            items += "    <ExplorerItem Name=\"" + parent + "\" Type=\"FolderChild\" Parent=\"" + root +
                     "\" Image=\"item.svg\"/>\n";
        }
        return items + "    <ExplorerItem Name=\"Leaf" + own + "\" Type=\"Default\" Parent=\"" + parent +
               "\" DefaultAction=\"Open\" CanRename=\"True\" Image=\"item.svg\">\n  " +
               Group("ActionItems", "    <ActionItem Name=\"Open\" Action=\"OnOpen\"/>\n    <ActionItem "
                                    "Name=\"Delete\" Action=\"OnDelete\"/>\n") +
               Group("Menus", Place("ContextMenuItem", "Open", "", 10, "#Open") +
                                  Place("ContextMenuItem", "Delete", "", 20, "#Delete", " Separator=\"Before\"") +
                                  Place("MenuItem", "Delete", "Edit", 100, "#Delete")) +
               "    </ExplorerItem>\n";
    }

    std::string Windows(const std::string& own) {
        static constexpr std::array types{"Window", "Dialog", "Wizard", "SaveDialog"};
        const std::string type = types[m_random() % types.size()];
        std::string pages;
        for (const char* page : {"First", "Second"})
            pages += "      <Page PageProgID=\"Lib" + own + "." + page + "\" Caption=\"" + page +
                     "\" IsOptional=\"False\" IsResizable=\"True\" PositionOrder=\"" + (page[0] == 'F' ? "10" : "20") +
                     "\"/>\n";
        return "    <Window Name=\"Window" + own + "\" Type=\"" + type + "\" State=\"Normal\" Caption=\"Window " + own +
               "\" PageWidth=\"6000\" PageHeight=\"4000\">\n" + pages + "    </Window>\n";
    }

    std::mt19937 m_random;
    int m_title = 0;
};

// An object with that many levels of objects below it, whose names are their ways from the top.
std::string StandIn(const std::string& name, int levels, int count) {
    std::string children;
    for (int number = 1; levels > 0 && number <= count; ++number)
        children += (number == 1 ? "" : ", ") + StandIn(name + std::to_string(number), levels - 1, count);
    return "{\"name\": \"" + name + "\", \"children\": [" + children + "]}";
}

// What stands in for the objects of its plug-ins, so that every kind of explorer item has some.
// Where a folder is below every object of a kind, there may be one of the kind: folders have the name of their
// definition.
void AddStandIns(SoundApplication& application, int count) {
    static const std::regex item("<ExplorerItem Name=\"(\\w+)\"[^>]* ProgID=\"([\\w.]+)\"");
    std::string objects;
    for (const auto& [path, text] : application.files)
        for (std::sregex_iterator match(text.begin(), text.end(), item), end; match != end; ++match)
            objects += (objects.empty() ? "" : ",\n") + ("\"" + (*match)[2].str() + "\": ") +
                       StandIn((*match)[1].str(), 3, count);
    application.files["standins.json"] = "{\"objects\": {" + objects + "}}";
}

} // namespace

SoundApplication GeneratedApplication(unsigned seed) {
    SoundApplication application = Generator(seed).Run();
    AddStandIns(application, 2);
    return application;
}

std::vector<SoundApplication> SoundApplications() {
    std::vector<SoundApplication> applications{Studies(), OfTemplates()};
    for (SoundApplication& application : applications)
        AddStandIns(application, 1);
    for (unsigned seed = 1; seed <= 4; ++seed) {
        applications.push_back(GeneratedApplication(seed));
        applications.back().name += std::to_string(seed);
    }
    return applications;
}

} // namespace corvane::mutation
