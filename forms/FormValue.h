// Values of fields: how a text becomes one, what is wrong with one, and how it is written.
#pragma once

#include "forms/FormDef.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::forms {

enum class ProblemKind {
    None,
    Required,
    NotWhole,
    NotNumber,
    OutOfRange, // from %1 to %2
    TooSmall,   // %1 is the least
    TooLarge,   // %1 is the most
    Decimals,   // at most %1
    TooLong,    // at most %1 characters
    Pattern,    // %1 is what is wanted, or the pattern
    NotChoice,
    NotBoolean,
    NotDate,
    NotTime,
    NotDateTime,
    NotColor,
    NotConvertible, // %1 is what the property takes
    Own,            // of the page; %1 is its text
};

// Why a value can't be accepted, in words that say what is wanted.
struct Problem {
    ProblemKind kind = ProblemKind::None;
    std::vector<std::string> parts = {}; // of the sentence, for %1 and %2

    explicit operator bool() const { return kind != ProblemKind::None; }
    // "" for none.
    [[nodiscard]] std::string Text() const;
    friend bool operator==(const Problem& left, const Problem& right) = default;
};

// With %1 and %2, for translation; "" for None, "%1" for Own.
[[nodiscard]] std::string_view SentenceOf(ProblemKind kind);

// A sentence with its parts.
[[nodiscard]] std::string Filled(std::string_view sentence, std::span<const std::string> parts);

// The value, in the type of the kind, that a text of a user is; numbers with a decimal point. Nothing, with the reason,
// when it is none of that kind. It may still be one that can't be accepted.
[[nodiscard]] std::optional<Variant> ReadValue(const FieldDef& field, std::span<const FormChoice> choices,
                                               std::string_view text, Problem& problem);

// The same of a value of any type, by the library's conversions: what a property returns, or JSON. A number is the
// index of a choice, from 0.
[[nodiscard]] std::optional<Variant> ConvertValue(const FieldDef& field, std::span<const FormChoice> choices,
                                                  const Variant& value, Problem& problem);

// Why a value of the field's own type can't be accepted: it is required, or out of range, and so on.
[[nodiscard]] Problem CheckValue(const FieldDef& field, std::span<const FormChoice> choices, const Variant& value);

// The text of a value, as ReadValue reads it; "" for nothing.
[[nodiscard]] std::string WriteValue(const Variant& value);

// Without the white space around it.
[[nodiscard]] std::string Trimmed(std::string_view text);

// The texts of a value of several choices.
[[nodiscard]] std::vector<std::string> LinesOf(const Variant& value);

// Why a pattern can't be used, or "".
[[nodiscard]] std::string FaultOfPattern(const std::string& pattern);

} // namespace corvane::forms
