#include "adapters/common/Paths.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace corvane::check {

namespace {

constexpr const char* helpProgID = "TavelinSvc.TavelinService";

bool IsFramework(const Provider& service) {
    return EqualText(service.progID, frameworkProgID);
}

void CheckFramework(Model& model, const std::string& application, Report& report) {
    // Of several files of the root object the actions of the last are its own.
    Provider* framework = nullptr;
    for (Provider& service : model.services)
        if (IsFramework(service))
            framework = &service;
    if (!framework) {
        if (model.complete)
            report.Add(Rule::MissingFramework, {JoinPath(application, "Services"), {}},
                       "no active file has the ProgID \"Corvane.Framework\"",
                       "add one, with the action \"Navigation\" and its procedure \"ViewNavigation\"");
    } else if (!framework->FindAction("Navigation")) {
        report.Add(Rule::MissingNavigation, framework->At("ProgID"), "the root object has no action \"Navigation\"",
                   "add <ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" PassActionItemParam=\"True\"/>");
    }
}

void CheckStartServices(const Model& model, Report& report) {
    const Provider* start = nullptr;
    for (const Provider& service : model.services) {
        if (!BooleanOf(*service.element, "IsStartService", false))
            continue;
        if (IsFramework(service))
            report.Add(Rule::StartServiceFramework, service.At("IsStartService"),
                       "the root object can't be the start service", "remove IsStartService here");
        if (start && !EqualText(start->name, service.name)) // else the name is the mistake
            report.Add(Rule::SeveralStartServices, service.At("IsStartService"),
                       "Start is called on " + service.Named() + ", and not on " + start->Named(),
                       "let one file say IsStartService", {{start->At("IsStartService"), "the other one"}});
        start = &service;
    }
}

// The library writes into the entry before it asks whether the file counts.
void CheckHelp(const Model& model, Report& report) {
    for (const auto& file : model.files) {
        if (!file->root || !EqualText(file->root->Value("ProgID"), helpProgID))
            continue;
        const Element* about = nullptr; // the first one is taken
        for (const Element& group : file->root->Children())
            if (group.name == "Menus")
                for (const Element& entry : group.Children())
                    if (!about && entry.name == "MenuItem" && entry.Value("ActionItem") == "About")
                        about = &entry;
        if (!about)
            report.Add(Rule::HelpWithoutAbout, file->At(file->root->At("ProgID")),
                       "the help service has no MenuItem of the action \"About\"", "add one, in exactly these letters");
        else if (!about->Find("Caption"))
            report.Add(Rule::HelpWithoutAbout, file->At(about->At()),
                       "the MenuItem of the action \"About\" has no Caption", "add one");
    }
}

class ItemCheck {
public:
    ItemCheck(Model& model, Report& report) : m_model(model), m_report(report) {
        for (Provider& item : model.items) {
            m_items.emplace(item.name, &item);
            m_names.push_back(item.name);
        }
    }

    void Check() {
        for (Provider& item : m_model.items) {
            CheckParent(item);
            CheckDefaultAction(item);
        }
    }

private:
    void CheckParent(const Provider& item) {
        const std::string parent(item.element->Value("Parent"));
        if (parent.empty()) {
            if (EqualText(item.element->Value("Type"), "Default"))
                m_report.Add(Rule::UnreachableItem, item.At("Type"),
                             "nothing shows " + item.Named() + ", which is of Type Default and has no Parent",
                             "name the item above it as Parent, or make it a Folder");
            return;
        }
        if (!m_items.contains(parent)) {
            if (m_model.complete)
                m_report.Add(Rule::UnknownParent, item.At("Parent"), "there is no explorer item " + Quoted(parent),
                             WriteInstead(m_names, parent, "define it in an active file, or remove Parent"));
            return;
        }
        CheckCycle(item);
    }

    // Reported at the first item of the ring alone.
    void CheckCycle(const Provider& item) {
        std::set<const Provider*> ring;
        const Provider* itemProvider = &item;
        while (itemProvider && ring.insert(itemProvider).second) {
            const auto it = m_items.find(itemProvider->element->Value("Parent"));
            itemProvider = it == m_items.end() ? nullptr : it->second;
        }
        if (itemProvider != &item || m_inRings.contains(&item))
            return;
        m_inRings.insert(ring.begin(), ring.end());
        m_report.Add(Rule::ParentCycle, item.At("Parent"),
                     item.Named() + (ring.size() == 1 ? " is its own Parent" : " is below itself"),
                     "remove the Parent of the one that is meant to be on top");
    }

    void CheckDefaultAction(Provider& item) {
        const std::string actionName(item.element->Value("DefaultAction"));
        if (actionName.empty() || item.FindAction(actionName))
            return;
        std::vector<std::string> names;
        for (const Action& action : item.actions)
            names.emplace_back(action.name);
        m_report.Add(Rule::UnknownDefaultAction, item.At("DefaultAction"),
                     item.Named() + " has no action " + Quoted(actionName),
                     WriteInstead(names, actionName, "define it there as an ActionItem"));
    }

    Model& m_model;
    Report& m_report;
    std::unordered_map<std::string_view, Provider*, TextHash, TextEqual> m_items; // by name
    std::vector<std::string> m_names;
    std::set<const Provider*> m_inRings;
};

void CheckWindows(const Model& model, Report& report) {
    for (const Window& window : model.windows)
        if (BooleanOf(*window.element, "IsModal", false) && BooleanOf(*window.element, "IsMDIChild", true))
            report.Add(Rule::ModalMdiChild, window.file->At(window.element->At("IsModal")),
                       "the window " + Quoted(window.name) + " is modal and an MDI child, so opening it fails",
                       "write IsMDIChild=\"False\"");
}

} // namespace

void CheckNames(Model& model, const std::string& application, Report& report) {
    CheckFramework(model, application, report);
    CheckStartServices(model, report);
    CheckHelp(model, report);
    ItemCheck(model, report).Check();
    CheckWindows(model, report);
}

} // namespace corvane::check
