#include "desktop/service/HeldShell.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/TreeView.h"
#include "corvane/windows/CVProgressBar.h"

#include <algorithm>
#include <array>

namespace corvane::desktop {

namespace {

// A tool that no provider has at present waits for one, disabled where it is seen.
bool ShouldBeEnabled(const Tool& instance) {
    const auto item = instance.TagVariant().TryAs<ActionItem>();
    return item ? item->Enabled() : IsHostTool(instance) || !instance.Visible() || !instance.DropDownBand().empty();
}

} // namespace

bool IsHostTool(const Tool& tool) {
    static constexpr std::array names{"Separator", "WindowList", "Status", "ctlProgressBar", "ExplorerPanel"};
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return EqualText(tool.Name(), name); });
}

HeldShell::HeldShell(Ref<ActiveBar> activeBar) : m_activeBar(std::move(activeBar)) {
    const Ref<Band> band = m_activeBar->Bands()->Item("StatusBar");
    m_status = band->Tools()->Item("Status");
    m_bar = band->Tools()->Item("ctlProgressBar");
}

void HeldShell::LetGo() {
    const Ref<Framework> framework = Singleton::Framework();
    try {
        if (const auto progress = framework ? framework->CVProgressBar() : nullptr; progress && IsBarShown())
            progress->Hide();
    } catch (...) {
        // Without a tree its first step fails; what it would have done follows.
    }
    for (const auto& band : m_activeBar->Bands()->All())
        for (const auto& instance : band->Tools()->All())
            instance->SetEnabled(ShouldBeEnabled(*instance));
    if (IsBarShown()) {
        m_bar->SetVisible(false);
        m_status->SetVisible(true);
        m_activeBar->SetStatusTextShown(true);
        m_activeBar->RecalcLayout();
    }
    const auto navigation = framework ? framework->NavigationManager() : nullptr;
    const auto explorer = navigation ? navigation->ExplorerManager() : nullptr;
    if (explorer && explorer->TreeView())
        explorer->TreeView()->SetEnabled(true);
}

} // namespace corvane::desktop
