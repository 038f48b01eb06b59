// What a definition file says of one place of an action: in a menu, a toolbar or a context menu.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/services/ActionItemDef.h"
#include "corvane/services/DefinitionEnums.h"

#include <string>

namespace corvane {

class __attribute__((visibility("default"))) MenuItemDef final : public virtual Object {
public:
    [[nodiscard]] corvane::MenuType MenuType() const { return m_eMenuType; }
    // The key of the title, or the name of the toolbar, that contains the entry; empty for the menu bar.
    [[nodiscard]] const std::string& Path() const { return m_sPath; }
    // With "&" before the mnemonic.
    [[nodiscard]] const std::string& Caption() const { return m_sCaption; }
    [[nodiscard]] const std::string& ToolTip() const { return m_sToolTip; }
    [[nodiscard]] const std::string& ShortCutKey() const { return m_sShortCutKey; }
    [[nodiscard]] Single PositionOrder() const { return m_fPositionOrder; }
    [[nodiscard]] corvane::SeparatorStyle SeparatorStyle() const { return m_eSeparatorStyle; }
    // Nothing until the creator of this record sets it.
    [[nodiscard]] const Ref<corvane::ActionItemDef>& ActionItemDef() const { return m_oActionItemDef; }
    void SetActionItemDef(Ref<corvane::ActionItemDef> oActionItemDef) { m_oActionItemDef = std::move(oActionItemDef); }
    // The identity of the entry in the bar: [Tool.][Path.]action name. Fails with 91 before the action is set.
    [[nodiscard]] std::string Key() const;
    // By which toolbars are sorted: the order as text, with Path and a point before it for entries of menus and
    // toolbars.
    [[nodiscard]] std::string PositionKey() const;

    // A text of which others hold a share.
    [[nodiscard]] const SharedText& SharedCaption() const { return m_sCaption; }

    // Reads a MenuItem element. Fails with ObjectErrorBase for an unknown Type, with 13 for a bad PositionOrder.
    void Initialize(const Ref<IXmlNode>& oxmlDefinition);
    // Consecutive entries often have the same path: then they share it.
    void ShareTexts(const MenuItemDef& oBefore);
    // For entries made in code, whose caption carries "&" already. The action's name isn't used: the caller sets the
    // action afterwards.
    void Init(const std::string& sActionItemName, std::string sPath, Single fPositionOrder, corvane::MenuType eMenuType,
              std::string sCaption, std::string sShortCutKey = {}, std::string sToolTip = {},
              corvane::SeparatorStyle eSeparatorStyle = corvane::SeparatorStyle::fwSeparatorNone);

    std::string_view TypeName() const override { return "MenuItemDef"; }

private:
    Single m_fPositionOrder = 0;
    corvane::MenuType m_eMenuType{};
    corvane::SeparatorStyle m_eSeparatorStyle = corvane::SeparatorStyle::fwSeparatorNone;
    SharedText m_sCaption;
    SharedText m_sShortCutKey;
    SharedText m_sPath;
    SharedText m_sToolTip;
    Ref<corvane::ActionItemDef> m_oActionItemDef;
};

using ActionItemDefCollection = KeyedCollection<Ref<ActionItemDef>>;
using MenuItemDefCollection = KeyedCollection<Ref<MenuItemDef>>;

} // namespace corvane
