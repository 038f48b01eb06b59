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
[[nodiscard]] Long LineOf(const xmlNode* node) noexcept;

// "line 7: " with what libxml2 says, on one line and without its full stop.
[[nodiscard]] std::string Reason(Long line, std::string_view message);

class XmlParser {
public:
    XmlParser() = default;
    ~XmlParser();
    XmlParser(const XmlParser&) = delete;
    XmlParser& operator=(const XmlParser&) = delete;

    // A text that is UTF-8, whatever its declaration says. Nothing, with the error, when it isn't well formed or goes
    // beyond the limits.
    [[nodiscard]] XmlTree Parse(std::string_view text, XmlError& error);

    // What the trees take turns in.
    [[nodiscard]] const std::shared_ptr<PlainTree::Memory>& TreeMemory() const { return m_memory; }

private:
    struct State;

    void Renew();
    XmlTree Read(std::string_view text, State& state);
    static void AddPlain(xmlParserCtxtPtr parser, const xmlChar* name, int attributeCount, const xmlChar** attributes);

    static void OnError(void* context, xmlErrorPtr error);
    static void OnStartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                               int namespaceCount, const xmlChar** namespaces, int attributeCount, int defaulted,
                               const xmlChar** attributes);
    static void OnDocumentType(void* context, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId);
    static void OnText(void* context, const xmlChar* text, int length);
    static void OnCData(void* context, const xmlChar* text, int length);
    static void OnEntity(void* context, const xmlChar* name, int type, const xmlChar* publicId, const xmlChar* systemId,
                         xmlChar* content);

    xmlParserCtxtPtr m_context = nullptr;
    std::shared_ptr<PlainTree::Memory> m_memory = std::make_shared<PlainTree::Memory>();
};

} // namespace corvane
