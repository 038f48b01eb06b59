#include "adapters/xml/PlainTree.h"

#include <cstring>
#include <libxml/parserInternals.h>

namespace corvane {

PlainTree::PlainTree(std::shared_ptr<Memory> memory)
    : m_sharedMemory(std::move(memory)),
      // Not filled with zeros: of a block only what is used should be touched.
      m_block(m_sharedMemory->spare ? std::move(m_sharedMemory->spare)
                                    : std::unique_ptr<std::byte[]>(new std::byte[Memory::block])),
      m_memory(m_block.get(), Memory::block) {}

PlainTree::~PlainTree() {
    m_sharedMemory->spare = std::move(m_block);
}

xmlNodePtr PlainTree::AddElement(xmlDocPtr document, xmlNodePtr parent, const xmlChar* name) {
    xmlNodePtr element = New<xmlNode>();
    element->type = XML_ELEMENT_NODE;
    element->name = name;
    element->doc = document;
    if (parent) {
        element->parent = parent;
        element->prev = parent->last;
        (parent->last ? parent->last->next : parent->children) = element;
        parent->last = element;
    }
    return element;
}

namespace {

// An attribute and its value, one behind the other; behind these two are the value's letters.
struct AttributeAndText {
    xmlAttr attribute;
    xmlNode text;
};

void FillText(xmlNodePtr text, xmlAttrPtr attribute, std::string_view value) {
    auto* content = reinterpret_cast<xmlChar*>(text + 1);
    std::memcpy(content, value.data(), value.size());
    content[value.size()] = 0;
    text->type = XML_TEXT_NODE;
    text->name = xmlStringText;
    text->doc = attribute->doc;
    text->parent = reinterpret_cast<xmlNodePtr>(attribute);
    text->content = content;
    attribute->children = attribute->last = text;
}

} // namespace

xmlAttrPtr PlainTree::AddAttribute(xmlNodePtr element, xmlAttrPtr last, const xmlChar* name, std::string_view value) {
    auto* both = New<AttributeAndText>(value.size() + 1);
    xmlAttrPtr attribute = &both->attribute;
    attribute->type = XML_ATTRIBUTE_NODE;
    attribute->name = name;
    attribute->doc = element->doc;
    attribute->parent = element;
    attribute->prev = last;
    (last ? last->next : element->properties) = attribute;
    FillText(&both->text, attribute, value);
    return attribute;
}

void PlainTree::SetValue(xmlAttrPtr attribute, std::string_view value) {
    FillText(New<xmlNode>(value.size() + 1), attribute, value);
}

void PlainTree::Tie(std::unique_ptr<PlainTree> tree, xmlDocPtr document, xmlNodePtr root) {
    root->parent = reinterpret_cast<xmlNodePtr>(document);
    document->children = document->last = root;
    document->_private = tree.release();
}

} // namespace corvane
