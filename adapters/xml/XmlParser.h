// Parsing under limits. Only sources of this folder include it: it shows libxml2's types.
#pragma once

#include "adapters/xml/PlainTree.h"
#include "corvane/platform/IXmlService.h"

#include <libxml/parser.h>
#include <memory>
#include <string>
#include <string_view>

namespace corvane {

using XmlTree = std::shared_ptr<xmlDoc>;

// The line of an element, or of the element that the node belongs to. Right beyond 65535, where libxml2 counts no
// further: XmlParser keeps such a line in the element's psvi field.
[[nodiscard]] Long LineOf(const xmlNode* pNode) noexcept;

// "line 7: " with what libxml2 says, on one line and without its full stop.
[[nodiscard]] std::string Reason(Long lLine, std::string_view sMessage);

class XmlParser {
public:
    XmlParser() = default;
    ~XmlParser();
    XmlParser(const XmlParser&) = delete;
    XmlParser& operator=(const XmlParser&) = delete;

    // A text that is UTF-8, whatever its declaration says. Nothing, with the error, when it isn't well formed or goes
    // beyond the limits.
    [[nodiscard]] XmlTree Parse(std::string_view sText, XmlError& oError);

    // What the trees take turns in.
    [[nodiscard]] const std::shared_ptr<PlainTree::Memory>& TreeMemory() const { return m_pMemory; }

private:
    struct State;

    void Renew();
    XmlTree Read(std::string_view sText, State& oState);
    static void AddPlain(xmlParserCtxtPtr pParser, const xmlChar* sName, int nAttributes, const xmlChar** aAttributes);

    static void OnError(void* pContext, xmlErrorPtr pError);
    static void OnStartElement(void* pContext, const xmlChar* sName, const xmlChar* sPrefix, const xmlChar* sUri,
                               int nNamespaces, const xmlChar** aNamespaces, int nAttributes, int nDefaulted,
                               const xmlChar** aAttributes);
    static void OnDocumentType(void* pContext, const xmlChar* sName, const xmlChar* sPublicId,
                               const xmlChar* sSystemId);
    static void OnText(void* pContext, const xmlChar* sText, int nLength);
    static void OnCData(void* pContext, const xmlChar* sText, int nLength);
    static void OnEntity(void* pContext, const xmlChar* sName, int nType, const xmlChar* sPublicId,
                         const xmlChar* sSystemId, xmlChar* sContent);

    xmlParserCtxtPtr m_pContext = nullptr;
    std::shared_ptr<PlainTree::Memory> m_pMemory = std::make_shared<PlainTree::Memory>();
};

} // namespace corvane
