#include "corvane/base/Text.h"
#include "corvane/collections/SortedList.h"
#include "tests/support/Failing.h"
#include "tests/support/RecordingUtilities.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace corvane {
namespace {

using test::FailureOf;
using testing::NumberOf;
using testing::RecordingPlatform;

using Lines = std::vector<std::string>;

constexpr Long KeyInvalid = static_cast<Long>(0x80040001);

class SortedListTest : public ::testing::Test {
protected:
    void SetUp() override { m_oList = New<SortedList>(); }

    RecordingPlatform m_oPlatform;
    Ref<SortedList> m_oList;
};

TEST_F(SortedListTest, AnEmptyListAnswersEverything) {
    EXPECT_EQ(m_oList->SortMode(), SortNumeric);
    EXPECT_EQ(m_oList->Count(), 0);
    EXPECT_FALSE(m_oList->Exists("1"));
    EXPECT_TRUE(m_oList->Item("1").IsEmpty());
    EXPECT_EQ(m_oList->GetTop(), Variant(Long{0}));
    m_oList->RemoveTop();
    m_oList->Remove("1");
    EXPECT_TRUE(m_oList->Keys().empty());
    EXPECT_TRUE(m_oList->Items().empty());
    EXPECT_EQ(m_oPlatform.TakeLines(), Lines{});
}

TEST_F(SortedListTest, OrdersByItsMode) {
    const struct {
        SortModeConstants eMode;
        std::vector<Variant> aKeys;
        Lines aOrdered;
    } aCases[] = {
        {SortNumeric, {Long{2}, Long{10}, Long{1}}, {"1", "2", "10"}},
        {SortText, {Long{2}, Long{10}, Long{1}}, {"1", "10", "2"}},
        {SortNumeric, {"-1.5", " 7 ", 2.5, "1e2", Long{-2}}, {"-2", "-1.5", "2.5", " 7 ", "1e2"}},
        {SortText, {"b", "C", "a", "\u00C4", "\u00E0", ""}, {"", "a", "b", "C", "\u00E0", "\u00C4"}},
    };
    for (const auto& oCase : aCases) {
        m_oList = New<SortedList>();
        m_oList->SetSortMode(oCase.eMode);
        for (const Variant& vKey : oCase.aKeys)
            m_oList->Add(vKey, {});
        EXPECT_EQ(m_oList->Keys(), oCase.aOrdered);
    }
}

TEST_F(SortedListTest, RefusesWhatIsNoNumberInNumericMode) {
    const Ref<Object> oObject = m_oList;
    const Variant aKeys[] = {"abc", "", "1x", "0x10", "inf", "1e999", "1,5", oObject};
    for (const Variant& vKey : aKeys)
        EXPECT_EQ(NumberOf([&] { m_oList->Add(vKey, {}); }), KeyInvalid);
    EXPECT_EQ(m_oList->Count(), 0);
    (void)m_oPlatform.TakeLines();
    EXPECT_EQ(FailureOf([&] { (void)m_oList->Exists("abc"); }),
              "-2147221503: Key Invalid: Text keys are invalid when SortMode is Numeric");
    EXPECT_EQ(m_oPlatform.TakeLines(), Lines{"SortedList.Exists -2147221503"});
    EXPECT_EQ(m_oList->Keys(), Lines{});
    m_oList->SetSortMode(SortText);
    EXPECT_EQ(NumberOf([&] { m_oList->Add(oObject, {}); }), FailureNumber::TypeMismatch);
    EXPECT_EQ(m_oList->Count(), 0);
}

TEST_F(SortedListTest, TheModeChangesWhileNothingLivesInTheList) {
    m_oList->Add("1", {});
    EXPECT_EQ(FailureOf([&] { m_oList->SetSortMode(SortText); }),
              "-2147221501: SortMode Failure: You cannot change the SortMode unless the list is empty.");
    EXPECT_EQ(m_oPlatform.TakeLines(), Lines{"SortedList.SortMode (Let) -2147221501"});
    EXPECT_EQ(m_oList->SortMode(), SortNumeric);
    m_oList->RemoveTop();
    m_oList->SetSortMode(SortText);
    EXPECT_EQ(m_oList->SortMode(), SortText);
}

TEST_F(SortedListTest, EqualKeysAreEqualInTheSenseOfTheMode) {
    m_oList->Add("1.0", "number");
    EXPECT_EQ(m_oList->Item("1"), Variant("number"));
    EXPECT_EQ(NumberOf([&] { (void)m_oList->Item("abc"); }), FailureNumber::TypeMismatch);
    EXPECT_EQ(NumberOf([&] { m_oList->Remove("abc"); }), FailureNumber::TypeMismatch);
    m_oList->Clear();
    m_oList->SetSortMode(SortText);
    m_oList->Add("\u00C4bc", "text");
    EXPECT_EQ(m_oList->Item("\u00E4BC"), Variant("text"));
    m_oList->Clear();
    EXPECT_EQ(m_oList->SortMode(), SortText);
}

// What the table's form lets through: unused slots pass for items, and the top is looked for with sixteen bits.
TEST_F(SortedListTest, FailsBeyondWhatItsTableHolds) {
    for (Long l = 1; l <= 12; ++l)
        m_oList->Add(l, l);
    m_oList->Remove("12");
    EXPECT_EQ(NumberOf([&] { (void)m_oList->Exists("12"); }), FailureNumber::TypeMismatch);
    EXPECT_EQ(m_oList->Count(), 11);
    EXPECT_EQ(NumberOf([&] { (void)m_oList->Keys(); }), FailureNumber::Subscript);
    m_oList = New<SortedList>();
    for (Long l = 1; l <= 32768; ++l)
        m_oList->Add(l, l);
    for (Long l = 1; l <= 32766; ++l)
        m_oList->Remove(std::to_string(l));
    EXPECT_EQ(m_oList->GetTop(), Variant(Long{32767}));
    m_oList->RemoveTop();
    EXPECT_EQ(NumberOf([&] { (void)m_oList->GetTop(); }), FailureNumber::Overflow);
    EXPECT_EQ(m_oList->Keys(), Lines{"32768"});
}

TEST_F(SortedListTest, DuplicatesAreRemovedOneByOne) {
    m_oList->SetSortMode(SortText);
    for (const char* sKey : {"a", "A", "b", "c", "d", "e", "f", "g", "h", "i"})
        m_oList->Add(sKey, {});
    EXPECT_EQ(m_oList->Count(), 10);
    for (const Long lLeft : {9, 8, 8}) {
        m_oList->Remove("a");
        EXPECT_EQ(m_oList->Count(), lLeft);
    }
    EXPECT_FALSE(m_oList->Exists("A"));
    EXPECT_EQ(m_oList->Keys(), (Lines{"b", "c", "d", "e", "f", "g", "h", "i"}));
}

TEST_F(SortedListTest, ObjectsAreSharedAndReleased) {
    struct Probe final : virtual Object {
        explicit Probe(int& nLiving) : m_nLiving(nLiving) { ++m_nLiving; }
        ~Probe() override { --m_nLiving; }
        int& m_nLiving;
    };
    int nLiving = 0;
    for (Long l = 1; l <= 10; ++l)
        m_oList->Add(l, New<Probe>(nLiving));
    EXPECT_EQ(ToObject(m_oList->Item("3")), ToObject(m_oList->Items()[2]));
    m_oList->Remove("3");
    m_oList->RemoveTop();
    EXPECT_EQ(nLiving, 8);
    const Variant vKept = m_oList->GetTop();
    m_oList->Clear();
    EXPECT_EQ(nLiving, 1);
    EXPECT_TRUE(ToObject(vKept).TryAs<Probe>());
}

// Within the range in which it is an ordered map: no key is looked for once it has been removed, none is doubled.
TEST_F(SortedListTest, AgreesWithAnOrderedMap) {
    std::mt19937 oRandom(11);
    const auto Below = [&](std::size_t n) { return static_cast<std::size_t>(oRandom() % n); };
    for (const SortModeConstants eMode : {SortNumeric, SortText}) {
        m_oList = New<SortedList>();
        m_oList->SetSortMode(eMode);
        const auto Before = [&](const std::string& a, const std::string& b) {
            return eMode == SortNumeric ? std::stod(a) < std::stod(b) : CompareText(a, b) < 0;
        };
        std::map<std::string, Long, decltype(Before)> mapModel(Before);
        std::map<std::string, Long, decltype(Before)> mapEver(Before);
        const auto AnyLive = [&] {
            return std::next(mapModel.begin(), static_cast<std::ptrdiff_t>(Below(mapModel.size())));
        };
        for (Long lStep = 0; lStep < 6000; ++lStep) {
            const std::size_t nWhat = Below(100);
            if (nWhat < 60 || mapModel.empty()) {
                std::string sKey = std::to_string(Below(100000) / 8) + "." + std::to_string(Below(10));
                if (eMode == SortText)
                    sKey += Below(2) == 0 ? "k" : "K";
                if (!mapEver.emplace(sKey, lStep).second)
                    continue;
                mapModel.emplace(sKey, lStep);
                m_oList->Add(sKey, lStep);
            } else if (nWhat < 80) {
                const auto it = AnyLive();
                EXPECT_EQ(m_oList->Item(it->first), Variant(it->second));
                EXPECT_TRUE(m_oList->Exists(it->first));
                m_oList->Remove(it->first);
                mapModel.erase(it);
            } else if (nWhat < 95) {
                ASSERT_EQ(m_oList->GetTop(), Variant(mapModel.begin()->second));
                m_oList->RemoveTop();
                mapModel.erase(mapModel.begin());
            } else if (nWhat < 99) {
                Lines aKeys;
                for (const auto& oEntry : mapModel)
                    aKeys.push_back(oEntry.first);
                ASSERT_EQ(m_oList->Keys(), aKeys) << "at step " << lStep;
            } else if (Below(10) == 0) {
                m_oList->Clear();
                mapModel.clear();
                mapEver.clear();
            }
            ASSERT_EQ(m_oList->Count(), static_cast<Long>(mapModel.size()));
        }
    }
}

} // namespace
} // namespace corvane
