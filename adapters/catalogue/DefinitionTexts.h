// The texts of definition files that users see, each with a key that says where it is. The key holds names alone,
// so it outlives changes of the text, of the order, and of the file in which the element is.
#pragma once

#include "corvane/platform/IXmlService.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace corvane {

struct DefinitionText {
    std::string key;
    std::string text;
    std::string file; // without a folder
    Long line = 0;    // 0 where file is the whole place
};

class DefinitionTexts {
public:
    // Adds those of one file, in its order. service is its root element. A text that is several times under one
    // key, such as the name of a toolbar, is there once.
    void Add(const Ref<IXmlNode>& service, const std::string& file);
    [[nodiscard]] const std::vector<DefinitionText>& All() const { return m_texts; }

private:
    void Add(const IXmlNode& node, const char* attribute, std::string key);
    void AddActions(const IXmlNode& owner, const std::string& ownerText);
    void AddExplorerItem(const IXmlNode& item);
    void AddPages(const std::vector<Ref<IXmlNode>>& pages, const std::string& window);

    std::string m_file;
    std::vector<DefinitionText> m_texts;
    std::unordered_set<std::string> m_known;
};

// What an action or an entry belongs to: "Service Data", "ExplorerItem Study", "Window Chart/Page Pages.Scatter",
// "Preferences/Page Pages.Figures".
[[nodiscard]] std::string ServiceKey(std::string_view service);
[[nodiscard]] std::string ExplorerItemKey(std::string_view item);
[[nodiscard]] std::string WindowKey(std::string_view window);
[[nodiscard]] std::string PageKey(std::string_view window, std::string_view progID); // no window for preferences

// The keys of the texts themselves. owner is one of the above, type a word of the attribute Type.
[[nodiscard]] std::string DescriptionKey(std::string_view owner, std::string_view action);
[[nodiscard]] std::string EntryKey(std::string_view owner, std::string_view type, std::string_view path,
                                   std::string_view action, std::string_view attribute);
[[nodiscard]] std::string ToolbarKey(std::string_view path); // its name is its caption
[[nodiscard]] std::string AttributeKey(std::string_view owner, std::string_view attribute);

} // namespace corvane
