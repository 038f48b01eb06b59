// An event with any number of subscribers, who may come and go while it is raised.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace corvane {

// Keeps one handler subscribed for as long as it lives. Empty once cancelled or moved from.
class Subscription {
public:
    class Slot {
    public:
        virtual ~Slot() = default;
        virtual void Cancel() = 0;
    };

    Subscription() = default;
    explicit Subscription(std::shared_ptr<Slot> pSlot) : m_pSlot(std::move(pSlot)) {}
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&& oOther) noexcept {
        if (this != &oOther) {
            Cancel();
            m_pSlot = std::move(oOther.m_pSlot);
        }
        return *this;
    }
    ~Subscription() { Cancel(); }

    // The handler isn't called again, and what it captured is released, at the latest when its running call returns.
    void Cancel() {
        if (const auto pSlot = std::move(m_pSlot))
            pSlot->Cancel();
    }

private:
    std::shared_ptr<Slot> m_pSlot;
};

// Raising is synchronous, in order of subscription. A handler subscribed during a raise is called from the next one on;
// one cancelled during a raise isn't called again; the event itself may be destroyed. A failure in a handler ends the
// raise and propagates to the raiser. A reference among the arguments, as in Event<bool&>, lets handlers return a
// value.
template <class... Args>
class Event {
public:
    using Handler = std::function<void(Args...)>;

    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    [[nodiscard]] Subscription Subscribe(Handler fnHandler) {
        if (!m_pSlots)
            m_pSlots = std::make_shared<Slots>();
        else if (m_pSlots->nRaises == 0 && m_pSlots->aSlots.size() == m_pSlots->aSlots.capacity())
            m_pSlots->DropCancelled(); // an event that is never raised would keep them for ever
        auto pSlot = std::make_shared<HandlerSlot>();
        pSlot->fnHandler = std::move(fnHandler);
        m_pSlots->aSlots.push_back(pSlot);
        return Subscription(std::move(pSlot));
    }

    void Raise(Args... aArguments) const {
        const auto pSlots = m_pSlots; // keeps the list when a handler destroys the event
        if (!pSlots)
            return;
        const RaiseScope oScope(*pSlots);
        const std::size_t nSlots = pSlots->aSlots.size();
        for (std::size_t i = 0; i < nSlots; ++i) {
            HandlerSlot& oSlot = *pSlots->aSlots[i]; // no slot goes during a raise, though the list may move
            if (oSlot.bCancelled)
                continue;
            const CallScope oCall(oSlot);
            oSlot.fnHandler(aArguments...);
        }
    }

    [[nodiscard]] bool HasSubscribers() const {
        if (m_pSlots)
            for (const auto& pSlot : m_pSlots->aSlots)
                if (!pSlot->bCancelled)
                    return true;
        return false;
    }

private:
    struct HandlerSlot final : Subscription::Slot {
        void Cancel() override {
            bCancelled = true;
            if (nCalls == 0)
                fnHandler = nullptr;
        }
        Handler fnHandler;
        int nCalls = 0;
        bool bCancelled = false;
    };
    struct Slots {
        void DropCancelled() {
            std::erase_if(aSlots, [](const auto& pSlot) { return pSlot->bCancelled; });
        }
        std::vector<std::shared_ptr<HandlerSlot>> aSlots;
        int nRaises = 0;
    };
    struct RaiseScope {
        explicit RaiseScope(Slots& oSlots) : m_oSlots(oSlots) { ++m_oSlots.nRaises; }
        ~RaiseScope() {
            if (--m_oSlots.nRaises == 0)
                m_oSlots.DropCancelled();
        }
        RaiseScope(const RaiseScope&) = delete;
        RaiseScope& operator=(const RaiseScope&) = delete;
        Slots& m_oSlots;
    };
    struct CallScope {
        explicit CallScope(HandlerSlot& oSlot) : m_oSlot(oSlot) { ++m_oSlot.nCalls; }
        ~CallScope() {
            if (--m_oSlot.nCalls == 0 && m_oSlot.bCancelled)
                m_oSlot.fnHandler = nullptr;
        }
        CallScope(const CallScope&) = delete;
        CallScope& operator=(const CallScope&) = delete;
        HandlerSlot& m_oSlot;
    };

    std::shared_ptr<Slots> m_pSlots;
};

} // namespace corvane
