#include "adapters/xml/XmlXPath.h"

#include "corvane/base/Failure.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace corvane {

namespace {

struct FreeResult {
    void operator()(xmlXPathObjectPtr pResult) const { xmlXPathFreeObject(pResult); }
};

// Whether the expression is nothing but names of elements with slashes between them, "./" before them or not. Such a
// one names children of children, which are found faster without evaluation.
bool IsPathOfNames(std::string_view sXPath) {
    bool bName = false;
    for (const char c : sXPath) {
        const bool bLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (!bLetter && (c != '/' || !bName))
            return false;
        bName = bLetter;
    }
    return bName;
}

template <class SEE>
void ForEachBelow(const xmlNode* pParent, std::string_view sPath, const SEE& fnSee) {
    const std::size_t nName = std::min(sPath.find('/'), sPath.size());
    const std::string_view sBelow = sPath.substr(std::min(nName + 1, sPath.size()));
    for (xmlNodePtr pChild = pParent->children; pChild; pChild = pChild->next) {
        const char* sName = reinterpret_cast<const char*>(pChild->name);
        if (pChild->type != XML_ELEMENT_NODE || pChild->ns || std::strncmp(sName, sPath.data(), nName) != 0 ||
            sName[nName])
            continue;
        if (sBelow.empty())
            fnSee(pChild);
        else
            ForEachBelow(pChild, sBelow, fnSee);
    }
}

std::vector<xmlNodePtr> AllBelow(const xmlNode* pParent, std::string_view sPath) {
    std::size_t nNodes = 0;
    ForEachBelow(pParent, sPath, [&](xmlNodePtr) { ++nNodes; });
    std::vector<xmlNodePtr> aNodes;
    aNodes.reserve(nNodes);
    ForEachBelow(pParent, sPath, [&](xmlNodePtr pNode) { aNodes.push_back(pNode); });
    return aNodes;
}

// libxml2 would write to the error stream otherwise; what it returns says enough.
void Ignore(void* /*pData*/, xmlErrorPtr /*pError*/) {}

} // namespace

XmlXPath::~XmlXPath() {
    xmlXPathFreeContext(m_pContext);
}

xmlXPathCompExprPtr XmlXPath::Compiled(std::string_view sXPath) {
    if (!m_pContext) {
        m_pContext = xmlXPathNewContext(nullptr);
        if (!m_pContext)
            throw std::bad_alloc();
        m_pContext->error = &Ignore;
        xmlXPathContextSetCache(m_pContext, 1, -1, 0);
    }
    auto it = m_mapExpressions.find(sXPath);
    if (it == m_mapExpressions.end()) {
        constexpr std::size_t nMost = 1000; // expressions with a name in them would pile up without end
        if (m_mapExpressions.size() >= nMost)
            m_mapExpressions.clear();
        std::string sText(sXPath);
        Expression oExpression(xmlXPathCtxtCompile(m_pContext, reinterpret_cast<const xmlChar*>(sText.c_str())));
        if (!oExpression)
            Fail(FailureNumber::InvalidProcedureCall, "\"" + sText + "\" isn't an XPath expression");
        it = m_mapExpressions.emplace(std::move(sText), std::move(oExpression)).first;
    }
    return it->second.get();
}

std::vector<xmlNodePtr> XmlXPath::Select(xmlDocPtr pDocument, xmlNodePtr pFrom, std::string_view sXPath) {
    const std::string_view sPath = sXPath.starts_with("./") ? sXPath.substr(2) : sXPath;
    if (IsPathOfNames(sPath) && (pFrom->type == XML_ELEMENT_NODE || pFrom->type == XML_DOCUMENT_NODE))
        return AllBelow(pFrom, sPath);
    xmlXPathCompExprPtr pExpression = Compiled(sXPath);
    m_pContext->doc = pDocument;
    m_pContext->node = pFrom;
    const std::unique_ptr<xmlXPathObject, FreeResult> oResult(xmlXPathCompiledEval(pExpression, m_pContext));
    m_pContext->doc = nullptr;
    m_pContext->node = nullptr;
    if (!oResult)
        Fail(FailureNumber::InvalidProcedureCall, "\"" + std::string(sXPath) + "\" can't be evaluated");
    if (oResult->type != XPATH_NODESET)
        Fail(FailureNumber::TypeMismatch, "\"" + std::string(sXPath) + "\" selects a value, not nodes");
    std::vector<xmlNodePtr> aNodes;
    if (const xmlNodeSetPtr pSet = oResult->nodesetval) {
        aNodes.reserve(static_cast<std::size_t>(pSet->nodeNr));
        for (int i = 0; i < pSet->nodeNr; ++i)
            if (pSet->nodeTab[i]->type == XML_ELEMENT_NODE || pSet->nodeTab[i]->type == XML_ATTRIBUTE_NODE)
                aNodes.push_back(pSet->nodeTab[i]);
    }
    return aNodes;
}

} // namespace corvane
