#include "Progress.h"

#include "Shell.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/IService.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/CVProgressBar.h"

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::CVProgressBar> Bar() {
    return CorvaneMain::Framework()->CVProgressBar();
}

// An item that isn't current has no tool, and writing its state changes nothing.
void Restore(const Ref<IActionsProvider>& oProvider) {
    if (!oProvider || !oProvider->ActionItems())
        return;
    for (const Ref<ActionItem>& oItem : *oProvider->ActionItems())
        oItem->SetEnabled(oItem->Enabled());
}

} // namespace

Progress::Progress(int nSteps, Ref<IActionsProvider> oWorking) : m_oWorking(std::move(oWorking)) {
    Bar()->Show(nSteps, true);
}

Progress::~Progress() {
    try {
        Bar()->Hide();
        const Ref<corvane::Framework> oFramework = CorvaneMain::Framework();
        for (const Ref<Object>& oService : *oFramework->ServiceManager()->Services())
            Restore(CorvaneMain::QueryService(oService).TryAs<IActionsProvider>());
        if (const Ref<Object> oStudies = ServiceByName("Studies"))
            if (const Ref<Object> oActive = ToObject(oStudies->Invoke("ActiveItem", {})))
                Restore(CorvaneMain::QueryExplorerItem(oActive).TryAs<IActionsProvider>());
        Restore(m_oWorking);
    } catch (...) {
        Report("Progress", "~Progress");
    }
}

bool Progress::Step() {
    Bar()->Increment();
    return !Bar()->WasCanceled();
}

} // namespace studies
