#include "adapters/catalogue/DefinitionTexts.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

// As it is written in this reference, however the file writes it.
std::string TypeWord(std::string_view type) {
    static constexpr std::array words{"MenuTitle", "MenuItem", "ToolbarItem", "ContextMenuItem", "ContextMenuTitle"};
    const auto it = std::find_if(words.begin(), words.end(), [&](const char* s) { return EqualText(s, type); });
    return it == words.end() ? std::string(type) : *it;
}

std::string ValueOf(const IXmlNode& node, const char* attribute) {
    return node.Attribute(attribute).value_or("");
}

std::string Joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts)
        text += part;
    return text;
}

} // namespace

void DefinitionTexts::Add(const Ref<IXmlNode>& service, const std::string& file) {
    m_file = file;
    AddActions(*service, ServiceKey(ValueOf(*service, "Name")));
    for (const auto& item : service->SelectNodes("./ExplorerItems/ExplorerItem"))
        AddExplorerItem(*item);
    for (const auto& window : service->SelectNodes("./Windows/Window")) {
        const std::string windowName = ValueOf(*window, "Name");
        Add(*window, "Caption", AttributeKey(WindowKey(windowName), "Caption"));
        AddPages(window->SelectNodes("./Page"), windowName);
    }
    AddPages(service->SelectNodes("./Preferences/Page"), {});
}

void DefinitionTexts::Add(const IXmlNode& node, const char* attribute, std::string key) {
    std::string text = ValueOf(node, attribute);
    if (text.find_first_not_of(" \t\r\n") != std::string::npos && m_known.insert(key + '\n' + text).second)
        m_texts.push_back({std::move(key), std::move(text), m_file, node.Line()});
}

void DefinitionTexts::AddActions(const IXmlNode& owner, const std::string& ownerText) {
    for (const auto& action : owner.SelectNodes("./ActionItems/ActionItem"))
        Add(*action, "Description", DescriptionKey(ownerText, ValueOf(*action, "Name")));
    for (const auto& entry : owner.SelectNodes("./Menus/MenuItem")) {
        const std::string type = TypeWord(ValueOf(*entry, "Type"));
        const std::string path = ValueOf(*entry, "Path");
        for (const char* attribute : {"Caption", "Tip"})
            Add(*entry, attribute, EntryKey(ownerText, type, path, ValueOf(*entry, "ActionItem"), attribute));
        if (type == "ToolbarItem")
            Add(*entry, "Path", ToolbarKey(path));
    }
}

// The name itself is shown of what the library makes: a tab, and a folder without another text.
void DefinitionTexts::AddExplorerItem(const IXmlNode& item) {
    const std::string key = ExplorerItemKey(ValueOf(item, "Name"));
    const std::string type = ValueOf(item, "Type");
    const bool isFolder = EqualText(type, "Folder") && ValueOf(item, "DisplayName").empty();
    if (isFolder || (ValueOf(item, "Parent").empty() && !EqualText(type, "Default")))
        Add(item, "Name", AttributeKey(key, "Name"));
    Add(item, "DisplayName", AttributeKey(key, "DisplayName"));
    AddActions(item, key);
}

void DefinitionTexts::AddPages(const std::vector<Ref<IXmlNode>>& pages, const std::string& window) {
    for (const auto& page : pages) {
        const std::string key = PageKey(window, ValueOf(*page, "PageProgID"));
        Add(*page, "Caption", AttributeKey(key, "Caption"));
        AddActions(*page, key);
    }
}

std::string ServiceKey(std::string_view service) {
    return Joined({"Service ", service});
}

std::string ExplorerItemKey(std::string_view item) {
    return Joined({"ExplorerItem ", item});
}

std::string WindowKey(std::string_view window) {
    return Joined({"Window ", window});
}

std::string PageKey(std::string_view window, std::string_view progID) {
    return Joined({window.empty() ? "Preferences" : WindowKey(window), "/Page ", progID});
}

std::string DescriptionKey(std::string_view owner, std::string_view action) {
    return Joined({owner, "/ActionItem ", action, "/Description"});
}

std::string EntryKey(std::string_view owner, std::string_view type, std::string_view path, std::string_view action,
                     std::string_view attribute) {
    return Joined({owner, "/", type, " ", path, path.empty() ? "" : ".", action, "/", attribute});
}

std::string ToolbarKey(std::string_view path) {
    return Joined({"Toolbar ", path});
}

std::string AttributeKey(std::string_view owner, std::string_view attribute) {
    return Joined({owner, "/", attribute});
}

} // namespace corvane
