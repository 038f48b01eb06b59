#include "adapters/xml/XmlSchema.h"

#include "adapters/common/Paths.h"
#include "adapters/xml/XmlParser.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <libxml/xmlIO.h>

namespace corvane {

namespace {

constexpr std::string_view sXmlSchemaNamespace = "http://www.w3.org/2001/XMLSchema";
constexpr std::string_view sRelaxNGNamespace = "http://relaxng.org/ns/structure/1.0";

std::string_view View(const xmlChar* sText) {
    return sText ? reinterpret_cast<const char*>(sText) : "";
}

std::string_view RootNamespace(xmlDocPtr pDocument) {
    const xmlNode* pRoot = xmlDocGetRootElement(pDocument);
    return pRoot && pRoot->ns ? View(pRoot->ns->href) : std::string_view();
}

XmlError ErrorOf(const xmlError& oError) {
    const Long lNodeLine = oError.node ? LineOf(static_cast<const xmlNode*>(oError.node)) : 0;
    const Long lLine = lNodeLine > 0 ? lNodeLine : oError.line;
    return {oError.code > 0 ? oError.code : XML_ERR_INTERNAL_ERROR,
            Reason(lLine, oError.message ? oError.message : "the document isn't valid"), lLine};
}

// The first error of a run; later ones are often its consequences.
void KeepFirst(void* pData, xmlErrorPtr pError) {
    auto& oFirst = *static_cast<XmlError*>(pData);
    if (pError && pError->level >= XML_ERR_ERROR && oFirst.lErrorCode == 0)
        oFirst = ErrorOf(*pError);
}

void KeepAll(void* pData, xmlErrorPtr pError) {
    if (pError && pError->level >= XML_ERR_ERROR)
        static_cast<std::vector<XmlError>*>(pData)->push_back(ErrorOf(*pError));
}

[[noreturn]] void FailSchema(std::string_view sFile, const std::string& sWhy, Long lNumber = FailureNumber::Unique) {
    Fail(lNumber, "The schema file \"" + std::string(sFile) + "\" can't be used: " + sWhy, "XML Schema");
}

// While a schema is read, what it includes comes from files only.
class NoNetwork {
public:
    NoNetwork() { xmlSetExternalEntityLoader(&xmlNoNetExternalEntityLoader); }
    ~NoNetwork() { xmlSetExternalEntityLoader(m_fnBefore); }
    NoNetwork(const NoNetwork&) = delete;
    NoNetwork& operator=(const NoNetwork&) = delete;

private:
    xmlExternalEntityLoader m_fnBefore = xmlGetExternalEntityLoader();
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

Owned<xmlDoc> ReadSchemaFile(const std::string& sFile, const std::string& sBytes) {
    if (sBytes.size() > INT_MAX)
        FailSchema(sFile, "it is too large");
    const Owned<xmlParserCtxt> oContext(xmlNewParserCtxt());
    if (!oContext)
        throw std::bad_alloc();
    Owned<xmlDoc> oDocument(xmlCtxtReadMemory(oContext.get(), sBytes.data(), static_cast<int>(sBytes.size()),
                                              sFile.c_str(), nullptr,
                                              XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!oDocument) {
        const xmlError& oError = oContext->lastError;
        FailSchema(sFile, Reason(oError.line, oError.message ? oError.message : "it isn't well formed"));
    }
    return oDocument;
}

} // namespace

void XmlSchemaCache::Add(std::string_view sNamespace, std::string_view sFile) {
    const std::optional<std::string> oPath = FindPath(sFile);
    if (!oPath)
        FailSchema(sFile, "there is no such file", FailureNumber::FileNotFound);
    const std::optional<std::string> oBytes = ReadBytes(*oPath);
    if (!oBytes)
        FailSchema(sFile, std::strerror(errno), FailureNumber::FileNotFound);

    const NoNetwork oNoNetwork;
    Owned<xmlDoc> oDocument = ReadSchemaFile(*oPath, *oBytes);
    const std::string_view sLanguage = RootNamespace(oDocument.get());
    XmlError oError;
    Schema oSchema;
    oSchema.oDocument.reset(oDocument.release());
    if (sLanguage == sXmlSchemaNamespace) {
        oSchema.oPlain = PlainSchema::Of(oSchema.oDocument.get());
        if (!oSchema.oPlain)
            oError = Make(oSchema);
    } else if (sLanguage == sRelaxNGNamespace) {
        const Owned<xmlRelaxNGParserCtxt> oParser(xmlRelaxNGNewDocParserCtxt(oSchema.oDocument.get()));
        xmlRelaxNGSetParserStructuredErrors(oParser.get(), &KeepFirst, &oError);
        oSchema.oRelaxNG.reset(xmlRelaxNGParse(oParser.get()));
    } else {
        FailSchema(sFile, "line 1: its root element is neither of W3C XML Schema nor of RELAX NG; its namespace is \"" +
                              std::string(sLanguage) + "\"");
    }
    if (!oSchema.oXmlSchema && !oSchema.oRelaxNG && !oSchema.oPlain)
        FailSchema(sFile, oError.sReason.empty() ? "it isn't a valid schema" : oError.sReason);
    m_mapSchemas.insert_or_assign(std::string(sNamespace), std::move(oSchema));
}

XmlError XmlSchemaCache::Make(Schema& oSchema) {
    XmlError oError;
    const Owned<xmlSchemaParserCtxt> oParser(xmlSchemaNewDocParserCtxt(oSchema.oDocument.get()));
    xmlSchemaSetParserStructuredErrors(oParser.get(), &KeepFirst, &oError);
    oSchema.oXmlSchema.reset(xmlSchemaParse(oParser.get()));
    return oError;
}

XmlError XmlSchemaCache::Validate(xmlDocPtr pDocument) const {
    XmlError oError;
    const auto it = m_mapSchemas.find(RootNamespace(pDocument));
    if (it == m_mapSchemas.end() || !it->second.oPlain || !it->second.oPlain->Accepts(pDocument))
        Run(pDocument, &KeepFirst, &oError);
    return oError;
}

std::vector<XmlError> XmlSchemaCache::Violations(xmlDocPtr pDocument) const {
    std::vector<XmlError> aErrors;
    Run(pDocument, &KeepAll, &aErrors);
    return aErrors;
}

void XmlSchemaCache::Run(xmlDocPtr pDocument, xmlStructuredErrorFunc fnNote, void* pData) const {
    bool bNoted = false;
    struct Call {
        xmlStructuredErrorFunc fnNote;
        void* pData;
        bool* pNoted;
    } oCall{fnNote, pData, &bNoted};
    const auto Note = [](void* pCall, xmlErrorPtr pError) {
        const auto& oTo = *static_cast<Call*>(pCall);
        *oTo.pNoted |= pError && pError->level >= XML_ERR_ERROR;
        oTo.fnNote(oTo.pData, pError);
    };
    const auto Tell = [&](int nCode, std::string sMessage) {
        xmlError oError{};
        oError.code = nCode;
        oError.level = XML_ERR_ERROR;
        oError.message = sMessage.data();
        oError.node = xmlDocGetRootElement(pDocument);
        fnNote(pData, &oError);
    };
    const std::string_view sNamespace = RootNamespace(pDocument);
    const auto it = m_mapSchemas.find(sNamespace);
    if (it == m_mapSchemas.end())
        return Tell(XML_SCHEMAV_CVC_ELT_1,
                    "there is no schema for the root element's namespace \"" + std::string(sNamespace) + "\"");
    int nResult = 0;
    if (!it->second.oRelaxNG && !it->second.oXmlSchema) {
        const XmlError oError = Make(it->second);
        if (!it->second.oXmlSchema)
            return Tell(XML_SCHEMAV_INTERNAL, "the schema can't be used: " + oError.sReason);
    }
    if (it->second.oXmlSchema) {
        const Owned<xmlSchemaValidCtxt> oContext(xmlSchemaNewValidCtxt(it->second.oXmlSchema.get()));
        xmlSchemaSetValidStructuredErrors(oContext.get(), +Note, &oCall);
        nResult = xmlSchemaValidateDoc(oContext.get(), pDocument);
    } else {
        const Owned<xmlRelaxNGValidCtxt> oContext(xmlRelaxNGNewValidCtxt(it->second.oRelaxNG.get()));
        xmlRelaxNGSetValidStructuredErrors(oContext.get(), +Note, &oCall);
        nResult = xmlRelaxNGValidateDoc(oContext.get(), pDocument);
    }
    if (nResult != 0 && !bNoted)
        Tell(nResult > 0 ? nResult : XML_ERR_INTERNAL_ERROR, "the document isn't valid");
}

} // namespace corvane
