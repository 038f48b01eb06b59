#include "corvane/services/ServiceDef.h"

#include "corvane/core/Internals.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ReadActions.h"

namespace corvane {

using CorvaneMain::AtLineOf;
using CorvaneMain::XMLAttributeValue;

void ServiceDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_lLine = CorvaneMain::LineOf(oxmlDefinition);
    m_sName = ToText(XMLAttributeValue(oxmlDefinition, "Name"));
    m_sProgID = ToText(XMLAttributeValue(oxmlDefinition, "ProgID"));
    m_bIsStartService = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsStartService", false));
    ReadActionItemDefs(oxmlDefinition, *m_colActionItemDefs);
    ReadMenuItemDefs(oxmlDefinition, *m_colActionItemDefs, *m_colMenuItemDefs, false);
    for (const auto& oNode : oxmlDefinition->SelectNodes("./ExplorerItems/ExplorerItem")) {
        auto oExplorerItemDef = New<ExplorerItemDef>();
        oExplorerItemDef->Initialize(oNode);
        AtLineOf(oNode, [&] { m_colExplorerItemDefs->Add(oExplorerItemDef, oExplorerItemDef->Name()); });
    }
} catch (...) {
    ReraiseAt("ServiceDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

} // namespace corvane
