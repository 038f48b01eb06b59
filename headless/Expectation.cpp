#include "headless/Expectation.h"

#include "adapters/common/Json.h"
#include "corvane/base/Text.h"
#include "headless/Document.h"

#include <algorithm>

namespace corvane::inspect {

namespace {

using Json = nlohmann::json;

// "tools", "File.Greet", "checked" of "tools[File.Greet].checked", and what is behind the path's blank.
std::vector<std::string> Segments(const std::string& rest, std::string& value) {
    std::vector<std::string> segments(1);
    std::size_t i = 0;
    int brackets = 0;
    for (; i < rest.size() && (rest[i] != ' ' || brackets > 0); ++i) {
        const char c = rest[i];
        if ((c == '[' && brackets++ == 0) || (c == '.' && brackets == 0))
            segments.emplace_back();
        else if (!(c == ']' && --brackets == 0))
            segments.back() += c;
    }
    std::erase(segments, "");
    value = i < rest.size() ? rest.substr(i + 1) : std::string();
    return segments;
}

bool IsCalled(const Json& element, const std::string& name) {
    for (const char* key : {"name", "key", "caption", "id"})
        if (const auto it = element.find(key); it != element.end())
            if (it->is_string() ? EqualText(it->get_ref<const std::string&>(), name) : it->dump() == name)
                return true;
    return false;
}

// Nothing where the path leads nowhere, which counts as null.
Json Follow(const Json& document, const std::vector<std::string>& segments) {
    const Json* at = &document;
    for (const std::string& segment : segments) {
        if (at->is_array() && segment == "count")
            return at->size();
        const Json* next = nullptr;
        if (at->is_object()) {
            if (const auto it = at->find(segment); it != at->end())
                next = &*it;
        } else if (at->is_array()) {
            const auto index = NumberIn(segment);
            const auto it = std::find_if(at->begin(), at->end(),
                                         [&](const Json& o) { return o.is_object() && IsCalled(o, segment); });
            if (it != at->end())
                next = &*it;
            else if (index && *index >= 0 && *index < static_cast<Double>(at->size()))
                next = &(*at)[static_cast<std::size_t>(*index)];
        }
        if (!next)
            return segments.back() == "count" ? Json(0) : Json();
        at = next;
    }
    return *at;
}

// Keys are left out where they have nothing to say.
bool IsNothing(const Json& value) {
    return value.is_null() || value == false || value == "" || value == Json::array();
}

} // namespace

std::string Unmet(const ModelHost& host, const std::string& rest) {
    std::string value;
    const std::vector<std::string> segments = Segments(rest, value);
    Json document = *ReadJson(JsonDocument(host, {true, true, true, true}));
    document["status"] = host.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    const Json there = Follow(document, segments);
    const auto wanted = ReadJson(value);
    const bool text = there.is_string() && there.get_ref<const std::string&>() == value;
    if (text || (wanted && (there == *wanted || (IsNothing(there) && IsNothing(*wanted)))) ||
        (value.empty() && IsNothing(there)))
        return {};
    return "expected " + rest.substr(0, rest.size() - value.size()) + (wanted ? value : WriteJson(value)) +
           ", but it is " + WriteJson(there);
}

} // namespace corvane::inspect
