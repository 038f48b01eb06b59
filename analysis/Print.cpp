#include "analysis/Print.h"

#include <algorithm>
#include <cctype>

namespace corvane::check {

namespace {

std::string PlaceText(const Place& place) {
    std::string text = place.file;
    if (place.at.line > 0)
        text += ":" + std::to_string(place.at.line);
    if (place.at.line > 0 && place.at.column > 0)
        text += ":" + std::to_string(place.at.column);
    return text + ": ";
}

const char* SeverityText(const Finding& finding) {
    return SeverityText(TextOf(finding.rule).severity);
}

// On one line, whatever values hold.
std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return text;
}

} // namespace

std::string UpperFirst(std::string text) {
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

const char* SeverityText(Severity severity) {
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

std::string AsText(std::span<const Finding> findings, bool colours) {
    const auto Coloured = [&](const char* code, const std::string& text) {
        return colours ? "\x1B[" + std::string(code) + "m" + text + "\x1B[0m" : text;
    };
    std::string text;
    for (const Finding& finding : findings) {
        const Severity severity = TextOf(finding.rule).severity;
        const char* colour = severity == Severity::Error ? "1;31" : severity == Severity::Warning ? "1;35" : "36";
        text += Coloured("1", PlaceText(finding.place)) + Coloured(colour, std::string(SeverityText(finding)) + ": ") +
                OnOneLine(finding.text + ": " + finding.cure) + " " +
                Coloured("2", "[" + std::string(TextOf(finding.rule).name) + "]") + "\n";
        for (const Note& note : finding.notes)
            text += PlaceText(note.place) + Coloured("36", "note: ") + OnOneLine(note.text) + "\n";
    }
    return text;
}

std::string CountText(std::span<const Finding> findings) {
    const auto CountOf = [&](Severity severity) {
        return std::count_if(findings.begin(), findings.end(),
                             [&](const Finding& o) { return TextOf(o.rule).severity == severity; });
    };
    const auto Counted = [](std::ptrdiff_t n, const std::string& what) {
        return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
    };
    const auto notes = CountOf(Severity::Note);
    return Counted(CountOf(Severity::Error), "error") + ", " + Counted(CountOf(Severity::Warning), "warning") +
           (notes == 0 ? "" : ", " + Counted(notes, "note"));
}

std::string Explained(const RuleText& rule) {
    std::string text = "## " + std::string(rule.name) + "\n\n" + std::string(rule.summary) + " " + "*" +
                       UpperFirst(SeverityText(rule.severity)) + ".*" + "\n\n" + std::string(rule.explanation) + "\n";
    if (rule.bad.empty())
        return text;
    const auto Listing = [](std::string_view xml) { return "```xml\n" + std::string(xml) + "\n```\n"; };
    return text + "\nFound:\n\n" + Listing(rule.bad) + "\nNot found:\n\n" + Listing(rule.good);
}

std::string RulesAsMarkdown() {
    std::string text =
        "# Rules of `corvane check`\n\n"
        "`corvane check APP` names every problem in the definition files of an application with its place, "
        "the rule that found it, what follows of it, and what to do. Each rule has a name that stays. The examples are "
        "the content of a definition file, or whole files where they begin with `<Service`. `corvane check --rules` "
        "prints this page, `corvane check --explain RULE` a part of it.\n\n"
        "| severity | meaning | exit code |\n|---|---|---|\n"
        "| error | the file is left out, the application doesn't start, or the thing fails whenever it is used | 1 |\n"
        "| warning | the application goes on without a message, but not as it was meant | 1 |\n"
        "| note | it works as it was meant, and could be written better | 0 |\n\n"
        "`corvane check --fix APP` writes the cures that are certain, see [tool.md](tool.md#cures).\n\n"
        "| rule | severity | |\n|---|---|---|\n";
    for (const RuleText& rule : AllRules())
        text += "| [" + std::string(rule.name) + "](#" + std::string(rule.name) + ") | " + SeverityText(rule.severity) +
                " | " + std::string(rule.summary) + " |\n";
    for (const RuleText& rule : AllRules())
        text += "\n" + Explained(rule);
    return text;
}

} // namespace corvane::check
