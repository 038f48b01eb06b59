#include "corvane/author/Encoding.h"

#include <gtest/gtest.h>
#include <string>

namespace corvane {

TEST(Encoding, TextIsReadInTheEncodingThatItHas) {
    using namespace std::string_literals;
    const struct {
        const char* what;
        std::string bytes;
        std::string text;
    } cases[] = {
        {"UTF-8", "K\u00f6ln \u20ac", "K\u00f6ln \u20ac"},
        {"UTF-8 with a mark", "\xEF\xBB\xBFK\u00f6ln", "K\u00f6ln"},
        {"Latin-1", "L\xE4nge;\xC6r\xF8", "L\u00e4nge;\u00c6r\u00f8"},
        {"Windows-1252", "\x80 5, \x84so\x93", "\u20ac 5, \u201eso\u201c"},
        {"cut off within a character", "K\xC3", "K\u00c3"},
        {"UTF-16",
         "\xFF\xFE"
         "K\0\xF6\0\x3D\xD8\x27\xDC"s,
         "K\u00f6\U0001F427"},
        {"UTF-16, high bytes first", "\xFE\xFF\0K\0\xF6"s, "K\u00f6"},
        {"UTF-16, cut off", "\xFF\xFEK\0L"s, "K\uFFFD"},
        {"UTF-16, half a character", "\xFF\xFE\x3D\xD8K\0"s, "\uFFFDK"},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(DecodeText(testCase.bytes), testCase.text) << testCase.what;
}

} // namespace corvane
