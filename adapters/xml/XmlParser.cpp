#include "adapters/xml/XmlParser.h"

#include "adapters/xml/XmlService.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>
#include <new>

namespace corvane {

namespace {

constexpr int options = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                        XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC | XML_PARSE_COMPACT;
constexpr unsigned short lastPlainLine = 65535;

bool IsBlank(const xmlChar* text, int length) {
    return std::all_of(text, text + length, [](xmlChar c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

// Without a name libxml2 takes UTF-8 and saves itself a copy of the text, unless the first four bytes look like another
// encoding, which of a text that is UTF-8 they do only with a zero among them.
const char* Encoding(std::string_view text) {
    return text.substr(0, 4).find('\0') == std::string_view::npos ? nullptr : "UTF-8";
}

std::string LimitText(std::size_t bytes) {
    return std::to_string(bytes / 1024) + " KiB";
}

} // namespace

// What the callbacks of one parse share, behind the parser context's _private.
struct XmlParser::State {
    xmlParserCtxtPtr file; // entities are parsed by contexts of their own, which count their own lines
    XmlError error;
    std::size_t text = 0;             // of the present piece
    std::unique_ptr<PlainTree> plain; // while nothing has come that doesn't belong into one
    xmlNodePtr plainRoot = nullptr;
    bool givenUp = false; // something has come

    // The first error is the cause, later ones are its consequences.
    void Note(int code, const std::string& message) {
        if (error.lErrorCode == 0) {
            error.lErrorCode = code > 0 ? code : XML_ERR_INTERNAL_ERROR;
            error.lLine = file->inputNr > 0 ? std::max(file->inputTab[0]->line, 1) : 0;
            error.sReason = Reason(error.lLine, message);
        }
    }
    // For what libxml2 wouldn't mind.
    void Fail(xmlParserCtxtPtr context, int code, const std::string& message) {
        Note(code, message);
        xmlStopParser(context);
    }
    // The document is read once more, into a tree of libxml2's own.
    void GiveUpPlain(xmlParserCtxtPtr context) {
        givenUp = true;
        xmlStopParser(context);
    }
    static State& Of(xmlParserCtxtPtr context) { return *static_cast<State*>(context->_private); }
};

Long LineOf(const xmlNode* node) noexcept {
    while (node && node->type != XML_ELEMENT_NODE)
        node = node->parent;
    if (!node)
        return 0;
    if (node->line < lastPlainLine || !node->psvi)
        return node->line;
    return static_cast<Long>(reinterpret_cast<std::intptr_t>(node->psvi));
}

std::string Reason(Long line, std::string_view message) {
    while (!message.empty() && (message.back() == '\n' || message.back() == '.' || message.back() == ' '))
        message.remove_suffix(1);
    std::string reason = line > 0 ? "line " + std::to_string(line) + ": " : std::string();
    reason.append(message);
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    return reason;
}

XmlParser::~XmlParser() {
    xmlFreeParserCtxt(m_context);
}

void XmlParser::Renew() {
    xmlFreeParserCtxt(m_context);
    m_context = xmlNewParserCtxt();
    if (!m_context)
        throw std::bad_alloc();
    xmlSAXHandler& handler = *m_context->sax;
    handler.serror = &OnError;
    handler.startElementNs = &OnStartElement;
    handler.characters = &OnText;
    handler.ignorableWhitespace = &OnText;
    handler.cdataBlock = &OnCData;
    handler.entityDecl = &OnEntity;
    handler.internalSubset = &OnDocumentType;
    handler.comment = nullptr; // no one asks for these two
    handler.processingInstruction = nullptr;
}

XmlTree XmlParser::Parse(std::string_view text, XmlError& error) {
    // One context for all documents: they share its dictionary of names. It is given up when that has grown large.
    constexpr std::size_t dictionaryBytes = 1 << 20;
    if (!m_context || xmlDictGetUsage(m_context->dict) > dictionaryBytes)
        Renew();
    if (text.empty()) {
        error = {XML_ERR_DOCUMENT_EMPTY, "the file is empty", 0};
        return nullptr;
    }
    if (text.size() > INT_MAX) {
        error = {XML_ERR_INTERNAL_ERROR, "the file is larger than 2 GiB", 0};
        return nullptr;
    }
    State state{m_context, {}, 0, std::make_unique<PlainTree>(m_memory)};
    XmlTree tree = Read(text, state);
    if (state.givenUp) {
        state = State{m_context, {}, 0, nullptr};
        tree = Read(text, state);
    }
    error = std::move(state.error);
    return tree;
}

XmlTree XmlParser::Read(std::string_view text, State& state) {
    m_context->_private = &state;
    XmlTree tree(
        xmlCtxtReadMemory(m_context, text.data(), static_cast<int>(text.size()), nullptr, Encoding(text), options),
        [](xmlDoc* document) {
            if (PlainTree* plain = document ? PlainTree::Of(document) : nullptr) {
                document->children = document->last = nullptr;
                delete plain;
            }
            xmlFreeDoc(document);
        });
    const bool good = m_context->wellFormed && m_context->nsWellFormed;
    m_context->_private = nullptr;
    if (state.givenUp)
        return nullptr;
    if (!tree || !good || state.error.lErrorCode != 0) {
        if (state.error.lErrorCode == 0)
            state.error = {XML_ERR_INTERNAL_ERROR, "the file isn't well formed", 0};
        xmlFreeParserCtxt(m_context);
        m_context = nullptr;
        return nullptr;
    }
    if (state.plainRoot)
        PlainTree::Tie(std::move(state.plain), tree.get(), state.plainRoot);
    return tree;
}

void XmlParser::OnError(void* context, xmlErrorPtr error) {
    if (!error || error->level < XML_ERR_ERROR)
        return;
    const auto parser = static_cast<xmlParserCtxtPtr>(context);
    std::string message = error->message ? error->message : "the file isn't well formed";
    if (error->code == XML_ERR_ENTITY_LOOP)
        message = "entities refer to themselves or expand beyond all measure";
    else if (parser->nameNr > XmlLimit::Depth - 1 && message.find("depth") != std::string::npos)
        message = "elements are nested deeper than " + std::to_string(XmlLimit::Depth) + " levels";
    State::Of(parser).Note(error->code, message);
}

void XmlParser::OnStartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                               int namespaceCount, const xmlChar** namespaces, int attributeCount, int defaulted,
                               const xmlChar** attributes) {
    const auto parser = static_cast<xmlParserCtxtPtr>(context);
    State& state = State::Of(parser);
    state.text = 0;
    for (int i = 0; i < attributeCount; ++i) {
        const xmlChar* const* attribute = attributes + 5 * i; // name, prefix, URI, begin and end of the value
        if (static_cast<std::size_t>(attribute[4] - attribute[3]) > XmlLimit::ValueBytes)
            return state.Fail(parser, XML_ERR_ATTRIBUTE_NOT_FINISHED,
                              "the value of attribute '" + std::string(reinterpret_cast<const char*>(attribute[0])) +
                                  "' of element '" + reinterpret_cast<const char*>(name) + "' is larger than " +
                                  LimitText(XmlLimit::ValueBytes));
    }
    const xmlNode* before = parser->node;
    if (!state.plain)
        xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaulted,
                              attributes);
    else if (prefix || uri || namespaceCount > 0)
        return state.GiveUpPlain(parser);
    else
        AddPlain(parser, name, attributeCount, attributes);
    if (parser->node && parser->node != before && parser->input && parser->input->line >= lastPlainLine)
        parser->node->psvi = reinterpret_cast<void*>(static_cast<std::intptr_t>(parser->input->line));
}

void XmlParser::AddPlain(xmlParserCtxtPtr parser, const xmlChar* name, int attributeCount, const xmlChar** attributes) {
    State& state = State::Of(parser);
    xmlNodePtr element = state.plain->AddElement(parser->myDoc, parser->node, name);
    xmlAttrPtr last = nullptr;
    for (int i = 0; i < attributeCount; ++i) {
        const xmlChar* const* attribute = attributes + 5 * i;
        if (attribute[1])
            return state.GiveUpPlain(parser);
        const std::string_view value(reinterpret_cast<const char*>(attribute[3]),
                                     static_cast<std::size_t>(attribute[4] - attribute[3]));
        last = state.plain->AddAttribute(element, last, attribute[0], value);
    }
    element->line = static_cast<unsigned short>(std::min<int>(parser->input->line, lastPlainLine));
    if (!state.plainRoot)
        state.plainRoot = element;
    nodePush(parser, element);
}

void XmlParser::OnDocumentType(void* context, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId) {
    const auto parser = static_cast<xmlParserCtxtPtr>(context);
    if (State::Of(parser).plain)
        return State::Of(parser).GiveUpPlain(parser);
    xmlSAX2InternalSubset(context, name, publicId, systemId);
}

// Blanks between elements carry nothing and would be half of all nodes.
void XmlParser::OnText(void* context, const xmlChar* text, int length) {
    const auto parser = static_cast<xmlParserCtxtPtr>(context);
    State& state = State::Of(parser);
    if (state.plain) {
        if (!IsBlank(text, length))
            state.GiveUpPlain(parser);
        return;
    }
    const bool goesOn = parser->node && parser->node->last && parser->node->last->type == XML_TEXT_NODE;
    if (!goesOn && IsBlank(text, length))
        return;
    state.text = goesOn ? state.text + static_cast<std::size_t>(length) : static_cast<std::size_t>(length);
    if (state.text > XmlLimit::ValueBytes)
        return state.Fail(parser, XML_ERR_INVALID_CHAR,
                          "a piece of text is larger than " + LimitText(XmlLimit::ValueBytes));
    xmlSAX2Characters(context, text, length);
}

void XmlParser::OnCData(void* context, const xmlChar* text, int length) {
    OnText(context, text, length);
}

void XmlParser::OnEntity(void* context, const xmlChar* name, int type, const xmlChar* publicId, const xmlChar* systemId,
                         xmlChar* content) {
    const auto parser = static_cast<xmlParserCtxtPtr>(context);
    if (type == XML_EXTERNAL_GENERAL_PARSED_ENTITY || type == XML_EXTERNAL_PARAMETER_ENTITY)
        return State::Of(parser).Fail(parser, XML_ERR_ENTITY_PROCESSING,
                                      "entity '" + std::string(reinterpret_cast<const char*>(name)) +
                                          "' lies outside the file; external entities are not read");
    xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
}

} // namespace corvane
