// XML on libxml2: no network, no external entities, bounded expansion, and W3C XML Schema or RELAX NG.
#pragma once

#include "corvane/platform/IXmlService.h"

#include <cstddef>
#include <memory>

namespace corvane {

namespace XmlLimit {
// Bytes of one attribute's value and of one unbroken piece of text, after decoding and with entities expanded.
inline constexpr std::size_t ValueBytes = 256 * 1024;
// Levels of elements. libxml2's own.
inline constexpr int Depth = 256;
} // namespace XmlLimit

// Documents keep what they need of the service, so they may outlive it. Error codes are libxml2's.
class XmlService final : public IXmlService {
public:
    XmlService();
    ~XmlService() override;

    Ref<IXmlDocument> NewDocument() override;
    // Add tells the two schema languages apart by the root element's namespace, reads the file at once, and replaces
    // an earlier schema of the same namespace.
    Ref<IXmlSchemaCache> NewSchemaCache() override;

private:
    std::shared_ptr<class XmlParser> m_parser;
    std::shared_ptr<class XmlXPath> m_xPath;
};

// All that IXmlDocument::Validate would find one after the other, for tools. The document and the schemas are ones that
// XmlService made.
[[nodiscard]] std::vector<XmlError> Violations(const Ref<IXmlDocument>& document,
                                               const Ref<IXmlSchemaCache>& schemaCache);

// Whether the schema of documents without a namespace only lists elements and attributes at their places: then a
// document is valid that has no others than a valid one, whatever their number, order and values. The schemas are ones
// that XmlService made.
[[nodiscard]] bool OnlyLists(const Ref<IXmlSchemaCache>& schemaCache);

} // namespace corvane
