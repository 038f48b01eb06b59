// The model of the explorer's panel form: a form that holds a tab strip "tabExplorer" and makes controls at run time.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/controls/ImageList.h"
#include "corvane/platform/controls/TabStrip.h"
#include "corvane/platform/controls/TreeView.h"

#include <string_view>

namespace corvane {

class __attribute__((visibility("default"))) PanelForm final : public virtual Object {
public:
    explicit PanelForm(bool bWithTabStrip = true);

    // A control by its name. Fails with 5 when there is none.
    [[nodiscard]] Ref<Object> Control(std::string_view sName) const { return m_colControls->Item(sName); }
    [[nodiscard]] const Ref<KeyedCollection<Ref<Object>>>& Controls() const { return m_colControls; }
    // Makes a control of "MSComctlLib.TreeCtrl.2" or "MSComctlLib.ImageListCtrl.2" under a name. Fails with 429 for
    // another ProgID, with 457 when the name is taken.
    Ref<Object> AddControl(std::string_view sProgID, std::string_view sName);

    Event<> Resize;                         // the form's
    Event<const Ref<Object>&> ControlAdded; // for renderers alone

private:
    Ref<KeyedCollection<Ref<Object>>> m_colControls = New<KeyedCollection<Ref<Object>>>();
};

} // namespace corvane
