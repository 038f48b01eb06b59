#include "Progress.h"

#include "corvane/author/Host.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
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
    return Singleton::Framework()->CVProgressBar();
}

// An item that isn't current has no tool, and writing its state changes nothing.
void Restore(const Ref<IActionsProvider>& provider) {
    if (!provider || !provider->ActionItems())
        return;
    for (const Ref<ActionItem>& item : *provider->ActionItems())
        item->SetEnabled(item->Enabled());
}

} // namespace

Progress::Progress(int steps, Ref<IActionsProvider> working) : m_working(std::move(working)) {
    Bar()->Show(steps, true);
}

Progress::~Progress() {
    try {
        Bar()->Hide();
        const Ref<corvane::Framework> framework = Singleton::Framework();
        for (const Ref<Object>& service : *framework->ServiceManager()->Services())
            Restore(CorvaneMain::QueryService(service).TryAs<IActionsProvider>());
        if (const Ref<Object> studies = FindService("Studies"))
            if (const Ref<Object> active = ToObject(studies->Invoke("ActiveItem", {})))
                Restore(CorvaneMain::QueryExplorerItem(active).TryAs<IActionsProvider>());
        Restore(m_working);
    } catch (...) {
        Report("Progress", "~Progress");
    }
}

bool Progress::Step() {
    Bar()->Increment();
    return !Bar()->WasCanceled();
}

} // namespace studies
