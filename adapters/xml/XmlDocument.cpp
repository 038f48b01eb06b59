#include "adapters/xml/XmlDocument.h"

#include "adapters/common/Encoding.h"
#include "adapters/xml/PlainTree.h"
#include "adapters/xml/XmlParser.h"
#include "adapters/xml/XmlSchema.h"
#include "adapters/xml/XmlService.h"

#include <cstring>

namespace corvane {

namespace {

xmlAttr* AttributeOf(const xmlNode* node, std::string_view name) {
    if (node->type == XML_ELEMENT_NODE && !name.empty())
        for (xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
            const char* here = reinterpret_cast<const char*>(attribute->name);
            if (*here == name.front() && !attribute->ns && std::strncmp(here, name.data(), name.size()) == 0 &&
                !here[name.size()])
                return attribute;
        }
    return nullptr;
}

// A value in several pieces becomes one.
const char* TextOf(xmlAttr* attribute) {
    if (!attribute->children)
        return "";
    if (attribute->children->next || attribute->children->type != XML_TEXT_NODE) {
        xmlChar* value = xmlNodeListGetString(attribute->doc, attribute->children, 1);
        xmlSetNsProp(attribute->parent, nullptr, attribute->name, value);
        xmlFree(value);
    }
    const char* text = reinterpret_cast<const char*>(attribute->children->content);
    return text ? text : "";
}

Ref<IXmlNode> FirstOf(const Ref<XmlContent>& content, xmlNodePtr from, std::string_view xPath) {
    const std::vector<xmlNodePtr> found = content->xPath->Select(content->tree.get(), from, xPath);
    if (found.empty())
        return nullptr;
    return New<XmlNode>(content, found.front());
}

} // namespace

std::optional<std::string> XmlNode::Attribute(std::string_view name) const {
    const char* text = AttributeText(name);
    return text ? std::optional<std::string>(text) : std::nullopt;
}

const char* XmlNode::AttributeText(std::string_view name) const {
    xmlAttr* attribute = AttributeOf(m_node, name);
    return attribute ? TextOf(attribute) : nullptr;
}

void XmlNode::SetAttribute(std::string_view name, std::string_view value) {
    if (m_node->type != XML_ELEMENT_NODE)
        Fail(FailureNumber::InvalidProcedureCall, "Only an element has attributes");
    const std::string xmlName(name);
    const std::string text(value);
    if (!IsUtf8(text) || xmlValidateNCName(reinterpret_cast<const xmlChar*>(xmlName.c_str()), 0) != 0)
        Fail(FailureNumber::InvalidProcedureCall,
             "\"" + xmlName + "\" isn't an attribute name, or its text isn't UTF-8");
    PlainTree* plain = PlainTree::Of(m_node->doc);
    if (!plain) {
        xmlSetNsProp(m_node, nullptr, reinterpret_cast<const xmlChar*>(xmlName.c_str()),
                     reinterpret_cast<const xmlChar*>(text.c_str()));
        return;
    }
    if (xmlAttr* attribute = AttributeOf(m_node, name))
        return plain->SetValue(attribute, text.c_str());
    xmlAttr* last = m_node->properties;
    while (last && last->next)
        last = last->next;
    plain->AddAttribute(m_node, last,
                        xmlDictLookup(m_node->doc->dict, reinterpret_cast<const xmlChar*>(xmlName.c_str()), -1),
                        text.c_str());
}

std::vector<Ref<IXmlNode>> XmlNode::SelectNodes(std::string_view xPath) const {
    const std::vector<xmlNodePtr> found = m_content->xPath->Select(m_content->tree.get(), m_node, xPath);
    std::vector<Ref<IXmlNode>> nodes;
    nodes.reserve(found.size());
    for (xmlNodePtr node : found)
        nodes.push_back(New<XmlNode>(m_content, node));
    return nodes;
}

Ref<IXmlNode> XmlNode::SelectSingleNode(std::string_view xPath) const {
    return FirstOf(m_content, m_node, xPath);
}

bool XmlDocument::LoadXml(std::string_view bytes) {
    m_error = {};
    m_content = nullptr;
    // Three characters like any others, in front of everything, where only blanks may be.
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        m_error = {XML_ERR_DOCUMENT_EMPTY,
                   Reason(1, "the file begins with the byte order mark of UTF-8, but each of its bytes is read as a "
                             "character of Windows-1252; save it without the mark"),
                   1};
        return false;
    }
    XmlTree tree =
        IsAscii(bytes) ? m_parser->Parse(bytes, m_error) : m_parser->Parse(DecodeWindows1252(bytes), m_error);
    m_content = tree ? New<XmlContent>(std::move(tree), m_xPath) : Ref<XmlContent>();
    return static_cast<bool>(m_content);
}

Ref<IXmlNode> XmlDocument::SelectSingleNode(std::string_view xPath) const {
    if (!m_content)
        return nullptr;
    return FirstOf(m_content, reinterpret_cast<xmlNodePtr>(m_content->tree.get()), xPath);
}

XmlError XmlDocument::Validate(const Ref<IXmlSchemaCache>& schemaCache) const {
    if (!m_content)
        return {XML_ERR_DOCUMENT_EMPTY, "there is no document to validate", 0};
    return schemaCache.As<XmlSchemaCache>()->Validate(m_content->tree.get());
}

std::vector<XmlError> XmlDocument::Violations(const Ref<IXmlSchemaCache>& schemaCache) const {
    if (!m_content)
        return {Validate(schemaCache)};
    return schemaCache.As<XmlSchemaCache>()->Violations(m_content->tree.get());
}

std::vector<XmlError> Violations(const Ref<IXmlDocument>& document, const Ref<IXmlSchemaCache>& schemaCache) {
    return document.As<XmlDocument>()->Violations(schemaCache);
}

bool OnlyLists(const Ref<IXmlSchemaCache>& schemaCache) {
    return schemaCache.As<XmlSchemaCache>()->OnlyLists();
}

} // namespace corvane
