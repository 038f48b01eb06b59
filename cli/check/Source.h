// A definition file with the places of its elements and attributes. The library's XML reader decides whether a file is
// well formed and what values are; it knows lines, but no columns, and of attributes neither. So the text is read a
// second time, by a scanner that keeps places and relies on the first.
#pragma once

#include "cli/check/Findings.h"
#include "corvane/platform/IXmlService.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::check {

struct Attribute {
    std::string_view sName;
    std::string_view sValue; // UTF-8
    std::string_view sRaw;   // as it is written
    Position oName;
    Position oValue;   // of its first character
    bool bBad = false; // has been found to be no value of its kind
};

struct Element {
    std::string_view sName;
    Position oAt; // of its "<"
    std::vector<Attribute> aAttributes;
    std::vector<Element> aChildren;

    [[nodiscard]] const Attribute* Find(std::string_view sAttribute) const;
    [[nodiscard]] Attribute* Find(std::string_view sAttribute);
    // Empty when it isn't there.
    [[nodiscard]] std::string_view Value(std::string_view sAttribute) const;
    // Of the attribute's value, or of the element when it has none such.
    [[nodiscard]] Position At(std::string_view sAttribute) const;
};

// The elements of a text that is known to be well formed, nested below the root, which may be missing. Names and values
// point into the text, or into aTexts where they are written otherwise than they read. An element that comes out of an
// entity isn't seen.
[[nodiscard]] std::optional<Element> ScanElements(std::string_view sBytes, const Ref<IXmlDocument>& oDocument,
                                                  std::deque<std::string>& aTexts);

} // namespace corvane::check
