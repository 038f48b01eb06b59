#include "adapters/process/HostFunctions.h"
#include "cli/commands/Commands.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Preferences.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/CVProgressBar.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace corvane::tool {

namespace {

using Json = nlohmann::ordered_json;

std::string TypeText(const ValueInfo& info) {
    switch (info.What) {
    case ValueType::Nothing:
        return "nothing";
    case ValueType::Boolean:
        return "boolean";
    case ValueType::Int32:
    case ValueType::Int64:
    case ValueType::Enumeration:
        return "integer";
    case ValueType::Float32:
    case ValueType::Float64:
        return "number";
    case ValueType::Text:
        return "text";
    case ValueType::Reference: {
        const std::string_view name = info.Class.substr(0, info.Class.find('<'));
        return std::string(name.substr(name.rfind(':') == std::string_view::npos ? 0 : name.rfind(':') + 1));
    }
    case ValueType::Any:
        break;
    }
    return "any";
}

Json MembersJson(const std::vector<MemberInfo>& members) {
    Json all = Json::array();
    for (const MemberInfo& member : members) {
        Json& json = all.emplace_back(Json{{"name", member.Name}});
        if (member.What == MemberInfo::Kind::Property) {
            json["property"] = TypeText(member.Result);
            json["writable"] = member.CanWrite;
            continue;
        }
        Json& parameters = json["parameters"] = Json::array();
        for (const ValueInfo& parameter : member.Parameters)
            parameters.push_back(TypeText(parameter));
        json["result"] = TypeText(member.Result);
    }
    return all;
}

template <class C>
Json Table() {
    const auto listed = C::Members.Listed();
    return MembersJson({listed.begin(), listed.end()});
}

int Describe() {
    std::cout << Json{
                     {"ActionItem", Table<ActionItem>()},
                     {"CVProgressBar", Table<CVProgressBar>()},
                     {"Dictionary", Table<Dictionary>()},
                     {"ExplorerManager", Table<ExplorerManager>()},
                     {"Framework", Table<Framework>()},
                     {"Host", Table<HostFunctions>()},
                     {"KeyedCollection", MembersJson(New<KeyedCollection<Ref<Object>>>()->MembersByName())},
                     {"MenuManager", Table<MenuManager>()},
                     {"NavigationManager", Table<NavigationManager>()},
                     {"Preferences", Table<Preferences>()},
                     {"ServiceManager", Table<ServiceManager>()},
                     {"Window", Table<Window>()},
                     {"WindowManager", Table<WindowManager>()},
                 }
                     .dump(2)
              << "\n";
    return Exit::Clean;
}

} // namespace

void AddDescribe(CLI::App& app, Run& run) {
    app.add_subcommand("describe", "Prints what can be called by name, and with which types, as JSON")
        ->callback([&run] { run = [] { return Describe(); }; });
}

} // namespace corvane::tool
