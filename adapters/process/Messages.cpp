#include "adapters/process/Messages.h"

#include "adapters/common/Json.h"

namespace corvane {

namespace {

using nlohmann::json;

// What is nested without end would use up the stack when it is copied or written.
bool IsTooDeep(const std::string& line) {
    constexpr int deepest = 100; // values are no deeper than 5
    int depth = 0;
    bool isText = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            isText = !isText;
        else if (isText)
            i += line[i] == '\\' ? 1 : 0;
        else if (line[i] == '[' || line[i] == '{')
            ++depth;
        else if (line[i] == ']' || line[i] == '}')
            --depth;
        if (depth > deepest)
            return true;
    }
    return false;
}

} // namespace

json ReadMessage(const std::string& line) {
    json message = IsTooDeep(line) ? json() : ReadJson(line).value_or(nullptr);
    return message.is_object() ? message : json();
}

std::string WriteMessage(const json& message) {
    return WriteJson(message);
}

LongLong WholeNumber(const json& value) {
    return value.get_ref<const json::number_integer_t&>();
}

json FailureToJson(const Failure& failure) {
    return {{"number", failure.Number},
            {"description", failure.Description},
            {"source", failure.Source},
            {"details", failure.Context}};
}

Failure FailureFromJson(const json& told) {
    Failure failure(FailureNumber::Foreign, told.value("description", ""), told.value("source", ""));
    if (told.contains("number"))
        failure.Number = static_cast<Long>(WholeNumber(told.at("number")));
    failure.Context = told.value("details", "");
    return failure;
}

std::string Shortened(const std::string& text) {
    constexpr std::size_t most = 200;
    return text.size() <= most ? text : text.substr(0, most) + "…";
}

} // namespace corvane
