#include "desktop/application/ApplicationEnd.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/IService.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/guard/PluginCall.h"

#include <vector>

namespace corvane::desktop {

ApplicationEnd::ApplicationEnd(Ref<MdiForm> mainForm, FailurePresenter& failures, Blame& blame)
    : m_mainForm(std::move(mainForm)), m_failures(failures), m_blame(blame) {
    m_begins = m_mainForm->OnUnload.Subscribe([this](bool&) {
        m_begun = m_failures.Depth();
        m_blame.NoteEntered();
    });
}

bool ApplicationEnd::SeeThrough(int depth) {
    if (!m_begun || *m_begun < depth || !m_mainForm->IsLoaded())
        return false;
    m_begun.reset();
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    std::vector<Ref<Object>> services;
    if (manager)
        for (const auto& service : *manager->Services())
            if (service && !m_blame.WasEntered(*service))
                services.push_back(service);
    for (const auto& service : services)
        m_failures.Guard(
            [&] { CallPlugin(service, "Terminate", [&] { CorvaneMain::QueryService(service)->Terminate(); }); });
    return true;
}

} // namespace corvane::desktop
