// The classes that a process says it has.
#pragma once

#include "corvane/base/Object.h"

#include <deque>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// A class of a process, as the process describes it.
struct ProcessClass {
    std::string progID;
    std::vector<MemberInfo> members;
    std::vector<ValueType> declared; // what each member says that it holds, for tools; Any where it doesn't say
    std::set<std::string> events;    // those that it handles
    std::vector<std::string> stored; // properties that are read without running code of the process
    bool isService = false;
    bool isExplorerItem = false;
    bool isPage = false;
};

class ProcessClasses {
public:
    // Takes the classes of a hello; those that are known by an earlier one stay, at the same address. Throws
    // json::exception for a hello that isn't one.
    void Read(const std::string& plugin, const nlohmann::json& hello);
    [[nodiscard]] const std::deque<ProcessClass>& All() const { return m_classes; }
    // Nothing when there is none of that ProgID, which is compared without regard to case.
    [[nodiscard]] const ProcessClass* Find(std::string_view progID) const;

private:
    [[nodiscard]] MemberInfo ReadMember(const nlohmann::json& member);

    std::deque<ProcessClass> m_classes;
    std::set<std::string> m_names; // of members, which MemberInfo only points to
};

} // namespace corvane
