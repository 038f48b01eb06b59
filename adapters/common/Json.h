// Reads and writes JSON. Both are compiled here once, as the templates that do it take seconds in each source that
// calls them.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// What isn't JSON, and the byte of the text from 1 on at which that shows.
struct JsonProblem {
    std::size_t byte = 0;
    std::string what;
};

// Nothing when the text isn't JSON.
[[nodiscard]] std::optional<nlohmann::json> ReadJson(std::string_view text, JsonProblem* problem = nullptr);

// On one line, or on several with that many spaces for each level. Bytes that aren't UTF-8 are replaced.
[[nodiscard]] std::string WriteJson(const nlohmann::json& json, int indent = -1);

} // namespace corvane
