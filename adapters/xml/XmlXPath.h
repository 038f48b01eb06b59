// XPath expressions, each compiled once. Only sources of this folder include it: it shows libxml2's types.
#pragma once

#include "corvane/base/Text.h"

#include <functional>
#include <libxml/xpath.h>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {

class XmlXPath {
public:
    XmlXPath() = default;
    ~XmlXPath();
    XmlXPath(const XmlXPath&) = delete;
    XmlXPath& operator=(const XmlXPath&) = delete;

    // Elements and attributes in document order. 5 for an expression that isn't XPath, 13 for one that selects no
    // nodes by its nature.
    [[nodiscard]] std::vector<xmlNodePtr> Select(xmlDocPtr document, xmlNodePtr from, std::string_view xPath);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
    };
    struct FreeExpression {
        void operator()(xmlXPathCompExprPtr expression) const { xmlXPathFreeCompExpr(expression); }
    };
    using Expression = std::unique_ptr<xmlXPathCompExpr, FreeExpression>;

    xmlXPathCompExprPtr Compiled(std::string_view xPath);

    xmlXPathContextPtr m_context = nullptr; // made for the first expression that is more than a path of names
    std::unordered_map<std::string, Expression, Hash, std::equal_to<>> m_expressions;
};

} // namespace corvane
