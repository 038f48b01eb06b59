// Names that meet by accident.
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace corvane::check {

namespace {

class CollisionCheck {
public:
    CollisionCheck(Model& model, const MenuPlan& plan, Report& report)
        : m_model(model), m_plan(plan), m_report(report) {}

    void Check() {
        for (Provider& item : m_model.items) {
            CheckContextMenu(item);
            CheckControl(item);
        }
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries)
                if (!entry.IsOfContextMenu())
                    CheckPath(entry);
        CheckClasses();
        for (const Window& window : m_model.windows)
            if (EqualText(window.name, "Corvane.Preferences"))
                Reserved(window.file->At(window.element->At("Name")),
                         "the host has a window \"Corvane.Preferences\" itself, and its preferences then fail",
                         "give the window another name");
    }

private:
    void Reserved(Place place, std::string text, std::string cure, Rule rule = Rule::NameOfHost) {
        m_report.Add(rule, std::move(place), std::move(text), std::move(cure));
    }

    // An entry of a context menu takes the tool of its name, even another's.
    void CheckContextMenu(const Provider& item) {
        for (const Entry& entry : item.entries) {
            if (!entry.IsOfContextMenu() || m_plan.ToolOf(*entry.action))
                continue;
            const Tool* tool = m_plan.FindTool(entry.key);
            if (!tool)
                continue;
            if (!tool->maker) {
                const bool isHosts = EqualText(tool->name, "Separator") || EqualText(tool->name, "WindowList");
                if (isHosts)
                    Reserved(entry.At("ActionItem"),
                             "the host has a tool " + Quoted(tool->name) + " itself, which " + entry.Named() +
                                 " shows in place of the command",
                             "give the action another name, such as " + Quoted(std::string(entry.key) + "Item"));
                continue;
            }
            const Entry& other = *tool->maker;
            m_report.Add(Rule::NameCollision, entry.At("ActionItem"),
                         "in the context menu of " + Quoted(item.name) + ", " + Quoted(entry.key) +
                             (other.IsTitle() ? " opens the menu " : " is the command ") + Quoted(tool->name) + " of " +
                             other.provider->Named() + ", which has the same name",
                         "name the action otherwise, such as " + Quoted(item.name + std::string(entry.key)),
                         {{other.At("ActionItem"), "the other one"}});
        }
    }

    // Trees are controls of the panel, beside two that it has.
    void CheckControl(const Provider& item) {
        const Element& element = *item.element;
        if (element.Value("Parent").empty() && !EqualText(element.Value("Type"), "Default") &&
            (EqualText(item.name, "tabExplorer") || EqualText(item.name, "ExplorerImageList")))
            Reserved(item.At("Name"),
                     "the explorer has a control " + Quoted(item.name) + " itself, so the application doesn't start",
                     "give the explorer item another name", Rule::ReservedName);
    }

    void CheckPath(const Entry& entry) {
        const std::string_view path = entry.path;
        if (entry.IsButton()) {
            if (path.empty())
                m_report.Add(Rule::PathWithoutTitle, entry.At("Path"),
                             entry.Named() + " has no Path, so it is on a toolbar without a name",
                             "write Path=\"Standard\", or the name of another toolbar");
            else if (const std::string_view name = path; name.size() > 9 && EqualText(name.substr(0, 9), "Toolbars."))
                m_report
                    .Add(Rule::PathWithoutTitle, entry.At("Path"),
                         "the Path of a button is the toolbar's plain name, so this toolbar is called " + Quoted(path),
                         "write " + Quoted(path.substr(9)))
                    .edits = {ValueEdit(*entry.provider->file, *entry.element->Find("Path"), path.substr(9))};
            else if (const std::size_t point = path.rfind('.');
                     point != std::string_view::npos && m_plan.TitleOf(path.substr(0, point)))
                m_report.Add(
                    Rule::PathWithoutTitle, entry.At("Path"),
                    "the Path of a button is the toolbar's plain name and no menu's, so this toolbar is called " +
                        Quoted(path),
                    "write " + Quoted(path.substr(point + 1)) + ", or the name of another toolbar");
            return;
        }
        for (const char* bar : {"Explorer", "StatusBar"})
            if (EqualText(path, bar) && !m_plan.TitleOf(path)) // else the title has the finding
                Reserved(entry.At("Path"),
                         Quoted(path) + " is a bar of the host and no menu, so " + entry.Named() + " never appears",
                         "write the Path of a menu, such as \"View\"");
        if (path.size() > 9 && EqualText(path.substr(0, 9), "Toolbars.") && !m_plan.TitleOf(path))
            Reserved(entry.At("Path"),
                     "a toolbar holds buttons, so " + entry.Named() + " spoils the bar " + Quoted(path) +
                         " or never appears",
                     "write Type=\"ToolbarItem\" and Path=\"" + std::string(path.substr(9)) + "\"");
        if (entry.IsTitle() && EqualText(entry.key, "SysCustomize"))
            Reserved(entry.At("ActionItem"), "a menu \"SysCustomize\" loses its last two entries whenever it opens",
                     "give the action another name");
        if (!entry.IsTitle() && EqualText(entry.key, "View.Toolbars") && HasToolbars())
            Reserved(entry.At("ActionItem"),
                     "the list of toolbars has the name \"View.Toolbars\" itself and takes the place of this command",
                     "give the action another name, such as \"ShowToolbars\"");
    }

    [[nodiscard]] bool HasToolbars() const {
        return std::any_of(m_plan.Bars().begin(), m_plan.Bars().end(),
                           [](const auto& bar) { return bar.second.name.starts_with("Toolbars."); });
    }

    // Two files of one class share its one object.
    void CheckClasses() {
        std::unordered_map<std::string_view, const Provider*, TextHash, TextEqual> classes;
        for (const Provider& service : m_model.services) {
            const auto [first, isNew] = classes.try_emplace(service.progID, &service);
            if (isNew || EqualText(first->second->name, service.name) || EqualText(service.progID, "Corvane.Framework"))
                continue; // one name for two is a mistake of its own, and the root object may have several files
            m_report.Add(
                Rule::SharedClass, service.At("ProgID"),
                service.Named() + " and " + Quoted(first->second->name) +
                    " are one object: it is initialised twice, and its ActionItems are those of the last file alone",
                "write the ProgID of a class of its own, or put both into one file",
                {{first->second->At("ProgID"), "the first of both"}});
        }
        for (const Provider& page : m_model.pages)
            if (const auto service = classes.find(page.progID); service != classes.end() && !page.progID.empty())
                m_report.Add(Rule::SharedClass, page.At("PageProgID"),
                             page.Named() + " has the class of " + service->second->Named() +
                                 ", so another service is made where the page should be",
                             "write the ProgID of the page's own class",
                             {{service->second->At("ProgID"), "the service"}});
    }

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
};

} // namespace

void CheckCollisions(Model& model, const MenuPlan& plan, Report& report) {
    CollisionCheck(model, plan, report).Check();
}

} // namespace corvane::check
