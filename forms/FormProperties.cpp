#include "adapters/common/Nearest.h"
#include "corvane/base/Text.h"
#include "forms/FormReading.h"
#include "forms/FormValue.h"

#include <algorithm>
#include <cstdio>

namespace corvane::forms {

namespace {

// Behind the last "::".
std::string LastWord(std::string_view text) {
    const std::string word = Trimmed(text);
    const std::size_t colons = word.rfind("::");
    return colons == std::string::npos ? word : word.substr(colons + 2);
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        if (std::string part = Trimmed(text.substr(begin, end - begin)); !part.empty())
            parts.push_back(std::move(part));
        begin = end + 1;
    }
    return parts;
}

// Of "month" and the like, 0 when it isn't there or isn't a small number.
int PartOf(const XmlElement& moment, std::string_view name) {
    const XmlElement* part = moment.Child(name);
    const auto number = part ? NumberIn(part->text) : std::nullopt;
    return number && *number >= 0 && *number <= 9999 ? static_cast<int>(*number) : 0;
}

} // namespace

std::string QuotedName(std::string_view name) {
    constexpr std::size_t most = 60;
    if (name.size() <= most)
        return "\"" + std::string(name) + "\"";
    std::size_t end = most;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
        --end; // between two characters
    return "\"" + std::string(name.substr(0, end)) + "\u2026\"";
}

void Problems::Add(FormFault fault, FormPlace at, std::string text, std::string cure) {
    constexpr std::size_t most = 200;
    if (m_form.problems.size() < most)
        m_form.problems.push_back({fault, at, std::move(text), std::move(cure)});
}

FormText TextOf(const XmlElement& element) {
    return {element.text, element.at, element.name == "string" && element.Attribute("notr") != "true"};
}

Properties::Properties(const XmlElement& owner, std::string what, Problems& problems)
    : m_at(owner.at), m_what(std::move(what)), m_problems(problems) {
    for (const XmlElement& child : owner.children)
        if (child.name == "property" || (child.name == "attribute" && owner.name == "widget"))
            m_entries.push_back(
                {child.Attribute("name"), &child, child.children.empty() ? nullptr : &child.children.front()});
}

const XmlElement* Properties::Take(std::string_view name) {
    m_asked.emplace_back(name);
    const XmlElement* value = nullptr;
    for (Entry& entry : m_entries)
        if (!entry.taken && entry.name == name) {
            entry.taken = true;
            value = entry.value;
            m_at = entry.property->at;
            if (!value)
                BadValue(name, "Give it a value, or take the property away.");
        }
    return value;
}

FormText Properties::TakeText(std::string_view name) {
    const XmlElement* value = Take(name);
    if (!value)
        return {};
    FormText text = TextOf(*value);
    if (value->name != "string" && value->name != "cstring")
        text.text = Trimmed(text.text);
    return text;
}

void Properties::BadValue(std::string_view name, const std::string& cure) {
    m_problems.Add(FormFault::BadValue, m_at,
                   "the property " + QuotedName(name) + " of " + m_what + " has a value that it can't have", cure);
}

std::optional<bool> Properties::TakeBoolean(std::string_view name) {
    const XmlElement* value = Take(name);
    if (!value)
        return std::nullopt;
    const std::string word = Trimmed(value->text);
    if (EqualText(word, "true") || word == "1")
        return true;
    if (!EqualText(word, "false") && word != "0")
        BadValue(name, "Write true or false.");
    return false;
}

std::optional<Double> Properties::TakeNumber(std::string_view name) {
    const XmlElement* value = Take(name);
    if (!value)
        return std::nullopt;
    const auto number = NumberIn(value->text);
    if (!number)
        BadValue(name, "Write a number.");
    return number;
}

std::optional<int> Properties::TakeInteger(std::string_view name, int least, int most) {
    const XmlElement* value = Take(name);
    if (!value)
        return std::nullopt;
    const auto number = NumberIn(value->text);
    if (number && *number >= least && *number <= most && static_cast<Double>(static_cast<int>(*number)) == *number)
        return static_cast<int>(*number);
    BadValue(name, "Write a whole number from " + std::to_string(least) + " to " + std::to_string(most) + ".");
    return std::nullopt;
}

std::string Properties::TakeWord(std::string_view name) {
    const XmlElement* value = Take(name);
    return value ? LastWord(value->text) : std::string();
}

std::vector<std::string> Properties::TakeWords(std::string_view name) {
    std::vector<std::string> words;
    if (const XmlElement* value = Take(name))
        for (const std::string& word : Split(value->text, '|'))
            words.push_back(LastWord(word));
    return words;
}

std::vector<FormText> Properties::TakeList(std::string_view name) {
    std::vector<FormText> texts;
    const XmlElement* value = Take(name);
    if (!value)
        return texts;
    if (value->name != "stringlist") {
        for (std::string& part : Split(value->text, ','))
            texts.push_back({std::move(part), value->at, value->Attribute("notr") != "true"});
        return texts;
    }
    for (const XmlElement& text : value->children)
        texts.push_back({text.text, text.at, value->Attribute("notr") != "true"});
    return texts;
}

std::string Properties::TakeMoment(std::string_view name) {
    const XmlElement* value = Take(name);
    if (!value)
        return {};
    if (value->name != "date" && value->name != "time" && value->name != "datetime")
        return Trimmed(value->text);
    char date[48];
    char time[48];
    std::snprintf(date, sizeof date, "%04d-%02d-%02d", PartOf(*value, "year"), PartOf(*value, "month"),
                  PartOf(*value, "day"));
    const int second = PartOf(*value, "second");
    std::snprintf(time, sizeof time, second > 0 ? "%02d:%02d:%02d" : "%02d:%02d", PartOf(*value, "hour"),
                  PartOf(*value, "minute"), second);
    if (value->name == "date")
        return date;
    return value->name == "time" ? time : std::string(date) + "T" + time;
}

void Properties::Ignore(std::initializer_list<std::string_view> names) {
    for (Entry& entry : m_entries)
        if (std::find(names.begin(), names.end(), entry.name) != names.end())
            entry.taken = true;
}

void Properties::End() {
    for (const Entry& entry : m_entries) {
        if (entry.taken)
            continue;
        const auto nearest = Nearest(m_asked, entry.name);
        m_problems.Add(FormFault::UnknownProperty, entry.property->at,
                       "the property " + QuotedName(entry.name) + " of " + m_what + " has no effect in a form",
                       nearest && !EqualText(*nearest, entry.name)
                           ? "Write " + QuotedName(*nearest) + " if that is meant."
                           : "Take it away, or set it to its default in Designer.");
    }
}

} // namespace corvane::forms
