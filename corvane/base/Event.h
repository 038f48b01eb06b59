// An event with any number of subscribers, who may come and go while it is raised.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace corvane {

// Keeps one handler subscribed for as long as it lives. Empty once cancelled or moved from.
class __attribute__((visibility("default"))) Subscription {
public:
    class Slot;

    Subscription() noexcept = default;
    Subscription(Subscription&& oOther) noexcept : m_pSlot(std::exchange(oOther.m_pSlot, nullptr)) {}
    Subscription& operator=(Subscription&& oOther) noexcept;
    ~Subscription() { Cancel(); }

    // The handler isn't called again, and what it captured is released, at the latest when its running call returns.
    void Cancel() {
        if (m_pSlot)
            CancelSlot();
    }

private:
    friend class HandlerList;
    explicit Subscription(Slot& oSlot) noexcept;
    void CancelSlot();

    Slot* m_pSlot = nullptr;
};

// A handler of an event. The event and the subscription hold it together.
class __attribute__((visibility("default"))) Subscription::Slot {
public:
    Slot() = default;
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;
    virtual ~Slot();

private:
    friend class Subscription;
    friend class HandlerList;
    virtual void DropHandler() = 0;
    void Release();

    std::uint32_t m_nOwners = 0;
    std::uint32_t m_nCalls = 0; // running ones
    bool m_bCancelled = false;
};

// What an event does that doesn't depend on its arguments: it is here and not in the template, which every unit that
// raises or declares an event compiles again.
class __attribute__((visibility("default"))) HandlerList {
    struct Slots;

public:
    HandlerList() noexcept;
    ~HandlerList();
    HandlerList(const HandlerList&) = delete;
    HandlerList& operator=(const HandlerList&) = delete;

    // Takes the slot over.
    [[nodiscard]] Subscription Add(Subscription::Slot* pSlot);
    [[nodiscard]] bool HasSubscribers() const noexcept;
    // True before the first one is added.
    [[nodiscard]] bool IsUnused() const noexcept { return !m_pSlots; }

    // One raise, which goes through the handlers; its end is the end of the last one's call.
    class __attribute__((visibility("default"))) Raising {
    public:
        explicit Raising(const HandlerList& oHandlers);
        ~Raising();
        Raising(const Raising&) = delete;
        Raising& operator=(const Raising&) = delete;
        // Ends the call of one handler and begins that of the next; nothing after the last one.
        [[nodiscard]] Subscription::Slot* Next();

    private:
        void EndCall();

        std::shared_ptr<Slots> m_pSlots; // keeps the list when a handler destroys the event
        Subscription::Slot* m_pCalled = nullptr;
        std::size_t m_iNext = 0;
        std::size_t m_nSlots;
    };

private:
    std::shared_ptr<Slots> m_pSlots;
};

// Raising is synchronous, in order of subscription. A handler subscribed during a raise is called from the next one on;
// one cancelled during a raise isn't called again; the event itself may be destroyed. A failure in a handler ends the
// raise and propagates to the raiser. A reference among the arguments, as in Event<bool&>, lets handlers return a
// value.
template <class... Args>
class Event {
public:
    using Handler = std::function<void(Args...)>;

    [[nodiscard]] Subscription Subscribe(Handler fnHandler) {
        return m_oHandlers.Add(new HandlerSlot(std::move(fnHandler)));
    }

    void Raise(Args... aArguments) const {
        if (m_oHandlers.IsUnused())
            return;
        HandlerList::Raising oRaising(m_oHandlers);
        while (auto* pSlot = static_cast<HandlerSlot*>(oRaising.Next()))
            pSlot->fnHandler(aArguments...);
    }

    [[nodiscard]] bool HasSubscribers() const { return m_oHandlers.HasSubscribers(); }

private:
    struct HandlerSlot final : Subscription::Slot {
        explicit HandlerSlot(Handler&& fnGiven) : fnHandler(std::move(fnGiven)) {}
        void DropHandler() override { fnHandler = nullptr; }
        Handler fnHandler;
    };

    HandlerList m_oHandlers;
};

} // namespace corvane
