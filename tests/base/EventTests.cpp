#include "corvane/base/Event.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace corvane {
namespace {

// An event with three subscribers, a, b and c, of whom b disturbs; what they hear is kept as text.
struct Scene {
    Scene() {
        a = pEvent->Subscribe([this] { sHeard += "a"; });
        b = pEvent->Subscribe([this] {
            sHeard += "b";
            if (std::exchange(bDisturbs, false))
                fnDisturbance(*this);
        });
        c = pEvent->Subscribe([this] { sHeard += "c"; });
    }
    void Raise() {
        try {
            pEvent->Raise();
        } catch (const std::exception& oException) {
            sHeard += oException.what();
        }
    }
    std::unique_ptr<Event<>> pEvent = std::make_unique<Event<>>();
    Subscription a, b, c, d;
    std::string sHeard;
    void (*fnDisturbance)(Scene&) = nullptr;
    bool bDisturbs = true;
};

TEST(EventTest, SurvivesDisturbance) {
    const struct {
        const char* sName;
        void (*fnDisturbance)(Scene&);
        const char* sFirst;  // heard in the disturbed raise
        const char* sSecond; // and in the next
    } aCases[] = {
        {"CancelsItself", [](Scene& o) { o.b.Cancel(); }, "abc", "ac"},
        {"CancelsItselfTwice", [](Scene& o) { o.b.Cancel(), o.b.Cancel(); }, "abc", "ac"},
        {"CancelsAnEarlierOne", [](Scene& o) { o.a.Cancel(); }, "abc", "bc"},
        {"CancelsALaterOne", [](Scene& o) { o.c.Cancel(); }, "ab", "ab"},
        {"CancelsAll", [](Scene& o) { o.a = {}, o.b = {}, o.c = {}; }, "ab", ""},
        {"SubscribesAnother", [](Scene& o) { o.d = o.pEvent->Subscribe([&o] { o.sHeard += "d"; }); }, "abc", "abcd"},
        {"SubscribesManyOthers",
         [](Scene& o) {
             for (int n = 0; n < 100; ++n)
                 o.d = o.pEvent->Subscribe([&o] { o.sHeard += "d"; });
         },
         "abc", "abcd"},
        {"ReplacesItself", [](Scene& o) { o.b = o.pEvent->Subscribe([&o] { o.sHeard += "B"; }); }, "abc", "acB"},
        {"RaisesAgain", [](Scene& o) { o.pEvent->Raise(); }, "ababcc", "abc"},
        {"CancelsItselfAndRaisesAgain",
         [](Scene& o) {
             o.b.Cancel();
             o.pEvent->Raise();
         },
         "abacc", "ac"},
        {"SubscribesAnotherAndRaisesAgain",
         [](Scene& o) {
             o.d = o.pEvent->Subscribe([&o] { o.sHeard += "d"; });
             o.pEvent->Raise();
         },
         "ababcdc", "abcd"},
        {"DestroysTheEvent", [](Scene& o) { o.pEvent = std::make_unique<Event<>>(); }, "abc", ""},
        {"Throws", [](Scene&) { throw std::runtime_error("!"); }, "ab!", "abc"},
        {"CancelsItselfAndThrows",
         [](Scene& o) {
             o.b.Cancel();
             throw std::runtime_error("!");
         },
         "ab!", "ac"},
    };
    for (const auto& oCase : aCases) {
        Scene oScene;
        oScene.fnDisturbance = oCase.fnDisturbance;
        oScene.Raise();
        EXPECT_EQ(std::exchange(oScene.sHeard, {}), oCase.sFirst) << oCase.sName;
        oScene.Raise();
        EXPECT_EQ(oScene.sHeard, oCase.sSecond) << oCase.sName;
    }
}

TEST(EventTest, AHandlerMayDestroyItsOwner) {
    struct Owner {
        Event<>& oEvent;
        std::unique_ptr<Owner>& pSelf;
        std::string sName = "an owner with a name of some length";
        Subscription oSubscription = oEvent.Subscribe([sCopy = sName, pBox = &pSelf] {
            pBox->reset();
            EXPECT_EQ(sCopy, "an owner with a name of some length"); // captures last as long as the call
        });
    };
    Event<> oEvent;
    std::unique_ptr<Owner> pOwner;
    pOwner.reset(new Owner{oEvent, pOwner});
    int nLater = 0;
    const Subscription oLater = oEvent.Subscribe([&] { ++nLater; });
    oEvent.Raise();
    EXPECT_EQ(pOwner, nullptr);
    oEvent.Raise();
    EXPECT_EQ(nLater, 2);
}

TEST(EventTest, CancellingReleasesWhatTheHandlerHolds) {
    Event<> oEvent;
    const auto pHeld = std::make_shared<int>(0);
    Subscription oSubscription = oEvent.Subscribe([pHeld] {});
    EXPECT_TRUE(oEvent.HasSubscribers());
    oSubscription.Cancel();
    EXPECT_FALSE(oEvent.HasSubscribers());
    EXPECT_EQ(pHeld.use_count(), 1);
    oSubscription = oEvent.Subscribe([&, pHeld] {
        oSubscription.Cancel();
        EXPECT_EQ(pHeld.use_count(), 2); // not before the call has ended
    });
    oEvent.Raise();
    EXPECT_EQ(pHeld.use_count(), 1);
    {
        Event<> oShort;
        oSubscription = oShort.Subscribe([pHeld] {});
    }
    oSubscription.Cancel(); // after the event
    EXPECT_EQ(pHeld.use_count(), 1);
}

TEST(EventTest, HandlersAnswerThroughReferences) {
    Event<int, bool&, std::string&> oEvent;
    const Subscription aSubscriptions[] = {
        oEvent.Subscribe([](int n, bool& bCancel, std::string&) { bCancel = n > 1; }),
        oEvent.Subscribe([](int, bool& bCancel, std::string& sText) { sText += bCancel ? "cancelled" : "kept"; })};
    bool bCancel = false;
    std::string sText;
    oEvent.Raise(1, bCancel, sText);
    oEvent.Raise(2, bCancel, sText);
    EXPECT_TRUE(bCancel);
    EXPECT_EQ(sText, "keptcancelled");
}

} // namespace
} // namespace corvane
