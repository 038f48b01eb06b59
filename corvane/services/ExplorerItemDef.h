// What a definition file says of one kind of item in the explorer.
#pragma once

#include "corvane/services/MenuItemDef.h"

#include <string>

namespace corvane {

class __attribute__((visibility("default"))) ExplorerItemDef final : public virtual Object {
public:
    [[nodiscard]] const std::string& Name() const { return m_sName; }
    [[nodiscard]] const std::string& DisplayName() const { return m_sDisplayName; }
    [[nodiscard]] const std::string& ProgID() const { return m_sProgID; }
    [[nodiscard]] corvane::ExplorerItemType ExplorerItemType() const { return m_eExplorerItemType; }
    [[nodiscard]] const std::string& ParentExplorerItemName() const { return m_sParentExplorerItemName; }
    // Nothing for a root, and until all files have been read. Parent and child hold each other; Untie ends that.
    [[nodiscard]] const Ref<ExplorerItemDef>& ParentExplorerItemDef() const { return m_oParentExplorerItemDef; }
    void SetParentExplorerItemDef(Ref<ExplorerItemDef> oParent) { m_oParentExplorerItemDef = std::move(oParent); }
    [[nodiscard]] Single PositionOrder() const { return m_fPositionOrder; }
    [[nodiscard]] const std::string& DefaultAction() const { return m_sDefaultAction; }
    [[nodiscard]] bool CanRename() const { return m_bCanRename; }
    [[nodiscard]] const std::string& Image() const { return m_sImage; }
    [[nodiscard]] const Ref<KeyedCollection<Ref<ExplorerItemDef>>>& ChildExplorerItemDefs() const {
        return m_colChildExplorerItemDefs;
    }
    [[nodiscard]] const Ref<ActionItemDefCollection>& ActionItemDefs() const { return m_colActionItemDefs; }
    [[nodiscard]] const Ref<MenuItemDefCollection>& MenuItemDefs() const { return m_colMenuItemDefs; }
    // A sort value for clients: PositionOrder times 100, and below a parent its PositionOrder times 1,000,000 more.
    // Fails with 6 outside the range of a Long.
    [[nodiscard]] Long PositionKey() const;

    // Reads an ExplorerItem element. Fails with ObjectErrorBase for an unknown Type, with 13 for a value that doesn't
    // convert, and as ReadActionItemDefs and ReadMenuItemDefs do.
    void Initialize(const Ref<IXmlNode>& oxmlDefinition);

    // Releases parent and children, when the library is done with the definitions.
    void Untie();

    // Of the element in its file; 0 when it isn't known.
    [[nodiscard]] Long Line() const { return m_lLine; }

    std::string_view TypeName() const override { return "ExplorerItemDef"; }

private:
    std::string m_sName;
    std::string m_sDisplayName;
    std::string m_sProgID;
    corvane::ExplorerItemType m_eExplorerItemType{};
    Single m_fPositionOrder = 0;
    Long m_lLine = 0;
    std::string m_sDefaultAction;
    bool m_bCanRename = false;
    std::string m_sImage;
    std::string m_sParentExplorerItemName;
    Ref<ExplorerItemDef> m_oParentExplorerItemDef;
    Ref<KeyedCollection<Ref<ExplorerItemDef>>> m_colChildExplorerItemDefs =
        New<KeyedCollection<Ref<ExplorerItemDef>>>();
    Ref<ActionItemDefCollection> m_colActionItemDefs = New<ActionItemDefCollection>();
    Ref<MenuItemDefCollection> m_colMenuItemDefs = New<MenuItemDefCollection>();
};

} // namespace corvane
