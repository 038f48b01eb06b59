#include "desktop/service/FitDefinition.h"

#include "desktop/service/DefinitionTags.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <set>
#include <span>

namespace corvane::desktop {

namespace {

constexpr const char* fileMenu = "File";
constexpr int lastOrder = 2146; // beyond it, entries at 9,000 and more have no rank

// The standard titles in their order on a menu bar. A title that isn't among them belongs between the two halves.
constexpr std::array firstTitles{"File", "Edit", "View"};
constexpr std::array lastTitles{"Tools", "Window", "Help"};

bool IsAmong(std::span<const char* const> titles, std::string_view title) {
    return std::any_of(titles.begin(), titles.end(), [&](const char* s) { return EqualText(s, title); });
}

// A free order for a standard title: behind all that belongs before it and before all that belongs behind it, where
// there is space.
int FreeOrder(std::string_view title, const MenusInUse& inUse) {
    const auto first =
        std::find_if(firstTitles.begin(), firstTitles.end(), [&](const char* s) { return EqualText(s, title); });
    const bool isFirst = first != firstTitles.end();
    const auto last =
        std::find_if(lastTitles.begin(), lastTitles.end(), [&](const char* s) { return EqualText(s, title); });
    const std::span<const char* const> before(firstTitles.begin(), first);
    const std::span<const char* const> behind(last, lastTitles.end());
    std::set<int> taken;
    int low = 0;
    int high = lastOrder + 1;
    for (const auto& [other, order] : inUse.Titles()) {
        taken.insert(order);
        const bool isBefore = isFirst ? IsAmong(before, other) : !IsAmong(behind, other);
        if (isBefore)
            low = std::max(low, order);
        else
            high = std::min(high, order);
    }
    // The titles at the beginning are close behind what is before them, those at the end close before what is behind.
    if (low + 1 < high)
        return isFirst ? low + 1 : high - 1;
    int order = lastOrder;
    while (taken.contains(order))
        --order;
    return order;
}

// The place of a submenu among the entries of its title: it also says when its own entries are built, which has to be
// after it and before the next title's, and no entry of an application is likely to be at that fraction.
std::string OrderBelow(std::string_view title, const MenusInUse& inUse) {
    const auto it = inUse.Titles().find(std::string(title));
    return it == inUse.Titles().end() ? std::string() : std::to_string(it->second) + ".43";
}

// For an entry of File that would be behind the application's own "Exit", which is the last one: close before it, and
// behind those of the host that came before. Empty for others.
std::string OrderBeforeExit(const DefinitionTag& menuItem, const MenusInUse& inUse, int& count) {
    const std::optional<int> exit = inUse.ExitOrder();
    if (!exit || *exit < 1 || !EqualText(menuItem.Attribute("Path"), fileMenu) ||
        std::atoi(std::string(menuItem.Attribute("PositionOrder")).c_str()) <= *exit)
        return {};
    return std::to_string(*exit - 1) + "." + std::to_string(51 + count++);
}

std::string KeyOf(const DefinitionTag& menuItem) {
    const std::string_view path = menuItem.Attribute("Path");
    std::string key(path);
    if (!path.empty())
        key += '.';
    return key.append(menuItem.Attribute("ActionItem"));
}

} // namespace

MenusInUse::MenusInUse(std::string_view definition) {
    for (const DefinitionTag& tag : TagsIn(definition, {"MenuItem"})) {
        m_wantedPaths.emplace(tag.Attribute("Path"));
        m_wantedKeys.insert(KeyOf(tag));
        if (const std::string_view shortCut = tag.Attribute("ShortCutKey"); !shortCut.empty())
            m_wantedShortCuts.emplace(shortCut);
    }
}

void MenusInUse::Add(const MenuItemDefCollection& menuItemDefs) {
    const std::string* path = nullptr;
    bool isWanted = false;
    for (const Ref<MenuItemDef>& def : menuItemDefs) {
        if (path != &def->Path()) { // entries that are in a row share it
            path = &def->Path();
            isWanted = m_wantedPaths.contains(*path);
        }
        const bool isTitle = def->MenuType() == MenuType::fwMenuTitle;
        if (isWanted && (isTitle || def->MenuType() == MenuType::fwMenuItem))
            if (std::string key = def->Key(); m_wantedKeys.contains(key))
                m_keys.insert(std::move(key));
        if (isWanted && !isTitle && EqualText(*path, fileMenu) && EqualText(def->ActionItemDef()->Action(), "AppExit"))
            m_exitOrder = static_cast<int>(std::lround(def->PositionOrder()));
        if (isTitle && path->empty())
            AddTitle(def->ActionItemDef()->Name(), static_cast<int>(std::lround(def->PositionOrder())));
        if (!def->ShortCutKey().empty() && m_wantedShortCuts.contains(def->ShortCutKey()))
            m_shortCuts.insert(def->ShortCutKey());
    }
}

std::string FitDefinition(std::string_view text, MenusInUse inUse) {
    std::string fitted;
    std::size_t copied = 0;
    int beforeExitCount = 0;
    for (const DefinitionTag& tag : TagsIn(text, {"MenuItem"})) {
        fitted += text.substr(copied, tag.begin - copied);
        copied = tag.end;
        if (inUse.HasKey(KeyOf(tag)))
            continue;
        const std::string_view path = tag.Attribute("Path");
        const bool isAnyTitle = EqualText(tag.Attribute("Type"), "MenuTitle");
        const bool isTitle = isAnyTitle && path.empty();
        const int order = isTitle ? FreeOrder(tag.Attribute("ActionItem"), inUse) : 0;
        const std::string below = isAnyTitle && !isTitle ? OrderBelow(path, inUse) : std::string();
        const std::string beforeExit = isAnyTitle ? std::string() : OrderBeforeExit(tag, inUse, beforeExitCount);
        fitted += "<MenuItem";
        for (const auto& [name, value] : tag.attributes) {
            if (name == "ShortCutKey" && inUse.HasShortCut(value))
                continue;
            std::string written(value);
            if (name == "PositionOrder" && !beforeExit.empty())
                written = beforeExit;
            if (name == "PositionOrder" && isAnyTitle && (isTitle || !below.empty()))
                written = isTitle ? std::to_string(order) : below;
            fitted.append(" ").append(name).append("=\"").append(written).append("\"");
        }
        fitted += "/>";
        if (isTitle)
            inUse.AddTitle(tag.Attribute("ActionItem"), order); // the next one finds its place beside it
    }
    return fitted.append(text.substr(copied));
}

} // namespace corvane::desktop
