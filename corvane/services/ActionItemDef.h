// What a definition file says of one action: its name, the procedure behind it and the state that it begins with.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/SharedText.h"
#include "corvane/platform/IXmlService.h"
#include "corvane/platform/controls/ActiveBar.h"

#include <memory>
#include <string>

namespace corvane {

// Shared by the definition that holds it, by menu items that refer to it and by action items at run time. Read-only
// once it has been read, but for Tool and IsShared.
class __attribute__((visibility("default"))) ActionItemDef final : public virtual Object {
public:
    [[nodiscard]] const std::string& Name() const { return m_sName; }
    [[nodiscard]] const std::string& Action() const { return m_sAction; }
    [[nodiscard]] const std::string& Description() const { return m_sDescription; }
    [[nodiscard]] bool Checked() const { return m_bChecked; }
    [[nodiscard]] bool Enabled() const { return m_bEnabled; }
    [[nodiscard]] bool Visible() const { return m_bVisible; }
    // The tool that shows the action; nothing for an action that no menu entry uses.
    void SetTool(Ref<corvane::Tool> oTool) { m_oTool = std::move(oTool); }
    [[nodiscard]] const Ref<corvane::Tool>& Tool() const { return m_oTool; }
    // Whether the position of one of its menu entries was taken when the menus were built.
    [[nodiscard]] bool IsShared() const { return m_bIsShared; }
    void SetIsShared(bool bIsShared) { m_bIsShared = bIsShared; }
    // Whether the procedure receives the action item; true until Initialize or Init says otherwise.
    [[nodiscard]] bool PassActionItemParam() const { return m_bPassActionItemParam; }
    // File names in the application folder "Images"; empty for none.
    [[nodiscard]] const std::string& Image() const { return Images().sNormal; }
    [[nodiscard]] const std::string& ImageDisabled() const { return Images().sDisabled; }
    [[nodiscard]] const std::string& ImagePressed() const { return Images().sPressed; }
    // Texts of which others hold a share.
    [[nodiscard]] const SharedText& SharedName() const { return m_sName; }
    [[nodiscard]] const SharedText& SharedAction() const { return m_sAction; }
    [[nodiscard]] const SharedText& SharedDescription() const { return m_sDescription; }

    // Reads an ActionItem element. Fails with 13 for a value that doesn't convert.
    void Initialize(const Ref<IXmlNode>& oxmlDefinition);
    // Consecutive actions often call the same procedure: then they share its name.
    void ShareTexts(const ActionItemDef& oBefore);
    // For actions made in code, which have no pictures.
    void Init(std::string sName, std::string sAction = {}, bool bVisible = true, bool bEnabled = true,
              bool bChecked = false, std::string sDescription = {}, bool bPassActionItemParam = false);

    // Of the element in its file; 0 for an action made in code.
    [[nodiscard]] Long Line() const { return m_lLine; }

    std::string_view TypeName() const override { return "ActionItemDef"; }

private:
    struct ImageNames {
        SharedText sNormal;
        SharedText sDisabled;
        SharedText sPressed;
    };
    [[nodiscard]] const ImageNames& Images() const { return m_pImages ? *m_pImages : m_oNoImages; }

    static const ImageNames m_oNoImages;
    SharedText m_sName;
    Long m_lLine = 0;
    bool m_bChecked : 1 = false;
    bool m_bEnabled : 1 = false;
    bool m_bVisible : 1 = false;
    bool m_bIsShared : 1 = false;
    bool m_bPassActionItemParam : 1 = true;
    SharedText m_sAction;
    SharedText m_sDescription;
    Ref<corvane::Tool> m_oTool;
    std::unique_ptr<const ImageNames> m_pImages; // of the few that have any
};

} // namespace corvane
