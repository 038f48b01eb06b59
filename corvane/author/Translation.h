// The texts that plug-ins make in the user's language, and how that language writes numbers and times. What a host
// hasn't set is English. For any thread: a host sets it before the first service is made and after the last one has
// gone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane {

// What a host knows of the user's language.
struct UserLanguage {
    std::unordered_map<std::string, std::string> aTexts = {}; // translations by the texts of the sources
    std::string sPoint = ".";                                 // between a number's whole part and its decimals
    std::string sGroup = ",";                                 // between groups of three digits; "" for none
    std::function<std::string(std::int64_t)> fnTime = {};     // of seconds since 1970; none: "2026-11-25 14:05"
};

// For hosts.
[[gnu::visibility("default")]] void SetUserLanguage(UserLanguage oLanguage);

// The translation that the application's catalogue has for the text, or the text itself. "corvane translate --sources"
// finds the texts: each is written in quotes as an argument of the call.
[[nodiscard, gnu::visibility("default")]] std::string Translated(std::string_view sText);
// The same with values in place of "%1" to "%9", in their order.
[[nodiscard, gnu::visibility("default")]] std::string Translated(std::string_view sText,
                                                                 std::initializer_list<std::string_view> aValues);
// One text for a count of 1, and one for any other; "%1" is the count with its digits in groups, values begin at "%2".
[[nodiscard, gnu::visibility("default")]] std::string Translated(std::size_t nCount, std::string_view sOne,
                                                                 std::string_view sMany,
                                                                 std::initializer_list<std::string_view> aValues = {});

// A number that is written with "." and "," for groups, as "1,234.5", in the user's signs.
[[nodiscard, gnu::visibility("default")]] std::string ShownNumber(std::string_view sNumber);
// The other way round for what a user has written: without groups, with "." before decimals. Nothing when it has the
// signs of a number where the user's language has none: "4.5" and "1.23" where "," is before decimals. What isn't a
// number otherwise comes back as it is.
[[nodiscard, gnu::visibility("default")]] std::optional<std::string> PlainNumber(std::string_view sShown);
// Day and time in the local zone, of seconds since 1970.
[[nodiscard, gnu::visibility("default")]] std::string ShownTime(std::int64_t nSeconds);

} // namespace corvane
