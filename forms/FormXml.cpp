#include "forms/FormXml.h"

#include "adapters/common/Encoding.h"

#include <algorithm>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <memory>

namespace corvane::forms {

namespace {

constexpr std::size_t mostBytes = 4 << 20;
constexpr std::size_t mostElements = 200000;

// The places of a text, by its bytes. They are asked for from the beginning on: what was counted of a line isn't
// counted again.
class Places {
public:
    explicit Places(std::string_view text) : m_text(text) {
        for (std::size_t i = 0; i < text.size(); ++i)
            if (text[i] == '\n')
                m_begins.push_back(i + 1);
    }
    [[nodiscard]] FormPlace At(std::size_t offset) {
        const auto next = std::upper_bound(m_begins.begin(), m_begins.end(), offset);
        const std::size_t begin = *std::prev(next);
        if (m_counted < begin || m_counted > offset) {
            m_counted = begin;
            m_column = 1;
        }
        const auto isBegin = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
        const std::string_view since = m_text.substr(m_counted, offset - m_counted);
        m_column += std::count_if(since.begin(), since.end(), isBegin);
        m_counted = offset;
        return {static_cast<Long>(next - m_begins.begin()), static_cast<Long>(m_column)};
    }

private:
    std::string_view m_text;
    std::vector<std::size_t> m_begins{0};
    std::size_t m_counted = 0; // up to there, of its line
    std::ptrdiff_t m_column = 1;
};

struct Reading {
    std::string_view text;
    Places places;
    xmlParserCtxtPtr parser = nullptr;
    XmlElement root = {};
    std::vector<XmlElement*> open = {};
    std::size_t elements = 0;
    XmlFault fault = {};

    void Stop(FormPlace at, std::string why) {
        if (fault.text.empty())
            fault = {at, std::move(why)};
        xmlStopParser(parser);
    }
    // The parser is behind the attributes of a start tag, in which there is no other "<".
    [[nodiscard]] FormPlace TagPlace() {
        const xmlParserInput& input = *parser->input; // keeps no more of the text than it needs
        const std::size_t end = input.consumed + static_cast<std::size_t>(input.cur - input.base);
        const std::size_t begin = text.substr(0, std::min(end, text.size())).rfind('<');
        return places.At(begin == std::string_view::npos ? 0 : begin);
    }
};

Reading& Of(void* context) {
    return *static_cast<Reading*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

const char* Chars(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

void OnStart(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* /*uri*/, int /*spaces*/,
             const xmlChar** /*namespaces*/, int attributeCount, int /*defaulted*/, const xmlChar** attributes) {
    Reading& reading = Of(context);
    const FormPlace at = reading.TagPlace();
    if (++reading.elements > mostElements)
        return reading.Stop(at, "the file has more than " + std::to_string(mostElements) + " elements");
    XmlElement element;
    element.name = Chars(name);
    element.at = at;
    for (int i = 0; i < attributeCount; ++i) {
        const xmlChar** attribute = attributes + 5 * i; // name, prefix, namespace, begin and end of the value
        element.attributes.emplace_back(Chars(attribute[0]), std::string(Chars(attribute[3]), Chars(attribute[4])));
    }
    if (reading.open.empty()) {
        reading.root = std::move(element);
        reading.open.push_back(&reading.root);
        return;
    }
    // Only the last child of an open element is open itself, so that no pointer on the path is lost as children grow.
    XmlElement& parent = *reading.open.back();
    parent.children.push_back(std::move(element));
    reading.open.push_back(&parent.children.back());
}

void OnEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
    Of(context).open.pop_back();
}

void OnText(void* context, const xmlChar* text, int length) {
    Reading& reading = Of(context);
    if (!reading.open.empty())
        reading.open.back()->text.append(Chars(text), static_cast<std::size_t>(length));
}

void OnDocumentType(void* context, const xmlChar* /*name*/, const xmlChar* /*publicId*/, const xmlChar* /*systemId*/) {
    Reading& reading = Of(context);
    reading.Stop(reading.TagPlace(), "a form has no DOCTYPE");
}

void OnError(void* context, xmlErrorPtr error) {
    Reading& reading = Of(context);
    if (error->level < XML_ERR_ERROR || !reading.fault.text.empty())
        return;
    std::string text = error->message ? error->message : "it isn't XML";
    while (!text.empty() && (text.back() == '\n' || text.back() == '.' || text.back() == ' '))
        text.pop_back();
    std::replace(text.begin(), text.end(), '\n', ' ');
    reading.fault = {{std::max(error->line, 1), std::max(error->int2, 1)}, std::move(text)};
}

} // namespace

std::string_view XmlElement::Attribute(std::string_view attributeName) const {
    for (const auto& [key, value] : attributes)
        if (key == attributeName)
            return value;
    return {};
}

const XmlElement* XmlElement::Child(std::string_view childName) const {
    const auto it = std::find_if(children.begin(), children.end(),
                                 [&](const XmlElement& child) { return child.name == childName; });
    return it == children.end() ? nullptr : &*it;
}

XmlElement ReadXml(std::string_view bytes, XmlFault& fault) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    const std::string_view text = bytes.substr(bytes.starts_with(mark) ? mark.size() : 0);
    if (text.size() > mostBytes)
        fault = {{1, 1}, "the file is larger than 4 MiB"};
    else if (text.find_first_not_of(" \t\r\n") == std::string_view::npos)
        fault = {{1, 1}, "the file is empty"};
    else if (!IsUtf8(text) || text.find('\0') != std::string_view::npos)
        fault = {{1, 1}, "the file isn't UTF-8"};
    if (!fault.text.empty())
        return {};
    const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!parser)
        throw std::bad_alloc();
    Reading reading{text, Places(text), parser.get()};
    xmlSAXHandler& handler = *parser->sax;
    handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = &OnStart;
    handler.endElementNs = &OnEnd;
    handler.characters = &OnText;
    handler.ignorableWhitespace = &OnText;
    handler.cdataBlock = &OnText;
    handler.internalSubset = &OnDocumentType;
    handler.serror = &OnError;
    parser->_private = &reading;
    const xmlDocPtr document = xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr,
                                                 nullptr, XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_IGNORE_ENC);
    xmlFreeDoc(document);
    if (reading.fault.text.empty() && (!parser->wellFormed || reading.root.name.empty()))
        reading.fault = {{1, 1}, "it isn't well-formed XML"};
    fault = std::move(reading.fault);
    return std::move(reading.root);
}

} // namespace corvane::forms
