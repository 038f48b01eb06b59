#include "corvane/services/MenuItemDef.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

using CorvaneMain::XMLAttributeValue;

namespace {

MenuType MenuTypeOf(const std::string& sWord) {
    if (EqualText(sWord, "MenuTitle"))
        return MenuType::fwMenuTitle;
    if (EqualText(sWord, "MenuItem"))
        return MenuType::fwMenuItem;
    if (EqualText(sWord, "ContextMenuItem"))
        return MenuType::fwContextMenuItem;
    if (EqualText(sWord, "ContextMenuTitle"))
        return MenuType::fwContextMenuTitle;
    if (EqualText(sWord, "ToolbarItem"))
        return MenuType::fwToolbarItem;
    Fail(FailureNumber::ObjectErrorBase, "Invalid menu item type: " + sWord, "Determining menu item type");
}

SeparatorStyle SeparatorStyleOf(const std::string& sWord) {
    if (EqualText(sWord, "After"))
        return SeparatorStyle::fwSeparatorAfter;
    if (EqualText(sWord, "Before"))
        return SeparatorStyle::fwSeparatorBefore;
    return SeparatorStyle::fwSeparatorNone;
}

} // namespace

std::string MenuItemDef::Key() const try {
    std::string sKey = m_oActionItemDef->Name();
    if (!m_sPath.empty())
        sKey = m_sPath + "." + sKey;
    if (m_eMenuType == MenuType::fwToolbarItem)
        sKey = "Tool." + sKey;
    return sKey;
} catch (...) {
    Reraise("MenuItemDef", "Key (Get)");
}

std::string MenuItemDef::PositionKey() const try {
    switch (m_eMenuType) {
    case MenuType::fwMenuTitle:
    case MenuType::fwContextMenuItem:
    case MenuType::fwContextMenuTitle:
        return ToText(m_fPositionOrder);
    case MenuType::fwMenuItem:
    case MenuType::fwToolbarItem:
        return m_sPath + "." + ToText(m_fPositionOrder);
    }
    return {};
} catch (...) {
    Reraise("MenuItemDef", "PositionKey (Get)");
}

void MenuItemDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_eMenuType = MenuTypeOf(ToText(XMLAttributeValue(oxmlDefinition, "Type")));
    m_fPositionOrder = ToSingle(XMLAttributeValue(oxmlDefinition, "PositionOrder"));
    m_sCaption = ToText(XMLAttributeValue(oxmlDefinition, "Caption"));
    m_sToolTip = ToText(XMLAttributeValue(oxmlDefinition, "Tip"));
    m_sPath = ToText(XMLAttributeValue(oxmlDefinition, "Path"));
    m_sShortCutKey = ToText(XMLAttributeValue(oxmlDefinition, "ShortCutKey"));
    m_eSeparatorStyle = SeparatorStyleOf(ToText(XMLAttributeValue(oxmlDefinition, "Separator")));
    m_sCaption = ReplaceText(m_sCaption, '#', '&');
} catch (...) {
    ReraiseAt("MenuItemDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

void MenuItemDef::Init(const std::string& /*sActionItemName*/, std::string sPath, Single fPositionOrder,
                       corvane::MenuType eMenuType, std::string sCaption, std::string sShortCutKey,
                       std::string sToolTip, corvane::SeparatorStyle eSeparatorStyle) {
    m_eMenuType = eMenuType;
    m_fPositionOrder = fPositionOrder;
    m_sCaption = std::move(sCaption);
    m_sToolTip = std::move(sToolTip);
    m_sPath = std::move(sPath);
    m_sShortCutKey = std::move(sShortCutKey);
    m_eSeparatorStyle = eSeparatorStyle;
}

} // namespace corvane
