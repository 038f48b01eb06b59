#include "corvane/services/ActionItemDef.h"

#include "corvane/core/Internals.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

using CorvaneMain::XMLAttributeBoolean;
using CorvaneMain::XMLAttributeText;

const ActionItemDef::ImageNames ActionItemDef::m_oNoImages;

void ActionItemDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_lLine = CorvaneMain::LineOf(oxmlDefinition);
    m_sName = XMLAttributeText(oxmlDefinition, "Name");
    m_sAction = XMLAttributeText(oxmlDefinition, "Action");
    m_bVisible = XMLAttributeBoolean(oxmlDefinition, "Visible", true);
    m_bEnabled = XMLAttributeBoolean(oxmlDefinition, "Enabled", true);
    m_bChecked = XMLAttributeBoolean(oxmlDefinition, "Checked", false);
    m_sDescription = XMLAttributeText(oxmlDefinition, "Description");
    m_bPassActionItemParam = XMLAttributeBoolean(oxmlDefinition, "PassActionItemParam", false);
    ImageNames oImages{XMLAttributeText(oxmlDefinition, "Image"), XMLAttributeText(oxmlDefinition, "ImageDisabled"),
                       XMLAttributeText(oxmlDefinition, "ImagePressed")};
    const bool bHasImages = !oImages.sNormal.IsEmpty() || !oImages.sDisabled.IsEmpty() || !oImages.sPressed.IsEmpty();
    m_pImages = bHasImages ? std::make_unique<const ImageNames>(std::move(oImages)) : nullptr;
} catch (...) {
    ReraiseAt("ActionItemDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

void ActionItemDef::ShareTexts(const ActionItemDef& oBefore) {
    if (m_sAction == oBefore.m_sAction)
        m_sAction = oBefore.m_sAction;
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
    m_lLine = 0;
    m_pImages = nullptr;
}

} // namespace corvane
