#include "adapters/common/Nearest.h"
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

bool HasFramework(const Model& model) {
    return std::any_of(model.services.begin(), model.services.end(), IsFramework);
}

// The command that the root object alone has.
bool HasCommandOfFramework(const Element& root) {
    const auto elements = std::span(&root, 1 + root.below);
    return std::any_of(elements.begin(), elements.end(), [](const Element& element) {
        return element.name == "ActionItem" && EqualText(element.Value("Action"), "ViewNavigation");
    });
}

// What becomes of an application whose own file of the root object doesn't count.
constexpr const char* withoutFramework =
    ": the application doesn't start (5), or with the host's menus instead of these";

// A file that says Active="False" is left alone.
void CheckInactive(const Model& model, Report& report) {
    for (const auto& file : model.files) {
        if (!file->root || file->active || file->isCopy)
            continue;
        const Element& root = *file->root;
        const bool hasClass = !root.Value("ProgID").empty();
        const bool hasActive = root.Find("Active") != nullptr;
        if (hasActive && (hasClass || !BooleanOf(root, "Active", true)))
            continue;
        const bool isFramework =
            hasClass ? EqualText(root.Value("ProgID"), frameworkProgID) : HasCommandOfFramework(root);
        const bool isMissed = isFramework && !HasFramework(model);
        Finding& finding =
            report.Add(isMissed ? Rule::FrameworkLeftOut : Rule::InactiveFile, file->At(root.At()),
                       std::string(isMissed ? "the file of the root object" : "the file") + " has no " +
                           (hasClass ? "Active" : "ProgID") +
                           (isMissed ? ", so it doesn't count" + std::string(withoutFramework)
                                     : ", so nothing in it takes effect"),
                       !hasClass  ? "write ProgID=\"" + std::string(isMissed ? frameworkProgID : "Library.Class") + "\""
                       : isMissed ? "write Active=\"True\""
                                  : "write Active=\"True\", or Active=\"False\" if that is meant");
        if (hasClass)
            finding.edits = {AdditionEdit(*file, root, "Active", "True")};
        else if (isMissed)
            finding.edits = {SetEdit(*file, root, "ProgID", frameworkProgID)};
    }
}

void CheckFramework(Model& model, const std::string& application, Report& report) {
    for (const Provider& service : model.services)
        if (IsMeantAsFramework(model, service))
            report
                .Add(Rule::FrameworkLeftOut, service.At("ProgID"),
                     "the ProgID " + Quoted(service.progID) + " isn't that of the root object, which " +
                         service.Named() + " seems to be" + withoutFramework,
                     "write " + Quoted(frameworkProgID))
                .edits = {ValueEdit(*service.file, *service.element->Find("ProgID"), frameworkProgID)};
    // Of several files of the root object the actions of the last are its own.
    Provider* framework = nullptr;
    for (Provider& service : model.services)
        if (IsFramework(service))
            framework = &service;
    const auto& findings = report.Findings();
    const bool isNamed = std::any_of(findings.begin(), findings.end(),
                                     [](const Finding& finding) { return finding.rule == Rule::FrameworkLeftOut; });
    if (!framework) {
        if (model.complete && !isNamed)
            report.Add(Rule::MissingFramework, {JoinPath(application, "Services"), {}},
                       "no active file has the ProgID \"Corvane.Framework\", so only a host that brings one can "
                       "start the application",
                       "add one, with <ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" "
                       "PassActionItemParam=\"True\"/>");
    } else if (!framework->FindAction("Navigation")) {
        const auto other = std::find_if(model.services.begin(), model.services.end(), [](Provider& service) {
            return IsFramework(service) && service.FindAction("Navigation");
        });
        const std::string action =
            "<ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" PassActionItemParam=\"True\"/>";
        if (other == model.services.end())
            report.Add(Rule::MissingNavigation, framework->At("ProgID"),
                       framework->Named() + " has no action \"Navigation\", so the application doesn't start (5)",
                       "add " + action);
        else
            report.Add(Rule::MissingNavigation, framework->At("ProgID"),
                       "of several files of the root object the actions of the last one count, and " +
                           framework->Named() + " has no \"Navigation\", so the application doesn't start (5)",
                       "move all that is in it to " + Quoted(other->file->name) + ", or write another ProgID",
                       {{other->At("ProgID"), "the file that has the action"}});
    }
}

void CheckStartServices(const Model& model, Report& report) {
    const Provider* start = nullptr;
    for (const Provider& service : model.services) {
        if (!BooleanOf(*service.element, "IsStartService", false))
            continue;
        if (IsFramework(service))
            report
                .Add(Rule::StartServiceFramework, service.At("IsStartService"),
                     "the start service is the root object, whose Start then calls itself without end",
                     "remove IsStartService here, and write it in the file of another service")
                .edits = {RemovalEdit(*service.file, *service.element->Find("IsStartService"))};
        if (start && !EqualText(start->name, service.name)) // else the name is the mistake
            report.Add(Rule::SeveralStartServices, service.At("IsStartService"),
                       service.Named() + " and " + Quoted(start->name) +
                           " both say IsStartService; Start is called on " + Quoted(service.name) + " alone",
                       "remove IsStartService from one of both files",
                       {{start->At("IsStartService"), "the other one"}});
        start = &service;
    }
}

// The name counts in exactly these letters.
void ReportHelp(const File& file, Report& report) {
    Finding& finding = report.Add(
        Rule::HelpWithoutAbout, file.At(file.root->At("ProgID")),
        "the help service has no MenuItem of the ActionItem \"About\", so its file is left out (91)",
        "add <MenuItem Type=\"MenuItem\" ActionItem=\"About\" Path=\"Help\" PositionOrder=\"90\" Caption=\"...\"/>");
    for (const Element& element : std::span(file.root, 1 + file.root->below))
        if (element.name == "MenuItem" && EqualText(element.Value("ActionItem"), "About")) {
            finding.cure = "write ActionItem=\"About\" for " + Quoted(element.Value("ActionItem"));
            finding.notes = {{file.At(element.At("ActionItem")), "the entry that seems to be meant"}};
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
            ReportHelp(*file, report);
        else if (!about->Find("Caption"))
            report.Add(Rule::HelpWithoutAbout, file->At(about->At()),
                       "the MenuItem \"About\" has no Caption for the product's name, so the file is left out (91)",
                       "write Caption=\"...\", with the name of the application");
    }
}

class ItemCheck {
public:
    ItemCheck(Model& model, Report& report) : m_model(model), m_report(report) {
        for (Provider& item : model.items) {
            if (item.name.empty()) // has a finding of its own
                continue;
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
                             item.Named() + " is shown nowhere, as it is of Type Default and has no Parent",
                             "write Parent=\"...\" with the Name of the item above it, or Type=\"Folder\"");
            return;
        }
        if (!m_items.contains(parent)) {
            if (m_model.complete)
                ReportParent(item, parent);
            return;
        }
        CheckCycle(item);
    }

    void ReportParent(const Provider& item, const std::string& parent) {
        std::vector<Note> notes;
        std::string cure = WriteInstead(m_names, parent, "add an ExplorerItem of this Name, or remove Parent");
        const auto nearest = Nearest(m_names, parent);
        const Provider* meant = nearest ? m_items.find(*nearest)->second : nullptr;
        if (const auto inactive = InactiveItem(m_model, parent)) {
            notes.push_back(
                {inactive->file->At(inactive->element->At("Name")), "the item, in a file that isn't active"});
            cure = "write Active=\"True\" in " + Quoted(inactive->file->name) + ", which has the item";
        } else if (const Provider* shown = ItemOfText(parent); shown && !nearest) {
            cure = "write " + Quoted(shown->name) + ", which is its Name";
        } else if (meant) {
            notes.push_back({meant->At("Name"), "the nearest ExplorerItem"});
        }
        Finding& finding = m_report.Add(Rule::UnknownParent, item.At("Parent"),
                                        "there is no explorer item " + Quoted(parent) + " to be the Parent of " +
                                            Quoted(item.name) + ", so the application doesn't start (5)",
                                        cure, std::move(notes));
        if (meant && !InactiveItem(m_model, parent))
            finding.edits = {ValueEdit(*item.file, *item.element->Find("Parent"), *nearest)};
    }

    // By what users read, or by its class.
    [[nodiscard]] const Provider* ItemOfText(std::string_view text) const {
        for (const Provider& item : m_model.items)
            if (EqualText(item.element->Value("DisplayName"), text) || EqualText(item.progID, text))
                return &item;
        return nullptr;
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
                     item.Named() + (ring.size() == 1 ? " is its own Parent" : " is below itself") +
                         ", so no tab shows it" + (ring.size() == 1 ? "" : " nor the others of the ring"),
                     "remove Parent at the one that is to be a tab, which makes it the top");
    }

    void CheckDefaultAction(Provider& item) {
        const std::string actionName(item.element->Value("DefaultAction"));
        if (actionName.empty() || item.FindAction(actionName))
            return;
        std::vector<std::string> names;
        for (const Action& action : item.actions)
            names.emplace_back(action.name);
        std::string cure =
            WriteInstead(names, actionName, "add <ActionItem Name=" + Quoted(actionName) + "/> to the item");
        const auto nearest = Nearest(names, actionName);
        for (const Action& action : item.actions)
            if (!nearest && EqualText(action.procedure, actionName))
                cure = "write " + Quoted(action.name) + ", the Name of the action that calls it";
        Finding& finding = m_report.Add(
            Rule::UnknownDefaultAction, item.At("DefaultAction"),
            item.Named() + " has no action " + Quoted(actionName) + ", so a double click on it fails (5)", cure);
        if (nearest)
            finding.edits = {ValueEdit(*item.file, *item.element->Find("DefaultAction"), *nearest)};
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
            report
                .Add(Rule::ModalMdiChild, window.file->At(window.element->At("IsModal")),
                     "the window " + Quoted(window.name) + " is modal and an MDI child" +
                         (window.element->Find("IsMDIChild") ? "" : " (the default)") + ", so opening it fails",
                     "write IsMDIChild=\"False\"")
                .edits = {SetEdit(*window.file, *window.element, "IsMDIChild", "False")};
}

} // namespace

bool IsMeantAsFramework(const Model& model, const Provider& service) {
    if (service.kind != ProviderKind::Service || IsFramework(service))
        return false;
    const bool isOfLibrary = EqualText(std::string_view(service.progID).substr(0, service.progID.find('.')), "Corvane");
    const auto IsAt = [&](std::size_t at, char letter) { // for most there is no need to count changes
        return service.progID.size() > at && (service.progID[at] | 0x20) == letter;
    };
    const bool isAlike = IsAt(0, 'c') || IsAt(service.progID.size() - 1, 'k');
    return isOfLibrary || (isAlike && Nearest(std::vector<std::string>{frameworkProgID}, service.progID)) ||
           (!HasFramework(model) && HasCommandOfFramework(*service.element));
}

void CheckNames(Model& model, const std::string& application, Report& report) {
    CheckInactive(model, report);
    CheckFramework(model, application, report);
    CheckStartServices(model, report);
    CheckHelp(model, report);
    ItemCheck(model, report).Check();
    CheckWindows(model, report);
}

} // namespace corvane::check
