#include "adapters/xml/XmlDocument.h"

#include "adapters/common/Encoding.h"
#include "adapters/xml/XmlSchema.h"

namespace corvane {

namespace {

std::string TextOf(const xmlAttr* pAttribute) {
    const xmlNode* pText = pAttribute->children;
    if (!pText)
        return {};
    if (!pText->next && pText->type == XML_TEXT_NODE)
        return reinterpret_cast<const char*>(pText->content);
    xmlChar* sValue = xmlNodeListGetString(pAttribute->doc, pAttribute->children, 1);
    std::string sText = sValue ? reinterpret_cast<const char*>(sValue) : "";
    xmlFree(sValue);
    return sText;
}

} // namespace

std::optional<std::string> XmlNode::Attribute(std::string_view sName) const {
    if (m_pNode->type == XML_ELEMENT_NODE)
        for (const xmlAttr* pAttribute = m_pNode->properties; pAttribute; pAttribute = pAttribute->next)
            if (!pAttribute->ns && reinterpret_cast<const char*>(pAttribute->name) == sName)
                return TextOf(pAttribute);
    return std::nullopt;
}

void XmlNode::SetAttribute(std::string_view sName, std::string_view sValue) {
    if (m_pNode->type != XML_ELEMENT_NODE)
        Fail(FailureNumber::InvalidProcedureCall, "Only an element has attributes");
    const std::string sXmlName(sName);
    const std::string sText(sValue);
    if (!IsUtf8(sText) || xmlValidateNCName(reinterpret_cast<const xmlChar*>(sXmlName.c_str()), 0) != 0)
        Fail(FailureNumber::InvalidProcedureCall,
             "\"" + sXmlName + "\" is no name of an attribute, or its text is not UTF-8");
    xmlSetNsProp(m_pNode, nullptr, reinterpret_cast<const xmlChar*>(sXmlName.c_str()),
                 reinterpret_cast<const xmlChar*>(sText.c_str()));
}

std::vector<Ref<IXmlNode>> XmlNode::SelectNodes(std::string_view sXPath) const {
    const std::vector<xmlNodePtr> aFound = m_pXPath->Select(m_oTree.get(), m_pNode, sXPath);
    std::vector<Ref<IXmlNode>> aNodes;
    aNodes.reserve(aFound.size());
    for (xmlNodePtr pNode : aFound)
        aNodes.push_back(New<XmlNode>(m_oTree, m_pXPath, pNode));
    return aNodes;
}

Ref<IXmlNode> XmlNode::SelectSingleNode(std::string_view sXPath) const {
    const std::vector<xmlNodePtr> aFound = m_pXPath->Select(m_oTree.get(), m_pNode, sXPath);
    if (aFound.empty())
        return nullptr;
    return New<XmlNode>(m_oTree, m_pXPath, aFound.front());
}

bool XmlDocument::LoadXml(std::string_view sBytes) {
    // The three bytes of a UTF-8 byte order mark are no text of the file.
    if (sBytes.starts_with("\xEF\xBB\xBF"))
        sBytes.remove_prefix(3);
    m_oError = {};
    m_oTree =
        IsAscii(sBytes) ? m_pParser->Parse(sBytes, m_oError) : m_pParser->Parse(DecodeWindows1252(sBytes), m_oError);
    return m_oTree != nullptr;
}

Ref<IXmlNode> XmlDocument::SelectSingleNode(std::string_view sXPath) const {
    if (!m_oTree)
        return nullptr;
    const auto aFound = m_pXPath->Select(m_oTree.get(), reinterpret_cast<xmlNodePtr>(m_oTree.get()), sXPath);
    if (aFound.empty())
        return nullptr;
    return New<XmlNode>(m_oTree, m_pXPath, aFound.front());
}

XmlError XmlDocument::Validate(const Ref<IXmlSchemaCache>& oSchemaCache) const {
    if (!m_oTree)
        return {XML_ERR_DOCUMENT_EMPTY, "there is no document to validate", 0};
    return oSchemaCache.As<XmlSchemaCache>()->Validate(m_oTree.get());
}

} // namespace corvane
