// A quick look over the text of definition files, for what the host must know before the library reads them: which
// services and menu entries an application brings of its own. It checks nothing; a bad file is the library's to report.
#pragma once

#include "corvane/base/Text.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace corvane::desktop {

// One start tag and its attributes, as they stand in the text.
struct DefinitionTag {
    std::string_view sElement;
    std::size_t iBegin = 0; // of its "<"
    std::size_t iEnd = 0;   // behind its ">"
    std::vector<std::pair<std::string_view, std::string_view>> aAttributes;

    [[nodiscard]] std::string_view Attribute(std::string_view sName) const; // empty when it is absent
};

// Shows the start tags of those elements, in order; each lives until the next. Comments and character data are passed
// over; a tag that doesn't end isn't among them.
void ForEachTag(std::string_view sText, std::initializer_list<std::string_view> aElements,
                const std::function<void(const DefinitionTag&)>& fnSee);
// All of them at once.
[[nodiscard]] std::vector<DefinitionTag> TagsIn(std::string_view sText,
                                                std::initializer_list<std::string_view> aElements);

// What the active definitions of an application hold.
class DefinitionScan {
public:
    // Of entries and shortcuts only those are remembered that could meet one of that definition; to be called before
    // Add, for each definition that is to be fitted in. Without it all are.
    void LookFor(std::string_view sDefinition);
    // A file whose Service element isn't active adds its name alone.
    void Add(std::string_view sText);
    void AddMenuItem(const DefinitionTag& oMenuItem, int nOrder);

    [[nodiscard]] bool HasService(std::string_view sName) const { return m_setServices.contains(sName); }
    [[nodiscard]] bool HasProgID(std::string_view sProgID) const { return m_setProgIDs.contains(sProgID); }
    // By the path, a point and the action's name; the action's name alone without a path.
    [[nodiscard]] bool HasMenuKey(std::string_view sKey) const { return m_setMenuKeys.contains(sKey); }
    [[nodiscard]] bool HasShortCut(std::string_view sShortCut) const { return m_setShortCuts.contains(sShortCut); }
    // The orders of the titles of the menu bar, by their names.
    [[nodiscard]] const auto& Titles() const { return m_mapTitles; }

private:
    using NameSet = std::unordered_set<std::string, TextHash, TextEqual>;
    NameSet m_setWantedActions;
    NameSet m_setWantedShortCuts;
    bool m_bWantsAll = true;
    NameSet m_setServices;
    NameSet m_setProgIDs;
    NameSet m_setMenuKeys;
    NameSet m_setShortCuts;
    std::unordered_map<std::string, int, TextHash, TextEqual> m_mapTitles;
};

[[nodiscard]] std::string MenuKey(const DefinitionTag& oMenuItem);

// The text of a definition of the host, fitted into an application: entries whose key is taken are left out, so are
// shortcuts that are taken, and each title gets a free place among the application's titles. oScan then knows them too.
[[nodiscard]] std::string FitDefinition(std::string_view sText, DefinitionScan& oScan);

} // namespace corvane::desktop
