#include "adapters/common/Json.h"

namespace corvane {

std::optional<nlohmann::json> ReadJson(std::string_view text, JsonProblem* problem) {
    try {
        return nlohmann::json::parse(text);
    } catch (const nlohmann::json::parse_error& error) {
        if (problem)
            *problem = {error.byte, error.what()};
        return std::nullopt;
    }
}

std::string WriteJson(const nlohmann::json& json, int indent) {
    return json.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace corvane
