#include "corvane/services/ExplorerItemDef.h"

#include "corvane/core/Internals.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ReadActions.h"

namespace corvane {

using CorvaneMain::XMLAttributeValue;

namespace {

ExplorerItemType ExplorerItemTypeOf(const std::string& sWord) {
    if (EqualText(sWord, "Folder"))
        return ExplorerItemType::fwExplorerItemFolder;
    if (EqualText(sWord, "Default"))
        return ExplorerItemType::fwExplorerItemDefault;
    if (EqualText(sWord, "FolderChild"))
        return ExplorerItemType::fwExplorerItemFolderChild;
    Fail(FailureNumber::ObjectErrorBase, "Invalid explorer item type: " + sWord, "Determining explorer item type");
}

} // namespace

Long ExplorerItemDef::PositionKey() const try {
    const Double dblOwn = static_cast<Double>(m_fPositionOrder * 100.0F);
    if (!m_oParentExplorerItemDef)
        return RoundToLong(dblOwn);
    return RoundToLong(static_cast<Double>(m_oParentExplorerItemDef->PositionOrder()) * 1000000 + dblOwn);
} catch (...) {
    Reraise("ExplorerItemDef", "PositionKey (Get)");
}

void ExplorerItemDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_lLine = CorvaneMain::LineOf(oxmlDefinition);
    m_sName = ToText(XMLAttributeValue(oxmlDefinition, "Name"));
    m_sDisplayName = ToText(XMLAttributeValue(oxmlDefinition, "DisplayName"));
    m_sProgID = ToText(XMLAttributeValue(oxmlDefinition, "ProgID"));
    m_sParentExplorerItemName = ToText(XMLAttributeValue(oxmlDefinition, "Parent"));
    m_fPositionOrder = ToSingle(XMLAttributeValue(oxmlDefinition, "PositionOrder", 0));
    m_sDefaultAction = ToText(XMLAttributeValue(oxmlDefinition, "DefaultAction"));
    m_bCanRename = ToBoolean(XMLAttributeValue(oxmlDefinition, "CanRename", false));
    m_sImage = ToText(XMLAttributeValue(oxmlDefinition, "Image"));
    m_eExplorerItemType = ExplorerItemTypeOf(ToText(XMLAttributeValue(oxmlDefinition, "Type")));
    ReadActionItemDefs(oxmlDefinition, *m_colActionItemDefs);
    ReadMenuItemDefs(oxmlDefinition, *m_colActionItemDefs, *m_colMenuItemDefs, true);
} catch (...) {
    ReraiseAt("ExplorerItemDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

void ExplorerItemDef::Untie() {
    m_oParentExplorerItemDef = nullptr;
    m_colChildExplorerItemDefs = New<KeyedCollection<Ref<ExplorerItemDef>>>();
}

} // namespace corvane
