// Lines of the protocol, which are JSON, and failures in them.
#pragma once

#include "corvane/base/Failure.h"

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace corvane {

// Nothing (null) for a line that isn't an object, and for one that is nested deeper than any message is.
[[nodiscard]] nlohmann::json ReadMessage(const std::string& line);
// On one line. Bytes that aren't UTF-8 are replaced.
[[nodiscard]] std::string WriteMessage(const nlohmann::json& message);

// Throws json::exception for what isn't a whole number, also for 2e51, of which json's own conversion makes any number.
[[nodiscard]] LongLong WholeNumber(const nlohmann::json& value);

[[nodiscard]] nlohmann::json FailureToJson(const Failure& failure);
// Throws json::exception for what isn't a failure.
[[nodiscard]] Failure FailureFromJson(const nlohmann::json& told);

// The beginning of a text, for a message to users.
[[nodiscard]] std::string Shortened(const std::string& text);

} // namespace corvane
