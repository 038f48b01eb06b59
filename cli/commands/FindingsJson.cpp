#include "cli/commands/FindingsJson.h"

#include "adapters/common/Json.h"
#include "analysis/Print.h"

#include <cctype>
#include <string_view>

namespace corvane::tool {

namespace {

using Value = nlohmann::json;

Value JsonOf(const check::Place& place) {
    return {{"file", place.file}, {"line", place.at.line}, {"column", place.at.column}};
}

// A relative reference: what isn't plain in a path is written as its bytes.
std::string UriOf(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char c : path) {
        const auto u = static_cast<unsigned char>(c);
        if (std::isalnum(u) || std::string_view("/-._~").find(c) != std::string_view::npos)
            uri += c;
        else
            (uri += '%').append({digits[u >> 4], digits[u & 15u]});
    }
    return uri;
}

Value LocationOf(const check::Place& place) {
    Value location{{"artifactLocation", {{"uri", UriOf(place.file)}}}};
    if (place.at.line > 0)
        location["region"]["startLine"] = place.at.line;
    if (place.at.line > 0 && place.at.column > 0)
        location["region"]["startColumn"] = place.at.column;
    return {{"physicalLocation", location}};
}

const char* SeverityOf(const check::Finding& finding) {
    return check::SeverityText(check::TextOf(finding.rule).severity);
}

// Texts come out of files; what isn't UTF-8 in them doesn't stop the document.
std::string Dumped(const Value& document) {
    return WriteJson(document, 1) + "\n";
}

} // namespace

std::string AsJson(std::span<const check::Finding> findings) {
    Value findingsJson = Value::array();
    for (const check::Finding& finding : findings) {
        Value json = JsonOf(finding.place);
        json["rule"] = check::TextOf(finding.rule).name;
        json["severity"] = SeverityOf(finding);
        json["text"] = finding.text;
        json["cure"] = finding.cure;
        json["notes"] = Value::array();
        for (const check::Note& note : finding.notes) {
            json["notes"].push_back(JsonOf(note.place));
            json["notes"].back()["text"] = note.text;
        }
        findingsJson.push_back(std::move(json));
    }
    return Dumped({{"findings", std::move(findingsJson)}});
}

std::string AsSarif(std::span<const check::Finding> findings, const std::string& version) {
    Value rules = Value::array();
    for (const check::RuleText& rule : check::AllRules())
        rules.push_back({{"id", rule.name},
                         {"shortDescription", {{"text", rule.summary}}},
                         {"fullDescription", {{"text", rule.explanation}}},
                         {"defaultConfiguration", {{"level", check::SeverityText(rule.severity)}}}});
    Value results = Value::array();
    for (const check::Finding& finding : findings) {
        Value result{{"ruleId", check::TextOf(finding.rule).name},
                     {"ruleIndex", static_cast<int>(finding.rule)},
                     {"level", SeverityOf(finding)},
                     {"message", {{"text", check::UpperFirst(finding.text) + ": " + finding.cure + "."}}},
                     {"locations", {LocationOf(finding.place)}}};
        for (const check::Note& note : finding.notes) {
            result["relatedLocations"].push_back(LocationOf(note.place));
            result["relatedLocations"].back()["message"]["text"] = check::UpperFirst(note.text);
        }
        results.push_back(std::move(result));
    }
    const Value driver{{"name", "corvane check"}, {"version", version}, {"rules", std::move(rules)}};
    return Dumped(
        {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
         {"version", "2.1.0"},
         {"runs",
          {{{"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", std::move(results)}}}}});
}

} // namespace corvane::tool
