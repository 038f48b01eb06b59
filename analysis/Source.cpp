#include "analysis/Source.h"

#include "adapters/common/Encoding.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace corvane::check {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// By the character, as it is asked of every one of a name.
constexpr auto endsName = [] {
    std::array<bool, 256> table{};
    for (const char c : {' ', '\t', '\n', '\r', '=', '>', '/'})
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

bool NeedsTheParser(std::string_view written) {
    return written.find_first_of("&\t\n\r") != std::string_view::npos;
}

class Scanner {
public:
    Scanner(std::string_view text, Arena& memory)
        : m_text(text), m_memory(memory), m_attributes(memory.RoomFor<Attribute>(text.size() / shortestAttribute + 1)) {
    }

    std::span<Element> Run() {
        while (const char* next = Find('<')) {
            m_i = static_cast<std::size_t>(next - m_text.data());
            if (const char sign = m_i + 1 < m_text.size() ? m_text[m_i + 1] : '\0';
                sign != '!' && sign != '?' && sign != '/')
                StartTag(); // as most are
            else if (At("<!--"))
                SkipThrough("<!--", "-->");
            else if (At("<![CDATA["))
                SkipThrough("<![CDATA[", "]]>");
            else if (At("<?"))
                SkipThrough("<?", "?>");
            else if (At("<!"))
                SkipDeclaration();
            else
                EndTag();
        }
        while (!m_open.empty())
            Close();
        return Finished();
    }

private:
    static constexpr std::size_t shortestAttribute = 2; // characters, of a text that isn't well formed either

    struct Tag {
        Element element;
        std::size_t attributes; // how many are before its own
    };

    [[nodiscard]] const char* Find(char c) const {
        return m_i < m_text.size() ? static_cast<const char*>(std::memchr(m_text.data() + m_i, c, m_text.size() - m_i))
                                   : nullptr;
    }
    [[nodiscard]] bool At(std::string_view what) const { return m_text.substr(m_i, what.size()) == what; }
    [[nodiscard]] char Here() const { return m_i < m_text.size() ? m_text[m_i] : '\0'; }
    // From a begin that is here through the end, which has no letter of it.
    void SkipThrough(std::string_view begin, std::string_view end) {
        const std::size_t i = m_text.find(end, m_i + begin.size());
        m_i = i == std::string_view::npos ? m_text.size() : i + end.size();
    }
    void SkipTagEnd() {
        const char* end = Find('>');
        m_i = end ? static_cast<std::size_t>(end - m_text.data()) + 1 : m_text.size();
    }
    void SkipBlanks() {
        while (IsBlank(Here()))
            ++m_i;
    }

    // A document type, with the declarations in its brackets.
    void SkipDeclaration() {
        int brackets = 0;
        for (; m_i < m_text.size(); ++m_i) {
            if (At("<!--")) {
                SkipThrough("<!--", "-->");
                --m_i;
            } else if (Here() == '"' || Here() == '\'') {
                m_i = std::min(m_text.find(Here(), m_i + 1), m_text.size() - 1);
            } else if (Here() == '[') {
                ++brackets;
            } else if (Here() == ']') {
                --brackets;
            } else if (Here() == '>' && brackets == 0) {
                ++m_i;
                return;
            }
        }
    }

    void EndTag() {
        if (!m_open.empty())
            Close();
        SkipTagEnd();
    }

    void Close() {
        m_elements[m_open.back()].element.below = m_elements.size() - m_open.back() - 1;
        m_open.pop_back();
    }

    [[nodiscard]] std::string_view Name() {
        const std::size_t begin = m_i;
        while (m_i < m_text.size() && !endsName[static_cast<unsigned char>(m_text[m_i])])
            ++m_i;
        return m_text.substr(begin, m_i - begin);
    }

    void StartTag() {
        if (m_open.empty()) { // the root
            m_elements.clear();
            m_attributeCount = 0;
        }
        ++m_i;
        m_elements.push_back({{Name(), {}}, m_attributeCount});
        for (SkipBlanks(); m_i < m_text.size() && Here() != '>' && Here() != '/'; SkipBlanks())
            AddAttribute();
        const bool empty = Here() == '/';
        SkipTagEnd();
        if (!empty)
            m_open.push_back(m_elements.size() - 1);
    }

    void AddAttribute() {
        const AttributeName name = Name();
        while (m_i < m_text.size() && Here() != '"' && Here() != '\'')
            ++m_i;
        const char quote = Here();
        const std::size_t begin = std::min(++m_i, m_text.size());
        m_i = begin;
        const char* end = Find(quote);
        m_i = end ? static_cast<std::size_t>(end - m_text.data()) : m_text.size();
        new (m_attributes + m_attributeCount++) Attribute(name, m_text.substr(begin, m_i - begin));
        ++m_i;
    }

    // All in the memory, in one piece each.
    std::span<Element> Finished() {
        m_memory.FreeFrom(m_attributes + m_attributeCount);
        if (m_elements.empty())
            return {};
        const std::span<Attribute> attributes(m_attributes, m_attributeCount);
        Element* elements = m_memory.RoomFor<Element>(m_elements.size());
        std::size_t last = attributes.size();
        for (std::size_t i = m_elements.size(); i-- > 0;) {
            Element* element = new (elements + i) Element(m_elements[i].element);
            element->attributes = attributes.subspan(m_elements[i].attributes, last - m_elements[i].attributes);
            last = m_elements[i].attributes;
        }
        return {elements, m_elements.size()};
    }

    std::string_view m_text;
    Arena& m_memory;
    std::size_t m_i = 0;
    std::vector<Tag> m_elements;
    std::vector<std::size_t> m_open;
    Attribute* m_attributes; // of all elements
    std::size_t m_attributeCount = 0;
};

bool NeedTheParser(std::span<const Element> elements) {
    return std::any_of(elements.begin(), elements.end(), [](const Element& element) {
        return std::any_of(element.attributes.begin(), element.attributes.end(),
                           [](const Attribute& attribute) { return NeedsTheParser(attribute.Written()); });
    });
}

// Values that differ from what is written. The document's elements are in the same order; where entities hold elements
// they aren't, and values stay as they are written.
void FillValues(std::span<Element> elements, const Ref<IXmlDocument>& document, Arena& memory) {
    std::vector<Ref<IXmlNode>> nodes;
    if (const Ref<IXmlNode> node = NeedTheParser(elements) ? document->SelectSingleNode("/*") : nullptr)
        nodes = node->SelectNodes("//*");
    if (nodes.size() != elements.size())
        nodes.clear();
    for (std::size_t i = 0; i < elements.size(); ++i)
        for (Attribute& attribute : elements[i].attributes) {
            const std::string_view written = attribute.Written();
            if (!nodes.empty() && NeedsTheParser(written))
                attribute.SetValue(Stored(memory, {nodes[i]->Attribute(attribute.Name()).value_or("")}));
            else if (!IsAscii(written))
                attribute.SetValue(Stored(memory, {DecodeWindows1252(written)}));
        }
}

} // namespace

std::string_view Attribute::Written() const {
    // The text has an end sign, should it end within a tag.
    const char* begin = m_name + m_nameNumber;
    while (*begin && *begin != '"' && *begin != '\'')
        ++begin;
    if (!*begin)
        return {begin, begin};
    const char* end = begin + 1;
    while (*end && *end != *begin)
        ++end;
    return {begin + 1, end};
}

Spot Element::At(const AttributeName& attributeName) const {
    const Attribute* attribute = Find(attributeName);
    return attribute ? attribute->AtValue() : At();
}

const Element* ScanElements(const std::string& bytes, const Ref<IXmlDocument>& document, Arena& memory) {
    const std::span<Element> elements = Scanner(bytes, memory).Run();
    FillValues(elements, document, memory);
    return elements.empty() ? nullptr : elements.data();
}

std::string_view Stored(Arena& memory, std::initializer_list<std::string_view> parts) {
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.size();
    auto* text = static_cast<char*>(memory.allocate(std::max<std::size_t>(length, 1), 1));
    char* end = text;
    for (const std::string_view part : parts)
        end = std::copy(part.begin(), part.end(), end);
    return {text, length};
}

void Lines::Read(std::string_view text) {
    if (!m_begins.empty())
        return;
    m_begins.push_back(text.data());
    for (std::size_t i = text.find('\n'); i != std::string_view::npos; i = text.find('\n', i + 1))
        m_begins.push_back(text.data() + i + 1);
}

Position Lines::PositionOf(std::string_view text, Spot spot) {
    Read(text);
    const auto next = std::upper_bound(m_begins.begin(), m_begins.end(), spot);
    return {static_cast<Long>(next - m_begins.begin()), static_cast<Long>(spot - *(next - 1)) + 1};
}

Spot Lines::EndOf(std::string_view text, Long line) {
    Read(text);
    const auto i = static_cast<std::size_t>(std::max<Long>(line, 0));
    return i < m_begins.size() ? m_begins[i] : text.data() + text.size();
}

} // namespace corvane::check
