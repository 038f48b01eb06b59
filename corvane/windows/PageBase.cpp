#include "corvane/windows/PageBase.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/PageDef.h"
#include "corvane/windows/Window.h"

namespace corvane {

void PageBase::ValidityChanged() try { m_oWindow->PageValidityChanged(Ref<IPage>(this)); } catch (...) {
    Reraise("PageBase", "ValidityChanged");
}

void PageBase::Initialize(const Ref<corvane::Window>& oWindow, const Ref<corvane::PageDef>& oPageDef,
                          const Ref<Object>& oBusinessContext, const Ref<Object>& oLastPanePositions) try {
    const Ref<PageBase> oSelf(this); // the page may let go of itself while it hears an event
    m_oWindow = oWindow;
    m_oPageDef = oPageDef;
    m_oBusinessContext = oBusinessContext;
    InitializeEvent.Raise(oLastPanePositions);
} catch (...) {
    Reraise("PageBase", "IPage_Initialize");
}

void PageBase::Terminate(const Ref<Object>& oCurrentPanePositions) try {
    const Ref<PageBase> oSelf(this);
    TerminateEvent.Raise(oCurrentPanePositions);
    m_colActionItems = nullptr;
    m_oBusinessContext = nullptr;
    m_oPageDef = nullptr;
    m_oWindow = nullptr;
} catch (...) {
    Reraise("PageBase", "IPage_Terminate");
}

// The host calls these three on the base alone, so that only the definition tells whose page it is.
template <class Event>
void PageBase::Call(const char* sProcedure, Event fnRaise) {
    const Ref<PageBase> oSelf(this);
    const Ref<corvane::PageDef> oPageDef = m_oPageDef;
    try {
        fnRaise();
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(oPageDef, sProcedure));
    }
}

bool PageBase::IsValid() try {
    bool bIsValid = true;
    Call("Validate", [&] { ValidateEvent.Raise(bIsValid); });
    return bIsValid;
} catch (...) {
    Reraise("PageBase", "IPage_IsValid (Get)");
}

void PageBase::Activate() try { ActivateEvent.Raise(); } catch (...) {
    Reraise("PageBase", "IPage_Activate");
}

void PageBase::Deactivate() try { DeactivateEvent.Raise(); } catch (...) {
    Reraise("PageBase", "IPage_Deactivate");
}

void PageBase::Save() try {
    Call("Save", [&] { SaveEvent.Raise(); });
} catch (...) {
    Reraise("PageBase", "IPage_Save");
}

void PageBase::CommandClick(StandardCommandConstants eCommand) try {
    Call("CommandClick", [&] { CommandClickEvent.Raise(eCommand); });
} catch (...) {
    Reraise("PageBase", "IPage_CommandClick");
}

void PageBase::OnExit(const Ref<corvane::Window>& oWindow, bool bWasCancelled) try {
    OnExitEvent.Raise(oWindow, bWasCancelled);
} catch (...) {
    Reraise("PageBase", "IWindowExitHandler_OnExit");
}

} // namespace corvane
