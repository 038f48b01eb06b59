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

    // The file, as "Services/Birds.xml", and the element's line in it; empty and 0 where they aren't known.
    [[nodiscard]] const std::string& File() const { return m_sFile; }
    void SetFile(std::string sFile) { m_sFile = std::move(sFile); }
    [[nodiscard]] Long Line() const { return m_lLine; }

    std::string_view TypeName() const override { return "ServiceDef"; }

private:
    std::string m_sName;
    std::string m_sProgID;
    std::string m_sFile;
    Long m_lLine = 0;
    bool m_bIsStartService = false;
    Ref<KeyedCollection<Ref<ExplorerItemDef>>> m_colExplorerItemDefs = New<KeyedCollection<Ref<ExplorerItemDef>>>();
    Ref<ActionItemDefCollection> m_colActionItemDefs = New<ActionItemDefCollection>();
    Ref<MenuItemDefCollection> m_colMenuItemDefs = New<MenuItemDefCollection>();
};

} // namespace corvane
