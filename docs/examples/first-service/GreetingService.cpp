#include "corvane/Service.h"

using namespace corvane;

class GreetingService final : public Service<GreetingService> {
public:
    // Called once, after all services are initialized, because the definition says IsStartService.
    void Start() { SetStatus("Ready"); }

    // The procedure behind the command "Greet".
    void OnGreet(const Ref<ActionItem>& actionItem) {
        ++m_greetings;
        actionItem->SetChecked(true);
        SetStatus("Hello, number " + std::to_string(m_greetings));
    }

    static constexpr auto Members = Methods<&GreetingService::Start, &GreetingService::OnGreet>();

private:
    int m_greetings = 0;
};

CORVANE_PLUGIN(Class<GreetingService>("GreetingSvc.GreetingService"))
