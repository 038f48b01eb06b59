#include "corvane/base/Text.h"

#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <set>
#include <string>

namespace corvane {
namespace {

TEST(TextTest, FoldsCapitalLettersOntoSmallOnes) {
    const std::pair<const char*, const char*> aEqual[] = {
        {"", ""},
        {"ABCXYZ", "abcxyz"},
        {"\u00C0", "\u00E0"},
        {"\u00D6", "\u00F6"},
        {"\u00D8", "\u00F8"},
        {"\u00DE", "\u00FE"},
        {"\u0152", "\u0153"},
        {"\u0160", "\u0161"},
        {"\u017D", "\u017E"},
        {"\u0178", "\u00FF"},
        {"Stra\u00DFe \u00C4", "sTRA\u00DFE \u00E4"},
        {"\u0100\u0132\u0139\u0147\u0176\u0179", "\u0101\u0133\u013A\u0148\u0177\u017A"},
        {"\u0386\u0388\u038C\u038F\u0391\u03A9\u03AB", "\u03AC\u03AD\u03CC\u03CE\u03B1\u03C9\u03CB"},
        {"\u0401\u0410\u042F\u0490\u04C0\u04C1", "\u0451\u0430\u044F\u0491\u04CF\u04C2"},
        {"\u0531\u0556\u1E00\u1EF8\uFF21", "\u0561\u0586\u1E01\u1EF9\uFF41"},
    };
    for (const auto& [sUpper, sLower] : aEqual) {
        EXPECT_TRUE(EqualText(sUpper, sLower)) << sUpper;
        EXPECT_EQ(HashText(sUpper), HashText(sLower)) << sUpper;
        EXPECT_EQ(FoldText(sUpper), FoldText(sLower)) << sUpper;
    }
    const std::pair<const char*, const char*> aDifferent[] = {
        {"\u00D7", "\u00F7"}, // the signs for times and divided by
        {"a", "\u00E4"},      {"\u00DF", "ss"}, {"a", "a "},          {"[", "{"},      {"\u0131", "i"},
        {"\u0138", "\u0139"}, {"\u0192", "f"},  {"\u20AC", "\u20AD"}, {"\u0410", "A"},
    };
    for (const auto& [sLeft, sRight] : aDifferent)
        EXPECT_FALSE(EqualText(sLeft, sRight)) << sLeft << " and " << sRight;
}

// Tables take the low bits. Chance puts 10,000 names into 7,486 of 16,384 places.
TEST(TextTest, SpreadsSimilarNamesOverTheLowBitsOfTheHash) {
    for (const std::string sBefore : {"", "Item", "Path\\Item", "\u00C4", "A name of many characters "})
        for (const std::string sBehind : {"", ".", " of a menu of the application"}) {
            std::set<std::size_t> setPlaces;
            for (int i = 0; i < 10000; ++i)
                setPlaces.insert(HashText(sBefore + std::to_string(i) + sBehind) % 16384);
            EXPECT_GT(setPlaces.size(), 6500U) << sBefore << "0" << sBehind;
        }
}

TEST(TextTest, OrdersByFoldedCodePoints) {
    // Each before the next.
    const char* aOrdered[] = {"",    " ", "10", "9",      "_",      "a",      "AB",
                              "abc", "b", "Z",  "\u00C4", "\u00FC", "\u20AC", "\U0001F600"};
    for (std::size_t i = 0; i < std::size(aOrdered); ++i)
        for (std::size_t j = 0; j < std::size(aOrdered); ++j) {
            const int nOrder = CompareText(aOrdered[i], aOrdered[j]);
            EXPECT_EQ((nOrder > 0) - (nOrder < 0), (i > j) - (i < j)) << aOrdered[i] << " and " << aOrdered[j];
        }
}

TEST(TextTest, BrokenUtf8EndsAndDiffers) {
    const char* aBroken[] = {"a", "a\x80", "a\xC3", "a\xE2\x82", "a\xF0\x9F\x98", "a\xFF"};
    for (std::size_t i = 0; i < std::size(aBroken); ++i)
        for (std::size_t j = 0; j < std::size(aBroken); ++j)
            EXPECT_EQ(EqualText(aBroken[i], aBroken[j]), i == j) << i << " and " << j;
    EXPECT_EQ(FoldText("A\xE2\x82"), "a\xE2\x82");
}

// The one goes by words where it can, the other by characters.
TEST(TextTest, EqualAndCompareAgree) {
    const char* aPieces[] = {"a", "A", "b", "[", "{", "1", "Q", " ", "\u00E4", "\u00C4", "\u212A", "k", "\xFF"};
    std::mt19937 oRandom(8);
    const auto Text = [&] {
        std::string sText(oRandom() % 3 * 7, 'x');
        for (std::size_t n = oRandom() % 4; n > 0; --n)
            sText += aPieces[oRandom() % std::size(aPieces)];
        return sText;
    };
    int nEqual = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string sLeft = Text();
        const std::string sRight = Text();
        const bool bEqual = CompareText(sLeft, sRight) == 0;
        nEqual += bEqual ? 1 : 0;
        ASSERT_EQ(EqualText(sLeft, sRight), bEqual) << sLeft << " and " << sRight;
    }
    EXPECT_GT(nEqual, 300);
}

} // namespace
} // namespace corvane
