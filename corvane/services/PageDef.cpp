#include "corvane/services/PageDef.h"

#include "corvane/core/Internals.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ReadActions.h"

namespace corvane {

using CorvaneMain::XMLAttributeValue;

void PageDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_lLine = CorvaneMain::LineOf(oxmlDefinition);
    m_sPageProgID = ToText(XMLAttributeValue(oxmlDefinition, "PageProgID"));
    m_sCaption = ToText(XMLAttributeValue(oxmlDefinition, "Caption"));
    m_bIsOptional = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsOptional"));
    m_bIsResizable = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsResizable"));
    m_fPositionOrder = ToSingle(XMLAttributeValue(oxmlDefinition, "PositionOrder", 0));
    m_lHelpContextID = ToLong(XMLAttributeValue(oxmlDefinition, "HelpContextID", 0));
    m_bHideExplorer = ToBoolean(XMLAttributeValue(oxmlDefinition, "HideExplorer", false));
    m_colActionItemDefs = New<ActionItemDefCollection>();
    ReadActionItemDefs(oxmlDefinition, *m_colActionItemDefs);
    m_colMenuItemDefs = New<MenuItemDefCollection>();
    ReadMenuItemDefs(oxmlDefinition, *m_colActionItemDefs, *m_colMenuItemDefs, true);
} catch (...) {
    ReraiseAt("PageDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

} // namespace corvane
