// Definition files for tests of menus, made of the entries that matter.
#pragma once

#include "tests/support/Application.h"

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
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

// Entries written as "title File - 1; item A File 2 after": kind, action, path, order, and a separator if there is one.
inline std::vector<Entry> Entries(const std::string& sEntries) {
    static const std::map<std::string, std::string> mapTypes{{"title", "MenuTitle"},
                                                             {"item", "MenuItem"},
                                                             {"button", "ToolbarItem"},
                                                             {"context", "ContextMenuItem"},
                                                             {"sub", "ContextMenuTitle"}};
    std::vector<Entry> aEntries;
    std::istringstream oEntries(sEntries);
    for (std::string sEntry; std::getline(oEntries, sEntry, ';');) {
        std::istringstream oWords(sEntry);
        Entry oEntry;
        std::string sSeparator;
        oWords >> oEntry.sType >> oEntry.sAction >> oEntry.sPath >> oEntry.sOrder >> sSeparator;
        oEntry.sType = mapTypes.at(oEntry.sType);
        if (oEntry.sPath == "-")
            oEntry.sPath.clear();
        if (!sSeparator.empty())
            oEntry.sMore = "Separator=\"" + sSeparator + "\"";
        aEntries.push_back(std::move(oEntry));
    }
    return aEntries;
}

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
