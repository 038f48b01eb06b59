#include "adapters/process/ProcessClasses.h"

#include "adapters/process/Messages.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace corvane {

using nlohmann::json;

namespace {

ValueType DeclaredBy(const json& member) {
    const std::string type = member.value("type", "");
    return type == "boolean"   ? ValueType::Boolean
           : type == "integer" ? ValueType::Int64
           : type == "number"  ? ValueType::Float64
           : type == "text"    ? ValueType::Text
                               : ValueType::Any;
}

} // namespace

void ProcessClasses::Read(const std::string& plugin, const json& hello) {
    for (const json& described : hello.at("classes")) {
        const std::string progID = plugin + "." + described.at("name").get<std::string>();
        auto it = std::find_if(m_classes.begin(), m_classes.end(),
                               [&](const ProcessClass& known) { return EqualText(known.progID, progID); });
        ProcessClass& known = it == m_classes.end() ? m_classes.emplace_back() : *it;
        const std::string kind = described.value("kind", "");
        known.progID = progID;
        known.isService = kind == "service";
        known.isExplorerItem = kind == "item";
        known.isPage = kind == "page";
        known.events.clear();
        for (const json& event : described.value("events", json::array()))
            known.events.insert(event.get<std::string>());
        known.members.clear();
        known.declared.clear();
        known.stored.clear();
        for (const json& member : described.value("members", json::array())) {
            known.members.push_back(ReadMember(member));
            known.declared.push_back(DeclaredBy(member));
            if (member.value("stored", false))
                known.stored.emplace_back(known.members.back().Name);
        }
    }
}

MemberInfo ProcessClasses::ReadMember(const json& member) {
    const std::string& name = *m_names.insert(member.at("name").get<std::string>()).first;
    if (member.value("property", false))
        return {name, MemberInfo::Kind::Property, 0, member.value("writable", false), {}, {ValueType::Any}};
    const LongLong parameters = member.contains("parameters") ? WholeNumber(member.at("parameters")) : 0;
    return {name, MemberInfo::Kind::Method, static_cast<std::size_t>(parameters), false, {}, {ValueType::Any}};
}

const ProcessClass* ProcessClasses::Find(std::string_view progID) const {
    const auto it = std::find_if(m_classes.begin(), m_classes.end(),
                                 [&](const ProcessClass& known) { return EqualText(known.progID, progID); });
    return it == m_classes.end() ? nullptr : &*it;
}

} // namespace corvane
