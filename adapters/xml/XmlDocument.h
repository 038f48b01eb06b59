// Documents and nodes. Only sources of this folder include it.
#pragma once

#include "adapters/xml/XmlParser.h"
#include "adapters/xml/XmlXPath.h"

namespace corvane {

// What the nodes of one document share.
struct XmlContent final : public virtual Object {
    XmlContent(XmlTree documentTree, std::shared_ptr<XmlXPath> sharedXPath)
        : tree(std::move(documentTree)), xPath(std::move(sharedXPath)) {}

    std::string_view TypeName() const override { return "XmlContent"; }

    const XmlTree tree;
    const std::shared_ptr<XmlXPath> xPath;
};

// Holds the tree, so that a node may outlive its document object.
class XmlNode final : public IXmlNode {
public:
    XmlNode(Ref<XmlContent> content, xmlNodePtr node) : m_content(std::move(content)), m_node(node) {}

    std::optional<std::string> Attribute(std::string_view name) const override;
    const char* AttributeText(std::string_view name) const override;
    void SetAttribute(std::string_view name, std::string_view value) override;
    std::vector<Ref<IXmlNode>> SelectNodes(std::string_view xPath) const override;
    Ref<IXmlNode> SelectSingleNode(std::string_view xPath) const override;
    Long Line() const override { return LineOf(m_node); }

    std::string_view TypeName() const override { return "XmlNode"; }

private:
    Ref<XmlContent> m_content;
    xmlNodePtr m_node;
};

class XmlDocument final : public IXmlDocument {
public:
    XmlDocument(std::shared_ptr<XmlParser> parser, std::shared_ptr<XmlXPath> xPath)
        : m_parser(std::move(parser)), m_xPath(std::move(xPath)) {}

    bool LoadXml(std::string_view bytes) override;
    XmlError ParseError() const override { return m_error; }
    Ref<IXmlNode> SelectSingleNode(std::string_view xPath) const override;
    XmlError Validate(const Ref<IXmlSchemaCache>& schemaCache) const override;
    [[nodiscard]] std::vector<XmlError> Violations(const Ref<IXmlSchemaCache>& schemaCache) const;

    std::string_view TypeName() const override { return "XmlDocument"; }

private:
    std::shared_ptr<XmlParser> m_parser;
    std::shared_ptr<XmlXPath> m_xPath;
    Ref<XmlContent> m_content; // nothing until a document has been read
    XmlError m_error;
};

} // namespace corvane
