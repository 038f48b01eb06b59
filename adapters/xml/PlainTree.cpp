#include "adapters/xml/PlainTree.h"

#include <cstring>
#include <libxml/parserInternals.h>

namespace corvane {

PlainTree::PlainTree(std::shared_ptr<Memory> pMemory)
    : m_pMemory(std::move(pMemory)),
      // Not filled with zeros: of a block only what is used should be touched.
      m_pBlock(m_pMemory->pSpare ? std::move(m_pMemory->pSpare)
                                 : std::unique_ptr<std::byte[]>(new std::byte[Memory::nBlock])),
      m_oMemory(m_pBlock.get(), Memory::nBlock) {}

PlainTree::~PlainTree() {
    m_pMemory->pSpare = std::move(m_pBlock);
}

xmlNodePtr PlainTree::AddElement(xmlDocPtr pDocument, xmlNodePtr pParent, const xmlChar* sName) {
    xmlNodePtr pElement = New<xmlNode>();
    pElement->type = XML_ELEMENT_NODE;
    pElement->name = sName;
    pElement->doc = pDocument;
    if (pParent) {
        pElement->parent = pParent;
        pElement->prev = pParent->last;
        (pParent->last ? pParent->last->next : pParent->children) = pElement;
        pParent->last = pElement;
    }
    return pElement;
}

namespace {

// An attribute and its value, one behind the other; behind these two stand the value's letters.
struct AttributeAndText {
    xmlAttr oAttribute;
    xmlNode oText;
};

void FillText(xmlNodePtr pText, xmlAttrPtr pAttribute, std::string_view sValue) {
    auto* sContent = reinterpret_cast<xmlChar*>(pText + 1);
    std::memcpy(sContent, sValue.data(), sValue.size());
    sContent[sValue.size()] = 0;
    pText->type = XML_TEXT_NODE;
    pText->name = xmlStringText;
    pText->doc = pAttribute->doc;
    pText->parent = reinterpret_cast<xmlNodePtr>(pAttribute);
    pText->content = sContent;
    pAttribute->children = pAttribute->last = pText;
}

} // namespace

xmlAttrPtr PlainTree::AddAttribute(xmlNodePtr pElement, xmlAttrPtr pLast, const xmlChar* sName,
                                   std::string_view sValue) {
    auto* pBoth = New<AttributeAndText>(sValue.size() + 1);
    xmlAttrPtr pAttribute = &pBoth->oAttribute;
    pAttribute->type = XML_ATTRIBUTE_NODE;
    pAttribute->name = sName;
    pAttribute->doc = pElement->doc;
    pAttribute->parent = pElement;
    pAttribute->prev = pLast;
    (pLast ? pLast->next : pElement->properties) = pAttribute;
    FillText(&pBoth->oText, pAttribute, sValue);
    return pAttribute;
}

void PlainTree::SetValue(xmlAttrPtr pAttribute, std::string_view sValue) {
    FillText(New<xmlNode>(sValue.size() + 1), pAttribute, sValue);
}

void PlainTree::Tie(std::unique_ptr<PlainTree> pTree, xmlDocPtr pDocument, xmlNodePtr pRoot) {
    pRoot->parent = reinterpret_cast<xmlNodePtr>(pDocument);
    pDocument->children = pDocument->last = pRoot;
    pDocument->_private = pTree.release();
}

} // namespace corvane
