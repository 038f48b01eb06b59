#include "corvane/base/Variant.h"
#include "tests/support/RecordingUtilities.h"
#include "tests/support/TemporaryFolder.h"

#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

namespace corvane {
namespace {

using testing::ResultOf;

constexpr Long MaxLong = std::numeric_limits<Long>::max();

TEST(VariantTest, Converts) {
    const struct {
        Variant vValue;
        const char* sBoolean;
        const char* sLong;
        const char* sSingle;
        const char* sText;
    } aCases[] = {
        {{}, "False", "0", "0", ""},
        {true, "True", "-1", "-1", "True"},
        {false, "False", "0", "0", "False"},
        {Long{0}, "False", "0", "0", "0"},
        {Long{-7}, "True", "-7", "-7", "-7"},
        {MaxLong, "True", "2147483647", "2.147484E+09", "2147483647"},
        {0.5, "True", "0", "0.5", "0.5"},
        {1.5, "True", "2", "1.5", "1.5"},
        {2.5, "True", "2", "2.5", "2.5"},
        {-2.5, "True", "-2", "-2.5", "-2.5"},
        {-0.0, "False", "0", "0", "0"},
        {0.1F, "True", "0", "0.1", "0.1"},
        {1234567.0F, "True", "1234567", "1234567", "1234567"},
        {12345678.0F, "True", "12345678", "1.234568E+07", "1.234568E+07"},
        {0.1 + 0.2, "True", "0", "0.3", "0.3"},
        {2147483647.5, "True", "fails 6", "2.147484E+09", "2147483647.5"},
        {2147483647.25, "True", "2147483647", "2.147484E+09", "2147483647.25"},
        {-2147483648.5, "True", "-2147483648", "-2.147484E+09", "-2147483648.5"},
        {1e40, "True", "fails 6", "fails 6", "1E+40"},
        {"True", "True", "fails 13", "fails 13", "True"},
        {"fAlSe", "False", "fails 13", "fails 13", "fAlSe"},
        {"0", "False", "0", "0", "0"},
        {" -1.5 ", "True", "-2", "-1.5", " -1.5 "},
        {"+3", "True", "3", "3", "+3"},
        {".5", "True", "0", "0.5", ".5"},
        {"5.", "True", "5", "5", "5."},
        {"1e3", "True", "1000", "1000", "1e3"},
        {"1e-999", "False", "0", "0", "1e-999"},
        {"1e999", "True", "fails 6", "fails 6", "1e999"},
        {"-1e999", "True", "fails 6", "fails 6", "-1e999"},
        {"", "fails 13", "fails 13", "fails 13", ""},
        {" ", "fails 13", "fails 13", "fails 13", " "},
        {"yes", "fails 13", "fails 13", "fails 13", "yes"},
        {"1 2", "fails 13", "fails 13", "fails 13", "1 2"},
        {"1,5", "fails 13", "fails 13", "fails 13", "1,5"},
        {"0x10", "fails 13", "fails 13", "fails 13", "0x10"},
        {"nan", "fails 13", "fails 13", "fails 13", "nan"},
        {"-inf", "fails 13", "fails 13", "fails 13", "-inf"},
        {"+-1", "fails 13", "fails 13", "fails 13", "+-1"},
        {"--1", "fails 13", "fails 13", "fails 13", "--1"},
        {Ref<Object>(), "fails 13", "fails 13", "fails 13", "fails 13"},
        {LongLong{-7}, "True", "-7", "-7", "-7"},
        {LongLong{0}, "False", "0", "0", "0"},
        {12345678901234567, "True", "fails 6", "1.234568E+16", "12345678901234567"},
    };
    for (const auto& oCase : aCases) {
        const std::string sWhat = oCase.vValue.IsObject() ? "an object" : ToText(oCase.vValue);
        EXPECT_EQ(ResultOf([&] { return ToBoolean(oCase.vValue); }), oCase.sBoolean) << sWhat;
        EXPECT_EQ(ResultOf([&] { return ToLong(oCase.vValue); }), oCase.sLong) << sWhat;
        EXPECT_EQ(ResultOf([&] { return ToSingle(oCase.vValue); }), oCase.sSingle) << sWhat;
        EXPECT_EQ(ResultOf([&] { return ToText(oCase.vValue); }), oCase.sText) << sWhat;
    }
}

TEST(VariantTest, ConvertsToLargeWholeNumbers) {
    const std::pair<Variant, const char*> aCases[] = {
        {12345678901234567, "12345678901234567"}, // beyond the 53 bits of a double
        {"-9223372036854775808", "-9223372036854775808"},
        {"9223372036854775807", "9223372036854775807"},
        {"9223372036854775808", "fails 6"},
        {" 12 ", "12"},
        {"2.5", "2"},
        {3.5, "4"},
        {1e19, "fails 6"},
        {true, "-1"},
        {{}, "0"},
        {Long{5}, "5"},
        {std::uint32_t{4294967295}, "4294967295"},
        {"x", "fails 13"},
    };
    for (const auto& [vValue, sExpected] : aCases)
        EXPECT_EQ(ResultOf([&vGiven = vValue] { return ToLongLong(vGiven); }), sExpected) << ToText(vValue);
    EXPECT_EQ(testing::NumberOf([] { (void)Variant(std::numeric_limits<std::uint64_t>::max()); }), 6);
}

// A user's locale may write a comma, which no definition file would read back.
TEST(VariantTest, NumbersDontFollowTheLocale) {
    const test::TemporaryFolder oFolder; // few machines have such a locale, so it is made here
    const std::string sMake = "localedef -c -i de_DE -f UTF-8 \"" + oFolder.Path() + "/de_DE.UTF-8\"";
    if (std::system(sMake.c_str()) != 0)
        GTEST_SKIP() << "no locale can be made here; the package locales has what it takes";
    ::setenv("LOCPATH", oFolder.Path().c_str(), 1);
    ASSERT_TRUE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"));
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const std::string sText = ToText(1.5);
    const Single fValue = ToSingle("2.5");
    std::setlocale(LC_NUMERIC, "C");
    ::unsetenv("LOCPATH");
    EXPECT_EQ(sText, "1.5");
    EXPECT_EQ(fValue, 2.5F);
}

} // namespace
} // namespace corvane
