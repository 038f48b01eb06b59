#include "adapters/common/Nearest.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace corvane {

std::size_t EditDistance(std::string_view left, std::string_view right) {
    const std::string a = FoldText(left);
    const std::string b = FoldText(right);
    const std::size_t n = b.size() + 1;
    std::array<std::vector<std::size_t>, 3> rows{std::vector<std::size_t>(n), std::vector<std::size_t>(n),
                                                 std::vector<std::size_t>(n)};
    auto& [before, last, row] = rows;
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j < n; ++j) {
            const std::size_t changed = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({changed, row[j - 1] + 1, last[j] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last.back();
}

namespace {

// Two names without the whole words that both begin or end with: what is left tells whether one is a slip of the other.
// "Start" and "First" of "StartService" and "FirstService" have nothing to do with each other.
struct Cores {
    std::string_view name;
    std::string_view written;
};

bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

bool IsPartOfWord(char c) {
    return IsCapital(c) || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

// Whether a word ends before that place: behind what separates words, and before a capital that follows a small letter.
bool IsBetweenWords(std::string_view text, std::size_t i) {
    return i == 0 || i == text.size() || !IsPartOfWord(text[i - 1]) || !IsPartOfWord(text[i]) ||
           (IsCapital(text[i]) && !IsCapital(text[i - 1]));
}

char Small(char c) {
    return IsCapital(c) ? static_cast<char>(c + ('a' - 'A')) : c;
}

Cores CoresOf(std::string_view name, std::string_view written) {
    const std::size_t shorter = std::min(name.size(), written.size());
    std::size_t begin = 0;
    while (begin < shorter && Small(name[begin]) == Small(written[begin]))
        ++begin;
    while (begin > 0 && !(IsBetweenWords(name, begin) && IsBetweenWords(written, begin)))
        --begin;
    name.remove_prefix(begin);
    written.remove_prefix(begin);
    std::size_t end = 0; // how many letters of the end
    while (end < shorter - begin && Small(name[name.size() - 1 - end]) == Small(written[written.size() - 1 - end]))
        ++end;
    while (end > 0 && !(IsBetweenWords(name, name.size() - end) && IsBetweenWords(written, written.size() - end)))
        --end;
    name.remove_suffix(end);
    written.remove_suffix(end);
    return {name, written};
}

// How many letters may be wrong; of very short words none, as every other one would be near.
std::size_t AllowedIn(const Cores& cores) {
    constexpr std::array<std::size_t, 3> from{3, 6, 10}; // letters, for one, two and three
    const std::size_t length = std::max(cores.name.size(), cores.written.size());
    return static_cast<std::size_t>(
        std::count_if(from.begin(), from.end(), [&](std::size_t n) { return length >= n; }));
}

// Of two names that differ in digits alone, at the same places, neither is meant by the other.
bool DifferInNumbersAlone(std::string_view name, std::string_view written) {
    const auto IsDigit = [](char c) { return c >= '0' && c <= '9'; };
    return !EqualText(name, written) &&
           std::equal(name.begin(), name.end(), written.begin(), written.end(), [&](char one, char other) {
               return Small(one) == Small(other) || (IsDigit(one) && IsDigit(other));
           });
}

// The edits that make one of the other; nothing when they are too many for a slip.
std::optional<std::size_t> SlipBetween(std::string_view name, std::string_view written) {
    const Cores cores = CoresOf(name, written);
    const std::size_t allowed = AllowedIn(cores);
    const std::size_t lengths =
        std::max(cores.name.size(), cores.written.size()) - std::min(cores.name.size(), cores.written.size());
    if (lengths > allowed || DifferInNumbersAlone(name, written))
        return std::nullopt;
    const std::size_t distance = EditDistance(cores.name, cores.written);
    // Who mistypes several letters has the first one right.
    const bool beginsAlike = distance < 2 || (!cores.name.empty() && !cores.written.empty() &&
                                              EqualText(cores.name.substr(0, 1), cores.written.substr(0, 1)));
    return distance <= allowed && beginsAlike ? std::optional(distance) : std::nullopt;
}

// Without the signs by which words of a name are divided in one way or another.
std::string Unspaced(std::string_view name) {
    std::string joined(name);
    std::erase_if(joined, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    return joined;
}

} // namespace

std::optional<std::string> Nearest(std::span<const std::string> names, std::string_view written) {
    const std::string joined = Unspaced(written);
    for (const std::string& name : names)
        if (!joined.empty() && name.size() != written.size() && EqualText(Unspaced(name), joined))
            return name;
    const std::string* nearest = nullptr;
    std::size_t nearestDistance = 0;
    for (const std::string& name : names) {
        const auto distance = SlipBetween(name, written);
        if (distance && (!nearest || *distance < nearestDistance)) {
            nearest = &name;
            nearestDistance = *distance;
        }
    }
    return nearest ? std::optional(*nearest) : std::nullopt;
}

} // namespace corvane
