#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceBase.h"

using namespace corvane;

class GreetingService final : public Automation<GreetingService, IServiceAccess> {
public:
    GreetingService() {
        m_terminate = m_serviceBase->TerminateEvent.Subscribe([this] { m_greetings = 0; });
    }

    Ref<IService> Service() override { return m_serviceBase; }

    // Called once, after all services are initialised, because the definition says IsStartService.
    void Start() { Singleton::Framework()->SetStatus("Ready"); }

    // The procedure behind the command "Greet".
    void OnGreet(const Ref<ActionItem>& actionItem) {
        ++m_greetings;
        actionItem->SetChecked(true);
        Singleton::Framework()->SetStatus("Hello, number " + std::to_string(m_greetings));
    }

    static constexpr auto Members =
        MemberTable(Method("Start", &GreetingService::Start), Method("OnGreet", &GreetingService::OnGreet));

private:
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
    Subscription m_terminate;
    Long m_greetings = 0;
};

CORVANE_PLUGIN(Class<GreetingService>("GreetingSvc.GreetingService"))
