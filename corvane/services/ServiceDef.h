// What a definition file says of one service.
#pragma once

#include "corvane/services/ExplorerItemDef.h"

#include <string>

namespace corvane {

class __attribute__((visibility("default"))) ServiceDef final : public virtual Object {
public:
    [[nodiscard]] const std::string& Name() const { return m_sName; }
    [[nodiscard]] const std::string& ProgID() const { return m_sProgID; }
    [[nodiscard]] bool IsStartService() const { return m_bIsStartService; }
    [[nodiscard]] const Ref<KeyedCollection<Ref<ExplorerItemDef>>>& ExplorerItemDefs() const {
        return m_colExplorerItemDefs;
    }
    [[nodiscard]] const Ref<ActionItemDefCollection>& ActionItemDefs() const { return m_colActionItemDefs; }
    // Without keys: two entries of a service may have one Key.
    [[nodiscard]] const Ref<MenuItemDefCollection>& MenuItemDefs() const { return m_colMenuItemDefs; }

    // Reads a Service element; windows and preferences aren't part of the record. Stops at the first failure and
    // keeps what it has read.
    void Initialize(const Ref<IXmlNode>& oxmlDefinition);

    std::string_view TypeName() const override { return "ServiceDef"; }

private:
    std::string m_sName;
    std::string m_sProgID;
    bool m_bIsStartService = false;
    Ref<KeyedCollection<Ref<ExplorerItemDef>>> m_colExplorerItemDefs = New<KeyedCollection<Ref<ExplorerItemDef>>>();
    Ref<ActionItemDefCollection> m_colActionItemDefs = New<ActionItemDefCollection>();
    Ref<MenuItemDefCollection> m_colMenuItemDefs = New<MenuItemDefCollection>();
};

} // namespace corvane
