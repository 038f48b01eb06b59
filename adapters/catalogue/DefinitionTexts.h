// The texts of definition files that people see, each with a key that says where it stands. The key holds names alone,
// so it outlives changes of the text, of the order, and of the file in which the element stands.
#pragma once

#include "corvane/platform/IXmlService.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace corvane {

struct DefinitionText {
    std::string sKey;
    std::string sText;
    std::string sFile; // without a folder
    Long lLine = 0;
};

class DefinitionTexts {
public:
    // Adds those of one file, in its order. oService is its root element. A text that stands several times under one
    // key, such as the name of a toolbar, is there once.
    void Add(const Ref<IXmlNode>& oService, const std::string& sFile);
    [[nodiscard]] const std::vector<DefinitionText>& All() const { return m_aTexts; }

private:
    void Add(const IXmlNode& oNode, const char* sAttribute, std::string sKey);
    void AddActions(const IXmlNode& oOwner, const std::string& sOwner);
    void AddExplorerItem(const IXmlNode& oItem);
    void AddPages(const std::vector<Ref<IXmlNode>>& aPages, const std::string& sWindow);

    std::string m_sFile;
    std::vector<DefinitionText> m_aTexts;
    std::unordered_set<std::string> m_setKnown;
};

// What an action or an entry belongs to: "Service Data", "ExplorerItem Study", "Window Chart/Page Pages.Scatter",
// "Preferences/Page Pages.Figures".
[[nodiscard]] std::string ServiceKey(std::string_view sService);
[[nodiscard]] std::string ExplorerItemKey(std::string_view sItem);
[[nodiscard]] std::string WindowKey(std::string_view sWindow);
[[nodiscard]] std::string PageKey(std::string_view sWindow, std::string_view sProgID); // no window for preferences

// The keys of the texts themselves. sOwner is one of the above, sType a word of the attribute Type.
[[nodiscard]] std::string DescriptionKey(std::string_view sOwner, std::string_view sAction);
[[nodiscard]] std::string EntryKey(std::string_view sOwner, std::string_view sType, std::string_view sPath,
                                   std::string_view sAction, std::string_view sAttribute);
[[nodiscard]] std::string ToolbarKey(std::string_view sPath); // its name is its caption
[[nodiscard]] std::string AttributeKey(std::string_view sOwner, std::string_view sAttribute);

} // namespace corvane
