// Changes of definition files that leave everything else in them as it is written.
#pragma once

#include "analysis/Model.h"

namespace corvane::check {

// The value in place of what is written, in the attribute's own quotation marks.
[[nodiscard]] Edit ValueEdit(const File& file, const Attribute& attribute, std::string_view value);
// Another name for the attribute.
[[nodiscard]] Edit NameEdit(const File& file, const Attribute& attribute, std::string_view name);
// The attribute goes, with the blanks in front of it.
[[nodiscard]] Edit RemovalEdit(const File& file, const Attribute& attribute);
// A new attribute behind those that are there.
[[nodiscard]] Edit AdditionEdit(const File& file, const Element& element, std::string_view attribute,
                                std::string_view value);
// As ValueEdit where the attribute is there, else as AdditionEdit.
[[nodiscard]] Edit SetEdit(const File& file, const Element& element, std::string_view attribute,
                           std::string_view value);

// A text as it is written between quotation marks of that kind, in Windows-1252.
[[nodiscard]] std::string AsValue(std::string_view text, char quotationMark = '"');

} // namespace corvane::check
