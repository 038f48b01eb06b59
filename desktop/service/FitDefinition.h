// A definition of the host, fitted into the menus of an application.
#pragma once

#include "corvane/base/Text.h"
#include "corvane/services/MenuItemDef.h"
#include "corvane/services/ReadActions.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace corvane::desktop {

// What the menus of an application have taken of what a definition of the host asks for.
class MenusInUse {
public:
    // Of entries and shortcuts only those are remembered that could meet one of that definition.
    explicit MenusInUse(std::string_view definition);

    void Add(const MenuItemDefCollection& menuItemDefs);
    // A title of the menu bar.
    void AddTitle(std::string_view name, int order) { m_titles.emplace(name, order); }

    // By the path, a point and the action's name; the action's name alone without a path.
    [[nodiscard]] bool HasKey(std::string_view key) const { return m_keys.contains(key); }
    [[nodiscard]] bool HasShortCut(std::string_view shortCut) const { return m_shortCuts.contains(shortCut); }
    // The orders of the titles of the menu bar, by their names.
    [[nodiscard]] const auto& Titles() const { return m_titles; }
    // Of the entry that ends the application in the menu File; nothing without one.
    [[nodiscard]] std::optional<int> ExitOrder() const { return m_exitOrder; }

private:
    using NameSet = std::unordered_set<std::string, TextHash, TextEqual>;
    NameSet m_wantedPaths;
    NameSet m_wantedKeys;
    NameSet m_wantedShortCuts;
    NameSet m_keys;
    NameSet m_shortCuts;
    std::unordered_map<std::string, int, TextHash, TextEqual> m_titles;
    std::optional<int> m_exitOrder;
};

// The text of the definition without the entries whose key is taken and without the shortcuts that are taken, with a
// free place for each of its titles among the application's, and with the entries of File before the one that ends it.
[[nodiscard]] std::string FitDefinition(std::string_view text, MenusInUse inUse);

} // namespace corvane::desktop
