#include "corvane/base/Variant.h"
#include "corvane/platform/Handlers.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <tuple>

namespace corvane {
namespace {

using testing::NumberOf;

class ILeft : public virtual Object {
public:
    virtual int Left() = 0;
};
class IRight : public virtual Object {
public:
    virtual int Right() = 0;
};
class Both final : public ILeft, public IRight {
public:
    explicit Both(int& nLiving) : m_nLiving(nLiving) { ++m_nLiving; }
    ~Both() override { --m_nLiving; }
    int Left() override { return 1; }
    int Right() override { return 2; }

private:
    int& m_nLiving;
};
class OnlyLeft final : public ILeft {
public:
    int Left() override { return 1; }
};

TEST(RefTest, UsingNothingFails) {
    const Ref<ILeft> oNothing;
    EXPECT_EQ(NumberOf([&] { oNothing->Left(); }), FailureNumber::ObjectNotSet);
    EXPECT_EQ(NumberOf([&] { (*oNothing).Left(); }), FailureNumber::ObjectNotSet);
    EXPECT_FALSE(oNothing.As<IRight>());
}

TEST(RefTest, SeesOneObjectFromEveryInterface) {
    int nLiving = 0;
    Ref<ILeft> oLeft = New<Both>(nLiving);
    const Ref<IRight> oRight = oLeft.As<IRight>();
    EXPECT_EQ(oRight->Right(), 2);
    EXPECT_TRUE(oLeft == oRight);
    EXPECT_TRUE(Variant(oLeft) == Variant(oRight));
    EXPECT_EQ(oLeft->ObjectKey(), oRight->ObjectKey());
    oLeft = New<OnlyLeft>();
    EXPECT_FALSE(oLeft == oRight);
    EXPECT_NE(oLeft->ObjectKey(), oRight->ObjectKey());
    EXPECT_EQ(nLiving, 1);
    EXPECT_EQ(NumberOf([&] { (void)oLeft.As<IRight>(); }), FailureNumber::TypeMismatch);
    EXPECT_FALSE(oLeft.TryAs<IRight>());
}

TEST(RefTest, TheLastReferenceEndsTheObject) {
    int nLiving = 0;
    auto oFirst = New<Both>(nLiving);
    Ref<Object> oSecond = oFirst;
    oFirst = *&oFirst; // itself
    oFirst = nullptr;
    EXPECT_EQ(nLiving, 1);
    Ref<Object> oThird = std::move(oSecond);
    EXPECT_EQ(nLiving, 1);
    oThird = nullptr;
    EXPECT_EQ(nLiving, 0);
}

TEST(RefTest, AConstructorMayHandOutReferencesToItself) {
    struct Child final : virtual Object {
        Ref<Object> oParent;
    };
    struct Parent final : virtual Object {
        explicit Parent(bool& bEnded) : m_bEnded(bEnded) {
            const Ref<Object> oPassing(this); // taken and given back before the constructor returns
            oChild->oParent = oPassing;
        }
        ~Parent() override { m_bEnded = true; }
        Ref<Child> oChild = New<Child>();
        bool& m_bEnded;
    };
    bool bEnded = false;
    auto oParent = New<Parent>(bEnded);
    const Ref<Child> oChild = oParent->oChild;
    oParent = nullptr;
    EXPECT_FALSE(bEnded);
    oChild->oParent = nullptr;
    EXPECT_TRUE(bEnded);
}

TEST(FailureTest, TakesInForeignExceptions) {
    const struct {
        void (*fnThrow)();
        Long lNumber;
        std::string_view sDescription;
    } aCases[] = {
        {[] { throw std::runtime_error("broken pipe"); }, FailureNumber::Foreign, "broken pipe"},
        {[] { throw std::bad_alloc(); }, FailureNumber::OutOfMemory, "Out of memory"},
        {[] { throw 7; }, FailureNumber::Foreign, "An exception of an unknown type"},
        {[] { Fail(FailureNumber::Subscript); }, FailureNumber::Subscript, "Subscript out of range"},
    };
    for (const auto& oCase : aCases) {
        try {
            oCase.fnThrow();
        } catch (...) {
            const Failure oFailure = CurrentFailure();
            EXPECT_EQ(oFailure.Number, oCase.lNumber);
            EXPECT_EQ(oFailure.Description, oCase.sDescription);
        }
    }
}

TEST(FailureTest, KeepsItsFiveFieldsThroughAHandler) {
    const testing::RecordingPlatform oPlatform;
    const auto Inner = [] {
        try {
            throw Failure(-7, "text", "step", "help.hlp", 12);
        } catch (...) {
            Reraise("Module", "Inner", "context");
        }
    };
    try {
        Inner();
        FAIL();
    } catch (const Failure& oFailure) {
        EXPECT_EQ(
            std::tie(oFailure.Number, oFailure.Description, oFailure.Source, oFailure.HelpFile, oFailure.HelpContext),
            std::make_tuple(-7, "text", "step", "help.hlp", 12));
        Report("Module", "Outer");
    }
    EXPECT_EQ(oPlatform.TakeLines(), (std::vector<std::string>{"Module.Inner -7 (context)", "Module.Outer -7 shown"}));
}

} // namespace
} // namespace corvane
