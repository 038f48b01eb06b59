#include "adapters/catalogue/DefinitionTexts.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

// As it is written in this reference, however the file writes it.
std::string TypeWord(std::string_view sType) {
    static constexpr std::array aWords{"MenuTitle", "MenuItem", "ToolbarItem", "ContextMenuItem", "ContextMenuTitle"};
    const auto it = std::find_if(aWords.begin(), aWords.end(), [&](const char* s) { return EqualText(s, sType); });
    return it == aWords.end() ? std::string(sType) : *it;
}

std::string ValueOf(const IXmlNode& oNode, const char* sAttribute) {
    return oNode.Attribute(sAttribute).value_or("");
}

std::string Joined(std::initializer_list<std::string_view> aParts) {
    std::string sText;
    for (const std::string_view sPart : aParts)
        sText += sPart;
    return sText;
}

} // namespace

void DefinitionTexts::Add(const Ref<IXmlNode>& oService, const std::string& sFile) {
    m_sFile = sFile;
    AddActions(*oService, ServiceKey(ValueOf(*oService, "Name")));
    for (const auto& oItem : oService->SelectNodes("./ExplorerItems/ExplorerItem"))
        AddExplorerItem(*oItem);
    for (const auto& oWindow : oService->SelectNodes("./Windows/Window")) {
        const std::string sWindow = ValueOf(*oWindow, "Name");
        Add(*oWindow, "Caption", AttributeKey(WindowKey(sWindow), "Caption"));
        AddPages(oWindow->SelectNodes("./Page"), sWindow);
    }
    AddPages(oService->SelectNodes("./Preferences/Page"), {});
}

void DefinitionTexts::Add(const IXmlNode& oNode, const char* sAttribute, std::string sKey) {
    std::string sText = ValueOf(oNode, sAttribute);
    if (sText.find_first_not_of(" \t\r\n") != std::string::npos && m_setKnown.insert(sKey + '\n' + sText).second)
        m_aTexts.push_back({std::move(sKey), std::move(sText), m_sFile, oNode.Line()});
}

void DefinitionTexts::AddActions(const IXmlNode& oOwner, const std::string& sOwner) {
    for (const auto& oAction : oOwner.SelectNodes("./ActionItems/ActionItem"))
        Add(*oAction, "Description", DescriptionKey(sOwner, ValueOf(*oAction, "Name")));
    for (const auto& oEntry : oOwner.SelectNodes("./Menus/MenuItem")) {
        const std::string sType = TypeWord(ValueOf(*oEntry, "Type"));
        const std::string sPath = ValueOf(*oEntry, "Path");
        for (const char* sAttribute : {"Caption", "Tip"})
            Add(*oEntry, sAttribute, EntryKey(sOwner, sType, sPath, ValueOf(*oEntry, "ActionItem"), sAttribute));
        if (sType == "ToolbarItem")
            Add(*oEntry, "Path", ToolbarKey(sPath));
    }
}

// The name itself is shown of what the library makes: a tab, and a folder without another text.
void DefinitionTexts::AddExplorerItem(const IXmlNode& oItem) {
    const std::string sKey = ExplorerItemKey(ValueOf(oItem, "Name"));
    const std::string sType = ValueOf(oItem, "Type");
    const bool bIsFolder = EqualText(sType, "Folder") && ValueOf(oItem, "DisplayName").empty();
    if (bIsFolder || (ValueOf(oItem, "Parent").empty() && !EqualText(sType, "Default")))
        Add(oItem, "Name", AttributeKey(sKey, "Name"));
    Add(oItem, "DisplayName", AttributeKey(sKey, "DisplayName"));
    AddActions(oItem, sKey);
}

void DefinitionTexts::AddPages(const std::vector<Ref<IXmlNode>>& aPages, const std::string& sWindow) {
    for (const auto& oPage : aPages) {
        const std::string sKey = PageKey(sWindow, ValueOf(*oPage, "PageProgID"));
        Add(*oPage, "Caption", AttributeKey(sKey, "Caption"));
        AddActions(*oPage, sKey);
    }
}

std::string ServiceKey(std::string_view sService) {
    return Joined({"Service ", sService});
}

std::string ExplorerItemKey(std::string_view sItem) {
    return Joined({"ExplorerItem ", sItem});
}

std::string WindowKey(std::string_view sWindow) {
    return Joined({"Window ", sWindow});
}

std::string PageKey(std::string_view sWindow, std::string_view sProgID) {
    return Joined({sWindow.empty() ? "Preferences" : WindowKey(sWindow), "/Page ", sProgID});
}

std::string DescriptionKey(std::string_view sOwner, std::string_view sAction) {
    return Joined({sOwner, "/ActionItem ", sAction, "/Description"});
}

std::string EntryKey(std::string_view sOwner, std::string_view sType, std::string_view sPath, std::string_view sAction,
                     std::string_view sAttribute) {
    return Joined({sOwner, "/", sType, " ", sPath, sPath.empty() ? "" : ".", sAction, "/", sAttribute});
}

std::string ToolbarKey(std::string_view sPath) {
    return Joined({"Toolbar ", sPath});
}

std::string AttributeKey(std::string_view sOwner, std::string_view sAttribute) {
    return Joined({sOwner, "/", sAttribute});
}

} // namespace corvane
