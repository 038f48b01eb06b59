#include "NumberText.h"

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

} // namespace

std::string TextOf(double value, int decimals) {
    if (!IsOrdinary(value))
        return Written(value);
    std::string text = Written(value, std::chars_format::fixed);
    if (decimals <= 0)
        return text;
    const std::size_t point = std::min(text.find('.'), text.size());
    if (point == text.size())
        text += '.';
    text.resize(std::max(text.size(), point + 1 + static_cast<std::size_t>(decimals)), '0');
    return text;
}

std::string FigureText(double value, int digits) {
    if (std::isnan(value))
        return "-";
    const std::string rounded = Written(value, std::chars_format::general, digits);
    double read = value;
    std::from_chars(rounded.data(), rounded.data() + rounded.size(), read);
    return IsOrdinary(read) ? TextOf(read) : rounded;
}

std::string DecimalText(double value, int decimals) {
    if (std::isnan(value))
        return "-";
    const double size = std::abs(value);
    const double least = 0.5 * std::pow(10.0, -decimals);
    if (size >= Most || (size > 0 && size < least))
        return Written(value, std::chars_format::scientific, std::max(1, decimals));
    std::string text = Written(value, std::chars_format::fixed, decimals);
    const std::size_t point = std::min(text.find('.'), text.size());
    for (std::size_t i = point; i > 3 && text[i - 4] != '-'; i -= 3)
        text.insert(i - 3, ",");
    return text;
}

} // namespace studies
