#include "desktop/windows/PagePlace.h"
#include "desktop/windows/WindowForm.h"

#include <algorithm>
#include <utility>

namespace corvane::desktop {

void WindowForm::SetActivePageIndex(Long index) {
    if (index < 0 || index >= static_cast<Long>(m_slots.size()))
        Fail(FailureNumber::Subscript, "There is no page " + std::to_string(index), "ActivePageIndex");
    BringToFront(index);
}

void WindowForm::BringToFront(int page, bool anyway) {
    const Ref<Form> self(this);
    if (m_type == WindowTypeConstants::cvWizard && !anyway && !IsReachable(page))
        return;
    const bool isOther = page != m_front;
    if (isOther)
        DeactivateFront();
    if (!m_controller)
        return; // the page that left ended the window
    m_front = page;
    if (Visible()) {
        const Ref<PageSlot> slot = m_slots[static_cast<std::size_t>(page)];
        const bool first = !slot->HasWidget();
        slot->MakeWidget(m_body->Place(page));
        if (!m_controller)
            return; // or the one that comes
        m_body->ShowPage(page);
        ApplyMinimum();
        if (first || m_type == WindowTypeConstants::cvWizard)
            slot->Focus();
    }
    if (m_isActive)
        ActivateFront();
    if (m_controller)
        ShowState();
}

// Activations come in pairs: a page that is active isn't activated again, and one that can't be shown never is.
void WindowForm::ActivateFront() {
    if (m_slots.empty() || m_active == m_front)
        return;
    const Ref<PageSlot> slot = m_slots[static_cast<std::size_t>(m_front)];
    if (!slot->IsUsable())
        return;
    m_active = m_front;
    m_host->guard([&] { m_controller->PageActivate(slot->PageObj()); });
}

void WindowForm::DeactivateFront() {
    if (m_active < 0 || !m_controller)
        return;
    const Ref<PageSlot> slot = m_slots[static_cast<std::size_t>(std::exchange(m_active, -1))];
    const Ref<IWindowFormController> controller = m_controller;
    if (!slot->IsAlive())
        return;
    bool reported = false;
    m_host->guard([&] {
        controller->PageDeactivate(slot->PageObj());
        reported = true;
    });
    if (reported || !m_controller || !slot->IsAlive())
        return;
    // Until a page's leaving has been heard, it counts as the active one. Whoever failed to hear it has been shown.
    try {
        controller->PageDeactivate(slot->PageObj());
    } catch (...) {
        // It is in the log.
    }
}

// A page that fails at its end doesn't keep the window open.
void WindowForm::EndPages() {
    if (!m_controller)
        return;
    const Ref<IWindowFormController> controller = m_controller;
    DeactivateFront();
    m_isActive = false;
    for (const auto& slot : Slots(m_slots))
        slot->End(controller);
}

void WindowForm::AskAll() {
    for (const auto& slot : Slots(m_slots))
        slot->Ask();
}

void WindowForm::PageValidityChanged(const Ref<IPage>& page) {
    for (const auto& slot : Slots(m_slots))
        if (slot->Page() == page)
            slot->Ask();
    if (m_body)
        ShowState();
}

// Of a wizard: back always, forward over pages that don't hold it back.
bool WindowForm::IsReachable(int page) const {
    for (int i = m_front; i < page; ++i)
        if (!m_slots[static_cast<std::size_t>(i)]->IsPassable())
            return false;
    return true;
}

// The page keeps its size where there is space.
void WindowForm::ShowCommands() {
    const int height = m_body->ShowCommands();
    if (height > 0)
        ApplyMinimum();
    const QRect place = m_frame->PlaceNow();
    if (height > 0 && Visible() && m_frame->State() == FormState::Normal &&
        place.bottom() + height <= m_frame->Room().bottom())
        m_frame->Place(place.adjusted(0, 0, 0, height));
}

void WindowForm::ShowState() {
    if (!m_body || !m_controller)
        return;
    for (int i = 0; i < static_cast<int>(m_slots.size()); ++i) {
        const auto& slot = m_slots[static_cast<std::size_t>(i)];
        PageMark mark = slot->Mark();
        if (m_type == WindowTypeConstants::cvWizard) {
            mark.isDone = i < m_front && slot->IsUsable() && slot->IsValid();
            mark.isReachable = IsReachable(i);
            // A step that one hasn't come to isn't wrong yet.
            mark.isInvalid &= slot->HasWidget() && i != m_front;
        }
        m_body->MarkPage(i, mark);
    }
    if (AnyChanged() && SavesChangesAlone())
        ShowCommands();
    CommandRow& row = m_body->Commands();
    for (const Command command : row.Commands())
        row.SetCommandEnabled(command, IsCommandEnabled(command));
    Command defaultCommand = Command::cvOK;
    if (m_type == WindowTypeConstants::cvWizard) {
        const bool isLast = m_front + 1 >= static_cast<int>(m_slots.size());
        defaultCommand = isLast ? Command::cvFinish : Command::cvNext;
        row.SetSkips(!isLast && !m_slots[static_cast<std::size_t>(m_front)]->IsValid() &&
                     m_slots[static_cast<std::size_t>(m_front)]->IsPassable());
    }
    row.SetDefault(defaultCommand);
    m_frame->SetModified(SavesChangesAlone() && AnyChanged());
}

} // namespace corvane::desktop
