#include "analysis/MenuPaths.h"

#include "adapters/common/Nearest.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane::check {

namespace {

// As the key of a title would be written: without mnemonics, with points between menus, and none at the ends.
std::string AsKey(std::string_view path) {
    std::string key(path);
    std::replace_if(
        key.begin(), key.end(), [](char c) { return c == '/' || c == '\\' || c == '>' || c == '|'; }, '.');
    std::erase(key, '#');
    std::erase(key, '&');
    while (key.ends_with(' '))
        key.pop_back();
    while (key.starts_with(' '))
        key.erase(0, 1);
    while (key.ends_with('.'))
        key.pop_back();
    while (key.starts_with('.'))
        key.erase(0, 1);
    return key;
}

// Whether the name is the last part of the path, and not all of it.
bool EndsIn(std::string_view path, std::string_view name) {
    const std::size_t point = path.rfind('.');
    return point != std::string_view::npos && EqualText(path.substr(point + 1), name);
}

} // namespace

std::optional<std::string> MenuPaths::Meant(std::string_view path) {
    const std::string plain = AsKey(path);
    std::vector<std::string> found;
    for (const std::string& title : Titles()) {
        if (EqualText(title, plain))
            return title;
        if (EndsIn(title, plain) || EndsIn(plain, title))
            found.push_back(title);
    }
    if (found.size() == 1)
        return found.front();
    constexpr std::size_t shortest = 3;
    if (auto nearest = Nearest(Titles(), plain); nearest && plain.size() >= shortest)
        return nearest;
    return TitleOfCaption(plain);
}

// Written as users read it.
std::optional<std::string> MenuPaths::TitleOfCaption(const std::string& caption) const {
    for (const auto& [name, bar] : m_plan.Bars()) {
        if (!bar.title)
            continue;
        std::string text(bar.title->Caption());
        std::erase(text, '#');
        if (EqualText(text, caption))
            return bar.name;
    }
    return std::nullopt;
}

std::string MenuPaths::Cure(std::string_view path) {
    if (path.empty())
        return "write Path=\"File\", or the key of another title";
    if (const auto meant = Meant(path))
        return "write " + Quoted(*meant);
    if (const auto inactive = InactiveTitle(m_model, path))
        return "write Active=\"True\" in " + Quoted(inactive->file->name) + ", which has the title";
    const std::size_t point = path.rfind('.');
    return "add <MenuItem Type=\"MenuTitle\" ActionItem=\"" + std::string(path.substr(point + 1)) + "\"" +
           (point == std::string_view::npos ? "" : " Path=\"" + std::string(path.substr(0, point)) + "\"") +
           " PositionOrder=\"...\"/>";
}

bool MenuPaths::IsAskedFor(std::string_view title) {
    if (!m_askedRead)
        ReadAsked();
    return m_asked.contains(FoldText(title));
}

void MenuPaths::ReadAsked() {
    m_askedRead = true;
    std::set<std::string> titles;
    for (const std::string& title : Titles())
        titles.insert(FoldText(title));
    for (const auto& file : m_model.files) {
        if (!file->active)
            continue;
        for (const Element& element : std::span(file->root, 1 + file->root->below)) {
            std::string path = FoldText(element.Value("Path"));
            if (EqualText(element.Value("Type"), "ToolbarItem") || !m_asked.insert(path).second)
                continue; // the Path of a button is the name of a toolbar
            if (const auto nearest = titles.contains(path) ? std::nullopt : Meant(path))
                m_asked.insert(FoldText(*nearest));
        }
    }
}

const std::vector<std::string>& MenuPaths::Titles() {
    if (!m_titlesRead)
        for (const auto& [name, bar] : m_plan.Bars())
            if (bar.title)
                m_titles.push_back(bar.name);
    m_titlesRead = true;
    return m_titles;
}

} // namespace corvane::check
