#include "corvane/services/ActionItemDef.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

using CorvaneMain::XMLAttributeValue;

void ActionItemDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_sName = ToText(XMLAttributeValue(oxmlDefinition, "Name"));
    m_sAction = ToText(XMLAttributeValue(oxmlDefinition, "Action"));
    m_bVisible = ToBoolean(XMLAttributeValue(oxmlDefinition, "Visible", true));
    m_bEnabled = ToBoolean(XMLAttributeValue(oxmlDefinition, "Enabled", true));
    m_bChecked = ToBoolean(XMLAttributeValue(oxmlDefinition, "Checked", false));
    m_sDescription = ToText(XMLAttributeValue(oxmlDefinition, "Description"));
    m_bPassActionItemParam = ToBoolean(XMLAttributeValue(oxmlDefinition, "PassActionItemParam", false));
    m_sImage = ToText(XMLAttributeValue(oxmlDefinition, "Image"));
    m_sImageDisabled = ToText(XMLAttributeValue(oxmlDefinition, "ImageDisabled"));
    m_sImagePressed = ToText(XMLAttributeValue(oxmlDefinition, "ImagePressed"));
} catch (...) {
    ReraiseAt("ActionItemDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

void ActionItemDef::Init(std::string sName, std::string sAction, bool bVisible, bool bEnabled, bool bChecked,
                         std::string sDescription, bool bPassActionItemParam) {
    m_sName = std::move(sName);
    m_sAction = std::move(sAction);
    m_bVisible = bVisible;
    m_bEnabled = bEnabled;
    m_bChecked = bChecked;
    m_sDescription = std::move(sDescription);
    m_bPassActionItemParam = bPassActionItemParam;
}

} // namespace corvane
