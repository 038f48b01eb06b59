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
    explicit EnteredCode(CrashMarker& marker) : m_marker(marker) {}

    void Enter(std::string what);
    void Enter(const Object& object); // what is known of it
    void Leave();
    [[nodiscard]] std::size_t Depth() const { return m_scopes.size(); }
    // An object of that class has been made.
    void Note(const Object& object, std::string_view progID);

private:
    CrashMarker& m_marker;
    std::vector<std::string> m_scopes;
    std::unordered_map<Long, std::string> m_known; // by the object's key
};

} // namespace corvane::desktop
