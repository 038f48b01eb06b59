#include "forms/FormValue.h"

#include "adapters/common/Pattern.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <stdexcept>

namespace corvane::forms {

namespace {

constexpr std::size_t longestPattern = 500;
constexpr std::size_t longestMatched = 2000; // bytes of a text that a pattern is tried on

Long CharactersIn(std::string_view text) {
    return static_cast<Long>(std::count_if(text.begin(), text.end(),
                                           [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

// Exactly that many digits, and what they are.
std::optional<int> Digits(std::string_view text, std::size_t at, std::size_t count) {
    if (at + count > text.size())
        return std::nullopt;
    int number = 0;
    for (const char c : text.substr(at, count)) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

bool IsDate(std::string_view text) {
    const auto year = Digits(text, 0, 4);
    const auto month = Digits(text, 5, 2);
    const auto day = Digits(text, 8, 2);
    if (text.size() != 10 || !year || !month || !day || text[4] != '-' || text[7] != '-' || *year < 1 || *month < 1 ||
        *month > 12)
        return false;
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = (*year % 4 == 0 && *year % 100 != 0) || *year % 400 == 0;
    return *day >= 1 && *day <= days[*month - 1] + (*month == 2 && isLeap ? 1 : 0);
}

bool IsTime(std::string_view text) {
    const auto hour = Digits(text, 0, 2);
    const auto minute = Digits(text, 3, 2);
    if (!hour || !minute || text[2] != ':' || *hour > 23 || *minute > 59)
        return false;
    if (text.size() == 5)
        return true;
    const auto second = Digits(text, 6, 2);
    return text.size() == 8 && text[5] == ':' && second && *second <= 59;
}

bool IsColor(std::string_view text) {
    return text.size() == 7 && text[0] == '#' &&
           std::all_of(text.begin() + 1, text.end(), [](unsigned char c) { return std::isxdigit(c) != 0; });
}

// What of the field's kind a text that isn't empty has to be; nothing when it is.
ProblemKind FormOf(FieldKind kind, std::string_view text) {
    switch (kind) {
    case FieldKind::Date:
        return IsDate(text) ? ProblemKind::None : ProblemKind::NotDate;
    case FieldKind::Time:
        return IsTime(text) ? ProblemKind::None : ProblemKind::NotTime;
    case FieldKind::DateTime: {
        const std::size_t letter = text.find_first_of("T ");
        return letter == 10 && IsDate(text.substr(0, 10)) && IsTime(text.substr(11)) ? ProblemKind::None
                                                                                     : ProblemKind::NotDateTime;
    }
    case FieldKind::Color:
        return IsColor(text) ? ProblemKind::None : ProblemKind::NotColor;
    default:
        return ProblemKind::None;
    }
}

const FormChoice* ChoiceOf(std::span<const FormChoice> choices, std::string_view text) {
    const auto Is = [&](auto equal) {
        const auto it = std::find_if(choices.begin(), choices.end(), equal);
        return it == choices.end() ? nullptr : &*it;
    };
    if (const FormChoice* exact = Is([&](const FormChoice& choice) { return choice.value == text; }))
        return exact;
    if (const FormChoice* shown = Is([&](const FormChoice& choice) { return PlainText(choice.label.text) == text; }))
        return shown;
    return Is([&](const FormChoice& choice) { return EqualText(choice.value, text); });
}

std::optional<Variant> ReadNumber(const FieldDef& field, const std::string& text, Problem& problem) {
    const bool isWhole = field.kind == FieldKind::Integer;
    if (text.empty() && field.look == FieldLook::Line)
        return Variant();
    const auto number = NumberIn(text);
    if (!number || !std::isfinite(*number) || (isWhole && std::floor(*number) != *number)) {
        problem.kind = isWhole ? ProblemKind::NotWhole : ProblemKind::NotNumber;
        return std::nullopt;
    }
    if (!isWhole)
        return Variant(*number);
    try {
        return Variant(ToLongLong(Variant(text)));
    } catch (const Failure&) {
        problem.kind = ProblemKind::NotWhole; // beyond 64 bits
        return std::nullopt;
    }
}

struct KnownPattern {
    std::unique_ptr<Pattern> compiled; // none if it can't be used; then every text is accepted
    std::string fault;
};

// Compiled once for all fields of that pattern.
const KnownPattern& Known(const std::string& pattern) {
    static std::map<std::string, KnownPattern> known;
    const auto [it, isNew] = known.try_emplace(pattern);
    if (!isNew)
        return it->second;
    try {
        if (pattern.size() > longestPattern)
            throw std::invalid_argument("it has more than " + std::to_string(longestPattern) + " characters");
        it->second.compiled = std::make_unique<Pattern>(pattern);
    } catch (const std::invalid_argument& fault) {
        it->second.fault = fault.what();
    }
    return it->second;
}

std::string ShortNumber(Double number) {
    return ToText(Variant(number));
}

Problem RangeProblem(const FieldDef& field, Double number) {
    const bool isLow = field.minimum && number < *field.minimum;
    const bool isHigh = field.maximum && number > *field.maximum;
    if (!isLow && !isHigh)
        return {};
    if (field.minimum && field.maximum)
        return {ProblemKind::OutOfRange, {ShortNumber(*field.minimum), ShortNumber(*field.maximum)}};
    return isLow ? Problem{ProblemKind::TooSmall, {ShortNumber(*field.minimum)}}
                 : Problem{ProblemKind::TooLarge, {ShortNumber(*field.maximum)}};
}

Problem NumberProblem(const FieldDef& field, const Variant& value) {
    const Double number = ToDouble(value);
    if (Problem problem = RangeProblem(field, number))
        return problem;
    if (field.kind != FieldKind::Number || field.decimals >= 15)
        return {};
    const Double scaled = number * std::pow(10.0, field.decimals);
    if (std::abs(scaled - std::round(scaled)) > 1e-6 * std::max(1.0, std::abs(scaled)))
        return {ProblemKind::Decimals, {std::to_string(field.decimals)}};
    return {};
}

Problem TextProblem(const FieldDef& field, const std::string& text) {
    if (field.maxLength > 0 && CharactersIn(text) > field.maxLength)
        return {ProblemKind::TooLong, {std::to_string(field.maxLength)}};
    if (field.pattern.empty() || text.empty())
        return {};
    const Pattern* pattern = Known(field.pattern).compiled.get();
    if (!pattern)
        return {};
    if (text.size() > longestMatched)
        return {ProblemKind::TooLong, {std::to_string(longestMatched)}};
    if (pattern->Matches(text))
        return {};
    return {ProblemKind::Pattern, {field.wanted.IsEmpty() ? field.pattern : field.wanted.text}};
}

} // namespace

std::string Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos)
        return {};
    return std::string(text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1));
}

std::string_view SentenceOf(ProblemKind kind) {
    switch (kind) {
    case ProblemKind::None:
        return "";
    case ProblemKind::Required:
        return "Please enter a value.";
    case ProblemKind::NotWhole:
        return "Please enter a whole number.";
    case ProblemKind::NotNumber:
        return "Please enter a number.";
    case ProblemKind::OutOfRange:
        return "Please enter a value from %1 to %2.";
    case ProblemKind::TooSmall:
        return "Please enter at least %1.";
    case ProblemKind::TooLarge:
        return "Please enter at most %1.";
    case ProblemKind::Decimals:
        return "Please enter at most %1 decimal places.";
    case ProblemKind::TooLong:
        return "Please enter at most %1 characters.";
    case ProblemKind::Pattern:
        return "Please enter: %1.";
    case ProblemKind::NotChoice:
        return "Please choose one of the values.";
    case ProblemKind::NotBoolean:
        return "Please enter true or false.";
    case ProblemKind::NotDate:
        return "Please enter a date, such as 2026-11-25.";
    case ProblemKind::NotTime:
        return "Please enter a time, such as 18:30.";
    case ProblemKind::NotDateTime:
        return "Please enter a date and a time, such as 2026-11-25 18:30.";
    case ProblemKind::NotColor:
        return "Please enter a color, such as #1f77b4.";
    case ProblemKind::NotConvertible:
        return "This value can't be used here; %1 is expected.";
    case ProblemKind::Own:
        return "%1";
    }
    return "";
}

std::string Filled(std::string_view sentence, std::span<const std::string> parts) {
    std::string text;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        const bool isPart =
            sentence[i] == '%' && i + 1 < sentence.size() && sentence[i + 1] >= '1' && sentence[i + 1] <= '9';
        const auto part = isPart ? static_cast<std::size_t>(sentence[i + 1] - '1') : parts.size();
        if (part < parts.size()) {
            text += parts[part];
            ++i;
        } else {
            text += sentence[i];
        }
    }
    return text;
}

std::string Problem::Text() const {
    return Filled(SentenceOf(kind), parts);
}

std::optional<Variant> ReadValue(const FieldDef& field, std::span<const FormChoice> choices, std::string_view text,
                                 Problem& problem) {
    switch (field.kind) {
    case FieldKind::Integer:
    case FieldKind::Number:
    case FieldKind::Progress:
        return ReadNumber(field, Trimmed(text), problem);
    case FieldKind::Boolean: {
        const std::string word = Trimmed(text);
        if (EqualText(word, "true") || word == "1")
            return Variant(true);
        if (EqualText(word, "false") || word == "0")
            return Variant(false);
        problem.kind = ProblemKind::NotBoolean;
        return std::nullopt;
    }
    case FieldKind::Choice:
        if (const FormChoice* choice = ChoiceOf(choices, text))
            return Variant(choice->value);
        if (text.empty() || field.look == FieldLook::EditableCombo)
            return Variant(text);
        problem.kind = ProblemKind::NotChoice;
        return std::nullopt;
    case FieldKind::Choices: {
        std::string chosen;
        for (const std::string& line : LinesOf(Variant(text))) {
            const FormChoice* choice = ChoiceOf(choices, line);
            if (!choice) {
                problem.kind = ProblemKind::NotChoice;
                return std::nullopt;
            }
            chosen += (chosen.empty() ? "" : "\n") + choice->value;
        }
        return Variant(chosen);
    }
    case FieldKind::Date:
    case FieldKind::Time:
    case FieldKind::DateTime:
    case FieldKind::Color: {
        std::string moment = Trimmed(text);
        problem.kind = moment.empty() ? ProblemKind::None : FormOf(field.kind, moment);
        if (problem)
            return std::nullopt;
        if (field.kind == FieldKind::DateTime && !moment.empty())
            moment[10] = 'T';
        return Variant(moment);
    }
    default:
        return Variant(text);
    }
}

std::optional<Variant> ConvertValue(const FieldDef& field, std::span<const FormChoice> choices, const Variant& value,
                                    Problem& problem) {
    try {
        switch (field.kind) {
        case FieldKind::Integer:
            return value.IsEmpty() && field.look == FieldLook::Line ? Variant() : Variant(ToLongLong(value));
        case FieldKind::Number:
        case FieldKind::Progress:
            if (value.IsEmpty() && field.look == FieldLook::Line)
                return Variant();
            // A single has fewer digits than its neighbour among the doubles.
            return Variant(value.Get<Single>() ? NumberIn(ToText(value)).value_or(0) : ToDouble(value));
        case FieldKind::Boolean:
            return Variant(ToBoolean(value));
        case FieldKind::Choice:
            if (value.Get<Long>() || value.Get<LongLong>()) {
                const LongLong index = ToLongLong(value);
                const bool isIndex = index >= 0 && static_cast<std::size_t>(index) < choices.size();
                return Variant(isIndex ? choices[static_cast<std::size_t>(index)].value : std::string());
            }
            return Variant(ToText(value)); // also one that is no longer among the choices
        default:
            return Variant(ToText(value));
        }
    } catch (const Failure&) {
        problem = {ProblemKind::NotConvertible, {std::string(WordOf(field.kind))}};
        return std::nullopt;
    }
}

Problem CheckValue(const FieldDef& field, std::span<const FormChoice> choices, const Variant& value) {
    const std::string text = WriteValue(value);
    if (field.kind != FieldKind::Boolean && text.find_first_not_of(" \t\r\n") == std::string::npos)
        return field.required ? Problem{ProblemKind::Required} : Problem();
    switch (field.kind) {
    case FieldKind::Boolean:
        return field.required && !ToBoolean(value) ? Problem{ProblemKind::Required} : Problem();
    case FieldKind::Integer:
    case FieldKind::Number:
        return NumberProblem(field, value);
    case FieldKind::Choice:
        return field.look != FieldLook::EditableCombo && !ChoiceOf(choices, text) ? Problem{ProblemKind::NotChoice}
                                                                                  : Problem();
    case FieldKind::Choices:
        for (const std::string& line : LinesOf(value))
            if (!ChoiceOf(choices, line))
                return {ProblemKind::NotChoice};
        return {};
    case FieldKind::Date:
    case FieldKind::Time:
    case FieldKind::DateTime:
    case FieldKind::Color:
        return {FormOf(field.kind, text)};
    default:
        return IsFreeText(field.kind) ? TextProblem(field, text) : Problem();
    }
}

std::string WriteValue(const Variant& value) {
    if (const bool* boolean = value.Get<bool>())
        return *boolean ? "true" : "false";
    return value.IsObject() ? std::string() : ToText(value);
}

std::vector<std::string> LinesOf(const Variant& value) {
    std::vector<std::string> lines;
    const std::string text = WriteValue(value);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (end > begin)
            lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::string FaultOfPattern(const std::string& pattern) {
    return Known(pattern).fault;
}

} // namespace corvane::forms
