#include "desktop/windows/WindowPages.h"

#include "corvane/services/WindowDef.h"

#include <algorithm>
#include <utility>

namespace corvane::desktop {

void WindowPages::Create(Ref<IWindowFormController> controller) {
    m_controller = controller;
    std::vector<Ref<PageDef>> pageDefs;
    for (const auto& pageDef : controller->WindowDef()->PageDefs())
        pageDefs.push_back(pageDef);
    std::stable_sort(pageDefs.begin(), pageDefs.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    for (const auto& pageDef : pageDefs) {
        m_slots.push_back(std::make_unique<PageSlot>(pageDef, m_guard, m_openForm));
        m_slots.back()->Create(controller);
        if (!m_controller)
            return;
    }
}

void WindowPages::End() {
    Deactivate();
    m_isWindowActive = false;
    const Ref<IWindowFormController> controller = std::move(m_controller);
    if (!controller)
        return;
    for (const auto& slot : m_slots)
        slot->End(controller);
}

bool WindowPages::IsReachable(int page) const {
    if (m_type != WindowTypeConstants::cvWizard)
        return true;
    for (int i = m_front; i < page; ++i)
        if (!At(i).IsPassable())
            return false;
    return true;
}

void WindowPages::ActivateFront() {
    const PageSlot* slot = Front();
    if (!m_controller || !m_isWindowActive || !slot || m_active == m_front || !slot->IsUsable())
        return;
    m_active = m_front;
    m_guard([pageObj = slot->PageObj(), controller = m_controller] { controller->PageActivate(pageObj); });
}

void WindowPages::Deactivate() {
    if (m_active < 0 || !m_controller)
        return;
    const PageSlot& slot = At(std::exchange(m_active, -1));
    if (!slot.IsAlive())
        return;
    bool reported = false;
    m_guard([&, pageObj = slot.PageObj(), controller = m_controller] {
        controller->PageDeactivate(pageObj);
        reported = true;
    });
    if (reported || !m_controller || !slot.IsAlive())
        return;
    // Until a page's leaving has been heard, it counts as the active one. Whoever failed to hear it has been shown.
    try {
        const Ref<IWindowFormController> controller = m_controller;
        controller->PageDeactivate(slot.PageObj());
    } catch (...) {
        // It is in the log.
    }
}

void WindowPages::AskAll() {
    for (const auto& slot : m_slots)
        slot->Ask();
}

void WindowPages::Ask(const Ref<IPage>& page) {
    for (const auto& slot : m_slots)
        if (slot->IsAlive() && slot->Page() == page)
            slot->Ask();
}

bool WindowPages::AllPassable() const {
    return FirstHindrance() < 0;
}

bool WindowPages::AnyChanged() const {
    return std::any_of(m_slots.begin(), m_slots.end(), [](const auto& slot) { return slot->IsChanged(); });
}

bool WindowPages::IsIncomplete() const {
    return std::any_of(m_slots.begin(), m_slots.end(),
                       [](const auto& slot) { return slot->IsBroken() && !slot->PageDef()->IsOptional(); });
}

int WindowPages::FirstHindrance() const {
    const auto it = std::find_if(m_slots.begin(), m_slots.end(), [](const auto& slot) { return !slot->IsPassable(); });
    return it == m_slots.end() ? -1 : static_cast<int>(it - m_slots.begin());
}

PageMark WindowPages::MarkOf(int page) const {
    const PageSlot& slot = At(page);
    PageMark mark = slot.Mark();
    if (m_type != WindowTypeConstants::cvWizard)
        return mark;
    mark.isDone = page < m_front && slot.IsUsable() && slot.IsValid();
    mark.isReachable = IsReachable(page);
    // A step that one hasn't come to isn't wrong yet.
    mark.isInvalid &= slot.HasWidget() && page != m_front;
    return mark;
}

} // namespace corvane::desktop
