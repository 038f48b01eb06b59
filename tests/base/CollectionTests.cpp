#include "corvane/base/Dictionary.h"
#include "corvane/base/KeyedCollection.h"
#include "tests/support/RecordingUtilities.h"

#include <functional>
#include <gtest/gtest.h>
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

TEST(KeyedCollectionTest, IndexAndKeyHoldAfterRemovals) {
    const auto colTexts = NewTexts("abcdef");
    colTexts->Remove("A");
    colTexts->Remove(2); // c
    EXPECT_EQ(colTexts->Count(), 4);
    EXPECT_EQ(colTexts->Item(2), "d");
    EXPECT_EQ(colTexts->KeyAt(4), "f");
    colTexts->Add("A", "a"); // the key is free again, and stands at the end
    EXPECT_EQ(colTexts->Item(5), "A");
    EXPECT_EQ(Joined(colTexts), "bdefA");
}

TEST(KeyedCollectionTest, IterationBearsChanges) {
    const struct {
        const char* sName;
        void (*fnChange)(Texts&, const std::string&);
        const char* sVisited;
        const char* sLeft;
    } aCases[] = {
        {"RemovesEach", [](Texts& o, const std::string& s) { o.Remove(s); }, "abcde", ""},
        {"RemovesTheNext",
         [](Texts& o, const std::string& s) {
             if (s == "b")
                 o.Remove("c");
         },
         "abde", "abde"},
        {"RemovesAPassedOne",
         [](Texts& o, const std::string& s) {
             if (s == "c")
                 o.Remove(1);
         },
         "abcde", "bcde"},
        {"AsksForIndexesMeanwhile",
         [](Texts& o, const std::string& s) {
             o.Remove(s);
             if (o.Count() > 0) {
                 EXPECT_EQ(o.Item(1), std::string(1, static_cast<char>(s[0] + 1)));
             }
         },
         "abcde", ""},
        {"AddsOne",
         [](Texts& o, const std::string& s) {
             if (s == "b")
                 o.Add("f", "f");
         },
         "abcdef", "abcdef"},
        {"AddsMany",
         [](Texts& o, const std::string& s) {
             if (s == "e")
                 for (char c = 'f'; c <= 'z'; ++c)
                     o.Add(std::string(1, c));
         },
         "abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvwxyz"},
        {"ReplacesEach",
         [](Texts& o, const std::string& s) {
             if (s[0] > 'Z') {
                 o.Remove(s);
                 o.Add(std::string(1, static_cast<char>(s[0] - 32)), s);
             }
         },
         "abcdeABCDE", "ABCDE"},
    };
    for (const auto& oCase : aCases) {
        const auto colTexts = NewTexts("abcde");
        std::string sVisited;
        for (const auto& sText : colTexts) {
            sVisited += sText;
            oCase.fnChange(*colTexts, sText);
        }
        EXPECT_EQ(sVisited, oCase.sVisited) << oCase.sName;
        EXPECT_EQ(Joined(colTexts), oCase.sLeft) << oCase.sName;
    }
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

TEST(KeyedCollectionTest, AgreesWithAPlainSequence) {
    std::mt19937 oRandom(5);
    const auto colTexts = New<Texts>();
    std::vector<std::string> aModel;
    for (int nStep = 0; nStep < 20000; ++nStep) {
        const std::size_t nWhat = oRandom() % 8;
        if (nWhat < 4 || aModel.empty()) {
            aModel.push_back("key" + std::to_string(nStep));
            colTexts->Add(aModel.back(), aModel.back());
            continue;
        }
        // Most removals come in runs without a look by index between them.
        const std::size_t i = oRandom() % aModel.size();
        if (nWhat == 7)
            ASSERT_EQ(colTexts->Item(static_cast<Long>(i) + 1), aModel[i]);
        else
            ASSERT_EQ(colTexts->Item(aModel[i]), aModel[i]);
        colTexts->Remove(aModel[i]);
        aModel.erase(aModel.begin() + static_cast<std::ptrdiff_t>(i));
        ASSERT_EQ(colTexts->Count(), static_cast<Long>(aModel.size()));
    }
    std::string sModel;
    for (const auto& sText : aModel)
        sModel += sText;
    EXPECT_EQ(Joined(colTexts), sModel);
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
