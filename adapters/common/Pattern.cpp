#include "adapters/common/Pattern.h"

#include <regex>
#include <stdexcept>

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

struct Pattern::Compiled {
    std::regex regex;
};

Pattern::Pattern(const std::string& pattern) {
    try {
        m_compiled = std::make_unique<Compiled>(
            Compiled{std::regex(pattern, std::regex::ECMAScript | std::regex_constants::__polynomial)});
    } catch (const std::regex_error& error) {
        throw std::invalid_argument(error.code() == std::regex_constants::error_complexity ? "it refers back to a group"
                                                                                           : error.what());
    }
}

Pattern::~Pattern() = default;

bool Pattern::Matches(const std::string& text) const {
    return std::regex_match(text, m_compiled->regex);
}

} // namespace corvane
