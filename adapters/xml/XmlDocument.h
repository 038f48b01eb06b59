// Documents and nodes. Only sources of this folder include it.
#pragma once

#include "adapters/xml/XmlParser.h"
#include "adapters/xml/XmlXPath.h"

namespace corvane {

// What the nodes of one document share.
struct XmlContent final : public virtual Object {
    XmlContent(XmlTree oDocumentTree, std::shared_ptr<XmlXPath> pSharedXPath)
        : oTree(std::move(oDocumentTree)), pXPath(std::move(pSharedXPath)) {}

    std::string_view TypeName() const override { return "XmlContent"; }

    const XmlTree oTree;
    const std::shared_ptr<XmlXPath> pXPath;
};

// Holds the tree, so that a node may outlive its document object.
class XmlNode final : public IXmlNode {
public:
    XmlNode(Ref<XmlContent> oContent, xmlNodePtr pNode) : m_oContent(std::move(oContent)), m_pNode(pNode) {}

    std::optional<std::string> Attribute(std::string_view sName) const override;
    const char* AttributeText(std::string_view sName) const override;
    void SetAttribute(std::string_view sName, std::string_view sValue) override;
    std::vector<Ref<IXmlNode>> SelectNodes(std::string_view sXPath) const override;
    Ref<IXmlNode> SelectSingleNode(std::string_view sXPath) const override;
    Long Line() const override { return LineOf(m_pNode); }

    std::string_view TypeName() const override { return "XmlNode"; }

private:
    Ref<XmlContent> m_oContent;
    xmlNodePtr m_pNode;
};

class XmlDocument final : public IXmlDocument {
public:
    XmlDocument(std::shared_ptr<XmlParser> pParser, std::shared_ptr<XmlXPath> pXPath)
        : m_pParser(std::move(pParser)), m_pXPath(std::move(pXPath)) {}

    bool LoadXml(std::string_view sBytes) override;
    XmlError ParseError() const override { return m_oError; }
    Ref<IXmlNode> SelectSingleNode(std::string_view sXPath) const override;
    XmlError Validate(const Ref<IXmlSchemaCache>& oSchemaCache) const override;
    [[nodiscard]] std::vector<XmlError> Violations(const Ref<IXmlSchemaCache>& oSchemaCache) const;

    std::string_view TypeName() const override { return "XmlDocument"; }

private:
    std::shared_ptr<XmlParser> m_pParser;
    std::shared_ptr<XmlXPath> m_pXPath;
    Ref<XmlContent> m_oContent; // nothing until a document has been read
    XmlError m_oError;
};

} // namespace corvane
