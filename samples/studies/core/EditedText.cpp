#include "EditedText.h"

#include "Errors.h"

#include <algorithm>
#include <utility>

namespace studies {

std::string Trimmed(const std::string& text) {
    constexpr const char* space = " \t\n\r\f\v";
    const std::size_t begin = text.find_first_not_of(space);
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(space) + 1 - begin);
}

std::string FreeText(const std::string& text, const std::function<bool(const std::string&)>& isTaken) {
    std::string free = text;
    for (int n = 2; isTaken(free); ++n)
        free = text + " (" + std::to_string(n) + ")";
    return free;
}

std::string AsField(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n'; }, ' ');
    return text;
}

std::string Merged(std::string& read, const std::string& edited, const std::string& stored,
                   const std::string& sentence) {
    if (edited == read)
        return stored;
    if (stored == std::exchange(read, stored) || stored == edited)
        return edited;
    FailWith(Translated(sentence, {stored}));
}

} // namespace studies
