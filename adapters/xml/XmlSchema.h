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
    explicit XmlSchemaCache(std::shared_ptr<PlainTree::Memory> memory) : m_memory(std::move(memory)) {}
    ~XmlSchemaCache() override { m_memory->spare = nullptr; }

    void Add(std::string_view namespaceText, std::string_view file) override;

    // The first violation, under the schema of the root element's namespace.
    [[nodiscard]] XmlError Validate(xmlDocPtr document) const;
    [[nodiscard]] std::vector<XmlError> Violations(xmlDocPtr document) const;
    // Of documents without a namespace.
    [[nodiscard]] bool OnlyLists() const;

    std::string_view TypeName() const override { return "XmlSchemaCache"; }

private:
    struct FreeSchema {
        void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
        void operator()(xmlSchemaPtr schema) const { xmlSchemaFree(schema); }
        void operator()(xmlRelaxNGPtr schema) const { xmlRelaxNGFree(schema); }
    };
    // One of the two languages. The schema points into its own document.
    struct Schema {
        std::unique_ptr<xmlDoc, FreeSchema> document;
        std::unique_ptr<xmlSchema, FreeSchema> xsd; // made when it is needed beside plain
        std::unique_ptr<xmlRelaxNG, FreeSchema> relaxNG;
        std::unique_ptr<PlainSchema> plain; // of an XML Schema that is simple enough
    };

    void Run(xmlDocPtr document, xmlStructuredErrorFunc note, void* data) const;
    // What is wrong with it otherwise.
    static XmlError Make(Schema& schema);

    std::shared_ptr<PlainTree::Memory> m_memory;
    mutable std::map<std::string, Schema, std::less<>> m_schemas;
};

} // namespace corvane
