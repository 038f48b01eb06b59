#include "adapters/xml/XmlSchema.h"

#include "adapters/common/Paths.h"
#include "adapters/xml/PlainSchema.h"
#include "adapters/xml/XmlParser.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <libxml/xmlIO.h>

namespace corvane {

namespace {

constexpr std::string_view relaxNGNamespace = "http://relaxng.org/ns/structure/1.0";

std::string_view RootNamespace(xmlDocPtr document) {
    const xmlNode* root = xmlDocGetRootElement(document);
    return root && root->ns ? View(root->ns->href) : std::string_view();
}

XmlError ErrorOf(const xmlError& error) {
    const Long nodeLine = error.node ? LineOf(static_cast<const xmlNode*>(error.node)) : 0;
    const Long line = nodeLine > 0 ? nodeLine : error.line;
    return {error.code > 0 ? error.code : XML_ERR_INTERNAL_ERROR,
            Reason(line, error.message ? error.message : "the document isn't valid"), line};
}

// The first error of a run; later ones are often its consequences.
void StoreFirst(void* data, xmlErrorPtr error) {
    auto& first = *static_cast<XmlError*>(data);
    if (error && error->level >= XML_ERR_ERROR && first.lErrorCode == 0)
        first = ErrorOf(*error);
}

void StoreAll(void* data, xmlErrorPtr error) {
    if (error && error->level >= XML_ERR_ERROR)
        static_cast<std::vector<XmlError>*>(data)->push_back(ErrorOf(*error));
}

[[noreturn]] void FailSchema(std::string_view file, const std::string& why, Long number = FailureNumber::Unique) {
    Fail(number, "The schema file \"" + std::string(file) + "\" can't be used: " + why, "XML Schema");
}

// While a schema is read, what it includes comes from files only.
class NoNetwork {
public:
    NoNetwork() { xmlSetExternalEntityLoader(&xmlNoNetExternalEntityLoader); }
    ~NoNetwork() { xmlSetExternalEntityLoader(m_before); }
    NoNetwork(const NoNetwork&) = delete;
    NoNetwork& operator=(const NoNetwork&) = delete;

private:
    xmlExternalEntityLoader m_before = xmlGetExternalEntityLoader();
};

struct FreeAll {
    void operator()(xmlDocPtr p) const { xmlFreeDoc(p); }
    void operator()(xmlParserCtxtPtr p) const { xmlFreeParserCtxt(p); }
    void operator()(xmlSchemaParserCtxtPtr p) const { xmlSchemaFreeParserCtxt(p); }
    void operator()(xmlRelaxNGParserCtxtPtr p) const { xmlRelaxNGFreeParserCtxt(p); }
    void operator()(xmlSchemaValidCtxtPtr p) const { xmlSchemaFreeValidCtxt(p); }
    void operator()(xmlRelaxNGValidCtxtPtr p) const { xmlRelaxNGFreeValidCtxt(p); }
};
template <class T>
using Owned = std::unique_ptr<T, FreeAll>;

Owned<xmlDoc> ReadSchemaFile(const std::string& file, const std::string& bytes) {
    if (bytes.size() > INT_MAX)
        FailSchema(file, "it is too large");
    const Owned<xmlParserCtxt> context(xmlNewParserCtxt());
    if (!context)
        throw std::bad_alloc();
    Owned<xmlDoc> document(xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()), file.c_str(),
                                             nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!document) {
        const xmlError& error = context->lastError;
        FailSchema(file, Reason(error.line, error.message ? error.message : "it isn't well formed"));
    }
    return document;
}

} // namespace

void XmlSchemaCache::Add(std::string_view namespaceText, std::string_view file) {
    const std::optional<std::string> path = FindPath(file);
    if (!path)
        FailSchema(file, "there is no such file", FailureNumber::FileNotFound);
    const std::optional<std::string> bytes = ReadBytes(*path);
    if (!bytes)
        FailSchema(file, std::strerror(errno), FailureNumber::FileNotFound);

    const NoNetwork noNetwork;
    Owned<xmlDoc> document = ReadSchemaFile(*path, *bytes);
    const std::string_view language = RootNamespace(document.get());
    XmlError error;
    Schema schema;
    schema.document.reset(document.release());
    if (language == xmlSchemaNamespace) {
        schema.plain = PlainSchema::Of(schema.document.get());
        if (!schema.plain)
            error = Make(schema);
    } else if (language == relaxNGNamespace) {
        const Owned<xmlRelaxNGParserCtxt> parser(xmlRelaxNGNewDocParserCtxt(schema.document.get()));
        xmlRelaxNGSetParserStructuredErrors(parser.get(), &StoreFirst, &error);
        schema.relaxNG.reset(xmlRelaxNGParse(parser.get()));
    } else {
        FailSchema(file, "line 1: its root element is neither of W3C XML Schema nor of RELAX NG; its namespace is \"" +
                             std::string(language) + "\"");
    }
    if (!schema.xsd && !schema.relaxNG && !schema.plain)
        FailSchema(file, error.sReason.empty() ? "it isn't a valid schema" : error.sReason);
    m_schemas.insert_or_assign(std::string(namespaceText), std::move(schema));
}

XmlError XmlSchemaCache::Make(Schema& schema) {
    XmlError error;
    const Owned<xmlSchemaParserCtxt> parser(xmlSchemaNewDocParserCtxt(schema.document.get()));
    xmlSchemaSetParserStructuredErrors(parser.get(), &StoreFirst, &error);
    schema.xsd.reset(xmlSchemaParse(parser.get()));
    return error;
}

XmlError XmlSchemaCache::Validate(xmlDocPtr document) const {
    XmlError error;
    const auto it = m_schemas.find(RootNamespace(document));
    if (it == m_schemas.end() || !it->second.plain || !it->second.plain->Accepts(document))
        Run(document, &StoreFirst, &error);
    return error;
}

std::vector<XmlError> XmlSchemaCache::Violations(xmlDocPtr document) const {
    std::vector<XmlError> errors;
    Run(document, &StoreAll, &errors);
    return errors;
}

bool XmlSchemaCache::OnlyLists() const {
    const auto it = m_schemas.find("");
    return it != m_schemas.end() && it->second.plain;
}

void XmlSchemaCache::Run(xmlDocPtr document, xmlStructuredErrorFunc note, void* data) const {
    bool noted = false;
    struct Call {
        xmlStructuredErrorFunc note;
        void* data;
        bool* noted;
    } call{note, data, &noted};
    const auto Note = [](void* userData, xmlErrorPtr error) {
        const auto& to = *static_cast<Call*>(userData);
        *to.noted |= error && error->level >= XML_ERR_ERROR;
        to.note(to.data, error);
    };
    const auto AddError = [&](int code, std::string message) {
        xmlError error{};
        error.code = code;
        error.level = XML_ERR_ERROR;
        error.message = message.data();
        error.node = xmlDocGetRootElement(document);
        note(data, &error);
    };
    const std::string_view namespaceText = RootNamespace(document);
    const auto it = m_schemas.find(namespaceText);
    if (it == m_schemas.end())
        return AddError(XML_SCHEMAV_CVC_ELT_1,
                        "there is no schema for the root element's namespace \"" + std::string(namespaceText) + "\"");
    int result = 0;
    if (!it->second.relaxNG && !it->second.xsd) {
        const XmlError error = Make(it->second);
        if (!it->second.xsd)
            return AddError(XML_SCHEMAV_INTERNAL, "the schema can't be used: " + error.sReason);
    }
    if (it->second.xsd) {
        const Owned<xmlSchemaValidCtxt> context(xmlSchemaNewValidCtxt(it->second.xsd.get()));
        xmlSchemaSetValidStructuredErrors(context.get(), +Note, &call);
        result = xmlSchemaValidateDoc(context.get(), document);
    } else {
        const Owned<xmlRelaxNGValidCtxt> context(xmlRelaxNGNewValidCtxt(it->second.relaxNG.get()));
        xmlRelaxNGSetValidStructuredErrors(context.get(), +Note, &call);
        result = xmlRelaxNGValidateDoc(context.get(), document);
    }
    if (result != 0 && !noted)
        AddError(result > 0 ? result : XML_ERR_INTERNAL_ERROR, "the document isn't valid");
}

} // namespace corvane
