#include "corvane/platform/controls/PanelForm.h"

namespace corvane {

PanelForm::PanelForm(bool bWithTabStrip) {
    if (bWithTabStrip)
        m_colControls->Add(New<TabStrip>(), "tabExplorer");
}

Ref<Object> PanelForm::AddControl(std::string_view sProgID, std::string_view sName) {
    Ref<Object> oControl;
    if (EqualText(sProgID, "MSComctlLib.TreeCtrl.2"))
        oControl = New<TreeView>(std::string(sName));
    else if (EqualText(sProgID, "MSComctlLib.ImageListCtrl.2"))
        oControl = New<ImageList>();
    else
        Fail(FailureNumber::CannotCreateObject, "There is no control \"" + std::string(sProgID) + "\"");
    m_colControls->Add(oControl, sName);
    ControlAdded.Raise(oControl);
    return oControl;
}

} // namespace corvane
