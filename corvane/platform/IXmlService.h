// XML documents, their nodes and the schema that they are validated against. All texts are UTF-8.
#pragma once

#include "corvane/base/Ref.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) IXmlNode : public virtual Object {
public:
    // The attribute's value, or nothing when it is absent.
    [[nodiscard]] virtual std::optional<std::string> Attribute(std::string_view sName) const = 0;
    // The same without a copy, a null pointer for absent. It holds until an attribute of the node is set or the node
    // and its document go.
    [[nodiscard]] virtual const char* AttributeText(std::string_view sName) const = 0;
    virtual void SetAttribute(std::string_view sName, std::string_view sValue) = 0;
    // The nodes that an XPath relative to this node selects, in document order.
    [[nodiscard]] virtual std::vector<Ref<IXmlNode>> SelectNodes(std::string_view sXPath) const = 0;
    // The first of them, or nothing.
    [[nodiscard]] virtual Ref<IXmlNode> SelectSingleNode(std::string_view sXPath) const = 0;
    // The element's line in the file, from 1.
    [[nodiscard]] virtual Long Line() const = 0;
};

// A schema that has been read, to be used for any number of documents.
class __attribute__((visibility("default"))) IXmlSchemaCache : public virtual Object {
public:
    // Fails when the file can't be read (53) or isn't a schema; the description then says where.
    virtual void Add(std::string_view sNamespace, std::string_view sFile) = 0;
};

struct XmlError {
    Long lErrorCode = 0; // 0 for none
    std::string sReason; // with line and name; empty for none
    Long lLine = 0;      // 0 when it isn't known
};

class __attribute__((visibility("default"))) IXmlDocument : public virtual Object {
public:
    // Parses the text of a file, whose bytes are Windows-1252 whatever its declaration says. False when it isn't well
    // formed or exceeds the limits; ParseError gives the reason.
    virtual bool LoadXml(std::string_view sBytes) = 0;
    [[nodiscard]] virtual XmlError ParseError() const = 0;
    // XPath from the document.
    [[nodiscard]] virtual Ref<IXmlNode> SelectSingleNode(std::string_view sXPath) const = 0;
    [[nodiscard]] virtual XmlError Validate(const Ref<IXmlSchemaCache>& oSchemaCache) const = 0;
};

class __attribute__((visibility("default"))) IXmlService : public virtual Object {
public:
    [[nodiscard]] virtual Ref<IXmlDocument> NewDocument() = 0;
    [[nodiscard]] virtual Ref<IXmlSchemaCache> NewSchemaCache() = 0;
};

} // namespace corvane
