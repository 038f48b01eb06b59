#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Checks.h"
#include "analysis/Code.h"
#include "corvane/base/PluginExport.h"
#include "corvane/base/Text.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/CVProgressBar.h"
#include "corvane/windows/IWindowFormFactory.h"
#include "corvane/windows/WindowManager.h"

#include <algorithm>
#include <array>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::check {

namespace {

class PluginCheck {
public:
    PluginCheck(const std::string& application, Report& report)
        : m_application(application), m_factory(JoinPath(application, "plugins")), m_report(report) {}

    void Check(const Provider& provider) {
        const bool page = provider.kind == ProviderKind::Page || provider.kind == ProviderKind::PreferencePage;
        const std::size_t point = provider.progID.find('.');
        if (point == std::string::npos || point == 0)
            return;
        const Place place = provider.At(page ? "PageProgID" : "ProgID");
        const Library& library = LibraryOf(provider.progID.substr(0, point), place);
        if (!library.usable)
            return;
        const auto it = std::find_if(library.classes.begin(), library.classes.end(),
                                     [&](const auto& o) { return EqualText(o.progID, provider.progID); });
        if (it == library.classes.end()) {
            // What is before the point would make all names alike.
            std::vector<std::string> names;
            for (const auto& classInfo : library.classes)
                names.push_back(classInfo.progID.substr(point + 1));
            const auto nearest = Nearest(names, std::string_view(provider.progID).substr(point + 1));
            m_report.Add(Rule::UnknownClass, place,
                         "the plug-in has no class " + Quoted(provider.progID) + ", so " + provider.Named() +
                             " can't be made (429)",
                         nearest ? "write " + Quoted(provider.progID.substr(0, point + 1) + *nearest)
                                 : "add " + (IsProcess(provider.progID)
                                                 ? "such a class to its program"
                                                 : "Class<...>(" + Quoted(provider.progID) + ") to CORVANE_PLUGIN"));
            if (nearest)
                m_report.Last().edits = {ValueEdit(*provider.file,
                                                   *provider.element->Find(page ? "PageProgID" : "ProgID"),
                                                   provider.progID.substr(0, point + 1) + *nearest)};
            return;
        }
        CheckMembers(provider, *it);
        if (IsProcess(provider.progID)) {
            if (provider.kind == ProviderKind::Service && !it->isService)
                m_report.Add(Rule::NoServiceAccess, place,
                             "the class " + it->progID + " isn't a service, so nothing is asked of it at start and end",
                             "derive it from corvane.Service");
            return;
        }
        if (provider.kind == ProviderKind::Service && LacksServiceAccess(provider.progID))
            m_report.Add(Rule::NoServiceAccess, place,
                         "the class " + it->progID +
                             " has no IServiceAccess, so the start fails (13) and the services behind it never begin",
                         "write IServiceAccess among the bases of the class, and its member Service");
    }

    // The objects of a kind whose class is named as the kind, which is what new services have.
    void CheckKind(const Provider& item, const Provider& service) {
        const std::string library = service.progID.substr(0, service.progID.find('.'));
        if (!IsProcess(service.progID))
            return;
        for (const auto& each : LibraryOf(library, service.At("ProgID")).classes)
            if (each.isExplorerItem && EqualText(each.progID, library + "." + item.name))
                CheckMembers(item, each);
    }

    void CheckFramework(const Provider& service) {
        CheckMembers(service, {frameworkProgID, Class<Framework>(frameworkProgID).Members()});
    }

    void CheckWindows(const Model& model) {
        std::vector<std::string> texts;
        const Code code(m_application);
        for (const Code::Library& library : code.Libraries())
            texts.push_back(FoldAscii(library.bytes));
        for (const Window& window : model.windows) {
            // Compilers cut short texts into pieces of eight and of four bytes.
            const std::size_t pieceCount = window.name.size() >= 8 ? 8 : 4;
            if (window.name.size() < pieceCount)
                continue;
            const std::string piece = FoldAscii(window.name.substr(0, pieceCount));
            if (std::none_of(texts.begin(), texts.end(),
                             [&](const std::string& text) { return text.find(piece) != std::string::npos; }))
                m_report.Add(Rule::UnreachableWindow, window.file->At(window.element->At("Name")),
                             "no plug-in names the window " + Quoted(window.name) + ", so nothing opens it",
                             "call OpenWindow(" + Quoted(window.name) + ", ...) somewhere, or remove it");
        }
    }

private:
    // An object has to be made to know. That is done in a process of its own, for it is the plug-in's code that runs:
    // whatever else becomes of it says nothing.
    [[nodiscard]] bool LacksServiceAccess(const std::string& progId) {
        constexpr int lacking = 77;
        constexpr unsigned seconds = 5;
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(seconds);
            int result = 0;
            try {
                result = m_factory.Create(progId).TryAs<IServiceAccess>() ? 0 : lacking;
            } catch (...) {
                result = 0;
            }
            ::_exit(result);
        }
        int status = 0;
        return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
               WEXITSTATUS(status) == lacking;
    }

    [[nodiscard]] bool IsProcess(std::string_view progID) const {
        return m_factory.Processes()->FileOf(progID.substr(0, progID.find('.'))).has_value();
    }

    struct Library {
        bool usable = false;
        std::vector<PluginFactory::ClassInfo> classes;
    };

    static std::string FoldAscii(std::string text) {
        for (char& c : text)
            if (c >= 'A' && c <= 'Z')
                c = static_cast<char>(c + 32);
        return text;
    }

    const Library& LibraryOf(const std::string& name, const Place& place) {
        const auto [it, isNew] = m_libraries.try_emplace(FoldText(name));
        if (!isNew || !FindPath(m_factory.PathOf(name)))
            return it->second; // that it is missing is reported already
        try {
            it->second.classes = m_factory.Classes(name);
            it->second.usable = true;
        } catch (const Failure& failure) {
            const std::string& text = failure.Description;
            const std::size_t why = text.find(": ");
            if (const auto file = m_factory.Processes()->FileOf(name))
                m_report.Add(Rule::UnusablePlugin, place,
                             "the program of " + Quoted(name) + " can't be started: " + ReasonIn(text, name),
                             "correct it; plugins/" + name + "/" + file->substr(file->rfind('/') + 1) +
                                 " says how it is started");
            else
                m_report.Add(Rule::UnusablePlugin, place,
                             "the plug-in " + Quoted(name) +
                                 " can't be loaded: " + (why == std::string::npos ? text : text.substr(why + 2)),
                             "build the plug-in again");
        }
        return it->second;
    }

    // Without what has been said already, and what is for users of a running application.
    static std::string ReasonIn(std::string text, const std::string& name) {
        for (const std::string& begin : {"The service " + Quoted(name) + " can't be started: ",
                                         "The service " + Quoted(name) + " ", std::string("The file ")})
            if (text.starts_with(begin)) {
                text.erase(0, begin.size());
                break;
            }
        for (const char* end : {" while it was starting", ". Its next command"})
            if (const std::size_t advice = text.find(end); advice != std::string::npos)
                text.resize(advice);
        if (const std::size_t file = text.find(" can't be used: "); text.starts_with('"') && file != std::string::npos)
            text.erase(0, file + 16);
        return text;
    }

    void CheckMembers(const Provider& provider, const PluginFactory::ClassInfo& classInfo) {
        const File& file = *provider.file;
        for (const Action& action : provider.actions)
            if (!action.procedure.empty())
                CheckMember(classInfo, action.procedure, action.PassesItself() ? 1 : 0, file,
                            action.element->At("Action"), action.element);
        if (provider.kind == ProviderKind::ExplorerItem)
            CheckCalled(provider, classInfo);
        if (provider.kind == ProviderKind::Service && BooleanOf(*provider.element, "IsStartService", false))
            CheckMember(classInfo, "Start", 0, file, provider.element->At("IsStartService"));
    }

    // Members that the host calls by their names, if an item has them, with one argument each.
    void CheckCalled(const Provider& item, const PluginFactory::ClassInfo& classInfo) {
        struct Called {
            std::string_view name;
            const char* argument;
            const char* follows;
        };
        static constexpr auto called =
            std::to_array<Called>({{"TakesSeveral", "the name of an action", "no command takes several items"},
                                   {"CanDrop", "what is dropped", "nothing can be dropped on it"},
                                   {"Drop", "what has been dropped", "every drop fails"},
                                   {"LazyChildren", "what takes the children", "it can't be opened"}});
        const Place place = item.At(item.progID.empty() ? "Name" : "ProgID");
        const auto Find = [&](std::string_view name) {
            return std::find_if(classInfo.members.begin(), classInfo.members.end(),
                                [&](const MemberInfo& member) { return EqualText(member.Name, name); });
        };
        for (const Called& each : called)
            if (const auto it = Find(each.name);
                it != classInfo.members.end() && (it->What == MemberInfo::Kind::Property || it->ParameterCount != 1))
                m_report.Add(Rule::WrongArguments, place,
                             classInfo.progID + "." + std::string(it->Name) +
                                 (it->What == MemberInfo::Kind::Property ? " is a property"
                                                                         : " takes " + Arguments(it->ParameterCount)) +
                                 " and is given " + each.argument + ", so " + each.follows + " (450)",
                             "let it be a procedure that takes one argument");
        if (Find("CanDrop") != classInfo.members.end() && Find("Drop") == classInfo.members.end())
            m_report.Add(Rule::UnknownMember, place,
                         "the class " + classInfo.progID + " has a member \"CanDrop\" and no \"Drop\", so every drop " +
                             "that it accepts fails (438)",
                         "add a procedure Drop that takes what has been dropped");
    }

    void CheckMember(const PluginFactory::ClassInfo& classInfo, std::string_view memberName, std::size_t arguments,
                     const File& file, Spot spot, const Element* action = nullptr) {
        const auto it = std::find_if(classInfo.members.begin(), classInfo.members.end(),
                                     [&](const MemberInfo& o) { return EqualText(o.Name, memberName); });
        if (it == classInfo.members.end()) {
            std::vector<std::string> names;
            for (const MemberInfo& member : classInfo.members)
                names.emplace_back(member.Name);
            const auto nearest = memberName == "Start" ? std::nullopt : Nearest(names, memberName);
            m_report.Add(
                Rule::UnknownMember, file.At(spot),
                "the class " + classInfo.progID + " has no member " + Quoted(memberName) +
                    (memberName == "Start" ? ", so the start fails (438)" : ", so choosing the command fails (438)"),
                nearest                       ? "write " + Quoted(*nearest)
                : IsProcess(classInfo.progID) ? "write a procedure of that name"
                                              : "add Method(" + Quoted(memberName) + ", ...) to its Members");
            if (nearest)
                m_report.Last().edits = {MemberEdit(file, spot, *nearest)};
        } else if (it->What == MemberInfo::Kind::Method && it->ParameterCount != arguments) {
            m_report.Add(Rule::WrongArguments, file.At(spot),
                         classInfo.progID + "." + std::string(it->Name) + " takes " + Arguments(it->ParameterCount) +
                             " and is given " + (arguments == 0 ? "none" : "one") + ", so " +
                             (memberName == "Start" ? "the start fails" : "choosing the command fails") + " (450)",
                         it->ParameterCount > 1 || memberName == "Start"
                             ? "let the procedure take " + Arguments(arguments)
                         : arguments == 0 ? "write PassActionItemParam=\"True\""
                                          : "write PassActionItemParam=\"False\"");
            if (action && it->ParameterCount <= 1)
                m_report.Last().edits = {
                    SetEdit(file, *action, "PassActionItemParam", arguments == 0 ? "True" : "False")};
        } else if (arguments == 1 && it->Parameters.size() == 1 && !TakesAction(it->Parameters.front())) {
            m_report.Add(Rule::WrongArguments, file.At(action->At("PassActionItemParam")),
                         classInfo.progID + "." + std::string(it->Name) + " takes " + TypeText(it->Parameters.front()) +
                             " and is given the ActionItem, so choosing the " + "command fails (13)",
                         "let the procedure take a const Ref<ActionItem>&");
        }
    }

    // What a command hands over is its action.
    [[nodiscard]] static bool TakesAction(const ValueInfo& parameter) {
        return parameter.What == ValueType::Any ||
               (parameter.What == ValueType::Reference &&
                (parameter.Class.empty() || parameter.Class == "corvane::ActionItem" ||
                 parameter.Class == "corvane::Object"));
    }

    static std::string TypeText(const ValueInfo& value) {
        switch (value.What) {
        case ValueType::Boolean:
            return "a bool";
        case ValueType::Int32:
        case ValueType::Int64:
        case ValueType::Enumeration:
            return "a whole number";
        case ValueType::Float32:
        case ValueType::Float64:
            return "a number";
        case ValueType::Text:
            return "a text";
        case ValueType::Reference:
            return "a " + std::string(value.Class);
        case ValueType::Nothing:
        case ValueType::Any:
            break;
        }
        return "something else";
    }

    static std::string Arguments(std::size_t count) {
        return count == 0 ? "no argument" : count == 1 ? "one argument" : std::to_string(count) + " arguments";
    }

    static Edit MemberEdit(const File& file, Spot spot, const std::string& name) {
        const auto begin = static_cast<std::size_t>(spot - file.bytes.data());
        return {file.path, begin, file.bytes.find(file.bytes[begin - 1], begin), AsValue(name)};
    }

    std::string m_application;
    PluginFactory m_factory;
    Report& m_report;
    std::map<std::string, Library> m_libraries; // by folded name
};

} // namespace

void CheckPlugins(Model& model, const std::string& application, bool load, Report& report) {
    PluginCheck check(application, report);
    for (const Provider& service : model.services) {
        if (EqualText(service.progID, frameworkProgID))
            check.CheckFramework(service);
        else if (load)
            check.Check(service);
    }
    if (!load)
        return;
    // The objects of other items are made by plug-ins, as they like.
    for (const Provider& item : model.items)
        if (EqualText(item.element->Value("Type"), "Folder"))
            check.Check(item);
        else
            for (const Provider& service : model.services)
                if (service.file == item.file)
                    check.CheckKind(item, service);
    for (const auto* pages : {&model.pages, &model.preferencePages})
        for (const Provider& page : *pages)
            if (!IsFormAlone(page, application))
                check.Check(page);
    check.CheckWindows(model);
}

} // namespace corvane::check
