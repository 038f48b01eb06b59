// What the code of the plug-ins and the definitions expect of one another, as far as it can be seen without running it.
#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace corvane::check {

namespace {

class CodeCheck {
public:
    CodeCheck(Model& model, const Code& code, const std::string& application, Report& report)
        : m_model(model), m_code(code), m_factory(JoinPath(application, "plugins")), m_report(report) {}

    void Check() {
        CheckStarts();
        CheckChildren();
        CheckProgress();
        CheckProcedures();
        for (const Code::Library& library : m_code.Libraries())
            CheckNames(library);
    }

private:
    // Nothing for a class that can't be found, which has a finding of its own.
    [[nodiscard]] const PluginFactory::ClassInfo* ClassOf(const Provider& provider) {
        const std::size_t point = provider.progID.find('.');
        if (point == std::string::npos || point == 0)
            return nullptr;
        const auto [library, isNew] = m_classes.try_emplace(FoldText(provider.progID.substr(0, point)));
        if (isNew && FindPath(m_factory.PathOf(provider.progID.substr(0, point)))) {
            try {
                library->second = m_factory.Classes(provider.progID.substr(0, point));
            } catch (const Failure&) {
                library->second.clear();
            }
        }
        const auto found = std::find_if(library->second.begin(), library->second.end(),
                                        [&](const auto& each) { return EqualText(each.progID, provider.progID); });
        return found == library->second.end() ? nullptr : &*found;
    }

    [[nodiscard]] bool HasStart(const Provider& service) {
        const auto* info = ClassOf(service);
        return info && std::any_of(info->members.begin(), info->members.end(),
                                   [](const MemberInfo& member) { return EqualText(member.Name, "Start"); });
    }

    // Only the start service's Start is called, however many have one.
    void CheckStarts() {
        const Provider* start = nullptr;
        for (const Provider& service : m_model.services)
            if (BooleanOf(*service.element, "IsStartService", false))
                start = &service;
        for (const Provider& service : m_model.services) {
            const bool isCalledByAction = std::any_of(service.actions.begin(), service.actions.end(),
                                                      [](const auto& a) { return EqualText(a.procedure, "Start"); });
            if (&service == start || BooleanOf(*service.element, "IsStartService", false) || isCalledByAction ||
                !HasStart(service))
                continue;
            std::vector<Note> notes;
            if (start)
                notes.push_back({start->At("IsStartService"), "the start service"});
            Finding& finding = m_report.Add(
                Rule::StartNeverCalled, service.file->At(service.element->At()),
                "the class of " + service.Named() + " has a procedure Start, which is never called, as " +
                    (start ? Quoted(start->name) + " is the start service" : "no file says IsStartService"),
                start ? "do the work in InitializeEvent instead" : "write IsStartService=\"True\"", std::move(notes));
            if (!start)
                finding.edits = {SetEdit(*service.file, *service.element, "IsStartService", "True")};
        }
    }

    // While the bar is shown the tree of the current tab is disabled, which has to be there.
    void CheckProgress() {
        if (std::any_of(m_model.items.begin(), m_model.items.end(), [](const Provider& item) {
                return item.element->Value("Parent").empty() && !EqualText(item.element->Value("Type"), "Default");
            }))
            return;
        for (const Code::Library& library : m_code.Libraries())
            if (Code::Holds(library, "13ProgressScopeC") || Code::Holds(library, "13CVProgressBar4Show")) // as linked
                m_report.Add(Rule::ProgressWithoutExplorer, {library.path, {}},
                             "the plug-in " + Quoted(library.name) +
                                 " shows the progress bar, which fails without an explorer tab (91)",
                             "add <ExplorerItem Name=\"...\" Type=\"Folder\" PositionOrder=\"10\"/> to a file, or show "
                             "the progress otherwise");
    }

    // The objects of a kind come from the class above, or are added by AddToExplorer.
    void CheckChildren() {
        std::map<std::string, const Provider*> parents; // by folded name
        for (const Provider& item : m_model.items)
            parents.emplace(FoldText(item.name), &item);
        for (const Provider& kind : m_model.items) {
            const std::string_view type = kind.element->Value("Type");
            const auto parent = parents.find(FoldText(kind.element->Value("Parent")));
            if (EqualText(type, "Folder") || kind.element->Value("Parent").empty() || parent == parents.end())
                continue;
            const Provider& above = *parent->second;
            if (above.progID.empty() && EqualText(above.element->Value("Type"), "Folder") && !AddsToExplorer()) {
                m_report.Add(Rule::ChildrenNeverAdded, kind.At("Parent"),
                             "nothing of " + kind.Named() + " ever appears: " + Quoted(above.name) +
                                 " has no ProgID, so it has no children, and no plug-in calls AddToExplorer",
                             "write ProgID=\"Library.Class\" for " + Quoted(above.name) + ", whose object adds them",
                             {{above.file->At(above.element->At()), "the folder without a ProgID"}});
                continue;
            }
            const auto* info = ClassOf(above);
            if (!info)
                continue; // an object of a plug-in's own making, or none
            const std::size_t point = above.progID.find('.');
            for (const Code::Library& library : m_code.Libraries())
                if (EqualText(library.name, above.progID.substr(0, point)) && !MayAddChildren(library))
                    m_report.Add(Rule::ChildrenNeverAdded, kind.At("Parent"),
                                 "nothing of " + kind.Named() + " ever appears: the plug-in of " +
                                     Quoted(above.progID) + " neither fills colChildren nor calls AddToExplorer",
                                 "add the objects in the InitializeEvent of " + Quoted(above.progID),
                                 {{above.At("ProgID"), "the class above"}});
        }
    }

    // The names of the functions that do it, which a library holds when it calls them.
    [[nodiscard]] bool AddsToExplorer() const { return m_code.Holds("AddToExplorer"); }

    [[nodiscard]] bool MayAddChildren(const Code::Library& library) const {
        return AddsToExplorer() || Code::Holds(library, "KeyedCollection") ||
               Code::Holds(library, "ObjectCollection") || Code::Holds(library, "ChildCollection");
    }

    // The objects of a Default or FolderChild are of classes that no file names, so it may be any class.
    void CheckProcedures() {
        if (!m_code.IsThere())
            return;
        for (const Provider& item : m_model.items) {
            if (EqualText(item.element->Value("Type"), "Folder") || IsJudged(item))
                continue;
            for (const Action& action : item.actions) {
                if (action.procedure.empty() || MayHave(action.procedure))
                    continue;
                const auto nearest = Nearest(m_procedures, action.procedure);
                Finding& finding = m_report.Add(
                    Rule::UnknownMember, item.file->At(action.element->At("Action")),
                    "no class of a plug-in has a procedure " + Quoted(action.procedure) + ", so choosing " +
                        Quoted(action.name) + " of " + item.Named() + " fails (438)",
                    nearest ? "write " + Quoted(*nearest) : "write such a procedure in the class of its objects");
                if (nearest)
                    finding.edits = {ValueEdit(*item.file, *action.element->Find("Action"), *nearest)};
            }
        }
    }

    // Whether the program of the item's service has a class of its name, which has been looked at, or is missing.
    [[nodiscard]] bool IsJudged(const Provider& item) {
        ReadProcedures();
        for (const Provider& service : m_model.services) {
            if (service.file != item.file || EqualText(service.progID, frameworkProgID))
                continue;
            const std::string library = service.progID.substr(0, service.progID.find('.'));
            return m_classNames.contains(FoldText(library + "." + item.name)) ||
                   std::none_of(m_code.Libraries().begin(), m_code.Libraries().end(),
                                [&](const Code::Library& each) { return EqualText(each.name, library); });
        }
        return false;
    }

    static std::string InSmall(std::string text) {
        for (char& c : text)
            if (c >= 'A' && c <= 'Z')
                c = static_cast<char>(c + 32);
        return text;
    }

    // Whether any class has the procedure. Of a library only the texts are known, as it needn't list such classes.
    [[nodiscard]] bool MayHave(std::string_view procedure) {
        ReadProcedures();
        const std::string folded = InSmall(std::string(procedure));
        return m_isUnknown ||
               std::any_of(m_texts.begin(), m_texts.end(),
                           [&](const std::string& text) { return text.find(folded) != text.npos; }) ||
               std::any_of(m_procedures.begin(), m_procedures.end(),
                           [&](const std::string& each) { return EqualText(each, procedure); });
    }

    void ReadProcedures() {
        if (m_isRead)
            return;
        m_isRead = true;
        for (const Code::Library& library : m_code.Libraries()) {
            if (!m_factory.Processes()->FileOf(library.name)) {
                m_texts.push_back(InSmall(library.bytes));
                continue;
            }
            try {
                for (const auto& each : m_factory.Classes(library.name)) {
                    if (each.isExplorerItem)
                        m_classNames.insert(FoldText(each.progID));
                    for (const MemberInfo& member : each.members)
                        if (member.What == MemberInfo::Kind::Method)
                            m_procedures.emplace_back(member.Name);
                }
            } catch (const Failure&) {
                m_isUnknown = true; // a finding of its own
            }
        }
    }

    // A text of the code that is one letter from a name of the definitions.
    void CheckNames(const Code::Library& library) {
        struct Known {
            const Provider* service;
            const Window* window;
            std::string_view name;
        };
        std::vector<Known> known;
        for (const Provider& service : m_model.services)
            known.push_back({&service, nullptr, service.name});
        for (const Provider& item : m_model.items)
            known.push_back({&item, nullptr, item.name});
        for (const Window& window : m_model.windows)
            known.push_back({nullptr, &window, window.name});
        const std::set<std::string> names = Code::Names(library);
        for (const Known& each : known) {
            constexpr std::size_t shortest = 5;
            if (each.name.size() < shortest || names.contains(std::string(each.name)))
                continue;
            for (const std::string& name : names)
                if (IsSlip(name, each.name, known)) {
                    const Place place = each.service ? each.service->At("Name")
                                                     : each.window->file->At(each.window->element->At("Name"));
                    m_report.Add(Rule::UnknownNameInCode, Code::PlaceOf(library, name),
                                 "the code asks for " + Quoted(name) + ", and the definitions have " +
                                     Quoted(each.name) + ": the call fails",
                                 "write " + Quoted(each.name) + " in the code", {{place, "the name as it is defined"}});
                }
        }
    }

    template <class Names>
    [[nodiscard]] bool IsSlip(const std::string& written, std::string_view name, const Names& known) const {
        const std::size_t longer = std::max(written.size(), name.size());
        const std::size_t shorter = std::min(written.size(), name.size());
        // Another convention is another kind of name, such as that of a table in a database.
        const bool isAlike = !written.empty() && written.front() == name.front() &&
                             (written.find('_') != std::string::npos) == (name.find('_') != std::string_view::npos);
        if (longer - shorter > 1 || !isAlike ||
            std::any_of(known.begin(), known.end(), [&](const auto& each) { return EqualText(each.name, written); }))
            return false;
        const auto IsPlural = [](std::string_view one, std::string_view other) {
            return one.size() + 1 == other.size() && FoldText(other).ends_with('s') && other.starts_with(one);
        };
        return !IsPlural(written, name) && !IsPlural(name, written) && EditDistance(written, name) == 1;
    }

    Model& m_model;
    const Code& m_code;
    PluginFactory m_factory;
    Report& m_report;
    std::map<std::string, std::vector<PluginFactory::ClassInfo>> m_classes; // by folded library
    bool m_isRead = false;                                                  // the next three
    std::vector<std::string> m_texts;                                       // all bytes of a library, folded
    std::vector<std::string> m_procedures;                                  // of all classes of processes
    std::set<std::string> m_classNames;                                     // of processes, folded
    bool m_isUnknown = false;                                               // a process doesn't say what it has
};

} // namespace

void CheckCode(Model& model, const Code& code, const std::string& application, Report& report) {
    CodeCheck(model, code, application, report).Check();
}

} // namespace corvane::check
