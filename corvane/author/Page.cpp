#include "corvane/author/Page.h"

namespace corvane {

AnyPage::AnyPage() {
    const auto Hear = [this](auto& oEvent, auto fnHandler) {
        m_aEvents.push_back(oEvent.Subscribe(std::move(fnHandler)));
    };
    Hear(m_oBase->InitializeEvent, [this](const Ref<Object>&) { OnInitialize(); });
    Hear(m_oBase->TerminateEvent, [this](const Ref<Object>&) {
        Unsubscribe();
        OnTerminate();
    });
    Hear(m_oBase->ActivateEvent, [this] { OnActivate(); });
    Hear(m_oBase->DeactivateEvent, [this] { OnDeactivate(); });
    Hear(m_oBase->ValidateEvent, [this](bool& bValid) { bValid = bValid && IsValid(); });
    Hear(m_oBase->SaveEvent, [this] { OnSave(); });
    Hear(m_oBase->CommandClickEvent, [this](StandardCommandConstants eCommand) { OnCommand(eCommand); });
    Hear(m_oBase->OnExitEvent,
         [this](const Ref<corvane::Window>& oWindow, bool bWasCancelled) { OnExit(oWindow, bWasCancelled); });
}

AnyPage::~AnyPage() = default;

void AnyPage::ValidityChanged() {
    if (OwnWindow())
        m_oBase->ValidityChanged();
}

} // namespace corvane
