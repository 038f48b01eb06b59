#include "corvane/services/ServiceBase.h"

#include "corvane/platform/Handlers.h"
#include "corvane/windows/Window.h"

namespace corvane {

Ref<ActionItemCollection> ServiceBase::ActionItems() const {
    return m_colActionItems;
}

void ServiceBase::Initialize() try { InitializeEvent.Raise(); } catch (...) {
    Reraise("ServiceBase", "IService_Initialize");
}

void ServiceBase::Terminate() try { TerminateEvent.Raise(); } catch (...) {
    Reraise("ServiceBase", "IService_Terminate");
}

Ref<Dictionary> ServiceBase::UnsavedItems(Double& dblOrder) {
    auto dctUnsavedItems = New<Dictionary>();
    dblOrder = 2;
    GetUnsavedItems.Raise(dctUnsavedItems, dblOrder);
    return dctUnsavedItems;
}

void ServiceBase::Save(const Ref<Object>& oUnsavedItem) {
    SaveEvent.Raise(oUnsavedItem);
}

Ref<KeyedCollection<Ref<Object>>> ServiceBase::ReportContextTypes() {
    auto colReportContextTypes = New<KeyedCollection<Ref<Object>>>();
    GetReportContextTypes.Raise(colReportContextTypes);
    return colReportContextTypes;
}

Ref<Dictionary> ServiceBase::ReportContexts(Long lReportContextTypeID) {
    auto dctReportContexts = New<Dictionary>();
    GetReportContexts.Raise(lReportContextTypeID, dctReportContexts);
    return dctReportContexts;
}

void ServiceBase::SaveComplete(bool bWasCancelled) {
    SaveCompleteEvent.Raise(bWasCancelled);
}

void ServiceBase::Initialize(const Ref<ActionItemCollection>& oActionItems) {
    m_colActionItems = oActionItems;
}

void ServiceBase::OnExit(const Ref<Window>& oWindow, bool bWasCancelled) try {
    OnExitEvent.Raise(oWindow, bWasCancelled);
} catch (...) {
    Reraise("ServiceBase", "IWindowExitHandler_OnExit");
}

} // namespace corvane
