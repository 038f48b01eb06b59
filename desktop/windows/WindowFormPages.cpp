#include "desktop/windows/PagePlace.h"
#include "desktop/windows/WindowForm.h"

#include <algorithm>
#include <utility>

namespace corvane::desktop {

void WindowForm::SetActivePageIndex(Long lIndex) {
    if (lIndex < 0 || lIndex >= static_cast<Long>(m_aSlots.size()))
        Fail(FailureNumber::Subscript, "There is no page " + std::to_string(lIndex), "ActivePageIndex");
    BringToFront(lIndex);
}

void WindowForm::BringToFront(int iPage, bool bAnyway) {
    const Ref<Form> oSelf(this);
    if (m_eType == WindowTypeConstants::cvWizard && !bAnyway && !IsReachable(iPage))
        return;
    const bool bIsOther = iPage != m_iFront;
    if (bIsOther)
        DeactivateFront();
    if (!m_oController)
        return; // the page that left ended the window
    m_iFront = iPage;
    if (Visible()) {
        const Ref<PageSlot> oSlot = m_aSlots[static_cast<std::size_t>(iPage)];
        const bool bFirst = !oSlot->HasWidget();
        oSlot->MakeWidget(m_pBody->Place(iPage));
        if (!m_oController)
            return; // or the one that comes
        m_pBody->ShowPage(iPage);
        ApplyMinimum();
        if (bFirst || m_eType == WindowTypeConstants::cvWizard)
            oSlot->Focus();
    }
    if (m_bIsActive)
        ActivateFront();
    if (m_oController)
        ShowState();
}

// Activations come in pairs: a page that is active isn't activated again, and one that can't be shown never is.
void WindowForm::ActivateFront() {
    if (m_aSlots.empty() || m_iActive == m_iFront)
        return;
    const Ref<PageSlot> oSlot = m_aSlots[static_cast<std::size_t>(m_iFront)];
    if (!oSlot->IsUsable())
        return;
    m_iActive = m_iFront;
    m_pHost->fnGuard([&] { m_oController->PageActivate(oSlot->PageObj()); });
}

void WindowForm::DeactivateFront() {
    if (m_iActive < 0 || !m_oController)
        return;
    const Ref<PageSlot> oSlot = m_aSlots[static_cast<std::size_t>(std::exchange(m_iActive, -1))];
    if (oSlot->IsAlive())
        m_pHost->fnGuard([&] { m_oController->PageDeactivate(oSlot->PageObj()); });
}

// A page that fails at its end doesn't keep the window open.
void WindowForm::EndPages() {
    if (!m_oController)
        return;
    const Ref<IWindowFormController> oController = m_oController;
    DeactivateFront();
    m_bIsActive = false;
    for (const auto& oSlot : Slots(m_aSlots))
        oSlot->End(oController);
}

void WindowForm::AskAll() {
    for (const auto& oSlot : Slots(m_aSlots))
        oSlot->Ask();
}

void WindowForm::PageValidityChanged(const Ref<IPage>& oPage) {
    for (const auto& oSlot : Slots(m_aSlots))
        if (oSlot->Page() == oPage)
            oSlot->Ask();
    if (m_pBody)
        ShowState();
}

// Of a wizard: back always, forward over pages that don't hold it back.
bool WindowForm::IsReachable(int iPage) const {
    for (int i = m_iFront; i < iPage; ++i)
        if (!m_aSlots[static_cast<std::size_t>(i)]->IsPassable())
            return false;
    return true;
}

// The page keeps its size where there is room.
void WindowForm::ShowCommands() {
    const int nHeight = m_pBody->ShowCommands();
    if (nHeight > 0)
        ApplyMinimum();
    const QRect oPlace = m_pFrame->PlaceNow();
    if (nHeight > 0 && Visible() && m_pFrame->State() == FormState::Normal &&
        oPlace.bottom() + nHeight <= m_pFrame->Room().bottom())
        m_pFrame->Place(oPlace.adjusted(0, 0, 0, nHeight));
}

void WindowForm::ShowState() {
    if (!m_pBody || !m_oController)
        return;
    for (int i = 0; i < static_cast<int>(m_aSlots.size()); ++i) {
        const auto& oSlot = m_aSlots[static_cast<std::size_t>(i)];
        PageMark oMark = oSlot->Mark();
        if (m_eType == WindowTypeConstants::cvWizard) {
            oMark.bIsDone = i < m_iFront && oSlot->IsUsable() && oSlot->IsValid();
            oMark.bIsReachable = IsReachable(i);
            // A step that one hasn't come to isn't wrong yet.
            oMark.bIsInvalid &= oSlot->HasWidget() && i != m_iFront;
        }
        m_pBody->MarkPage(i, oMark);
    }
    if (AnyChanged() && SavesChangesAlone())
        ShowCommands();
    CommandRow& oRow = m_pBody->Commands();
    for (const Command eCommand : oRow.Commands())
        oRow.SetCommandEnabled(eCommand, IsCommandEnabled(eCommand));
    Command eDefault = Command::cvOK;
    if (m_eType == WindowTypeConstants::cvWizard) {
        const bool bIsLast = m_iFront + 1 >= static_cast<int>(m_aSlots.size());
        eDefault = bIsLast ? Command::cvFinish : Command::cvNext;
        oRow.SetSkips(!bIsLast && !m_aSlots[static_cast<std::size_t>(m_iFront)]->IsValid() &&
                      m_aSlots[static_cast<std::size_t>(m_iFront)]->IsPassable());
    }
    oRow.SetDefault(eDefault);
    m_pFrame->SetModified(SavesChangesAlone() && AnyChanged());
}

} // namespace corvane::desktop
