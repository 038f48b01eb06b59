// What a definition file says of one page of a window or of the preferences.
#pragma once

#include "corvane/services/MenuItemDef.h"

#include <string>

namespace corvane {

class __attribute__((visibility("default"))) PageDef final : public virtual Object {
public:
    // Reads a Page element. Fails with 13 for a value that doesn't convert, IsOptional and IsResizable being required,
    // and as ReadActionItemDefs and ReadMenuItemDefs do.
    void Initialize(const Ref<IXmlNode>& oxmlDefinition);

    [[nodiscard]] const std::string& PageProgID() const { return m_sPageProgID; }
    [[nodiscard]] const std::string& Caption() const { return m_sCaption; }
    [[nodiscard]] bool IsOptional() const { return m_bIsOptional; }
    [[nodiscard]] bool IsResizable() const { return m_bIsResizable; }
    [[nodiscard]] Single PositionOrder() const { return m_fPositionOrder; }
    // 0 for no help topic.
    [[nodiscard]] Long HelpContextID() const { return m_lHelpContextID; }
    // Both nothing until Initialize.
    [[nodiscard]] const Ref<ActionItemDefCollection>& ActionItemDefs() const { return m_colActionItemDefs; }
    [[nodiscard]] const Ref<MenuItemDefCollection>& MenuItemDefs() const { return m_colMenuItemDefs; }
    // PageProgID, a point, Caption.
    [[nodiscard]] std::string Key() const { return m_sPageProgID + "." + m_sCaption; }
    [[nodiscard]] bool HideExplorer() const { return m_bHideExplorer; }

    // Of the element in its file; 0 when it isn't known.
    [[nodiscard]] Long Line() const { return m_lLine; }

    std::string_view TypeName() const override { return "PageDef"; }

private:
    std::string m_sPageProgID;
    std::string m_sCaption;
    bool m_bIsOptional = false;
    bool m_bIsResizable = false;
    Single m_fPositionOrder = 0;
    Long m_lLine = 0;
    Long m_lHelpContextID = 0;
    bool m_bHideExplorer = false;
    Ref<ActionItemDefCollection> m_colActionItemDefs;
    Ref<MenuItemDefCollection> m_colMenuItemDefs;
};

} // namespace corvane
