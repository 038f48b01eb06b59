#include "adapters/xml/XmlService.h"

#include "adapters/xml/XmlDocument.h"
#include "adapters/xml/XmlParser.h"
#include "adapters/xml/XmlSchema.h"
#include "adapters/xml/XmlXPath.h"

namespace corvane {

XmlService::XmlService() {
    xmlInitParser();
    m_parser = std::make_shared<XmlParser>();
    m_xPath = std::make_shared<XmlXPath>();
}

XmlService::~XmlService() = default;

Ref<IXmlDocument> XmlService::NewDocument() {
    return New<XmlDocument>(m_parser, m_xPath);
}

Ref<IXmlSchemaCache> XmlService::NewSchemaCache() {
    return New<XmlSchemaCache>(m_parser->TreeMemory());
}

} // namespace corvane
