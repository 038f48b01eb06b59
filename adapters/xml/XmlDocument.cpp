#include "adapters/xml/XmlDocument.h"

#include "adapters/common/Encoding.h"
#include "adapters/xml/PlainTree.h"
#include "adapters/xml/XmlParser.h"
#include "adapters/xml/XmlSchema.h"

#include <cstring>

namespace corvane {

namespace {

xmlAttr* AttributeOf(const xmlNode* pNode, std::string_view sName) {
    if (pNode->type == XML_ELEMENT_NODE && !sName.empty())
        for (xmlAttr* pAttribute = pNode->properties; pAttribute; pAttribute = pAttribute->next) {
            const char* sHere = reinterpret_cast<const char*>(pAttribute->name);
            if (*sHere == sName.front() && !pAttribute->ns && std::strncmp(sHere, sName.data(), sName.size()) == 0 &&
                !sHere[sName.size()])
                return pAttribute;
        }
    return nullptr;
}

// A value in several pieces becomes one.
const char* TextOf(xmlAttr* pAttribute) {
    if (!pAttribute->children)
        return "";
    if (pAttribute->children->next || pAttribute->children->type != XML_TEXT_NODE) {
        xmlChar* sValue = xmlNodeListGetString(pAttribute->doc, pAttribute->children, 1);
        xmlSetNsProp(pAttribute->parent, nullptr, pAttribute->name, sValue);
        xmlFree(sValue);
    }
    const char* sText = reinterpret_cast<const char*>(pAttribute->children->content);
    return sText ? sText : "";
}

Ref<IXmlNode> FirstOf(const Ref<XmlContent>& oContent, xmlNodePtr pFrom, std::string_view sXPath) {
    const std::vector<xmlNodePtr> aFound = oContent->pXPath->Select(oContent->oTree.get(), pFrom, sXPath);
    if (aFound.empty())
        return nullptr;
    return New<XmlNode>(oContent, aFound.front());
}

} // namespace

std::optional<std::string> XmlNode::Attribute(std::string_view sName) const {
    const char* sText = AttributeText(sName);
    return sText ? std::optional<std::string>(sText) : std::nullopt;
}

const char* XmlNode::AttributeText(std::string_view sName) const {
    xmlAttr* pAttribute = AttributeOf(m_pNode, sName);
    return pAttribute ? TextOf(pAttribute) : nullptr;
}

void XmlNode::SetAttribute(std::string_view sName, std::string_view sValue) {
    if (m_pNode->type != XML_ELEMENT_NODE)
        Fail(FailureNumber::InvalidProcedureCall, "Only an element has attributes");
    const std::string sXmlName(sName);
    const std::string sText(sValue);
    if (!IsUtf8(sText) || xmlValidateNCName(reinterpret_cast<const xmlChar*>(sXmlName.c_str()), 0) != 0)
        Fail(FailureNumber::InvalidProcedureCall,
             "\"" + sXmlName + "\" isn't an attribute name, or its text isn't UTF-8");
    PlainTree* pPlain = PlainTree::Of(m_pNode->doc);
    if (!pPlain) {
        xmlSetNsProp(m_pNode, nullptr, reinterpret_cast<const xmlChar*>(sXmlName.c_str()),
                     reinterpret_cast<const xmlChar*>(sText.c_str()));
        return;
    }
    if (xmlAttr* pAttribute = AttributeOf(m_pNode, sName))
        return pPlain->SetValue(pAttribute, sText.c_str());
    xmlAttr* pLast = m_pNode->properties;
    while (pLast && pLast->next)
        pLast = pLast->next;
    pPlain->AddAttribute(m_pNode, pLast,
                         xmlDictLookup(m_pNode->doc->dict, reinterpret_cast<const xmlChar*>(sXmlName.c_str()), -1),
                         sText.c_str());
}

std::vector<Ref<IXmlNode>> XmlNode::SelectNodes(std::string_view sXPath) const {
    const std::vector<xmlNodePtr> aFound = m_oContent->pXPath->Select(m_oContent->oTree.get(), m_pNode, sXPath);
    std::vector<Ref<IXmlNode>> aNodes;
    aNodes.reserve(aFound.size());
    for (xmlNodePtr pNode : aFound)
        aNodes.push_back(New<XmlNode>(m_oContent, pNode));
    return aNodes;
}

Ref<IXmlNode> XmlNode::SelectSingleNode(std::string_view sXPath) const {
    return FirstOf(m_oContent, m_pNode, sXPath);
}

bool XmlDocument::LoadXml(std::string_view sBytes) {
    m_oError = {};
    m_oContent = nullptr;
    // Three characters like any others, in front of everything, where only blanks may stand.
    if (sBytes.starts_with("\xEF\xBB\xBF")) {
        m_oError = {XML_ERR_DOCUMENT_EMPTY,
                    Reason(1, "the file begins with the byte order mark of UTF-8, but each of its bytes is read as a "
                              "character of Windows-1252; save it without the mark"),
                    1};
        return false;
    }
    XmlTree oTree =
        IsAscii(sBytes) ? m_pParser->Parse(sBytes, m_oError) : m_pParser->Parse(DecodeWindows1252(sBytes), m_oError);
    m_oContent = oTree ? New<XmlContent>(std::move(oTree), m_pXPath) : Ref<XmlContent>();
    return static_cast<bool>(m_oContent);
}

Ref<IXmlNode> XmlDocument::SelectSingleNode(std::string_view sXPath) const {
    if (!m_oContent)
        return nullptr;
    return FirstOf(m_oContent, reinterpret_cast<xmlNodePtr>(m_oContent->oTree.get()), sXPath);
}

XmlError XmlDocument::Validate(const Ref<IXmlSchemaCache>& oSchemaCache) const {
    if (!m_oContent)
        return {XML_ERR_DOCUMENT_EMPTY, "there is no document to validate", 0};
    return oSchemaCache.As<XmlSchemaCache>()->Validate(m_oContent->oTree.get());
}

std::vector<XmlError> XmlDocument::Violations(const Ref<IXmlSchemaCache>& oSchemaCache) const {
    if (!m_oContent)
        return {Validate(oSchemaCache)};
    return oSchemaCache.As<XmlSchemaCache>()->Violations(m_oContent->oTree.get());
}

std::vector<XmlError> Violations(const Ref<IXmlDocument>& oDocument, const Ref<IXmlSchemaCache>& oSchemaCache) {
    return oDocument.As<XmlDocument>()->Violations(oSchemaCache);
}

} // namespace corvane
