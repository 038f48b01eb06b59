#include "corvane/author/Service.h"

#include "corvane/windows/Window.h"

namespace corvane {

AnyService::AnyService() {
    const auto Hear = [this](auto& oEvent, auto fnHandler) {
        m_aEvents.push_back(oEvent.Subscribe(std::move(fnHandler)));
    };
    Hear(m_oServiceBase->InitializeEvent, [this] { OnInitialize(); });
    Hear(m_oServiceBase->TerminateEvent, [this] {
        Unsubscribe();
        OnTerminate();
    });
    Hear(m_oServiceBase->GetUnsavedItems,
         [this](const Ref<Dictionary>& dctItems, Double& dblOrder) { OnUnsaved(*dctItems, dblOrder); });
    Hear(m_oServiceBase->SaveEvent, [this](const Ref<Object>& oItem) { OnSave(oItem); });
    Hear(m_oServiceBase->SaveCompleteEvent, [this](bool bWasCancelled) { OnSaveComplete(bWasCancelled); });
    Hear(m_oServiceBase->GetReportContextTypes,
         [this](const Ref<KeyedCollection<Ref<Object>>>& colTypes) { OnReportContextTypes(*colTypes); });
    Hear(m_oServiceBase->GetReportContexts,
         [this](Long lTypeID, const Ref<Dictionary>& dctContexts) { OnReportContexts(lTypeID, *dctContexts); });
    Hear(m_oServiceBase->OnExitEvent,
         [this](const Ref<Window>& oWindow, bool bWasCancelled) { OnExit(oWindow, bWasCancelled); });
}

AnyService::~AnyService() = default;

} // namespace corvane
