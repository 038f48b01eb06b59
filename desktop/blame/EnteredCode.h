// Whose code has been entered and not left yet, as scopes within one another; the innermost is marked.
#pragma once

#include "corvane/base/Object.h"
#include "desktop/blame/CrashMarker.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane::desktop {

class EnteredCode {
public:
    explicit EnteredCode(CrashMarker& oMarker) : m_oMarker(oMarker) {}

    void Enter(std::string sWhat);
    void Enter(const Object& oObject); // what is known of it
    void Leave();
    // An object of that class has been made.
    void Note(const Object& oObject, std::string_view sProgID);

private:
    CrashMarker& m_oMarker;
    std::vector<std::string> m_aScopes;
    std::unordered_map<Long, std::string> m_mapKnown; // by the object's key
};

} // namespace corvane::desktop
