#include "adapters/common/Pattern.h"

#include <regex>

namespace corvane {

bool HasForm(const std::string& text, const std::string& pattern) {
    return std::regex_match(text, std::regex(pattern));
}

std::optional<std::vector<std::string>> FindForm(const std::string& text, const std::string& pattern) {
    std::smatch match;
    if (!std::regex_search(text, match, std::regex(pattern)))
        return std::nullopt;
    return std::vector<std::string>(match.begin(), match.end());
}

std::string ReplaceForm(const std::string& text, const std::string& pattern, const std::string& by) {
    return std::regex_replace(text, std::regex(pattern), by);
}

} // namespace corvane
