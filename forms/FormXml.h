// The elements of an XML file with their places. Only sources of this folder include it.
#pragma once

#include "forms/FormDef.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::forms {

struct XmlElement {
    std::string name;
    std::string text; // of itself, with the entities resolved
    FormPlace at;     // of its "<"
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<XmlElement> children;

    // Empty when it isn't there.
    [[nodiscard]] std::string_view Attribute(std::string_view attributeName) const;
    // The first child of that name, or a null pointer.
    [[nodiscard]] const XmlElement* Child(std::string_view childName) const;
};

struct XmlFault {
    FormPlace at;
    std::string text; // "" for none
};

// The root of a text in UTF-8. With a fault the element is what has been read so far. Neither a DOCTYPE nor more than
// 4 MiB are read.
[[nodiscard]] XmlElement ReadXml(std::string_view bytes, XmlFault& fault);

} // namespace corvane::forms
