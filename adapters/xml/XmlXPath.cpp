#include "adapters/xml/XmlXPath.h"

#include "corvane/base/Failure.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace corvane {

namespace {

struct FreeResult {
    void operator()(xmlXPathObjectPtr result) const { xmlXPathFreeObject(result); }
};

// Whether the expression is nothing but names of elements with slashes between them, "./" before them or not. Such a
// one names children of children, which are found faster without evaluation.
bool IsPathOfNames(std::string_view xPath) {
    bool name = false;
    for (const char c : xPath) {
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (!letter && (c != '/' || !name))
            return false;
        name = letter;
    }
    return name;
}

template <class SEE>
void ForEachBelow(const xmlNode* parent, std::string_view path, const SEE& see) {
    const std::size_t nameNumber = std::min(path.find('/'), path.size());
    const std::string_view below = path.substr(std::min(nameNumber + 1, path.size()));
    for (xmlNodePtr child = parent->children; child; child = child->next) {
        const char* name = reinterpret_cast<const char*>(child->name);
        if (child->type != XML_ELEMENT_NODE || child->ns || std::strncmp(name, path.data(), nameNumber) != 0 ||
            name[nameNumber])
            continue;
        if (below.empty())
            see(child);
        else
            ForEachBelow(child, below, see);
    }
}

std::vector<xmlNodePtr> AllBelow(const xmlNode* parent, std::string_view path) {
    std::size_t nodeCount = 0;
    ForEachBelow(parent, path, [&](xmlNodePtr) { ++nodeCount; });
    std::vector<xmlNodePtr> nodes;
    nodes.reserve(nodeCount);
    ForEachBelow(parent, path, [&](xmlNodePtr node) { nodes.push_back(node); });
    return nodes;
}

// libxml2 would write to the error stream otherwise; what it returns says enough.
void Ignore(void* /*data*/, xmlErrorPtr /*error*/) {}

} // namespace

XmlXPath::~XmlXPath() {
    xmlXPathFreeContext(m_context);
}

xmlXPathCompExprPtr XmlXPath::Compiled(std::string_view xPath) {
    if (!m_context) {
        m_context = xmlXPathNewContext(nullptr);
        if (!m_context)
            throw std::bad_alloc();
        m_context->error = &Ignore;
        xmlXPathContextSetCache(m_context, 1, -1, 0);
    }
    auto it = m_expressions.find(xPath);
    if (it == m_expressions.end()) {
        constexpr std::size_t most = 1000; // expressions with a name in them would pile up without end
        if (m_expressions.size() >= most)
            m_expressions.clear();
        std::string text(xPath);
        Expression expression(xmlXPathCtxtCompile(m_context, reinterpret_cast<const xmlChar*>(text.c_str())));
        if (!expression)
            Fail(FailureNumber::InvalidProcedureCall, "\"" + text + "\" isn't an XPath expression");
        it = m_expressions.emplace(std::move(text), std::move(expression)).first;
    }
    return it->second.get();
}

std::vector<xmlNodePtr> XmlXPath::Select(xmlDocPtr document, xmlNodePtr from, std::string_view xPath) {
    const std::string_view path = xPath.starts_with("./") ? xPath.substr(2) : xPath;
    if (IsPathOfNames(path) && (from->type == XML_ELEMENT_NODE || from->type == XML_DOCUMENT_NODE))
        return AllBelow(from, path);
    xmlXPathCompExprPtr expression = Compiled(xPath);
    m_context->doc = document;
    m_context->node = from;
    const std::unique_ptr<xmlXPathObject, FreeResult> result(xmlXPathCompiledEval(expression, m_context));
    m_context->doc = nullptr;
    m_context->node = nullptr;
    if (!result)
        Fail(FailureNumber::InvalidProcedureCall, "\"" + std::string(xPath) + "\" can't be evaluated");
    if (result->type != XPATH_NODESET)
        Fail(FailureNumber::TypeMismatch, "\"" + std::string(xPath) + "\" selects a value, not nodes");
    std::vector<xmlNodePtr> nodes;
    if (const xmlNodeSetPtr set = result->nodesetval) {
        nodes.reserve(static_cast<std::size_t>(set->nodeNr));
        for (int i = 0; i < set->nodeNr; ++i)
            if (set->nodeTab[i]->type == XML_ELEMENT_NODE || set->nodeTab[i]->type == XML_ATTRIBUTE_NODE)
                nodes.push_back(set->nodeTab[i]);
    }
    return nodes;
}

} // namespace corvane
