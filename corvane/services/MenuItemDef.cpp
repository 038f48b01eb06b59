#include "corvane/services/MenuItemDef.h"

#include "corvane/core/Internals.h"
#include "corvane/platform/Handlers.h"

#include <algorithm>

namespace corvane {

using CorvaneMain::XMLAttributeText;

namespace {

MenuType KnownMenuType(std::string_view sWord) {
    if (const auto oType = MenuTypeOf(sWord))
        return *oType;
    Fail(FailureNumber::ObjectErrorBase, "Invalid menu item type: " + std::string(sWord), "Determining menu item type");
}

SeparatorStyle SeparatorStyleOf(std::string_view sWord) {
    if (EqualText(sWord, "After"))
        return SeparatorStyle::fwSeparatorAfter;
    if (EqualText(sWord, "Before"))
        return SeparatorStyle::fwSeparatorBefore;
    return SeparatorStyle::fwSeparatorNone;
}

} // namespace

std::string MenuItemDef::Key() const try {
    constexpr std::string_view sToolbarMark = "Tool.";
    const std::string& sPath = m_sPath;
    const std::string& sName = m_oActionItemDef->Name();
    std::string sKey;
    sKey.reserve(sToolbarMark.size() + sPath.size() + 1 + sName.size());
    if (m_eMenuType == MenuType::fwToolbarItem)
        sKey = sToolbarMark;
    if (!sPath.empty())
        sKey.append(sPath).append(1, '.');
    return sKey.append(sName);
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
        return m_sPath.Get() + "." + ToText(m_fPositionOrder);
    }
    return {};
} catch (...) {
    Reraise("MenuItemDef", "PositionKey (Get)");
}

void MenuItemDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_eMenuType = KnownMenuType(XMLAttributeText(oxmlDefinition, "Type"));
    m_fPositionOrder = ToSingle(XMLAttributeText(oxmlDefinition, "PositionOrder"));
    std::string sCaption = XMLAttributeText(oxmlDefinition, "Caption");
    m_sToolTip = XMLAttributeText(oxmlDefinition, "Tip");
    m_sPath = XMLAttributeText(oxmlDefinition, "Path");
    m_sShortCutKey = XMLAttributeText(oxmlDefinition, "ShortCutKey");
    m_eSeparatorStyle = SeparatorStyleOf(XMLAttributeText(oxmlDefinition, "Separator"));
    std::replace(sCaption.begin(), sCaption.end(), '#', '&');
    m_sCaption = std::move(sCaption);
} catch (...) {
    ReraiseAt("MenuItemDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

void MenuItemDef::ShareTexts(const MenuItemDef& oBefore) {
    if (m_sPath == oBefore.m_sPath)
        m_sPath = oBefore.m_sPath;
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
