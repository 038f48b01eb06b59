// A W3C XML Schema that says no more than which elements and attributes there are and where, as a table. Only sources
// of this folder include it: it shows libxml2's types.
#pragma once

#include <cstddef>
#include <libxml/tree.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

inline constexpr std::string_view xmlSchemaNamespace = "http://www.w3.org/2001/XMLSchema";

// A text of libxml2's; of none, one that is empty.
[[nodiscard]] inline std::string_view View(const xmlChar* text) {
    return text ? reinterpret_cast<const char*>(text) : "";
}

// Most files are valid, and of such a schema that is seen in a fraction of the time that libxml2's validation takes.
// It finds no faults: of a document that it doesn't accept, libxml2 must say whether it is valid and why not. Until
// then libxml2 needn't make anything of the schema either, which takes it longer than the reading of small files.
class PlainSchema {
public:
    // Nothing for a schema that says anything else or that isn't valid for certain. All elements must be mixed and hold
    // one repeated optional choice of elements at most; all attributes must be optional texts.
    [[nodiscard]] static std::unique_ptr<PlainSchema> Of(xmlDocPtr schema);

    // Whether the document is valid for certain.
    [[nodiscard]] bool Accepts(const xmlDoc* document) const;

private:
    struct Type {
        std::vector<std::string> attributes;
        std::vector<std::pair<std::string, std::size_t>> elements; // with the place of their type in m_types
    };
    class Reader;

    [[nodiscard]] bool AcceptsElement(const xmlNode* element, const Type& type) const;

    Type m_document; // the elements that may be the root
    std::vector<Type> m_types;
};

} // namespace corvane
