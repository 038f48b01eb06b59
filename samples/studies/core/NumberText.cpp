#include "NumberText.h"

#include "corvane/author/Translation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace studies {
namespace {

constexpr double Least = 1e-5;
constexpr double Most = 1e15;

bool IsOrdinary(double value) {
    return value == 0 || (std::abs(value) >= Least && std::abs(value) < Most);
}

template <class... Format>
std::string Written(double value, Format... format) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format...);
    return {buffer.data(), result.ptr};
}

// Most numbers have four decimals at most. Up to 15 digits there is one decimal number for a double, which is the
// shortest text then, and comes from whole numbers in a fraction of the time. A null pointer for others.
char* WriteFewDecimals(char* begin, char* most, double value) {
    constexpr double scale = 1e4;
    constexpr int digits = 4;
    const double scaled = value * scale;
    if (!(std::abs(scaled) < Most))
        return nullptr;
    const auto whole = static_cast<long long>(std::nearbyint(scaled));
    if (static_cast<double>(whole) / scale != value || (whole == 0 && std::signbit(value)))
        return nullptr;
    if (whole < 0)
        *begin++ = '-';
    const auto size = static_cast<unsigned long long>(whole < 0 ? -whole : whole);
    char* end = std::to_chars(begin, most, size / 10000).ptr;
    auto rest = static_cast<unsigned>(size % 10000);
    if (rest == 0)
        return end;
    *end++ = '.';
    for (int i = digits - 1; i >= 0; --i, rest /= 10)
        end[i] = static_cast<char>('0' + rest % 10);
    end += digits;
    while (end[-1] == '0')
        --end;
    return end;
}

} // namespace

NumberLetters::NumberLetters(double value, int decimals) {
    char* const begin = m_letters.data();
    char* const most = begin + m_letters.size();
    char* end = WriteFewDecimals(begin, most, value);
    if (!end)
        end = IsOrdinary(value) ? std::to_chars(begin, most, value, std::chars_format::fixed).ptr
                                : std::to_chars(begin, most, value).ptr;
    if (decimals > 0 && IsOrdinary(value)) {
        char* point = std::find(begin, end, '.');
        if (point == end)
            *end++ = '.';
        char* const filled = std::min(most, point + 1 + decimals);
        while (end < filled)
            *end++ = '0';
    }
    m_size = static_cast<std::size_t>(end - begin);
}

std::string TextOf(double value, int decimals) {
    return std::string(NumberLetters(value, decimals));
}

std::string FigureText(double value, int digits) {
    if (std::isnan(value))
        return "-";
    const std::string rounded = Written(value, std::chars_format::general, digits);
    double read = value;
    std::from_chars(rounded.data(), rounded.data() + rounded.size(), read);
    return corvane::ShownNumber(IsOrdinary(read) ? TextOf(read) : rounded);
}

std::string DecimalText(double value, int decimals) {
    if (std::isnan(value))
        return "-";
    const double size = std::abs(value);
    const double least = 0.5 * std::pow(10.0, -decimals);
    if (size >= Most || (size > 0 && size < least))
        return corvane::ShownNumber(Written(value, std::chars_format::scientific, std::max(1, decimals)));
    std::string text = Written(value, std::chars_format::fixed, decimals);
    const std::size_t point = std::min(text.find('.'), text.size());
    for (std::size_t i = point; i > 3 && text[i - 4] != '-'; i -= 3)
        text.insert(i - 3, ",");
    return corvane::ShownNumber(text);
}

} // namespace studies
