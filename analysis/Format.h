// The elements and attributes of definition files as data. What an attribute's text must be like is left to the
// library's own conversions; here is which of them an attribute goes through.
#pragma once

#include "analysis/AttributeName.h"

#include <span>
#include <string_view>

namespace corvane::check {

enum class ValueKind { Text, Boolean, Number, WholeNumber, Word };
enum class Need {
    Optional,
    Required, // no default would do
    Name,     // the library takes an empty text, with which nothing can be done
};

struct AttributeFormat {
    AttributeName name;
    ValueKind kind = ValueKind::Text;
    Need need = Need::Optional;
    std::span<const std::string_view> words = {};
};

struct ElementFormat {
    std::string_view name;
    std::span<const AttributeFormat> attributes;
    std::span<const ElementFormat> children;

    [[nodiscard]] const AttributeFormat* Attribute(const AttributeName& attribute) const;
    [[nodiscard]] const ElementFormat* Child(std::string_view element) const;
};

// The root element.
[[nodiscard]] const ElementFormat& ServiceFormat();

} // namespace corvane::check
