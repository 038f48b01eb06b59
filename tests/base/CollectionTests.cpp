#include "corvane/base/Dictionary.h"
#include "corvane/base/KeyedCollection.h"
#include "tests/support/RecordingUtilities.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace corvane {
namespace {

using testing::NumberOf;
using Texts = KeyedCollection<std::string>;

std::string Joined(const Ref<Texts>& colTexts) {
    std::string sJoined;
    for (const auto& sText : colTexts)
        sJoined += sText;
    return sJoined;
}

Ref<Texts> NewTexts(std::string_view sLetters) {
    auto colTexts = New<Texts>();
    for (const char c : sLetters)
        colTexts->Add(std::string(1, c), std::string(1, c));
    return colTexts;
}

TEST(KeyedCollectionTest, FindsByKeyAndByIndex) {
    const auto colTexts = NewTexts("abc");
    colTexts->Add("d"); // without a key
    colTexts->Add("e", "");
    colTexts->Add("f", "\u00C4");
    EXPECT_EQ(colTexts->Item("B") + colTexts->Item("") + colTexts->Item("\u00E4"), "bef");
    EXPECT_EQ(colTexts->Item(1) + colTexts->Item(4) + colTexts->Item(6), "adf");
    EXPECT_EQ(colTexts->KeyAt(3) + "," + colTexts->KeyAt(4), "c,");
    EXPECT_EQ(Joined(colTexts), "abcdef");
}

TEST(KeyedCollectionTest, Fails) {
    const auto colTexts = NewTexts("abc");
    const struct {
        const char* sName;
        std::function<void()> fnCall;
        Long lNumber;
    } aCases[] = {
        {"key in use", [&] { colTexts->Add("x", "A"); }, FailureNumber::KeyInUse},
        {"absent key", [&] { (void)colTexts->Item("x"); }, FailureNumber::InvalidProcedureCall},
        {"empty key", [&] { (void)colTexts->Item(""); }, FailureNumber::InvalidProcedureCall},
        {"absent key to remove", [&] { colTexts->Remove("x"); }, FailureNumber::InvalidProcedureCall},
        {"index 0", [&] { (void)colTexts->Item(0); }, FailureNumber::InvalidProcedureCall},
        {"index behind the end", [&] { (void)colTexts->Item(4); }, FailureNumber::InvalidProcedureCall},
        {"index -1 to remove", [&] { colTexts->Remove(-1); }, FailureNumber::InvalidProcedureCall},
        {"iteration over nothing", [] { (void)Joined(nullptr); }, FailureNumber::ObjectNotSet},
    };
    for (const auto& oCase : aCases)
        EXPECT_EQ(NumberOf(oCase.fnCall), oCase.lNumber) << oCase.sName;
    EXPECT_EQ(Joined(colTexts), "abc");
    EXPECT_TRUE(KeyExists(colTexts, "C"));
    EXPECT_FALSE(KeyExists(colTexts, ""));
    EXPECT_FALSE(KeyExists(Ref<Texts>(), "a"));
}

TEST(KeyedCollectionTest, IterationHoldsTheCollection) {
    auto colTexts = NewTexts("abc");
    std::string sVisited;
    for (const auto& sText : colTexts) {
        colTexts = nullptr;
        sVisited += sText;
    }
    EXPECT_EQ(sVisited, "abc");
}

// A plain sequence beside a collection, in which removed elements leave empty texts until it is tidied.
struct Pair {
    void Add(const std::string& sKey) {
        aModel.push_back(sKey);
        colTexts->Add(sKey, sKey);
    }
    void Change(std::mt19937& oRandom) {
        if (aModel.empty() || (oRandom() % 2 == 0 && aModel.size() < 200))
            return Add("key" + std::to_string(++nKeys));
        const auto it = aModel.begin() + static_cast<std::ptrdiff_t>(oRandom() % aModel.size());
        if (it->empty())
            return;
        const auto lIndex = static_cast<Long>(1 + (it - aModel.begin()) - std::count(aModel.begin(), it, ""));
        const std::string sKey = std::exchange(*it, "");
        switch (oRandom() % 8) {
        case 0: // again, at the end
            EXPECT_EQ(colTexts->KeyAt(lIndex), sKey);
            colTexts->Remove(lIndex);
            return Add(sKey);
        case 1:
            EXPECT_EQ(colTexts->Item(lIndex), sKey);
            [[fallthrough]];
        default:
            EXPECT_EQ(colTexts->Item(sKey), sKey);
            colTexts->Remove(sKey);
        }
    }

    Ref<Texts> colTexts = New<Texts>();
    std::vector<std::string> aModel;
    int nKeys = 0;
};

TEST(KeyedCollectionTest, AgreesWithAPlainSequenceAlsoWhileItIsIterated) {
    std::mt19937 oRandom(5);
    Pair oPair;
    for (int nRound = 0; nRound < 500; ++nRound) {
        for (std::size_t n = oRandom() % 100; n > 0; --n)
            oPair.Change(oRandom);
        std::erase(oPair.aModel, "");
        std::size_t i = 0;
        const auto SkipRemoved = [&] {
            while (i < oPair.aModel.size() && oPair.aModel[i].empty())
                ++i;
            return i < oPair.aModel.size();
        };
        for (const auto& sText : oPair.colTexts) {
            ASSERT_TRUE(SkipRemoved());
            ASSERT_EQ(sText, oPair.aModel[i++]);
            for (std::size_t n = oRandom() % 3; n > 0; --n)
                oPair.Change(oRandom);
        }
        ASSERT_FALSE(SkipRemoved());
        std::erase(oPair.aModel, "");
        ASSERT_EQ(oPair.colTexts->Count(), static_cast<Long>(oPair.aModel.size()));
    }
    EXPECT_EQ(Joined(oPair.colTexts), std::accumulate(oPair.aModel.begin(), oPair.aModel.end(), std::string()));
}

TEST(KeyedCollectionTest, TheEndOfARemovedElementMayCallBack) {
    struct Element;
    using Elements = KeyedCollection<Ref<Element>>;
    struct Element final : virtual Object {
        explicit Element(Elements& oHome) : m_oHome(oHome) {}
        ~Element() override {
            if (m_oHome.Count() > 0)
                m_oHome.Remove(1);
        }
        Elements& m_oHome;
    };
    const auto colElements = New<Elements>();
    for (int n = 0; n < 5; ++n)
        colElements->Add(New<Element>(*colElements), std::to_string(n));
    colElements->Remove("3");
    EXPECT_EQ(colElements->Count(), 0);
}

TEST(DictionaryTest, KeepsValuesByName) {
    const auto dctValues = New<Dictionary>();
    dctValues->Add("One", Long{1});
    dctValues->Set("two", "2");
    dctValues->Set("ONE", 1.5); // in its place
    EXPECT_EQ(dctValues->Item("one"), Variant(1.5));
    EXPECT_EQ(dctValues->Keys(), (std::vector<std::string>{"One", "two"}));
    EXPECT_EQ(NumberOf([&] { dctValues->Add("TWO", {}); }), FailureNumber::KeyInUse);
    EXPECT_EQ(NumberOf([&] { (void)dctValues->Item("three"); }), FailureNumber::InvalidProcedureCall);
    dctValues->Remove("One");
    EXPECT_EQ(NumberOf([&] { dctValues->Remove("One"); }), FailureNumber::InvalidProcedureCall);
    EXPECT_FALSE(dctValues->Exists("one"));
    EXPECT_EQ(dctValues->Keys(), std::vector<std::string>{"two"});
}

} // namespace
} // namespace corvane
