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

constexpr int nOptions = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                         XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC | XML_PARSE_COMPACT;
constexpr unsigned short uLastPlainLine = 65535;

bool IsBlank(const xmlChar* sText, int nLength) {
    return std::all_of(sText, sText + nLength,
                       [](xmlChar c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

// Without a name libxml2 takes UTF-8 and saves itself a copy of the text, unless the first four bytes look like another
// encoding, which of a text that is UTF-8 they do only with a zero among them.
const char* Encoding(std::string_view sText) {
    return sText.substr(0, 4).find('\0') == std::string_view::npos ? nullptr : "UTF-8";
}

std::string LimitText(std::size_t nBytes) {
    return std::to_string(nBytes / 1024) + " KiB";
}

} // namespace

// What the callbacks of one parse share, behind the parser context's _private.
struct XmlParser::State {
    xmlParserCtxtPtr pFile; // entities are parsed by contexts of their own, which count their own lines
    XmlError oError;
    std::size_t nText = 0;             // of the present piece
    std::unique_ptr<PlainTree> pPlain; // while nothing has come that doesn't belong into one
    xmlNodePtr pPlainRoot = nullptr;
    bool bGivenUp = false; // something has come

    // The first error is the cause, later ones are its consequences.
    void Note(int nCode, const std::string& sMessage) {
        if (oError.lErrorCode == 0) {
            oError.lErrorCode = nCode > 0 ? nCode : XML_ERR_INTERNAL_ERROR;
            oError.lLine = pFile->inputNr > 0 ? std::max(pFile->inputTab[0]->line, 1) : 0;
            oError.sReason = Reason(oError.lLine, sMessage);
        }
    }
    // For what libxml2 wouldn't mind.
    void Fail(xmlParserCtxtPtr pContext, int nCode, const std::string& sMessage) {
        Note(nCode, sMessage);
        xmlStopParser(pContext);
    }
    // The document is read once more, into a tree of libxml2's own.
    void GiveUpPlain(xmlParserCtxtPtr pContext) {
        bGivenUp = true;
        xmlStopParser(pContext);
    }
    static State& Of(xmlParserCtxtPtr pContext) { return *static_cast<State*>(pContext->_private); }
};

Long LineOf(const xmlNode* pNode) noexcept {
    while (pNode && pNode->type != XML_ELEMENT_NODE)
        pNode = pNode->parent;
    if (!pNode)
        return 0;
    if (pNode->line < uLastPlainLine || !pNode->psvi)
        return pNode->line;
    return static_cast<Long>(reinterpret_cast<std::intptr_t>(pNode->psvi));
}

std::string Reason(Long lLine, std::string_view sMessage) {
    while (!sMessage.empty() && (sMessage.back() == '\n' || sMessage.back() == '.' || sMessage.back() == ' '))
        sMessage.remove_suffix(1);
    std::string sReason = lLine > 0 ? "line " + std::to_string(lLine) + ": " : std::string();
    sReason.append(sMessage);
    std::replace(sReason.begin(), sReason.end(), '\n', ' ');
    return sReason;
}

XmlParser::~XmlParser() {
    xmlFreeParserCtxt(m_pContext);
}

void XmlParser::Renew() {
    xmlFreeParserCtxt(m_pContext);
    m_pContext = xmlNewParserCtxt();
    if (!m_pContext)
        throw std::bad_alloc();
    xmlSAXHandler& oHandler = *m_pContext->sax;
    oHandler.serror = &OnError;
    oHandler.startElementNs = &OnStartElement;
    oHandler.characters = &OnText;
    oHandler.ignorableWhitespace = &OnText;
    oHandler.cdataBlock = &OnCData;
    oHandler.entityDecl = &OnEntity;
    oHandler.internalSubset = &OnDocumentType;
    oHandler.comment = nullptr; // nobody asks for these two
    oHandler.processingInstruction = nullptr;
}

XmlTree XmlParser::Parse(std::string_view sText, XmlError& oError) {
    // One context for all documents: they share its dictionary of names. It is given up when that has grown large.
    constexpr std::size_t nDictionaryBytes = 1 << 20;
    if (!m_pContext || xmlDictGetUsage(m_pContext->dict) > nDictionaryBytes)
        Renew();
    if (sText.empty()) {
        oError = {XML_ERR_DOCUMENT_EMPTY, "the file is empty", 0};
        return nullptr;
    }
    if (sText.size() > INT_MAX) {
        oError = {XML_ERR_INTERNAL_ERROR, "the file is larger than 2 GiB", 0};
        return nullptr;
    }
    State oState{m_pContext, {}, 0, std::make_unique<PlainTree>(m_pMemory)};
    XmlTree oTree = Read(sText, oState);
    if (oState.bGivenUp) {
        oState = State{m_pContext, {}, 0, nullptr};
        oTree = Read(sText, oState);
    }
    oError = std::move(oState.oError);
    return oTree;
}

XmlTree XmlParser::Read(std::string_view sText, State& oState) {
    m_pContext->_private = &oState;
    XmlTree oTree(
        xmlCtxtReadMemory(m_pContext, sText.data(), static_cast<int>(sText.size()), nullptr, Encoding(sText), nOptions),
        [](xmlDoc* pDocument) {
            if (PlainTree* pPlain = pDocument ? PlainTree::Of(pDocument) : nullptr) {
                pDocument->children = pDocument->last = nullptr;
                delete pPlain;
            }
            xmlFreeDoc(pDocument);
        });
    const bool bGood = m_pContext->wellFormed && m_pContext->nsWellFormed;
    m_pContext->_private = nullptr;
    if (oState.bGivenUp)
        return nullptr;
    if (!oTree || !bGood || oState.oError.lErrorCode != 0) {
        if (oState.oError.lErrorCode == 0)
            oState.oError = {XML_ERR_INTERNAL_ERROR, "the file isn't well formed", 0};
        xmlFreeParserCtxt(m_pContext);
        m_pContext = nullptr;
        return nullptr;
    }
    if (oState.pPlainRoot)
        PlainTree::Tie(std::move(oState.pPlain), oTree.get(), oState.pPlainRoot);
    return oTree;
}

void XmlParser::OnError(void* pContext, xmlErrorPtr pError) {
    if (!pError || pError->level < XML_ERR_ERROR)
        return;
    const auto pParser = static_cast<xmlParserCtxtPtr>(pContext);
    std::string sMessage = pError->message ? pError->message : "the file isn't well formed";
    if (pError->code == XML_ERR_ENTITY_LOOP)
        sMessage = "entities refer to themselves or expand beyond all measure";
    else if (pParser->nameNr > XmlLimit::Depth - 1 && sMessage.find("depth") != std::string::npos)
        sMessage = "elements are nested deeper than " + std::to_string(XmlLimit::Depth) + " levels";
    State::Of(pParser).Note(pError->code, sMessage);
}

void XmlParser::OnStartElement(void* pContext, const xmlChar* sName, const xmlChar* sPrefix, const xmlChar* sUri,
                               int nNamespaces, const xmlChar** aNamespaces, int nAttributes, int nDefaulted,
                               const xmlChar** aAttributes) {
    const auto pParser = static_cast<xmlParserCtxtPtr>(pContext);
    State& oState = State::Of(pParser);
    oState.nText = 0;
    for (int i = 0; i < nAttributes; ++i) {
        const xmlChar* const* pAttribute = aAttributes + 5 * i; // name, prefix, URI, begin and end of the value
        if (static_cast<std::size_t>(pAttribute[4] - pAttribute[3]) > XmlLimit::ValueBytes)
            return oState.Fail(pParser, XML_ERR_ATTRIBUTE_NOT_FINISHED,
                               "the value of attribute '" + std::string(reinterpret_cast<const char*>(pAttribute[0])) +
                                   "' of element '" + reinterpret_cast<const char*>(sName) + "' is larger than " +
                                   LimitText(XmlLimit::ValueBytes));
    }
    const xmlNode* pBefore = pParser->node;
    if (!oState.pPlain)
        xmlSAX2StartElementNs(pContext, sName, sPrefix, sUri, nNamespaces, aNamespaces, nAttributes, nDefaulted,
                              aAttributes);
    else if (sPrefix || sUri || nNamespaces > 0)
        return oState.GiveUpPlain(pParser);
    else
        AddPlain(pParser, sName, nAttributes, aAttributes);
    if (pParser->node && pParser->node != pBefore && pParser->input && pParser->input->line >= uLastPlainLine)
        pParser->node->psvi = reinterpret_cast<void*>(static_cast<std::intptr_t>(pParser->input->line));
}

void XmlParser::AddPlain(xmlParserCtxtPtr pParser, const xmlChar* sName, int nAttributes, const xmlChar** aAttributes) {
    State& oState = State::Of(pParser);
    xmlNodePtr pElement = oState.pPlain->AddElement(pParser->myDoc, pParser->node, sName);
    xmlAttrPtr pLast = nullptr;
    for (int i = 0; i < nAttributes; ++i) {
        const xmlChar* const* pAttribute = aAttributes + 5 * i;
        if (pAttribute[1])
            return oState.GiveUpPlain(pParser);
        const std::string_view sValue(reinterpret_cast<const char*>(pAttribute[3]),
                                      static_cast<std::size_t>(pAttribute[4] - pAttribute[3]));
        pLast = oState.pPlain->AddAttribute(pElement, pLast, pAttribute[0], sValue);
    }
    pElement->line = static_cast<unsigned short>(std::min<int>(pParser->input->line, uLastPlainLine));
    if (!oState.pPlainRoot)
        oState.pPlainRoot = pElement;
    nodePush(pParser, pElement);
}

void XmlParser::OnDocumentType(void* pContext, const xmlChar* sName, const xmlChar* sPublicId,
                               const xmlChar* sSystemId) {
    const auto pParser = static_cast<xmlParserCtxtPtr>(pContext);
    if (State::Of(pParser).pPlain)
        return State::Of(pParser).GiveUpPlain(pParser);
    xmlSAX2InternalSubset(pContext, sName, sPublicId, sSystemId);
}

// Blanks between elements carry nothing and would be half of all nodes.
void XmlParser::OnText(void* pContext, const xmlChar* sText, int nLength) {
    const auto pParser = static_cast<xmlParserCtxtPtr>(pContext);
    State& oState = State::Of(pParser);
    if (oState.pPlain) {
        if (!IsBlank(sText, nLength))
            oState.GiveUpPlain(pParser);
        return;
    }
    const bool bGoesOn = pParser->node && pParser->node->last && pParser->node->last->type == XML_TEXT_NODE;
    if (!bGoesOn && IsBlank(sText, nLength))
        return;
    oState.nText = bGoesOn ? oState.nText + static_cast<std::size_t>(nLength) : static_cast<std::size_t>(nLength);
    if (oState.nText > XmlLimit::ValueBytes)
        return oState.Fail(pParser, XML_ERR_INVALID_CHAR,
                           "a piece of text is larger than " + LimitText(XmlLimit::ValueBytes));
    xmlSAX2Characters(pContext, sText, nLength);
}

void XmlParser::OnCData(void* pContext, const xmlChar* sText, int nLength) {
    OnText(pContext, sText, nLength);
}

void XmlParser::OnEntity(void* pContext, const xmlChar* sName, int nType, const xmlChar* sPublicId,
                         const xmlChar* sSystemId, xmlChar* sContent) {
    const auto pParser = static_cast<xmlParserCtxtPtr>(pContext);
    if (nType == XML_EXTERNAL_GENERAL_PARSED_ENTITY || nType == XML_EXTERNAL_PARAMETER_ENTITY)
        return State::Of(pParser).Fail(pParser, XML_ERR_ENTITY_PROCESSING,
                                       "entity '" + std::string(reinterpret_cast<const char*>(sName)) +
                                           "' lies outside the file; external entities are not read");
    xmlSAX2EntityDecl(pContext, sName, nType, sPublicId, sSystemId, sContent);
}

} // namespace corvane
