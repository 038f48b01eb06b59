#include "corvane/base/Event.h"

#include <algorithm>
#include <vector>

namespace corvane {

struct HandlerList::Slots {
    Slots() = default;
    Slots(const Slots&) = delete;
    Slots& operator=(const Slots&) = delete;
    ~Slots() {
        for (Subscription::Slot* pSlot : aSlots)
            pSlot->Release();
    }
    void DropCancelled() {
        const auto itFirst =
            std::stable_partition(aSlots.begin(), aSlots.end(), [](const auto* pSlot) { return !pSlot->m_bCancelled; });
        std::for_each(itFirst, aSlots.end(), [](auto* pSlot) { pSlot->Release(); });
        aSlots.erase(itFirst, aSlots.end());
    }
    std::vector<Subscription::Slot*> aSlots;
    std::uint32_t nRaises = 0; // running ones
};

Subscription::Slot::~Slot() = default;

void Subscription::Slot::Release() {
    if (--m_nOwners == 0)
        delete this;
}

Subscription::Subscription(Slot& oSlot) noexcept : m_pSlot(&oSlot) {
    ++oSlot.m_nOwners;
}

Subscription& Subscription::operator=(Subscription&& oOther) noexcept {
    if (this != &oOther) {
        Cancel();
        m_pSlot = std::exchange(oOther.m_pSlot, nullptr);
    }
    return *this;
}

void Subscription::CancelSlot() {
    Slot& oSlot = *std::exchange(m_pSlot, nullptr); // what the handler captured may hold this subscription
    oSlot.m_bCancelled = true;
    if (oSlot.m_nCalls == 0)
        oSlot.DropHandler();
    oSlot.Release();
}

HandlerList::HandlerList() noexcept = default;

HandlerList::~HandlerList() = default;

Subscription HandlerList::Add(Subscription::Slot* pSlot) {
    Subscription oSubscription(*pSlot);
    if (!m_pSlots)
        m_pSlots = std::make_shared<Slots>();
    else if (m_pSlots->nRaises == 0 && m_pSlots->aSlots.size() == m_pSlots->aSlots.capacity())
        m_pSlots->DropCancelled(); // an event that is never raised would keep them for ever
    m_pSlots->aSlots.push_back(pSlot);
    ++pSlot->m_nOwners;
    return oSubscription;
}

bool HandlerList::HasSubscribers() const noexcept {
    return m_pSlots && std::any_of(m_pSlots->aSlots.begin(), m_pSlots->aSlots.end(),
                                   [](const auto* pSlot) { return !pSlot->m_bCancelled; });
}

HandlerList::Raising::Raising(const HandlerList& oHandlers)
    : m_pSlots(oHandlers.m_pSlots), m_nSlots(m_pSlots->aSlots.size()) {
    ++m_pSlots->nRaises;
}

HandlerList::Raising::~Raising() {
    EndCall();
    if (--m_pSlots->nRaises == 0)
        m_pSlots->DropCancelled();
}

Subscription::Slot* HandlerList::Raising::Next() {
    EndCall();
    while (m_iNext < m_nSlots) { // no slot goes during a raise, though the list may move
        Subscription::Slot* pSlot = m_pSlots->aSlots[m_iNext++];
        if (pSlot->m_bCancelled)
            continue;
        ++pSlot->m_nCalls;
        return m_pCalled = pSlot;
    }
    return nullptr;
}

void HandlerList::Raising::EndCall() {
    if (Subscription::Slot* pSlot = std::exchange(m_pCalled, nullptr))
        if (--pSlot->m_nCalls == 0 && pSlot->m_bCancelled)
            pSlot->DropHandler();
}

} // namespace corvane
