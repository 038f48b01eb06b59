#include "analysis/Print.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>

namespace corvane::check {

namespace {

using Json = nlohmann::json;

std::string PlaceText(const Place& oPlace) {
    std::string sText = oPlace.sFile;
    if (oPlace.oAt.lLine > 0)
        sText += ":" + std::to_string(oPlace.oAt.lLine);
    if (oPlace.oAt.lLine > 0 && oPlace.oAt.lColumn > 0)
        sText += ":" + std::to_string(oPlace.oAt.lColumn);
    return sText + ": ";
}

const char* SeverityText(const Finding& oFinding) {
    return TextOf(oFinding.eRule).eSeverity == Severity::Error ? "error" : "warning";
}

// On one line, whatever values hold.
std::string OnOneLine(std::string sText) {
    std::replace_if(
        sText.begin(), sText.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return sText;
}

std::string UpperFirst(std::string sText) {
    if (!sText.empty())
        sText[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sText[0])));
    return sText;
}

Json JsonOf(const Place& oPlace) {
    return {{"file", oPlace.sFile}, {"line", oPlace.oAt.lLine}, {"column", oPlace.oAt.lColumn}};
}

// A relative reference: what isn't plain in a path is written as its bytes.
std::string UriOf(const std::string& sPath) {
    constexpr std::string_view sDigits = "0123456789ABCDEF";
    std::string sUri = sPath.starts_with('/') ? "file://" : "";
    for (const char c : sPath) {
        const auto u = static_cast<unsigned char>(c);
        if (std::isalnum(u) || std::string_view("/-._~").find(c) != std::string_view::npos)
            sUri += c;
        else
            (sUri += '%').append({sDigits[u >> 4], sDigits[u & 15u]});
    }
    return sUri;
}

Json LocationOf(const Place& oPlace) {
    Json oLocation{{"artifactLocation", {{"uri", UriOf(oPlace.sFile)}}}};
    if (oPlace.oAt.lLine > 0)
        oLocation["region"]["startLine"] = oPlace.oAt.lLine;
    if (oPlace.oAt.lLine > 0 && oPlace.oAt.lColumn > 0)
        oLocation["region"]["startColumn"] = oPlace.oAt.lColumn;
    return {{"physicalLocation", oLocation}};
}

// Texts come out of files; what isn't UTF-8 in them doesn't stop the document.
std::string Dumped(const Json& oDocument) {
    return oDocument.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

std::string AsText(std::span<const Finding> aFindings, bool bColours) {
    const auto Coloured = [&](const char* sCode, const std::string& sText) {
        return bColours ? "\x1B[" + std::string(sCode) + "m" + sText + "\x1B[0m" : sText;
    };
    std::string sText;
    for (const Finding& oFinding : aFindings) {
        const bool bError = TextOf(oFinding.eRule).eSeverity == Severity::Error;
        sText += Coloured("1", PlaceText(oFinding.oPlace)) +
                 Coloured(bError ? "1;31" : "1;35", std::string(SeverityText(oFinding)) + ": ") +
                 OnOneLine(oFinding.sText + ": " + oFinding.sCure) + " " +
                 Coloured("2", "[" + std::string(TextOf(oFinding.eRule).sName) + "]") + "\n";
        for (const Note& oNote : oFinding.aNotes)
            sText += PlaceText(oNote.oPlace) + Coloured("36", "note: ") + OnOneLine(oNote.sText) + "\n";
    }
    return sText;
}

std::string AsJson(std::span<const Finding> aFindings) {
    Json aJson = Json::array();
    for (const Finding& oFinding : aFindings) {
        Json oJson = JsonOf(oFinding.oPlace);
        oJson["rule"] = TextOf(oFinding.eRule).sName;
        oJson["severity"] = SeverityText(oFinding);
        oJson["text"] = oFinding.sText;
        oJson["cure"] = oFinding.sCure;
        oJson["notes"] = Json::array();
        for (const Note& oNote : oFinding.aNotes) {
            oJson["notes"].push_back(JsonOf(oNote.oPlace));
            oJson["notes"].back()["text"] = oNote.sText;
        }
        aJson.push_back(std::move(oJson));
    }
    return Dumped({{"findings", std::move(aJson)}});
}

std::string AsSarif(std::span<const Finding> aFindings, const std::string& sVersion) {
    Json aRules = Json::array();
    for (const RuleText& oRule : AllRules())
        aRules.push_back(
            {{"id", oRule.sName},
             {"shortDescription", {{"text", oRule.sSummary}}},
             {"fullDescription", {{"text", oRule.sExplanation}}},
             {"defaultConfiguration", {{"level", oRule.eSeverity == Severity::Error ? "error" : "warning"}}}});
    Json aResults = Json::array();
    for (const Finding& oFinding : aFindings) {
        Json oResult{{"ruleId", TextOf(oFinding.eRule).sName},
                     {"ruleIndex", static_cast<int>(oFinding.eRule)},
                     {"level", SeverityText(oFinding)},
                     {"message", {{"text", UpperFirst(oFinding.sText) + ": " + oFinding.sCure + "."}}},
                     {"locations", {LocationOf(oFinding.oPlace)}}};
        for (const Note& oNote : oFinding.aNotes) {
            oResult["relatedLocations"].push_back(LocationOf(oNote.oPlace));
            oResult["relatedLocations"].back()["message"]["text"] = UpperFirst(oNote.sText);
        }
        aResults.push_back(std::move(oResult));
    }
    const Json oDriver{{"name", "corvane check"}, {"version", sVersion}, {"rules", std::move(aRules)}};
    return Dumped(
        {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
         {"version", "2.1.0"},
         {"runs",
          {{{"tool", {{"driver", oDriver}}}, {"columnKind", "unicodeCodePoints"}, {"results", std::move(aResults)}}}}});
}

std::string CountText(std::span<const Finding> aFindings) {
    const auto nErrors = std::count_if(aFindings.begin(), aFindings.end(),
                                       [](const Finding& o) { return TextOf(o.eRule).eSeverity == Severity::Error; });
    const auto Counted = [](std::ptrdiff_t n, const std::string& sWhat) {
        return std::to_string(n) + " " + sWhat + (n == 1 ? "" : "s");
    };
    return Counted(nErrors, "error") + ", " +
           Counted(static_cast<std::ptrdiff_t>(aFindings.size()) - nErrors, "warning");
}

std::string Explained(const RuleText& oRule) {
    std::string sText = "## " + std::string(oRule.sName) + "\n\n" + std::string(oRule.sSummary) + " " +
                        (oRule.eSeverity == Severity::Error ? "*Error.*" : "*Warning.*") + "\n\n" +
                        std::string(oRule.sExplanation) + "\n";
    if (oRule.sBad.empty())
        return sText;
    const auto Listing = [](std::string_view sXml) { return "```xml\n" + std::string(sXml) + "\n```\n"; };
    return sText + "\nFound:\n\n" + Listing(oRule.sBad) + "\nNot found:\n\n" + Listing(oRule.sGood);
}

std::string RulesAsMarkdown() {
    std::string sText =
        "# Rules of `corvane check`\n\n"
        "`corvane check APP` names every problem in the definition files of an application with its place, "
        "the rule that found it, and what to do. Each rule has a name that stays. An error keeps a file, an "
        "entry or the application from working; a warning is something that works otherwise than it was "
        "meant. The examples are the content of a definition file, or whole files where they begin with "
        "`<Service`. `corvane check --rules` prints this page, `corvane check --explain RULE` a part of it.\n";
    for (const RuleText& oRule : AllRules())
        sText += "\n" + Explained(oRule);
    return sText;
}

} // namespace corvane::check
