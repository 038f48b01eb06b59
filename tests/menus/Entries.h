// Definition files for tests of menus, made of the entries that matter.
#pragma once

#include "tests/support/Application.h"

#include <set>
#include <string>
#include <vector>

namespace corvane::testing {

// Its action calls the procedure "Do" and the action's name; its caption is the action's name.
struct Entry {
    std::string sType; // as in a definition file
    std::string sAction;
    std::string sPath;
    std::string sOrder;
    std::string sMore = {}; // further attributes
};

// The groups "ActionItems" and "Menus" of these entries.
inline std::string Groups(const std::vector<Entry>& aEntries, const std::string& sActionAttributes = {}) {
    std::set<std::string> setActions;
    std::string sActions;
    std::string sMenus;
    for (const auto& oEntry : aEntries) {
        if (setActions.insert(oEntry.sAction).second)
            sActions += "<ActionItem Name=\"" + oEntry.sAction + "\" Action=\"Do" + oEntry.sAction + "\" " +
                        sActionAttributes + "/>";
        sMenus += "<MenuItem Type=\"" + oEntry.sType + "\" ActionItem=\"" + oEntry.sAction + "\" Path=\"" +
                  oEntry.sPath + "\" PositionOrder=\"" + oEntry.sOrder + "\" Caption=\"#" + oEntry.sAction + "\" " +
                  oEntry.sMore + "/>";
    }
    return "<ActionItems>" + sActions + "</ActionItems><Menus>" + sMenus + "</Menus>";
}

} // namespace corvane::testing
