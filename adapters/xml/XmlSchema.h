// Schemas, read once. Only sources of this folder include it: it shows libxml2's types.
#pragma once

#include "adapters/xml/PlainSchema.h"
#include "adapters/xml/PlainTree.h"
#include "corvane/platform/IXmlService.h"

#include <libxml/relaxng.h>
#include <libxml/xmlschemas.h>
#include <map>
#include <memory>
#include <string>

namespace corvane {

class XmlSchemaCache final : public IXmlSchemaCache {
public:
    // The memory is what the documents to be validated take turns in; its spare part goes with the schemas.
    explicit XmlSchemaCache(std::shared_ptr<PlainTree::Memory> pMemory) : m_pMemory(std::move(pMemory)) {}
    ~XmlSchemaCache() override { m_pMemory->pSpare = nullptr; }

    void Add(std::string_view sNamespace, std::string_view sFile) override;

    // The first violation, under the schema of the root element's namespace.
    [[nodiscard]] XmlError Validate(xmlDocPtr pDocument) const;
    [[nodiscard]] std::vector<XmlError> Violations(xmlDocPtr pDocument) const;

    std::string_view TypeName() const override { return "XmlSchemaCache"; }

private:
    struct FreeSchema {
        void operator()(xmlDocPtr pDocument) const { xmlFreeDoc(pDocument); }
        void operator()(xmlSchemaPtr pSchema) const { xmlSchemaFree(pSchema); }
        void operator()(xmlRelaxNGPtr pSchema) const { xmlRelaxNGFree(pSchema); }
    };
    // One of the two languages. The schema points into its own document.
    struct Schema {
        std::unique_ptr<xmlDoc, FreeSchema> oDocument;
        std::unique_ptr<xmlSchema, FreeSchema> oXmlSchema; // made when it is needed beside oPlain
        std::unique_ptr<xmlRelaxNG, FreeSchema> oRelaxNG;
        std::unique_ptr<PlainSchema> oPlain; // of an XML Schema that is simple enough
    };

    void Run(xmlDocPtr pDocument, xmlStructuredErrorFunc fnNote, void* pData) const;
    // What is wrong with it otherwise.
    static XmlError Make(Schema& oSchema);

    std::shared_ptr<PlainTree::Memory> m_pMemory;
    mutable std::map<std::string, Schema, std::less<>> m_mapSchemas;
};

} // namespace corvane
